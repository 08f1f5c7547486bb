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

constexpr char kSettings[] = "C:\\App\\Grouping\\System\\TheOrganizer.ini";
constexpr char kSongs[] = "C:\\App\\Grouping\\FileLocNames.lmz";
constexpr char kFolderList[] = "C:\\App\\Grouping\\System\\LocOfMainTargetFiles.lmz";
constexpr char kMix[] = "C:\\App\\Grouping\\mix.juk";
constexpr char kLock[] = "C:\\App\\Grouping\\InUse.lock";

// Writes down what is to be seen, the texts of the label among it. Stopped while a text that begins
// with `stopAt` is shown.
class FakeStartUpView : public StartUpView, private Progress {
 public:
    std::string seen;  // with a "|" behind each
    std::string stopAt;
    Jukebox* jukebox = nullptr;

    Progress& LoadSplash() override { return seen += "splash|", *this; }
    void UnloadSplash() override { seen += "splash gone|"; }
    void ShowProgressArea(bool visible) override {
        seen += visible ? "area|" : "no area|";
        m_stopped = false;
    }
    void OpenJukeboxWindow(Jukebox& opened) override {
        seen += "window " + opened.DaCaption() + "|";
        jukebox = &opened;
    }
    void HandOver() override { seen += "frame|"; }
    void ShowTips() override { seen += "tips|"; }

 private:
    void Show(const std::string& text) override {
        seen += text + "|";
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
                            ProgramFolders{"C:\\App\\", "C:\\Windows\\System32\\", "C:\\Own\\",
                                           "C:\\Windows\\SysWOW64\\"});
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
    // The text of the one box that was opened since.
    std::string Box() {
        EXPECT_EQ(fake.dialogs.boxes.size(), 1U);
        std::string text = fake.dialogs.boxes.empty() ? "" : fake.dialogs.boxes[0].text;
        fake.dialogs.boxes.clear();
        return text;
    }
    bool Saw(const std::string& line) const { return view.seen.find(line) != std::string::npos; }

    // A saved jukebox with one folder of the user's, opened at the next start.
    void SaveJukebox() {
        Jukebox& jukebox = *view.jukebox;
        Folder& mine = jukebox.AddChild(nullptr, "Mine");
        jukebox.AppendSongs(mine, jukebox.MaybeFind("All Songs")->Songs());
        jukebox.SetColumn(0, "By Rank -- best to worst");
        ASSERT_TRUE(SaveJukeboxFile(fake.disk, kMix, jukebox, application->Catalogue()).Ok());
        application->Settings().LocOfLastSavedJukeBox(kMix);
        application->Settings().Save(kSettings);
    }
};

