#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "jukebox/Jukebox.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "ui/DropTracker_win32.h"
#include "ui/ListPane_win32.h"
#include "ui/PaneLayout.h"
#include "ui/TreePane_win32.h"

namespace tobbin {

// The control `PVExplorer1` of a jukebox window: the tree pane, the list pane and the splitter
// between them, which can be dragged, set back by a double click, and moved by Ctrl+Shift+Left and
// Ctrl+Shift+Right. The panes fill that part of the control that can be seen in its parent.
class ExplorerControl : public WindowBase {
 public:
    static constexpr wchar_t kName[] = L"PVExplorer1";  // of its class and of itself
    enum Control : int { kTree = 1, kList = 2 };

    ExplorerControl(Jukebox& jukebox, TreePaneDelegate& tree, ListPaneDelegate& list,
                    FolderDropDelegate& drops, PictureLoader& pictures);
    ~ExplorerControl() override;

    bool CreateIn(HWND parent);

    TreePane& Tree() { return m_tree; }
    ListPane& List() { return m_list; }
    const ListPane& List() const { return m_list; }

    // Puts the panes in their places: after the parent's size has changed.
    void Layout();
    void OnDpiChanged();

    // The width of the tree pane in pixels at 96 to the inch.
    int SplitterPlace() const { return m_splitter; }
    void SplitterPlace(int place);

    // Gives the focus to the other pane.
    void SwitchPane();

    // Called when the panes have got their places.
    std::function<void()> onLayout = [] {};

    // Called for a command that was sent to the control.
    std::function<void(int command)> onCommand = [](int) {};

    // Called for a menu in a pane: at a place of the screen, by mouse or by key.
    std::function<void(HWND pane, POINT screen, bool byMouse)> onMenu = [](HWND, POINT, bool) {};

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    void OnDestroy() override;
    LRESULT OnNotify(NMHDR& header);
    bool OnSetCursor();
    void OnDrag(int x);
    void OnPaint();
    void OnContextMenu(HWND pane, int x, int y);
    bool OnKey(const NMHDR& header, UINT key);
    int PixelsOfSplitter() const;

    TreePane m_tree;
    ListPane m_list;
    DropTracker m_drops;
    UniqueFont m_font;
    int m_splitter;
    PaneWidths m_widths;
    int m_height = 0;
    int m_grip = 0;  // where in the splitter the mouse holds it, in pixels
};

}  // namespace tobbin
