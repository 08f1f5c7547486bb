#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>
#include <memory>

#include "fakes/FakeEnvironment.h"
#include "platform/DragDrop_win32.h"
#include "platform/EventPump_win32.h"
#include "platform/Process_win32.h"
#include "platform/ProgressTexts.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/UserSettings_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"
#include "platform/WindowBase_win32.h"
#include "platform/WindowsEnvironment_win32.h"
#include "shell/FrameBars_win32.h"
#include "shell/FrameMenu_win32.h"
#include "shell/Splash_win32.h"
#include "ui/CommandMenus_win32.h"

namespace tobbin {
namespace {

TEST(WindowsText, EveryByteIsACharacter) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    for (const unsigned page : {WindowsText::SystemPage(), 1250U, 1251U, 1252U, 1253U, 1255U, 874U})
        EXPECT_EQ(WindowsText(page).MaybeToAnsi(WindowsText(page).FromAnsi(all)), all) << page;
}

TEST(WindowsText, NothingIsReplacedByALookAlike) {
    const WindowsText western(1252);
    for (const char* text : {"\u03A9", "\uFF21"})  // Omega, a wide A
        EXPECT_EQ(western.MaybeToAnsi(text), std::nullopt);
    const WindowsText japanese(932);
    EXPECT_EQ(japanese.MaybeToAnsi("a\xE6\x97\xA5\xE6\x9C\xAC"), "a\x93\xFA\x96\x7B");
    EXPECT_EQ(japanese.FromAnsi("a\x93\xFA\x96\x7B"), "a\xE6\x97\xA5\xE6\x9C\xAC");
    for (const char* text : {"Caf\xC3\xA9", "\xED\xA0\x80"})  // the last is half a pair
        EXPECT_EQ(japanese.MaybeToAnsi(text), std::nullopt);
}

TEST(WindowsText, LetterCaseIsThatOfEveryAlphabet) {
    const WindowsText text;
    EXPECT_EQ(text.ToLower("Abc [\xC3\x89]"), "abc [\xC3\xA9]");
    EXPECT_EQ(text.ToLower("\xCE\xA3\xCE\x99\xCE\xA3"), "\xCF\x83\xCE\xB9\xCF\x83");  // sigma
    EXPECT_EQ(text.ToUpper("\xD0\xB6\xD1\x8F"), "\xD0\x96\xD0\xAF");                  // Cyrillic
    EXPECT_EQ(text.ToUpper("\xC3\x9F"), "\xC3\x9F");  // A sharp s has no single capital.
    for (const char* unchanged : {"\xF0\x9F\x8E\xB5\xC3\xA9", "\xED\xA0\x80 a", "\xE6\x97\xA5"})
        EXPECT_EQ(text.ToLower(unchanged), unchanged);
}

TEST(SystemPrograms, AreNeverSearchedFor) {
    SystemPrograms programs;
    EXPECT_FALSE(programs.Start("notepad.exe", "", ShowProgram::Normal));
    EXPECT_FALSE(programs.Start("C:notepad.exe", "", ShowProgram::Normal));
    EXPECT_FALSE(programs.Start("C:\\windows\\notepad", "", ShowProgram::Normal));
}

// A window that only gets messages.
class MessageWindow : public WindowBase {
 public:
    MessageWindow() {
        Placement placement;
        placement.parent = HWND_MESSAGE;
        EXPECT_TRUE(Create({.name = L"TobbinTestMessages"}, "caption", placement));
    }
    ~MessageWindow() override { Destroy(); }
    int handled = 0;
    std::vector<UINT> asked;  // for commands and for the end
    bool repeats = false;     // whether each message is the cause of the next one

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_COMMAND || message == WM_CLOSE || message == WM_QUERYENDSESSION) {
            asked.push_back(message);
            return TRUE;
        }
        if (message != WM_APP)
            return Default(message, wParam, lParam);
        ++handled;
        if (repeats)
            PostMessageW(Handle(), WM_APP, 0, 0);
        return 0;
    }
};

