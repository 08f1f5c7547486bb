#include "platform/TreeSearch_win32.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

namespace fs = std::filesystem;

class TreeSearch : public testing::Test {
 protected:
    TreeSearch() {
        std::wstring folder = LongPath(m_root);
        CreateDirectoryW(folder.c_str(), nullptr);
        CreateDirectoryW((folder + L"\\b").c_str(), nullptr);
        // A tree deeper than the system's old limit for paths stands in the way.
        for (int depth = 0; depth < 4; ++depth) {
            folder += L"\\" + std::wstring(100, L'a');
            CreateDirectoryW(folder.c_str(), nullptr);
        }
        std::ofstream(m_root + "\\b\\WinAmp.EXE") << "MZ";
    }
    ~TreeSearch() override {
        std::error_code ignored;
        fs::remove_all(LongPath(m_root), ignored);
    }
    std::string m_root = (fs::temp_directory_path() / "tobbin-tree-test").string();
};

TEST_F(TreeSearch, FindsAFileAtAnyDepthOrNothing) {
    const auto keepOn = [] { return true; };
    const auto found = FindBelowWithSystemSearch(m_root, "winamp.exe", keepOn);
    ASSERT_TRUE(found);
    EXPECT_TRUE(EqualsIgnoringAsciiCase(*found, m_root + "\\b\\winamp.exe")) << *found;
    EXPECT_FALSE(FindBelowWithSystemSearch(m_root, "no such program.exe", keepOn));
    EXPECT_FALSE(FindBelowWithSystemSearch("Q:\\", "winamp.exe", keepOn));
}

TEST_F(TreeSearch, GivesShortPathsOfExistingFiles) {
    const std::wstring greek = Wide(m_root) + L"\\b\\\x03A9\x03BC\x03AD\x03B3\x03B1 song.mp3";
    std::ofstream(fs::path(greek)) << "song";
    const auto shortPath = MaybeSystemShortPath(Utf8(greek));
    ASSERT_TRUE(shortPath);
    EXPECT_TRUE(IsAscii(FileNameOfPath(*shortPath))) << *shortPath;
    std::string content;
    std::ifstream(*shortPath) >> content;
    EXPECT_EQ(content, "song");
    EXPECT_FALSE(MaybeSystemShortPath(m_root + "\\b\\missing song.mp3"));
}

}  // namespace
}  // namespace tobbin
