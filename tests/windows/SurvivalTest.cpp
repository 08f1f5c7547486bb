// Saving while the world is hostile: programs that hold the file, a full disk.
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/Disk_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "windows/Holder.h"
#include "windows/TemporaryFolder.h"

namespace tobbin {
namespace {

// The n-th content of a file that is saved again and again: so many times 8 bytes.
std::string NthContent(int n, std::size_t groups) {
    std::string content;
    for (std::size_t i = 0; i < groups; ++i)
        content += std::to_string(10'000'000 + n);
    return content;
}

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

 private:
    UniqueKernelObject m_process;
    bool m_started = false;
};

TEST(Survival, AProgramThatHoldsTheFileMostOfTheTimeFailsNoSave) {
    TemporaryFolder folder;
    SystemDisk disk;
    const std::string path = folder / "a.juk";
    WriteFileWith(path, "old");
    const OtherProgram holder(folder, "--hold \"" + path + "\"");
    ASSERT_TRUE(holder.HasStarted());
    int saved = 0;
    for (int i = 1; i <= 20; ++i)
        saved += SaveWholeFile(disk, path, NthContent(i, 100)).Ok();
    EXPECT_EQ(saved, 20);
    std::string content;
    EXPECT_TRUE(ReadWholeFile(disk, path, Megabytes(64), content).Ok());
    EXPECT_EQ(content, NthContent(20, 100));
}

TEST(Survival, AFullDiskLeavesTheOldFile) {
    const std::string root = "F:\\";  // scripts/test makes it, where it may
    ULARGE_INTEGER all = {};
    if (!GetDiskFreeSpaceExW(Wide(root).c_str(), nullptr, &all, nullptr) ||
        all.QuadPart > 300 * 1024)
        GTEST_SKIP() << "there is no drive F: of 256 KB";
    SystemDisk disk;
    const std::string old = NthContent(1, 12 * 1024);
    ASSERT_TRUE(SaveWholeFile(disk, root + "a.juk", old).Ok());
    int refused = 0;
    for (int i = 0; i < 50; ++i) {
        const std::string tooLong = NthContent(2, 21'000 + static_cast<std::size_t>(i) * 1'000);
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
