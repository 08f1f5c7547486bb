#include "windows/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

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
            static_cast<void>(disk.Remove(path));
    }
    RemoveDirectoryW(LongPath(folder).c_str());
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    static int number = 0;
    wchar_t folder[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, folder);
    m_path = Utf8(folder) + "tobbin " + std::to_string(GetCurrentProcessId()) + " " +
             std::to_string(++number) + "\\";
    EXPECT_TRUE(SystemDisk().CreateFolder(m_path).Ok()) << m_path;
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
