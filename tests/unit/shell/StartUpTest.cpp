#include "shell/StartUp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "fakes/FakeEnvironment.h"
#include "fakes/TaggedSong.h"
#include "jukebox/JukeboxFile.h"
#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {
namespace {

using Lines = std::vector<std::string>;

constexpr char kSettings[] = "C:\\App\\Grouping\\System\\TheOrganizer.ini";
constexpr char kSongs[] = "C:\\App\\Grouping\\FileLocNames.lmz";
constexpr char kFolderList[] = "C:\\App\\Grouping\\System\\LocOfMainTargetFiles.lmz";

// Writes down what is to be seen, in one list with the texts of the label. Stopped while a text
// that begins with `stopAt` is shown.
class FakeStartUpView : public StartUpView, private Progress {
 public:
    Lines seen;
    std::string stopAt;
    Jukebox* jukebox = nullptr;

    Progress& LoadSplash() override { return seen.push_back("splash"), *this; }
    void UnloadSplash() override { seen.push_back("splash gone"); }
    void ShowProgressArea(bool visible) override {
        seen.push_back(visible ? "area" : "no area");
        m_stopped = false;
    }
    void OpenJukeboxWindow(Jukebox& opened) override {
        seen.push_back("window " + opened.DaCaption());
        jukebox = &opened;
    }
    void HandOver() override { seen.push_back("frame"); }
    void ShowTips() override { seen.push_back("tips"); }

 private:
    void Show(const std::string& text) override {
        seen.push_back(text);
        m_stopped = m_stopped || (!stopAt.empty() && text.starts_with(stopAt));
    }
    bool StopRequested() const override { return m_stopped; }
    bool m_stopped = false;
};

class StartUpTest : public testing::Test {
 protected:
    FakeEnvironment fake;
    FakeStartUpView view;
    std::optional<Application> application;

    StartUpTest() {
        fake.disk.AddFile("C:\\App\\Tobbin.exe");
        fake.disk.AddFile("C:\\Windows\\System32\\msvbvm50.dll");
        fake.disk.AddFile("C:\\Music\\b.mp3", TaggedSong("Abba", "1985", 17));
    }
    bool Run() {
        view.seen.clear();
        application.emplace(fake.environment,
                            ProgramFolders{"C:\\App\\", "C:\\Windows\\System32\\"});
        return StartUp(*application, view).Run();
    }
    std::string Songs(const std::string& folder, const std::string& child = "") const {
        const Folder* found = view.jukebox->MaybeFind(folder);
        if (!child.empty())
            found = found->MaybeChild(child);
        std::string songs;
        for (const SongItem& song : found->Songs())
            songs += std::string(view.jukebox->TextOf(song)) + " ";
        return songs;
    }
    Lines Boxes() const {
        Lines texts;
        for (const FakeDialogs::Box& box : fake.dialogs.boxes)
            texts.push_back(box.text);
        return texts;
    }
    std::string Seen() const {
        std::string lines;
        for (const std::string& line : view.seen)
            lines += line + "|";
        return lines;
    }
    bool Saw(const std::string& line) const { return std::ranges::count(view.seen, line) > 0; }

    // A saved jukebox with one folder of the user's, opened at the next start.
    void SaveJukebox(const std::string& path) {
        Jukebox& jukebox = *view.jukebox;
        Folder& mine = jukebox.AddChild(nullptr, "Mine");
        jukebox.AppendSongs(mine, jukebox.MaybeFind("All Songs")->Songs());
        jukebox.SetColumn(0, "By Rank -- best to worst");
        ASSERT_TRUE(SaveJukeboxFile(fake.disk, path, jukebox, application->Catalogue()).Ok());
        application->Settings().LocOfLastSavedJukeBox(path);
        application->Settings().Save(kSettings);
    }
};

TEST_F(StartUpTest, AFirstRunDoesEverythingInOrder) {
    fake.disk.AddFile("C:\\Music\\a.mp3", TaggedSong("Abbacadabra", "2005"));
    ASSERT_TRUE(Run());
    const std::string building =
        "No saved Jukebox found, building initial Jukebox - may take a while. . . |";
    EXPECT_EQ(
        Seen(),
        "splash|area|Looking for WinAmp in C:\\|no area|area|Opening the song catalogue . . .|"
        "no area|area|Looking for Mp3s in C:\\|Found 1 Mp3s|Found 2 Mp3s|no area|area|" +
            building + building +
            "no area|window Jukebox One  (sample Jukebox you can use as a starting point)|"
            "frame|splash gone|tips|");
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Songs("All Songs"), "b.mp3 a.mp3 ");
    EXPECT_EQ(Songs("Artist", "Abba"), "b.mp3 a.mp3 ");
    EXPECT_EQ(Songs("Decades", "80's") + Songs("Year", "2005"), "b.mp3 a.mp3 ");
    EXPECT_TRUE(view.jukebox->IsFormDirty());

