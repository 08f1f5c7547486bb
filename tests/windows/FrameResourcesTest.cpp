#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cwctype>
#include <string>

#include "platform/DialogBase_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/FrameBars_win32.h"
#include "ui/PopUpMenus_win32.h"

namespace tobbin {
namespace {

void AddMenuText(HMENU menu, std::size_t level, std::string& text) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t caption[200] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), caption, 200, MF_BYPOSITION);
        const bool separator =
            (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) != 0 &&
            GetSubMenu(menu, i) == nullptr;
        text += std::string(level * 2, ' ') + (separator ? "-" : Utf8(caption)) + "\n";
        if (const HMENU below = GetSubMenu(menu, i); below != nullptr)
            AddMenuText(below, level + 1, text);
    }
}

std::string MenuText(HMENU menu) {
    std::string text;
    AddMenuText(menu, 0, text);
    return text;
}

TEST(FrameMenu, HasEveryCaptionInItsPlace) {
    const UniqueMenu menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_FRAME_MENU)));
    EXPECT_EQ(MenuText(menu.Get()),
              "&File\n"
              "  &New Jukebox\tCtrl+N\n"
              "  &Open...\tCtrl+O\n"
              "  &Close\n"
              "  -\n"
              "  &Save\tCtrl+S\n"
              "  Save &As...\n"
              "  E&xit\n"
              "&Edit\n"
              "  Cu&t\tCtrl+X\n"
              "  &Copy\tCtrl+C\n"
              "  &Paste\tCtrl+V\n"
              "  Delete\tDel\n"
              "  -\n"
              "  &Find\tCtrl+F\n"
              "  -\n"
              "  &Add Folder To Root\n"
              "  A&dd Folder To Selected Folder\n"
              "&Songs\n"
              "  &Bring In New Songs (Look where I normally keep them)\n"
              "  B&ring In New Songs (Search my whole computer)\n"
              "  -\n"
              "  &Play Selected Songs\tCtrl+P\n"
              "  P&lay All Songs In Folder\tCtrl+L\n"
              "  -\n"
              "  &Next Track\tCtrl+T\n"
              "  P&revious Track\tCtrl+R\n"
              "  P&ause\tCtrl+U\n"
              "  Pla&y\tCtrl+Y\n"
              "  &Stop\n"
              "  S&top After Track\n"
              "  &Close WinAmp\n"
              "&Picture\n"
              "  &Change Backgroup Picture\n"
              "  Picture \\ No Picture\n"
              "  Tile \\ No Tile\n"
              "  Next Picture\tCtrl+Z\n"
              "  Previous Picture\tCtrl+A\n"
              "&WindowList\n"
              "  &Cascade\tShift+F4\n"
              "  &Tile\tShift+F5\n"
              "  &Arrange Icons\n"
              "&Help\n"
              "  &Help\n"
              "  &Tip\n"
              "  &About\n");
}

// The text behind a tab is only told; the key itself must lead to the same command.
TEST(FrameMenu, EveryShortcutIsAKeyOfItsCommand) {
    const UniqueMenu menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_FRAME_MENU)));
    const UniqueAccelerators keys(
        LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS)));
    ACCEL table[64] = {};
    const int count = CopyAcceleratorTableW(keys.Get(), table, 64);
    EXPECT_EQ(count, 23);
    for (int i = 0; i < count; ++i) {
        if (table[i].cmd >= IDM_UNDO && table[i].cmd <= IDM_SORT_LIST)
            continue;  // by key only
        std::wstring name = (table[i].fVirt & FCONTROL) != 0 ? L"Ctrl+"
                            : (table[i].fVirt & FSHIFT) != 0 ? L"Shift+"
                                                             : L"";
        if (table[i].key >= VK_F1 && table[i].key <= VK_F12)
            name += L"F" + std::to_wstring(table[i].key - VK_F1 + 1);
        else
            name += table[i].key == VK_DELETE ? L"Del" : std::wstring(1, table[i].key);
        wchar_t caption[200] = L"";
        GetMenuStringW(menu.Get(), table[i].cmd, caption, 200, MF_BYCOMMAND);
        EXPECT_TRUE(std::wstring(caption).ends_with(L"\t" + name)) << Utf8(caption);
    }
}

