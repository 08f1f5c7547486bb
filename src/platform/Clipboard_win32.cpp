#include "platform/Clipboard_win32.h"

#include <windows.h>

#include <ole2.h>

#include "platform/FileDrop_win32.h"
#include "platform/UniqueHandle_win32.h"

namespace tobbin {
namespace {

using UniqueWindow = UniqueHandle<NullHandleTraits<HWND, &::DestroyWindow>>;

// Programs that watch the clipboard hold it for a moment after each change.
bool Open(HWND owner) {
    constexpr int kTries = 10;
    constexpr DWORD kPause = 10;  // milliseconds
    for (int i = 0; i < kTries; ++i) {
        if (OpenClipboard(owner))
            return true;
        Sleep(kPause);
    }
    return false;
}

// Marks what this program put on the clipboard.
UINT OwnFormat() {
    return RegisterClipboardFormatW(L"Tobbin Songs");
}

void Put(UINT format, HGLOBAL memory) {
    if (memory != nullptr && SetClipboardData(format, memory) == nullptr)
        GlobalFree(memory);
}

}  // namespace

void WindowsClipboard::OfferFiles(const std::vector<std::string>& paths) {
    // The clipboard takes data from a window only.
    const UniqueWindow owner(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                             nullptr, nullptr, nullptr));
    if (!Open(owner.Get()))
        return;
    const ScopeGuard closed([] { CloseClipboard(); });
    if (!EmptyClipboard())
        return;
    std::string lines;
    for (const std::string& path : paths)
        lines += (lines.empty() ? "" : "\r\n") + path;
    Put(CF_HDROP, MakeFileDrop(paths));
    const DWORD copy = DROPEFFECT_COPY;  // a cut in a jukebox moves no file
    Put(RegisterClipboardFormatW(L"Preferred DropEffect"), MakeMemory(&copy, sizeof(copy)));
    Put(CF_UNICODETEXT, MakeUnicodeText(lines));
    constexpr char kNothing = 0;
    Put(OwnFormat(), MakeMemory(&kNothing, sizeof(kNothing)));
}

bool WindowsClipboard::HasFilesOfOthers() const {
    return IsClipboardFormatAvailable(CF_HDROP) && !IsClipboardFormatAvailable(OwnFormat());
}

std::vector<std::string> WindowsClipboard::Files() const {
    if (!Open(nullptr))
        return {};
    const ScopeGuard closed([] { CloseClipboard(); });
    const HANDLE drop = GetClipboardData(CF_HDROP);  // the clipboard's own
    return drop != nullptr ? FilesOf(static_cast<HDROP>(drop)) : std::vector<std::string>();
}

std::uint32_t WindowsClipboard::ChangeNumber() const {
    return GetClipboardSequenceNumber();
}

}  // namespace tobbin
