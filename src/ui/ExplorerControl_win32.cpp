#include "ui/ExplorerControl_win32.h"

#include <windowsx.h>

#include <algorithm>

#include "platform/Dpi_win32.h"
#include "platform/SystemFont_win32.h"
#include "ui/PopUpMenus_win32.h"

namespace tobbin {
namespace {

// Pixels at 96 to the inch.
constexpr int kFirstTreeWidth = 230;
constexpr int kSplitterWidth = 5;
constexpr int kSmallestPane = 60;
constexpr int kSplitterStep = 16;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

ExplorerControl::ExplorerControl(Jukebox& jukebox, TreePaneDelegate& tree, ListPaneDelegate& list,
                                 FolderDropDelegate& drops, PictureLoader& pictures)
    : m_tree(jukebox, tree),
      m_list(list, pictures),
      m_drops(m_tree, m_list, drops),
      m_splitter(kFirstTreeWidth) {}

ExplorerControl::~ExplorerControl() {
    Destroy();
}

bool ExplorerControl::CreateIn(HWND parent) {
    ClassLook look;
    look.name = kName;
    look.style = CS_DBLCLKS;
    look.cursor = nullptr;
    Placement placement;
    placement.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
    placement.exStyle = WS_EX_CONTROLPARENT;
    placement.x = placement.y = placement.width = placement.height = 0;
    placement.parent = parent;
    if (!Create(look, "PVExplorer1", placement) || !m_tree.Create(Handle(), kTree) ||
        !m_list.Create(Handle(), kList))
        return false;
    m_drops.Begin(Handle());
    OnDpiChanged();
    return true;
}

LRESULT ExplorerControl::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) == Handle() && OnSetCursor())
                return TRUE;
            break;
        case WM_LBUTTONDOWN:
            m_grip = GET_X_LPARAM(lParam) - m_widths.tree;
            SetCapture(Handle());
            return 0;
        case WM_MOUSEMOVE:
            if (GetCapture() == Handle())
                OnDrag(GET_X_LPARAM(lParam));
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        case WM_LBUTTONDBLCLK:
            SplitterPlace(kFirstTreeWidth);
            return 0;
        case ListPane::kRangeDone:
            m_list.OnRangeDone();
            return 0;
        case WM_PARENTNOTIFY:  // before the control itself gets the click
            if (LOWORD(wParam) == WM_LBUTTONDOWN)
                m_list.OnBeforeRange();
            break;
        case WM_TIMER:
            m_drops.OnTimer();
            return 0;
        case WM_CONTEXTMENU:
            OnContextMenu(reinterpret_cast<HWND>(wParam), GET_X_LPARAM(lParam),
                          GET_Y_LPARAM(lParam));
            return 0;
        case WM_MENUCHAR:
            if (const LRESULT answer = PopUpMenu::OnKey(reinterpret_cast<HMENU>(lParam),
                                                        static_cast<wchar_t>(LOWORD(wParam)));
                answer != 0)
                return answer;
            break;
        case WM_MEASUREITEM:
            PopUpMenu::OnMeasure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam), Handle());
            return TRUE;
        case WM_DRAWITEM:
            PopUpMenu::OnDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), Handle());
            return TRUE;
        case WM_COMMAND:
            onCommand(LOWORD(wParam));
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        default:
            break;
    }
    return WindowBase::HandleMessage(message, wParam, lParam);
}

void ExplorerControl::OnDestroy() {
    m_drops.Stop();
    m_tree.OnDestroy();
    m_list.OnDestroy();
}

void ExplorerControl::OnDpiChanged() {
    UniqueFont font = MessageFont(Handle());
    UseFont(m_tree.Handle(), font);
    UseFont(m_list.Handle(), font);
    m_font = std::move(font);
    m_tree.OnDpiChanged();
    m_list.OnDpiChanged();
    Layout();
}

