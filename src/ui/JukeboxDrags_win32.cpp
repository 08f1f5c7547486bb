#include <utility>

#include "ui/JukeboxView_win32.h"

// What the jukebox window does with what is dragged out of it or over it.

namespace tobbin {
namespace {

// A drag out of a jukebox window, and what is to be done when it has ended.
struct DragOut {
    Dragged what;
    std::function<void()> drop = [] {};
};

std::optional<DropMode> ModeOf(DropEffect effect) {
    if (effect == DropEffect::None)
        return std::nullopt;
    return effect == DropEffect::Copy ? DropMode::Copy : DropMode::Move;
}

}  // namespace

void JukeboxMdiChild::OnFolderDragged(Folder& folder) {
    Drag({&m_controller, &folder});
}

void JukeboxMdiChild::OnRowsDragged() {
    Dragged songs{&m_controller, m_controller.SelectedFolder(), SelectedRows()};
    if (songs.folder != nullptr && !songs.rows.empty())
        Drag(std::move(songs));
}

void JukeboxMdiChild::Drag(Dragged what) {
    DragOut drag{std::move(what)};
    RunDrag(&drag, [&] { return m_controller.PathsOf(drag.what); });
    drag.drop();
}

DropEffect JukeboxMdiChild::EffectOfDrop(const DraggedData& data, Folder* target, DropEffect wish) {
    if (data.maybeOwn == nullptr)
        return JukeboxWindow::CanDropFiles(data.files, target) ? DropEffect::Copy
                                                               : DropEffect::None;
    const auto mode = m_controller.MaybeDropMode(static_cast<const DragOut*>(data.maybeOwn)->what,
                                                 target, ModeOf(wish));
    if (!mode)
        return DropEffect::None;
    return *mode == DropMode::Copy ? DropEffect::Copy : DropEffect::Move;
}

bool JukeboxMdiChild::OrdersList(const DraggedData& data, DropEffect wish) const {
    const auto* const drag = static_cast<const DragOut*>(data.maybeOwn);
    return drag != nullptr && wish != DropEffect::Copy && !drag->what.IsFolder() &&
           drag->what.folder == m_controller.SelectedFolder();
}

void JukeboxMdiChild::DropInList(const DraggedData& data, std::size_t before) {
    auto& drag = *static_cast<DragOut*>(data.maybeOwn);
    drag.drop = [this, &drag, before] { m_controller.MoveSongs(drag.what.rows, before); };
}

bool JukeboxMdiChild::IsDragged(const DraggedData& data, const Folder& folder) const {
    const auto* const drag = static_cast<const DragOut*>(data.maybeOwn);
    return drag != nullptr && drag->what.IsFolder() && drag->what.folder == &folder;
}

// What is dropped is taken when the system has ended the drag: a box may open, and the program that
// it comes from must not wait.
DropEffect JukeboxMdiChild::DropOn(const DraggedData& data, Folder* target, DropEffect wish) {
    const DropEffect effect = EffectOfDrop(data, target, wish);
    if (effect == DropEffect::None)
        return effect;
    if (data.maybeOwn == nullptr) {
        m_filesDropped = data.files;
        m_filesTarget = target;
        PostMessageW(Handle(), kFilesDropped, 0, 0);
        return effect;
    }
    auto& drag = *static_cast<DragOut*>(data.maybeOwn);
    drag.drop = [this, &drag, target, mode = *ModeOf(effect)] {
        m_controller.Drop(drag.what, target, mode);
    };
    return effect;
}

void JukeboxMdiChild::OnFilesDropped() {
    m_controller.DropFiles(std::exchange(m_filesDropped, {}),
                           std::exchange(m_filesTarget, nullptr));
}

}  // namespace tobbin
