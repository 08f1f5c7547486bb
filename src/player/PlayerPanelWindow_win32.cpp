#include "player/PlayerPanelWindow_win32.h"

#include <algorithm>
#include <utility>

#include "platform/Dpi_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Wide_win32.h"
#include "player/ScrollBar_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

constexpr UINT kLoad = WM_APP + 1;
constexpr UINT_PTR kTimerScrollUpdate = 1;
constexpr UINT_PTR kTimerWork = 2;
constexpr UINT kScrollUpdatePeriod = 500;  // milliseconds
constexpr int kFirstLabel = 201;           // the labels' numbers, in the order of the bars

struct BarLook {
    PlayerPanelWindow::Control control;
    const wchar_t* label;
    const wchar_t* name;  // for screen readers
    int smallStep, largeStep;
};
constexpr BarLook kBars[] = {
    {PlayerPanelWindow::hscrlTrackPos, L"P&osition", L"Position in the track, in seconds", 5, 30},
    {PlayerPanelWindow::hscrlVolume, L"&Volume", L"Volume", 8, 32},
    {PlayerPanelWindow::hscrlBalance, L"&Balance", L"Balance", 8, 32},
};

// In the window that it lies in.
RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// Beside the scroll bar of a jukebox window that fills the room.
PanelPlace FirstPlace(HWND window) {
    const UINT dpi = GetDpiForWindow(window);
    const int edge = GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    return PanelPlace(GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) + 2 * edge, edge);
}

}  // namespace

PlayerPanelWindow::PlayerPanelWindow(Environment& environment, WinAMP_Control& control,
                                     const PlayList& playList, PlayerPanel::SongPathOf songPathOf,
                                     PlayerDiscovery& discovery)
    : m_panel(environment, control, playList, std::move(songPathOf), discovery, *this) {}

PlayerPanelWindow::~PlayerPanelWindow() {
    Destroy();
}

bool PlayerPanelWindow::Open(HWND frame, const PixelRect& room, std::function<void()> minimized,
                             std::function<void()> closed) {
    m_minimized = std::move(minimized);
    m_closed = std::move(closed);
    m_room = room;
    ClassLook look;
    look.name = kClassName;
    look.icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN));
    look.background = GetSysColorBrush(COLOR_BTNFACE);
    Placement placement;
    placement.style = WS_CHILD | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME |
                      WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    placement.exStyle = WS_EX_CONTROLPARENT;
    placement.width = TwipsToPixels(PlayerPanel::kWidthTwips, frame);
    placement.height = TwipsToPixels(PlayerPanel::kHeightTwips, frame);
    m_place = FirstPlace(frame);
    const PixelRect place = m_place.In(room, placement.width, placement.height);
    placement.x = place.left;
    placement.y = place.top;
    placement.parent = frame;
    if (!Create(look, "WinAMP", placement))
        return false;
    SetWindowPos(Handle(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    PostMessageW(Handle(), kLoad, 0, 0);
    return true;
}

void PlayerPanelWindow::SetRoom(const PixelRect& room) {
    m_room = room;
    const RECT place = PlaceOf(Handle());
    const PixelRect in = m_place.In(room, place.right - place.left, place.bottom - place.top);
    SetWindowPos(Handle(), HWND_TOP, in.left, in.top, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
}

void PlayerPanelWindow::KeepInRoom(WINDOWPOS& place) const {
    const RECT now = PlaceOf(Handle());
    const bool moves = (place.flags & SWP_NOMOVE) == 0, grows = (place.flags & SWP_NOSIZE) == 0;
    if (!moves && !grows)
        return;
    const int width = grows ? place.cx : now.right - now.left;
    const int height = grows ? place.cy : now.bottom - now.top;
    const PixelRect in = IsIconic(Handle())
                             ? FirstPlace(Handle()).In(m_room, width, height)
                             : PanelPlace::Inside(m_room, moves ? place.x : now.left,
                                                  moves ? place.y : now.top, width, height);
    place.x = in.left;
    place.y = in.top;
    place.flags &= ~static_cast<UINT>(SWP_NOMOVE);
}

void PlayerPanelWindow::OnMoved() {
    const RECT place = PlaceOf(Handle());
    if (!IsIconic(Handle()))
        m_place.Remember(m_room, {place.left, place.top, place.right, place.bottom});
}

LRESULT PlayerPanelWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kLoad:  // once: other programs may send any number
            if (!std::exchange(m_loaded, true))
                m_panel.Load();
            return 0;
        case WM_SIZE:
            OnSize(LOWORD(lParam), HIWORD(lParam));
            if (wParam == SIZE_MINIMIZED)
                m_minimized();
            return 0;
        case WM_WINDOWPOSCHANGING:
            KeepInRoom(*reinterpret_cast<WINDOWPOS*>(lParam));
            return 0;
        case WM_EXITSIZEMOVE:
            OnMoved();
            return 0;
        case WM_MOUSEACTIVATE:
            if (!IsIconic(Handle()) && !IsChild(Handle(), GetFocus()))
                SetFocus(Handle());
            break;
        case WM_SETFOCUS:
            OnFocus();
            return 0;
        case WM_NEXTDLGCTL:
            OnNextControl(wParam, LOWORD(lParam) != 0);
            return 0;
        case WM_CLOSE:
            LeavePlayer();  // while a message can still be read in front of the window
            break;
        case WM_COMMAND:
            OnCommand(LOWORD(wParam));
            return 0;
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case WM_HSCROLL:
            m_focusIsLent = false;
            OnScroll(reinterpret_cast<HWND>(lParam), LOWORD(wParam));
            return 0;
        default:
            break;
    }
    return WindowBase::HandleMessage(message, wParam, lParam);
}

