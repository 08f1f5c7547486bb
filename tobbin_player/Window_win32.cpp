#include "tobbin_player/Window_win32.h"

#include <algorithm>
#include <vector>

#include "platform/AccessibleNames_win32.h"
#include "platform/Dpi_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "tobbin_player/Texts.h"
#include "util/PlayerMessages.h"
#include "util/Text.h"

namespace tobbin::player {
namespace {

constexpr wchar_t kOwnProperty[] = L"TobbinPlayer";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kPeriod = 250;         // milliseconds
constexpr UINT kAnswerLimit = 2'000;  // milliseconds
constexpr int kPositionUnit = 100;    // milliseconds of the position bar

constexpr UINT kMediaKeys[] = {VK_MEDIA_PLAY_PAUSE, VK_MEDIA_STOP, VK_MEDIA_NEXT_TRACK,
                               VK_MEDIA_PREV_TRACK};

}  // namespace

Window::Window(Player& player, const SystemText& text)
    : m_player(player),
      m_messages(player, text, [this] { PostMessageW(Handle(), WM_CLOSE, 0, 0); }),
      m_addPathMessage(RegisterWindowMessageW(kAddPathMessage)),
      m_trackNumberMessage(RegisterWindowMessageW(kTrackNumberMessage)) {}

Window::~Window() {
    Destroy();
}

bool Window::Open(bool isAskedFor) {
    ClassLook look;
    look.name = kClassName;
    look.icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN));
    look.background = GetSysColorBrush(COLOR_BTNFACE);
    Placement placement;
    placement.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    placement.exStyle = WS_EX_CONTROLPARENT;
    const int dpi = static_cast<int>(GetDpiForSystem());
    placement.width = MulDiv(440, dpi, 96);
    placement.height = MulDiv(420, dpi, 96);
    if (!Create(look, "Tobbin Player", placement))
        return false;
    ShowWindow(Handle(), isAskedFor ? SW_SHOWNORMAL : SW_SHOWMINNOACTIVE);
    return true;
}

HWND Window::MaybeOther() {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, kClassName, nullptr)) != nullptr)
        if (GetPropW(window, kOwnProperty) != nullptr)
            return window;
    return nullptr;
}

void Window::Send(HWND window, const std::vector<std::string>& files) {
    const auto send = [window](UINT message, WPARAM wParam, LPARAM lParam) {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerLimit, &answer);
    };
    constexpr LPARAM kClearList = 101;
    constexpr WPARAM kPlayCommand = 40045;
    send(WM_USER, 0, kClearList);
    for (const std::string& file : files) {
        std::wstring path = Wide(file);
        COPYDATASTRUCT data = {};
        data.dwData = RegisterWindowMessageW(kAddPathMessage);
        data.cbData = static_cast<DWORD>(path.size() * sizeof(wchar_t));
        data.lpData = path.data();
        send(WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    }
    send(WM_COMMAND, kPlayCommand, 0);
}

LRESULT Window::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == m_trackNumberMessage)
        return m_messages.OnTrackNumber(wParam);
    switch (message) {
        case WM_USER:
            return static_cast<LRESULT>(m_messages.OnUser(wParam, lParam));
        case WM_COPYDATA:
            return OnCopyData(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        case WM_COMMAND:
            if (!m_messages.OnCommand(wParam))
                OnControl(LOWORD(wParam));
            return 0;
        case WM_HOTKEY:
            OnHotKey(static_cast<int>(wParam));
            return 0;
        case WM_HSCROLL:
            OnScroll(reinterpret_cast<HWND>(lParam), LOWORD(wParam));
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_TIMER:
            if (wParam == kTimer)
                Refresh();
            return 0;
        case WM_SIZE:
            OnSize(LOWORD(lParam), HIWORD(lParam));
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {ScalePixels(360, Handle()),
                                                                     ScalePixels(300, Handle())};
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SETTINGCHANGE:
            UseLook();
            return 0;
        case WM_SETFOCUS:
            SetFocus(Item(kList));
            return 0;
        case WM_NEXTDLGCTL:  // a label's access key leads to the control behind it
            SetFocus(LOWORD(lParam) != 0 ? reinterpret_cast<HWND>(wParam)
                                         : GetNextDlgTabItem(Handle(), GetFocus(), wParam != 0));
            return 0;
        default:
            return WindowBase::HandleMessage(message, wParam, lParam);
    }
}

