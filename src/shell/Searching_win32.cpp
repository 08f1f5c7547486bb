#include "shell/Searching_win32.h"

#include "platform/Twips_win32.h"
#include "platform/Wide_win32.h"

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
    SetFocus(GetDlgItem(Handle(), cmdStop));
    UpdateWindow(Handle());
}

void SearchingPopup::Close() {
    if (Handle() == nullptr)
        return;
    EnableWindow(m_owner, TRUE);  // before the window goes, so that the owner comes forward
    Destroy();
}

void SearchingPopup::Show(const std::string& text) {
    const HWND label = GetDlgItem(Handle(), lblSearching);
    SetWindowTextW(label, Wide(text).c_str());
    UpdateWindow(label);
}

LRESULT SearchingPopup::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            OnCreate();
            return 0;
        case WM_COMMAND:
            m_stop = m_stop || LOWORD(wParam) == cmdStop;
            return 0;
        case WM_CLOSE:
            m_stop = true;  // The search closes the window when it has ended.
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void SearchingPopup::OnCreate() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0,
                               GetDpiForWindow(Handle()));
    m_font.Reset(CreateFontIndirectW(&metrics.lfMessageFont));
    RECT client;
    GetClientRect(Handle(), &client);
    const int margin = ScalePixels(12, Handle()), height = ScalePixels(24, Handle());
    const auto add = [&](const wchar_t* windowClass, const wchar_t* text, DWORD style, int number,
                         int x, int y, int width) {
        const HWND control =
            CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, x, y, width,
                            height, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
                            GetModuleHandleW(nullptr), nullptr);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Get()), TRUE);
    };
    const int button = ScalePixels(80, Handle());
    add(L"STATIC", L"", SS_NOPREFIX | SS_CENTER, lblSearching, margin, margin,
        client.right - 2 * margin);
    add(L"BUTTON", L"&Stop", WS_TABSTOP | BS_DEFPUSHBUTTON, cmdStop, (client.right - button) / 2,
        client.bottom - margin - height, button);
}

}  // namespace tobbin
