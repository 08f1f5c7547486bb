#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "jukebox/Jukebox.h"

namespace tobbin {

// What was last cut or copied: a folder with all in it, or songs. It holds copies of its own, so
// that they can be pasted any number of times, into any jukebox, also after the one that they came
// from was closed.
class SongClipboard {
 public:
    bool IsEmpty() const { return m_held == Held::Nothing; }
    bool HoldsFolder() const { return m_held == Held::Folder; }
    bool HoldsSongs() const { return m_held == Held::Songs; }

    void HoldFolder(const Jukebox& from, const Folder& folder);
    void HoldSongs(const Jukebox& from, const Folder& folder, const std::vector<std::size_t>& rows);

    // Copies for a jukebox: of the folder held, of the songs held.
    std::unique_ptr<Folder> FolderFor(Jukebox& jukebox) const;
    std::vector<SongItem> SongsFor(Jukebox& jukebox) const;

    // What the system clipboard's change number was when it was filled; see SystemClipboard.
    std::uint32_t SystemChange() const { return m_systemChange; }
    void SystemChange(std::uint32_t number) { m_systemChange = number; }

    // The jukebox that keeps what is held; null when nothing is.
    Jukebox* MaybeStore() const { return m_store.get(); }

    // Whether a place lies in the very folder that was copied, or is it.
    bool IsInsideOriginal(const Jukebox& jukebox, const Folder& place) const;

 private:
    enum class Held { Nothing, Folder, Songs };

    Held m_held = Held::Nothing;
    std::unique_ptr<Jukebox> m_store;  // its one folder is what is held, or holds the songs
    std::weak_ptr<const void> m_origin;
    std::uint64_t m_originalSerial = 0;
    std::uint32_t m_systemChange = 0;
};

}  // namespace tobbin
