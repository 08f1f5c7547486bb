#include "ui/InsertMark_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/Dpi_win32.h"

namespace tobbin {
namespace {

constexpr int kThickness = 3;  // pixels at 96 to the inch

}  // namespace

std::size_t InsertMark::GapAt(POINT screen) const {
    RECT row = {};
    if (!ListView_GetItemRect(m_list, 0, &row, LVIR_BOUNDS) || row.bottom <= row.top)
        return 0;
    POINT at = screen;
    ScreenToClient(m_list, &at);
    const LONG height = row.bottom - row.top;
    const LONG below = std::max<LONG>(at.y - row.top + height / 2, 0);
    return static_cast<std::size_t>(std::min<LONG>(below / height, ListView_GetItemCount(m_list)));
}

void InsertMark::Show(std::optional<std::size_t> maybeGap) {
    if (maybeGap == m_maybeGap)
        return;
    for (const std::optional<std::size_t>& gap : {m_maybeGap, maybeGap})
        if (gap) {
            const RECT place = Place(*gap);
            InvalidateRect(m_list, &place, TRUE);
        }
    m_maybeGap = maybeGap;
}

// As wide as the pane and never under the headings.
RECT InsertMark::Place(std::size_t gap) const {
    RECT place = {};
    RECT row = {};
    RECT heading = {};
    GetClientRect(m_list, &place);
    GetWindowRect(ListView_GetHeader(m_list), &heading);
    ListView_GetItemRect(m_list, 0, &row, LVIR_BOUNDS);
    const int thickness = ScalePixels(kThickness, m_list);
    const LONG middle = row.top + static_cast<LONG>(gap) * (row.bottom - row.top);
    place.top = std::max(heading.bottom - heading.top, middle - thickness / 2);
    place.bottom = place.top + thickness;
    return place;
}

void InsertMark::Paint(HDC dc) const {
    if (!m_maybeGap)
        return;
    const RECT place = Place(*m_maybeGap);
    FillRect(dc, &place, GetSysColorBrush(COLOR_WINDOWTEXT));
}

}  // namespace tobbin