TEST(SystemEventPump, HandlesWhatWaitsAndKeepsTheRequestToQuit) {
    MessageWindow window;
    SystemEventPump pump;
    int filtered = 0;
    pump.SetFilter([&](MSG& message) {
        const bool mine = message.message == WM_APP && message.wParam == 1;
        filtered += mine ? 1 : 0;
        return mine;
    });
    PostMessageW(window.Handle(), WM_APP, 0, 0);
    PostMessageW(window.Handle(), WM_APP, 1, 0);
    pump.LetEventsThrough();
    EXPECT_EQ(window.handled, 1);
    EXPECT_EQ(filtered, 1);

    window.repeats = true;
    PostMessageW(window.Handle(), WM_APP, 0, 0);
    const ULONGLONG limit = GetTickCount64() + 10'000;
    while (window.handled <= 2 && GetTickCount64() < limit)
        pump.LetEventsThrough();  // comes back from messages without end
    window.repeats = false;
    PostQuitMessage(7);
    while (!pump.QuitRequested() && GetTickCount64() < limit)
        pump.LetEventsThrough();
    EXPECT_GT(window.handled, 2);
    EXPECT_EQ(pump.RunUntilQuit(), 7);
}

TEST(SystemEventPump, LetsEventsThroughWhileADriveIsWaitedForAndGivesItUp) {
    MessageWindow window;
    SystemEventPump pump;
    const auto answers =
        std::make_shared<UniqueKernelObject>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const auto wait = [answers] { WaitForSingleObject(answers->Get(), INFINITE); };
    PostMessageW(window.Handle(), WM_APP, 0, 0);
    EXPECT_FALSE(pump.RunAside(wait, [&] { return window.handled == 0; }));
    EXPECT_EQ(window.handled, 1);
    SetEvent(answers->Get());
    EXPECT_TRUE(pump.RunAside(wait, [] { return true; }));
}

TEST(WindowAnswers, ComeWhileWorkIsDoneAsideAndCommandsWaitForItsEnd) {
    MessageWindow window;
    PostMessageW(window.Handle(), WM_APP, 0, 0);
    int answered = 0;
    DWORD_PTR mayEnd = TRUE;
    RunOnWorker([&] {
        for (const UINT message : {WM_NULL, WM_COMMAND, WM_CLOSE, WM_QUERYENDSESSION})
            answered += SendMessageTimeoutW(window.Handle(), message, 0, 0, SMTO_NORMAL, 10'000,
                                            &mayEnd) != 0;
    });
    EXPECT_EQ(answered, 4);
    EXPECT_FALSE(mayEnd);
    EXPECT_EQ(window.handled, 0);
    EXPECT_TRUE(window.asked.empty());
    SystemEventPump().LetEventsThrough();
    EXPECT_EQ(window.handled, 1);
    EXPECT_EQ(window.asked, (std::vector<UINT>{WM_COMMAND, WM_CLOSE}));
    EXPECT_TRUE(SendMessageW(window.Handle(), WM_QUERYENDSESSION, 0, 0));
}

TEST(WindowsEnvironment, KeepsTheStatusLine) {
    WindowsEnvironment windows;
    StatusLine& line = windows.Interfaces().statusLine;
    line.Say("said before there was a frame");
    std::string shown;
    windows.Status().SetListener([&](const std::string& text, const StepsDone& steps) {
        shown = text + " " + std::to_string(steps.done);
    });
    EXPECT_EQ(shown, "said before there was a frame 0");
    {
        StatusLineProgress progress(line);
        progress.ShowSteps("3 of 7", {3, 7});
        EXPECT_EQ(shown, "said before there was a frame 3");
        windows.Status().Clear();
        EXPECT_EQ(shown, "3 of 7 3");
    }
    EXPECT_EQ(shown, " 0");
}

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
    PostMessageW(splash.Handle(), WM_DPICHANGED, MAKEWPARAM(96, 96), 8);  // by another program
    for (int i = 1; i <= 1000; ++i)
        splash.Show("Found " + std::to_string(i) + " Mp3s");
    EXPECT_TRUE(WaitFor([&] { return WindowText(label) == "Found 1000 Mp3s"; }));
    SendMessageW(button, BM_CLICK, 0, 0);
    splash.ShowProgressArea(false);
    EXPECT_TRUE(splash.StopRequested());
    splash.ShowProgressArea(true);
    EXPECT_TRUE(!splash.StopRequested() && IsWindowEnabled(button));

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

