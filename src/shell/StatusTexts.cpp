#include "shell/StatusTexts.h"

#include "jukebox/SpecialFolders.h"
#include "util/Text.h"

namespace tobbin {
// The songs are those of "All Songs", which holds each song of the jukebox once.
std::string JukeboxText(const Jukebox& jukebox) {
    std::string text = Counted(jukebox.FolderCount(), "folder");
    if (const Folder* const all = jukebox.MaybeFind(kAllSongs); all != nullptr)
        text += ", " + Counted(all->Songs().size(), "song");
    return text;
}

std::string SelectionText(const JukeboxWindow& window) {
    const Folder* const folder = window.SelectedFolder();
    if (folder == nullptr)
        return {};
    std::string text = folder->Text() + ": " + Counted(folder->Songs().size(), "song");
    const std::size_t selected = window.HasView() ? window.View().SelectedCount() : 0;
    if (selected > 0)
        text += ", " + GroupedNumber(selected) + " selected";
    if (selected != 1)
        return text;
    if (const std::size_t row = window.View().SelectedRows().front(); row < window.RowCount())
        text += ", " + window.List().RankText(row);
    return text;
}

}  // namespace tobbin
