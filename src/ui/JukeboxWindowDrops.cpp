#include <algorithm>

#include "catalogue/DroppedSongs.h"
#include "ui/JukeboxWindow.h"
#include "util/Text.h"

// What is dropped on a jukebox window: songs and folders of any jukebox, and files.

namespace tobbin {
namespace {

bool IsJukeboxFile(std::string_view path) {
    return EndsWithIgnoringAsciiCase(path, ".juk");
}

}  // namespace

bool JukeboxWindow::CanDrop(const Dragged& dragged, const Folder* target, DropMode mode) const {
    return JukeboxEditor::CanDrop(dragged.from->m_editor, dragged, m_editor, target, mode);
}

std::optional<DropMode> JukeboxWindow::MaybeDropMode(const Dragged& dragged, const Folder* target,
                                                     std::optional<DropMode> wish) const {
    const Folder& folder = *dragged.folder;
    const Folder* const home = dragged.IsFolder() ? folder.Parent() : &folder;
    if (dragged.from == this && target == home && wish != DropMode::Copy)
        return std::nullopt;
    const bool mayGo = dragged.IsFolder() ? !IsSpecialFolder(folder) : !IsAllSongs(folder);
    const DropMode plain = IsInSpecialFolder(folder) ? DropMode::Copy : DropMode::Move;
    const DropMode mode = mayGo ? wish.value_or(plain) : DropMode::Copy;
    return CanDrop(dragged, target, mode) ? std::optional(mode) : std::nullopt;
}

void JukeboxWindow::Drop(const Dragged& dragged, Folder* target, DropMode mode) {
    const EditResult place =
        JukeboxEditor::Drop(dragged.from->m_editor, dragged, m_editor, target, mode);
    if (dragged.IsFolder())
        Show(place);
    else if (mode == DropMode::Move && place.maybeFolder != nullptr)
        dragged.from->ShowWithout({dragged.folder, {}, {}}, dragged.rows.front());
}

bool JukeboxWindow::CanDropFiles(const std::vector<std::string>& paths, const Folder* target) {
    return target != nullptr || std::ranges::any_of(paths, IsJukeboxFile);
}

void JukeboxWindow::DropFiles(const std::vector<std::string>& paths, Folder* target) {
    std::vector<std::string> songs = paths;
    const auto firstJukebox = std::stable_partition(
        songs.begin(), songs.end(), [](const std::string& path) { return !IsJukeboxFile(path); });
    const std::vector<std::string> jukeboxes(firstJukebox, songs.end());
    songs.erase(firstJukebox, songs.end());
    if (!jukeboxes.empty())
        m_host.OpenFiles(jukeboxes);
    if (target == nullptr || songs.empty())
        return;
    const DroppedSongs dropped(m_tools.environment, songs);
    Show(m_editor.AddFiles(*target, dropped.Paths()));
    if (const std::string complaint = dropped.Complaint(); !complaint.empty())
        m_tools.environment.dialogs.Tell(complaint, BoxIcon::Information);
}

}  // namespace tobbin
