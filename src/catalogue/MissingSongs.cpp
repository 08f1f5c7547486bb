#include "catalogue/MissingSongs.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "catalogue/clsMain.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {

MissingSongs::MissingSongs(Environment& environment, const RecordTable& table)
    : m_environment(environment), m_table(table) {}

std::vector<std::int32_t> MissingSongs::Find() {
    std::vector<Song> songs;
    for (std::int32_t record = 1; record <= m_table.Size(); ++record) {
        const RecordTable::CellId folder = m_table.Id(clsMain::kFolder, record);
        if (m_table.Text(clsMain::kPresence, record) == "1") {
            songs.push_back({folder, record});
        } else {
            const std::string root = RootOfPath(m_table.TextOf(folder));
            if (root.empty() || WasReachable(root))
                m_missing.push_back(record);
        }
    }
    std::sort(songs.begin(), songs.end(), [](const Song& a, const Song& b) {
        return std::tie(a.folder, a.record) < std::tie(b.folder, b.record);
    });
    for (const Song* first = songs.data(); first != songs.data() + songs.size();) {
        const Song* last = first;
        while (last != songs.data() + songs.size() && last->folder == first->folder)
            ++last;
        JudgeFolder(m_table.TextOf(first->folder), first, last);
        m_environment.events.LetEventsThrough();
        first = last;
    }
    std::sort(m_missing.begin(), m_missing.end());
    return std::move(m_missing);
}

void MissingSongs::JudgeFolder(const std::string& folder, const Song* first, const Song* last) {
    const std::string root = RootOfPath(folder);
    if (!root.empty() && !WasReachable(root))
        return;
    FolderListing listing;
    const bool listed = !root.empty() && m_environment.disk.List(folder, listing).Ok();
    using Named = std::pair<std::string_view, std::size_t>;  // a file's name, and its entry
    std::vector<Named> files;
    for (std::size_t i = 0; listed && i < listing.entries.size(); ++i)
        if (!listing.entries[i].isFolder)
            files.emplace_back(listing.entries[i].name, i);
    std::sort(files.begin(), files.end());
    const std::size_t before = m_missing.size();
    std::array<char, 10> digits{};
    int asked = 0;
    std::vector<bool> known(listing.entries.size());
    for (const Song* song = first; song != last; ++song) {
        const std::string_view name =
            m_table.ViewOf(m_table.Id(clsMain::kFileName, song->record), digits);
        const auto found = std::ranges::lower_bound(files, name, {}, &Named::first);
        if (found != files.end() && found->first == name) {
            known[found->second] = true;
            m_seen.push_back({song->record, listing.entries[found->second].size});
            continue;
        }
        // The file system itself knows best which names it takes for the same, and whether a file
        // that a listing can't show is there.
        if (root.empty() || IsGone(folder + std::string(name)))
            m_missing.push_back(song->record);
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
    // A drive that went away meanwhile took its files with it without their being gone.
    if (m_missing.size() > before && !root.empty() && !IsReachable(m_environment, root)) {
        m_missing.resize(before);
        m_reachable[root] = false;
    }
}

bool MissingSongs::IsGone(const std::string& path) {
    PathInfo info;
    return m_environment.disk.Stat(path, info).Ok() && info.kind != PathKind::File;
}

bool MissingSongs::WasReachable(const std::string& root) {
    if (const auto known = m_reachable.find(root); known != m_reachable.end())
        return known->second;
    return m_reachable[root] = IsReachable(m_environment, root);
}

}  // namespace tobbin
