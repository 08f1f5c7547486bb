#include "ui/ListPane_win32.h"

#include <uxtheme.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <numeric>

#include "platform/AccessibleNames_win32.h"
#include "platform/AccessibleObjects_win32.h"
#include "platform/Dpi_win32.h"
#include "platform/ImageStrip_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

constexpr wchar_t kName[] = L"Songs";
constexpr std::size_t kFewRows = 100;  // that are selected

}  // namespace

bool ListPane::Create(HWND parent, int number) {
    m_handle =
        CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, kName,
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | LVS_REPORT |
                            LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
                        0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
                        GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    ListView_SetExtendedListViewStyle(
        m_handle, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | LVS_EX_INFOTIP);
    m_background.Attach(m_handle);
    m_mark.Attach(m_handle);
    m_background.onObject = [this](WPARAM wParam) { return OnGetObject(wParam); };
    m_background.onMouse = [this](UINT message, WPARAM keys, POINT at) {
        return OnMouse(message, keys, at);
    };
    NameWindow(m_handle, kName);
    OnDpiChanged();
    return true;
}

void ListPane::OnDestroy() {
    if (m_spoken != nullptr)
        m_spoken->Forget();
    m_handle = nullptr;
}

LRESULT ListPane::OnGetObject(WPARAM wParam) {
    if (m_handle == nullptr)
        return 0;
    if (m_spoken == nullptr)
        m_spoken = AccessibleList::Make(
            m_handle, kName,
            {[this] { return m_delegate.RowCount(); },
             [this](std::size_t row) { return m_delegate.AccessibleRowText(row); },
             [this] { return m_delegate.EmptyText(); }});
    return m_spoken != nullptr ? AnswerWithObject(wParam, m_spoken.get()) : 0;
}

void ListPane::OnDpiChanged() {
    const auto dpi = static_cast<int>(GetDpiForWindow(m_handle));
    for (int i = 0; i < m_columns && dpi != m_dpi; ++i)
        ListView_SetColumnWidth(m_handle, i,
                                MulDiv(ListView_GetColumnWidth(m_handle, i), dpi, m_dpi));
    m_dpi = dpi;
    UniqueImageList icons = LoadImageStrip(IDB_RANKS, m_handle);
    ListView_SetImageList(m_handle, icons.Get(), LVSIL_SMALL);
    m_icons = std::move(icons);
}

void ListPane::Reset() {
    if (m_handle == nullptr)
        return;
    const DrawingPause pause(m_handle);
    m_selecting = true;
    ListView_DeleteAllItems(m_handle);
    m_selecting = false;
    SendMessageW(m_handle, LVM_SETITEMCOUNT, m_delegate.RowCount(), 0);
}

void ListPane::Refresh() {
    if (m_handle == nullptr)
        return;
    SendMessageW(m_handle, LVM_SETITEMCOUNT, m_delegate.RowCount(),
                 LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
    InvalidateRect(m_handle, nullptr, TRUE);
}

// Asks as often as there are rows: to ask once more would look through all the others.
std::vector<std::size_t> ListPane::SelectedRows() const {
    std::vector<std::size_t> rows(SelectedCount());
    if (rows.size() == m_delegate.RowCount()) {
        std::iota(rows.begin(), rows.end(), 0);
        return rows;
    }
    int row = -1;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        row = ListView_GetNextItem(m_handle, row, LVNI_SELECTED);
        if (row < 0)
            rows.resize(i);
        else
            rows[i] = static_cast<std::size_t>(row);
    }
    return rows;
}

std::size_t ListPane::SelectedCount() const {
    return m_handle != nullptr ? ListView_GetSelectedCount(m_handle) : 0;
}

