#include "Actions_win32.h"

#include <commctrl.h>

#include <cstdio>
#include <functional>
#include <stdexcept>

#include "driver/RemoteControls_win32.h"
#include "resource.h"
#include "ui/Commands.h"

namespace tobbin::bench {
namespace {

using driver::Ask;

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

std::vector<HWND> WindowsIn(HWND parent) {
    std::vector<HWND> found;
    EnumChildWindows(
        parent,
        [](HWND window, LPARAM list) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

// Whether the condition comes true within a time, in milliseconds.
bool ComesTrue(double limit, const std::function<bool()>& condition) {
    const double begin = Now();
    while (!condition()) {
        if (Now() - begin > limit)
            return false;
        Sleep(2);
    }
    return true;
}

void WaitFor(const char* what, const std::function<bool()>& condition) {
    constexpr double kLimit = 120'000;
    if (!ComesTrue(kLimit, condition))
        throw std::runtime_error(std::string("waited in vain for ") + what);
}

HWND MaybeVisible(const wchar_t* windowClass) {
    const HWND window = FindWindowW(windowClass, nullptr);
    return IsWindowVisible(window) ? window : nullptr;
}

// What the mouse does comes through the system, as with a person.
void Click(POINT place, bool withShift) {
    const auto mouse = [&](DWORD what) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = what;
        SendInput(1, &input, sizeof(input));
    };
    const auto shift = [&](DWORD flags) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = VK_SHIFT;
        input.ki.dwFlags = flags;
        SendInput(1, &input, sizeof(input));
    };
    SetCursorPos(place.x, place.y);
    if (withShift)
        shift(0);
    mouse(MOUSEEVENTF_LEFTDOWN);
    mouse(MOUSEEVENTF_LEFTUP);
    if (withShift)
        shift(KEYEVENTF_KEYUP);
}

}  // namespace

Actions::Actions(DWORD process) : m_frame(MaybeMainWindow(process)) {
    if (m_frame == nullptr)
        throw std::runtime_error("the program has no window");
}

HWND Actions::Pane(const wchar_t* controlClass) const {
    const HWND client = FindWindowExW(m_frame, nullptr, L"MDIClient", nullptr);
    const auto active = reinterpret_cast<HWND>(Ask(client, WM_MDIGETACTIVE, 0, 0));
    for (const HWND window : WindowsIn(active))
        if (ClassOf(window) == controlClass)
            return window;
    throw std::runtime_error("the active window has no such pane");
}

void Actions::WaitUntilShown() const {
    PostMessageW(m_frame, WM_NULL, 0, 0);
    WaitFor("the painting", [&] {
        Ask(m_frame, WM_NULL, 0, 0);
        for (const HWND window : WindowsIn(m_frame))
            if (IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE))
                return false;
        return !GetUpdateRect(m_frame, nullptr, FALSE);
    });
}

double Actions::Shown(double begin) const {
    WaitUntilShown();
    return Now() - begin;
}

LPARAM Actions::ItemAt(const std::vector<std::wstring>& path) const {
    const HWND tree = Pane(WC_TREEVIEWW);
    driver::Remote<TVITEMW> remote(tree);
    LPARAM item = Ask(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0);
    for (std::size_t level = 0; item != 0;) {
        TVITEMW question = {};
        question.mask = TVIF_TEXT;
        question.hItem = reinterpret_cast<HTREEITEM>(item);
        question.pszText = remote.Text();
        question.cchTextMax = driver::textLength;
        remote.Ask(TVM_GETITEMW, 0, question);
        if (path[level] != remote.Answer()) {
            item = Ask(tree, TVM_GETNEXTITEM, TVGN_NEXT, item);
        } else {
            if (++level == path.size())
                return item;
            Ask(tree, TVM_EXPAND, TVE_EXPAND, item);
            item = Ask(tree, TVM_GETNEXTITEM, TVGN_CHILD, item);
        }
    }
    throw std::runtime_error("no such folder");
}

double Actions::SelectFolder(const std::vector<std::wstring>& path) {
    const LPARAM item = ItemAt(path);
    const HWND tree = Pane(WC_TREEVIEWW);
    WaitUntilShown();
    const double begin = Now();
    Ask(tree, TVM_SELECTITEM, TVGN_CARET, item);
    return Shown(begin);
}

double Actions::ToggleFolder(const std::vector<std::wstring>& path) {
    const LPARAM item = ItemAt(path);
    const HWND tree = Pane(WC_TREEVIEWW);
    WaitUntilShown();
    const double begin = Now();
    Ask(tree, TVM_EXPAND, TVE_TOGGLE, item);
    return Shown(begin);
}

