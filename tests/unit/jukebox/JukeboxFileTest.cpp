#include "jukebox/JukeboxFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "jukebox/InitialJukebox.h"
#include "jukebox/Jukebox.h"
#include "unit/jukebox/JukeboxFixture.h"

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
    "end\t10\t81b697e6\r\n";

class JukeboxFileTest : public JukeboxFixture {
 protected:
    std::unique_ptr<Jukebox> loaded;
    FakeEnvironment otherFake;
    clsINI otherSettings{otherFake.environment, "C:\\T\\"};
    clsMain other{otherFake.environment, otherSettings, sorter, progress};

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
        return ReadJukebox(bytes, "C:\\J\\mix.juk", catalogue, loaded);
    }
    // The lines of a jukebox's file between the first and the last one.
    static std::string Lines(const Jukebox& of, const clsMain& with) {
        const std::string bytes = WriteJukebox(of, with);
        const std::size_t first = bytes.find('\n') + 1;
        return bytes.substr(first, bytes.rfind("end\t") - first);
    }
};

TEST_F(JukeboxFileTest, IsWrittenAsDescribedAndReadBack) {
    MakeExample();
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    EXPECT_EQ(bytes, kExample);
    ASSERT_EQ(Read(bytes).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(WriteJukebox(*loaded, catalogue), bytes);
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
    const std::string first = "Tobbin jukebox 1\r\n";
    const std::string folder = first + "folder\t0\t1\t0\tA\r\n";
    const std::string place = folder + "place\tC:\\\r\n";
    const std::string song = place + "song\t1\t2\t2\t1\ta\r\n";
    const struct {
        int line;
        std::string bytes;
        const char* fault;
    } cases[] = {
        {1, "Tobbin jukebox 2\r\nanything",
         "a newer Tobbin wrote it in version 2, and this one reads versions up to 1."},
        {1, "RIFF", "it is not the first line of a jukebox."},
        {1, "Tobbin jukebox 0\r\n", "it gives no version of a jukebox."},
        {2, folder, "the file is cut behind it: its last line is missing."},
        {2, first + "folder\t0\t1", "the file is cut in it."},
        {2, first + "end\t1\t00000000\r\n",
         "the file was altered: what it says of the lines before it is not so."},
        {5, song + "again\t1\t2\t-2\r\n", "the file is cut behind it: its last line is missing."},
        {4, first + "column\tA\r\ncolumn\tB\r\ncolumn\tC\r\n",
         "the list has no more columns than 2."},
        {2, first + "colunm\tName\r\n", "it is no line that Tobbin writes."},
        {2, first + "column\r\n", "it has not the number of fields that it must have."},
        {2, first + "folder\t0\t1\tx\tA\r\n", "a number in it is none, or out of range."},
        {2, first + "column\t|41\r\n", "a text in it holds a character that can't be."},
        {2, first + "folder\t1\t1\t0\tA\r\n", "its folder has none above it."},
        {3, first + "place\tC:\\\r\nsong\t1\t2\t2\t1\ta\r\n", "its song stands in no folder."}};
    for (const auto& each : cases)
        EXPECT_EQ(Read(each.bytes).message,
                  "The jukebox \"C:\\J\\mix.juk\" was not opened: in line " +
                      std::to_string(each.line) + ", " + each.fault);
    // With a good line behind the bad one.
    const auto expectFaultInLine = [&](int line, const std::string& bytes) {
        EXPECT_NE(Read(bytes + "column\tK\r\n").message.find(" in line " + std::to_string(line)),
                  std::string::npos)
            << bytes;
    };
    expectFaultInLine(2, first + "\r\n");
    for (const char* fields : {"0\t1\t0", "0\t1\t99999999999\tA", "-1\t1\t0\tA", "2\t1\t0\tB"})
        expectFaultInLine(3, folder + "folder\t" + fields + "\r\n");
    for (const char* text : {"|", "|0", "|0x", "|0A", "\x01", "a\nb"})
        expectFaultInLine(2, first + "folder\t0\t1\t0\t" + text + "\r\n");
    for (const char* fields : {"1\t2\t2\t2\ta", "1\t2\t2\t0\ta", "1\t200\t2\t1\ta",
                               "1\t2\t128\t1\ta", "1\t2\t2\t1\ta\tb\tc", "1\t2\t2\t1"})
        expectFaultInLine(4, place + "song\t" + fields + "\r\n");
    for (const char* again : {"0\t2\t2", "2\t2\t2", "1\t128\t2", "1\t2", "-1\t2\t2", "1\t2\t2\t"})
        expectFaultInLine(5, song + "again\t" + again + "\r\n");
}

TEST_F(JukeboxFileTest, OddTextsComeBack) {
    const std::string nul("\0\x1F\x7F", 3), half = "\xED\xA0\x80 half a pair";
    const std::vector<std::string> texts = {
        "", " ", "end\t0\t0", "\r\n", nul, "\\", "|7c", "\u03A9\u3042\U0001F3B5", half, "a\tb"};
    jukebox.AddColumn(texts[4]);
    jukebox.AddColumn(texts[7]);
    for (const std::string& text : texts) {
        Folder& folder = jukebox.AddChild(nullptr, text);
        catalogue.OnSongFound("C:\\" + text + "\\", text);
        const std::int32_t record = catalogue.UBoundOfMp3Array();
        jukebox.AppendSongs(
            folder, {jukebox.MakeItem(text, record, 2), jukebox.MakeItem(text + "!", record, -128),
                     jukebox.MakeItem(text, record, 3),
                     jukebox.MakeMissingItem(text, {99, text, text + "?"}, 127)});
    }
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    ASSERT_EQ(Read(bytes).outcome, LoadOutcome::Loaded);
    EXPECT_EQ(WriteJukebox(*loaded, catalogue), bytes);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(loaded->Root(i).Text(), texts[i]);
        EXPECT_EQ(loaded->TextOf(loaded->Root(i).Songs()[1]), texts[i] + "!");
    }
}

