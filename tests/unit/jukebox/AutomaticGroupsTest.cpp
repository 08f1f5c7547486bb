#include "jukebox/AutomaticGroups.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "jukebox/GroupFiling.h"
#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "unit/jukebox/JukeboxFixture.h"

namespace tobbin {
namespace {

class AutomaticGroupsTest : public JukeboxFixture {
 protected:
    void BuildAll() { groups.BuildAutomaticGroups(0, true, ""); }
    void BuildSample() { BuildInitialJukebox(jukebox, groups, progress); }
};

TEST_F(AutomaticGroupsTest, FilesYearsByTheirThirdCharacter) {
    char name = 'a';
    for (const char* year :
         {"1985", "1905", "1915", "2005", "0", "", "x985", " 85x", "[93]", "00.0", "19\xE9"})
        AddSong(std::string(1, name++), TaggedSong("", year));
    AddSong("l", TaggedSong("", "", 255, '\0'));
    BuildSample();
    EXPECT_EQ(Inside("Year"), "1985/ 1905/ 1915/ 2005/ 85x/ 93/ 19\xC3\xA9/ ");
    EXPECT_EQ(Inside("Year", "1985"), "a ");
    EXPECT_EQ(Inside("Decades"), "20's/ 30's/ 40's/ 50's/ 60's/ 70's/ 80's/ 90's/ 00's/ ");
    EXPECT_EQ(Inside("Decades", "80's"), "a ");
    EXPECT_EQ(Inside("Decades", "00's"), "b d ");
    EXPECT_EQ(Inside("Decades", "90's"), "");
    EXPECT_EQ(Inside("All Songs"), "a b c d e f g h i j k l ");
}

TEST_F(AutomaticGroupsTest, FilesArtistsWithoutPaddingAndBrackets) {
    AddSong("b", TaggedSong("Abba", "", 255, '\0'));
    char name = 'c';
    for (const char* artist : {"Abba", "aBBacadabra", "Bj\xF6rk", "BJ\xD6RK", "[Live] Band", "[]"})
        AddSong(std::string(1, name++), TaggedSong(artist, ""));
    AddSong("i", TaggedSong(std::string("Abba\0rest", 9), ""));
    BuildSample();
    EXPECT_EQ(Inside("Artist"), "Abba/ Bj\xC3\xB6rk/ Live  Band/ ");
    EXPECT_EQ(Inside("Artist", "Abba"), "b c d i ");
    EXPECT_EQ(Inside("Artist", "Bj\xC3\xB6rk"), "e f ");
}

// A file that is locked, one in a cloud store and one on a drive that is away; the program ends
// before they can be read.
TEST_F(AutomaticGroupsTest, FilesATagThatCouldNotBeReadInTheNextRunThatCan) {
    for (const char* name : {"locked", "fetched"})
        AddSong(name, TaggedSong("Abba", "1985", 17));
    fake.disk.AddFile("E:\\far", TaggedSong("Abba", "1985", 17));
    catalogue.OnSongFound("E:\\", "far");
    fake.disk.Lock("C:\\M\\locked");
    fake.disk.Lock("C:\\M\\fetched", DiskError::NotHere);
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    BuildSample();
    EXPECT_EQ(Inside("All Songs") + Inside("New") + Inside("Artist") + Inside("Year"),
              "locked fetched far locked fetched far ");
    EXPECT_EQ(std::ranges::count(fake.disk.Log(), "open E:\\far"), 0);
    std::unique_ptr<Jukebox> later;
    ASSERT_TRUE(SaveJukeboxFile(fake.disk, "C:\\M\\a.juk", jukebox, catalogue).Ok());
    (void)LoadJukeboxFile(fake.disk, "C:\\M\\a.juk", catalogue, fake.text, later);
    jukeboxes.open = {later.get()};
    fake.disk.Unlock("C:\\M\\locked");
    fake.disk.Unlock("C:\\M\\fetched");
    fake.drives.drives.push_back({"E:\\", 3});
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    for (int run = 0; run < 2; ++run) {
        BuildAll();
        for (const auto& [group, child] : {std::pair{"Artist", "Abba"},
                                           {"Year", "1985"},
                                           {"Decades", "80's"},
                                           {"Genre", "Rock"}})
            EXPECT_EQ(Inside(*later, *later->MaybeFind(group)->MaybeChild(child)),
                      "locked fetched far ");
        EXPECT_EQ(Inside(*later, *later->MaybeFind("New")), "locked fetched far ");
    }
}

TEST_F(AutomaticGroupsTest, FilesGenresByTheirNamesAndLeavesOutTheRest) {
    AddSong("rock", TaggedSong("", "", 17));
    AddSong("roll", TaggedSong("", "", 78));
    AddSong("none", TaggedSong("", "", 255));
    AddSong("beyond", TaggedSong("", "", 148));
    AddSong("untagged");
    AddSong("missing", TaggedSong("Gone", "1985", 17));
    catalogue.Mp3Info(clsMain::kPresence, 6, "0");
    catalogue.Mp3Info(clsMain::kRank, 2, "6");
    BuildSample();
    const SongItem& roll = jukebox.MaybeFind("Rock n Roll")->Songs().at(0);
    EXPECT_TRUE(roll.recordNumber == 2 && roll.image == 6 && roll.selectedImage == 6);
    EXPECT_EQ(Inside("Genre"), "Rock/ Rock n Roll/ ");
    EXPECT_EQ(Inside("Genre", "Rock"), "rock ");
    EXPECT_EQ(Inside("Artist"), "");
    EXPECT_EQ(Inside("All Songs"), "rock roll none beyond untagged ");
    EXPECT_EQ(Inside("New"), Inside("All Songs"));
}

TEST_F(AutomaticGroupsTest, ALaterRunAddsOnlyWhatIsNew) {
    AddSong("a", TaggedSong("Abba", "1985", 17));
    BuildSample();
    jukebox.IsFormDirty(false);
    fake.disk.ClearLog();
    BuildAll();
    EXPECT_TRUE(jukebox.IsFormDirty());
    EXPECT_FALSE(jukebox.HasUnsavedChanges());
    EXPECT_TRUE(fake.disk.Log().empty());  // no tag is read again
    EXPECT_EQ(Inside("All Songs") + Inside("New"), "a a ");

    AddSong("b", TaggedSong("Abba", "1985", 17));
    EXPECT_EQ(groups.NewRecordRange(jukebox).first, 2);
    EXPECT_EQ(groups.NewRecordRange(jukebox).last, 2);
    groups.BuildAutomaticGroups(1, true, "");
    EXPECT_EQ(Inside("All Songs"), "a b ");
    EXPECT_EQ(Inside("New"), "a ");
    EXPECT_EQ(Inside("Artist", "Abba") + Inside("Year", "1985") + Inside("Decades", "80's") +
                  Inside("Genre", "Rock"),
              "a b a b a b a b ");
}

TEST_F(AutomaticGroupsTest, AMissingGroupIsLeftAlone) {
    AddSong("a", TaggedSong("Abba", "1985", 17));
    AddFolders({"All Songs", "Decades", "Artist"});
    jukebox.AddChild(jukebox.MaybeFind("Decades"), "80's");
    BuildAll();
    EXPECT_EQ(jukebox.RootCount(), 3U);
    EXPECT_EQ(Inside("Artist", "Abba"), "a ");
    EXPECT_EQ(Inside("Decades", "80's"), "");  // decades need "Year"

    AddSong("b", TaggedSong("Abba", "1985", 17));
    jukebox.Remove(*jukebox.MaybeFind("All Songs"));
    jukebox.AddChild(jukebox.MaybeFind("Artist"), "All Songs");
    jukebox.IsFormDirty(false);
    BuildAll();
    EXPECT_EQ(Inside("All Songs") + Inside("Artist", "Abba"), "a ");
    EXPECT_TRUE(jukebox.IsFormDirty());
    EXPECT_EQ(groups.NewRecordRange(jukebox).last, 0);
}

TEST_F(AutomaticGroupsTest, TheCaptionPicksTheJukeboxes) {
    AddSong("a", TaggedSong("Abba", ""));
    Jukebox other;
    other.AddChild(nullptr, "All Songs");
    other.DaCaption("MIX");
    other.IsFormDirty(false);
    jukeboxes.open.push_back(&other);
    AddFolders({"All Songs"});
    for (const auto& [caption, inside] :
         {std::pair("mix", " | "), {"MIX", "a  | "}, {"", "a  | a "}}) {
        groups.BuildAutomaticGroups(0, true, caption);
        EXPECT_EQ(Inside(other, other.Root(0)) + " | " + Inside("All Songs"), inside);
        EXPECT_EQ(other.IsFormDirty(), caption != std::string("mix"));
    }
}

TEST_F(AutomaticGroupsTest, APersonMayCloseAndDeleteWhileTagsAreRead) {
    AddSong("a", TaggedSong("Abba", ""));
    Jukebox other;
    other.AddChild(nullptr, "All Songs");
    jukeboxes.open.push_back(&other);
    AddFolders({"All Songs", "Artist", "New"});
    fake.events.onEvents = [&] {
        std::erase(jukeboxes.open, &other);
        if (Folder* const artist = jukebox.MaybeFind("Artist"))
            jukebox.Remove(*artist);
    };
    BuildAll();
    EXPECT_EQ(Inside(other, other.Root(0)), "");
    EXPECT_EQ(Inside("New"), "a ");
    EXPECT_EQ(Inside("Artist"), "no such folder");
}

// Each value with the place of its folder among the children; those that fit none are added.
TEST(GroupFiling, FilesAsAWalkOverTheChildrenWould) {
    const struct {
        GroupFiling::Match match;
        std::vector<std::string> children;
        std::vector<std::pair<const char*, std::size_t>> places;
    } rows[] = {{GroupFiling::Match::BeginsWith,
                 {"Abba", "AB", "\u00C4"},
                 {{"abbacadabra", 0},
                  {"Abc", 1},
                  {"\u00E4b", 2},
                  {"a", 3},
                  {"Axel", 3},
                  {"b*", 4},
                  {"B*b", 4},
                  {"bb", 5},
                  {"", 6},
                  {"c", 6},
                  {"AB", 1}}},
                {GroupFiling::Match::BeginsWith, {"A", "Abba"}, {{"Abba", 0}}},
                {GroupFiling::Match::Equal,
                 {"Rock", "rock"},
                 {{"rock", 1}, {"ROCK", 2}, {"Rock", 0}, {"", 3}, {"R", 4}}}};
    const FakeText text;
    for (const auto& [match, children, places] : rows) {
        Jukebox jukebox;
        Folder& group = jukebox.AddChild(nullptr, "Artist");
        for (const std::string& child : children)
            jukebox.AddChild(&group, child);
        GroupFiling filing(group, match, text, [&](Folder& parent, const std::string& name) {
            return &jukebox.AddChild(&parent, name);
        });
        for (const auto& [value, place] : places)
            EXPECT_EQ(filing.FolderFor(value).Index(), place) << value;
    }
}

}  // namespace
}  // namespace tobbin
