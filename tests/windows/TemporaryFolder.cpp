#include "windows/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

namespace fs = std::filesystem;

// A program that a test started may still be about to end. The library's own function for this
// knows no long paths.
void RemoveAll(const std::string& folder) {
    SystemDisk disk;
    FolderListing listing;
    static_cast<void>(disk.List(folder, listing));
    for (const FolderEntry& entry : listing.entries) {
        const std::string path = folder + entry.name;
        if (entry.isFolder)
            RemoveAll(path + "\\");
        else
            for (int tries = 0; tries < 500 && !disk.Remove(path).Ok(); ++tries)
                Sleep(10);
    }
    RemoveDirectoryW(LongPath(folder).c_str());
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    static int number = 0;
    fs::path folder;
    do
        folder = fs::temp_directory_path() / ("tobbin " + std::to_string(++number));
    while (!fs::create_directory(folder));
    m_path = Utf8(folder.wstring()) + "\\";
}

TemporaryFolder::~TemporaryFolder() {
    RemoveAll(m_path);
}

std::string Content(const std::string& path) {
    SystemDisk disk;
    std::string bytes;
    const DiskStatus status = ReadWholeFile(disk, path, Megabytes(64), bytes);
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