    EXPECT_EQ(fake.disk.Content(kSongs),
              FileRecord("b.mp3", "C:\\Music\\", "1") + FileRecord("a.mp3", "C:\\Music\\", "2"));
    EXPECT_EQ(fake.disk.Content(kFolderList), "C:\\Music\\\r\n");
    EXPECT_EQ(fake.disk.Content(kSettings),
              "C:\\App\\Grouping\\System\\LocOfMainTargetFiles.lmz\r\nC:\\App\\Grouping\\\r\n"
              " 2 \r\n\r\n\r\n\r\n\r\nFalse\r\nFalse\r\n\r\n");
}

TEST_F(StartUpTest, ASecondStartOpensTheLastJukeboxAndAddsOnlyWhatIsNew) {
    Run();
    SaveJukebox("C:\\App\\Grouping\\mix.juk");
    const std::string catalogue = fake.disk.Content(kSongs);
    ASSERT_TRUE(Run());
    EXPECT_EQ(
        Seen(),
        "splash|area|Looking for WinAmp in C:\\|no area|area|Opening the song catalogue . . .|"
        "no area|area|Looking at the folders of your songs . . .|"
        "Looking at the folders of your songs . . .|no area|area|Opening "
        "C:\\App\\Grouping\\mix.juk . . .|no area|area|Filling the folders of MIX . . .|"
        "no area|window MIX|frame|splash gone|tips|");
    EXPECT_EQ(fake.disk.Content(kSongs), catalogue);
    EXPECT_EQ(Songs("All Songs") + Songs("New") + Songs("Mine"), "b.mp3 b.mp3 b.mp3 ");
    EXPECT_EQ(view.jukebox->FileLocation(), "C:\\App\\Grouping\\");
    EXPECT_EQ(view.jukebox->Columns()[0], "Name    --        (click to sort)");
    EXPECT_TRUE(view.jukebox->IsFormDirty());

    fake.disk.AddFile("C:\\Music\\c.mp3", TaggedSong("Cher", "1999"));
    fake.disk.Erase("C:\\Music\\b.mp3");
    ASSERT_TRUE(Run());
    EXPECT_EQ(Songs("New") + Songs("Artist", "Cher"), "b.mp3 c.mp3 c.mp3 ");
    EXPECT_EQ(application->Catalogue().Mp3Info(1, 1) + application->Catalogue().Mp3Info(2, 1) +
                  application->Catalogue().Mp3Info(3, 1),
              "000");
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\FileLocNames.bak"), catalogue);
}

TEST_F(StartUpTest, AJukeboxThatCanNotBeOpenedIsPassedOver) {
    Run();
    SaveJukebox("C:\\App\\Grouping\\mix.juk");
    std::string file = fake.disk.Content("C:\\App\\Grouping\\mix.juk");
    file.resize(file.size() / 2);
    fake.disk.AddFile("C:\\App\\Grouping\\mix.juk", file);
    ASSERT_TRUE(Run());
    EXPECT_EQ(view.jukebox->RootCount(), 12U);
    EXPECT_EQ(application->Count(), 1U);
    ASSERT_FALSE(fake.statusLine.lines.empty());
    EXPECT_NE(fake.statusLine.lines.back().find("C:\\App\\Grouping\\mix.juk"), std::string::npos);

    fake.disk.Erase("C:\\App\\Grouping\\mix.juk");
    fake.statusLine.lines.clear();
    ASSERT_TRUE(Run());
    EXPECT_EQ(view.jukebox->RootCount(), 12U);
    EXPECT_EQ(fake.statusLine.lines,
              (Lines{"The jukebox \"C:\\App\\Grouping\\mix.juk\" was not opened: it does not "
                     "exist."}));
    EXPECT_EQ(application->Settings().LocOfLastSavedJukeBox(), "C:\\App\\Grouping\\mix.juk");
}

