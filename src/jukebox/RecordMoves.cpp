#include "jukebox/RecordMoves.h"

#include <algorithm>
#include <string>

#include "jukebox/SongFinder.h"

namespace tobbin {

RecordMoves::RecordMoves(const clsMain& catalogue) : m_catalogue(catalogue) {
    const std::int32_t last = catalogue.UBoundOfMp3Array();
    m_paths.reserve(static_cast<std::size_t>(last));
    for (std::int32_t record = 1; record <= last; ++record)
        m_paths.emplace_back(m_texts.Add(catalogue.Mp3Info(clsMain::kFolder, record)),
                             m_texts.Add(catalogue.Mp3Info(clsMain::kFileName, record)));
}

bool RecordMoves::Find(const SystemText& text) {
    SongFinder finder(m_catalogue, text);
    m_numbers.clear();
    bool moved = false;
    for (const auto& [folder, name] : m_paths) {
        const auto before = static_cast<std::int32_t>(m_numbers.size()) + 1;
        m_numbers.push_back(finder.RecordOf(before, m_texts.Text(folder), m_texts.Text(name)));
        moved = moved || m_numbers.back() != before;
    }
    return moved;
}

std::int32_t RecordMoves::NumberNow(std::int32_t before) const {
    const auto index = static_cast<std::size_t>(before) - 1;
    return before >= 1 && index < m_numbers.size() ? m_numbers[index] : 0;
}

void RecordMoves::Apply(Jukebox& jukebox) const {
    for (Folder* folder = jukebox.Next(nullptr); folder != nullptr; folder = jukebox.Next(folder)) {
        const auto stays = [&](const SongItem& song) {
            return song.IsMissing() || NumberNow(song.recordNumber) == song.recordNumber;
        };
        if (std::ranges::all_of(folder->Songs(), stays))
            continue;
        std::vector<SongItem> songs = folder->Songs();
        for (SongItem& song : songs)
            if (!stays(song))
                song = ItemNow(jukebox, song);
        jukebox.SetSongs(*folder, std::move(songs));
    }
    jukebox.TellRecordsMoved();
}

SongItem RecordMoves::ItemNow(Jukebox& jukebox, const SongItem& item) const {
    SongItem now = item;
    now.recordNumber = NumberNow(item.recordNumber);
    const auto index = static_cast<std::size_t>(item.recordNumber) - 1;
    if (now.recordNumber == 0 && index < m_paths.size())
        now = jukebox.MakeMissingItem(jukebox.TextOf(item),
                                      {item.recordNumber, m_texts.Text(m_paths[index].first),
                                       m_texts.Text(m_paths[index].second)},
                                      item.image);
    return now;
}

}  // namespace tobbin
