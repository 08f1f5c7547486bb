#include "ui/DropTracker_win32.h"

#include <optional>

#include "platform/Dpi_win32.h"

namespace tobbin {
namespace {

constexpr UINT kPeriod = 60;             // milliseconds
constexpr ULONGLONG kOpeningTime = 700;  // milliseconds
constexpr int kEdge = 18;                // pixels at 96 to the inch

RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

// One step for each edge that the mouse is near, or beyond it over a scroll bar. `headHeight` is
// what stands above the rows.
void ScrollNearEdge(HWND pane, POINT screen, LONG headHeight) {
    const RECT outer = PlaceOf(pane);
    RECT inner = {};
    GetClientRect(pane, &inner);
    POINT at = screen;
    ScreenToClient(pane, &at);
    inner.top += headHeight;
    if (!PtInRect(&outer, screen) || at.y < inner.top)
        return;
    const int edge = ScalePixels(kEdge, pane);
    if (at.y < inner.top + edge)
        SendMessageW(pane, WM_VSCROLL, SB_LINEUP, 0);
    else if (at.y >= inner.bottom - edge)
        SendMessageW(pane, WM_VSCROLL, SB_LINEDOWN, 0);
    if (at.x < inner.left + edge)
        SendMessageW(pane, WM_HSCROLL, SB_LINELEFT, 0);
    else if (at.x >= inner.right - edge && at.x < inner.right)
        SendMessageW(pane, WM_HSCROLL, SB_LINERIGHT, 0);
}

}  // namespace

DropTracker::DropTracker(TreePane& tree, ListPane& list, FolderDropDelegate& delegate)
    : m_tree(tree), m_list(list), m_delegate(delegate), m_treeTarget(*this), m_listTarget(*this) {}

void DropTracker::Begin(HWND parent) {
    m_parent = parent;
    m_treeTarget.Begin(m_tree.Handle());
    m_listTarget.Begin(m_list.Handle());
}

void DropTracker::Stop() {
    if (m_parent != nullptr)
        KillTimer(m_parent, kTimer);
    m_parent = nullptr;
    m_treeTarget.Stop();
    m_listTarget.Stop();
}

bool DropTracker::IsOverList(POINT screen) const {
    const RECT place = PlaceOf(m_list.Handle());
    return PtInRect(&place, screen);
}

Folder* DropTracker::MaybeTarget(POINT screen) const {
    return IsOverList(screen) ? m_delegate.ListedFolder() : m_tree.MaybeFolderAt(screen);
}

DropEffect DropTracker::OnDragOver(const DraggedData& data, POINT screen, DropEffect wish) {
    Folder* const target = MaybeTarget(screen);
    const bool orders = IsOverList(screen) && m_delegate.OrdersList(data, wish);
    m_list.Mark().Show(orders ? std::optional(m_list.Mark().GapAt(screen)) : std::nullopt);
    const DropEffect effect =
        orders ? DropEffect::Move : m_delegate.EffectOfDrop(data, target, wish);
    m_tree.MarkDrop(!orders && effect != DropEffect::None ? target : nullptr);
    m_mouse = screen;
    Folder* const hovered =
        target != nullptr && m_delegate.IsDragged(data, *target) ? nullptr : target;
    if (hovered != m_hovered) {
        m_hovered = hovered;
        m_hoveredSince = GetTickCount64();
    }
    if (!m_following)  // a timer that is set again begins its period anew
        m_following = SetTimer(m_parent, kTimer, kPeriod, nullptr) != 0;
    return effect;
}

void DropTracker::OnDragLeave() {
    KillTimer(m_parent, kTimer);
    m_following = false;
    m_tree.MarkDrop(nullptr);
    m_list.Mark().Show(std::nullopt);
    m_hovered = nullptr;
}

DropEffect DropTracker::OnDrop(const DraggedData& data, POINT screen, DropEffect wish) {
    OnDragLeave();
    if (IsOverList(screen) && m_delegate.OrdersList(data, wish)) {
        m_delegate.DropInList(data, m_list.Mark().GapAt(screen));
        return DropEffect::Move;
    }
    return m_delegate.DropOn(data, MaybeTarget(screen), wish);
}

void DropTracker::OnTimer() {
    if (IsOverList(m_mouse)) {
        const RECT head = PlaceOf(ListView_GetHeader(m_list.Handle()));
        ScrollNearEdge(m_list.Handle(), m_mouse, head.bottom - head.top);
        return;
    }
    ScrollNearEdge(m_tree.Handle(), m_mouse, 0);
    Folder* const under = m_tree.MaybeFolderAt(m_mouse);
    if (under != nullptr && under == m_hovered && GetTickCount64() - m_hoveredSince >= kOpeningTime)
        m_tree.ExpandFolder(*under, true);
}

}  // namespace tobbin
