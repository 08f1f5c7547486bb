#include "shell/Splash_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/Dpi_win32.h"
#include "platform/ProgressBar_win32.h"
#include "platform/SystemFont_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

// Pixels at 96 to the inch.
constexpr int kWidth = 600;
constexpr int kHeight = 190;
constexpr int kMargin = 20;
constexpr int kPicture = 64;
constexpr int kTitleHeight = 40;
constexpr int kLineHeight = 20;
constexpr int kBarHeight = 10;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 26;

}  // namespace

Splash::~Splash() {
    Destroy();
}

bool Splash::Open() {
    ClassLook look;
    look.name = kClassName;
    look.background = GetSysColorBrush(COLOR_WINDOW);
    look.cursor = LoadCursorW(nullptr, IDC_APPSTARTING);
    look.icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN));
    Placement placement;
    placement.style = WS_POPUP | WS_BORDER | WS_CLIPCHILDREN;
    placement.exStyle = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;
    placement.x = placement.y = placement.width = placement.height = 0;
    if (!Create(look, "Tobbin MP3 Organizer", placement))
        return false;
    RECT area = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const int width = ScalePixels(kWidth, Handle());
    const int height = ScalePixels(kHeight, Handle());
    SetWindowPos(Handle(), nullptr, (area.left + area.right - width) / 2,
                 (area.top + area.bottom - height) / 2, width, height, SWP_NOZORDER);
    ShowWindow(Handle(), SW_SHOW);
    UpdateWindow(Handle());
    return true;
}

LRESULT Splash::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_DPICHANGED:  // the fonts first: the new size lays out
            UseFonts();
            MoveTo(*reinterpret_cast<const RECT*>(lParam));
            InvalidateRect(Handle(), nullptr, TRUE);
            return 0;
        case WM_COMMAND:
            if (LOWORD(wParam) == cmdStop || LOWORD(wParam) == IDCANCEL)
                OnStop();
            return 0;
        case WM_CLOSE:  // Alt+F4: the start itself goes on
            OnStop();
            return 0;
        case WM_TIMER:
            m_label.OnTimer(Handle());
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_CTLCOLORSTATIC:
            SetTextColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOWTEXT));
            SetBkColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOW));
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
        default:
            return WindowBase::HandleMessage(message, wParam, lParam);
    }
}

bool Splash::OnCreate() {
    AddControl(L"STATIC", L"", SS_NOPREFIX | SS_ENDELLIPSIS, lblProgress);
    AddControl(PROGRESS_CLASSW, nullptr, PBS_MARQUEE, barProgress);
    AddControl(L"BUTTON", L"&Stop", WS_TABSTOP | BS_DEFPUSHBUTTON, cmdStop);
    UseFonts();
    return true;
}

void Splash::UseFonts() {
    m_font = MessageFont(Handle());
    LOGFONTW title = {};
    GetObjectW(m_font.Get(), sizeof(title), &title);
    title.lfHeight = title.lfHeight * 9 / 4;
    m_titleFont = UniqueFont(CreateFontIndirectW(&title));
    UseFont(Item(lblProgress), m_font);
    UseFont(Item(cmdStop), m_font);
}

void Splash::Layout() {
    const auto scale = [this](int pixels) { return ScalePixels(pixels, Handle()); };
    RECT client = {};
    GetClientRect(Handle(), &client);
    const int margin = scale(kMargin);
    const int buttonTop = client.bottom - margin - scale(kButtonHeight);
    const int buttonLeft = client.right - margin - scale(kButtonWidth);
    MoveWindow(Item(cmdStop), buttonLeft, buttonTop, scale(kButtonWidth), scale(kButtonHeight),
               TRUE);
    const int width = buttonLeft - 2 * margin;
    MoveWindow(Item(lblProgress), margin, buttonTop - scale(4), width, scale(kLineHeight), TRUE);
    MoveWindow(Item(barProgress), margin, buttonTop + scale(kLineHeight - 2), width,
               scale(kBarHeight), TRUE);
}

void Splash::OnPaint() {
    const auto scale = [this](int pixels) { return ScalePixels(pixels, Handle()); };
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT client = {};
    GetClientRect(Handle(), &client);
    const int margin = scale(kMargin);
    const int picture = scale(kPicture);
    const UniqueIcon icon(static_cast<HICON>(LoadImageW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN), IMAGE_ICON, picture, picture, 0)));
    DrawIconEx(dc, margin, margin, icon.Get(), picture, picture, 0, nullptr, DI_NORMAL);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    RECT place = {2 * margin + picture, margin, client.right - margin,
                  margin + scale(kTitleHeight)};
    const HGDIOBJ oldFont = SelectObject(dc, m_titleFont.Get());
    DrawTextW(dc, L"Tobbin MP3 Organizer", -1, &place,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    SelectObject(dc, m_font.Get());
    place.top = place.bottom;
    place.bottom += scale(kLineHeight) + scale(4);
    DrawTextW(dc, L"Your songs, in jukeboxes of your own", -1, &place,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    EndPaint(Handle(), &paint);
}

void Splash::ShowProgressArea(bool visible) {
    if (visible)
        m_stop = false;
    EnableWindow(Item(cmdStop), visible);
    ShowStepsIn(Item(barProgress), {});
    SendDlgItemMessageW(Handle(), barProgress, PBM_SETMARQUEE, visible, 0);
    for (const int control : {lblProgress, barProgress, cmdStop})
        ShowWindow(Item(control), visible ? SW_SHOWNA : SW_HIDE);
    if (visible)
        SetFocus(Item(cmdStop));
    UpdateWindow(Handle());
}

void Splash::ShowSteps(const std::string& text, const StepsDone& steps) {
    m_label.Show(Handle(), text, steps);
}

void Splash::OnStop() {
    m_stop = true;
    EnableWindow(Item(cmdStop), FALSE);
}

}  // namespace tobbin
