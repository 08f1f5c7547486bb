#pragma once

#include <windows.h>

#include "jukebox/Folder.h"
#include "platform/DragDrop_win32.h"
#include "ui/ListPane_win32.h"
#include "ui/TreePane_win32.h"

namespace tobbin {

// Decides what a drop on a folder does; a null folder stands for the place below all folders.
// `wish` is what the keys ask for, see DropTargetDelegate.
class FolderDropDelegate {
 public:
    virtual ~FolderDropDelegate() = default;
    virtual DropEffect EffectOfDrop(const DraggedData& data, Folder* target, DropEffect wish) = 0;
    virtual DropEffect DropOn(const DraggedData& data, Folder* target, DropEffect wish) = 0;
    // Whether it is songs of the list itself, which a drop on the list only moves in it: before a
    // row, or to the end.
    virtual bool OrdersList(const DraggedData& data, DropEffect wish) const = 0;
    virtual void DropInList(const DraggedData& data, std::size_t before) = 0;
    virtual bool IsDragged(const DraggedData& data, const Folder& folder) const = 0;
    // The folder that the list shows, which a drop on the list goes to.
    virtual Folder* ListedFolder() const = 0;
};

// Follows what is dragged over the panes of a jukebox window: marks the folder under the mouse,
// or the place between songs, opens a closed one after a moment, and scrolls a pane while the mouse
// is near its edge.
class DropTracker : private DropTargetDelegate {
 public:
    // The timer of the panes' parent that must call OnTimer.
    static constexpr UINT_PTR kTimer = 1;

    DropTracker(TreePane& tree, ListPane& list, FolderDropDelegate& delegate);

    // `parent` is the window that the panes are in.
    void Begin(HWND parent);
    void Stop();
    void OnTimer();

 private:
    DropEffect OnDragOver(const DraggedData& data, POINT screen, DropEffect wish) override;
    void OnDragLeave() override;
    DropEffect OnDrop(const DraggedData& data, POINT screen, DropEffect wish) override;

    bool IsOverList(POINT screen) const;
    Folder* MaybeTarget(POINT screen) const;

    TreePane& m_tree;
    ListPane& m_list;
    FolderDropDelegate& m_delegate;
    HWND m_parent = nullptr;
    DropTarget m_treeTarget;
    DropTarget m_listTarget;
    bool m_following = false;  // the timer runs
    POINT m_mouse = {};
    Folder* m_hovered = nullptr;   // unless it is the one that is dragged
    ULONGLONG m_hoveredSince = 0;  // in milliseconds
};

}  // namespace tobbin