TEST_F(StartUpTest, AMissingRuntimeLibraryIsToldUnlessTurnedOff) {
    fake.disk.Erase("C:\\Windows\\System32\\msvbvm50.dll");
    ASSERT_TRUE(Run());
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_TRUE(Boxes()[0].starts_with("You are missing a file Tobbin needs to run correctly.  "));
    ASSERT_EQ(fake.programs.started.size(), 1U);
    EXPECT_EQ(fake.programs.started[0].program, "C:\\Windows\\System32\\notepad.exe");
    EXPECT_EQ(fake.programs.started[0].arguments, "\"C:\\App\\readme.txt\"");
    fake.userSettings.values["Runtime Library Check"] = "0";
    Run();
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(StartUpTest, AFolderThatCanNotBeWrittenEndsTheProgram) {
    const auto expectEnd = [&](const std::string& folder) {
        fake.dialogs.boxes.clear();
        EXPECT_FALSE(Run());
        ASSERT_EQ(Boxes().size(), 1U);
        EXPECT_TRUE(
            Boxes()[0].starts_with("Tobbin can't write to its data folder \"" + folder + "\": "))
            << Boxes()[0];
        EXPECT_EQ(view.seen, (Lines{"splash", "splash gone"}));
    };
    fake.disk.AddFile("C:\\App\\Grouping", "a file where the folder should be");
    expectEnd("C:\\App\\Grouping\\");
    fake.disk.Erase("C:\\App\\Grouping");
    fake.disk.AddFile("C:\\App\\Grouping\\InUse.lock");
    fake.disk.Lock("C:\\App\\Grouping\\InUse.lock", DiskError::AccessDenied);
    expectEnd("C:\\App\\Grouping\\");
    fake.disk.Erase("C:\\App\\Grouping\\InUse.lock");
    fake.disk.AddFile("C:\\App\\Grouping\\System");
    expectEnd("C:\\App\\Grouping\\System\\");
}

TEST_F(StartUpTest, OneProgramAtATimeUsesADataFolder) {
    Run();
    ASSERT_TRUE(fake.disk.IsHeld("C:\\App\\Grouping\\InUse.lock"));
    application.reset();
    std::unique_ptr<File> others;
    ASSERT_TRUE(HoldFile(fake.disk, "C:\\App\\Grouping\\InUse.lock", others).Ok());
    const auto before = fake.disk.Everything();
    fake.disk.AddFile("C:\\Music\\c.mp3");
    EXPECT_FALSE(Run());
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_TRUE(Boxes()[0].starts_with(
        "The data folder \"C:\\App\\Grouping\\\" is in use by another Tobbin: "));
    for (const auto& [path, content] : before)
        EXPECT_EQ(fake.disk.Content(path), content);
    others.reset();
    EXPECT_TRUE(Run());
}

TEST_F(StartUpTest, DamagedSettingsAreKeptAsideAndMadeAnew) {
    Run();
    const std::string damaged = "list\r\nC:\\App\\Grouping\\\r\nmany\r\nC:\\p\\winamp.exe\r\n";
    fake.disk.AddFile(kSettings, damaged);
    ASSERT_TRUE(Run());
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\System\\TheOrganizer.bad"), damaged);
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].find("line 3"), std::string::npos);
    EXPECT_NE(Boxes()[0].find("TheOrganizer.bad"), std::string::npos);
    EXPECT_EQ(application->Settings().NumerOfRecordsInTheMain(), 1);
    EXPECT_EQ(application->Settings().FileContainingTargetDirectories(), kFolderList);
    EXPECT_EQ(Songs("All Songs"), "b.mp3 ");
}

TEST_F(StartUpTest, SettingsThatCanNotBeReadAreNeverReplaced) {
    Run();
    SaveJukebox("C:\\App\\Grouping\\mine.juk");
    const auto before = fake.disk.Everything();
    for (const DiskError error : {DiskError::SharingViolation, DiskError::AccessDenied}) {
        fake.dialogs.boxes.clear();
        fake.disk.Lock(kSettings, error);
        fake.disk.onPause = [this, pauses = 0]() mutable {  // let go of, but too late
            if (++pauses == 110)
                fake.disk.Unlock(kSettings);
        };
        EXPECT_FALSE(Run());
        EXPECT_EQ(fake.disk.Everything(), before);
        ASSERT_EQ(Boxes().size(), 1U);
        EXPECT_NE(Boxes()[0].find("TheOrganizer.ini\" can't be read"), std::string::npos);
        EXPECT_EQ(view.seen, (Lines{"splash", "splash gone"}));
    }
    fake.disk.Unlock(kSettings);

    // Nor with any one operation of a start failing; damaged ones are there or kept aside.
    const std::string damaged = "list\r\n\r\nmany\r\n";
    for (const bool isDamaged : {false, true}) {
        int operation = 0;
        do {
            for (const auto& [path, content] : before)
                fake.disk.AddFile(path, content);
            if (isDamaged)
                fake.disk.AddFile(kSettings, damaged);
            fake.disk.FailAt(++operation, DiskError::AccessDenied, true);
            Run();
            int kept = 0;
            for (const auto& [path, content] : fake.disk.Everything())
                kept += isDamaged ? content == damaged
                                  : content.find("mine.juk\r\n") != std::string::npos;
            EXPECT_EQ(kept, 1) << operation << fake.disk.Log().back();
            fake.disk.Erase("C:\\App\\Grouping\\System");
        } while (fake.disk.HasFailed());
    }
}

