#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "platform/Outside.h"

namespace tobbin {

// Fills the folders "All Songs", "New", "Decades", "Genre", "Artist" and "Year" of open jukeboxes
// with the catalogue's songs that their "All Songs" does not hold yet, by the songs' ID3v1 tags.
class AutomaticGroups {
 public:
    AutomaticGroups(Outside& outside, clsMain& catalogue, OpenJukeboxes& jukeboxes,
                    Progress& progress);

    // `mode` 1 leaves "New" alone. When `catalogueLoaded` is false the catalogue is loaded first.
    // `caption` picks the jukeboxes with exactly that caption; empty picks all. Every picked one is
    // marked as changed, even if nothing is added.
    void BuildAutomaticGroups(std::int16_t mode, bool catalogueLoaded, const std::string& caption);

    // For each catalogue record, at its number from 1: whether it is present and not in the folder.
    // Element 0 is unused.
    void SelectSongsNotInFolder(const Folder& folder, std::vector<bool>& selection) const;

    // The catalogue records that are newer than the jukebox: from one more than the highest number
    // in "All Songs" to the catalogue's last. Both 0 without a top-level "All Songs".
    struct Range {
        std::int32_t first = 0;
        std::int32_t last = 0;
    };
    Range NewRecordRange(const Jukebox& jukebox) const;

    // Replaces each "]" and each "[" by a blank, then trims blanks at both ends.
    static void CleanBrackets(std::string& text);

 private:
    void Fill(Jukebox& jukebox, bool fillNew);

    Outside& m_outside;
    clsMain& m_catalogue;
    OpenJukeboxes& m_jukeboxes;
    Progress& m_progress;
};

// The caption by which the unsaved sample jukebox is known.
inline constexpr char kSampleCaption[] =
    "Jukebox One  (sample Jukebox you can use as a starting point)";

// Builds the sample jukebox of a first run in an empty one: columns, folders, automatic groups,
// caption.
void BuildInitialJukebox(Jukebox& jukebox, AutomaticGroups& groups, Progress& progress);

}  // namespace tobbin
