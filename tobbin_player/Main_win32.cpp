#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/Disk_win32.h"
#include "platform/Process_win32.h"
#include "platform/SystemText_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "tobbin_player/FeederThread_win32.h"
#include "tobbin_player/LoadedMpg123_win32.h"
#include "tobbin_player/Mpg123Songs.h"
#include "tobbin_player/Window_win32.h"

namespace tobbin::player {
namespace {

constexpr DWORD kPatience = 2'000;  // milliseconds for the window of a player that is starting

// Whether this is the only player now. The system gives the mutex to the next one in the moment in
// which the one that owns it ends, however it does.
bool TakesPlace(HANDLE mutex) {
    const DWORD result = WaitForSingleObject(mutex, 10);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

// The window of the player that runs already; null when there is none (any more) and this one takes
// its place, or when the other one opens none.
HWND MaybeFirst(HANDLE mutex, bool& isFirst) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    HWND other = nullptr;
    do {
        isFirst = TakesPlace(mutex);
        other = isFirst ? nullptr : Window::MaybeOther();
    } while (!isFirst && other == nullptr && GetTickCount64() < end);
    return other;
}

int Run(int show) {
    PrepareProcess();
    const bool isAskedFor =
        show == SW_SHOWNORMAL || show == SW_SHOW || show == SW_SHOWMAXIMIZED || show == SW_RESTORE;
    if (std::wstring_view(GetCommandLineW()).ends_with(L" /close")) {  // for the installer
        PostMessageW(Window::MaybeOther(), WM_CLOSE, 0, 0);
        return 0;
    }
    const std::vector<std::string> files = FilesOnCommandLine();
    const UniqueKernelObject mutex(CreateMutexW(nullptr, FALSE, L"Local\\TobbinPlayer"));
    bool isFirst = false;
    if (const HWND other = MaybeFirst(mutex.Get(), isFirst); other != nullptr) {
        if (!files.empty())
            Window::Send(other, files);
        if (isAskedFor) {
            ShowWindowAsync(other, SW_RESTORE);
            SetForegroundWindow(other);
        }
    }
    if (!isFirst)
        return 0;

    INITCOMMONCONTROLSEX controls = {};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);
    static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));

    FeederThread feeder;
    Player player([&] { feeder.Wake(); });
    const WindowsText text(GetACP());
    Window window(player, text);
    if (!window.Open(isAskedFor))
        return 1;
    const LoadedMpg123 decoder(ProgramFolder());
    SystemDisk disk;
    Mpg123Songs songs(decoder.Functions(), disk, text);
    feeder.Start(player, songs);
    if (!files.empty())
        Window::Send(window.Handle(), files);

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (window.Handle() != nullptr && IsDialogMessageW(window.Handle(), &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (!feeder.End())
        TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

}  // namespace
}  // namespace tobbin::player

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int show) {
    return tobbin::player::Run(show);
}
