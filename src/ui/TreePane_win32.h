#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <unordered_map>

#include "jukebox/Jukebox.h"
#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// Hears of what the person does in the tree pane; does nothing by default.
class TreePaneDelegate {
 public:
    virtual ~TreePaneDelegate() = default;
    virtual void OnFolderSelected(Folder* /*folder*/) {}
    virtual void OnTreeFocused() {}
    virtual bool MayEditText(const Folder& /*folder*/) { return false; }
    // Returns whether the new text was taken.
    virtual bool OnTextEdited(Folder& /*folder*/, const std::string& /*text*/) { return false; }
    // The mouse has begun to drag a folder, which need not be the selected one.
    virtual void OnFolderDragged(Folder& /*folder*/) {}
    // Returns whether the key was dealt with.
    virtual bool OnTreeKey(UINT /*key*/) { return false; }
};

// The tree of a jukebox's folders: a SysTreeView32 that follows the jukebox's changes. Every folder
// is an item from the start, so that a screen reader and a test program find all of them.
class TreePane : private JukeboxListener {
 public:
    TreePane(Jukebox& jukebox, TreePaneDelegate& delegate);
    ~TreePane() override;
    TreePane(const TreePane&) = delete;
    TreePane& operator=(const TreePane&) = delete;

    // Creates the control and fills it.
    bool Create(HWND parent, int number);
    HWND Handle() const { return m_handle; }

    // A notification of the control, which its parent hands on.
    LRESULT OnNotify(NMHDR& header);
    void OnDpiChanged();
    // The control is being destroyed with its parent.
    void OnDestroy();

    Folder* SelectedFolder() const;
    void SelectFolder(Folder* folder);
    void ExpandFolder(Folder& folder, bool open);
    void EditText(const Folder& folder);

    // Marks the folder that a drop would go to; null takes the mark away.
    void MarkDrop(const Folder* folder);

    // Where a menu for the selected folder belongs, in screen coordinates.
    POINT MenuPlace() const;
    // The folder whose row is at a point of the screen, which lies over the pane or its scroll
    // bars; null below the last one. A row is as wide as the pane.
    Folder* MaybeFolderAt(POINT screen) const;

 private:
    void OnFolderAdded(Folder& folder) override;
    void OnFolderRemoving(Folder& folder) override;
    void OnFolderTextChanged(Folder& folder) override;
    void OnChildrenReordered(Folder* parent) override;

    void Insert(Folder& first, const Folder* end);
    void InsertItem(Folder& folder);
    void SelectOver(Folder* closing);
    HTREEITEM ItemOf(const Folder* folder) const;
    Folder* FolderOf(HTREEITEM item) const;
    LRESULT OnCustomDraw(NMTVCUSTOMDRAW& draw) const;
    LRESULT OnEndLabelEdit(const NMTVDISPINFOW& info);

    Jukebox& m_jukebox;
    TreePaneDelegate& m_delegate;
    HWND m_handle = nullptr;
    UniqueImageList m_icons;
    std::unordered_map<const Folder*, HTREEITEM> m_items;
};

}  // namespace tobbin
