#include "shell/FrameBars_win32.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "platform/AccessibleNames_win32.h"
#include "platform/Dpi_win32.h"
#include "platform/ImageStrip_win32.h"
#include "platform/ProgressBar_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

// Pixels at 96 to the inch.
constexpr int kJukeboxPartWidth = 200;
constexpr int kSelectionPartWidth = 300;
constexpr int kBarWidth = 120;
constexpr int kBarMargin = 3;
constexpr int kTextMargin = 12;  // before and behind a text
constexpr int kGripWidth = 20;

int HeightOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

}  // namespace

bool FrameToolbar::Create(HWND frame) {
    m_handle = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"Toolbar1",
                               WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT |
                                   TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP,
                               0, 0, 0, 0, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    SendMessageW(m_handle, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // Texts that are not shown beside the pictures become the tool-tips. That is so with
    // TBSTYLE_LIST only ("Toolbar Extended Styles"); else they would stand under the pictures.
    SendMessageW(m_handle, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    OnDpiChanged();
    int picture = 0;
    for (int index = 1, last = 0; index <= kMostPositions; ++index) {
        const CommandRow* const row = MaybeRowOfButton(index);
        if (row == nullptr)
            continue;
        TBBUTTON button = {};
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_SEP;
        if (std::exchange(last, index) != index - 1)
            SendMessageW(m_handle, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
        const std::wstring tip = Wide(row->button.toolTip);
        button.idCommand = kToolbarNumber + index;
        button.fsStyle = BTNS_BUTTON;
        button.iBitmap = picture++;
        button.iString = reinterpret_cast<INT_PTR>(tip.c_str());
        SendMessageW(m_handle, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    SendMessageW(m_handle, TB_AUTOSIZE, 0, 0);
    return true;
}

void FrameToolbar::OnDpiChanged() {
    UniqueImageList pictures = LoadImageStrip(IDB_TOOLBAR, m_handle);
    SendMessageW(m_handle, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Get()));
    m_pictures = std::move(pictures);
    UseMessageFont(m_handle, m_font);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(m_pictures.Get(), &width, &height);
    SendMessageW(m_handle, TB_SETBUTTONSIZE, 0,
                 MAKELPARAM(width + ScalePixels(8, m_handle), height + ScalePixels(8, m_handle)));
    SendMessageW(m_handle, TB_AUTOSIZE, 0, 0);
}

int FrameToolbar::Height() const {
    return HeightOf(m_handle);
}

void FrameToolbar::Update(const std::function<bool(Command)>& isEnabled) {
    for (const CommandRow& row : kCommands) {
        if (row.button.index == 0)
            continue;
        const WPARAM number = static_cast<WPARAM>(kToolbarNumber + row.button.index);
        const bool enabled = isEnabled(row.command);
        if ((SendMessageW(m_handle, TB_ISBUTTONENABLED, number, 0) != 0) != enabled)
            SendMessageW(m_handle, TB_ENABLEBUTTON, number, enabled);
    }
}

bool FrameStatusBar::Create(HWND frame) {
    m_handle = CreateWindowExW(
        0, STATUSCLASSNAMEW, L"",
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | SBARS_SIZEGRIP | CCS_BOTTOM, 0,
        0, 0, 0, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    m_bar = CreateWindowExW(0, PROGRESS_CLASSW, L"", WS_CHILD | PBS_SMOOTH, 0, 0, 0, 0, m_handle,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
    NameWindow(m_bar, L"Progress");
    OnDpiChanged();
    return true;
}

void FrameStatusBar::OnDpiChanged() {
    UseMessageFont(m_handle, m_font);
    OnSize();
}

int FrameStatusBar::Height() const {
    return HeightOf(m_handle);
}

void FrameStatusBar::OnSize() {
    SendMessageW(m_handle, WM_SIZE, 0, 0);
    PlaceParts();
}

// A line that is longer than its part covers the next one, and where it must, the last one, too.
void FrameStatusBar::PlaceParts() {
    RECT client = {};
    GetClientRect(m_handle, &client);
    const int room = client.right - ScalePixels(kGripWidth, m_handle);
    const int selection = client.right - ScalePixels(kSelectionPartWidth, m_handle);
    const int usual =
        std::max<int>(selection - ScalePixels(kJukeboxPartWidth, m_handle), client.right / 3);
    const int wanted = WidthOfLine();
    const int line = wanted <= usual ? usual : std::max(selection, std::min(wanted, room));
    const int parts[kParts] = {line, std::max(line, selection), -1};
    SendMessageW(m_handle, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(parts));
    RECT part = {};
    SendMessageW(m_handle, SB_GETRECT, kLine, reinterpret_cast<LPARAM>(&part));
    const int margin = ScalePixels(kBarMargin, m_handle);
    MoveWindow(m_bar, part.right - WidthOfBar(), part.top + margin, WidthOfBar() - margin,
               part.bottom - part.top - 2 * margin, TRUE);
}

// What the line's text takes, with the bar behind it.
int FrameStatusBar::WidthOfLine() const {
    const HDC dc = GetDC(m_handle);
    const HGDIOBJ old = SelectObject(dc, m_font.Get());
    const std::wstring& text = m_texts[kLine];
    SIZE size = {};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, old);
    ReleaseDC(m_handle, dc);
    return size.cx + ScalePixels(kTextMargin, m_handle) +
           (IsWindowVisible(m_bar) ? WidthOfBar() : 0);
}

int FrameStatusBar::WidthOfBar() const {
    return ScalePixels(kBarWidth, m_handle);
}

void FrameStatusBar::ShowPart(Part part, const std::string& text) {
    std::wstring wide = WideShown(text);
    if (m_handle == nullptr || wide == m_texts[part])
        return;
    m_texts[part] = std::move(wide);
    SendMessageW(m_handle, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(m_texts[part].c_str()));
}

// At once: no event may get through before the work that the line tells of has ended.
void FrameStatusBar::ShowLine(const std::string& line, const StepsDone& steps) {
    if (m_handle == nullptr)
        return;
    ShowPart(kLine, line);
    ShowWindow(m_bar, steps.all > 0 ? SW_SHOWNA : SW_HIDE);
    PlaceParts();
    if (steps.all > 0)
        ShowStepsIn(m_bar, steps);
    UpdateWindow(m_handle);
}

void FrameStatusBar::ShowJukebox(const std::string& text) {
    ShowPart(kJukebox, text);
}

void FrameStatusBar::ShowSelection(const std::string& text) {
    ShowPart(kSelection, text);
}

}  // namespace tobbin