TEST_F(JukeboxFileTest, AnyDepthIsSafe) {
    constexpr int kDepth = 100'000;
    Folder* folder = nullptr;
    for (int i = 0; i < kDepth; ++i)
        folder = &jukebox.AddChild(folder, "f" + std::to_string(i % 7), 3, 4);
    EXPECT_EQ(folder->Level(), kDepth - 1);
    jukebox.AppendSongs(*folder, {jukebox.MakeMissingItem("deep", {12, "", ""}, 2),
                                  jukebox.MakeMissingItem("lost", {9, "C:\\M\\", "x.mp3"}, 2)});
    jukebox.AddChild(nullptr, "last");
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    ASSERT_EQ(Read(bytes).outcome, LoadOutcome::Loaded);
    Jukebox copy;
    CopyJukebox(*loaded, copy);
    for (const Jukebox* const like : {loaded.get(), &copy}) {
        EXPECT_EQ(like->FolderCount(), kDepth + 1U);
        EXPECT_TRUE(WriteJukebox(*like, catalogue) == bytes);
    }
    copy.Remove(copy.Root(0).Child(0));
    EXPECT_EQ(copy.FolderCount(), 2U);
}

TEST_F(JukeboxFileTest, SongsAreFoundAgainByTheirPathAndNeverReplacedByAStranger) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3", "gone.mp3"})
        AddSong(name);
    Folder& mine = jukebox.AddChild(nullptr, "Mine");
    for (std::int32_t record = 1; record <= 4; ++record)
        jukebox.AppendSongs(mine, {jukebox.MakeItem("Song " + std::to_string(record), record, 5)});
    const std::string bytes = WriteJukebox(jukebox, catalogue);

    // The catalogue is built anew: other numbers, a folder's letters changed, one song gone.
    other.OnSongFound("C:\\M\\", "stranger.mp3");
    other.OnSongFound("c:\\m\\", "C.mp3");
    other.OnSongFound("C:\\M\\", "b.mp3");
    other.OnSongFound("0", "0");
    other.Mp3Info(clsMain::kPresence, 4, "0");
    other.OnSongFound("C:\\M\\", "a.mp3");
    const auto readWith = [&](const clsMain& with, const std::string& file) {
        return ReadJukebox(file, "mix", with, loaded).outcome == LoadOutcome::Loaded;
    };
    ASSERT_TRUE(readWith(other, bytes));
    EXPECT_TRUE(loaded->SongsCameOrWent());
    const std::string again = WriteJukebox(*loaded, other);
    EXPECT_EQ(Lines(*loaded, other),
              "folder\t0\t1\t0\tMine\r\n"
              "place\tC:\\M\\\r\n"
              "song\t5\t5\t5\t1\ta.mp3\tSong 1\r\n"
              "song\t3\t5\t5\t1\tb.mp3\tSong 2\r\n"
              "place\tc:\\m\\\r\n"
              "song\t2\t5\t5\t2\tC.mp3\tSong 3\r\n"
              "song\t-4\t5\t5\t1\tgone.mp3\tSong 4\r\n");
    ASSERT_TRUE(readWith(other, again));
    EXPECT_FALSE(loaded->SongsCameOrWent());

    // With the first catalogue again, the missing song is itself once more.
    ASSERT_TRUE(readWith(catalogue, again));
    EXPECT_TRUE(loaded->SongsCameOrWent());
    EXPECT_EQ(WriteJukebox(*loaded, catalogue), bytes);
}

