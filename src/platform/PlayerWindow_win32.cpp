#include "platform/PlayerWindow_win32.h"

#include <windows.h>

#include <vector>

#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr std::size_t kLongestPath = 32'768;  // units

PlayerReply SendWithin(PlayerWindow::Handle window, UINT message, WPARAM wParam, LPARAM lParam,
                       int limitMilliseconds) {
    const HWND handle = reinterpret_cast<HWND>(window);
    DWORD_PTR reply = 0;
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutW(handle, message, wParam, lParam,
                            SMTO_NORMAL | SMTO_ABORTIFHUNG | SMTO_ERRORONEXIT,
                            static_cast<UINT>(limitMilliseconds), &reply) == 0) {
        // Without ERROR_TIMEOUT the player may still be known as hung, or its window died; some
        // systems say then, too, that access is denied.
        const DWORD error = GetLastError();
        if (error == ERROR_TIMEOUT)
            return {PlayerReply::Outcome::TimedOut, 0};
        if (IsWindow(handle) == FALSE)
            return {PlayerReply::Outcome::NoWindow, 0};
        return {error == ERROR_ACCESS_DENIED ? PlayerReply::Outcome::Denied
                                             : PlayerReply::Outcome::TimedOut,
                0};
    }
    // A 32-bit player's reply comes without its sign.
    return {PlayerReply::Outcome::Replied, static_cast<std::int32_t>(static_cast<DWORD>(reply))};
}

}  // namespace

PlayerWindow::Handle SystemPlayerWindow::Find() {
    return reinterpret_cast<Handle>(FindWindowW(L"Winamp v1.x", nullptr));
}

std::string SystemPlayerWindow::Program(Handle window) {
    DWORD process = 0;
    GetWindowThreadProcessId(reinterpret_cast<HWND>(window), &process);
    const UniqueKernelObject handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    std::vector<wchar_t> path(kLongestPath);
    auto length = static_cast<DWORD>(path.size());
    if (!handle || !QueryFullProcessImageNameW(handle.Get(), 0, path.data(), &length))
        return {};
    return Utf8({path.data(), length});
}

std::string SystemPlayerWindow::Caption(Handle window) {
    wchar_t caption[1024];
    const int length = GetWindowTextW(reinterpret_cast<HWND>(window), caption, 1024);
    return Utf8({caption, static_cast<std::size_t>(length)});
}

std::uint32_t SystemPlayerWindow::Registered(const wchar_t* name) {
    return RegisterWindowMessageW(name);
}

PlayerReply SystemPlayerWindow::Send(Handle window, std::uint32_t message, std::int32_t wParam,
                                     std::int32_t lParam, int limitMilliseconds) {
    return SendWithin(window, message, static_cast<WPARAM>(static_cast<INT_PTR>(wParam)),
                      static_cast<LPARAM>(lParam), limitMilliseconds);
}

PlayerReply SystemPlayerWindow::SendData(Handle window, std::uint32_t identifier,
                                         std::string_view bytes, int limitMilliseconds) {
    COPYDATASTRUCT record{};
    record.dwData = identifier;
    record.cbData = static_cast<DWORD>(bytes.size());
    record.lpData = const_cast<char*>(bytes.data());
    return SendWithin(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&record), limitMilliseconds);
}

}  // namespace tobbin
