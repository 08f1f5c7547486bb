#include "platform/WindowBase_win32.h"

#include <exception>

#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"
#include "util/Check.h"

namespace tobbin {
namespace {

// The object that a window under creation belongs to. An MDI child gets it wrapped once more.
WindowBase* CreatorOf(LPARAM lParam) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    if ((creation->dwExStyle & WS_EX_MDICHILD) == 0)
        return static_cast<WindowBase*>(creation->lpCreateParams);
    const auto* const child = static_cast<const MDICREATESTRUCTW*>(creation->lpCreateParams);
    return reinterpret_cast<WindowBase*>(child->lParam);
}

// Whether a message leads to memory that is not there: it is another program's. The system carries
// over, or refuses, all other messages with an address, but this one it lets through as it is.
bool HasForeignAddress(UINT message, LPARAM lParam) {
    RECT place;
    return message == WM_DPICHANGED &&
           !ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(lParam), &place,
                              sizeof(place), nullptr);
}

}  // namespace

void StopOnException() noexcept {
    try {
        throw;
    } catch (const std::exception& exception) {
        EndProgram(std::string("Tobbin has to stop: ") + exception.what() + ".");
    } catch (...) {
        EndProgram("Tobbin has to stop: an unknown error.");
    }
}

WindowBase::~WindowBase() {
    Destroy();
}

void WindowBase::Destroy() {
    if (m_handle == nullptr)
        return;
    if ((GetWindowLongPtrW(m_handle, GWL_EXSTYLE) & WS_EX_MDICHILD) != 0)
        SendMessageW(GetParent(m_handle), WM_MDIDESTROY, reinterpret_cast<WPARAM>(m_handle), 0);
    else
        DestroyWindow(m_handle);
}

bool WindowBase::Create(const ClassLook& look, const std::string& caption,
                        const Placement& placement) {
    CHECK(m_handle == nullptr);
    const HINSTANCE program = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof(windowClass);
    if (!GetClassInfoExW(program, look.name, &windowClass)) {
        windowClass = {};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.style = look.style;
        windowClass.lpfnWndProc = &WindowBase::Thunk;
        windowClass.hInstance = program;
        windowClass.hIcon = look.icon;
        windowClass.hCursor = look.cursor;
        windowClass.hbrBackground = look.background;
        windowClass.lpszClassName = look.name;
        if (!RegisterClassExW(&windowClass))
            return false;
    }
    return CreateWindowExW(placement.exStyle, look.name, Wide(caption).c_str(), placement.style,
                           placement.x, placement.y, placement.width, placement.height,
                           placement.parent, placement.menu, program, this) != nullptr;
}

LRESULT WindowBase::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate() ? 0 : -1;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void WindowBase::MoveTo(const RECT& place) {
    SetWindowPos(m_handle, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT WindowBase::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(m_handle, message, wParam, lParam);
}

HWND WindowBase::AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style,
                            int number) {
    return CreateWindowExW(0, windowClass, text, WS_CHILD | style, 0, 0, 0, 0, m_handle,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
                           GetModuleHandleW(nullptr), nullptr);
}

WindowBase* WindowBase::MaybeOwner(HWND window, WindowBase* creator) {
    // Another program can send what it likes, but not before the window has its owner.
    const bool isNew = GetWindowLongPtrW(window, GWLP_USERDATA) == 0;
    if (creator != nullptr && isNew) {
        creator->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creator));
    }
    return reinterpret_cast<WindowBase*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// In the middle of work another program's messages still arrive. A command could change what is
// just being saved, and the end of the session would cut it short.
bool WindowBase::MustWait(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool asksForCommand =
        message == WM_COMMAND || message == WM_SYSCOMMAND || message == WM_CLOSE;
    if (!WindowsOnlyAnswer() || (!asksForCommand && message != WM_QUERYENDSESSION))
        return false;
    if (asksForCommand)
        PostMessageW(m_handle, message, wParam, lParam);
    else
        OnSessionMustWait();
    return true;
}

LRESULT WindowBase::TakeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (MustWait(message, wParam, lParam) || HasForeignAddress(message, lParam))
        return FALSE;
    const LRESULT result = GuardedHandler([&] { return HandleMessage(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
        m_handle = nullptr;
    }
    return result;
}

LRESULT CALLBACK WindowBase::Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowBase* const self =
        MaybeOwner(window, message == WM_NCCREATE ? CreatorOf(lParam) : nullptr);
    return self != nullptr ? self->TakeMessage(message, wParam, lParam)
                           : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace tobbin