TEST(PopUpMenus, HaveTheirEntriesInTheirPlaces) {
    const PopUpMenu folder(1, nullptr);
    EXPECT_EQ(MenuText(folder.Handle()),
              "Play All Songs in Folder\n-\nNew Folder\n  Add Folder to Selected Folder\n"
              "  Add Folder to Root\nCu&t\n&Copy\n&Paste\n&Delete\n-\nSort Nodes\n");
    const PopUpMenu song(2, nullptr);
    EXPECT_EQ(MenuText(song.Handle()),
              "Play All Songs in Folder\nPlay Selected Songs\n-\nCu&t\n&Copy\n&Paste\n&Delete\n-\n"
              "Rank it - Best\n\n\n\n\n.  .  .   to worst\n-\nChange Background Picture . . .\n");
}

void AddKey(const std::wstring& caption, std::string& keys) {
    if (const std::size_t mark = caption.find(L'&'); mark != std::wstring::npos)
        keys += static_cast<char>(towlower(caption[mark + 1]));
}

// The access keys of each menu, or of each dialog, sorted: one that stands twice is seen.
void AddKeysOf(HMENU menu, std::string& all) {
    std::string keys;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t caption[200] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), caption, 200, MF_BYPOSITION);
        AddKey(caption, keys);
        if (const HMENU below = GetSubMenu(menu, i); below != nullptr)
            AddKeysOf(below, all);
    }
    std::ranges::sort(keys);
    all += keys + "\n";
}

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

TEST(AccessKeys, StandOnceInEachPlace) {
    std::string menus;
    for (const int menu : {IDR_FRAME_MENU, IDR_FOLDER_POPUP, IDR_SONG_POPUP})
        AddKeysOf(UniqueMenu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(menu))).Get(),
                  menus);
    // "Bring In" and "Previous Track" share their letter, which goes from one to the other.
    EXPECT_EQ(menus,
              "acnosx\nacdfpt\nabclnprrsty\nc\nact\naht\nefhpsw\n"
              "\ncdpt\n\ncdpt\n\n");
    EXPECT_EQ(KeysOf(IDD_TIP, L"frmTip"), "ns");
    EXPECT_EQ(KeysOf(IDD_FIND, L"frmFind"), "cfw");
    EXPECT_EQ(KeysOf(IDD_PICTURE, L"frmPicture"), "bst");
}

TEST(FrameToolbar, HasItsButtonsWithTheirToolTips) {
    const HWND frame = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 800, 100,
                                       nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    FrameToolbar toolbar;
    ASSERT_TRUE(toolbar.Create(frame));
    std::string text;
    const auto count = SendMessageW(toolbar.Handle(), TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button = {};
        SendMessageW(toolbar.Handle(), TB_GETBUTTON, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&button));
        wchar_t tip[100] = L"";
        if ((button.fsStyle & BTNS_SEP) == 0)
            SendMessageW(toolbar.Handle(), TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                         reinterpret_cast<LPARAM>(tip));
        text += (button.fsStyle & BTNS_SEP) != 0 ? "-\n" : Utf8(tip) + "\n";
    }
    EXPECT_EQ(text,
              "Play Selected Songs\nPlay All Songs in Folder\nPlay Next Track\n"
              "Play Previous Track\nPause\nUn-Pause\nStop After Current Track\n-\n"
              "Add Folder To Root\nAdd Folder To Current\nNew Juke Box\nFind Song\n-\n"
              "Bring In New Songs (Search Normal Directories)\n"
              "Bring In New Songs (Search entire computer)\nBackground Picture\nHelp\n");
    toolbar.Update([](int button) { return button != 12; });
    EXPECT_FALSE(SendMessageW(toolbar.Handle(), TB_ISBUTTONENABLED, IDM_TOOLBAR + 12, 0));
    EXPECT_TRUE(SendMessageW(toolbar.Handle(), TB_ISBUTTONENABLED, IDM_TOOLBAR + 17, 0));
    DestroyWindow(frame);
}

}  // namespace
}  // namespace tobbin