bool PlayerPanelWindow::OnCreate() {
    constexpr DWORD kText = WS_VISIBLE | SS_NOPREFIX | SS_CENTERIMAGE;
    AddControl(L"BUTTON", L"&Play", WS_VISIBLE | WS_TABSTOP | WS_DISABLED, cmdPlayPause);
    AddControl(L"STATIC", L"", kText | SS_ENDELLIPSIS, lblStatus);
    AddControl(L"BUTTON", L"&Stop Adding", WS_TABSTOP, cmdStopAdding);
    AddControl(L"BUTTON", L"", WS_VISIBLE | WS_TABSTOP, cmdChoosePlayer);
    AddControl(L"STATIC", L"", kText | SS_ENDELLIPSIS, lblSong);
    int label = kFirstLabel, value = lblTrackPos;
    for (const BarLook& bar : kBars) {
        AddControl(L"STATIC", bar.label, WS_VISIBLE | SS_CENTERIMAGE, label++);
        AddControl(L"SCROLLBAR", bar.name, WS_VISIBLE | WS_TABSTOP | SBS_HORZ, bar.control);
        AddControl(L"STATIC", L"", kText | SS_RIGHT, value++);
    }
    UseLook();
    return true;
}

void PlayerPanelWindow::UseLook() {
    UseMessageFont(Handle(), m_font);
    RECT client;
    GetClientRect(Handle(), &client);
    OnSize(client.right, client.bottom);
}

