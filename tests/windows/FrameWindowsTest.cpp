#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "fakes/FakeEnvironment.h"
#include "platform/DialogBase_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/FrameBars_win32.h"
#include "shell/FrameMenu_win32.h"
#include "shell/Splash_win32.h"
#include "ui/CommandMenus_win32.h"

namespace tobbin {
namespace {

// Handles waiting messages until the condition holds; false when it doesn't within five seconds.
bool WaitFor(const std::function<bool()>& condition) {
    const std::uint64_t end = GetTickCount64() + 5000;
    while (!condition() && GetTickCount64() < end) {
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return condition();
}

TEST(Splash, AndTheStatusBarShowHowFarWorkIs) {
    Splash splash;
    ASSERT_TRUE(splash.Open());
    const HWND label = GetDlgItem(splash.Handle(), Splash::lblProgress);
    const HWND button = GetDlgItem(splash.Handle(), Splash::cmdStop);
    EXPECT_FALSE(IsWindowVisible(label) || IsWindowVisible(button));
    splash.ShowProgressArea(true);
    EXPECT_TRUE(IsWindowVisible(label) && IsWindowVisible(button));
    for (int i = 1; i <= 1000; ++i)
        splash.Show("Found " + std::to_string(i) + " Mp3s");
    EXPECT_TRUE(WaitFor([&] { return WindowText(label) == "Found 1000 Mp3s"; }));
    SendMessageW(button, BM_CLICK, 0, 0);
    splash.ShowProgressArea(false);
    EXPECT_TRUE(splash.StopRequested());
    splash.ShowProgressArea(true);
    EXPECT_FALSE(splash.StopRequested());
    EXPECT_TRUE(IsWindowEnabled(button));

    FrameStatusBar status;
    ASSERT_TRUE(status.Create(splash.Handle()));
    const HWND bar = GetWindow(status.Handle(), GW_CHILD);
    EXPECT_FALSE(IsWindowVisible(bar));
    status.ShowLine("70,000 of 100,000", {70'000, 100'000});
    EXPECT_TRUE(IsWindowVisible(bar));
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 70'000);
    status.ShowLine("", {});
    EXPECT_FALSE(IsWindowVisible(bar));
}

// Enter is the key of the button that a dialog begins with.
TEST(Dialog, BeginsWithItsButtonAsTheDefaultOne) {
    class Probe : public DialogBase {
     public:
        LRESULT defaultButton = 0;

     protected:
        HWND OnLoad() override {
            PostMessageW(Handle(), WM_APP, 0, 0);
            return Item(IDC_PICTURE_BROWSE);
        }
        LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message != WM_APP)
                return DialogBase::HandleMessage(message, wParam, lParam);
            defaultButton = SendMessageW(GetFocus(), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON
                                ? GetDlgCtrlID(GetFocus())
                                : 0;
            return EndDialog(Handle(), 0);
        }
    } dialog;
    RegisterDialogClass(L"frmPicture");
    EXPECT_EQ(dialog.ShowModal(nullptr, IDD_PICTURE), 0);
    EXPECT_EQ(dialog.defaultButton, IDC_PICTURE_BROWSE);
}

TEST(FrameMenu, GraysWhatCannotActAndGrowsTheRecentList) {
    FrameMenu menu;
    const HMENU file = MenuInBar(menu.Handle(), Menu::File);
    const UINT open = static_cast<UINT>(Command::Open), save = static_cast<UINT>(Command::Save);
    FrameMenu::ShowStates(file, [](Command command) {
        return CommandState{command == Command::Open, command == Command::Save};
    });
    EXPECT_EQ(GetMenuState(file, open, MF_BYCOMMAND) & (MF_GRAYED | MF_CHECKED), 0U);
    EXPECT_EQ(GetMenuState(file, save, MF_BYCOMMAND) & (MF_GRAYED | MF_CHECKED),
              MF_GRAYED | MF_CHECKED);
    const int before = GetMenuItemCount(file);
    menu.ShowRecent({});
    EXPECT_EQ(GetMenuItemCount(file), before);
    menu.ShowRecent({"&1.  C:\\R&B.juk"});
    InsertMenuW(menu.Handle(), 0, MF_BYPOSITION | MF_POPUP,
                reinterpret_cast<UINT_PTR>(CreatePopupMenu()), L"a maximized child's");
    menu.ShowRecent({"&1.  C:\\pop.juk", "&2.  C:\\R&B.juk"});
    EXPECT_EQ(GetMenuItemCount(file), before + 3);
    wchar_t text[100] = L"";
    GetMenuStringW(file, kRecentNumber + 2, text, 100, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"&2.  C:\\R&&B.juk");
    GetMenuStringW(file, kRecentNumber + 1, text, 100, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"&1.  C:\\pop.juk");
    EXPECT_NE(GetMenuState(file, static_cast<UINT>(before), MF_BYPOSITION) & MF_SEPARATOR, 0U);
    FrameMenu::ShowStates(file, [](Command command) {
        return CommandState{command != Command::Open, false};
    });
    EXPECT_NE(GetMenuState(file, kRecentNumber + 2, MF_BYCOMMAND) & MF_GRAYED, 0U);
}

}  // namespace
}  // namespace tobbin
