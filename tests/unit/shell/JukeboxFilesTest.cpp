#include "shell/JukeboxFiles.h"

#include "jukebox/JukeboxFile.h"
#include "unit/shell/FrameFixture.h"

namespace tobbin {
namespace {

class JukeboxFilesTest : public FrameTest {
 protected:
    JukeboxFiles& files = commands.Files();
    JukeboxFilesTest() {
        frame.host.prepareToClose = [this](JukeboxWindow& window, bool save) {
            files.PrepareToClose(window, save);
        };
    }

    // Answers the next file dialog.
    void Choose(const std::string& path) { fake.dialogs.files.push_back(path); }
    void SaveAs(const std::string& path) {
        Choose(path);
        commands.Do(Command::SaveAs);
    }
    void Open(const std::string& path) {
        Choose(path);
        commands.Do(Command::Open);
    }
    // A jukebox file of one folder "All Songs" with the first `songs` songs.
    void AddJukeboxFile(const std::string& path, int songs) {
        Jukebox jukebox;
        AddListColumns(jukebox);
        Folder& all = jukebox.AddChild(nullptr, "All Songs");
        for (int i = 1; i <= songs; ++i)
            jukebox.AppendSongs(all, {jukebox.MakeItem("x", i, 2)});
        fake.disk.AddFile(path, WriteJukebox(jukebox, application.Catalogue()));
    }
    // A jukebox of a file with a change that is not saved, and a picture.
    JukeboxWindow& OpenChanged(const std::string& path) {
        AddJukeboxFile(path, 3);
        Open(path);
        JukeboxWindow& window = *frame.children.back().window;
        window.LastPicFileLocation("C:\\p.jpg");
        commands.Do(Command::AddFolderToRoot);
        return window;
    }
    void Close(JukeboxWindow& window, const std::deque<Answer>& answers) {
        fake.dialogs.answers = answers;
        window.View().Close();
    }
    using Names = std::vector<std::string>;
    static constexpr char kRecovered[] = "C:\\App\\Grouping\\Recovered\\";
    static constexpr char kPersonal[] = "C:\\Temp\\Recovered\\";
    Names Kept(const std::string& folder) {
        return fake.disk.FilesIn(folder.substr(0, folder.size() - 1));
    }
    const clsINI& Settings() { return application.Settings(); }
};

TEST_F(JukeboxFilesTest, NamesAreLoweredAndEndInOneExtension) {
    const auto normal = [&](const char* path) { return JukeboxFiles::NormalPath(fake.text, path); };
    for (const char* name : {"Mix", "mix.juk", "MIX.JUK", "mix.juk.juk", "mix.juk.juk.juk"})
        EXPECT_EQ(normal(name), "mix.juk") << name;
    EXPECT_EQ(normal("  C:\\My Music\\MIX.txt "), "c:\\my music\\mix.txt.juk");
    EXPECT_EQ(normal("C:\\a.juk.juk\\Mix"), "c:\\a.juk.juk\\mix.juk");
}

TEST_F(JukeboxFilesTest, TheSampleIsSavedUnderANameOfItsOwnOnly) {
    JukeboxWindow& window = OpenSample();
    window.LastPicFileLocation("C:\\p.jpg");
    window.ShowPictt(true);
    commands.Do(Command::Save);  // its dialog is canceled
    commands.Do(Command::Open);  // likewise
    EXPECT_EQ(window.DaCaption(), kSampleCaption);
    EXPECT_EQ(frame.children.size(), 1U);
    frame.panelOpen = frame.panelActive = true;
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        fake.disk.AddFile("C:\\App\\Grouping\\mix.juk", "old");
        fake.dialogs.answers = {answer};
        SaveAs("C:\\App\\Grouping\\Mix");
        EXPECT_EQ(LastBox(), "File already exists, do you wish to replace this file?");
        EXPECT_EQ(window.DaCaption(), answer == Answer::Yes ? "MIX" : kSampleCaption);
        EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\mix.juk") == "old", answer == Answer::No);
    }
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\mix.poc"), "C:\\p.jpg\r\n 0 \r\n-1 \r\n");
    EXPECT_EQ(frame.seen, Names{"minimize panel"});
    window.IsFormDirty(true);
    commands.Do(Command::Save);  // asks for no name
    EXPECT_FALSE(window.IsFormDirty());
}

TEST_F(JukeboxFilesTest, ATitleIsOpenOnceWhateverItsFolder) {
    AddJukeboxFile("C:\\One\\mix.juk", 3);
    AddJukeboxFile("C:\\Two\\mix.juk", 3);
    Open("C:\\One\\mix.juk");
    EXPECT_EQ(frame.children[0].window->DaCaption(), "MIX");
    EXPECT_FALSE(frame.children[0].window->IsFormDirty());
    Open("C:\\Two\\mix.juk");
    EXPECT_EQ(LastBox(), "This file is already open");
    files.OpenRecent(1);
    EXPECT_EQ(frame.children.size(), 1U);
    EXPECT_EQ(OpenSample().DaCaption(), kSampleCaption);
    SaveAs("C:\\Two\\mix.juk");
    EXPECT_EQ(LastBox(),
              "MIX is already open.  Close the file then you can save this Juke box with that file "
              "name.");
    frame.children[0].view->visible = false;
    Open("C:\\Two\\mix.juk");
    EXPECT_EQ(frame.children.size(), 3U);
}

TEST_F(JukeboxFilesTest, OpeningRebuildsTheGroupsWhenSongsHaveComeSince) {
    AddJukeboxFile("C:\\J\\two.juk", 2);
    fake.statusLine.progress.clear();
    fake.statusLine.steps.clear();
    Open("  C:\\J\\two.juk ");
    const JukeboxWindow& window = *frame.children.back().window;
    EXPECT_EQ(window.Model().Root(0).Songs().size(), 3U);
    EXPECT_TRUE(window.IsFormDirty());
    EXPECT_EQ(window.FileLocation(), "C:\\J\\");
    EXPECT_EQ(fake.statusLine.progress,
              (Names{"Opening C:\\J\\two.juk . . .", "",
                     "Reading the tags of new songs: 1 of 1.  Esc stops it.", ""}));
    EXPECT_EQ(fake.statusLine.steps, (std::vector<StepsDone>{{}, {}, {1, 1}, {}}));
}

TEST_F(JukeboxFilesTest, WhileGroupsAreBuiltNoOtherJukeboxOpensAndClosingOrEscEndsIt) {
    AddJukeboxFile("C:\\J\\one.juk", 1);
    fake.events.onEvents = [&] {
        EXPECT_FALSE(commands.IsEnabled(Command::NewSongsNormalLocations));
        files.OpenRecent(1);
        frame.children.back().view->visible = false;
    };
    Open("C:\\J\\one.juk");
    EXPECT_EQ(frame.children.size(), 1U);
    EXPECT_EQ(application.At(0).Root(0).Songs().size(), 2U);  // with the one read until then
    fake.events.onEvents = [&] { EXPECT_TRUE(files.StopRefreshing()); };
    AddJukeboxFile("C:\\J\\esc.juk", 1);
    Open("C:\\J\\esc.juk");
    EXPECT_EQ(application.At(1).Root(0).Songs().size(), 2U);
    EXPECT_FALSE(files.StopRefreshing());
    EXPECT_TRUE(commands.IsEnabled(Command::NewSongsNormalLocations));
}

TEST_F(JukeboxFilesTest, ARefusedFileAndAFailedSaveChangeNothingAndOpenNoBox) {
    fake.disk.AddFile("C:\\J\\bad.juk", "Tobbin jukebox 1\r\nwhat\r\n");
    Open("C:\\J\\bad.juk");
    Open("C:\\J\\none.juk");
    EXPECT_EQ(fake.statusLine.lines.size(), 2U);
    EXPECT_EQ(frame.children.size() + application.Count(), 0U);
    JukeboxWindow& window = OpenSample();
    SaveAs("C:\\Nowhere\\mix");
    EXPECT_TRUE(LastLine().starts_with("The jukebox was not saved to \"c:\\nowhere\\mix.juk\""));
    EXPECT_EQ(window.DaCaption(), kSampleCaption);
    EXPECT_TRUE(window.IsFormDirty());
    EXPECT_EQ(Settings().LocOfLastSavedJukeBox(), "");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(JukeboxFilesTest, AFailedSaveAtClosingIsOfferedAsAJukeboxOfItsOwn) {
    JukeboxWindow& lost = OpenChanged("C:\\App\\Grouping\\mix.juk");
    const std::string saved = fake.disk.Content("C:\\App\\Grouping\\mix.juk");
    fake.disk.FailBelow("C:\\App\\Grouping", DiskError::DiskFull);
    const Names copy = {"mix (recovered).juk", "mix (recovered).poc"};
    Close(lost, {Answer::Yes});
    EXPECT_EQ(Kept(kPersonal), copy);
    fake.disk.FailBelow("C:\\App\\Grouping", DiskError::None);

    JukeboxFiles next(application, frame);  // of the next start
    Open("C:\\App\\Grouping\\mix.juk");
    fake.dialogs.answers.push_back(Answer::Yes);
    next.OfferRecovered();
    JukeboxWindow& again = *frame.children.back().window;
    EXPECT_EQ(again.DaCaption(), "MIX (RECOVERED)");
    EXPECT_EQ(again.Model().FolderCount(), lost.Model().FolderCount());
    EXPECT_EQ(again.LastPicFileLocation(), "C:\\p.jpg");
    for (const char* name : {"C:\\App\\Grouping\\mix", "C:\\Temp\\Recovered\\mine"}) {
        const std::size_t boxes = fake.dialogs.boxes.size();
        Choose(name);
        next.Save();  // asks for a name, and refuses these
        EXPECT_EQ(fake.dialogs.boxes.size(), boxes + 1) << name;
    }
    EXPECT_EQ(fake.disk.Content("C:\\App\\Grouping\\mix.juk"), saved);
    EXPECT_EQ(Kept(kPersonal), copy);  // until it is saved
    Choose("C:\\App\\Grouping\\other");
    next.Save();
    EXPECT_EQ(again.DaCaption(), "OTHER");
    EXPECT_EQ(Kept(kPersonal), Names{});
}

TEST_F(JukeboxFilesTest, ACopyOfUnsavedChangesIsKeptEveryFewMinutesUntilTheyAreSavedOrGivenUp) {
    const auto afterMinutes = [&](int minutes) {
        fake.clock.milliseconds += minutes * 60'000;
        files.Recovered().KeepWhenDue();
        return Kept(kRecovered);
    };
    fake.disk.AddFile(std::string(kRecovered) + "mix (recovered).juk", "of an earlier run");
    const Names earlier = Kept(kRecovered);
    const Names both = {"mix (recovered 2).juk", "mix (recovered).juk"};
    JukeboxWindow& window = OpenChanged("C:\\J\\mix.juk");
    window.LastPicFileLocation("");
    OpenSample();  // can be built again
    EXPECT_EQ(afterMinutes(1), earlier);
    EXPECT_EQ(afterMinutes(3), both);
    fake.disk.ClearLog();
    EXPECT_EQ(afterMinutes(3), both);
    EXPECT_EQ(std::ranges::count(fake.disk.Log(), "write"), 0);  // nothing has changed since
    window.Undo();
    EXPECT_EQ(afterMinutes(3), earlier);
    window.Redo();
    afterMinutes(3);
    frame.children[1].view->closed = true;
    commands.Do(Command::Save);
    EXPECT_EQ(Kept(kRecovered), earlier);
    commands.Do(Command::AddFolderToRoot);
    EXPECT_EQ(afterMinutes(3), both);
    Close(window, {Answer::No});
    EXPECT_EQ(Kept(kRecovered), earlier);
    EXPECT_EQ(fake.disk.Content(std::string(kRecovered) + earlier[0]), "of an earlier run");
    files.OfferRecovered();  // damaged, and not offered again
    EXPECT_EQ(Kept(kRecovered), Names{"mix (recovered).bak"});
}

TEST_F(JukeboxFilesTest, AtTheEndOfTheSessionNobodyIsAskedAndTheCopiesStay) {
    JukeboxWindow& window = OpenChanged("C:\\J\\mix.juk");
    files.Recovered().LeaveForNextStart();
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    Close(window, {});  // as a box does that the end of the program takes away
    EXPECT_EQ(Kept(kRecovered), (Names{"mix (recovered).juk", "mix (recovered).poc"}));
    EXPECT_EQ(files.RestartArguments(14), "\"C:\\J\\MIX.juk\"");
    EXPECT_EQ(files.RestartArguments(13), "");
}

TEST_F(JukeboxFilesTest, WhatCanBeKeptNowhereIsToldBeforeItsWindowGoesWithAWayOut) {
    fake.disk.AddFolder("D:\\");
    for (const Answer answer : {Answer::Yes, Answer::No}) {
        JukeboxWindow& window = OpenChanged("C:\\J\\mix.juk");
        fake.disk.FailBelow("C:\\", DiskError::DiskFull);
        fake.dialogs.files = {"D:\\mix"};
        Close(window, {Answer::Yes, answer});
        EXPECT_EQ(
            LastBox(),
            "The jukebox \"MIX\" is not saved, and no copy of it could be kept in "
            "\"C:\\App\\Grouping\\Recovered\\\": the disk is full.\r\n\r\nWhen it closes now, "
            "its changes are lost.  Do you want to save it in another place first?");
        EXPECT_EQ(fake.disk.Has("D:\\mix.juk"), answer == Answer::Yes);
        EXPECT_EQ(window.IsFormDirty(), answer == Answer::No);
        EXPECT_TRUE(frame.children.back().view->closed);
        fake.disk.FailBelow("C:\\", DiskError::None);
        if (answer == Answer::Yes)
            fake.disk.Erase("D:\\mix.juk");
    }
}

TEST_F(JukeboxFilesTest, TheRecentMenuGrowsAndNeverShrinks) {
    clsINI& settings = application.Settings();
    RecentMenu menu;
    const auto shown = [&] {
        menu.Update(settings);
        return menu.Captions();
    };
    EXPECT_EQ(shown(), Names{});
    for (const char* path : {"C:\\a.juk", "C:\\b.juk", "C:\\a.juk"})
        settings.LocOfLastSavedJukeBox(path);
    const Names three = {"&1.  C:\\a.juk", "&2.  C:\\b.juk", "&3.  C:\\a.juk"};
    EXPECT_EQ(shown(), three);
    settings.LocSecToLastSavedJukeBox("");
    settings.LocOfThirdToLastSaveJukeBox("C:\\new.juk");
    EXPECT_EQ(shown(), three);
    EXPECT_EQ(RecentMenu::Shortened(std::string(45, 'x')), std::string(45, 'x'));
    EXPECT_EQ(RecentMenu::Shortened("&1.  C:\\Documents\\Music and more\\Jukeboxes\\rock.juk"),
              "&1.  C:\\Documents\\Mu .... d more\\Jukeboxes\\rock.juk");
}

}  // namespace
}  // namespace tobbin
