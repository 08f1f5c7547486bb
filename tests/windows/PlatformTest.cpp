#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/EventPump_win32.h"
#include "platform/Process_win32.h"
#include "platform/ProgressTexts.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/UserSettings_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"
#include "platform/WindowBase_win32.h"
#include "platform/WindowsEnvironment_win32.h"
#include "windows/TemporaryFolder.h"

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
    EXPECT_EQ(western.MaybeToAnsi("\xCE\xA9"), std::nullopt);      // Omega
    EXPECT_EQ(western.MaybeToAnsi("\xEF\xBC\xA1"), std::nullopt);  // a wide A
    const WindowsText japanese(932);
    EXPECT_EQ(japanese.MaybeToAnsi("a\xE6\x97\xA5\xE6\x9C\xAC"), "a\x93\xFA\x96\x7B");
    EXPECT_EQ(japanese.FromAnsi("a\x93\xFA\x96\x7B"), "a\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(japanese.MaybeToAnsi("Caf\xC3\xA9"), std::nullopt);
    EXPECT_EQ(japanese.MaybeToAnsi("\xED\xA0\x80"), std::nullopt);  // half a pair
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

// The test program's own file under another name, started with arguments that make it write down
// how it was started.
class SystemProgramsTest : public testing::Test {
 protected:
    void CopySelf(const std::string& to) {
        wchar_t self[MAX_PATH] = L"";
        GetModuleFileNameW(nullptr, self, MAX_PATH);
        ASSERT_TRUE(CopyFileW(self, LongPath(to).c_str(), FALSE));
    }
    // The lines that the started program wrote; waits up to 20 seconds for them.
    std::string Report() {
        for (int tries = 0; tries < 2000 && !FileExists(disk, folder / "report"); ++tries)
            Sleep(10);
        const std::string bytes = Content(folder / "report");
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), bytes.size());
        return Utf8(text);
    }

    TemporaryFolder folder;
    SystemDisk disk;
    SystemPrograms programs;
};

TEST_F(SystemProgramsTest, AreStartedByTheirFullPathInTheirOwnFolder) {
    ASSERT_TRUE(disk.CreateFolder(folder / "a folder").Ok());
    const std::string program = folder / "a folder\\the program \xCE\xA9.exe";
    ASSERT_NO_FATAL_FAILURE(CopySelf(program));
    EXPECT_TRUE(programs.Start(
        program, "--report-start \"" + (folder / "report") + "\" \"first \xCE\xA9\" second",
        ShowProgram::MinimizedInactive));
    EXPECT_EQ(Report(), "first \xCE\xA9\nsecond\n" + (folder / "a folder"));
}

TEST_F(SystemProgramsTest, AreNeverSearchedFor) {
    EXPECT_FALSE(programs.Start("notepad.exe", "", ShowProgram::Normal));
    EXPECT_FALSE(programs.Start("C:notepad.exe", "", ShowProgram::Normal));
    EXPECT_FALSE(programs.Start(folder / "none.exe", "", ShowProgram::Normal));
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
    Environment& environment = windows.Interfaces();
    environment.statusLine.Say("said before there was a frame");
    std::string shown;
    StepsDone bar;
    windows.Status().SetListener([&](const std::string& line, const StepsDone& steps) {
        shown = line;
        bar = steps;
    });
    EXPECT_EQ(shown, "said before there was a frame");
    EXPECT_EQ(bar, StepsDone{});
    {
        StatusLineProgress progress(environment.statusLine);
        progress.ShowSteps("3 of 7", {3, 7});
        EXPECT_EQ(shown, "said before there was a frame");
        EXPECT_EQ(bar, (StepsDone{3, 7}));
        windows.Status().Clear();
        EXPECT_EQ(shown, "3 of 7");
    }
    EXPECT_EQ(shown, "");
    EXPECT_EQ(bar, StepsDone{});
}

}  // namespace
}  // namespace tobbin
