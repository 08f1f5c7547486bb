#include <gtest/gtest.h>
#include <windows.h>

#include <sddl.h>

#include <algorithm>
#include <atomic>
#include <thread>

#include "platform/Disk_win32.h"
#include "platform/DiskError_win32.h"
#include "platform/FolderListing_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "windows/TemporaryFolder.h"

namespace tobbin {
namespace {

class SystemDiskTest : public testing::Test {
 protected:
    std::vector<std::string> Names(const std::string& path) {
        FolderListing listing;
        EXPECT_TRUE(disk.List(path, listing).Ok()) << path;
        std::vector<std::string> names;
        for (const FolderEntry& entry : listing.entries)
            names.push_back(entry.name);
        std::sort(names.begin(), names.end());
        return names;
    }
    DiskError ErrorOfOpening(const std::string& path, OpenMode mode) {
        std::unique_ptr<File> file;
        return disk.Open(path, mode, file).Error();
    }
    // Another program's hold on a file.
    UniqueFile Hold(const std::string& path, DWORD access, DWORD share) {
        UniqueFile handle(
            CreateFileW(LongPath(path).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(handle) << path;
        return handle;
    }

    TemporaryFolder folder;
    SystemDisk disk;
};

TEST_F(SystemDiskTest, PathsHaveNoLimitOfLength) {
    std::string deep = folder / "";
    for (int level = 0; level < 20; ++level) {
        deep += std::string(50, static_cast<char>('a' + level)) + "\\";
        ASSERT_TRUE(disk.CreateFolder(deep).Ok()) << deep;
    }
    ASSERT_GT(deep.size(), 1000U);
    const std::string song = deep + "song.mp3";
    ASSERT_TRUE(SaveWholeFile(disk, song, "first").Ok());
    ASSERT_TRUE(SaveWholeFile(disk, song, "second").Ok());
    EXPECT_EQ(Content(song), "second");
    // Parts that a path should not have are worked out where the system no longer does it.
    EXPECT_EQ(Content(deep + ".\\none\\..\\/song.mp3"), "second");
    EXPECT_TRUE(disk.Remove(song).Ok());
    EXPECT_FALSE(FileExists(disk, song));
}

TEST(LongPath, IsAbsoluteAndMarked) {
    EXPECT_EQ(LongPath("C:\\Music\\a.mp3"), LR"(\\?\C:\Music\a.mp3)");
    EXPECT_EQ(LongPath("C:/Music//b/../c. "), LR"(\\?\C:\Music\c. )");
    EXPECT_EQ(LongPath("C:\\Music\\"), LR"(\\?\C:\Music)");
    EXPECT_EQ(LongPath("C:\\.."), LR"(\\?\C:\)");
    EXPECT_EQ(LongPath("\\\\server\\share"), LR"(\\?\UNC\server\share\)");
    EXPECT_EQ(LongPath("\\\\server\\share\\..\\a\\"), LR"(\\?\UNC\server\share\a)");
    EXPECT_EQ(LongPath("\\\\?\\C:\\a/b"), LR"(\\?\C:\a/b)");
}

TEST_F(SystemDiskTest, BothWaysOfListingGiveTheSame) {
    constexpr std::size_t kFiles = 1500;  // more than one buffer full
    // Greek, Japanese, and a character beyond the 16-bit ones.
    const std::string filler =
        std::string(60, 'x') + "\xCE\x9F\xCE\xB4\xE6\x97\xA5\xF0\x9F\x8E\xB5";
    for (std::size_t i = 0; i < kFiles; ++i)
        WriteFileWith(folder / (std::to_string(i) + filler), "");
    ASSERT_TRUE(disk.CreateFolder(folder / "sub").Ok());

    const std::wstring longFolder = LongPath(folder / "");
    const UniqueFile handle(CreateFileW(longFolder.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ,
                                        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                        nullptr));
    std::vector<FolderEntry> byHandle, bySearch;
    bool supported = false;
    ASSERT_TRUE(ListByHandle(handle.Get(), byHandle, supported).Ok());
    EXPECT_TRUE(supported);
    ASSERT_TRUE(ListBySearch(longFolder, bySearch).Ok());

    ASSERT_EQ(byHandle.size(), kFiles + 1);
    ASSERT_EQ(bySearch.size(), kFiles + 1);
    for (auto* const entries : {&byHandle, &bySearch})
        std::ranges::sort(*entries, {}, &FolderEntry::name);
    for (std::size_t i = 0; i < byHandle.size(); ++i) {
        EXPECT_EQ(byHandle[i].name, bySearch[i].name);
        EXPECT_EQ(byHandle[i].isFolder, byHandle[i].name == "sub");
        EXPECT_EQ(bySearch[i].isFolder, byHandle[i].isFolder);
    }
}

TEST_F(SystemDiskTest, ASaveThatMayNotReplaceLeavesTheOldFileAlone) {
    WriteFileWith(folder / "song", "older");
    SetFileAttributesW(Wide(folder / "song").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(SaveWholeFile(disk, folder / "song", "old").Ok());
    EXPECT_TRUE(GetFileAttributesW(Wide(folder / "song").c_str()) & FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesW(Wide(folder / "song").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(SaveWholeFile(disk, folder / "song", "new").Error(), DiskError::AccessDenied);
    EXPECT_EQ(Content(folder / "song"), "old");
    SetFileAttributesW(Wide(folder / "song").c_str(), FILE_ATTRIBUTE_NORMAL);

    UniqueFile held = Hold(folder / "song", GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(SaveWholeFile(disk, folder / "song", "new").Error(), DiskError::SharingViolation);
    held.Reset();
    EXPECT_EQ(Content(folder / "song"), "old");
    EXPECT_EQ(Names(folder / ""), std::vector<std::string>{"song"});
    EXPECT_TRUE(SaveWholeFile(disk, folder / "song", "new").Ok());
}

// What others may not read they may not read afterwards, and not while it is written.
TEST_F(SystemDiskTest, ASavedFileKeepsTheAccessListOfTheOneBefore) {
    const std::wstring path = Wide(folder / "song");
    const auto accessList = [](const std::wstring& file) {
        std::vector<std::byte> list(4096);
        DWORD bytes = 0;
        EXPECT_TRUE(
            GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, list.data(), 4096, &bytes));
        wchar_t* text = nullptr;
        ConvertSecurityDescriptorToStringSecurityDescriptorW(
            list.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr);
        const std::string result = Utf8(text);
        LocalFree(text);
        return result;
    };
    constexpr char kEverybody[] = ";WD)";
    WriteFileWith(folder / "song", "old");
    // Without what it says of everybody; written plainly, the file would get that again.
    std::string narrow = accessList(path);
    ASSERT_NE(narrow.find(kEverybody), std::string::npos) << narrow;
    narrow.erase(narrow.rfind('(', narrow.find(kEverybody)));
    PSECURITY_DESCRIPTOR wanted = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        Wide("D:P" + narrow.substr(narrow.find('('))).c_str(), SDDL_REVISION_1, &wanted, nullptr));
    ASSERT_TRUE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, wanted));
    LocalFree(wanted);
    narrow = accessList(path);
    EXPECT_EQ(narrow.find(kEverybody), std::string::npos) << narrow;

    ASSERT_TRUE(SaveWholeFile(disk, folder / "song", "new").Ok());
    EXPECT_EQ(Content(folder / "song"), "new");
    EXPECT_EQ(accessList(path), narrow);
    std::unique_ptr<File> file;
    EXPECT_EQ(disk.CreateNew(folder / "song", {}, file).Error(), DiskError::AlreadyExists);
    EXPECT_EQ(Names(folder / ""), std::vector<std::string>{"song"});
}

TEST_F(SystemDiskTest, ReadingHindersNobodyAndWritingIsAlone) {
    WriteFileWith(folder / "song", "0123456789");
    {
        std::unique_ptr<File> reading;
        ASSERT_TRUE(disk.Open(folder / "song", OpenMode::Read, reading).Ok());
        Hold(folder / "song", GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ);
    }
    {
        std::unique_ptr<File> writing;
        ASSERT_TRUE(disk.Open(folder / "song", OpenMode::Update, writing).Ok());
        EXPECT_EQ(ErrorOfOpening(folder / "song", OpenMode::Update), DiskError::SharingViolation);
    }
    const UniqueFile held = Hold(folder / "song", GENERIC_READ, 0);
    EXPECT_EQ(ErrorOfOpening(folder / "song", OpenMode::Read), DiskError::SharingViolation);
    EXPECT_TRUE(FileExists(disk, folder / "song"));
}

TEST_F(SystemDiskTest, FilesAreReadAndWrittenAnywhere) {
    std::unique_ptr<File> file;
    WriteFileWith(folder / "file", "0123456789");
    ASSERT_TRUE(disk.Open(folder / "file", OpenMode::Update, file).Ok());
    std::string bytes;
    EXPECT_TRUE(file->Read(7, 100, bytes).Ok());
    EXPECT_EQ(bytes, "789");
    EXPECT_TRUE(file->Read(11, 1, bytes).Ok());
    EXPECT_EQ(bytes, "");
    EXPECT_TRUE(file->Write(12, "TAG").Ok());
    EXPECT_TRUE(file->Write(0, "x").Ok());
    std::uint64_t size = 0;
    EXPECT_TRUE(file->Size(size).Ok());
    EXPECT_EQ(size, 15U);
    EXPECT_TRUE(file->Flush().Ok());
    EXPECT_TRUE(file->Close().Ok());
    EXPECT_EQ(Content(folder / "file"), std::string("x123456789\0\0TAG", 15));

    ASSERT_TRUE(disk.Open(folder / "file", OpenMode::Read, file).Ok());
    EXPECT_EQ(file->Write(0, "y").Error(), DiskError::AccessDenied);
    PathInfo info;
    ASSERT_TRUE(disk.Stat(folder / "file", info).Ok());
    EXPECT_EQ(info.size, 15U);
    EXPECT_GT(info.modifiedTime, 1'600'000'000);
}

TEST_F(SystemDiskTest, WhatIsWrongIsToldApart) {
    WriteFileWith(folder / "file", "");
    for (const std::string& nothing : {folder / "none", folder / "none\\none", folder / "a?b",
                                       folder / "file\\below", std::string("Q:\\none")}) {
        PathInfo info;
        EXPECT_TRUE(disk.Stat(nothing, info).Ok()) << nothing;
        EXPECT_EQ(info.kind, PathKind::Nothing);
        EXPECT_EQ(ErrorOfOpening(nothing, OpenMode::Read), DiskError::NotFound) << nothing;
        FolderListing listing;
        EXPECT_EQ(disk.List(nothing, listing).Error(), DiskError::NotFound) << nothing;
    }
    FolderListing listing;
    EXPECT_EQ(disk.List(folder / "file", listing).Error(), DiskError::NotFound);
    EXPECT_EQ(ErrorOfOpening(folder / "", OpenMode::Read), DiskError::AccessDenied);
    EXPECT_EQ(disk.CreateFolder(folder / "").Error(), DiskError::AlreadyExists);
    EXPECT_EQ(disk.Remove(folder / "none").Error(), DiskError::NotFound);
    EXPECT_TRUE(FolderExists(disk, folder / ""));
    EXPECT_TRUE(FolderExists(disk, "C:\\"));

    for (const auto& [code, error] : {std::pair(ERROR_HANDLE_DISK_FULL, DiskError::DiskFull),
                                      {ERROR_WRITE_PROTECT, DiskError::WriteProtected},
                                      {ERROR_BAD_NETPATH, DiskError::NotReady},
                                      {ERROR_CRC, DiskError::Other}})
        EXPECT_EQ(StatusOf(static_cast<DWORD>(code)).Error(), error) << code;
}

TEST_F(SystemDiskTest, AProgramThatHoldsTheFileMostOfTheTimeFailsNoSave) {
    const std::string path = folder / "a.juk";
    WriteFileWith(path, "old");
    std::atomic_bool isHeld = false;
    const std::jthread holder([&](const std::stop_token& stop) {  // for 60 of every 80 milliseconds
        while (!stop.stop_requested()) {
            UniqueFile file(CreateFileW(Wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                        0, nullptr));
            if (!file)
                continue;
            isHeld = true;
            Sleep(60);
            file.Reset();
            Sleep(20);
        }
    });
    while (!isHeld)
        Sleep(1);
    for (int i = 1; i <= 20; ++i)
        EXPECT_TRUE(SaveWholeFile(disk, path, std::string(800, static_cast<char>('a' + i))).Ok());
    EXPECT_EQ(Content(path), std::string(800, 'u'));
}

TEST_F(SystemDiskTest, AFullDiskLeavesTheOldFile) {
    ULARGE_INTEGER all = {};  // scripts/test makes the drive, where it may
    if (!GetDiskFreeSpaceExW(L"F:\\", nullptr, &all, nullptr) || all.QuadPart > 300 * 1024)
        GTEST_SKIP() << "there is no drive F: of 256 KB";
    const std::string old(96 * 1024, 'o');
    ASSERT_TRUE(SaveWholeFile(disk, "F:\\a.juk", old).Ok());
    for (std::size_t size = 168'000; size < 560'000; size += 8'000) {
        EXPECT_EQ(SaveWholeFile(disk, "F:\\a.juk", std::string(size, 'n')).Error(),
                  DiskError::DiskFull);
        ASSERT_EQ(Content("F:\\a.juk"), old);
    }
    EXPECT_EQ(Names("F:\\"), std::vector<std::string>{"a.juk"});
}

}  // namespace
}  // namespace tobbin
