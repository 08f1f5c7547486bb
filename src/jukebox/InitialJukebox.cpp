#include "jukebox/InitialJukebox.h"

#include "jukebox/SpecialFolders.h"

namespace tobbin {
namespace {

struct TopLevelFolder {
    std::string text;
    std::vector<std::string> children;
};

const std::vector<TopLevelFolder>& SampleFolders() {
    static const std::vector<TopLevelFolder> folders = {
        {kAllSongs, {}},
        {kArtist, {}},
        {kYear, {}},
        {kGenre, {}},
        {kNew, {}},
        {kDecades, DecadeTexts()},
        {"By Mood",
         {"Happy", "Sad", "Smokey", "Romantic", "New Age/ Spiritual", "Powerful", "Soothing",
          "Up Lifting"}},
        {"My Favorite Play Lists", {"Super Hits 1", "Super Hits 2"}},
        {"Dad's", {}},
        {"Seasonal", {"Christmas", "Valentines Day", "Hanukah", "Halloween"}},
        {"My Sweetie's favorites", {}},
        {"Best friend's favorites", {}}};
    return folders;
}

}  // namespace

void AddListColumns(Jukebox& jukebox) {
    jukebox.AddColumn(kNameHeading);
    jukebox.AddColumn(kKeyHeading);
}

void BuildInitialJukebox(Jukebox& jukebox, AutomaticGroups& groups, Progress& progress) {
    progress.Show("No saved Jukebox found, building initial Jukebox - may take a while. . . ");
    AddListColumns(jukebox);
    for (const TopLevelFolder& folder : SampleFolders()) {
        Folder& top = jukebox.AddChild(nullptr, folder.text);
        for (const std::string& child : folder.children)
            jukebox.AddChild(&top, child);
    }
    groups.BuildAutomaticGroups(0, true, jukebox.DaCaption());
    jukebox.DaCaption(kSampleCaption);
    jukebox.IsFormDirty(false);  // until now it holds nothing that can't be built again
    jukebox.MarkAsFilled();
}

void CopyJukebox(const Jukebox& from, Jukebox& to) {
    for (std::size_t i = 0; i < from.RootCount(); ++i)
        to.Insert(nullptr, to.RootCount(), to.CopyFolder(from, from.Root(i)));
}

}  // namespace tobbin
