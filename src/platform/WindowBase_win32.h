#pragma once

#include <windows.h>

#include <string>

namespace tobbin {

// A window of the program's own: plain, child, MDI frame or MDI child. A derived class overrides
// HandleMessage and hands on what it does not handle to the one here.
//
// The object owns the window. When the window is destroyed from outside (its parent goes, the
// person closes it) the object lives on without one; its owner releases it later, from its message
// loop, never from within a message of that window. A derived class that must see the messages of
// its own destruction calls Destroy in its destructor, and so does every MDI child.
class WindowBase {
 public:
    WindowBase() = default;
    WindowBase(const WindowBase&) = delete;
    WindowBase& operator=(const WindowBase&) = delete;
    virtual ~WindowBase();

    HWND Handle() const { return m_handle; }

    // Destroys the window; an MDI child through its client window. Nothing when there is none.
    void Destroy();

 protected:
    // What windows of one class share. The name identifies the class within the program: the first
    // window created with it registers it, with the look given then.
    struct ClassLook {
        const wchar_t* name = L"";
        UINT style = 0;  // CS_ flags
        HICON icon = nullptr;
        HCURSOR cursor = LoadCursorW(nullptr, IDC_ARROW);
        HBRUSH background = nullptr;
    };

    // Place and size in pixels. `menu` is a menu handle, or a child's number.
    struct Placement {
        DWORD style = WS_OVERLAPPEDWINDOW;
        DWORD exStyle = 0;  // WS_EX_MDICHILD with the client window as parent makes an MDI child
        int x = CW_USEDEFAULT;
        int y = CW_USEDEFAULT;
        int width = CW_USEDEFAULT;
        int height = CW_USEDEFAULT;
        HWND parent = nullptr;
        HMENU menu = nullptr;
    };

    // Creates the window. Returns whether it is there; HandleMessage may have refused it.
    bool Create(const ClassLook& look, const std::string& caption, const Placement& placement);

    // Every message of the window, from WM_NCCREATE to WM_NCDESTROY. An exception that gets out of
    // it ends the program with a message. The one here calls OnCreate and OnDestroy and leaves
    // everything else to Default.
    virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // The session is to end in the middle of work that takes no input, and is asked to wait.
    virtual void OnSessionMustWait() {}

    // The window is there, not yet to be seen; false refuses it. And: it goes.
    virtual bool OnCreate() { return true; }
    virtual void OnDestroy() {}

    // Takes a place on the screen, in pixels, such as WM_DPICHANGED suggests.
    void MoveTo(const RECT& place);

    // What the system does with a message: DefWindowProcW unless a derived class says otherwise
    // (DefFrameProcW, DefMDIChildProcW).
    virtual LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

    // Adds a child control, of no size yet. Item finds it, or a dialog's, again by its number.
    HWND AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, int number);
    HWND Item(int number) const { return GetDlgItem(m_handle, number); }

    // For window procedures: the object of a window, null while there is none. With the window's
    // first message comes its `creator`, which it belongs to from then on.
    static WindowBase* MaybeOwner(HWND window, WindowBase* creator);
    LRESULT TakeMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
    bool MustWait(UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_handle = nullptr;
};

// Ends the program with a message about the exception in flight.
[[noreturn]] void StopOnException() noexcept;

// Runs a handler of a window message and lets no exception out of it: one that arrives here ends
// the program with a message.
template <typename Function>
auto GuardedHandler(Function function) noexcept -> decltype(function()) {
    try {
        return function();
    } catch (...) {
        StopOnException();
    }
}

}  // namespace tobbin
