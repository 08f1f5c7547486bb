#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/FillingAnew.h"
#include "jukebox/Jukebox.h"
#include "jukebox/TagsRead.h"
#include "platform/Environment.h"
#include "tags/TagReaders.h"

namespace tobbin {

// Fills the folders "All Songs", "New", "Decades", "Genre", "Artist" and "Year" of open jukeboxes
// with the catalogue's songs that their "All Songs" does not hold yet, by the songs' tags. A
// song whose tag can't be read, since its drive is away, another program holds it or it would have
// to be fetched from a store, gets its groups in the first run that can read it.
class AutomaticGroups {
 public:
    AutomaticGroups(Environment& environment, clsMain& catalogue, OpenJukeboxes& jukeboxes);

    // Whether a run is at work, and this is one of the events that it lets through.
    bool IsBuilding() const { return m_building; }

    // What a person who stopped the last run is told: how far it came, and which command goes on
    // with it. Empty when it had read all tags.
    std::string StoppedText(const std::string& command = "\"Bring In New Songs\"") const;

    // Carries out work whose runs show their progress; that of other runs is not to be seen.
    void ShowProgressIn(Progress& progress, const std::function<void()>& work);

    // `mode` 1 leaves "New" alone. When `catalogueLoaded` is false the catalogue is loaded first.
    // `caption` picks the jukeboxes with exactly that caption; empty picks all. Every picked one is
    // marked as changed, even if nothing is added. Lets events through while tags are read; a
    // jukebox that is closed meanwhile is left out. With a progress, the texts go there; its wish
    // to stop ends the reading, and the songs read by then are filed.
    void BuildAutomaticGroups(std::int16_t mode, bool catalogueLoaded, const std::string& caption);

    // Fills all open jukeboxes with songs that came in by another command. The windows are painted
    // but take no input; does nothing while a run is at work.
    void FileNewSongs();

    // How the folders of a jukebox are to change to hold what the tags say now (see FillingAnew),
    // after all of them were read again; nothing when the jukebox was closed meanwhile. What the
    // wish to stop left out keeps its places.
    std::optional<FillingAnew> FillAnew(Jukebox& jukebox);

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
    bool IsOpen(const Jukebox& jukebox) const;
    void AddUnfiled(const Folder& allSongs, std::vector<bool>& selection) const;
    bool ReadTags(const std::vector<bool>& selection, TagsRead& tags);
    void Fill(Jukebox& jukebox, Folder& allSongs, bool fillNew, const TagsRead& tags);

    Environment& m_environment;
    clsMain& m_catalogue;
    OpenJukeboxes& m_jukeboxes;
    Progress* m_progress = nullptr;
    bool m_building = false;
    StepsDone m_lastRead;                                // songs whose tags the last run read
    bool m_takesInput = true;                            // while tags are read
    std::vector<std::unique_ptr<TagReaders>> m_stopped;  // may still be reading a song each
};

}  // namespace tobbin
