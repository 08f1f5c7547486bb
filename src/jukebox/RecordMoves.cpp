#include "jukebox/RecordMoves.h"

#include <algorithm>

#include "jukebox/MovedSongs.h"
#include "util/Check.h"

namespace tobbin {

RecordMoves::RecordMoves(const clsMain& catalogue) : m_catalogue(catalogue) {
    const std::int32_t last = catalogue.UBoundOfMp3Array();
    m_paths.reserve(static_cast<std::size_t>(last));
    for (std::int32_t record = 1; record <= last; ++record)
        if (const SongMemory::Cleared* const song = catalogue.Memory().MaybeCleared(record))
            m_paths.emplace_back(m_texts.Add(song->folder), m_texts.Add(song->name));
        else
            m_paths.emplace_back(m_texts.Add(catalogue.Mp3Info(clsMain::kFolder, record)),
                                 m_texts.Add(catalogue.Mp3Info(clsMain::kFileName, record)));
}

bool RecordMoves::Find() {
    m_identity.emplace(m_catalogue);
    m_numbers.clear();
    m_isRenamed.clear();
    m_moved = false;
    m_merged.clear();
    std::vector<bool> taken(static_cast<std::size_t>(m_catalogue.UBoundOfMp3Array()) + 1);
    for (const auto& [folder, name] : m_paths) {
        const auto before = static_cast<std::int32_t>(m_numbers.size()) + 1;
        m_numbers.push_back(m_identity->RecordOf(before, m_texts.Text(folder), m_texts.Text(name)));
        const std::int32_t now = m_numbers.back();
        m_isRenamed.push_back(now != 0 &&
                              m_catalogue.Mp3Info(clsMain::kFileName, now) != m_texts.Text(name));
        m_moved = m_moved || now != before || m_isRenamed.back();
        if (now != 0 && taken[static_cast<std::size_t>(now)])
            m_merged.push_back({before, now});
        taken[static_cast<std::size_t>(now)] = true;
    }
    return m_moved;
}

std::int32_t RecordMoves::NumberNow(std::int32_t before) const {
    const auto index = static_cast<std::size_t>(before) - 1;
    return before >= 1 && index < m_numbers.size() ? m_numbers[index] : 0;
}

void RecordMoves::Apply(Jukebox& jukebox) {
    CHECK(m_identity);
    const bool anyBack = FindMissingSongsAgain(jukebox, m_catalogue, *m_identity);
    if (!m_moved) {
        if (anyBack)
            jukebox.TellRecordsMoved();
        return;
    }
    for (Folder* folder = jukebox.Next(nullptr); folder != nullptr; folder = jukebox.Next(folder)) {
        const auto stays = [this](const SongItem& song) { return Stays(song); };
        if (std::ranges::all_of(folder->Songs(), stays))
            continue;
        std::vector<SongItem> songs = folder->Songs();
        for (SongItem& song : songs)
            if (!stays(song))
                song = ItemNow(jukebox, song);
        jukebox.SetSongs(*folder, std::move(songs));
    }
    for (const Jukebox::SongMove& move : m_merged)
        jukebox.AddSongMove(move);
    KeepMovedSongsOnce(jukebox);
    jukebox.TellRecordsMoved();
}

bool RecordMoves::Stays(const SongItem& item) const {
    const auto index = static_cast<std::size_t>(item.recordNumber) - 1;
    return item.IsMissing() || (NumberNow(item.recordNumber) == item.recordNumber &&
                                !(index < m_isRenamed.size() && m_isRenamed[index]));
}

SongItem RecordMoves::ItemNow(Jukebox& jukebox, const SongItem& item) const {
    SongItem now = item;
    now.recordNumber = NumberNow(item.recordNumber);
    const auto index = static_cast<std::size_t>(item.recordNumber) - 1;
    if (now.recordNumber != 0)
        now.nameId = ItemOf(jukebox, m_catalogue, now.recordNumber, jukebox.TextOf(item), 0).nameId;
    else if (index < m_paths.size())
        now = jukebox.MakeMissingItem(jukebox.TextOf(item),
                                      {item.recordNumber, m_texts.Text(m_paths[index].first),
                                       m_texts.Text(m_paths[index].second)},
                                      item.image);
    return now;
}

}  // namespace tobbin
