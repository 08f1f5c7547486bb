#include "shell/FrameChildren_win32.h"

#include <utility>

#include "ui/WicDecoder_win32.h"

namespace tobbin {

namespace {

constexpr std::size_t kMostPictureBytes = 128 << 20;  // a dozen of a large window's

}  // namespace

FrameChildren::FrameChildren(Application& application, JukeboxWindowHost& host)
    : m_application(application),
      m_host(host),
      m_states(application.TheEnvironment().userSettings),
      m_pictures([] { return MakeSystemPictureMaker(); }, kMostPictureBytes) {}

JukeboxMdiChild& FrameChildren::Open(HWND mdiClient, Jukebox& jukebox) {
    const std::optional<WindowState> remembered = m_states.MaybeOf(jukebox.DaCaption());
    BOOL activeIsMaximized = FALSE;
    SendMessageW(mdiClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&activeIsMaximized));
    const bool maximized = OpensMaximized(m_opened++ == 0, activeIsMaximized != FALSE, remembered);
    Child& child = *m_children.emplace_back(std::make_unique<Child>());
    child.jukebox = &jukebox;
    child.controller = std::make_unique<JukeboxWindow>(m_application.Tools(), jukebox, m_host);
    child.window = std::make_unique<JukeboxMdiChild>(*child.controller, m_pictures);
    child.loadedNumber =
        m_application.Windows().Add("frmMain", [window = child.window.get()] { window->Close(); });
    child.window->Open(mdiClient, maximized, remembered ? &*remembered : nullptr,
                       [this, &child] { OnClosed(child); });
    return *child.window;
}

void FrameChildren::OnClosed(Child& child) {
    KeepState(child);
    child.closed = true;
    m_application.Windows().Remove(child.loadedNumber);
}

void FrameChildren::KeepState(const Child& child) {
    m_states.Keep(child.jukebox->DaCaption(), child.window->State());
}

void FrameChildren::KeepStates() {
    for (const auto& child : m_children)
        if (!child->closed)
            KeepState(*child);
}

void FrameChildren::ReleaseClosed() {
    for (std::size_t i = m_children.size(); i-- > 0;) {
        if (!m_children[i]->closed)
            continue;
        const std::unique_ptr<Child> child = std::move(m_children[i]);
        m_children.erase(m_children.begin() + static_cast<std::ptrdiff_t>(i));
        child->window.reset();
        child->controller.reset();
        m_application.RemoveJukebox(*child->jukebox);
    }
}

JukeboxMdiChild* FrameChildren::MaybeAt(HWND window) const {
    for (const auto& child : m_children)
        if (!child->closed && window != nullptr && child->window->Handle() == window)
            return child->window.get();
    return nullptr;
}

void FrameChildren::ForEach(const std::function<void(JukeboxMdiChild&)>& call) const {
    for (std::size_t i = 0; i < m_children.size(); ++i)
        if (!m_children[i]->closed)
            call(*m_children[i]->window);
}

}  // namespace tobbin