void PlayerPanelWindow::OnDpiChanged(int oldDpi, int dpi) {
    const RECT place = PlaceOf(Handle());
    if (!IsIconic(Handle()))
        SetWindowPos(Handle(), nullptr, 0, 0, MulDiv(place.right - place.left, dpi, oldDpi),
                     MulDiv(place.bottom - place.top, dpi, oldDpi),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    UseLook();
    SetRoom(m_room);
}

// The height holds all of it even where the system's captions and frames are large.
void PlayerPanelWindow::OnSize(int width, int /*height*/) {
    const auto scale = [this](int pixels) { return ScalePixels(pixels, Handle()); };
    const int margin = scale(5), gap = scale(5);
    const int button = scale(58), wideButton = scale(86), label = scale(50), value = scale(80);
    const int rowHeight = scale(22), lineHeight = scale(16), barHeight = scale(15);
    const auto place = [this](int control, int x, int y, int w, int h) {
        SetWindowPos(Item(control), nullptr, x, y, std::max(w, 0), h,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    };

    place(cmdPlayPause, margin, margin, button, rowHeight);
    const bool stopShown = (GetWindowLongPtrW(Item(cmdStopAdding), GWL_STYLE) & WS_VISIBLE) != 0;
    const int statusLeft = margin + button + gap;
    const int chooseLeft = width - margin - wideButton;
    const int statusRight = chooseLeft - gap - (stopShown ? wideButton + gap : 0);
    place(lblStatus, statusLeft, margin, statusRight - statusLeft, rowHeight);
    place(cmdStopAdding, chooseLeft - gap - wideButton, margin, wideButton, rowHeight);
    place(cmdChoosePlayer, chooseLeft, margin, wideButton, rowHeight);
    int y = margin + rowHeight + scale(1);
    place(lblSong, margin, y, width - 2 * margin, lineHeight);
    y += lineHeight + scale(1);
    int labelNumber = kFirstLabel, valueNumber = lblTrackPos;
    for (const BarLook& bar : kBars) {
        place(labelNumber++, margin, y, label, barHeight);
        place(bar.control, margin + label, y, width - 2 * margin - label - value - gap, barHeight);
        place(valueNumber++, width - margin - value, y, value, barHeight);
        y += barHeight + scale(2);
    }
    InvalidateRect(Handle(), nullptr, TRUE);
}

void PlayerPanelWindow::OnFocus() {
    m_focusIsLent = !IsWindowEnabled(Item(cmdPlayPause));
    SetFocus(Item(m_focusIsLent ? hscrlVolume : cmdPlayPause));
}

// How a label's access key leads to the bar behind it: to the label, then on to the next control.
void PlayerPanelWindow::OnNextControl(WPARAM which, bool isHandle) {
    SetFocus(isHandle ? reinterpret_cast<HWND>(which)
                      : GetNextDlgTabItem(Handle(), GetFocus(), which != 0));
}

void PlayerPanelWindow::OnCommand(int control) {
    if (control == cmdPlayPause)
        m_panel.OnPlayPauseClick();
    else if (control == cmdStopAdding)
        m_panel.OnStopAdding();
    else if (control == cmdChoosePlayer)
        m_panel.OnChoosePlayer();
}

void PlayerPanelWindow::OnTimer(UINT_PTR timer) {
    if (timer == kTimerScrollUpdate) {
        m_panel.OnTimer();
    } else if (timer == kTimerWork) {
        KillTimer(Handle(), kTimerWork);
        m_panel.Work();
    }
}

// A click beside the thumb and the keys count as a drag that ends at once, so that they seek too.
void PlayerPanelWindow::OnScroll(HWND bar, int code) {
    const BarLook* const look =
        std::find_if(std::begin(kBars), std::end(kBars),
                     [&](const auto& b) { return b.control == GetDlgCtrlID(bar); });
    if (look == std::end(kBars))
        return;
    const int target = TargetOf(InfoOf(bar), look->smallStep, look->largeStep, code);
    if (code == SB_ENDSCROLL) {
        if (look->control == hscrlTrackPos)
            m_panel.OnTrackChange(target);  // a drag that was broken off has to end, too
        return;
    }
    SetScrollPos(bar, SB_CTL, target, TRUE);
    switch (look->control) {
        case hscrlVolume:
            m_panel.OnVolume(target);
            break;
        case hscrlBalance:
            m_panel.OnBalance(target);
            break;
        default:
            m_panel.OnTrackScroll(target);
            if (code != SB_THUMBTRACK)
                m_panel.OnTrackChange(target);
            break;
    }
}

void PlayerPanelWindow::OnDestroy() {
    LeavePlayer();
    m_closed();
}

void PlayerPanelWindow::LeavePlayer() {
    KillTimer(Handle(), kTimerWork);
    if (!std::exchange(m_leftPlayer, true))
        m_panel.Close();
}

void PlayerPanelWindow::SetCaption(const std::string& caption) {
    SetWindowTextW(Handle(), WideShown(caption).c_str());
}

void PlayerPanelWindow::SetOuterSize(int widthTwips, int heightTwips) {
    if (IsIconic(Handle()))
        return;
    SetWindowPos(Handle(), nullptr, 0, 0, TwipsToPixels(widthTwips, Handle()),
                 TwipsToPixels(heightTwips, Handle()), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetRoom(m_room);
}

void PlayerPanelWindow::SetButton(const std::string& caption, bool enabled) {
    SetText(cmdPlayPause, caption);
    EnableWindow(Item(cmdPlayPause), enabled);
    if (enabled && std::exchange(m_focusIsLent, false) && GetFocus() == Item(hscrlVolume)) {
        SetFocus(Item(cmdPlayPause));
        InvalidateRect(Item(hscrlVolume), nullptr, TRUE);  // Wine 8 leaves the focus' mark
    }
}

// Texts that come anew with each tick are only shown when they change, so that they don't flicker.
void PlayerPanelWindow::SetText(int control, const std::string& text) {
    if (const std::string shown = ShownText(text); WindowText(Item(control)) != shown)
        SetWindowTextW(Item(control), Wide(shown).c_str());
}

void PlayerPanelWindow::SetStatus(const std::string& text) {
    SetText(lblStatus, text);
}

void PlayerPanelWindow::SetSong(const std::string& text) {
    SetText(lblSong, text);
}

void PlayerPanelWindow::SetBarText(PlayerBar bar, const std::string& text) {
    SetText(lblTrackPos + static_cast<int>(bar), text);
}

void PlayerPanelWindow::SetChoice(const std::string& caption) {
    SetText(cmdChoosePlayer, caption);
}

void PlayerPanelWindow::SetBar(PlayerBar bar, const BarState& state) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMin = state.minimum;
    info.nMax = std::max(state.maximum, state.minimum);
    info.nPos = state.value;
    SetScrollInfo(Item(kBars[static_cast<int>(bar)].control), SB_CTL, &info, TRUE);
}

void PlayerPanelWindow::OfferStop(bool offered) {
    const HWND button = Item(cmdStopAdding);
    if (((GetWindowLongPtrW(button, GWL_STYLE) & WS_VISIBLE) != 0) == offered)
        return;
    if (!offered && GetFocus() == button)
        SetFocus(Item(hscrlVolume));
    ShowWindow(button, offered ? SW_SHOWNA : SW_HIDE);
    RECT client;
    GetClientRect(Handle(), &client);
    OnSize(client.right, client.bottom);
}

void PlayerPanelWindow::SetTimer(bool enabled) {
    if (enabled)
        ::SetTimer(Handle(), kTimerScrollUpdate, kScrollUpdatePeriod, nullptr);
    else
        KillTimer(Handle(), kTimerScrollUpdate);
}

void PlayerPanelWindow::WorkIn(int milliseconds) {
    // The lowest a timer can do; the person's own events always come before it.
    ::SetTimer(Handle(), kTimerWork,
               static_cast<UINT>(std::max<int>(milliseconds, USER_TIMER_MINIMUM)), nullptr);
}

}  // namespace tobbin
