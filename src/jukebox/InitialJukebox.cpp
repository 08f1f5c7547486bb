#include "jukebox/InitialJukebox.h"

#include <cstdint>
#include <unordered_map>

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
}

void CopyJukebox(const Jukebox& from, Jukebox& to) {
    std::unordered_map<const Folder*, Folder*> copies;
    std::unordered_map<std::uint32_t, std::uint32_t> names;  // a song stands in several folders
    for (const Folder* folder = from.Next(nullptr); folder != nullptr; folder = from.Next(folder)) {
        Folder* const parent = folder->Parent() != nullptr ? copies.at(folder->Parent()) : nullptr;
        Folder& copy =
            to.AddChild(parent, folder->Text(), folder->Image(), folder->SelectedImage());
        std::vector<SongItem> songs = folder->Songs();
        for (SongItem& song : songs) {
            const std::uint32_t name = song.nameId;
            const auto known = song.IsMissing() ? names.end() : names.find(name);
            if (known != names.end())
                song.nameId = known->second;
            else
                song = to.CopyItem(from, song);
            if (!song.IsMissing())
                names.try_emplace(name, song.nameId);
        }
        to.AppendSongs(copy, songs);
        if (folder->ChildCount() > 0)
            copies[folder] = &copy;
    }
}

}  // namespace tobbin
