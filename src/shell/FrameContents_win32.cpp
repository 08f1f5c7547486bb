#include "shell/FrameContents_win32.h"

#include <utility>

#include "platform/HintText_win32.h"
#include "shell/AboutDialog_win32.h"
#include "shell/Searching_win32.h"
#include "shell/TipDialog_win32.h"
#include "shell/Tips.h"
#include "ui/FindDialog_win32.h"
#include "ui/ListedSongs.h"
#include "ui/PictureDialog_win32.h"

namespace tobbin {
namespace {

constexpr char kNoJukebox[] = "No jukebox is open.\nCtrl+O opens one, Ctrl+N makes one.";

}  // namespace

FrameContents::FrameContents(Application& application)
    : m_application(application),
      m_player(application),
      m_commands(application, *this),
      m_children(application, *this) {}

bool FrameContents::CreateIn(HWND frame, HMENU windowList) {
    CLIENTCREATESTRUCT creation = {};
    creation.hWindowMenu = windowList;
    creation.idFirstChild = kFirstChildNumber;
    m_frame = frame;
    m_client = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"MDICLIENT", nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0,
        0, 0, frame, nullptr, GetModuleHandleW(nullptr), &creation);
    m_player.SetWindows(frame, m_client);
    if (m_client != nullptr)
        m_clientMessages.Attach(m_client);
    return m_client != nullptr;
}

// With no window in it, it says how to come to one.
LRESULT FrameContents::OnClientMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = m_clientMessages.Default(message, wParam, lParam);
    if (m_clientIsEmpty && message == WM_SIZE)
        InvalidateRect(m_client, nullptr, TRUE);
    if (m_clientIsEmpty && message == WM_ERASEBKGND) {
        RECT place = {};
        GetClientRect(m_client, &place);
        PaintHint(reinterpret_cast<HDC>(wParam), m_client, place, kNoJukebox,
                  GetSysColor(COLOR_WINDOWTEXT));
    }
    return result;
}

void FrameContents::UseLook(int oldDpi, int dpi) {
    for (HWND child = GetWindow(m_client, GW_CHILD); child != nullptr && oldDpi != dpi;
         child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place = {};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, m_client, reinterpret_cast<POINT*>(&place), 2);
        if (!IsIconic(child) && !IsZoomed(child))
            MoveWindow(child, MulDiv(place.left, dpi, oldDpi), MulDiv(place.top, dpi, oldDpi),
                       MulDiv(place.right - place.left, dpi, oldDpi),
                       MulDiv(place.bottom - place.top, dpi, oldDpi), TRUE);
    }
    m_children.ForEach([](JukeboxMdiChild& child) { child.OnDpiChanged(); });
    m_player.OnDpiChanged(oldDpi, dpi);
}

void FrameContents::ReleaseClosed() {
    const bool isEmpty = GetWindow(m_client, GW_CHILD) == nullptr;
    if (std::exchange(m_clientIsEmpty, isEmpty) != isEmpty)
        InvalidateRect(m_client, nullptr, TRUE);
    m_children.ReleaseClosed();
    m_player.ReleaseClosed();
}

void FrameContents::OpenFiles(const std::vector<std::string>& paths) {
    m_filesToOpen.insert(m_filesToOpen.end(), paths.begin(), paths.end());
    PostMessageW(m_frame, WM_NULL, 0, 0);  // wakes the message loop, which opens them
}

void FrameContents::OpenWaitingFiles() {
    while (!m_filesToOpen.empty() && IsWindowVisible(m_frame) && IsWindowEnabled(m_frame)) {
        m_commands.Files().OpenFromOutside(std::exchange(m_filesToOpen, {}));
        onChanged();
    }
}

HWND FrameContents::ActiveChild() const {
    if (m_client == nullptr)
        return nullptr;
    return m_player.IsPanelActive()
               ? m_player.Panel()
               : reinterpret_cast<HWND>(SendMessageW(m_client, WM_MDIGETACTIVE, 0, 0));
}

