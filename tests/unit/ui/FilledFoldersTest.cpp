#include <algorithm>

#include "fakes/TaggedSong.h"
#include "shell/CataloguePass.h"
#include "unit/ui/EditingFixture.h"

// Edits of the folders that the program fills, and its own steps in them.

namespace tobbin {
namespace {

class FilledFolders : public EditingTest {};

TEST_F(FilledFolders, MakesNoSecondSpecialFolder) {
    const struct {
        const char* folder;
        const char* text;
        bool isTaken;
    } names[] = {{"By Mood", "All Songs", false}, {"Decades/10's", "70's", false},
                 {"By Mood", "  ", false},        {"By Mood", "New", true},
                 {"New/Happy", "70's", true},     {"New/70's", "New", true}};
    for (const auto& [folder, text, isTaken] : names)
        EXPECT_EQ(Window().OnFolderTextEdited(*At(folder), text), isTaken) << text;
    const std::string before = Tree();
    OpenJukebox("OTHER");
    for (const std::size_t from : {0U, 1U}) {
        Window().Drop({&Window(from), At("Artist", from), {}}, nullptr, DropMode::Copy);
        EXPECT_EQ(LastLine(),
                  "There is a folder \"Artist\" already that the program fills; there "
                  "can't be two.");
        PopUp(7, "Decades/70's", {}, from);
        PopUp(8, "Decades");
        EXPECT_TRUE(LastLine().starts_with("There is a folder \"70's\" already"));
    }
    EXPECT_EQ(Tree(), before);
}

TEST_F(FilledFolders, AGroupingRunIsAStepOfItsOwn) {
    PopUp(4, "By Mood");
    application.Groups().BuildAutomaticGroups(0, true, "");  // finds nothing new
    EXPECT_EQ(Window().UndoText(), "Undo Add Folder");
    const std::string before = Tree();
    fake.disk.AddFile("C:\\M\\e.mp3", TaggedSong("Cher", ""));
    application.Catalogue().OnSongFound("C:\\M\\", "e.mp3");
    application.Groups().BuildAutomaticGroups(0, true, "");
    const std::string after = Tree();
    EXPECT_EQ(after,
              "All Songs(abce.mp3) Artist[Abba(a) Cher(e.mp3)] Decades[70's 10's] "
              "By Mood[Happy(abc) New Folder]");
    EXPECT_TRUE(Window().IsFormDirty());
    EXPECT_EQ(Window().UndoText(), "Undo Bring In New Songs");
    Window().Undo();
    EXPECT_EQ(Tree(), before);
    Window().Undo();
    EXPECT_EQ(Tree(), kStart);
    Window().Redo();
    Window().Redo();
    EXPECT_EQ(Tree(), after);
}

TEST_F(FilledFolders, FillsTheFoldersAnewInOneStep) {
    Jukebox& jukebox = Window().Model();
    for (const char* const text : {"Year", "New"})
        jukebox.AddChild(nullptr, text);
    Folder& old = jukebox.AddChild(At("Artist"), "Old");
    fake.disk.AddFile("C:\\M\\a.mp3", TaggedSong("Cher", ""));
    fake.disk.AddFile("C:\\M\\b.mp3", TaggedSong("Dire", "1975"));
    fake.disk.Erase("C:\\M\\c.mp3");
    for (const char* const name : {"d.mp3", "e.mp3"}) {
        fake.disk.AddFile(std::string("C:\\M\\") + name, TaggedSong("", ""));
        application.Catalogue().OnSongFound("C:\\M\\", name);
    }
    fake.disk.Lock("C:\\M\\d.mp3");
    for (Folder* const folder : {At("All Songs"), &old})
        jukebox.AppendSongs(*folder, {jukebox.MakeItem("d", 4, 2)});
    const std::string before = Tree();
    const std::string after =
        "All Songs(abde.mp3) Artist[Old(d) Cher(a) Dire(b)] Decades[70's(b) 10's] "
        "By Mood[Happy(abc)] Year[1975(b)] New(e.mp3)";
    commands.Do(Command::FillAnew);
    EXPECT_EQ(Tree(), after);
    EXPECT_EQ(LastLine(),
              "Filled the folders anew: 1 song added, 2 songs moved to other folders, 1 song taken "
              "out as gone; 1 song can't be read now and keeps its place. Alt+Backspace takes it "
              "back.");
    Window().Undo();
    EXPECT_EQ(Tree(), before);
    Window().Redo();
    EXPECT_EQ(Tree(), after);
    commands.Do(Command::FillAnew);
    EXPECT_EQ(LastLine(),
              "The folders are filled as the songs' tags say; 1 song can't be read now and keeps "
              "its place.");
    EXPECT_EQ(Window().UndoText(), "Undo Fill Folders Anew");
    fake.disk.AddFile("C:\\M\\c.mp3", "no tag");  // It is new when it comes back.
    commands.Do(Command::NewSongsNormalLocations);
    EXPECT_EQ(Dump(jukebox, *At("All Songs")) + Dump(jukebox, *At("New")),
              "All Songs(abde.mp3c.mp3)New(e.mp3c.mp3)");
}

}  // namespace
}  // namespace tobbin
