#include "jukebox/SongClipboard.h"

#include "util/Check.h"

namespace tobbin {

void SongClipboard::HoldFolder(const Jukebox& from, const Folder& folder) {
    auto store = std::make_unique<Jukebox>();
    store->Insert(nullptr, 0, store->CopyFolder(from, folder));
    m_store = std::move(store);
    m_held = Held::Folder;
    m_origin = from.LifeToken();
    m_originalSerial = folder.Serial();
}

void SongClipboard::HoldSongs(const Jukebox& from, const Folder& folder,
                              const std::vector<std::size_t>& rows) {
    auto store = std::make_unique<Jukebox>();
    std::vector<SongItem> songs;
    songs.reserve(rows.size());
    for (const std::size_t row : rows)
        songs.push_back(store->CopyItem(from, folder.Songs()[row]));
    store->AppendSongs(store->AddChild(nullptr, {}), songs);
    m_store = std::move(store);
    m_held = Held::Songs;
    m_origin.reset();
}

std::unique_ptr<Folder> SongClipboard::FolderFor(Jukebox& jukebox) const {
    CHECK(HoldsFolder());
    return jukebox.CopyFolder(*m_store, m_store->Root(0));
}

std::vector<SongItem> SongClipboard::SongsFor(Jukebox& jukebox) const {
    CHECK(HoldsSongs());
    std::vector<SongItem> songs = m_store->Root(0).Songs();
    for (SongItem& song : songs)
        song = jukebox.CopyItem(*m_store, song);
    return songs;
}

bool SongClipboard::IsInsideOriginal(const Jukebox& jukebox, const Folder& place) const {
    if (!HoldsFolder() || m_origin.lock() != jukebox.LifeToken())
        return false;
    for (const Folder* folder = &place; folder != nullptr; folder = folder->Parent())
        if (folder->Serial() == m_originalSerial)
            return true;
    return false;
}

}  // namespace tobbin
