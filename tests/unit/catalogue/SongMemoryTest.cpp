#include "catalogue/SongMemory.h"

#include <gtest/gtest.h>

#include "catalogue/CatalogueFile.h"
#include "catalogue/SongListFile.h"
#include "fakes/FakeEnvironment.h"
#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {
namespace {

constexpr char kMemory[] = "C:\\T\\Grouping\\System\\SongMemory.txt";

class MemoryTest : public Catalogue {
 protected:
    // The catalogue's records: "-" is a cleared one, anything else a song's name.
    void Make(const Texts& names) {
        for (const std::string& name : names) {
            catalogue.OnSongFound(name == "-" ? "0" : "C:\\M\\", name == "-" ? "0" : name);
            if (name == "-")
                catalogue.Mp3Info(3, catalogue.UBoundOfMp3Array(), "0");
        }
    }
    // "record=name" of each cleared song, in order.
    std::string Told() const {
        std::string told;
        for (const SongMemory::Cleared& song : catalogue.Memory().ClearedSongs())
            told += std::to_string(song.record) + "=" + song.name + " ";
        return told;
    }
};

TEST_F(MemoryTest, IsWrittenAndReadAsTheFormatSays) {
    Make({"-", "a.mp3", "-"});
    SongMemory& memory = catalogue.Memory();
    const std::string file =
        "Tobbin song memory 1\t788844407\r\n"
        "3\t3\t7\tC:\\M\\\t\xCE\xA9.mp3\r\n"
        "1\t1\t0\tD:\\\tb.mp3\r\n"
        "2\t4096\r\n"
        "end\r\n";
    EXPECT_EQ(memory.Read(file, catalogue.Records()).message, "");
    EXPECT_EQ(Told(), "3=\xCE\xA9.mp3 1=b.mp3 ");
    EXPECT_EQ(memory.SizeOf(2), 4096U);
    EXPECT_EQ(memory.Write(catalogue.Records(), true), file);
    for (std::size_t cut = 0; cut < file.size(); ++cut)
        EXPECT_EQ(memory.Read(file.substr(0, cut), catalogue.Records()).outcome,
                  LoadOutcome::Damaged)
            << cut;
    for (const char* line : {"4", "0\t1", "1\tx", "1\t1\t0\t\ta.mp3", "1\t0\t0\tC:\\\ta.mp3",
                             "3\t3\t0\tC:\\\ta.mp3", "99999999999\t5", "1\t2\t3\t4"}) {
        const LoadResult result = memory.Read(
            file.substr(0, file.size() - 5) + line + "\r\nend\r\n", catalogue.Records());
        EXPECT_EQ(result.message, "line 5 is none that Tobbin writes") << line;
        EXPECT_EQ(Told(), "3=\xCE\xA9.mp3 1=b.mp3 ") << line;
    }
}

// A catalogue of songs that are gone, saved again after one was dropped in front of them. Whenever
// the power goes, each name stands at its own record afterwards.
TEST_F(MemoryTest, NamesStayWithTheirRecordsWhereverASaveIsCut) {
    for (int operation = 1;; ++operation) {
        fake.disk.Heal();
        fake.disk.Erase("C:\\T\\Grouping");
        fake.disk.AddFolder("C:\\T\\Grouping\\System");
        clsMain first(fake.environment, settings, sorter, progress);
        for (const char* name : {"twin.mp3", "twin.mp3", "x.mp3", "y.mp3", "stays.mp3"})
            first.OnSongFound("C:\\M\\", name);
        fake.disk.AddFile("C:\\M\\twin.mp3");
        fake.disk.AddFile("C:\\M\\stays.mp3");
        first.Mp3Info(5, 3, "5");
        first.Mp3Info(5, 4, "6");
        ASSERT_TRUE(first.Save());
        first.CheckToSeeIfFilesAreMissingAndMakeFalse();
        fake.disk.StopDeadAt(operation);
        first.Save();
        first.DeleteIdenticalFileNamesAndPaths();
        const bool wasCut = fake.disk.HasFailed();
        fake.disk.Heal();
        const std::int32_t count = SummariseCatalogue(fake.disk.Content(kCatalogue)).songs;
        settings.NumerOfRecordsInTheMain(count);
        ASSERT_TRUE(catalogue.LoadMain());
        for (std::int32_t record = 1; record <= count; ++record) {
            const std::string rank = catalogue.Mp3Info(5, record);
            const auto* const song = catalogue.Memory().MaybeCleared(record);
            if (catalogue.Mp3Info(2, record) == "0") {
                ASSERT_NE(song, nullptr) << operation;
                EXPECT_EQ(song->name, rank == "5" ? "x.mp3" : "y.mp3") << operation;
            }
        }
        if (!wasCut)
            break;
        ASSERT_LT(operation, 80);
    }
    EXPECT_EQ(Told(), "2=x.mp3 3=y.mp3 ");
}

TEST_F(MemoryTest, ADamagedFileIsKeptAsideAndAnUnreadableOneIsNotLost) {
    Make({"-", "a.mp3"});
    ASSERT_TRUE(catalogue.Save());
    const std::string damaged = "Tobbin song memory 1\t0\r\n1\t1\t0\tC:\\M\\\tx.mp3\r\nwhat\r\n";
    fake.disk.AddFile(kMemory, damaged);
    ASSERT_TRUE(catalogue.LoadMain());
    EXPECT_EQ(Told(), "1=x.mp3 ");
    EXPECT_EQ(fake.disk.Content("C:\\T\\Grouping\\System\\SongMemory.bad"), damaged);
    EXPECT_NE(fake.statusLine.lines.back().find("line 3"), std::string::npos);
    ASSERT_TRUE(catalogue.Save());
    const std::string whole = fake.disk.Content(kMemory);
    fake.disk.Lock(kMemory);
    ASSERT_TRUE(catalogue.LoadMain());
    catalogue.Memory().Clear(1, "C:\\M\\", "z.mp3");
    EXPECT_FALSE(catalogue.Save());
    fake.disk.Unlock(kMemory);
    EXPECT_EQ(fake.disk.Content(kMemory), whole);
    EXPECT_TRUE(catalogue.Save());
    EXPECT_EQ(fake.disk.Content("C:\\T\\Grouping\\System\\SongMemory.bad2"), whole);
}

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