JukeboxWindow* FrameContents::MaybeActiveJukebox() const {
    JukeboxMdiChild* const child = m_children.MaybeAt(ActiveChild());
    return child != nullptr ? &child->Controller() : nullptr;
}

JukeboxWindow* FrameContents::MaybeVisibleJukebox(
    const std::function<bool(const JukeboxWindow&)>& which) const {
    JukeboxWindow* found = nullptr;
    m_children.ForEach([&](JukeboxMdiChild& child) {
        if (child.IsVisible() && which(child.Controller()))
            found = &child.Controller();
    });
    return found;
}

bool FrameContents::HasChildren() const {
    return ActiveChild() != nullptr;
}

bool FrameContents::HasMinimizedChildren() const {
    for (HWND child = GetWindow(m_client, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (IsIconic(child))
            return true;
    return false;
}

void FrameContents::OpenJukeboxWindow(Jukebox& jukebox) {
    if (!IsWindow(m_client))
        return;
    m_children.Open(m_client, jukebox).Controller().SelectFirstFolder();
    onChanged();
}

bool FrameContents::PlayerCheck() {
    return m_player.Requests().PlayerCheck();
}

void FrameContents::MinimizePlayerPanel() {
    m_player.MinimizePanel();
}

void FrameContents::MinimizeActivePlayerPanel() {
    if (m_player.IsPanelActive())
        m_player.MinimizePanel();
}

void FrameContents::Arrange(Arrangement arrangement) {
    switch (arrangement) {
        case Arrangement::Cascade:
            SendMessageW(m_client, WM_MDICASCADE, 0, 0);
            break;
        case Arrangement::TileHorizontally:
            SendMessageW(m_client, WM_MDITILE, MDITILE_HORIZONTAL, 0);
            break;
        case Arrangement::Icons:
            SendMessageW(m_client, WM_MDIICONARRANGE, 0, 0);
            break;
    }
}

void FrameContents::ShowAbout() {
    AboutDialog(m_application.TheEnvironment().programs,
                m_application.Settings().LocOfGroupingDir())
        .Show(m_frame);
}

void FrameContents::ShowTips() {
    Tips tips(m_application.TheEnvironment(), m_application.Folders().application);
    tips.OpenNoMatterWhat(true);
    TipDialog(tips).Show(m_frame);
}

void FrameContents::ShowFind() {
    FindDialog(m_commands.Find(), [this] {
        JukeboxMdiChild* const child = m_children.MaybeAt(ActiveChild());
        return child != nullptr ? child->Explorer().List().PlaceOfFocusedRow() : RECT{};
    }).Show(m_frame);
}

void FrameContents::ShowTipsAtStartUp() {
    Tips tips(m_application.TheEnvironment(), m_application.Folders().application);
    TipDialog(tips).Show(m_frame);
}

std::unique_ptr<SearchingWindow> FrameContents::MakeSearchingWindow() {
    return std::make_unique<SearchingPopup>(m_frame);
}

void FrameContents::CloseFrame() {
    SendMessageW(m_frame, WM_CLOSE, 0, 0);
}

void FrameContents::PlayAllSongsInFolder(JukeboxWindow& window) {
    m_player.Requests().PlayAllSongsInFolder(ListedSongs(window));
}

void FrameContents::PlaySelectedSongs(JukeboxWindow& window) {
    m_player.Requests().PlaySelectedSongs(ListedSongs(window));
}

void FrameContents::ChangeBackgroundPicture(JukeboxWindow& /*window*/) {
    PictureChoice choice(m_application.TheEnvironment(), m_application.Settings(),
                         [this] { return MaybeActiveJukebox(); });
    PictureDialog(choice, m_children.Pictures()).Show(m_frame);
}

void FrameContents::PrepareToClose(JukeboxWindow& window, bool save) {
    m_commands.Files().PrepareToClose(window, save);
}

void FrameContents::OnSelectionChanged(JukeboxWindow& /*window*/) {
    onChanged();
}

}  // namespace tobbin