bool Window::OnCreate() {
    constexpr DWORD kLabel = WS_VISIBLE | SS_CENTERIMAGE;
    constexpr DWORD kPlain = kLabel | SS_NOPREFIX | SS_ENDELLIPSIS;
    constexpr DWORD kBar = WS_VISIBLE | WS_TABSTOP | TBS_HORZ | TBS_NOTICKS;
    AddControl(L"STATIC", L"", kPlain, kName);
    AddControl(L"STATIC", L"", kPlain, kStatus);
    AddControl(L"STATIC", L"P&osition", kLabel, kPositionLabel);
    AddControl(TRACKBAR_CLASSW, L"Position in the song", kBar, kPosition);
    AddControl(L"STATIC", L"", kPlain | SS_RIGHT, kTime);
    const auto button = [this](const wchar_t* text, int number) {
        AddControl(L"BUTTON", text, WS_VISIBLE | WS_TABSTOP, number);
    };
    button(L"P&revious", kPrevious);
    button(L"&Play", kPlay);
    button(L"Pa&use", kPause);
    button(L"&Stop", kStop);
    button(L"&Next", kNext);
    AddControl(L"STATIC", L"&Volume", kLabel, kVolumeLabel);
    AddControl(TRACKBAR_CLASSW, L"Volume", kBar, kVolume);
    AddControl(L"STATIC", L"Son&gs", kLabel, kListLabel);
    const HWND list = AddControl(WC_LISTVIEWW, L"Songs",
                                 WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA |
                                     LVS_NOCOLUMNHEADER | LVS_SHOWSELALWAYS,
                                 kList);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column = {};
    ListView_InsertColumn(list, 0, &column);
    ListView_InsertColumn(list, 1, &column);
    NameWindow(Item(kPosition), L"Position in the song");
    NameWindow(Item(kVolume), L"Volume");
    NameWindow(list, L"Songs");
    SendMessageW(Item(kVolume), TBM_SETRANGEMAX, FALSE, 255);
    SendMessageW(Item(kVolume), TBM_SETPAGESIZE, 0, 32);
    SendMessageW(Item(kVolume), TBM_SETLINESIZE, 0, 8);
    SendMessageW(Item(kPosition), TBM_SETLINESIZE, 0, 5'000 / kPositionUnit);
    SendMessageW(Item(kPosition), TBM_SETPAGESIZE, 0, 30'000 / kPositionUnit);
    UseLook();
    SetPropW(Handle(), kOwnProperty, reinterpret_cast<HANDLE>(1));
    for (const UINT key : kMediaKeys)  // one that another program has taken stays its own
        RegisterHotKey(Handle(), static_cast<int>(key), MOD_NOREPEAT, key);
    m_shown.volume = -1;
    Refresh();
    SetTimer(Handle(), kTimer, kPeriod, nullptr);
    return true;
}

void Window::OnDestroy() {
    RemovePropW(Handle(), kOwnProperty);
    PostQuitMessage(0);
}

void Window::UseLook() {
    UseMessageFont(Handle(), m_font);
    RECT client;
    GetClientRect(Handle(), &client);
    OnSize(client.right, client.bottom);
}

void Window::OnDpiChanged(const RECT& place) {
    MoveTo(place);
    UseLook();
}

void Window::OnSize(int width, int height) {
    if (width == 0)
        return;  // minimized
    const auto scale = [this](int pixels) { return ScalePixels(pixels, Handle()); };
    const int margin = scale(8), gap = scale(6), line = scale(20), barHeight = scale(26);
    const int label = scale(52), time = scale(92), buttonHeight = scale(25);
    const int inner = width - 2 * margin;
    const auto place = [this](int control, int x, int y, int w, int h) {
        SetWindowPos(Item(control), nullptr, x, y, std::max(w, 0), std::max(h, 0),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    };
    int y = margin;
    place(kName, margin, y, inner, line);
    place(kStatus, margin, y += line, inner, line);
    y += line + gap;
    place(kPositionLabel, margin, y, label, barHeight);
    place(kPosition, margin + label, y, inner - label - time, barHeight);
    place(kTime, margin + inner - time, y, time, barHeight);
    y += barHeight + gap;
    const int button = (inner - 4 * gap) / 5;
    for (int i = 0; i < 5; ++i)
        place(kPrevious + i, margin + i * (button + gap), y, button, buttonHeight);
    y += buttonHeight + gap;
    place(kVolumeLabel, margin, y, label, barHeight);
    place(kVolume, margin + label, y, std::min(inner - label, scale(180)), barHeight);
    y += barHeight;
    place(kListLabel, margin, y, inner, line);
    y += line;
    place(kList, margin, y, inner, height - y - margin);
    ListView_SetColumnWidth(Item(kList), 0, scale(22));
    ListView_SetColumnWidth(
        Item(kList), 1,
        inner - scale(26) - GetSystemMetricsForDpi(SM_CXVSCROLL, GetDpiForWindow(Handle())));
    InvalidateRect(Handle(), nullptr, TRUE);
}

LRESULT Window::OnCopyData(const COPYDATASTRUCT& data) {
    const std::size_t size = data.lpData == nullptr ? 0 : data.cbData;
    if (data.dwData == Messages::kAddFile)
        return m_messages.OnAddFile({static_cast<const char*>(data.lpData), size});
    if (data.dwData != m_addPathMessage || size % sizeof(char16_t) != 0)
        return 0;
    return m_messages.OnAddPath(
        {static_cast<const char16_t*>(data.lpData), size / sizeof(char16_t)});
}

void Window::OnControl(int control) {
    switch (control) {
        case kPrevious:
            m_player.Step(-1);
            break;
        case kPlay:
            m_player.Play();
            break;
        case kPause:
            m_player.Pause();
            break;
        case kStop:
            m_player.Stop();
            break;
        case kNext:
            m_player.Step(1);
            break;
        case IDOK:  // Enter
            if (GetFocus() == Item(kList))
                PlayFocused();
            break;
        default:
            return;
    }
    Refresh();
}

void Window::OnHotKey(int key) {
    switch (key) {
        case VK_MEDIA_PLAY_PAUSE:
            if (m_player.Now().status == Status::Stopped)
                m_player.Play();
            else
                m_player.Pause();
            break;
        case VK_MEDIA_STOP:
            m_player.Stop();
            break;
        case VK_MEDIA_NEXT_TRACK:
            m_player.Step(1);
            break;
        case VK_MEDIA_PREV_TRACK:
            m_player.Step(-1);
            break;
        default:
            break;
    }
}

void Window::OnScroll(HWND bar, int code) {
    if (bar == nullptr || (bar != Item(kPosition) && bar != Item(kVolume)))
        return;
    const int place = static_cast<int>(SendMessageW(bar, TBM_GETPOS, 0, 0));
    m_dragging = code != TB_ENDTRACK;
    if (bar == Item(kVolume))
        m_player.SetVolume(place);
    else if (!m_dragging)
        m_player.Seek(static_cast<std::int64_t>(place) * kPositionUnit);
}

LRESULT Window::OnNotify(NMHDR& header) {
    if (header.hwndFrom != Item(kList))
        return 0;
    switch (header.code) {
        case LVN_GETDISPINFOW:
            OnTextWanted(reinterpret_cast<NMLVDISPINFOW&>(header));
            break;
        case NM_DBLCLK:
            PlayFocused();
            break;
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_DELETE)
                RemoveSelected();
            break;
        default:
            break;
    }
    return 0;
}

void Window::OnTextWanted(NMLVDISPINFOW& info) {
    if ((info.item.mask & LVIF_TEXT) == 0 || info.item.iItem < 0)
        return;
    const auto track = static_cast<std::size_t>(info.item.iItem);
    const std::wstring text = info.item.iSubItem == 1  ? WideShown(m_player.NameOf(track))
                              : m_shown.track == track ? L"\u25BA"
                                                       : L"";
    lstrcpynW(info.item.pszText, text.c_str(), info.item.cchTextMax);
}

void Window::PlayFocused() {
    const int focused = ListView_GetNextItem(Item(kList), -1, LVNI_FOCUSED);
    if (focused >= 0)
        m_player.PlayTrack(static_cast<std::size_t>(focused));
    Refresh();
}

void Window::RemoveSelected() {
    std::vector<int> selected;
    for (int item = -1; (item = ListView_GetNextItem(Item(kList), item, LVNI_SELECTED)) >= 0;)
        selected.push_back(item);
    ListView_SetItemState(Item(kList), -1, 0, LVIS_SELECTED);
    for (auto item = selected.rbegin(); item != selected.rend(); ++item)
        m_player.Remove(static_cast<std::size_t>(*item));
    Refresh();
    if (!selected.empty())
        ListView_SetItemState(Item(kList), selected.front(), LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
}

void Window::SetText(int control, const std::string& text) {
    if (const std::string shown = ShownText(text); WindowText(Item(control)) != shown)
        SetWindowTextW(Item(control), Wide(shown).c_str());
}

void Window::Refresh() {
    const Display now = m_player.Now();
    const bool stopped = now.status == Status::Stopped;
    const std::string caption = stopped ? "Tobbin Player" : now.name + kCaptionEnd;
    if (caption != m_caption)
        SetWindowTextW(Handle(), WideShown(caption).c_str());
    m_caption = caption;
    SetText(kName, now.name);
    SetText(kStatus, StatusText(now));
    SetText(kTime, now.track ? TimeText(stopped ? 0 : now.position) + " / " + TimeText(now.length)
                             : std::string());
    const HWND position = Item(kPosition), list = Item(kList);
    if (!m_dragging) {
        SendMessageW(position, TBM_SETRANGEMAX, TRUE,
                     std::max<LPARAM>(now.length, 0) / kPositionUnit);
        SendMessageW(position, TBM_SETPOS, TRUE, std::max<LPARAM>(now.position, 0) / kPositionUnit);
        if (now.volume != m_shown.volume)
            SendMessageW(Item(kVolume), TBM_SETPOS, TRUE, now.volume);
    }
    const bool otherTrack = now.track != m_shown.track;
    const bool otherList = now.listVersion != m_shown.listVersion;
    m_shown = now;
    if (otherList)
        ListView_SetItemCountEx(list, static_cast<int>(now.tracks), LVSICF_NOSCROLL);
    if (otherTrack || otherList)
        InvalidateRect(list, nullptr, FALSE);
    if (now.track && ListView_GetNextItem(list, -1, LVNI_FOCUSED) < 0)
        ListView_SetItemState(list, static_cast<int>(*now.track), LVIS_FOCUSED, LVIS_FOCUSED);
    if (otherTrack && now.track)
        ListView_EnsureVisible(list, static_cast<int>(*now.track), FALSE);
}

}  // namespace tobbin::player
