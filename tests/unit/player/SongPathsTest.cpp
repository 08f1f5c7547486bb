#include "player/SongPaths.h"

#include <gtest/gtest.h>

#include "fakes/FakeOutside.h"

namespace tobbin {
namespace {

TEST(SongPaths, AreFolderAndNameOfRecordsThatHaveBoth) {
    FakeOutside fake;
    clsINI settings(fake.outside, "C:\\Tobbin\\");
    SortCity sorter(fake.text);
    Progress progress;
    clsMain catalogue(fake.outside, settings, sorter, progress);
    const auto pathOf = SongPathsOf(catalogue);
    EXPECT_EQ(pathOf(1), "");
    catalogue.OnSongFound("C:\\M\\", "a.mp3");
    catalogue.OnSongFound("0", "0");  // cleared
    catalogue.OnSongFound("C:\\M\\", "");
    EXPECT_EQ(pathOf(1), "C:\\M\\a.mp3");
    for (const std::int32_t record : {-1, 0, 2, 3, 4})
        EXPECT_EQ(pathOf(record), "") << record;
}

}  // namespace
}  // namespace tobbin
