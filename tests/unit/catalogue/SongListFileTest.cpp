#include "catalogue/SongListFile.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"

namespace tobbin {
namespace {

using Entry = SongListFile::Entry;

TEST(SongListFileTest, ReadsWhatOtherProgramsWrite) {
    const struct {
        std::string name;
        std::string bytes;
        std::vector<Entry> entries;
    } cases[] = {
        {"C:\\L\\a.m3u",
         "#EXTM3U\r\n\r\n#EXTINF:1,A\r\nA.mp3\r\n  D:\\b.mp3 \nA.mp3",
         {{"A.mp3", "C:\\L\\A.mp3"}, {"D:\\b.mp3", "D:\\b.mp3"}, {"A.mp3", "C:\\L\\A.mp3"}}},
        {"\\\\nas\\m\\L\\a.M3U8",
         "\xEF\xBB\xBF"
         "\xCE\xA9.mp3\n\\x\\y.mp3\n\\\\n\\s\\z.mp3\n",
         {{"\xCE\xA9.mp3", "\\\\nas\\m\\L\\\xCE\xA9.mp3"},
          {"\\x\\y.mp3", "\\\\nas\\m\\x\\y.mp3"},
          {"\\\\n\\s\\z.mp3", "\\\\n\\s\\z.mp3"}}},
        {"C:\\L\\a.m3u", "\xE9.mp3", {{"\xC3\xA9.mp3", "C:\\L\\\xC3\xA9.mp3"}}},
        {"C:\\L\\M\\a.m3u",
         "../x//./b.mp3\n..\\..\\..\\..\\c.mp3\nd:/e/../f.mp3",
         {{"../x//./b.mp3", "C:\\L\\x\\b.mp3"},
          {"..\\..\\..\\..\\c.mp3", "C:\\c.mp3"},
          {"d:/e/../f.mp3", "D:\\f.mp3"}}},
        {"C:\\L\\a.m3u",
         std::string("http://h/a.mp3\nD:b.mp3\nC:\\c:d.mp3\n*.mp3\nC:\\e.mp3\0f", 50),
         {{"http://h/a.mp3", ""},
          {"D:b.mp3", ""},
          {"C:\\c:d.mp3", ""},
          {"*.mp3", ""},
          {std::string("C:\\e.mp3\0f", 10), ""}}},
        {"C:\\L\\a.PLS",
         "[playlist]\nFile10=c.mp3\nfile2=b.mp3\r\nTitle1=A\nFILE1= a.mp3 \nFile3=\nFile=x\n"
         "File99999999999=y\nNumberOfEntries=4",
         {{"a.mp3", "C:\\L\\a.mp3"}, {"b.mp3", "C:\\L\\b.mp3"}, {"c.mp3", "C:\\L\\c.mp3"}}},
        {"C:\\L\\a.m3u", "", {}},
    };
    for (const auto& [name, bytes, entries] : cases)
        EXPECT_EQ(SongListFile(FakeText(), name, bytes).Entries(), entries) << bytes;
    EXPECT_TRUE(SongListFile::IsListName("C:\\a.PLS") && SongListFile::IsListName("C:\\a.m3u8"));
    EXPECT_FALSE(SongListFile::IsListName("C:\\am3u"));
}

}  // namespace
}  // namespace tobbin
