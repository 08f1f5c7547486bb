#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/ComPtr_win32.h"
#include "platform/DragData_win32.h"
#include "platform/FileDrop_win32.h"

namespace tobbin {

// What is dragged over a window: something of the program's own, or files from another program.
struct DraggedData {
    void* maybeOwn = nullptr;        // what RunDrag was given
    std::vector<std::string> files;  // full paths
};

// Hears of what is dragged over a window. Points are those of the screen; `wish` is what the
// keys held ask for: a copy (Ctrl), a move (Shift) or nothing.
class DropTargetDelegate {
 public:
    virtual ~DropTargetDelegate() = default;
    // Called when the mouse moves and again and again while it rests. Returns what a drop would do.
    virtual DropEffect OnDragOver(const DraggedData& data, POINT screen, DropEffect wish) = 0;
    virtual void OnDragLeave() = 0;
    // Called once OnDragOver has answered so for the same place; no OnDragLeave follows.
    virtual DropEffect OnDrop(const DraggedData& data, POINT screen, DropEffect wish) = 0;
};

class DropTargetObject;

// Makes a window a place to drop on, until it is told to stop or the object ends.
class DropTarget {
 public:
    explicit DropTarget(DropTargetDelegate& delegate);
    ~DropTarget();
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;

    bool Begin(HWND window);
    // To be called before the window goes.
    void Stop();

 private:
    DropTargetDelegate& m_delegate;
    HWND m_window = nullptr;
    ComPtr<DropTargetObject> m_object;
};

// Drags something of the program's own until the mouse button is released or Esc is pressed.
// `own` must live as long. Other programs are offered a copy of the files that `files` names by
// their full paths, and nothing else: they can't move or delete them. It is asked once at most.
void RunDrag(void* own, std::function<std::vector<std::string>()> files);

}  // namespace tobbin
