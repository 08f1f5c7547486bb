#include "ui/BackgroundPicture.h"

#include "ui/PictureChoice.h"
#include "unit/shell/FrameFixture.h"

namespace tobbin {
namespace {

using Lines = std::vector<std::string>;

constexpr char kPoc[] = "C:\\App\\Grouping\\MIX.poc";

class FakeChoiceView : public PictureChoiceView {
 public:
    bool tile = false, picture = false;
    std::string path;
    void TickTile(bool ticked) override { tile = ticked; }
    void TickPicture(bool ticked) override { picture = ticked; }
    bool IsTileTicked() const override { return tile; }
    bool IsPictureTicked() const override { return picture; }
    void ShowPath(const std::string& shown) override { path = shown; }
};

// The jukebox MIX, its window open, and a folder of three pictures.
class BackgroundPictureTest : public FrameTest {
 protected:
    JukeboxWindow& window = OpenSample();
    Lines& shown = frame.children[0].view->backgrounds;
    FakeChoiceView dialog;
    PictureChoice choice{fake.environment, application.Settings(),
                         [this] { return frame.MaybeActiveJukebox(); }};

    BackgroundPictureTest() {
        window.DaCaption("MIX");
        for (const char* name : {"c.jpg", "B.JPG", "notes.txt", "x.jpg.bak", "a.jpg"})
            fake.disk.AddFile(std::string("C:\\P\\") + name);
        fake.disk.AddFolder("C:\\P\\album.jpg");
    }
    void Read(const std::string& bytes) {
        fake.disk.AddFile(kPoc, bytes);
        window.ReadInImageArray("MIX.poc");
    }
};

TEST_F(BackgroundPictureTest, StepsThroughTheFolderAndRoundItsEnds) {
    Read("C:\\P\\C.JPG\r\nFalse\r\nTrue\r\n");
    commands.Do(Command::NextPicture);
    window.OnControlCommand(601);
    commands.Do(Command::ToggleTile);
    commands.Do(Command::PreviousPicture);
    window.OnControlCommand(602);
    EXPECT_EQ(
        shown,
        (Lines{R"(file:\\C:\P\c.jpg|fitted|C:\P\a.jpg)", R"(file:\\C:\P\a.jpg|fitted|C:\P\b.jpg)",
               R"(file:\\C:\P\b.jpg|fitted|C:\P\c.jpg)", R"(file:\\C:\P\b.jpg|tiled|C:\P\c.jpg)",
               R"(file:\\C:\P\a.jpg|tiled|C:\P\c.jpg)", R"(file:\\C:\P\c.jpg|tiled|C:\P\b.jpg)"}));
    EXPECT_EQ(window.LastPicFileLocation(), "C:\\P\\c.jpg");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(BackgroundPictureTest, WithoutAListEachCommandSaysSoAndOpensTheDialog) {
    const std::string pick =
        "You first need to pick a picture.\r\n\r\nOnce you've picked a picture ";
    commands.Do(Command::NextPicture);
    EXPECT_EQ(LastBox(), pick +
                             "this will allow you to cycle through all the pictures in that "
                             "particular folder (directory).");
    EXPECT_EQ(LastLine(),
              "Ctrl+Z and Ctrl+A step through the pictures. Alt+Backspace is undo, Ctrl+Shift+A "
              "selects all.");
    commands.Do(Command::NoPicture);
    EXPECT_EQ(LastBox(), pick + "you can use this function.");
    EXPECT_TRUE(window.ShowPictt());
    commands.ClickButton(16);
    EXPECT_EQ(frame.host.asked, (Lines{"picture", "picture", "picture"}));
    frame.panelOpen = frame.panelActive = true;
    commands.Do(Command::PreviousPicture);
    EXPECT_EQ(fake.dialogs.boxes.size(), 2U);
}

TEST_F(BackgroundPictureTest, WhatIsGoneLeavesNoListAndNoPicture) {
    for (const char* bytes : {"C:\\P\\gone.jpg\r\n0\r\n1\r\n", "C:\\Q\\a.jpg\r\n0\r\n1\r\n"}) {
        Read("C:\\P\\a.jpg\r\n0\r\n1\r\n");
        Read(bytes);
        EXPECT_EQ(shown.back(), "|fitted|");
        EXPECT_NE(LastLine().find("is not there any more."), std::string::npos);
        EXPECT_TRUE(window.Picture().Pictures().IsEmpty());
    }
    fake.disk.AddFile("C:\\R\\photo.jpeg");  // a picture, but none of the list's
    Read("C:\\R\\photo.jpeg\r\n0\r\n1\r\n");
    EXPECT_TRUE(window.Picture().Pictures().IsEmpty());
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(BackgroundPictureTest, ReadsFlagsOfEveryWriterAndTellsOfDamagedOnes) {
    const struct {
        const char* lines;
        bool tiled, shown, damaged;
    } cases[] = {{"-1 \r\n 0 \r\n", true, false, false}, {"True\r\nFalse", true, false, false},
                 {"false\nTRUE\n", false, true, false},  {"maybe\r\nTrue\r\n", false, false, true},
                 {"1\r\n99999\r\n", true, false, true},  {"-1\r\n", true, false, true}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.lines);
        window.BeItTiled(false);
        window.ShowPictt(false);
        const std::size_t linesBefore = fake.statusLine.lines.size();
        Read(std::string("  C:\\P\\a.jpg  \r\n") + each.lines);
        EXPECT_EQ(window.LastPicFileLocation(), "C:\\P\\a.jpg");
        EXPECT_EQ(window.BeItTiled(), each.tiled);
        EXPECT_EQ(window.ShowPictt(), each.shown);
        EXPECT_EQ(fake.statusLine.lines.size() - linesBefore, each.damaged ? 1U : 0U);
    }
}

TEST_F(BackgroundPictureTest, AFailedPictureIsToldOnlyWhileItIsWanted) {
    Read("C:\\P\\a.jpg\r\n0\r\n1\r\n");
    window.Picture().OnFailed("C:\\P\\a.jpg", "it is damaged");
    EXPECT_EQ(LastLine(), "The picture \"C:\\P\\a.jpg\" can't be shown: it is damaged.");
    window.ChangePicture(true);
    window.Picture().OnFailed("C:\\P\\a.jpg", "it is late");
    EXPECT_EQ(fake.statusLine.lines.size(), 1U);
}

TEST_F(BackgroundPictureTest, TheDialogsChoiceIsKeptAndShown) {
    choice.Load(dialog);
    EXPECT_FALSE(dialog.tile || dialog.picture);
    fake.dialogs.files = {std::nullopt, "C:\\P\\B.JPG", "C:\\P\\Ω.jpg"};
    for (const bool chosen : {false, true}) {
        choice.OnBrowse(dialog);
        EXPECT_EQ(dialog.picture, chosen);
    }
    EXPECT_EQ(dialog.path, "C:\\P\\B.JPG");
    dialog.tile = true;
    choice.OnOk(dialog);
    EXPECT_EQ(fake.disk.Content(kPoc), "C:\\P\\B.JPG\r\n 1 \r\n 1 \r\n");
    EXPECT_EQ(shown, Lines{R"(file:\\C:\P\b.jpg|tiled|C:\P\c.jpg)"});
    EXPECT_NE(fake.disk.Content(application.Settings().SettingsPath())
                  .find("True\r\nTrue\r\nC:\\P\\B.JPG\r\n"),
              std::string::npos);
    choice.OnBrowse(dialog);
    EXPECT_EQ(fake.dialogs.fileDialogs[1], "JPEG (*.jpg) |*.jpg in C:\\App\\Grouping\\");
    EXPECT_EQ(fake.dialogs.fileDialogs[2], "JPEG (*.jpg) |*.jpg in C:\\P\\");
    choice.OnOk(dialog);  // the picture of that name is not there
    EXPECT_EQ(fake.disk.Content(kPoc), "\uFEFFC:\\P\\Ω.jpg\r\n 1 \r\n 1 \r\n");
    EXPECT_EQ(shown.back(), "|tiled|");
    fake.disk.Lock(kPoc);
    application.Settings().PictureLocation("C:\\P\\c.jpg");
    choice.OnOk(dialog);
    EXPECT_NE(LastBox().find(kPoc), std::string::npos);
    EXPECT_EQ(window.LastPicFileLocation(), "C:\\P\\Ω.jpg");
}

}  // namespace
}  // namespace tobbin