// Whatever another program puts there: names are found inside of the data only, and a drag is our
// own only while just that one runs.
TEST(DraggedData, OfOthersIsNotTakenAtItsWord) {
    const std::vector<std::string> files = {"C:\\a.mp3", "D:\\b.mp3"};
    std::string bytes(reinterpret_cast<const char*>(GlobalLock(MakeFileDrop(files))),
                      sizeof(DROPFILES) + 2 * 19);
    const auto filesIn = [](const std::string& data) {
        const HGLOBAL memory = MakeMemory(data.data(), data.size());
        const auto found = FilesOf(static_cast<HDROP>(memory));
        GlobalFree(memory);
        return found;
    };
    EXPECT_EQ(filesIn(bytes), files);
    EXPECT_EQ(filesIn(bytes.substr(0, sizeof(DROPFILES) + 10)), std::vector<std::string>{"C:\\a."});
    EXPECT_TRUE(filesIn(bytes.substr(0, sizeof(DROPFILES) - 1)).empty());
    for (const char offset : {'\x7F', '\xFF'}) {
        bytes[3] = offset;  // the highest byte of where the names begin
        EXPECT_TRUE(filesIn(bytes).empty());
    }

    OwnDrag first, second;
    const ComPtr<IDataObject> data(new DragData(first, nullptr));
    EXPECT_EQ(MaybeOwnDrag(*data), &first);
    auto* const later = new DragData(second, nullptr);
    const ComPtr<IDataObject> owned(later);
    EXPECT_EQ(MaybeOwnDrag(*data), nullptr);
    later->EndDrag();
}

TEST(FrameMenu, GraysWhatCannotActAndGrowsTheRecentList) {
    FrameMenu menu;
    const HMENU file = MenuInBar(menu.Handle(), Menu::File);
    const auto state = [&](UINT command) {
        return GetMenuState(file, command, MF_BYCOMMAND) & (MF_GRAYED | MF_CHECKED);
    };
    const auto text = [&](int recent) {
        wchar_t caption[100] = L"";
        GetMenuStringW(file, static_cast<UINT>(kRecentNumber + recent), caption, 100, MF_BYCOMMAND);
        return Utf8(caption);
    };
    const int before = GetMenuItemCount(file);
    menu.ShowRecent({});
    EXPECT_EQ(GetMenuItemCount(file), before);
    menu.ShowRecent({"&1.  C:\\R&B.juk"});
    InsertMenuW(menu.Handle(), 0, MF_BYPOSITION | MF_POPUP,
                reinterpret_cast<UINT_PTR>(CreatePopupMenu()), L"a maximized child's");
    menu.ShowRecent({"&1.  C:\\pop.juk", "&2.  C:\\R&B.juk"});
    EXPECT_EQ(GetMenuItemCount(file), before + 3);  // with a line above them
    EXPECT_EQ(text(1) + text(2), "&1.  C:\\pop.juk&2.  C:\\R&&B.juk");
    FrameMenu::ShowStates(file, [](Command command) {
        return CommandState{command == Command::New, command == Command::Save};
    });
    EXPECT_EQ(state(static_cast<UINT>(Command::New)), 0U);
    EXPECT_EQ(state(static_cast<UINT>(Command::Save)), MF_GRAYED | MF_CHECKED);
    EXPECT_EQ(state(kRecentNumber + 2), MF_GRAYED);  // as "Open"
}

}  // namespace
}  // namespace tobbin
