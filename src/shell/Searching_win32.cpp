#include "shell/Searching_win32.h"

#include <commctrl.h>

#include <iterator>
#include <string_view>

#include "platform/Dpi_win32.h"
#include "platform/SystemFont_win32.h"

namespace tobbin {
namespace {

constexpr int kWidth = 320, kHeight = 120;  // pixels at 96 to the inch

}  // namespace

void SearchingPopup::Open() {
    ClassLook look;
    look.name = kClassName;
    look.background = GetSysColorBrush(COLOR_BTNFACE);
    RECT around = {};
    GetWindowRect(m_owner, &around);
    Placement placement;
    placement.style = WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN;
    placement.exStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
    placement.width = ScalePixels(kWidth, m_owner);
    placement.height = ScalePixels(kHeight, m_owner);
    placement.x = (around.left + around.right - placement.width) / 2;
    placement.y = (around.top + around.bottom - placement.height) / 2;
    placement.parent = m_owner;
    m_stop = false;
    if (!Create(look, "Searching", placement))
        return;
    EnableWindow(m_owner, FALSE);
    ShowWindow(Handle(), SW_SHOW);
    SetFocus(Item(cmdStop));
    UpdateWindow(Handle());
}

void SearchingPopup::Close() {
    if (Handle() == nullptr)
        return;
    EnableWindow(m_owner, TRUE);  // before the window goes, so that the owner comes forward
    Destroy();
}

void SearchingPopup::ShowSteps(const std::string& text, const StepsDone& steps) {
    m_label.Show(Handle(), text, steps);
}

bool SearchingPopup::TranslateKeys(MSG& message) {
    const HWND window = GetAncestor(message.hwnd, GA_ROOT);
    wchar_t name[32] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wstring_view(name) == kClassName && IsDialogMessageW(window, &message);
}

LRESULT SearchingPopup::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_DPICHANGED:  // the font first: the new size lays out
            UseFonts();
            MoveTo(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_TIMER:
            m_label.OnTimer(Handle());
            return 0;
        case WM_COMMAND:
            m_stop = m_stop || LOWORD(wParam) == cmdStop || LOWORD(wParam) == IDCANCEL;
            return 0;
        case WM_CLOSE:
            m_stop = true;  // The search closes the window when it has ended.
            return 0;
        default:
            return WindowBase::HandleMessage(message, wParam, lParam);
    }
}

bool SearchingPopup::OnCreate() {
    AddControl(L"STATIC", L"", WS_VISIBLE | SS_NOPREFIX | SS_CENTER, lblSearching);
    const HWND bar = AddControl(PROGRESS_CLASSW, nullptr, WS_VISIBLE | PBS_MARQUEE, barSearching);
    AddControl(L"BUTTON", L"&Stop", WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, cmdStop);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    UseFonts();
    return true;
}

void SearchingPopup::UseFonts() {
    m_font = MessageFont(Handle());
    UseFont(Item(lblSearching), m_font);
    UseFont(Item(cmdStop), m_font);
}

void SearchingPopup::Layout() {
    RECT client;
    GetClientRect(Handle(), &client);
    const int margin = ScalePixels(12, Handle()), height = ScalePixels(24, Handle());
    const int button = ScalePixels(80, Handle());
    const int width = client.right - 2 * margin;
    MoveWindow(Item(lblSearching), margin, margin, width, height, TRUE);
    MoveWindow(Item(barSearching), margin, margin + height, width, height / 3, TRUE);
    MoveWindow(Item(cmdStop), (client.right - button) / 2, client.bottom - margin - height, button,
               height, TRUE);
}

}  // namespace tobbin
