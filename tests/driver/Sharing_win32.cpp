#include "Sharing_win32.h"

#include <windows.h>

#include <cstdio>
#include <string>

#include "platform/ComPtr_win32.h"
#include "platform/DragData_win32.h"
#include "platform/FileDrop_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin::driver {

namespace {

void PrintFiles(const char* head, const std::vector<std::string>& paths) {
    std::printf("%s\n", head);
    for (const std::string& path : paths)
        std::printf("%s\n", path.c_str());
}

class Catcher : public ComObject<IDropTarget> {
 public:
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) override {
        *effect &= (*effect & DROPEFFECT_MOVE) != 0 ? DROPEFFECT_MOVE : DROPEFFECT_COPY;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) override {
        return DragEnter(nullptr, 0, {}, effect);
    }
    HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) override {
        DragEnter(nullptr, 0, {}, effect);
        PrintFiles(*effect == DROPEFFECT_MOVE ? "move" : "copy", FilesIn(*data));
        PostQuitMessage(0);
        return S_OK;
    }
};

}  // namespace

void CatchFiles() {
    const OleApartment ole;
    WNDCLASSW look{};
    look.lpfnWndProc = &DefWindowProcW;
    look.lpszClassName = L"tobbin_catch";
    RegisterClassW(&look);
    const HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, look.lpszClassName, L"",
                        WS_POPUP | WS_VISIBLE, 0, 0, 60, 60, nullptr, nullptr, nullptr, nullptr);
    const ComPtr<Catcher> catcher(new Catcher);
    RegisterDragDrop(window, catcher.get());
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    RevokeDragDrop(window);
    DestroyWindow(window);
}

void PrintClipboard() {
    OpenClipboard(nullptr);
    if (const HANDLE text = GetClipboardData(CF_UNICODETEXT)) {
        std::printf("%s\n", Utf8(static_cast<const wchar_t*>(GlobalLock(text))).c_str());
        GlobalUnlock(text);
    }
    if (const HANDLE files = GetClipboardData(CF_HDROP))
        PrintFiles("files", FilesOf(static_cast<HDROP>(files)));
    CloseClipboard();
}

}  // namespace tobbin::driver
