// Saving while the world is hostile: killed programs, programs that hold the file, a full disk.
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

#include "platform/Disk_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "tags/MP3TagEditor.h"
#include "windows/DyingSaver.h"
#include "windows/Saver.h"
#include "windows/TemporaryFolder.h"

namespace tobbin {
namespace {

// This program as another one, from when it says that it has started until it is ended.
class OtherProgram {
 public:
    OtherProgram(const TemporaryFolder& folder, const std::string& words) {
        const std::wstring report = Wide(folder / "report");
        DeleteFileW(report.c_str());
        wchar_t self[MAX_PATH] = L"";
        GetModuleFileNameW(nullptr, self, MAX_PATH);
        const std::size_t mode = words.find(' ');
        std::wstring line = std::wstring(L"\"") + self + L"\" " + Wide(words.substr(0, mode)) +
                            L" \"" + report + L"\"" + Wide(words.substr(mode));
        STARTUPINFOW start = {};
        start.cb = sizeof(start);
        PROCESS_INFORMATION process = {};
        if (!CreateProcessW(self, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                            &process))
            return;
        CloseHandle(process.hThread);
        m_process = UniqueKernelObject(process.hProcess);
        while (GetFileAttributesW(report.c_str()) == INVALID_FILE_ATTRIBUTES)
            if (WaitForSingleObject(process.hProcess, 1) == WAIT_OBJECT_0)
                return;
        m_started = true;
    }
    ~OtherProgram() {
        TerminateProcess(m_process.Get(), 1);
        WaitForSingleObject(m_process.Get(), 10'000);
    }
    bool HasStarted() const { return m_started; }

    // How it ended by itself.
    DWORD ExitCode() const {
        DWORD code = STILL_ACTIVE;
        WaitForSingleObject(m_process.Get(), 60'000);
        GetExitCodeProcess(m_process.Get(), &code);
        return code;
    }

 private:
    UniqueKernelObject m_process;
    bool m_started = false;
};

// How many of so many kills in the middle of saving left a file that is neither old nor new.
int TornBy(int kills, std::size_t bytes, const std::string& manner) {
    TemporaryFolder folder;
    SystemDisk disk;
    std::mt19937 chance(static_cast<unsigned>(bytes));
    int torn = 0;
    for (int kill = 0; kill < kills; ++kill) {
        {
            const OtherProgram saver(folder, "--save \"" + folder / "a.juk" + "\" " +
                                                 std::to_string(bytes) + " " + manner);
            EXPECT_TRUE(saver.HasStarted());
            const auto end =
                std::chrono::steady_clock::now() + std::chrono::microseconds(chance() % 20'000);
            while (std::chrono::steady_clock::now() < end)
                SwitchToThread();
        }
        torn += !IsWholeContent(Content(folder / "a.juk"), bytes);
        RemoveUnfinishedFiles(disk, folder / "");
        FolderListing listing;
        EXPECT_TRUE(disk.List(folder / "", listing).Ok());
        EXPECT_EQ(listing.entries.size(), 2U);  // the file and the report
    }
    return torn;
}

TEST(Survival, AKillInTheMiddleOfASaveTearsNoFile) {
    const char* const wanted = std::getenv("TOBBIN_KILLS");
    const int kills = wanted != nullptr ? std::atoi(wanted) : 10;
    for (const std::size_t bytes : {200U, 200'000U, 2'000'000U}) {
        EXPECT_EQ(TornBy(kills, bytes, "careful"), 0) << bytes;
        std::cout << kills << " kills while " << bytes << " bytes were saved\n";
    }
    const int torn = TornBy(kills, 2'000'000, "naive");
    EXPECT_GE(torn * 5, kills);  // or the test would not bite
    std::cout << "the control: " << torn << " of " << kills << " naive saves torn\n";
}

// Every file of the data folder and the song, by its path; what a save left over is cleared first,
// as the next start does.
using Data = std::map<std::string, std::string>;
Data DataOf(const TemporaryFolder& folder) {
    SystemDisk disk;
    Data data;
    for (const char* place : {"", "Grouping\\", "Grouping\\System\\"}) {
        RemoveUnfinishedFiles(disk, folder / place);
        FolderListing listing;
        EXPECT_TRUE(disk.List(folder / place, listing).Ok());
        for (const FolderEntry& entry : listing.entries)
            if (!entry.isFolder)
                data[folder / (place + entry.name)] = Content(folder / (place + entry.name));
    }
    return data;
}

// How many files are neither the old one nor the new one, or not there. A tag is written in place:
// of a song every byte in front of it counts.
int Broken(const Data& data, const Data& old, const Data& changed) {
    const auto counting = [](const std::string& path, const std::string& content) {
        return content.substr(0, path.ends_with("song.mp3")
                                     ? content.size() - MP3TagEditor::kTagSize
                                     : content.size());
    };
    int broken = 0;
    for (const auto& [path, content] : old)
        broken += !data.contains(path);
    for (const auto& [path, content] : data) {
        const auto isAs = [&](const Data& expected) {
            const auto found = expected.find(path);
            return found != expected.end() &&
                   counting(path, content) == counting(path, found->second);
        };
        broken += !isAs(old) && !isAs(changed);
    }
    return broken;
}

TEST(Survival, AKillAtAnyStepOfASaveLeavesTheOldFileOrTheNewOne) {
    TemporaryFolder folder;
    SystemDisk disk;
    ASSERT_TRUE(disk.CreateFolder(folder / "Grouping").Ok());
    ASSERT_TRUE(disk.CreateFolder(folder / "Grouping\\System").Ok());
    WriteFileWith(folder / "song.mp3", "music and more of it TAG" + std::string(125, ' '));
    for (const std::string& kind : SavedKinds())
        SaveKind(kind, folder / "", false);
    const Data old = DataOf(folder);
    for (const std::string& kind : SavedKinds()) {
        if (std::getenv("TOBBIN_KILLS") == nullptr && kind != "catalogue" && kind != "tag")
            continue;
        Data changed;
        int kills = 0, broken = 0;
        for (int step = 1;; ++step) {  // 1: none; then in front of each operation, and behind it
            for (const auto& [path, content] : old)
                WriteFileWith(path, content);
            const OtherProgram saver(
                folder, "--save-up-to " + kind + " " + std::to_string(step / 2) +
                            (step % 2 ? " behind \"" : " before \"") + (folder / "\\\""));
            const DWORD code = saver.ExitCode();
            if (step == 1) {
                changed = DataOf(folder);
                ASSERT_NE(changed, old) << kind;
                continue;
            }
            if (code != kDeathCode) {
                EXPECT_EQ(code, 0U);
                break;
            }
            ++kills;
            broken += Broken(DataOf(folder), old, changed);
        }
        EXPECT_EQ(broken, 0) << kind;
        EXPECT_GE(kills, 6) << kind;
        std::cout << kind << ": " << kills << " kills at a step\n";
    }
}

TEST(Survival, AProgramThatHoldsTheFileMostOfTheTimeFailsNoSave) {
    TemporaryFolder folder;
    SystemDisk disk;
    const std::string path = folder / "a.juk";
    WriteFileWith(path, "old");
    const OtherProgram holder(folder, "--hold \"" + path + "\"");
    ASSERT_TRUE(holder.HasStarted());
    int saved = 0;
    for (int i = 1; i <= 20; ++i)
        saved += SaveWholeFile(disk, path, NthContent(i, 800)).Ok();
    EXPECT_EQ(saved, 20);
    std::string content;
    EXPECT_TRUE(ReadWholeFile(disk, path, content).Ok());
    EXPECT_EQ(content, NthContent(20, 800));
}

TEST(Survival, AFullDiskLeavesTheOldFile) {
    const std::string root = "F:\\";  // scripts/test makes it, where it may
    ULARGE_INTEGER all = {};
    if (!GetDiskFreeSpaceExW(Wide(root).c_str(), nullptr, &all, nullptr) ||
        all.QuadPart > 300 * 1024)
        GTEST_SKIP() << "there is no drive F: of 256 KB";
    SystemDisk disk;
    const std::string old = NthContent(1, 96 * 1024);
    ASSERT_TRUE(SaveWholeFile(disk, root + "a.juk", old).Ok());
    int refused = 0;
    for (int i = 0; i < 50; ++i) {
        const std::string tooLong = NthContent(2, 164 * 1024 + static_cast<std::size_t>(i) * 8'000);
        refused += SaveWholeFile(disk, root + "a.juk", tooLong).Error() == DiskError::DiskFull &&
                   Content(root + "a.juk") == old;
    }
    EXPECT_EQ(refused, 50);
    FolderListing listing;
    EXPECT_TRUE(disk.List(root, listing).Ok());
    EXPECT_EQ(listing.entries.size(), 1U);
}

}  // namespace
}  // namespace tobbin
