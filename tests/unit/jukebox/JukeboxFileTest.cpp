#include "jukebox/JukeboxFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "jukebox/JukeboxLines.h"
#include "jukebox/SongFinder.h"
#include "unit/jukebox/JukeboxFixture.h"
#include "util/LaneSum.h"

namespace tobbin {
namespace {

// What JukeboxFileTest::MakeExample makes; the sum is by another reader of the format.
constexpr char kExample[] =
    "Tobbin jukebox 1\r\n"
    "column\tName\r\n"
    "column\tKey\r\n"
    "folder\t0\t1\t0\tAll Songs\r\n"
    "place\tC:\\M\\\r\n"
    "song\t1\t2\t2\t1\ta.mp3\r\n"
    "song\t2\t7\t3\t1\tb.mp3\tBee\r\n"
    "folder\t1\t1\t0\tBest |09 of\r\n"
    "again\t1\t2\t5\r\n"
    "folder\t0\t5\t6\tEmpty\r\n"
    "end\t10\t19c908551e209f16\r\n";

class JukeboxFileTest : public JukeboxFixture {
 protected:
    std::unique_ptr<Jukebox> loaded;

    void MakeExample() {
        AddSong("a.mp3");
        AddSong("b.mp3");
        jukebox.AddColumn("Name");
        jukebox.AddColumn("Key");
        Folder& all = jukebox.AddChild(nullptr, "All Songs");
        SongItem bee = jukebox.MakeItem("Bee", 2, 7);
        bee.selectedImage = 3;
        SongItem a = jukebox.MakeItem("a.mp3", 1, 2);
        jukebox.AppendSongs(all, {a, bee});
        a.selectedImage = 5;
        jukebox.AppendSongs(jukebox.AddChild(&all, "Best \t of"), {a});
        jukebox.AddChild(nullptr, "Empty", 5, 6);
    }
    LoadResult Read(std::string_view bytes) {
        return ReadJukebox(std::string(bytes), "C:\\J\\mix.juk", catalogue, fake.text, loaded);
    }
    // Reads lines behind the first one, with an end line that fits them.
    std::string Fault(const std::string& lines) {
        const std::string before = "Tobbin jukebox 1\r\n" + lines;
        std::size_t count = 0;
        for (std::size_t at = 0; (at = before.find("\r\n", at)) != std::string::npos; at += 2)
            ++count;
        const LoadResult result = Read(before + JukeboxEndLine(count, before) + "\r\n");
        EXPECT_EQ(result.outcome == LoadOutcome::Loaded, loaded != nullptr);
        return result.message;
    }
    // The whole tree of a jukebox with everything that a file keeps.
    static std::string Dump(const Jukebox& of) {
        std::string dump;
        for (const std::string& column : of.Columns())
            dump += "[" + column + "]";
        for (const Folder* f = of.Next(nullptr); f != nullptr; f = of.Next(f)) {
            dump += "\n" + std::to_string(f->Level()) + "," + std::to_string(f->Image()) + "," +
                    std::to_string(f->SelectedImage()) + "," + f->Text() + ":";
            for (const SongItem& song : f->Songs()) {
                const MissingSong lost = song.IsMissing() ? of.MissingSongOf(song) : MissingSong{};
                dump += std::string(of.TextOf(song)) + "#" + std::to_string(song.recordNumber) +
                        "," + std::to_string(song.image) + "," +
                        std::to_string(song.selectedImage) + "," +
                        std::to_string(lost.recordNumber) + std::string(lost.folder) + "|" +
                        std::string(lost.fileName) + ";";
            }
        }
        return dump;
    }
};

TEST_F(JukeboxFileTest, IsWrittenAsDescribedAndReadBack) {
    EXPECT_EQ(LaneSum("123456789"), 0x5F65171ECC8203F0U);
    MakeExample();
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    EXPECT_EQ(bytes, kExample);
    ASSERT_EQ(Read(bytes).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(Dump(*loaded), Dump(jukebox));
    EXPECT_FALSE(loaded->IsFormDirty());
}

TEST_F(JukeboxFileTest, ACutOrAlteredFileIsRefusedWhole) {
    MakeExample();
    const std::string whole = WriteJukebox(jukebox, catalogue);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        ASSERT_EQ(Read(whole.substr(0, length)).outcome, LoadOutcome::Damaged) << length;
        ASSERT_EQ(loaded, nullptr) << length;
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int bits = 1; bits < 256; ++bits) {
            std::string altered = whole;
            altered[at] = static_cast<char>(altered[at] ^ bits);
            ASSERT_EQ(Read(altered).outcome, LoadOutcome::Damaged) << at << " " << bits;
            ASSERT_EQ(loaded, nullptr) << at;
        }
    }
    EXPECT_EQ(Read(whole + "\r\n").outcome, LoadOutcome::Damaged);
    EXPECT_EQ(Read(whole + whole).outcome, LoadOutcome::Damaged);
}

TEST_F(JukeboxFileTest, MessagesNameFileLineAndFault) {
    const std::string file = "The jukebox \"C:\\J\\mix.juk\" was not opened: in line ";
    EXPECT_EQ(Read("Tobbin jukebox 2\r\nanything").message,
              file +
                  "1, a newer Tobbin wrote it in version 2, and this one reads versions up to "
                  "1.");
    EXPECT_EQ(Read("RIFF").message, file + "1, it is not the first line of a jukebox.");
    EXPECT_EQ(Read("Tobbin jukebox 0\r\n").message, file + "1, it gives no version of a jukebox.");
    EXPECT_EQ(Read("Tobbin jukebox 1\r\nfolder\t0\t1\t0\tA\r\n").message,
              file + "2, the file is cut behind it: its last line is missing.");
    EXPECT_EQ(Read("Tobbin jukebox 1\r\nfolder\t0\t1").message, file + "2, the file is cut in it.");
    EXPECT_EQ(Read("Tobbin jukebox 1\r\nend\t1\t0000000000000000\r\n").message,
              file + "2, the file was altered: what it says of the lines before it is not so.");
}

TEST_F(JukeboxFileTest, LinesThatTobbinDoesNotWriteAreRefused) {
    const std::string folder = "folder\t0\t1\t0\tA\r\n";
    const std::string place = "place\tC:\\\r\n";
    const std::string song = "song\t1\t2\t2\t1\ta\r\n";
    EXPECT_EQ(Fault(folder + place + song + "again\t1\t2\t-2\r\n"), "");
    const auto expectFaultInLine = [&](int line, const std::string& lines) {
        EXPECT_NE(Fault(lines).find(" in line " + std::to_string(line) + ","), std::string::npos)
            << lines;
    };
    expectFaultInLine(2, "colunm\tName\r\n");
    expectFaultInLine(2, "column\r\n");
    expectFaultInLine(2, "\r\n");
    expectFaultInLine(2, "folder\t1\t1\t0\tA\r\n");
    expectFaultInLine(2, "folder\t0\t1\t0\r\n");
    expectFaultInLine(2, "folder\t0\t1\tx\tA\r\n");
    expectFaultInLine(2, "folder\t0\t1\t99999999999\tA\r\n");
    expectFaultInLine(2, "folder\t-1\t1\t0\tA\r\n");
    expectFaultInLine(3, folder + "folder\t2\t1\t0\tB\r\n");
    expectFaultInLine(3, place + song);
    expectFaultInLine(3, folder + song);
    expectFaultInLine(4, folder + place + "song\t1\t2\t2\t2\ta\r\n");
    expectFaultInLine(4, folder + place + "song\t1\t2\t2\t0\ta\r\n");
    expectFaultInLine(4, folder + place + "song\t1\t200\t2\t1\ta\r\n");
    expectFaultInLine(4, folder + place + "song\t1\t2\t2\t1\ta\tb\tc\r\n");
    for (const char* again : {"0\t2\t2", "2\t2\t2", "1\t128\t2", "1\t2", "-1\t2\t2", "1\t2\t2\t"})
        expectFaultInLine(5, folder + place + song + "again\t" + again + "\r\n");
    for (const char* text : {"|", "|0", "|0x", "|0A", "|41", "\x01", "a\nb"})
        expectFaultInLine(2, "folder\t0\t1\t0\t" + std::string(text) + "\r\n");
}

TEST_F(JukeboxFileTest, OddTextsComeBack) {
    const std::vector<std::string> texts = {"",
                                            " ",
                                            "end\t0\t0",
                                            "\r\n",
                                            std::string("\0\x1F\x7F", 3),
                                            "\\",
                                            "|7c",
                                            "\xCE\xA9\xE3\x81\x82\xF0\x9F\x8E\xB5",
                                            "\xED\xA0\x80 half a pair",
                                            "a\tb"};
    for (const std::string& text : texts) {
        jukebox.AddColumn(text);
        Folder& folder = jukebox.AddChild(nullptr, text);
        catalogue.OnSongFound("C:\\" + text + "\\", text);
        const std::int32_t record = catalogue.UBoundOfMp3Array();
        jukebox.AppendSongs(
            folder, {jukebox.MakeItem(text, record, 2), jukebox.MakeItem(text + "!", record, -128),
                     jukebox.MakeItem(text, record, 3),
                     jukebox.MakeMissingItem(text, {99, text, text}, 127)});
    }
    ASSERT_EQ(Read(WriteJukebox(jukebox, catalogue)).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(Dump(*loaded), Dump(jukebox));
}

TEST_F(JukeboxFileTest, AnyDepthIsSafe) {
    Folder* folder = nullptr;
    for (int i = 0; i < 100'000; ++i)
        folder = &jukebox.AddChild(folder, "f");
    jukebox.AppendSongs(*folder, {jukebox.MakeItem("deep", 12, 2)});
    jukebox.AddChild(jukebox.Root(0).Parent(), "last");
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    ASSERT_EQ(Read(bytes).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(loaded->FolderCount(), 100'001U);
    EXPECT_TRUE(WriteJukebox(*loaded, catalogue) == bytes);
}

TEST_F(JukeboxFileTest, SongsAreFoundAgainByTheirPathAndNeverReplacedByAStranger) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3", "gone.mp3"})
        AddSong(name);
    Folder& mine = jukebox.AddChild(nullptr, "Mine");
    for (std::int32_t record = 1; record <= 4; ++record)
        jukebox.AppendSongs(mine, {jukebox.MakeItem("Song " + std::to_string(record), record, 5)});
    const std::string bytes = WriteJukebox(jukebox, catalogue);

    // The catalogue is built anew: other numbers, a folder's letters changed, one song gone.
    FakeOutside otherFake;
    clsINI otherSettings(otherFake.outside, "C:\\T\\");
    clsMain rebuilt(otherFake.outside, otherSettings, sorter, progress);
    rebuilt.OnSongFound("C:\\M\\", "stranger.mp3");
    rebuilt.OnSongFound("c:\\m\\", "C.mp3");
    rebuilt.OnSongFound("C:\\M\\", "b.mp3");
    rebuilt.OnSongFound("0", "0");
    rebuilt.Mp3Info(clsMain::kPresence, 4, "0");
    rebuilt.OnSongFound("C:\\M\\", "a.mp3");
    ASSERT_EQ(ReadJukebox(bytes, "mix", rebuilt, fake.text, loaded).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(Dump(*loaded),
              "\n0,1,0,Mine:Song 1#5,5,5,0|;Song 2#3,5,5,0|;Song 3#2,5,5,0|;"
              "Song 4#-1,5,5,4C:\\M\\|gone.mp3;");

    // Saved and opened with the first catalogue again, the missing song is itself once more.
    EXPECT_TRUE(loaded->SongsCameOrWent());
    const std::string again = WriteJukebox(*loaded, rebuilt);
    ASSERT_EQ(ReadJukebox(again, "mix", rebuilt, fake.text, loaded).outcome, LoadOutcome::Loaded);
    EXPECT_FALSE(loaded->SongsCameOrWent());
    ASSERT_EQ(ReadJukebox(again, "mix", catalogue, fake.text, loaded).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(Dump(*loaded), Dump(jukebox));
    EXPECT_TRUE(loaded->SongsCameOrWent());
}

// Songs are read and looked up in groups; here each is looked up by itself.
TEST_F(JukeboxFileTest, ManySongsAreFoundAsEachByItself) {
    std::mt19937 chance(7);
    const auto roll = [&](std::size_t sides) { return chance() % sides; };
    const std::vector<std::string> folders = {"C:\\M\\", "C:\\|\\", "7", "", "\xCE\xA9\\"};
    const std::vector<std::string> names = {"a.mp3", "9", "", "a long name of a song.mp3",
                                            "|\t\x7F"};
    const auto songOf = [&](clsMain& of) {
        of.OnSongFound(folders[roll(folders.size())],
                       names[roll(names.size())] + std::string(roll(3), 'x'));
    };
    FakeOutside otherFake;
    clsINI otherSettings(otherFake.outside, "C:\\T\\");
    clsMain other(otherFake.outside, otherSettings, sorter, progress);
    for (int i = 0; i < 300; ++i)
        songOf(catalogue);
    for (std::int32_t record = 1; record <= 200; ++record) {
        if (roll(3) == 0)
            songOf(other);
        else
            other.OnSongFound(catalogue.Mp3Info(clsMain::kFolder, record),
                              catalogue.Mp3Info(clsMain::kFileName, record));
    }
    Folder* folder = nullptr;
    std::vector<std::int32_t> expected;
    SongFinder finder(other, fake.text);
    for (int i = 0; i < 2000; ++i) {
        if (i == 0 || roll(100) == 0)
            folder = &jukebox.AddChild(nullptr, "F");
        const auto record = static_cast<std::int32_t>(roll(300) + 1);
        const std::string name = catalogue.Mp3Info(clsMain::kFileName, record);
        SongItem song = jukebox.MakeItem(roll(9) == 0 ? "other" : name, record, 2);
        song.selectedImage = static_cast<std::int8_t>(roll(5)) - 1;
        jukebox.AppendSongs(*folder, {song});
        expected.push_back(
            finder.RecordOf(record, catalogue.Mp3Info(clsMain::kFolder, record), name));
    }
    ASSERT_EQ(
        ReadJukebox(WriteJukebox(jukebox, catalogue), "mix", other, fake.text, loaded).outcome,
        LoadOutcome::Loaded);
    std::size_t at = 0;
    const Folder* was = jukebox.Next(nullptr);
    for (const Folder* is = loaded->Next(nullptr); is != nullptr;
         is = loaded->Next(is), was = jukebox.Next(was)) {
        ASSERT_EQ(is->Songs().size(), was->Songs().size());
        for (std::size_t i = 0; i < is->Songs().size(); ++i, ++at) {
            const SongItem& song = is->Songs()[i];
            EXPECT_EQ(std::max(song.recordNumber, 0), expected[at]) << at;
            EXPECT_EQ(loaded->TextOf(song), jukebox.TextOf(was->Songs()[i])) << at;
            EXPECT_EQ(song.selectedImage, was->Songs()[i].selectedImage) << at;
            if (song.IsMissing()) {
                EXPECT_EQ(loaded->MissingSongOf(song).recordNumber, was->Songs()[i].recordNumber);
            }
        }
    }
    EXPECT_EQ(at, expected.size());
}

TEST_F(JukeboxFileTest, SavingAndLoadingAreWholeOrNothing) {
    const std::string path = "C:\\J\\Mix \xCE\xB1.juk";
    MakeExample();
    fake.disk.AddFile(path, "old");
    fake.disk.FailAt(3, DiskError::DiskFull, true);
    EXPECT_EQ(SaveJukeboxFile(fake.disk, path, jukebox, catalogue).Error(), DiskError::DiskFull);
    EXPECT_EQ(fake.disk.Content(path), "old");
    EXPECT_TRUE(SaveJukeboxFile(fake.disk, path, jukebox, catalogue).Ok());
    ASSERT_EQ(LoadJukeboxFile(fake.disk, path, catalogue, fake.text, loaded).outcome,
              LoadOutcome::Loaded);
    EXPECT_EQ(loaded->DaCaption(), "MIX \xCE\x91");
    EXPECT_EQ(loaded->FileLocation(), "C:\\J\\");
    EXPECT_EQ(loaded->Columns(),
              (std::vector<std::string>{"Name    --        (click to sort)", "Key"}));
    fake.disk.Lock(path);
    EXPECT_EQ(LoadJukeboxFile(fake.disk, path, catalogue, fake.text, loaded).outcome,
              LoadOutcome::Unreadable);
    EXPECT_EQ(loaded, nullptr);
    EXPECT_EQ(LoadJukeboxFile(fake.disk, "C:\\no.juk", catalogue, fake.text, loaded).outcome,
              LoadOutcome::NotThere);
    EXPECT_EQ(JukeboxTitle(fake.text, "juk"), "");
}

}  // namespace
}  // namespace tobbin
