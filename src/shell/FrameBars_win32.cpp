#include "shell/FrameBars_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/ImageStrip_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Twips_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/FrameCommands.h"

namespace tobbin {
namespace {

// Pixels at 96 to the inch.
constexpr int kJukeboxPartWidth = 200;
constexpr int kSelectionPartWidth = 300;

int HeightOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

}  // namespace

bool FrameToolbar::Create(HWND frame) {
    m_handle = CreateWindowExW(
        0, TOOLBARCLASSNAMEW, L"Toolbar1",
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_TOP, 0, 0,
        0, 0, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    SendMessageW(m_handle, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // Texts that are not shown beside the pictures become the tool-tips.
    SendMessageW(m_handle, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    OnDpiChanged();
    int picture = 0;
    for (int i = 0; i < kToolbarButtons; ++i) {
        const std::wstring tip = Wide(kToolTips[i]);
        TBBUTTON button = {};
        button.idCommand = IDM_TOOLBAR + i + 1;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = tip.empty() ? BTNS_SEP : BTNS_BUTTON;
        button.iBitmap = tip.empty() ? 0 : picture++;
        button.iString = tip.empty() ? 0 : reinterpret_cast<INT_PTR>(tip.c_str());
        SendMessageW(m_handle, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    SendMessageW(m_handle, TB_AUTOSIZE, 0, 0);
    return true;
}

void FrameToolbar::OnDpiChanged() {
    UniqueImageList pictures = LoadImageStrip(IDB_TOOLBAR, m_handle);
    SendMessageW(m_handle, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Get()));
    m_pictures = std::move(pictures);
    UniqueFont font = MessageFont(m_handle);
    UseFont(m_handle, font);
    m_font = std::move(font);
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

void FrameToolbar::Update(const std::function<bool(int button)>& isEnabled) {
    for (int button = 1; button <= kToolbarButtons; ++button) {
        if (*kToolTips[button - 1] == '\0')
            continue;
        const WPARAM command = static_cast<WPARAM>(IDM_TOOLBAR + button);
        const bool enabled = isEnabled(button);
        if ((SendMessageW(m_handle, TB_ISBUTTONENABLED, command, 0) != 0) != enabled)
            SendMessageW(m_handle, TB_ENABLEBUTTON, command, enabled);
    }
}

bool FrameStatusBar::Create(HWND frame) {
    m_handle =
        CreateWindowExW(0, STATUSCLASSNAMEW, L"",
                        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP | CCS_BOTTOM, 0, 0,
                        0, 0, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    OnDpiChanged();
    return true;
}

void FrameStatusBar::OnDpiChanged() {
    UniqueFont font = MessageFont(m_handle);
    UseFont(m_handle, font);
    m_font = std::move(font);
    OnSize();
}

int FrameStatusBar::Height() const {
    return HeightOf(m_handle);
}

void FrameStatusBar::OnSize() {
    SendMessageW(m_handle, WM_SIZE, 0, 0);
    RECT client = {};
    GetClientRect(m_handle, &client);
    const int selection = ScalePixels(kSelectionPartWidth, m_handle);
    const int jukebox = ScalePixels(kJukeboxPartWidth, m_handle);
    const int first = std::max<int>(client.right - selection - jukebox, client.right / 3);
    const int parts[kParts] = {first, std::max<int>(first, client.right - selection), -1};
    SendMessageW(m_handle, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(parts));
}

void FrameStatusBar::ShowPart(Part part, const std::string& text) {
    std::wstring wide = Wide(text);
    if (m_handle == nullptr || wide == m_texts[part])
        return;
    m_texts[part] = std::move(wide);
    SendMessageW(m_handle, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(m_texts[part].c_str()));
}

// At once: no event may get through before the work that the line tells of has ended.
void FrameStatusBar::ShowLine(const std::string& line) {
    ShowPart(kLine, line);
    UpdateWindow(m_handle);
}

void FrameStatusBar::ShowJukebox(const std::string& text) {
    ShowPart(kJukebox, text);
}

void FrameStatusBar::ShowSelection(const std::string& text) {
    ShowPart(kSelection, text);
}

}  // namespace tobbin