double Actions::ClickHeading() {
    const auto header = reinterpret_cast<HWND>(Ask(Pane(WC_LISTVIEWW), LVM_GETHEADER, 0, 0));
    constexpr LPARAM kPlace = MAKELPARAM(40, 8);
    WaitUntilShown();
    const double begin = Now();
    Ask(header, WM_LBUTTONDOWN, MK_LBUTTON, kPlace);
    Ask(header, WM_LBUTTONUP, 0, kPlace);
    return Shown(begin);
}

double Actions::PressKey(WPARAM key) {
    const HWND list = Pane(WC_LISTVIEWW);
    WaitUntilShown();
    const double begin = Now();
    Ask(list, WM_KEYDOWN, key, 1);
    Ask(list, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    return Shown(begin);
}

double Actions::OpenFind() {
    const double begin = Now();
    PostMessageW(m_frame, WM_COMMAND, static_cast<WPARAM>(Command::Find), 0);
    WaitFor("the find dialog", [] { return MaybeVisible(L"frmFind") != nullptr; });
    return Shown(begin);
}

HWND Actions::TypeIntoFind(const std::wstring& text) {
    const HWND dialog = MaybeVisible(L"frmFind");
    Ask(GetDlgItem(dialog, IDC_FIND_TEXT1), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    WaitUntilShown();
    return dialog;
}

double Actions::Find(const std::wstring& text) {
    const HWND dialog = TypeIntoFind(text);
    const double begin = Now();
    Ask(dialog, WM_COMMAND, MAKEWPARAM(IDC_FIND_COMMAND1, BN_CLICKED), 0);
    return Shown(begin);
}

double Actions::FindInVain(const std::wstring& text) {
    const HWND dialog = TypeIntoFind(text);
    const double begin = Now();
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_FIND_COMMAND1, BN_CLICKED), 0);
    WaitFor("the box", [] { return MaybeVisible(L"#32770") != nullptr; });
    const double end = Now();
    PostMessageW(MaybeVisible(L"#32770"), WM_COMMAND, IDOK, 0);
    WaitFor("the end of the box", [] { return MaybeVisible(L"#32770") == nullptr; });
    return end - begin;
}

void Actions::CloseFind() {
    PostMessageW(MaybeVisible(L"frmFind"), WM_COMMAND, IDCANCEL, 0);
    WaitFor("the end of the dialog", [] { return MaybeVisible(L"frmFind") == nullptr; });
}

void Actions::SelectEvery(int n, bool inverse) {
    const HWND list = Pane(WC_LISTVIEWW);
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED;
    state.state = inverse ? LVIS_SELECTED : 0;
    driver::Remote<LVITEMW> remote(list);
    remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), state);
    state.state ^= LVIS_SELECTED;
    for (int row = 0; row < RowCount(); row += n)
        remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), state);
    WaitUntilShown();
}

double Actions::SelectAllByMouse() {
    const HWND list = Pane(WC_LISTVIEWW);
    SetForegroundWindow(m_frame);
    const int rows = RowCount();
    constexpr int kTries = 5;  // Now and then a click does not do what it should.
    for (int i = 0; i < kTries; ++i) {
        const POINT first = driver::PlaceOfRow(list, 0);
        WaitUntilShown();
        Click(first, false);
        WaitFor("one row", [&] { return SelectedCount() == 1; });
        const POINT last = driver::PlaceOfRow(list, rows - 1);
        WaitUntilShown();
        const double begin = Now();
        Click(last, true);
        if (ComesTrue(5'000, [&] { return SelectedCount() == rows; }))
            return Shown(begin);
        std::fprintf(stderr, "the mouse selected %d rows\n", SelectedCount());
    }
    throw std::runtime_error("the mouse does not select all rows");
}

double Actions::Command(int command) {
    WaitUntilShown();
    const double begin = Now();
    Ask(m_frame, WM_COMMAND, static_cast<WPARAM>(command), 0);
    return Shown(begin);
}

double Actions::StopCommand(int command, int afterMilliseconds) {
    PostMessageW(m_frame, WM_COMMAND, static_cast<WPARAM>(command), 0);
    WaitFor("the searching window", [] { return MaybeVisible(L"frmSearching") != nullptr; });
    Sleep(static_cast<DWORD>(afterMilliseconds));
    const HWND window = MaybeVisible(L"frmSearching");
    if (window == nullptr)
        throw std::runtime_error("the search was over before it could be stopped");
    const double begin = Now();
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(102, BN_CLICKED), 0);
    WaitFor("the end of the search", [] { return MaybeVisible(L"frmSearching") == nullptr; });
    return Shown(begin);
}

int Actions::RowCount() const {
    return static_cast<int>(Ask(Pane(WC_LISTVIEWW), LVM_GETITEMCOUNT, 0, 0));
}

int Actions::SelectedCount() const {
    return static_cast<int>(Ask(Pane(WC_LISTVIEWW), LVM_GETSELECTEDCOUNT, 0, 0));
}

}  // namespace tobbin::bench