TEST_F(StartUpTest, AFirstRunDoesEverythingInOrder) {
    fake.disk.AddFile("C:\\Music\\a.mp3", TaggedSong("Abbacadabra", "2005"));
    ASSERT_TRUE(Run());
    application->LongWork().Show("what comes after the start is not shown here");
    const std::string building =
        "No saved Jukebox found, building initial Jukebox - may take a while. . . |";
    EXPECT_EQ(view.seen,
              "splash|area|Looking for WinAmp in C:\\|no area|area|Opening the song catalog . . .|"
              "no area|area|Looking for Mp3s in C:\\|Found 1 Mp3s|Found 2 Mp3s|no area|area|" +
                  building + building +
                  "no area|window Jukebox One  (sample Jukebox you can use as a starting point)|"
                  "frame|splash gone|tips|");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
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
    SaveJukebox();
    const std::string catalogue = fake.disk.Content(kSongs);
    ASSERT_TRUE(Run());
    EXPECT_EQ(view.seen,
              "splash|area|Looking for WinAmp in C:\\|no area|area|Opening the song catalog . . .|"
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
    EXPECT_FALSE(application->Catalogue().IsPresent(1));
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\FileLocNames.bak"), catalogue);
}

TEST_F(StartUpTest, AJukeboxThatCanNotBeOpenedIsPassedOver) {
    Run();
    SaveJukebox();
    fake.disk.AddFile(kMix, fake.disk.Content(kMix).substr(0, 99));
    for (const char* reason : {"in line 5, the file is cut in it.", "it does not exist."}) {
        ASSERT_TRUE(Run());
        EXPECT_EQ(view.jukebox->RootCount(), 12U);
        EXPECT_EQ(application->Count(), 1U);
        EXPECT_EQ(fake.statusLine.lines.back(),
                  std::string("The jukebox \"") + kMix + "\" was not opened: " + reason);
        EXPECT_EQ(application->Settings().LocOfLastSavedJukeBox(), kMix);
        fake.disk.Erase(kMix);
    }
}

TEST_F(StartUpTest, AMissingRuntimeLibraryIsToldUnlessTurnedOff) {
    fake.disk.Erase("C:\\Windows\\System32\\msvbvm50.dll");
    ASSERT_TRUE(Run());
    EXPECT_TRUE(Box().starts_with("You are missing a file Tobbin needs to run correctly.  "));
    EXPECT_EQ(fake.programs.started.at(0).program, "C:\\Windows\\System32\\notepad.exe");
    EXPECT_EQ(fake.programs.started[0].arguments, "\"C:\\App\\readme.txt\"");
    fake.dialogs.answers = {Answer::Yes};  // ticked
    Run();
    Box();
    Run();
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    fake.userSettings.values.clear();
    fake.disk.AddFile("C:\\Windows\\SysWOW64\\msvbvm50.dll");
    Run();
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(StartUpTest, ACrashIsToldOnce) {
    fake.disk.AddFile("C:\\Own\\Tobbin.dmp", "MDMP");
    ASSERT_TRUE(Run());
    const auto told = [&] {
        return std::ranges::count_if(fake.statusLine.lines, [](const std::string& line) {
            return line.find("\"C:\\Own\\Tobbin (last crash).dmp\"") != std::string::npos;
        });
    };
    EXPECT_EQ(told(), 1);
    Run();
    EXPECT_EQ(told(), 1);
}

TEST_F(StartUpTest, AFolderThatCanNotBeWrittenEndsTheProgram) {
    for (const std::string what : {"C:\\App\\Grouping", kLock, "C:\\App\\Grouping\\System"}) {
        fake.disk.AddFile(what, "a file where the folder should be");
        fake.disk.Lock(what, DiskError::AccessDenied);
        EXPECT_FALSE(Run());
        const std::string folder = what == kLock ? "C:\\App\\Grouping" : what;
        EXPECT_TRUE(
            Box().starts_with("Tobbin can't write to its data folder \"" + folder + "\\\": "));
        EXPECT_EQ(view.seen, "splash|splash gone|");
        fake.disk.Erase(what);
    }
}

TEST_F(StartUpTest, OneProgramAtATimeUsesADataFolder) {
    Run();
    ASSERT_TRUE(fake.disk.IsHeld(kLock));
    application.reset();
    std::unique_ptr<File> others;
    ASSERT_TRUE(HoldFile(fake.disk, kLock, others).Ok());
    const auto before = fake.disk.Everything();
    fake.disk.AddFile("C:\\Music\\c.mp3");
    EXPECT_FALSE(Run());
    EXPECT_TRUE(
        Box().starts_with("The data folder \"C:\\App\\Grouping\\\" is in use by another Tobbin: "));
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
    const std::string box = Box();
    EXPECT_TRUE(box.find("line 3") < box.find("TheOrganizer.bad")) << box;
    EXPECT_EQ(application->Settings().NumerOfRecordsInTheMain(), 1);
    EXPECT_EQ(application->Settings().FileContainingTargetDirectories(), kFolderList);
    EXPECT_EQ(Songs("All Songs"), "b.mp3 ");
}

TEST_F(StartUpTest, SettingsThatCanNotBeReadAreNeverReplaced) {
    Run();
    SaveJukebox();
    const auto before = fake.disk.Everything();
    for (const DiskError error : {DiskError::SharingViolation, DiskError::AccessDenied}) {
        fake.disk.Lock(kSettings, error);
        fake.disk.onPause = [this, pauses = 0]() mutable {  // let go of, but too late
            if (++pauses == 110)
                fake.disk.Unlock(kSettings);
        };
        EXPECT_FALSE(Run());
        EXPECT_EQ(fake.disk.Everything(), before);
        EXPECT_NE(Box().find("TheOrganizer.ini\" can't be read"), std::string::npos);
        EXPECT_EQ(view.seen, "splash|splash gone|");
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
                                  : content.find("mix.juk\r\n") != std::string::npos;
            EXPECT_EQ(kept, 1) << operation << fake.disk.Log().back();
            fake.disk.Erase("C:\\App\\Grouping\\System");
        } while (fake.disk.HasFailed());
    }
}

// The program's folder was moved, or copied and the one that it came from is still there, or the
// settings were edited by hand.
TEST_F(StartUpTest, OwnDataServeWhateverTheSettingsName) {
    Run();
    SaveJukebox();
    for (const char* file : {"FileLocNames.lmz", "mix.juk", "System\\TheOrganizer.ini",
                             "System\\LocOfMainTargetFiles.lmz"})
        fake.disk.AddFile(std::string("C:\\Copied\\Grouping\\") + file, "others");
    const std::string list = "System\\LocOfMainTargetFiles.lmz\r\n";
    for (const std::string theirs :
         {"D:\\Old\\Grouping\\", "C:\\Copied\\Grouping\\", "", "C:\\App\\Grouping"}) {
        const bool hasFolder = theirs.ends_with('\\');
        fake.disk.AddFile(kSettings, (hasFolder ? theirs + list : "\r\n") + theirs +
                                         "\r\n 1 \r\n\r\n" +
                                         (hasFolder ? theirs + "mix.juk" : kMix) +
                                         "\r\n\r\n\r\nFalse\r\nFalse\r\n\r\n");
        ASSERT_TRUE(Run());
        EXPECT_EQ(application->Settings().LocOfGroupingDir(), "C:\\App\\Grouping\\");
        EXPECT_EQ(application->Settings().FileContainingTargetDirectories(), kFolderList);
        EXPECT_EQ(application->Settings().LocOfLastSavedJukeBox(), kMix);
        EXPECT_EQ(Songs("Mine"), "b.mp3 ");
    }
    for (const auto& [path, content] : fake.disk.Everything())
        EXPECT_TRUE(!path.starts_with("c:\\copied") || content == "others") << path;
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(StartUpTest, ThePlayerIsSearchedForWhenItIsNotWhereItWas) {
    fake.disk.AddFile("C:\\Player\\WinAmp.exe");
    fake.drives.treeFinds["C:\\"] = "C:\\Player\\WinAmp.exe";
    Run();
    EXPECT_TRUE(Saw("Found WinAmp!!"));
    Run();
    EXPECT_FALSE(Saw("Looking for WinAmp in C:\\"));
    EXPECT_EQ(application->Settings().LocOfWinAmpExe(), "c:\\player\\winamp.exe");
    fake.disk.Erase("C:\\Player\\WinAmp.exe");
    fake.drives.treeFinds.clear();
    Run();
    EXPECT_TRUE(Saw("Looking for WinAmp in C:\\"));
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
    SaveJukebox();
    fake.drives.treeFinds.clear();
    EXPECT_EQ(fake.statusLine.lines, std::vector<std::string>{"3 songs found."});
    fake.statusLine.lines.clear();
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
        EXPECT_TRUE(fake.dialogs.boxes.empty());
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
    const std::string whole = fake.disk.Content(kSongs);
    fake.disk.Erase(kSongs);
    Run();
    EXPECT_EQ(fake.dialogs.boxes[0].buttons, Buttons::YesNo);
    EXPECT_NE(Box().find(kSongs), std::string::npos);
    EXPECT_FALSE(fake.disk.Has(kSongs));  // the answer was No
    EXPECT_EQ(Songs("All Songs"), "");
    Run();  // counts no songs any more: a first run
    EXPECT_EQ(fake.disk.Content(kSongs), whole);

    fake.disk.AddFile(kSongs, whole + "\x05");
    fake.disk.AddFile("D:\\Far\\d.mp3");
    fake.drives.drives.push_back({"D:\\", 3U});
    fake.dialogs.answers = {Answer::Yes};
    Run();
    EXPECT_NE(Box().find("FileLocNames.bad"), std::string::npos);
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\FileLocNames.bad"), whole + "\x05");
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

}  // namespace
}  // namespace tobbin
