#include "ui/ListBackground_win32.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "ui/PaneColors_win32.h"
#include "ui/PicturePixels_win32.h"

namespace tobbin {
namespace {

constexpr UINT kReady = WM_APP + 0x50;

std::uint32_t SystemColor(int index) {
    const COLORREF color = GetSysColor(index);
    return static_cast<std::uint32_t>(GetRValue(color)) << 16 |
           static_cast<std::uint32_t>(GetGValue(color)) << 8 | GetBValue(color);
}

bool IsHighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof(contrast);
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// The place of a canvas that covers a pane and keeps its proportions.
RECT Covering(PictureSize canvas, const RECT& pane) {
    const int width = pane.right - pane.left;
    const int height = pane.bottom - pane.top;
    const PicturePart part = CoveringPart(canvas, {width, height});
    const int fullWidth = MulDiv(canvas.width, width, part.width);
    const int fullHeight = MulDiv(canvas.height, height, part.height);
    RECT place = {pane.left - (fullWidth - width) / 2, pane.top - (fullHeight - height) / 2, 0, 0};
    place.right = place.left + fullWidth;
    place.bottom = place.top + fullHeight;
    return place;
}

}  // namespace

// The list moves its rows with the picture under them; a list that has moved is drawn anew.
LRESULT ListBackground::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kReady) {
        OnReady();
        return 0;
    }
    if (message == WM_ERASEBKGND && IsShown())
        return TRUE;
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT)
        if (const LRESULT object = onObject(wParam); object != 0)
            return object;
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST &&
        onMouse(message, wParam, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}))
        return 0;
    if (message == WM_NCDESTROY)
        m_loader.Forget(this);
    const POINT before = IsShown() ? Scrolled() : POINT{};
    const LRESULT result = m_list.Default(message, wParam, lParam);
    if (m_list.Handle() == nullptr)
        return result;
    if (message == WM_SIZE && ListView_GetItemCount(m_list.Handle()) == 0)
        InvalidateRect(m_list.Handle(), nullptr, TRUE);  // The text in an empty pane moves, too.
    if (message == WM_SIZE)
        Request();
    else if (message == WM_SYSCOLORCHANGE)
        UseColors();
    if (IsShown())
        if (const POINT after = Scrolled(); after.x != before.x || after.y != before.y)
            InvalidateRect(m_list.Handle(), nullptr, FALSE);
    return result;
}

POINT ListBackground::Scrolled() const {
    return {GetScrollPos(m_list.Handle(), SB_HORZ), GetScrollPos(m_list.Handle(), SB_VERT)};
}

// Below the headings, and as wide as without scroll bars, which come and go with the rows.
RECT ListBackground::Pane() const {
    RECT pane = {};
    GetClientRect(m_list.Handle(), &pane);
    RECT heading = {};
    GetWindowRect(ListView_GetHeader(m_list.Handle()), &heading);
    pane.top += heading.bottom - heading.top;
    const auto style = GetWindowLongPtrW(m_list.Handle(), GWL_STYLE);
    const UINT dpi = GetDpiForWindow(m_list.Handle());
    if ((style & WS_VSCROLL) != 0)
        pane.right += GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
    if ((style & WS_HSCROLL) != 0)
        pane.bottom += GetSystemMetricsForDpi(SM_CYHSCROLL, dpi);
    return pane;
}

void ListBackground::Show(const std::string& path, bool tiled, const std::string& next) {
    m_path = path;
    m_next = next;
    m_tiled = tiled;
    m_request = {};
    if (!path.empty()) {
        Request();
        return;
    }
    m_loader.Forget(this);
    m_canvas.Reset();
    UseColors();
}

void ListBackground::Request() {
    const RECT pane = m_list.Handle() != nullptr ? Pane() : RECT{};
    if (m_path.empty() || pane.right <= pane.left || pane.bottom <= pane.top)
        return;
    PictureRequest request;
    request.path = m_path;
    request.pane = {static_cast<int>(pane.right - pane.left),
                    static_cast<int>(pane.bottom - pane.top)};
    request.tiled = m_tiled;
    request.veil = SystemColor(COLOR_WINDOW);
    if (request == m_request)
        return;
    m_request = request;
    m_loader.Want(this, request, [list = m_list.Handle()] { PostMessageW(list, kReady, 0, 0); });
}

void ListBackground::OnReady() {
    const std::shared_ptr<const Picture> picture = m_loader.MaybeTake(this);
    if (picture == nullptr)
        return;
    if (picture->problem.empty())
        SetCanvas(picture->pixels);
    else
        m_canvas.Reset();
    UseColors();
    if (!m_next.empty()) {
        PictureRequest next = m_request;
        next.path = m_next;
        m_loader.Expect(this, next);
    }
    if (!picture->problem.empty())
        onFailed(m_path, picture->problem);
}

void ListBackground::SetCanvas(const PicturePixels& pixels) {
    const BITMAPINFO info = LayoutOf(pixels);
    void* bits = nullptr;
    m_canvas.Reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    m_canvasSize = pixels.size;
    if (m_canvas)
        std::ranges::copy(pixels.pixels, static_cast<std::uint32_t*>(bits));
}

// In high contrast each name gets a ground of the window's color.
void ListBackground::UseColors() {
    if (m_list.Handle() == nullptr)
        return;
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    ListView_SetBkColor(m_list.Handle(), IsShown() ? CLR_NONE : window);
    ListView_SetTextBkColor(m_list.Handle(), IsShown() && !IsHighContrast() ? CLR_NONE : window);
    Request();
    InvalidateRect(m_list.Handle(), nullptr, TRUE);
}

void ListBackground::Paint(HDC dc) const {
    const RECT pane = Pane();
    const UniqueMemoryDc source(CreateCompatibleDC(dc));
    const HGDIOBJ old = SelectObject(source.Get(), m_canvas.Get());
    if (m_tiled || (m_canvasSize.width == pane.right - pane.left &&
                    m_canvasSize.height == pane.bottom - pane.top)) {
        const int right = pane.left + m_canvasSize.width;
        const int bottom = pane.top + m_canvasSize.height;
        BitBlt(dc, pane.left, pane.top, m_canvasSize.width, m_canvasSize.height, source.Get(), 0, 0,
               SRCCOPY);
        const RECT beside = {right, pane.top, pane.right, bottom};
        const RECT below = {pane.left, bottom, pane.right, pane.bottom};
        FillRect(dc, &beside, GetSysColorBrush(COLOR_WINDOW));
        FillRect(dc, &below, GetSysColorBrush(COLOR_WINDOW));
    } else {
        const RECT place = Covering(m_canvasSize, pane);
        StretchBlt(dc, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   source.Get(), 0, 0, m_canvasSize.width, m_canvasSize.height, SRCCOPY);
    }
    SelectObject(source.Get(), old);
}

void ListBackground::PaintRow(HDC dc, int row) const {
    RECT place = {};
    if (ListView_GetItemState(m_list.Handle(), row, LVIS_SELECTED) == 0 ||
        !ListView_GetItemRect(m_list.Handle(), row, &place, LVIR_BOUNDS))
        return;
    SetDCBrushColor(
        dc, GetFocus() == m_list.Handle() ? GetSysColor(COLOR_HIGHLIGHT) : QuietSelectionColor());
    FillRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace tobbin