// The program's folder was moved, or the settings were edited by hand.
TEST_F(StartUpTest, OwnDataServeWhereTheSettingsNameNone) {
    Run();
    for (const char* lines :
         {"D:\\Old\\Grouping\\System\\LocOfMainTargetFiles.lmz\r\nD:\\Old\\Grouping\\\r\n",
          "\r\n\r\n", "\r\nC:\\App\\Grouping\r\n"}) {
        fake.disk.AddFile(kSettings,
                          std::string(lines) + " 1 \r\n\r\n\r\n\r\n\r\nFalse\r\nFalse\r\n\r\n");
        ASSERT_TRUE(Run());
        EXPECT_EQ(application->Settings().LocOfGroupingDir(), "C:\\App\\Grouping\\");
        EXPECT_EQ(application->Settings().FileContainingTargetDirectories(), kFolderList);
        EXPECT_EQ(Songs("All Songs"), "b.mp3 ");
    }
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(StartUpTest, ACopiedFolderUsesItsOwnData) {
    Run();
    SaveJukebox("C:\\App\\Grouping\\mine.juk");
    const auto before = fake.disk.Everything();
    for (const auto& [path, content] : before)
        if (path.starts_with("c:\\app\\"))
            fake.disk.AddFile("C:\\Copy" + path.substr(6), content);
    fake.disk.AddFile("C:\\Music\\c.mp3");
    application.emplace(fake.environment, ProgramFolders{"C:\\Copy\\", "C:\\Windows\\System32\\"});
    ASSERT_TRUE(StartUp(*application, view).Run());
    EXPECT_EQ(Songs("All Songs") + view.jukebox->FileLocation(),
              "b.mp3 c.mp3 C:\\Copy\\Grouping\\");
    EXPECT_EQ(application->Settings().FileContainingTargetDirectories(),
              "C:\\Copy\\Grouping\\System\\LocOfMainTargetFiles.lmz");
    for (const auto& [path, content] : before)
        EXPECT_EQ(fake.disk.Content(path), content) << path;
}

TEST_F(StartUpTest, ThePlayerIsSearchedForWhenItIsNotWhereItWas) {
    fake.disk.AddFile("C:\\Player\\WinAmp.exe");
    fake.drives.treeFinds["C:\\"] = "C:\\Player\\WinAmp.exe";
    Run();
    EXPECT_TRUE(Saw("Found WinAmp!!"));
    EXPECT_EQ(application->Settings().LocOfWinAmpExe(), "c:\\player\\winamp.exe");
    Run();
    EXPECT_FALSE(Saw("Looking for WinAmp in C:\\"));

    fake.disk.Erase("C:\\Player\\WinAmp.exe");
    fake.drives.treeFinds.clear();
    Run();
    EXPECT_TRUE(Saw("Looking for WinAmp in C:\\"));
    EXPECT_EQ(application->Settings().LocOfWinAmpExe(), "");
    EXPECT_EQ(fake.disk.Content(kSettings).find("winamp"), std::string::npos);
}

// A drive that is unplugged between two starts, that says that it is away, or that claims to be
// there and then refuses every question; each is back at the start after.
TEST_F(StartUpTest, ADriveThatIsAwayCostsNoSongNoRankNoPlayerAndNoBox) {
    fake.drives.drives.push_back({"E:\\", 3U});
    fake.drives.treeFinds["E:\\"] = "E:\\player\\winamp.exe";
    for (const char* path : {"E:\\player\\winamp.exe", "E:\\far\\c.mp3", "E:\\far\\d.mp3"})
        fake.disk.AddFile(path, TaggedSong("Cher", "1999"));
    ASSERT_TRUE(Run());
    for (std::int32_t record = 1; record <= 3; ++record)
        application->Catalogue().Mp3Info(clsMain::kRank, record, std::to_string(record + 4));
    ASSERT_TRUE(application->Catalogue().Save());
    SaveJukebox("C:\\App\\Grouping\\mine.juk");
    fake.drives.treeFinds.clear();
    const auto before = fake.disk.Everything();
    const auto expectNothingLost = [&](const char* when) {
        SCOPED_TRACE(when);
        ASSERT_TRUE(Run());
        for (const auto& [path, content] : before)
            EXPECT_TRUE(!path.starts_with("c:") || fake.disk.Content(path) == content) << path;
        EXPECT_FALSE(fake.disk.Has("C:\\App\\Grouping\\FileLocNames.bak"));
        EXPECT_EQ(Songs("Mine") + Songs("All Songs"), "b.mp3 c.mp3 d.mp3 b.mp3 c.mp3 d.mp3 ");
        for (const SongItem& song : view.jukebox->MaybeFind("Mine")->Songs())
            EXPECT_EQ(application->Catalogue().Rank(song.recordNumber), song.recordNumber + 4);
        EXPECT_EQ(application->Settings().LocOfWinAmpExe(), "e:\\player\\winamp.exe");
        EXPECT_TRUE(Boxes().empty());
        EXPECT_TRUE(fake.statusLine.lines.empty());
    };
    const auto restore = [&] {
        fake.disk.FailBelow("E:\\", DiskError::None);
        fake.drives.unreachable.clear();
        fake.drives.drives = {{"C:\\", 3U}, {"E:\\", 3U}};
        for (const auto& [path, content] : before)
            if (path.starts_with("e:"))
                fake.disk.AddFile(path, content);
        expectNothingLost("it is back");
    };
    fake.disk.Erase("E:");
    fake.drives.drives.pop_back();
    expectNothingLost("unplugged");
    restore();
    for (const DiskError error : {DiskError::NotReady, DiskError::AccessDenied, DiskError::Other}) {
        fake.disk.FailBelow("E:\\", error);
        expectNothingLost("it answers with an error only");
        fake.drives.unreachable = {"E:\\"};
        expectNothingLost("it is known, but away");
        restore();
    }
}

TEST_F(StartUpTest, ALostOrDamagedCatalogueOffersASearch) {
    Run();
    fake.disk.Erase(kSongs);
    Run();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(fake.dialogs.boxes[0].buttons, Buttons::YesNo);
    EXPECT_NE(Boxes()[0].find(kSongs), std::string::npos);
    EXPECT_FALSE(fake.disk.Has(kSongs));  // the answer was No
    EXPECT_EQ(Songs("All Songs"), "");

    Run();  // counts no songs any more: a first run
    const std::string whole = fake.disk.Content(kSongs);
    EXPECT_EQ(Songs("All Songs"), "b.mp3 ");

    const std::string damaged = whole + "\x05";
    fake.disk.AddFile(kSongs, damaged);
    fake.disk.AddFile("D:\\Far\\d.mp3");
    fake.drives.drives.push_back({"D:\\", 3U});
    fake.dialogs.answers = {Answer::Yes};
    Run();
    ASSERT_EQ(Boxes().size(), 2U);
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\FileLocNames.bad"), damaged);
    EXPECT_EQ(Songs("All Songs"), "b.mp3 d.mp3 ");
}

TEST_F(StartUpTest, AStoppedSearchKeepsWhatItFoundAndStopsNoOther) {
    fake.disk.AddFile("D:\\Far\\d.mp3");
    fake.drives.drives.push_back({"D:\\", 3U});
    view.stopAt = "Looking for WinAmp in C:\\";
    Run();
    EXPECT_FALSE(Saw("Looking for WinAmp in D:\\"));
    EXPECT_EQ(Songs("All Songs"), "b.mp3 d.mp3 ");

    fake.disk.Erase("C:\\App\\Grouping");
    view.stopAt = "Found 1 Mp3s";
    Run();
    EXPECT_EQ(Songs("All Songs"), "b.mp3 ");
    EXPECT_TRUE(fake.disk.Has(kFolderList));
}

TEST(LoadedWindows, AreKnownByNameInAnyCase) {
    const FakeText text;
    LoadedWindows windows(text);
    Lines unloaded;
    const int first = windows.Add("frmMain", [&] { unloaded.push_back("first"); });
    windows.Add("frmMain", [&] {
        unloaded.push_back("second");
        windows.Remove(first);
    });
    EXPECT_TRUE(windows.IsLoaded("FRMMAIN"));
    EXPECT_FALSE(windows.IsLoaded("frmMai"));
    windows.UnloadAll();
    EXPECT_EQ(unloaded, (Lines{"second"}));  // the first was taken off with it
}

}  // namespace
}  // namespace tobbin
