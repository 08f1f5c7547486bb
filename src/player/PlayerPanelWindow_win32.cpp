#include "player/PlayerPanelWindow_win32.h"

#include <algorithm>
#include <utility>

#include "platform/Dpi_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Wide_win32.h"
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

SCROLLINFO InfoOf(HWND bar) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    GetScrollInfo(bar, SB_CTL, &info);
    return info;
}

// Where a move leads to; a drag's place while the thumb is held.
int TargetOf(const SCROLLINFO& info, const BarLook& look, int code) {
    const auto by = [&](int step) { return std::clamp(info.nPos + step, info.nMin, info.nMax); };
    switch (code) {
        case SB_LINELEFT:
            return by(-look.smallStep);
        case SB_LINERIGHT:
            return by(look.smallStep);
        case SB_PAGELEFT:
            return by(-look.largeStep);
        case SB_PAGERIGHT:
            return by(look.largeStep);
        case SB_LEFT:
            return info.nMin;
        case SB_RIGHT:
            return info.nMax;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return info.nTrackPos;
        default:
            return info.nPos;
    }
}

}  // namespace

PlayerPanelWindow::PlayerPanelWindow(Environment& environment, WinAMP_Control& control,
                                     const PlayList& playList, PlayerPanel::SongPathOf songPathOf)
    : m_panel(environment, control, playList, std::move(songPathOf), *this) {}

PlayerPanelWindow::~PlayerPanelWindow() {
    Destroy();
}

SIZE PlayerPanelWindow::FirstSize(HWND mdiClient) {
    return {TwipsToPixels(PlayerPanel::kWidthTwips, mdiClient),
            TwipsToPixels(PlayerPanel::kHeightTwips, mdiClient)};
}

bool PlayerPanelWindow::Open(HWND mdiClient, std::function<void()> closed) {
    m_closed = std::move(closed);
    ClassLook look;
    look.name = kClassName;
    look.icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN));
    look.background = GetSysColorBrush(COLOR_BTNFACE);
    Placement placement;
    placement.style = WS_CHILD | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX |
                      WS_THICKFRAME | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    placement.exStyle = WS_EX_MDICHILD | WS_EX_CONTROLPARENT;
    const SIZE size = FirstSize(mdiClient);
    placement.width = size.cx;
    placement.height = size.cy;
    // In the corner where it hides the least of a jukebox window.
    RECT room = {};
    GetClientRect(mdiClient, &room);
    placement.x = std::max<int>(0, room.right - placement.width);
    placement.y = std::max<int>(0, room.bottom - placement.height);
    placement.parent = mdiClient;
    if (!Create(look, "WinAMP", placement))
        return false;
    PostMessageW(Handle(), kLoad, 0, 0);
    return true;
}

LRESULT PlayerPanelWindow::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefMDIChildProcW(Handle(), message, wParam, lParam);
}

LRESULT PlayerPanelWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kLoad:  // once: other programs may send any number
            if (!std::exchange(m_loaded, true))
                m_panel.Load();
            return 0;
        case WM_SIZE:
            OnSize(LOWORD(lParam), HIWORD(lParam));
            break;  // the system keeps account of MDI children's sizes
        case WM_DPICHANGED_AFTERPARENT:
            OnDpiChanged();
            return 0;
        case WM_SETFOCUS:
            Default(message, wParam, lParam);
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
    AddControl(L"BUTTON", L"&Play", WS_VISIBLE | WS_TABSTOP | WS_DISABLED, cmdPlayPause);
    AddControl(L"STATIC", L"", WS_VISIBLE | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS,
               lblStatus);
    AddControl(L"BUTTON", L"&Stop Adding", WS_TABSTOP, cmdStopAdding);
    int label = kFirstLabel;
    for (const BarLook& bar : kBars) {
        AddControl(L"STATIC", bar.label, WS_VISIBLE | SS_CENTERIMAGE, label++);
        AddControl(L"SCROLLBAR", bar.name, WS_VISIBLE | WS_TABSTOP | SBS_HORZ, bar.control);
    }
    OnDpiChanged();
    return true;
}

void PlayerPanelWindow::OnDpiChanged() {
    UniqueFont font = MessageFont(Handle());
    for (HWND child = GetWindow(Handle(), GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        UseFont(child, font);
    m_font = std::move(font);
    RECT client;
    GetClientRect(Handle(), &client);
    OnSize(client.right, client.bottom);
}

void PlayerPanelWindow::OnSize(int width, int /*height*/) {
    const auto scale = [this](int pixels) { return ScalePixels(pixels, Handle()); };
    const int margin = scale(7), gap = scale(6);
    const int button = scale(62), wideButton = scale(82), label = scale(54);
    const int rowHeight = scale(23), barHeight = scale(17), barStep = scale(22);
    const auto place = [this](int control, int x, int y, int w, int h) {
        SetWindowPos(Item(control), nullptr, x, y, std::max(w, 0), h,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    };

    place(cmdPlayPause, margin, margin, button, rowHeight);
    const bool stopShown = (GetWindowLongPtrW(Item(cmdStopAdding), GWL_STYLE) & WS_VISIBLE) != 0;
    const int statusLeft = margin + button + gap;
    const int statusRight = width - margin - (stopShown ? wideButton + gap : 0);
    place(lblStatus, statusLeft, margin, statusRight - statusLeft, rowHeight);
    place(cmdStopAdding, width - margin - wideButton, margin, wideButton, rowHeight);

    int y = margin + rowHeight + gap;
    int labelNumber = kFirstLabel;
    for (const BarLook& bar : kBars) {
        place(labelNumber++, margin, y, label, barHeight);
        place(bar.control, margin + label, y, width - 2 * margin - label, barHeight);
        y += barStep;
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
    const int target = TargetOf(InfoOf(bar), *look, code);
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
            m_panel.OnTrackScroll();
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
    SetWindowTextW(Handle(), Wide(caption).c_str());
}

void PlayerPanelWindow::SetOuterSize(int widthTwips, int heightTwips) {
    if (!IsZoomed(Handle()) && !IsIconic(Handle()))
        SetWindowPos(Handle(), nullptr, 0, 0, TwipsToPixels(widthTwips, Handle()),
                     TwipsToPixels(heightTwips, Handle()),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void PlayerPanelWindow::SetButton(const std::string& caption, bool enabled) {
    SetWindowTextW(Item(cmdPlayPause), Wide(caption).c_str());
    EnableWindow(Item(cmdPlayPause), enabled);
    if (enabled && std::exchange(m_focusIsLent, false) && GetFocus() == Item(hscrlVolume)) {
        SetFocus(Item(cmdPlayPause));
        InvalidateRect(Item(hscrlVolume), nullptr, TRUE);  // some systems leave the focus' mark
    }
}

void PlayerPanelWindow::SetStatus(const std::string& text) {
    SetWindowTextW(Item(lblStatus), Wide(text).c_str());
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
