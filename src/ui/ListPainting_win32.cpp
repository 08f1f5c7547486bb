#include "platform/Dpi_win32.h"
#include "platform/HintText_win32.h"
#include "ui/ListPane_win32.h"
#include "ui/PaneColors_win32.h"

// What the list pane paints itself, over and under what the control paints.

namespace tobbin {

// The picture comes under the rows, and the empty text over an empty pane. The text is not handed
// over with LVN_GETEMPTYMARKUP: the control asks for it once, and it changes.
LRESULT ListPane::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
    const bool isEmpty = m_delegate.RowCount() == 0;
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
        if (m_background.IsShown())
            m_background.Paint(draw.nmcd.hdc);
        return CDRF_NOTIFYITEMDRAW |
               (isEmpty || m_mark.IsShown() ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT);
    }
    const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT) {
        if (m_background.IsShown())
            m_background.PaintRow(draw.nmcd.hdc, row);
        UseColors(draw, 0);
        return CDRF_NOTIFYSUBITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    }
    if (draw.nmcd.dwDrawStage == (CDDS_ITEMPREPAINT | CDDS_SUBITEM)) {
        UseColors(draw, draw.iSubItem);
    } else if (draw.nmcd.dwDrawStage == CDDS_ITEMPOSTPAINT) {
        PaintIcon(draw.nmcd.hdc, row);
    } else if (draw.nmcd.dwDrawStage == CDDS_POSTPAINT) {
        if (isEmpty)
            PaintEmptyText(draw.nmcd.hdc);
        m_mark.Paint(draw.nmcd.hdc);
    }
    return CDRF_DODEFAULT;
}

// A selected row in the pane with the focus has the system's colors.
void ListPane::UseColors(NMLVCUSTOMDRAW& draw, int column) const {
    const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
    const bool isSelected = ListView_GetItemState(m_handle, row, LVIS_SELECTED) != 0;
    if (isSelected && GetFocus() == m_handle)
        return;
    if (isSelected) {
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // or its colors would win
        draw.clrTextBk = QuietSelectionColor();
    }
    const bool isMissing = !m_delegate.WhyMissing(static_cast<std::size_t>(row)).empty();
    draw.clrText = isMissing    ? MissingTextColor()
                   : column > 0 ? QuietTextColor()
                                : GetSysColor(COLOR_WINDOWTEXT);
}

// Over a selection or a background picture the icon keeps its own colors, on a plate of the
// window's color.
void ListPane::PaintIcon(HDC dc, int row) const {
    RECT place = {};
    int width = 0;
    int height = 0;
    if ((!m_background.IsShown() && ListView_GetItemState(m_handle, row, LVIS_SELECTED) == 0) ||
        !ListView_GetItemRect(m_handle, row, &place, LVIR_ICON) ||
        !ImageList_GetIconSize(m_icons.Get(), &width, &height))
        return;
    const int left = (place.left + place.right - width) / 2;
    const int top = (place.top + place.bottom - height) / 2;
    const int corner = ScalePixels(4, m_handle);
    const int saved = SaveDC(dc);
    SelectObject(dc, GetStockObject(NULL_PEN));
    SelectObject(dc, GetSysColorBrush(COLOR_WINDOW));
    RoundRect(dc, left - 1, top, left + width + 2, top + height + 1, corner, corner);
    RestoreDC(dc, saved);
    ImageList_Draw(m_icons.Get(), m_delegate.RowImage(static_cast<std::size_t>(row)), dc, left, top,
                   ILD_NORMAL);
}

void ListPane::PaintEmptyText(HDC dc) const {
    RECT place = {};
    GetClientRect(m_handle, &place);
    RECT heading = {};
    GetWindowRect(ListView_GetHeader(m_handle), &heading);
    place.top += heading.bottom - heading.top;
    PaintHint(dc, m_handle, place, m_delegate.EmptyText(),
              m_background.IsShown() ? GetSysColor(COLOR_WINDOWTEXT) : QuietTextColor());
}

}  // namespace tobbin