void ExplorerControl::Layout() {
    if (m_list.Handle() == nullptr)
        return;
    RECT own = {};
    RECT seen = {};
    GetClientRect(Handle(), &own);
    GetClientRect(GetParent(Handle()), &seen);
    MapWindowPoints(GetParent(Handle()), Handle(), reinterpret_cast<POINT*>(&seen), 2);
    const int width = std::min(own.right, seen.right);
    m_height = std::min(own.bottom, seen.bottom);
    m_widths = SharePanes(width, PixelsOfSplitter(), ScalePixels(kSplitterWidth, Handle()),
                          ScalePixels(kSmallestPane, Handle()));
    HDWP places = BeginDeferWindowPos(2);
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
    places = DeferWindowPos(places, m_tree.Handle(), nullptr, 0, 0, m_widths.tree, m_height, flags);
    if (places != nullptr)
        places = DeferWindowPos(places, m_list.Handle(), nullptr, m_widths.tree + m_widths.splitter,
                                0, m_widths.list, m_height, flags);
    if (places != nullptr)
        EndDeferWindowPos(places);
    InvalidateRect(Handle(), nullptr, FALSE);
    onLayout();
}

int ExplorerControl::PixelsOfSplitter() const {
    return ScalePixels(m_splitter, Handle());
}

void ExplorerControl::SplitterPlace(int place) {
    m_splitter = place;
    Layout();
}

void ExplorerControl::OnDrag(int x) {
    const int total = m_widths.tree + m_widths.splitter + m_widths.list;
    const PaneWidths widths =
        SharePanes(total, x - m_grip, m_widths.splitter, ScalePixels(kSmallestPane, Handle()));
    if (widths == m_widths)
        return;
    SplitterPlace(MulDiv(widths.tree, 96, static_cast<int>(GetDpiForWindow(Handle()))));
    UpdateWindow(Handle());
}

void ExplorerControl::SwitchPane() {
    SetFocus(GetFocus() == m_tree.Handle() ? m_list.Handle() : m_tree.Handle());
}

bool ExplorerControl::OnSetCursor() {
    SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
    return true;
}

void ExplorerControl::OnPaint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    FillRect(dc, &paint.rcPaint, GetSysColorBrush(COLOR_BTNFACE));
    EndPaint(Handle(), &paint);
}

LRESULT ExplorerControl::OnNotify(NMHDR& header) {
    if ((header.code == TVN_KEYDOWN &&
         OnKey(header, reinterpret_cast<NMTVKEYDOWN&>(header).wVKey)) ||
        (header.code == LVN_KEYDOWN && OnKey(header, reinterpret_cast<NMLVKEYDOWN&>(header).wVKey)))
        return TRUE;
    if (header.hwndFrom == m_tree.Handle())
        return m_tree.OnNotify(header);
    if (header.hwndFrom == m_list.Handle() ||
        header.hwndFrom == ListView_GetHeader(m_list.Handle()))
        return m_list.OnNotify(header);
    return 0;
}

bool ExplorerControl::OnKey(const NMHDR& /*header*/, UINT key) {
    if (key == VK_TAB && !IsDown(VK_CONTROL)) {
        SwitchPane();
        return true;
    }
    if ((key == VK_LEFT || key == VK_RIGHT) && IsDown(VK_CONTROL) && IsDown(VK_SHIFT)) {
        OnDrag(m_widths.tree + m_grip +
               (key == VK_LEFT ? -1 : 1) * ScalePixels(kSplitterStep, Handle()));
        return true;
    }
    return false;
}

void ExplorerControl::OnContextMenu(HWND pane, int x, int y) {
    if (pane != m_tree.Handle() && pane != m_list.Handle())
        return;
    if (x == -1 && y == -1) {
        onMenu(pane, pane == m_tree.Handle() ? m_tree.MenuPlace() : m_list.MenuPlace(), false);
        return;
    }
    onMenu(pane, POINT{x, y}, true);
}

}  // namespace tobbin
