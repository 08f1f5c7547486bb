#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <string>

#include "platform/DialogBase_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

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

}  // namespace
}  // namespace tobbin
