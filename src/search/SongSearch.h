#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/Environment.h"

namespace tobbin {

// Takes the songs that a search finds, one by one.
class SongSink {
 public:
    virtual ~SongSink() = default;

    // `folder` ends in "\"; `size` in bytes, 0 when not known. Returns how many songs there are
    // now.
    virtual std::int32_t OnSongFound(const std::string& folder, const std::string& name,
                                     std::uint64_t size) = 0;
};

// The text for a kind of drive. `type` is the system's number (see Drives::Type), `root` the
// drive's root; a removable drive a: or b: is a floppy drive.
std::string DriveTypeText(unsigned type, const std::string& root);

// Whether songs and programs are looked for on this drive: its type text, lower-cased, matches
// "*hard*".
bool IsHardDrive(const Environment& environment, const std::string& root);

// Whether a drive or a network share (see RootOfPath) can be asked for its files now.
bool IsReachable(const Environment& environment, const std::string& root);

// Whether a file of this name is taken for a song: it ends in ".mp3" in any case.
bool IsSongName(std::string_view name);

// Whether a full path leads into the recycle bin of a drive.
bool IsInRecycleBin(const SystemText& text, const std::string& path);

// How a search of the drives went.
struct DriveSearch {
    std::vector<std::string> fixedDrives;  // roots
    std::size_t drivesDone = 0;            // how many of these were searched through
    std::vector<std::string> otherDrives;  // the roots that were not searched
    std::size_t incompleteFolders = 0;     // left out for "incomplete" in their path

    // What was left out, and where the search was stopped, for the person; may be empty.
    std::string Words() const;
};

// Finds MP3 files and hands each to the sink; its texts go to the progress window. A folder that
// can't be listed is passed over.
class SongSearch {
 public:
    SongSearch(Environment& environment, Progress& progress, SongSink& sink);

    // Searches every hard drive with all folders. A stop request ends the search; what was found
    // so far has been handed over.
    DriveSearch SearchHardDrives();

    // Searches one folder (ending in "\"), as it was listed, without the folders in it.
    void SearchFolder(const std::string& folder, const FolderListing& listing);

    // The same with a folder that was listed just now: `songs` are the songs in it.
    void HandOverSongs(const std::string& folder, const std::vector<FolderEntry>& songs);

 private:
    struct FolderIdHash {
        std::size_t operator()(const FolderId& id) const;
    };

    void WalkTree(const std::string& root);

    Environment& m_environment;
    Progress& m_progress;
    SongSink& m_sink;
    std::unordered_set<FolderId, FolderIdHash> m_entered;  // each folder is entered once at most
    std::size_t m_incompleteFolders = 0;
};

}  // namespace tobbin