void ListPane::SetState(int row, UINT state, UINT mask) {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    SendMessageW(m_handle, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
}

// To take away a large selection row by row costs the square of its rows under Wine 8; a list
// that is emptied and filled again has none at once.
void ListPane::ClearSelection() {
    if (SelectedCount() <= kFewRows) {
        for (const std::size_t row : SelectedRows())
            SetState(static_cast<int>(row), 0, LVIS_SELECTED);
        return;
    }
    const std::optional<std::size_t> focused = MaybeFocusedRow();
    ListView_DeleteAllItems(m_handle);
    SendMessageW(m_handle, LVM_SETITEMCOUNT, m_delegate.RowCount(), 0);
    if (focused)
        FocusRow(*focused);
}

void ListPane::ScrollTo(int topRow) {
    const int distance = topRow - ListView_GetTopIndex(m_handle);
    RECT row = {};
    if (distance != 0 && ListView_GetItemRect(m_handle, 0, &row, LVIR_BOUNDS))
        ListView_Scroll(m_handle, 0, distance * (row.bottom - row.top));
}

// Each row that is told by itself takes some microseconds, so the fewer ones are: those to select,
// or those to leave out of all. The latter from the end, as what lies behind is looked through.
void ListPane::SelectFromNone(const std::vector<std::size_t>& rows) {
    const std::size_t count = m_delegate.RowCount();
    if (rows.size() <= count / 2) {
        for (const std::size_t row : rows)
            SetState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
        return;
    }
    SetState(-1, LVIS_SELECTED, LVIS_SELECTED);
    auto last = rows.rbegin();
    for (std::size_t row = count; row-- > 0;) {
        if (last != rows.rend() && *last == row)
            ++last;
        else
            SetState(static_cast<int>(row), 0, LVIS_SELECTED);
    }
}

void ListPane::SelectRows(const std::vector<std::size_t>& rows) {
    m_selecting = true;
    const bool all = rows.size() == m_delegate.RowCount();
    const bool differs = rows.size() != SelectedCount() ||
                         (!all && (rows.size() > kFewRows || rows != SelectedRows()));
    const int top = ListView_GetTopIndex(m_handle);
    if (differs) {
        const DrawingPause pause(m_handle);
        ClearSelection();
        SelectFromNone(rows);
    }
    if (!rows.empty())
        FocusRow(rows.front());
    if (differs)
        ScrollTo(top);  // which takes a control that draws
    m_selecting = false;
    m_delegate.OnRowsSelected();
}

RECT ListPane::PlaceOfFocusedRow() const {
    RECT place = {};
    const int row = ListView_GetNextItem(m_handle, -1, LVNI_FOCUSED);
    if (row >= 0 && ListView_GetItemRect(m_handle, row, &place, LVIR_BOUNDS))
        MapWindowPoints(m_handle, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::optional<std::size_t> ListPane::MaybeFocusedRow() const {
    const int row = ListView_GetNextItem(m_handle, -1, LVNI_FOCUSED);
    return row >= 0 ? std::optional(static_cast<std::size_t>(row)) : std::nullopt;
}

// A range that is extended by keys or mouse begins there, too.
void ListPane::FocusRow(std::size_t row) {
    SetState(static_cast<int>(row), LVIS_FOCUSED, LVIS_FOCUSED);
    ListView_SetSelectionMark(m_handle, static_cast<int>(row));
}

void ListPane::MakeVisible(std::size_t row) {
    ListView_EnsureVisible(m_handle, static_cast<int>(row), FALSE);
}

POINT ListPane::MenuPlace() const {
    POINT point = {0, 0};
    int row = ListView_GetNextItem(m_handle, -1, LVNI_FOCUSED | LVNI_SELECTED);
    if (row < 0)
        row = ListView_GetNextItem(m_handle, -1, LVNI_SELECTED);
    RECT place = {};
    RECT client = {};
    GetClientRect(m_handle, &client);
    if (row >= 0)
        ListView_EnsureVisible(m_handle, row, FALSE);
    if (row >= 0 && ListView_GetItemRect(m_handle, row, &place, LVIR_LABEL))
        point = {std::max(place.left, client.left), place.bottom};
    ClientToScreen(m_handle, &point);
    return point;
}

LRESULT ListPane::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            OnGetInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case LVN_GETINFOTIPW:
            OnGetTip(reinterpret_cast<NMLVGETINFOTIPW&>(header));
            return 0;
        case LVN_ODFINDITEMW:
            return OnFind(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            if (!m_selecting)
                m_delegate.OnRowsSelected();
            return 0;
        case LVN_BEGINDRAG:
            m_delegate.OnRowsDragged();
            return 0;
        case LVN_COLUMNCLICK:
            m_delegate.OnColumnClicked(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            return 0;
        case LVN_ITEMACTIVATE:
            m_delegate.OnRowOpened();
            return 0;
        case HDN_ENDTRACKW:
        case HDN_DIVIDERDBLCLICKW:
            m_delegate.OnColumnResized();
            return 0;
        case LVN_KEYDOWN:
            return OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
        case NM_SETFOCUS:
            m_delegate.OnListFocused();
            return 0;
        default:
            return 0;
    }
}

// A press with Ctrl on a selected row takes it out of the selection, but only when the button goes
// up again: it may be the begin of a drag that copies all of it. Not every system's control waits.
bool ListPane::OnMouse(UINT message, WPARAM keys, POINT at) {
    if (message == WM_LBUTTONDOWN && (keys & (MK_CONTROL | MK_SHIFT)) == MK_CONTROL) {
        LVHITTESTINFO hit = {};
        hit.pt = at;
        const int row = ListView_HitTest(m_handle, &hit);
        if (row < 0 || ListView_GetItemState(m_handle, row, LVIS_SELECTED) == 0)
            return false;
        SetFocus(m_handle);
        FocusRow(static_cast<std::size_t>(row));
        m_maybePress = {row, at};
        SetCapture(m_handle);
        return true;
    }
    if (!m_maybePress || (message != WM_MOUSEMOVE && message != WM_LBUTTONUP))
        return false;
    const Press press = *m_maybePress;
    const bool isUp = message == WM_LBUTTONUP;
    const bool isLost = (keys & MK_LBUTTON) == 0;  // another window took the mouse meanwhile
    const UINT dpi = GetDpiForWindow(m_handle);
    const bool isDrag = std::abs(at.x - press.at.x) > GetSystemMetricsForDpi(SM_CXDRAG, dpi) ||
                        std::abs(at.y - press.at.y) > GetSystemMetricsForDpi(SM_CYDRAG, dpi);
    if (!isUp && !isLost && !isDrag)
        return true;
    m_maybePress.reset();
    ReleaseCapture();
    if (isUp)
        SetState(press.row, 0, LVIS_SELECTED);
    else if (!isLost)
        m_delegate.OnRowsDragged();
    return true;
}

bool ListPane::OnKey(UINT key) {
    if (key == VK_HOME || key == VK_END)
        OnBeforeRange();
    return m_delegate.OnListKey(key);
}

void ListPane::OnBeforeRange() {
    if (GetKeyState(VK_SHIFT) >= 0 || m_rangePause)
        return;
    m_rangePause.emplace(m_handle);
    PostMessageW(GetParent(m_handle), kRangeDone, 0, 0);
}

void ListPane::OnGetInfo(NMLVDISPINFOW& info) const {
    const auto row = static_cast<std::size_t>(info.item.iItem);
    if (row >= m_delegate.RowCount())
        return;
    if ((info.item.mask & LVIF_TEXT) != 0 && info.item.cchTextMax > 0) {
        const std::wstring text = WideShown(m_delegate.RowText(row, info.item.iSubItem));
        lstrcpynW(info.item.pszText, text.c_str(), info.item.cchTextMax);
    }
    if ((info.item.mask & LVIF_IMAGE) != 0)
        info.item.iImage = m_delegate.RowImage(row);
}

void ListPane::OnGetTip(NMLVGETINFOTIPW& info) const {
    const auto row = static_cast<std::size_t>(info.iItem);
    const std::string why = row < m_delegate.RowCount() ? m_delegate.WhyMissing(row) : "";
    if (!why.empty() && info.cchTextMax > 0)
        lstrcpynW(info.pszText, Wide(m_delegate.RowText(row, 0) + "\r\n" + why).c_str(),
                  info.cchTextMax);
}

// What the person types.
LRESULT ListPane::OnFind(const NMLVFINDITEMW& find) const {
    if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0)
        return -1;
    const auto start = static_cast<std::size_t>(std::max(find.iStart, 0));
    const auto row = m_delegate.MaybeRowBeginningWith(Utf8(find.lvfi.psz), start);
    return row ? static_cast<LRESULT>(*row) : -1;
}

}  // namespace tobbin
