#include "search/SongSearch.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "util/Text.h"

namespace tobbin {
namespace {

// How often events are let through before each drive, so that the progress window is painted.
constexpr int kYieldsBeforeADrive = 2000;

// The recycle bin on the drives of the systems of then and now. Its songs are deleted ones.
constexpr const char* kRecycleBins[] = {":\\RECYCLED", ":\\RECYCLER", ":\\$RECYCLE.BIN"};

// Songs in these folders and in recycle bins are left out. Only the folder counts, never the file's
// own name.
bool IsIncomplete(const SystemText& text, const std::string& folder) {
    return text.ToLower(folder).find("incomplete") != std::string::npos;
}

bool IsSkippedFolder(const SystemText& text, const std::string& folder) {
    return IsIncomplete(text, folder) || IsInRecycleBin(text, folder);
}

// The songs among what a listing holds.
std::vector<FolderEntry> SongsIn(const FolderListing& listing) {
    std::vector<FolderEntry> songs;
    for (const FolderEntry& entry : listing.entries)
        if (!entry.isFolder && IsSongName(entry.name))
            songs.push_back(entry);
    return songs;
}

}  // namespace

bool IsSongName(std::string_view name) {
    return EndsWithIgnoringAsciiCase(name, ".mp3");
}

bool IsInRecycleBin(const SystemText& text, const std::string& path) {
    const std::string upper = text.ToUpper(path);
    return std::ranges::any_of(
        kRecycleBins, [&](const char* bin) { return upper.find(bin) != std::string::npos; });
}

std::string DriveTypeText(unsigned type, const std::string& root) {
    switch (type) {
        case 0:
            return "The drive type cannot be determined";
        case 1:
            return "The root directory does not exist";
        case 2:
            return EqualsIgnoringAsciiCase(root.substr(0, 1), "a") ||
                           EqualsIgnoringAsciiCase(root.substr(0, 1), "b")
                       ? "Floppy drive"
                       : "Removable drive";
        case 3:
            return "Hard drive; can not be removed";
        case 4:
            return "Remote (network) drive";
        case 5:
            return "CD-ROM drive";
        case 6:
            return "RAM disk";
        default:
            return {};
    }
}

bool IsHardDrive(const Environment& environment, const std::string& root) {
    return MatchesPattern(
        environment.text.ToLower(DriveTypeText(environment.drives.Type(root), root)), "*hard*");
}

bool IsReachable(const Environment& environment, const std::string& root) {
    return root.starts_with('\\') ? FolderExists(environment.disk, root)
                                  : environment.drives.IsReachable(root);
}

SongSearch::SongSearch(Environment& environment, Progress& progress, SongSink& sink)
    : m_environment(environment), m_progress(progress), m_sink(sink) {}

std::size_t SongSearch::FolderIdHash::operator()(const FolderId& id) const {
    return std::hash<std::uint64_t>()(id.index * 0x9E3779B97F4A7C15U ^ id.volume);
}

std::string DriveSearch::Words() const {
    if (fixedDrives.empty())
        return "Only fixed drives are searched, and there is none.  Songs from other drives can be "
               "dropped on a folder.";
    std::string stopped, notSearched;
    if (drivesDone < fixedDrives.size())
        stopped = "Stopped after " + GroupedNumber(drivesDone) + " of " +
                  Counted(fixedDrives.size(), "drive") +
                  "; \"Bring In New Songs (Search my whole computer)\" starts over.";
    for (const std::string& root : otherDrives)
        notSearched += (notSearched.empty() ? "" : ", ") + root;
    if (!otherDrives.empty())
        notSearched += otherDrives.size() == 1 ? " (not a fixed drive)" : " (not fixed drives)";
    if (incompleteFolders > 0)
        notSearched += (notSearched.empty() ? "" : ", ") + Counted(incompleteFolders, "folder") +
                       " with \"incomplete\" in the path";
    return Sentences({stopped, notSearched.empty() ? "" : "Not searched: " + notSearched + "."});
}

DriveSearch SongSearch::SearchHardDrives() {
    m_entered.clear();
    m_incompleteFolders = 0;
    DriveSearch search;
    const std::vector<std::string> roots = m_environment.drives.Roots();
    for (const std::string& root : roots)
        (IsHardDrive(m_environment, root) ? search.fixedDrives : search.otherDrives)
            .push_back(root);
    for (const std::string& root : roots) {
        for (int i = 0; i < kYieldsBeforeADrive; ++i)
            m_environment.events.LetEventsThrough();
        m_progress.Show("Looking for Mp3s in " + root);
        const bool isHardDrive = IsHardDrive(m_environment, root);
        if (isHardDrive)
            WalkTree(root);
        if (m_progress.StopRequested())
            break;
        search.drivesDone += isHardDrive ? 1 : 0;
    }
    search.incompleteFolders = m_incompleteFolders;
    return search;
}

void SongSearch::SearchFolder(const std::string& folder, const FolderListing& listing) {
    HandOverSongs(folder, SongsIn(listing));
}

// The folders that wait are kept in a list of our own, the next one last, so that folders nested
// ever so deep do no harm.
void SongSearch::WalkTree(const std::string& root) {
    struct Waiting {
        std::string folder;
        std::optional<std::uint64_t> volume;  // where it is known
    };
    std::vector<Waiting> waiting{{FolderWithSeparator(root), std::nullopt}};
    while (!waiting.empty() && !m_progress.StopRequested()) {
        const auto [folder, volume] = std::move(waiting.back());
        waiting.pop_back();
        m_environment.events.LetEventsThrough();
        // All that lies below has the same words in its path. Not entering it leaves what a link in
        // there leads to for another path.
        if (IsSkippedFolder(m_environment.text, folder)) {
            m_incompleteFolders += IsIncomplete(m_environment.text, folder) ? 1 : 0;
            continue;
        }
        FolderListing listing;
        if (!m_environment.disk.List(folder, {true, volume}, listing).Ok())
            continue;
        // A link may lead back to a folder above it, or to one that was searched already.
        if (listing.id && !m_entered.insert(*listing.id).second)
            continue;
        SearchFolder(folder, listing);
        for (auto entry = listing.entries.rbegin(); entry != listing.entries.rend(); ++entry) {
            if (!entry->isFolder ||
                (entry->isLink && m_environment.disk.LeadsAway(folder + entry->name)))
                continue;
            const bool isOnThisVolume = listing.id && !entry->isLink;
            waiting.push_back({folder + entry->name + "\\",
                               isOnThisVolume ? std::optional(listing.id->volume) : std::nullopt});
        }
    }
}

void SongSearch::HandOverSongs(const std::string& folder, const std::vector<FolderEntry>& songs) {
    if (IsSkippedFolder(m_environment.text, folder))
        return;
    for (const FolderEntry& song : songs) {
        if (m_progress.StopRequested())
            return;
        const std::int32_t count = m_sink.OnSongFound(folder, song.name, song.size);
        m_progress.Show("Found " + std::to_string(count) + " Mp3s");
        m_environment.events.LetEventsThrough();
    }
}

}  // namespace tobbin
