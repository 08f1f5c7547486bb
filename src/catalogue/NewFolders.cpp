#include "catalogue/NewFolders.h"

#include <algorithm>
#include <set>

#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {

std::string RemarkOnNewFolder(Environment& environment, SongDrives& drives,
                              const std::vector<std::string>& knownFolders,
                              const std::vector<std::string>& subfolders,
                              const std::function<bool()>& keepOn) {
    std::set<std::string> known;
    for (const std::string& folder : knownFolders)
        known.insert(environment.text.ToLower(folder));
    for (const std::string& folder : subfolders) {
        const std::string lowered = environment.text.ToLower(folder);
        const auto next = known.lower_bound(lowered);
        FolderListing listing;
        if (!keepOn())
            break;
        if ((next != known.end() && next->starts_with(lowered)) ||
            !drives.List(folder, listing).Ok())
            continue;
        environment.events.LetEventsThrough();
        const auto mayHoldSongs = [](const FolderEntry& entry) {
            return entry.isFolder || IsSongName(entry.name);
        };
        if (std::ranges::any_of(listing.entries, mayHoldSongs))
            return "The folder \"" + folder + "\" is new: " +
                   (IsHardDrive(environment, RootOfPath(folder))
                        ? "\"Bring In New Songs (Search my whole computer)\" looks there, too."
                        : "songs from there can be dropped on a folder.");
    }
    return {};
}

}  // namespace tobbin
