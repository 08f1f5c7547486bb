#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DrawingPause_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "ui/AccessibleList_win32.h"
#include "ui/InsertMark_win32.h"
#include "ui/ListBackground_win32.h"

namespace tobbin {

// What a list pane shows and who hears of what the person does in it; empty and do-nothing by
// default. Rows and columns count from 0.
class ListPaneDelegate {
 public:
    virtual ~ListPaneDelegate() = default;
    virtual std::size_t RowCount() const { return 0; }
    virtual std::string RowText(std::size_t /*row*/, int /*column*/) const { return {}; }
    virtual int RowImage(std::size_t /*row*/) const { return 0; }
    // The next row from `start` on, and round once, whose name begins with a text.
    virtual std::optional<std::size_t> MaybeRowBeginningWith(const std::string& /*text*/,
                                                             std::size_t /*start*/) const {
        return std::nullopt;
    }
    // A row as a screen reader says it.
    virtual std::string AccessibleRowText(std::size_t row) const { return RowText(row, 0); }
    // What stands in the pane while it has no row.
    virtual std::string EmptyText() const { return {}; }
    // Why a row is gray, for its tip; empty for one that isn't.
    virtual std::string WhyMissing(std::size_t /*row*/) const { return {}; }
    // The largest number that may stand in the column of numbers.
    virtual std::int32_t LargestNumber() const { return 0; }

    virtual void OnRowsSelected() {}
    virtual void OnListFocused() {}
    virtual void OnColumnClicked(int /*column*/) {}
    virtual void OnColumnResized() {}  // by the person
    virtual void OnRowOpened() {}      // a double click, or the Enter key
    virtual void OnRowsDragged() {}    // the mouse has begun to drag the selected rows
    // Returns whether the key was dealt with.
    virtual bool OnListKey(UINT /*key*/) { return false; }
};

// A list in columns with an icon in the first: a virtual SysListView32, which asks for the rows it
// paints, so that a million of them open at once.
class ListPane {
 public:
    ListPane(ListPaneDelegate& delegate, PictureLoader& pictures)
        : m_delegate(delegate), m_background(pictures) {}
    ListPane(const ListPane&) = delete;
    ListPane& operator=(const ListPane&) = delete;

    bool Create(HWND parent, int number);
    HWND Handle() const { return m_handle; }

    LRESULT OnNotify(NMHDR& header);
    void OnDpiChanged();
    // A key or a click is about to come that selects a range, if Shift is held: Wine 8 redraws
    // each row of it, even one that is not in view. What the parent gets when it has been dealt
    // with, and hands on.
    void OnBeforeRange();
    static constexpr UINT kRangeDone = WM_APP + 0x51;
    void OnRangeDone() { m_rangePause.reset(); }
    void OnDestroy();

    // The headings; the last of several columns is one of numbers, on the right.
    void SetColumns(const std::vector<std::string>& headings);
    // The arrow on the first heading: 1 up, -1 down, 0 none.
    void ShowArrow(int direction);
    // In pixels at 96 to the inch; 0 leaves a column as it is.
    void SetColumnWidths(const std::vector<int>& widths);
    std::vector<int> ColumnWidths() const;
    // Makes the column of numbers as wide as its numbers, and gives the first one the room that is
    // left.
    void FitColumns();

    // The rows are other ones now: none is selected, the first is in view.
    void Reset();
    // The rows have changed, or their number, while they are shown.
    void Refresh();

    std::vector<std::size_t> SelectedRows() const;
    std::size_t SelectedCount() const;
    // Exactly these, ascending; the first one gets the focus.
    void SelectRows(const std::vector<std::size_t>& rows);
    // On the screen; empty without any.
    RECT PlaceOfFocusedRow() const;
    // The row that the keys start from, selected or not.
    std::optional<std::size_t> MaybeFocusedRow() const;
    void FocusRow(std::size_t row);
    void MakeVisible(std::size_t row);

    // The picture behind the rows.
    ListBackground& Background() { return m_background; }

    // The line between rows that shows where dragged songs will go.
    InsertMark& Mark() { return m_mark; }

    // Where a menu for the selection belongs, in screen coordinates.
    POINT MenuPlace() const;

 private:
    void ClearSelection();
    void SelectFromNone(const std::vector<std::size_t>& rows);
    void ScrollTo(int topRow);
    void SetState(int row, UINT state, UINT mask);
    int NumberWidth(const std::wstring& heading) const;
    LRESULT OnGetObject(WPARAM wParam);
    bool OnKey(UINT key);
    void OnGetInfo(NMLVDISPINFOW& info) const;
    LRESULT OnFind(const NMLVFINDITEMW& find) const;
    void OnGetTip(NMLVGETINFOTIPW& info) const;
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
    void UseColors(NMLVCUSTOMDRAW& draw, int column) const;
    void PaintIcon(HDC dc, int row) const;
    void PaintEmptyText(HDC dc) const;
    bool OnMouse(UINT message, WPARAM keys, POINT at);

    ListPaneDelegate& m_delegate;
    HWND m_handle = nullptr;
    UniqueImageList m_icons;
    ListBackground m_background;
    InsertMark m_mark;
    ComPtr<AccessibleList> m_spoken;  // made when a screen reader asks for it
    int m_columns = 0;
    int m_dpi = 96;                            // of the screen that the columns' widths are for
    std::optional<DrawingPause> m_rangePause;  // while a key or click selects very many rows
    struct Press {
        int row;
        POINT at;
    };
    std::optional<Press> m_maybePress;  // with Ctrl on a selected row: a drag, or not yet a click
    bool m_selecting = false;           // many rows: their delegate hears of it once
};

}  // namespace tobbin
