#include "jukebox/FillingAnew.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "jukebox/JukeboxChanges.h"
#include "jukebox/SpecialFolders.h"
#include "util/Text.h"

namespace tobbin {

FillingAnew::FillingAnew(Environment& environment, clsMain& catalogue, Jukebox& jukebox,
                         const TagsRead& tags)
    : m_environment(environment), m_catalogue(catalogue), m_jukebox(jukebox), m_tags(tags) {
    Folder* const all = jukebox.MaybeFind(kAllSongs);
    hasAllSongs = all != nullptr && all->Level() == 0;
    if (!hasAllSongs)
        return;
    FillAllSongs(*all);
    GroupPlaces places(jukebox, environment.text, [this](Folder& group, const std::string& text) {
        return m_newFolders.emplace_back(NewFolder{&group, Jukebox::MakeFolder(text)}).folder.get();
    });
    FindPlaces(places);
    const std::vector<Folder*> groups = places.All();
    std::set<Folder*> seen;
    for (Folder* const folder : groups)
        if (seen.insert(folder).second)
            FillGroup(*folder);
    std::unordered_map<const Folder*, std::size_t> children;
    for (auto& [group, folder] : m_newFolders) {
        Folder& child = *folder;
        const std::size_t index = group->ChildCount() + children[group]++;
        m_changes.push_back(PutFolder(std::move(folder), group, index));
        m_changes.push_back(ReplaceSongs(child, SongsOf(child)));
    }
    // The last one first: each knows its place among those that are there then.
    for (auto folder = m_emptied.rbegin(); folder != m_emptied.rend(); ++folder)
        m_changes.push_back(TakeFolder(**folder));
    filedOtherwise = m_filedOtherwise.size();
}

std::unique_ptr<JukeboxChange> FillingAnew::TakeChange() {
    return m_changes.empty() ? nullptr : Together(std::move(m_changes));
}

// Of a song that the catalogue has, the check for missing songs has judged. One that it doesn't
// have is gone when its drive is there and its file isn't.
bool FillingAnew::IsGone(const SongItem& song) {
    if (!song.IsMissing())
        return song.recordNumber <= m_catalogue.UBoundOfMp3Array() &&
               !m_catalogue.IsPresent(song.recordNumber);
    const auto [known, isNew] = m_isGone.try_emplace(song.recordNumber, false);
    const MissingSong missing = m_jukebox.MissingSongOf(song);
    const std::string folder(missing.folder);
    if (isNew && !RootOfPath(folder).empty() &&
        m_catalogue.Drives().DriveOf(folder) == SongDrives::Finding::Here &&
        !m_catalogue.Drives().LeadsNowhere(folder)) {
        PathInfo info;
        known->second =
            m_environment.disk.Stat(folder + std::string(missing.fileName), info).Ok() &&
            info.kind != PathKind::File;
    }
    return known->second;
}

FillingAnew::Songs FillingAnew::WithoutGone(const Folder& folder) {
    Songs songs = folder.Songs();
    std::erase_if(songs, [this](const SongItem& song) { return IsGone(song); });
    return songs;
}

void FillingAnew::FillAllSongs(Folder& all) {
    Songs songs = WithoutGone(all);
    gone = all.Songs().size() - songs.size();
    const std::int32_t last = m_catalogue.UBoundOfMp3Array();
    m_byRecord.resize(static_cast<std::size_t>(last) + 1);
    for (SongItem& song : songs) {
        const auto tag = m_tags.byRecord.find(song.recordNumber);
        const bool isRead = tag != m_tags.byRecord.end() && !tag->second.unread;
        unread += tag != m_tags.byRecord.end() && tag->second.unread ? 1 : 0;
        if (isRead)
            song.selectedImage = song.image;
        if (!song.IsMissing() && song.recordNumber <= last)
            m_byRecord[static_cast<std::size_t>(song.recordNumber)] = song;
    }
    Folder* const maybeNew = m_jukebox.MaybeFind(kNew);
    Songs newSongs = maybeNew != nullptr ? WithoutGone(*maybeNew) : Songs();
    for (std::int32_t record = 1; record <= last; ++record) {
        SongItem& song = m_byRecord[static_cast<std::size_t>(record)];
        const auto tag = m_tags.byRecord.find(record);
        if (song.recordNumber != 0 || tag == m_tags.byRecord.end() ||
            !m_catalogue.IsPresent(record))
            continue;
        song = m_jukebox.MakeItem(m_catalogue.Mp3Info(clsMain::kFileName, record), record,
                                  m_catalogue.Rank(record));
        newSongs.push_back(song);
        songs.push_back(song);
        if (tag->second.unread)
            songs.back().selectedImage = SongItem::kUnfiled;
        m_added.insert(record);
    }
    added = m_added.size();
    Change(all, std::move(songs));
    if (maybeNew != nullptr && maybeNew->Level() == 0)
        Change(*maybeNew, std::move(newSongs));
}

void FillingAnew::FindPlaces(GroupPlaces& places) {
    for (SongItem& song : m_byRecord) {
        const auto tag = m_tags.byRecord.find(song.recordNumber);
        if (song.recordNumber == 0 || tag == m_tags.byRecord.end() || tag->second.unread)
            continue;
        for (const Folder* const folder : places.For(m_tags, tag->second))
            m_wanted[folder].push_back(song.recordNumber);
    }
}

// What a group's folder shall hold: what it has stays in its order.
FillingAnew::Songs FillingAnew::SongsOf(const Folder& folder) {
    const std::vector<std::int32_t>& wanted = m_wanted[&folder];
    const std::unordered_set<std::int32_t> isWanted(wanted.begin(), wanted.end());
    std::unordered_set<std::int32_t> held;
    Songs songs = WithoutGone(folder);
    std::erase_if(songs, [&](const SongItem& song) {
        const auto tag = m_tags.byRecord.find(song.recordNumber);
        held.insert(song.recordNumber);
        const bool leaves = tag != m_tags.byRecord.end() && !tag->second.unread &&
                            !isWanted.contains(song.recordNumber);
        if (leaves)
            m_filedOtherwise.insert(song.recordNumber);
        return leaves;
    });
    for (const std::int32_t record : wanted) {
        if (!held.insert(record).second)
            continue;
        songs.push_back(m_byRecord[static_cast<std::size_t>(record)]);
        if (!m_added.contains(record))
            m_filedOtherwise.insert(record);
    }
    return songs;
}

void FillingAnew::FillGroup(Folder& folder) {
    Songs songs = SongsOf(folder);
    const Folder* const group = folder.Parent();
    const bool mayGo = group != nullptr && IsSpecialFolder(*group) && group->Text() != kDecades;
    if (songs.empty() && !folder.Songs().empty() && folder.ChildCount() == 0 && mayGo)
        m_emptied.push_back(&folder);
    else
        Change(folder, std::move(songs));
}

void FillingAnew::Change(Folder& folder, Songs songs) {
    if (songs != folder.Songs())
        m_changes.push_back(ReplaceSongs(folder, std::move(songs)));
}

}  // namespace tobbin
