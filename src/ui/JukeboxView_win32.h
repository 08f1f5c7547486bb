#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "platform/WindowIcons_win32.h"
#include "ui/Dragging.h"
#include "ui/ExplorerControl_win32.h"
#include "ui/JukeboxView.h"
#include "ui/JukeboxWindow.h"
#include "ui/WindowState.h"

namespace tobbin {

// The MDI child window of one jukebox, of the class "frmMain". Its caption is the jukebox's.
class JukeboxMdiChild : public WindowBase,
                        public JukeboxView,
                        private JukeboxListener,
                        private TreePaneDelegate,
                        private ListPaneDelegate,
                        private FolderDropDelegate {
 public:
    static constexpr wchar_t kClassName[] = L"frmMain";

    JukeboxMdiChild(JukeboxWindow& controller, PictureLoader& pictures);
    ~JukeboxMdiChild() override;

    // `closed` is called when the window is gone; the owner then releases this object and its
    // controller from its message loop.
    // With a remembered state it opens as it was left; `closed` may still ask for the state.
    bool Open(HWND mdiClient, bool maximized, const WindowState* remembered,
              std::function<void()> closed);

    JukeboxWindow& Controller() const { return m_controller; }
    ExplorerControl& Explorer() { return m_explorer; }
    void OnDpiChanged();

    WindowState State() const;

    void SelectFolder(Folder* folder) override;
    void ExpandFolder(Folder& folder, bool open) override;
    void EditFolderText(Folder& folder) override;
    std::vector<std::size_t> SelectedRows() const override;
    std::size_t SelectedCount() const override;
    void SelectRows(const std::vector<std::size_t>& rows) override;
    std::optional<std::size_t> MaybeFocusedRow() const override;
    void FocusRow(std::size_t row) override;
    void MakeRowVisible(std::size_t row) override;
    void FocusList() override;
    void SetBackground(const std::string& address, bool tiled, const std::string& next) override;
    void Activate() override;
    void Close() override;
    bool IsVisible() const override { return IsWindowVisible(Handle()) != FALSE; }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate() override;
    void RestorePanes(const WindowState& remembered);
    void OnSize();
    void OnGetSizes(MINMAXINFO& sizes) const;
    void OnFocus();
    void OnDestroy() override;
    void OnMenu(HWND pane, POINT screen, bool byMouse);
    void ShowPopUpMenu(Pane pane, POINT screen);

    void OnFolderRemoving(Folder& folder) override;
    void OnSongsChanged(Folder& folder) override;
    void OnRanksChanged() override;
    void OnColumnsChanged() override;
    void OnCaptionChanged() override;

    void OnFolderSelected(Folder* folder) override;
    void OnTreeFocused() override;
    bool MayEditText(const Folder& folder) override;
    bool OnTextEdited(Folder& folder, const std::string& text) override;
    void OnFolderDragged(Folder& folder) override;
    bool OnTreeKey(UINT key) override;

    std::size_t RowCount() const override;
    std::string RowText(std::size_t row, int column) const override;
    int RowImage(std::size_t row) const override;
    std::optional<std::size_t> MaybeRowBeginningWith(const std::string& text,
                                                     std::size_t start) const override;
    std::string AccessibleRowText(std::size_t row) const override;
    std::string EmptyText() const override;
    std::string WhyMissing(std::size_t row) const override;
    std::int32_t LargestNumber() const override;
    void OnRowsSelected() override;
    void OnListFocused() override;
    void OnColumnClicked(int column) override;
    void OnRowOpened() override;
    void OnRowsDragged() override;
    void OnColumnResized() override;

    static constexpr UINT kFilesDropped = WM_APP + 1;
    void Drag(Dragged what);
    void OnFilesDropped();
    DropEffect EffectOfDrop(const DraggedData& data, Folder* target, DropEffect wish) override;
    DropEffect DropOn(const DraggedData& data, Folder* target, DropEffect wish) override;
    bool OrdersList(const DraggedData& data, DropEffect wish) const override;
    void DropInList(const DraggedData& data, std::size_t before) override;
    bool IsDragged(const DraggedData& data, const Folder& folder) const override;
    Folder* ListedFolder() const override { return m_controller.SelectedFolder(); }

    JukeboxWindow& m_controller;
    WindowIcons m_icons;
    ExplorerControl m_explorer;
    std::function<void()> m_closed = [] {};
    ControlSize m_explorerSize;               // in twips
    std::vector<std::string> m_filesDropped;  // from outside, not yet taken
    Folder* m_filesTarget = nullptr;
    std::optional<WindowState> m_lastState;  // of a window that goes
    bool m_columnsAreThePersons = false;     // and no longer follow the window's width
};

}  // namespace tobbin
