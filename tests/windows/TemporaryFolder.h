#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/Disk_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {

// A folder of the test's own in the user's temporary folder, removed with all in it at the end.
class TemporaryFolder {
 public:
    TemporaryFolder() {
        namespace fs = std::filesystem;
        static int number = 0;
        fs::path folder;
        do
            folder = fs::temp_directory_path() / ("tobbin " + std::to_string(++number));
        while (!fs::create_directory(folder));
        m_path = Utf8(folder.wstring()) + "\\";
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { RemoveAll(m_path); }

    // The full path of a name in it; with "" the folder's own, with "\" at its end.
    std::string operator/(const std::string& name) const { return m_path + name; }

 private:
    // The library's own function for this knows no long paths.
    static void RemoveAll(const std::string& folder) {
        SystemDisk disk;
        FolderListing listing;
        static_cast<void>(disk.List(folder, listing));
        for (const FolderEntry& entry : listing.entries)
            if (const std::string path = folder + entry.name; entry.isFolder)
                RemoveAll(path + "\\");
            else
                EXPECT_TRUE(disk.Remove(path).Ok()) << path;
        RemoveDirectoryW(LongPath(folder).c_str());
    }
    std::string m_path;
};

// The whole content of a file; a failure of the test when it can't be read.
inline std::string Content(const std::string& path) {
    SystemDisk disk;
    std::string bytes;
    const DiskStatus status = ReadWholeFile(disk, path, Megabytes(64), bytes);
    EXPECT_TRUE(status.Ok()) << path << ": " << status.Reason();
    return bytes;
}

inline void WriteFileWith(const std::string& path, const std::string& content) {
    SystemDisk disk;
    std::unique_ptr<File> file;
    static_cast<void>(disk.Remove(path));
    ASSERT_TRUE(disk.CreateNew(path, {}, file).Ok()) << path;
    ASSERT_TRUE(file->Write(0, content).Ok()) << path;
}

}  // namespace tobbin
