#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <string>

#include "platform/DialogBase_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/CommandMenus_win32.h"
#include "ui/PopUpMenus_win32.h"

namespace tobbin {
namespace {

// "&Edit(Cu&t\tCtrl+X|-|&Find\tCtrl+F)|..."
std::string MenuText(HMENU menu) {
    std::string text;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t caption[200] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), caption, 200, MF_BYPOSITION);
        const HMENU below = GetSubMenu(menu, i);
        const bool separator =
            (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) != 0;
        text += (i > 0 ? "|" : "") + (below == nullptr && separator ? "-" : Utf8(caption));
        if (below != nullptr)
            text += "(" + MenuText(below) + ")";
    }
    return text;
}

TEST(Menus, HaveEveryEntryInItsPlace) {
    EXPECT_EQ(MenuText(MakeMenuBar().Get()),
              "&File(&New Jukebox\tCtrl+N|&Open...\tCtrl+O|&Close|-|&Save\tCtrl+S|Save &As...|"
              "E&xit)|"
              "&Edit(Cu&t\tCtrl+X|&Copy\tCtrl+C|&Paste\tCtrl+V|Delete\tDel|-|&Find\tCtrl+F|-|"
              "&Add Folder To Root|A&dd Folder To Selected Folder|-|Undo\tAlt+Backspace|"
              "Redo\tAlt+Shift+Backspace)|"
              "&Songs(&Bring In New Songs (Look where I normally keep them)|"
              "B&ring In New Songs (Search my whole computer)|-|&Play Selected Songs\tCtrl+P|"
              "P&lay All Songs In Folder\tCtrl+L|-|&Next Track\tCtrl+T|P&revious Track\tCtrl+R|"
              "P&ause\tCtrl+U|Pla&y\tCtrl+Y|&Stop|S&top After Track|&Close WinAmp)|"
              "&Picture(&Change Backgroup Picture|Picture \\ No Picture|Tile \\ No Tile|"
              "Next Picture\tCtrl+Z|Previous Picture\tCtrl+A)|"
              "&WindowList(&Cascade\tShift+F4|&Tile\tShift+F5|&Arrange Icons)|"
              "&Help(&Help|&Tip|&About)");
    EXPECT_EQ(MenuText(PopUpMenu(Menu::FolderPopUp, nullptr).Handle()),
              "Play All Songs in Folder|-|New Folder(Add Folder to Selected Folder|"
              "Add Folder to Root)|Cu&t|&Copy|&Paste|&Delete|-|Sort Nodes");
    PopUpMenu song(Menu::SongPopUp, nullptr);
    song.AddControlCommands();
    EXPECT_EQ(MenuText(song.Handle()),
              "Play All Songs in Folder|Play Selected Songs|-|Cu&t|&Copy|&Paste|&Delete|-|"
              "Rank it - Best|||||.  .  .   to worst|-|Change Background Picture . . .|"
              "Next Pic|Prev. Pic");
    EXPECT_EQ(GetMenuItemID(song.Handle(), 17), 602U);
    EXPECT_EQ(PopUpMenu::OnKey(song.Handle(), L'2'), MAKELRESULT(9, MNC_EXECUTE));
    EXPECT_EQ(PopUpMenu::OnKey(song.Handle(), L'7'), 0);
}

TEST(Keys, LeadToTheirCommands) {
    const UniqueAccelerators keys = MakeAccelerators();
    ACCEL table[64] = {};
    const int count = CopyAcceleratorTableW(keys.Get(), table, 64);
    const auto commandOf = [&](BYTE held, WORD key) {
        const auto* const found = std::find_if(table, table + count, [&](const ACCEL& each) {
            return each.fVirt == (held | FVIRTKEY) && each.key == key;
        });
        return found != table + count ? static_cast<Command>(found->cmd) : Command();
    };
    EXPECT_EQ(commandOf(FCONTROL, 'Z'), Command::NextPicture);
    EXPECT_EQ(commandOf(FCONTROL | FSHIFT, 'Z'), Command::Redo);
    EXPECT_EQ(commandOf(FALT | FSHIFT, VK_BACK), Command::Redo);
    EXPECT_EQ(commandOf(0, VK_DELETE), Command::Delete);
    EXPECT_EQ(commandOf(0, VK_F3), Command::FindNext);
    EXPECT_EQ(commandOf(FSHIFT, VK_F5), Command::Tile);
    EXPECT_EQ(commandOf(0, VK_F5), Command::FillAnew);
    EXPECT_EQ(commandOf(FCONTROL | FSHIFT, 'A'), Command::SelectAll);
    EXPECT_EQ(commandOf(FCONTROL, '6'), Command::Rank6);
    EXPECT_EQ(commandOf(FALT, VK_DOWN), Command::MoveDown);
}

void AddKey(const std::wstring& caption, std::string& keys) {
    if (const std::size_t mark = caption.find(L'&'); mark != std::wstring::npos)
        keys += static_cast<char>(towlower(caption[mark + 1]));
}

// The access keys of a dialog, sorted: one that stands twice is seen.
std::string KeysOf(int dialog, const wchar_t* windowClass) {
    RegisterDialogClass(windowClass);
    const HWND window = CreateDialogParamW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dialog), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    std::string keys;
    bool labeled = false;
    for (HWND control = GetWindow(window, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const std::string before = keys;
        AddKey(Wide(WindowText(control)), keys);
        const int number = GetDlgCtrlID(control);
        const bool stops = (GetWindowLongPtrW(control, GWL_STYLE) & WS_TABSTOP) != 0;
        EXPECT_TRUE(!stops || labeled || keys != before || number == IDOK || number == IDCANCEL)
            << dialog << ": " << number;
        labeled = !stops && keys != before;
    }
    DestroyWindow(window);
    std::ranges::sort(keys);
    return keys;
}

TEST(AccessKeys, StandOnceInEachDialog) {
    EXPECT_EQ(KeysOf(IDD_TIP, L"frmTip"), "ns");
    EXPECT_EQ(KeysOf(IDD_FIND, L"frmFind"), "cfw");
    EXPECT_EQ(KeysOf(IDD_PICTURE, L"frmPicture"), "bst");
}

}  // namespace
}  // namespace tobbin
