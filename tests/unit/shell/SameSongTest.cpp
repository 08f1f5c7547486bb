#include <functional>
#include <map>
#include <optional>
#include <random>

#include "jukebox/JukeboxFile.h"
#include "shell/NewSongs.h"
#include "shell/StartUp.h"
#include "unit/shell/FrameFixture.h"

namespace tobbin {
namespace {

using Lines = std::vector<std::string>;

constexpr char kJukeboxes[] = "C:\\App\\Grouping\\";

class QuietStartUp : public StartUpView, private Progress {
 public:
    Progress& LoadSplash() override { return *this; }
    void UnloadSplash() override {}
    void ShowProgressArea(bool /*visible*/) override {}
    void OpenJukeboxWindow(Jukebox& /*jukebox*/) override {}
    void HandOver() override {}
    void ShowTips() override {}
};

// The whole program behind its windows, started and ended again while disks and folders change.
class SameSong : public testing::Test {
 protected:
    FakeEnvironment fake;
    std::optional<Application> application;
    std::optional<FakeFrame> frame;

    SameSong() {
        fake.userSettings.values["Runtime Library Check"] = "0";
        fake.drives.drives = {{"C:\\", 3}, {"E:\\", 3}, {"F:\\", 3}};
        fake.disk.AddFile("C:\\Safe\\safe.mp3", "stays");
        for (const char* drive : {"E:", "F:"})
            fake.disk.AddFolder(drive);
    }
    void Start() {
        fake.statusLine.lines.clear();
        QuietStartUp view;
        frame.reset();
        application.emplace(fake.environment, ProgramFolders{"C:\\App\\", "C:\\Sys\\"});
        ASSERT_TRUE(StartUp(*application, view).Run());
        frame.emplace(*application);
    }
    void BringIn(bool wholeComputer) {
        NewSongs songs(*application, *frame);
        wholeComputer ? songs.SearchWholeComputer() : songs.LookInKnownFolders();
    }
    // The first start, a rank for each song but the safe one, and a play list of all songs with the
    // last one twice, in a jukebox that the next starts open.
    void StartWith(const Lines& songs) {
        for (const std::string& path : songs)
            fake.disk.AddFile(path, path);
        Start();
        for (std::int32_t record = 2; record <= Catalogue().UBoundOfMp3Array(); ++record)
            Catalogue().Mp3Info(clsMain::kRank, record, std::to_string(2 + record % 6));
        ASSERT_TRUE(Catalogue().Save());
        Folder& mine = TheJukebox().AddChild(nullptr, "Mine");
        std::vector<SongItem> all = TheJukebox().MaybeFind("All Songs")->Songs();
        all.push_back(all.back());
        TheJukebox().AppendSongs(mine, all);
        TheJukebox().SetSongs(*TheJukebox().MaybeFind("New"), {});
        SaveAs("mix.juk");
        application->Settings().LocOfLastSavedJukeBox(std::string(kJukeboxes) + "mix.juk");
        application->Settings().Save(application->Settings().SettingsPath());
    }
    void SaveAs(const std::string& name) {
        ASSERT_TRUE(SaveJukeboxFile(fake.disk, kJukeboxes + name, TheJukebox(), Catalogue()).Ok());
    }
    void Move(const std::string& from, const std::string& to) {
        for (const std::string& name : fake.disk.FilesIn(from))
            fake.disk.AddFile(to + "\\" + name, fake.disk.Content(from + "\\" + name));
        fake.disk.Erase(from);
    }
    clsMain& Catalogue() { return application->Catalogue(); }
    Jukebox& TheJukebox() { return application->At(0); }
    std::string LastLine() {
        return fake.statusLine.lines.empty() ? "" : fake.statusLine.lines.back();
    }
    // "number:path:rank" of each record; "-" for a cleared one.
    Lines Records() {
        Lines records;
        for (std::int32_t record = 1; record <= Catalogue().UBoundOfMp3Array(); ++record)
            records.push_back(!Catalogue().IsPresent(record)
                                  ? "-"
                                  : Catalogue().Mp3Info(clsMain::kNumber, record) + ":" +
                                        Catalogue().SongPath(record) + ":" +
                                        Catalogue().Mp3Info(clsMain::kRank, record));
        return records;
    }
    // The record numbers in a folder; "?" for a missing song.
    std::string In(const Jukebox& jukebox, const char* folder) {
        std::string numbers;
        for (const SongItem& song : jukebox.MaybeFind(folder)->Songs())
            numbers += (song.IsMissing() ? "?" : std::to_string(song.recordNumber)) + " ";
        return numbers;
    }
    void ExpectPlaces(const std::string& all, const std::string& mine) {
        EXPECT_EQ(In(TheJukebox(), "All Songs"), all);
        EXPECT_EQ(In(TheJukebox(), "Mine"), mine);
        EXPECT_EQ(In(TheJukebox(), "New"), "");
    }
};

TEST_F(SameSong, GoneAtOneStartAndBackLaterItIsOneSong) {
    StartWith({"C:\\M\\a.mp3", "C:\\M\\b.mp3"});
    const Lines before = Records();
    for (const bool withinASession : {false, true}) {
        fake.disk.Erase("C:\\M\\a.mp3");
        fake.disk.Erase("C:\\M\\b.mp3");
        Start();
        EXPECT_EQ(Records(), (Lines{before[0], "-", "-"}));
        EXPECT_EQ(LastLine(),
                  "2 songs are not where they were.  \"Bring In New Songs (Search my whole "
                  "computer)\" in the Songs menu looks for them.");
        SaveAs("mix.juk");
        fake.disk.AddFile("C:\\M\\a.mp3");
        fake.disk.AddFile("C:\\M\\b.mp3");
        if (withinASession) {
            BringIn(true);
            EXPECT_EQ(LastLine(), "No new songs found.  2 songs found again.");
        } else {
            Start();
            BringIn(true);
        }
        EXPECT_EQ(Records(), before);
        ExpectPlaces("1 2 3 ", "1 2 3 3 ");
    }
}

// Each row: what happens to the disks while the program is closed, and where the songs lie then.
TEST_F(SameSong, WhereverItsFolderOrDiskGoesItIsTheSameSong) {
    const std::string a = "E:\\M\\A\\a.mp3", b = "F:\\M\\B\\b.mp3";
    StartWith({a, b});
    const Lines before = Records();
    const auto catalogue = fake.disk.Everything();
    struct Row {
        const char* what;
        std::function<void()> happens;
        Lines paths;
    };
    const std::vector<Row> rows = {
        {"a folder high up is renamed",
         [&] { Move("E:\\M\\A", "E:\\Music\\A"); },
         {"E:\\Music\\A\\a.mp3", b}},
        {"a folder goes to another disk",
         [&] { Move("E:\\M\\A", "C:\\Else\\where"); },
         {"C:\\Else\\where\\a.mp3", b}},
        {"two disks swap letters",
         [&] {
             Move("E:\\M\\A", "F:\\M\\A");
             Move("F:\\M\\B", "E:\\M\\B");
         },
         {"F:\\M\\A\\a.mp3", "E:\\M\\B\\b.mp3"}},
        {"copied while its disk is away",
         [&] {
             fake.drives.unreachable = {"E:\\"};
             Move("E:\\M\\A", "C:\\Copy");
         },
         {"C:\\Copy\\a.mp3", b}},
        {"renamed in case only",
         [&] {
             fake.disk.Erase("E:\\M");
             fake.disk.AddFile("E:\\m\\a\\a.mp3");
         },
         {"E:\\m\\a\\a.mp3", b}},
    };
    for (const auto& [what, happens, paths] : rows) {
        SCOPED_TRACE(what);
        for (const char* drive :
             {"E:\\M", "E:\\Music", "F:\\M", "C:\\Else", "C:\\Copy", "C:\\App\\Grouping"})
            fake.disk.Erase(drive);
        fake.drives.unreachable.clear();
        for (const auto& [path, content] : catalogue)
            if (!path.starts_with("e:") && !path.starts_with("f:"))
                fake.disk.AddFile(path, content);
        fake.disk.AddFile(a);
        fake.disk.AddFile(b);
        happens();
        Start();
        BringIn(true);
        EXPECT_EQ(Records(), (Lines{before[0], "2:" + paths[0] + ":4", "3:" + paths[1] + ":5"}));
        ExpectPlaces("1 2 3 ", "1 2 3 3 ");
        Start();  // The jukebox was closed meanwhile and has the old paths.
        ExpectPlaces("1 2 3 ", "1 2 3 3 ");
        // The catalogue is lost, and its copy knows the old places.
        const Lines after = Records();
        fake.disk.AddFile("C:\\App\\Grouping\\FileLocNames.bak",
                          catalogue.at("c:\\app\\grouping\\filelocnames.lmz"));
        fake.disk.Erase("C:\\App\\Grouping\\FileLocNames.lmz");
        Start();
        EXPECT_EQ(Records(), after);
        EXPECT_EQ(LastLine(), "");
    }
    fake.disk.Erase(a);
    fake.disk.AddFile("E:\\m\\a\\A.MP3");
    Start();
    EXPECT_EQ(Records()[1], "2:E:\\m\\a\\A.MP3:4");
    EXPECT_EQ(Records().size(), 3U);
    const auto shown = [&] {
        return TheJukebox().TextOf(TheJukebox().MaybeFind("Mine")->Songs()[1]);
    };
    EXPECT_EQ(shown(), "A.MP3");
    fake.disk.Erase("E:\\m\\a\\A.MP3");
    fake.disk.AddFile(a);
    BringIn(false);
    EXPECT_EQ(shown(), "a.mp3");
}

// As it was before songs were known again: the jukebox holds the dead entry and the new one.
TEST_F(SameSong, OldTwinsAreHealedWhenTheyAreLoaded) {
    StartWith({"C:\\M\\a.mp3"});
    Catalogue().OnSongFound("C:\\N\\", "a.mp3");
    for (const clsMain::Field field : {clsMain::kPresence, clsMain::kFolder, clsMain::kFileName})
        Catalogue().Mp3Info(field, 2, "0");
    Move("C:\\M", "C:\\N");
    ASSERT_TRUE(Catalogue().WriteOutMp3DirectoryLocations());
    const SongItem live = TheJukebox().MakeItem("a.mp3", 3, 2);
    const SongItem dead = TheJukebox().MakeMissingItem("a.mp3", {2, "C:\\M\\", "a.mp3"}, 4);
    const SongItem safe = TheJukebox().MakeItem("safe.mp3", 1, 2);
    TheJukebox().SetSongs(*TheJukebox().MaybeFind("All Songs"), {safe, dead, live});
    TheJukebox().SetSongs(TheJukebox().AddChild(TheJukebox().MaybeFind("Artist"), "X"),
                          {dead, live});
    TheJukebox().SetSongs(*TheJukebox().MaybeFind("Mine"), {dead, safe, safe, live, dead});
    SaveAs("mix.juk");
    Start();
    ExpectPlaces("1 3 ", "3 1 1 3 3 ");
    EXPECT_EQ(In(TheJukebox(), "X"), "3 ");
    EXPECT_EQ(Records(), (Lines{"1:C:\\Safe\\safe.mp3:2", "-", "3:C:\\N\\a.mp3:4"}));
}

TEST_F(SameSong, DifferentSongsOfOneNameAreAskedAboutOnce) {
    for (int album = 1; album <= 10; ++album)
        for (int track = 10; track < 20; ++track)
            fake.disk.AddFile(
                "E:\\Album " + std::to_string(album) + "\\" + std::to_string(track) + ".mp3",
                std::string(static_cast<std::size_t>(10 * album + track), 'x'));
    StartWith({});  // The answer is No.
    EXPECT_EQ(Records().size(), 11U);
    EXPECT_EQ(
        LastLine(),
        "11 songs found.  90 files were left out, as only one song of each file name is kept.");
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_EQ(
        fake.dialogs.boxes[0].text,
        "90 files have the names of other songs but a different size, such as\r\n\r\n"
        "E:\\Album 2\\10.mp3\r\nE:\\Album 1\\10.mp3\r\n\r\nShall Tobbin keep each of them as a "
        "song of its own?  With No it keeps one song of each file name.");
    EXPECT_EQ(fake.dialogs.boxes[0].buttons, Buttons::YesNoPreferNo);
    EXPECT_EQ(fake.userSettings.values["Keep Songs Of One Name"], "No");
    Start();
    EXPECT_EQ(fake.dialogs.boxes.size(), 1U);

    fake.dialogs.answers = {Answer::Yes};
    BringIn(true);
    EXPECT_EQ(LastLine(), "90 new songs found.  See the folder \"New\".");
    EXPECT_EQ(Records().size(), 101U);
    EXPECT_EQ(TheJukebox().MaybeFind("All Songs")->Songs().size(), 101U);
    for (std::int32_t record = 1; record <= 101; ++record)
        Catalogue().Mp3Info(clsMain::kRank, record, std::to_string(2 + record % 6));
    ASSERT_TRUE(Catalogue().Save());
    Start();
    const Lines before = Records();
    ASSERT_EQ(before.size(), 101U);

    // Each by itself, also when the albums' folders get other names: then the sizes tell them
    // apart.
    for (int album = 1; album <= 10; ++album)
        Move("E:\\Album " + std::to_string(album), "F:\\" + std::to_string(album));
    Start();
    fake.dialogs.answers = {Answer::Yes};
    BringIn(true);
    Lines moved;
    for (const std::string& record : before) {
        const std::size_t at = record.find("E:\\Album ");
        moved.push_back(at == std::string::npos
                            ? record
                            : record.substr(0, at) + "F:\\" + record.substr(at + 9));
    }
    EXPECT_EQ(Records(), moved);
    fake.dialogs.answers = {Answer::No};
    BringIn(true);
    EXPECT_EQ(Records().size(), 11U);
}

// Names repeat across albums; some albums move, some are renamed, some change their disk, and two
// jukeboxes are closed meanwhile.
TEST_F(SameSong, TenThousandSongsAreKnownAgainOneByOne) {
    constexpr int kAlbums = 1000, kTracks = 10;
    fake.userSettings.values["Keep Songs Of One Name"] = "Yes";
    std::mt19937 chance(15);
    std::map<std::string, std::string> now;  // each song's new path
    const auto path = [](const std::string& root, int album, const std::string& albumName,
                         int track) {
        return root + std::to_string(album % 7) + "\\" + albumName + "\\" +
               std::to_string(track + 1) + ".mp3";
    };
    for (int album = 0; album < kAlbums; ++album) {
        const std::string name = "Album " + std::to_string(album);
        const auto fate = chance() % 4;
        const std::string root = fate == 3 ? "E:\\Far\\" : fate == 0 ? "C:\\Old\\" : "C:\\New\\";
        for (int track = 0; track < kTracks; ++track) {
            const std::string old = path("C:\\Old\\", album, name, track);
            now[old] = path(root, album, fate == 2 ? "The " + name : name, track);
            // Sizes repeat, but not among the songs of one name whose album gets another name.
            fake.disk.AddFile(old, std::string(fate == 2 ? 1000 + album : 5 + album % 3, 'x'));
        }
    }
    StartWith({});
    const Lines before = Records();
    ASSERT_EQ(before.size(), 1U + kAlbums * kTracks);
    const std::string mine = In(TheJukebox(), "Mine");
    TheJukebox().AddChild(nullptr, "Second");
    SaveAs("second.juk");
    for (const auto& [from, to] : now)
        if (from != to) {
            fake.disk.AddFile(to, fake.disk.Content(from));
            fake.disk.Erase(from);
        }
    Start();
    fake.dialogs.answers = {Answer::Yes};
    BringIn(true);
    Lines wanted;
    for (const std::string& record : before) {
        const std::size_t first = record.find(':') + 1, last = record.rfind(':');
        const auto found = now.find(record.substr(first, last - first));
        wanted.push_back(found == now.end()
                             ? record
                             : record.substr(0, first) + found->second + record.substr(last));
    }
    EXPECT_EQ(Records(), wanted);
    Start();
    EXPECT_EQ(In(TheJukebox(), "Mine"), mine);
    EXPECT_EQ(In(TheJukebox(), "New"), "");
    std::unique_ptr<Jukebox> second;
    ASSERT_EQ(LoadJukeboxFile(fake.disk, std::string(kJukeboxes) + "second.juk", Catalogue(),
                              fake.text, second)
                  .outcome,
              LoadOutcome::Loaded);
    EXPECT_EQ(In(*second, "Mine"), mine);
}

}  // namespace
}  // namespace tobbin
