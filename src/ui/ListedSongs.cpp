#include "ui/ListedSongs.h"

namespace tobbin {

std::vector<ListedSong> ListedSongs(const JukeboxWindow& window) {
    std::vector<ListedSong> listed;
    const Folder* const folder = window.SelectedFolder();
    if (folder == nullptr)
        return listed;
    listed.reserve(folder->Songs().size());
    for (const SongItem& song : folder->Songs())
        listed.push_back({song.recordNumber, false, window.Model().TextOf(song)});
    for (const std::size_t row : window.View().SelectedRows())
        if (row < listed.size())
            listed[row].selected = true;
    return listed;
}

}  // namespace tobbin
