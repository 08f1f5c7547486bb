#include "player/PlayerPanelWindow_win32.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>

#include "fakes/FakeOutside.h"
#include "platform/Wide_win32.h"
#include "platform/WindowsOutside_win32.h"

namespace tobbin {
namespace {

namespace fs = std::filesystem;
using Log = std::vector<std::string>;

std::string Hex(const std::string& bytes) {
    std::string hex;
    for (const unsigned char byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", byte);
        hex += digits;
    }
    return hex;
}

// The panel in an MDI frame of the test's own, the real way to a player, and the stand-in as that
// player, in a folder of its own with three songs of three, four and five seconds.
class PanelAndStandIn : public testing::Test {
 protected:
    PanelAndStandIn() {
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        fs::remove_all(folder);
        fs::create_directories(folder);
        fs::copy_file(fs::path(program).parent_path() / L"winamp.exe", folder / L"winamp.exe");
        for (int song = 1; song <= 3; ++song)
            WriteSong(song, 2 + song);
        control.PlayerProgramPath((folder / L"winamp.exe").string());
        frame = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 400,
                                nullptr, nullptr, nullptr, nullptr);
        CLIENTCREATESTRUCT creation = {nullptr, 1000};
        client = CreateWindowExW(0, L"MDICLIENT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 600, 400, frame,
                                 nullptr, nullptr, &creation);
    }
    ~PanelAndStandIn() override {
        panel.Destroy();
        DestroyWindow(frame);
        // A stand-in that hangs or waits can only be ended from outside.
        DWORD process = 0;
        if (const HWND player = StandInWindow()) {
            GetWindowThreadProcessId(player, &process);
            UniqueKernelObject handle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process));
            if (!RunUntil([] { return StandInWindow() == nullptr; }, 2)) {
                TerminateProcess(handle.Get(), 1);
                WaitForSingleObject(handle.Get(), 5000);
            }
        }
    }

    static HWND StandInWindow() { return FindWindowW(L"Winamp v1.x", nullptr); }
    std::string SongPath(int song) const {
        return (folder / (std::to_string(song) + ".mp3")).string();
    }
    // Frames of 128 kbit/s at 44,100 Hz: 417 bytes that last 1152 samples.
    void WriteSong(int song, int seconds) {
        std::ofstream file(SongPath(song), std::ios::binary);
        for (int i = 0; i * 1152 < (seconds * 1000 + 500) * 44.1; ++i)
            file << std::string("\xFF\xFB\x90\x00", 4) << std::string(413, '\0');
    }
    Log ReadLog() const {
        Log lines;
        std::ifstream file(folder / L"winamp.log");
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }
    bool Logged(const std::string& line) const {
        const Log lines = ReadLog();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    std::string AddLine(int song) const {
        const std::string bytes = SongPath(song) + '\0';
        return "74 0 100 " + std::to_string(bytes.size()) + " " + Hex(bytes);
    }

    bool RunUntil(const std::function<bool()>& done, int seconds = 20) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        while (!done()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
            for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
                DispatchMessageW(&message);
        }
        return true;
    }
    void Open(std::vector<std::int32_t> songs) {
        playList.Assign(std::move(songs));
        ASSERT_TRUE(panel.Open(client, [this] { closed = true; }));
    }
    HWND Item(int number) { return GetDlgItem(panel.Handle(), number); }
    std::string Status() { return WindowText(Item(PlayerPanelWindow::lblStatus)); }
    bool IsPlaying() { return Status() == "PLAYING"; }

    fs::path folder = fs::temp_directory_path() / L"tobbin-panel-test";
    FakeOutside fake;
    WindowsOutside real;
    Outside outside{real.Interfaces().text,
                    real.Interfaces().disk,
                    fake.drives,
                    fake.dialogs,
                    fake.userSettings,
                    real.Interfaces().programs,
                    real.Interfaces().events,
                    real.Interfaces().clock,
                    fake.statusLine,
                    real.Interfaces().player,
                    fake.clipboard};
    WinAMP_Control control{outside};
    PlayList playList;
    PlayerPanelWindow panel{outside, control, playList,
                            [this](std::int32_t record) { return SongPath(record); }};
    HWND frame = nullptr, client = nullptr;
    bool closed = false;
};

TEST_F(PanelAndStandIn, PlaysSteersAndCloses) {
    Open({3, 1, 2});
    ASSERT_TRUE(RunUntil([&] { return IsPlaying(); }));
    // The second start comes too late for a place in this order.
    EXPECT_TRUE(RunUntil([&] { return Logged("started again"); }));
    Log lines = ReadLog();
    std::erase(lines, "started again");
    lines.resize(12);
    EXPECT_EQ(lines,
              (Log{"started", "window", "1024 0 0", "1024 128 122", "1024 0 123", "273 40047 0",
                   "1024 0 101", AddLine(3), "273 40045 0", "1024 1 105", AddLine(1), AddLine(2)}));
    EXPECT_EQ(WindowText(panel.Handle()), "WinAMP Version# 2.01");
    EXPECT_EQ(WindowText(Item(PlayerPanelWindow::cmdPlayPause)), "&Pause");

    // A drag to second 4 of 5, in two moves; then the keyboard.
    const HWND track = Item(PlayerPanelWindow::hscrlTrackPos);
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE;
    GetScrollInfo(track, SB_CTL, &info);
    EXPECT_EQ(info.nMax, 5);
    SendMessageW(Item(PlayerPanelWindow::hscrlBalance), WM_KEYDOWN, VK_LEFT, 0);
    EXPECT_TRUE(RunUntil([&] { return Logged("1024 247 123"); }));  // -8
    SendMessageW(Item(PlayerPanelWindow::hscrlVolume), WM_KEYDOWN, VK_END, 0);
    EXPECT_TRUE(RunUntil([&] { return Logged("1024 255 122"); }));
    SendMessageW(track, WM_KEYDOWN, VK_END, 0);
    EXPECT_TRUE(RunUntil([&] { return Logged("1024 5000 106"); }));

    SendMessageW(Item(PlayerPanelWindow::cmdPlayPause), BM_CLICK, 0, 0);
    EXPECT_TRUE(RunUntil([&] { return Status() == "PAUSED"; }));
    EXPECT_EQ(WindowText(Item(PlayerPanelWindow::cmdPlayPause)), "&Play");

    SendMessageW(panel.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(RunUntil([&] { return Logged("closed"); }));
    lines = ReadLog();
    EXPECT_EQ(Log(lines.end() - 4, lines.end()),
              (Log{"273 40047 0", "1024 0 101", "273 40001 0", "closed"}));
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

}  // namespace
}  // namespace tobbin
