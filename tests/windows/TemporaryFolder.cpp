#include "windows/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

// A program that a test started may still be about to end.
void RemoveOnceFree(SystemDisk& disk, const std::string& path) {
    for (int tries = 0; tries < 500 && !disk.Remove(path).Ok(); ++tries)
        Sleep(10);
}

void RemoveAll(const std::string& folder) {
    SystemDisk disk;
    FolderListing listing;
    static_cast<void>(disk.List(folder, listing));
    for (const FolderEntry& entry : listing.entries) {
        const std::string path = folder + "\\" + entry.name;
        SetFileAttributesW(LongPath(path).c_str(), FILE_ATTRIBUTE_NORMAL);
        if (entry.isFolder)
            RemoveAll(path);
        else
            RemoveOnceFree(disk, path);
    }
    RemoveDirectoryW(LongPath(folder).c_str());
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    static int number = 0;
    wchar_t folder[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, folder);
    SystemDisk disk;
    DiskStatus status;
    do {
        m_path = Utf8(folder) + "tobbin " + std::to_string(++number) + "\\";
        status = disk.CreateFolder(m_path);
    } while (status.Error() == DiskError::AlreadyExists);
    EXPECT_TRUE(status.Ok()) << m_path << ": " << status.Reason();
}

TemporaryFolder::~TemporaryFolder() {
    RemoveAll(m_path.substr(0, m_path.size() - 1));
}

std::string Content(const std::string& path) {
    SystemDisk disk;
    std::string bytes;
    const DiskStatus status = ReadWholeFile(disk, path, bytes);
    EXPECT_TRUE(status.Ok()) << path << ": " << status.Reason();
    return bytes;
}

void WriteFileWith(const std::string& path, const std::string& content) {
    SystemDisk disk;
    std::unique_ptr<File> file;
    ASSERT_TRUE(disk.Open(path, OpenMode::Create, file).Ok()) << path;
    ASSERT_TRUE(file->Write(0, content).Ok()) << path;
}

}  // namespace tobbin