TEST_F(JukeboxFileTest, ALoadedFileGivesTheJukeboxItsNameAndPlace) {
    const std::string path = "C:\\J\\Mix \xCE\xB1.juk";
    MakeExample();
    fake.disk.AddFolder("C:\\J");
    EXPECT_TRUE(SaveJukeboxFile(fake.disk, path, jukebox, catalogue).Ok());
    const auto load = [&](const std::string& file) {
        return LoadJukeboxFile(fake.disk, file, catalogue, fake.text, loaded).outcome;
    };
    ASSERT_EQ(load(path), LoadOutcome::Loaded);
    EXPECT_EQ(loaded->DaCaption(), "MIX \xCE\x91");
    EXPECT_EQ(loaded->FileLocation(), "C:\\J\\");
    EXPECT_EQ(loaded->Columns(),
              (std::vector<std::string>{"Name    --        (click to sort)", "Key"}));
    fake.disk.Lock(path);
    EXPECT_EQ(load(path), LoadOutcome::Unreadable);
    EXPECT_EQ(loaded, nullptr);
    EXPECT_EQ(load("C:\\no.juk"), LoadOutcome::NotThere);
    EXPECT_EQ(JukeboxTitle(fake.text, "juk"), "");
}

// Writes down every signal, and what the tree says at that moment.
class Recorder : public JukeboxListener {
 public:
    explicit Recorder(Jukebox& jukebox) : m_jukebox(jukebox) { jukebox.AddListener(*this); }
    std::vector<std::string> heard;

    void OnFolderAdded(Folder& folder) override { heard.push_back("added " + folder.Text()); }
    void OnFolderRemoving(Folder& folder) override {
        if (m_jukebox.MaybeFind(folder.Text()) == &folder)  // still
            heard.push_back("removing " + folder.Text());
    }
    void OnFolderTextChanged(Folder& folder) override { heard.push_back("text " + folder.Text()); }
    void OnSongsChanged(Folder& folder) override {
        heard.push_back("songs " + std::to_string(folder.Songs().size()));
    }
    void OnCaptionChanged() override { heard.push_back("caption " + m_jukebox.DaCaption()); }
    void OnDirtyChanged() override { heard.push_back(m_jukebox.IsFormDirty() ? "dirty" : "clean"); }

 private:
    Jukebox& m_jukebox;
};

TEST(JukeboxTest, FindsTheTopLevelFolderFirstAndTextsExactly) {
    Jukebox jukebox;
    Folder& lower = jukebox.AddChild(&jukebox.AddChild(nullptr, "By Mood"), "Year");
    EXPECT_EQ(jukebox.MaybeFind("Year"), &lower);
    Folder& top = jukebox.AddChild(nullptr, "Year");
    EXPECT_EQ(jukebox.MaybeFind("Year"), &top);
    EXPECT_EQ(jukebox.MaybeFind("year"), nullptr);
}

TEST(JukeboxTest, TellsEachChangeOnceAndBecomesDirty) {
    Jukebox jukebox;
    Recorder recorder(jukebox);
    jukebox.DaCaption("MIX");
    EXPECT_FALSE(jukebox.IsFormDirty());
    Folder& a = jukebox.AddChild(nullptr, "a");
    jukebox.SetText(a, "b");
    const SongItem item = jukebox.MakeItem("one.mp3", 7, 2);
    jukebox.AppendSongs(a, {item, item});
    jukebox.AppendSongs(a, {});
    jukebox.IsFormDirty(false);
    jukebox.SetSongs(a, {item});
    jukebox.Remove(a);
    EXPECT_EQ(recorder.heard,
              (std::vector<std::string>{"caption MIX", "added a", "dirty", "text b", "songs 2",
                                        "clean", "songs 1", "dirty", "removing b"}));
}

TEST(JukeboxTest, AListenerMayRemoveAnotherWhileItIsTold) {
    struct Remover : JukeboxListener {
        Jukebox* jukebox = nullptr;
        JukeboxListener* other = nullptr;
        void OnFolderAdded(Folder&) override { jukebox->RemoveListener(*other); }
    };
    Jukebox jukebox;
    Remover remover;
    jukebox.AddListener(remover);
    Recorder recorder(jukebox);
    remover.jukebox = &jukebox;
    remover.other = &recorder;
    jukebox.AddChild(nullptr, "a");
    EXPECT_TRUE(recorder.heard.empty());
}

}  // namespace
}  // namespace tobbin
