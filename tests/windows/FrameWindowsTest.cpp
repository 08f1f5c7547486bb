#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <future>
#include <thread>

#include "fakes/FakeOutside.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/FrameBars_win32.h"
#include "shell/FrameMenu_win32.h"
#include "shell/Searching_win32.h"
#include "shell/SingleInstance_win32.h"
#include "shell/Splash_win32.h"

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
    EXPECT_FALSE(splash.StopRequested());
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_TRUE(splash.StopRequested());
    splash.ShowProgressArea(false);
    EXPECT_TRUE(splash.StopRequested());
    splash.ShowProgressArea(true);
    EXPECT_FALSE(splash.StopRequested());
    EXPECT_TRUE(IsWindowEnabled(button));

    // On a screen of another density.
    SearchingPopup searching(nullptr);
    searching.Open();
    for (const auto& [window, stop] : {std::pair(splash.Handle(), int{Splash::cmdStop}),
                                       std::pair(FindWindowW(SearchingPopup::kClassName, nullptr),
                                                 int{SearchingPopup::cmdStop})}) {
        RECT suggested = {10, 20, 910, 420}, taken = {}, at = {};
        SendMessageW(window, WM_DPICHANGED, 0, reinterpret_cast<LPARAM>(&suggested));
        GetWindowRect(window, &taken);
        EXPECT_TRUE(EqualRect(&taken, &suggested));
        GetWindowRect(GetDlgItem(window, stop), &at);
        EXPECT_TRUE(at.bottom > 380 && at.bottom < 410) << at.bottom;
    }

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

class Receiver : public WindowBase {
 public:
    std::vector<std::string> files;
    bool Open() {
        ClassLook look;
        look.name = L"TobbinTestReceiver";
        return Create(look, "", Placement{});
    }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_COPYDATA)
            return Default(message, wParam, lParam);
        files = SingleInstance::MaybeFiles(*reinterpret_cast<const COPYDATASTRUCT*>(lParam))
                    .value_or(std::vector<std::string>{"not understood"});
        return TRUE;
    }
};

// A second program, played by a thread of its own: it hands over while this one's windows answer.
SingleInstance::Outcome SecondStart(const std::string& folder,
                                    const std::vector<std::string>& files) {
    auto outcome = std::async(std::launch::async, [&] {
        SingleInstance second(folder);
        EXPECT_FALSE(second.IsFirst());
        return second.HandOver(files);
    });
    MSG message;
    while (outcome.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    return outcome.get();
}

TEST(SingleInstance, HandsItsFilesToTheFirstOneOfItsFolder) {
    const std::string folder = "C:\\Tobbin Tests\\Ω\\", sameFolder = "c:\\tobbin tests\\ω\\";
    const SingleInstance first(folder);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_TRUE(SingleInstance("C:\\Tobbin Tests\\other\\").IsFirst());
    Receiver receiver;
    ASSERT_TRUE(receiver.Open());
    first.MarkWindow(receiver.Handle());
    EXPECT_EQ(SecondStart(sameFolder, {"C:\\a.juk", "C:\\日本.juk"}),
              SingleInstance::Outcome::HandedOver);
    EXPECT_EQ(receiver.files, (std::vector<std::string>{"C:\\a.juk", "C:\\日本.juk"}));
    EXPECT_EQ(SecondStart(sameFolder, {}), SingleInstance::Outcome::HandedOver);
    EXPECT_TRUE(receiver.files.empty());
    COPYDATASTRUCT foreign = {};
    EXPECT_FALSE(SingleInstance::MaybeFiles(foreign));
}

TEST(SingleInstance, TakesThePlaceOfOneThatEndedBeforeItHadAWindow) {
    const std::string folder = "C:\\Tobbin Tests\\ending\\";
    std::promise<void> isThere, mayEnd, secondIsThere;
    std::thread first([&] {
        const SingleInstance instance(folder);
        isThere.set_value();
        mayEnd.get_future().wait();
    });
    isThere.get_future().wait();
    auto second = std::async(std::launch::async, [&] {
        SingleInstance instance(folder);
        EXPECT_FALSE(instance.IsFirst());
        secondIsThere.set_value();
        return instance.HandOver({});
    });
    secondIsThere.get_future().wait();
    mayEnd.set_value();
    first.join();
    EXPECT_EQ(second.get(), SingleInstance::Outcome::IsFirstNow);
}

TEST(FrameMenu, GreysWhatCannotActAndGrowsTheRecentList) {
    FrameMenu menu;
    const HMENU file = GetSubMenu(menu.Handle(), MENU_FILE);
    menu.EnableItems(file, [](FrameCommand command) { return command == FrameCommand::Open; });
    EXPECT_EQ(GetMenuState(file, IDM_OPEN, MF_BYCOMMAND) & MF_GRAYED, 0U);
    EXPECT_NE(GetMenuState(file, IDM_SAVE, MF_BYCOMMAND) & MF_GRAYED, 0U);
    const int before = GetMenuItemCount(file);
    menu.ShowRecent({});
    EXPECT_EQ(GetMenuItemCount(file), before);
    menu.ShowRecent({"&1.  C:\\R&B.juk"});
    InsertMenuW(menu.Handle(), 0, MF_BYPOSITION | MF_POPUP,
                reinterpret_cast<UINT_PTR>(CreatePopupMenu()), L"a maximised child's");
    menu.ShowRecent({"&1.  C:\\pop.juk", "&2.  C:\\R&B.juk"});
    EXPECT_EQ(GetMenuItemCount(file), before + 3);
    wchar_t text[100] = L"";
    GetMenuStringW(file, IDM_RECENT + 2, text, 100, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"&2.  C:\\R&&B.juk");
    GetMenuStringW(file, IDM_RECENT + 1, text, 100, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"&1.  C:\\pop.juk");
    EXPECT_NE(GetMenuState(file, static_cast<UINT>(before), MF_BYPOSITION) & MF_SEPARATOR, 0U);
}

}  // namespace
}  // namespace tobbin
