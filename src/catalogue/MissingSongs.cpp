#include "catalogue/MissingSongs.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "catalogue/clsMain.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {
std::vector<std::int32_t> MissingSongs::Find() {
    std::vector<Song> songs;
    for (std::int32_t record = 1; record <= m_table.Size(); ++record) {
        const RecordTable::CellId folder = m_table.Id(clsMain::kFolder, record);
        if (m_table.Text(clsMain::kPresence, record) == "1") {
            songs.push_back({folder, record});
        } else {
            if (m_drives.DriveOf(m_table.TextOf(folder)) == SongDrives::Finding::Here)
                m_missing.push_back(record);
        }
    }
    std::sort(songs.begin(), songs.end(), [](const Song& a, const Song& b) {
        return std::tie(a.folder, a.record) < std::tie(b.folder, b.record);
    });
    StepsDone steps{0, 0};
    for (std::size_t i = 0; i < songs.size(); ++i)
        steps.all += i == 0 || songs[i].folder != songs[i - 1].folder ? 1 : 0;
    const Song* const end = songs.data() + songs.size();
    const auto endOfFolder = [end](const Song* song) {
        return std::find_if(song, end,
                            [song](const Song& other) { return other.folder != song->folder; });
    };
    constexpr std::size_t kFoldersForAThread = 8;
    const auto threads = static_cast<unsigned>(
        std::min<std::size_t>(m_environment.diskReaders, steps.all / kFoldersForAThread));
    const Song* named = songs.data();
    ReadAhead<Listed> folders(
        threads,
        [&](Listed& next) {
            if (named == end)
                return false;
            next.folder = m_table.TextOf(named->folder);
            next.isAhead = threads > 0 && m_drives.IsOnLocalDrive(next.folder);
            named = endOfFolder(named);
            return true;
        },
        [&disk = m_environment.disk] {
            return [&disk](Listed& next) {
                if (next.isAhead)
                    next.status = disk.List(next.folder, next.listing);
            };
        });
    Listed listed;
    for (const Song* first = songs.data(); first != end && WaitForNext(folders);) {
        m_progress.ShowSteps(kLookingAtFolders, steps);
        ++steps.done;
        const Song* const last = endOfFolder(first);
        folders.Take(listed);
        JudgeFolder(listed, first, last);
        m_environment.events.LetEventsThrough();
        first = last;
    }
    for (const auto& [root, seen] : m_seenOn)
        m_drives.SongsSeen(root, seen.found, seen.all);
    std::sort(m_missing.begin(), m_missing.end());
    return std::move(m_missing);
}

// False once the person wants to stop.
bool MissingSongs::WaitForNext(ReadAhead<Listed>& folders) {
    while (!m_progress.StopRequested()) {
        if (folders.WaitForNext())
            return true;
        m_environment.events.LetEventsThrough();
    }
    return false;
}

void MissingSongs::JudgeFolder(Listed& judged, const Song* first, const Song* last) {
    const auto& [folder, isAhead, status, listing] = judged;
    const std::string root = RootOfPath(folder);
    if (m_drives.DriveOf(folder) == SongDrives::Finding::Away)
        return;
    if (!isAhead)
        judged.status =
            root.empty() ? DiskStatus(DiskError::NotFound) : m_drives.List(folder, judged.listing);
    const bool listed = status.Ok();
    // Nobody is asked for each file of a drive that went away meanwhile.
    if (!listed && status.Error() != DiskError::NotFound &&
        m_drives.AskAgain(folder) == SongDrives::Finding::Away)
        return;
    if (!listed && m_drives.LeadsNowhere(folder))
        return;
    using Named = std::pair<std::string_view, std::size_t>;  // a file's name, and its entry
    std::vector<Named> files;
    for (std::size_t i = 0; listed && i < listing.entries.size(); ++i)
        if (!listing.entries[i].isFolder)
            files.emplace_back(listing.entries[i].name, i);
    std::sort(files.begin(), files.end());
    const std::size_t before = m_missing.size();
    std::array<char, 10> digits{};
    int asked = 0;
    std::size_t foundHere = 0;
    std::vector<bool> known(listing.entries.size());
    for (const Song* song = first; song != last; ++song) {
        const std::string_view name =
            m_table.ViewOf(m_table.Id(clsMain::kFileName, song->record), digits);
        const auto found = std::ranges::lower_bound(files, name, {}, &Named::first);
        if (found != files.end() && found->first == name) {
            known[found->second] = true;
            m_seen.push_back({song->record, listing.entries[found->second].size});
            ++foundHere;
            continue;
        }
        // The file system itself knows best which names it takes for the same, and whether a file
        // that a listing can't show is there.
        if (root.empty() || IsGone(folder + std::string(name)))
            m_missing.push_back(song->record);
        else
            ++foundHere;
        constexpr int kAskedBetweenEvents = 64;
        if (++asked % kAskedBetweenEvents == 0)
            m_environment.events.LetEventsThrough();
    }
    if (listed) {
        std::vector<FolderEntry>& others = m_listed[folder];
        for (std::size_t i = 0; i < known.size(); ++i) {
            const FolderEntry& entry = listing.entries[i];
            if (!known[i] && !entry.isFolder && IsSongName(entry.name))
                others.push_back(entry);
        }
    }
    if (root.empty())
        return;
    Seen& seen = m_seenOn[root];
    seen.found += foundHere;
    seen.all += static_cast<std::size_t>(last - first);
    // Another disk has no say; and one that went away meanwhile took its files with it without
    // their being gone.
    if (m_missing.size() > before && (m_drives.DriveOf(folder) != SongDrives::Finding::Here ||
                                      m_drives.AskAgain(folder) != SongDrives::Finding::Here))
        m_missing.resize(before);
}

bool MissingSongs::IsGone(const std::string& path) {
    PathInfo info;
    return m_environment.disk.Stat(path, info).Ok() && info.kind != PathKind::File;
}

}  // namespace tobbin
