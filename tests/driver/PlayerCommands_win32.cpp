#include "PlayerCommands_win32.h"

#include <windows.h>

#include <cstdio>
#include <stdexcept>

#include "platform/Programs_win32.h"
#include "platform/SystemText_win32.h"
#include "platform/Wide_win32.h"
#include "RemoteControls_win32.h"
#include "util/PlayerMessages.h"

namespace tobbin::driver {

namespace {

HWND Player() {
    return FindWindowW(L"Winamp v1.x", nullptr);
}

ULONGLONG WaitUntil(bool (*holds)(const void*), const void* what) {
    const ULONGLONG begin = GetTickCount64();
    while (!holds(what)) {
        if (GetTickCount64() - begin > 60'000)
            throw std::runtime_error("the player doesn't get there");
        Sleep(5);
    }
    return GetTickCount64() - begin;
}

LRESULT Start() {
    SystemPrograms().Start("C:\\Tobbin\\Player\\TobbinPlayer.exe", "",
                           ShowProgram::MinimizedInactive);
    return static_cast<LRESULT>(
        WaitUntil([](const void*) { return Player() != nullptr; }, nullptr));
}

LRESULT SendData(ULONG_PTR identifier, const void* bytes, std::size_t size) {
    COPYDATASTRUCT data{};
    data.dwData = identifier;
    data.cbData = static_cast<DWORD>(size);
    data.lpData = const_cast<void*>(bytes);
    return Ask(Player(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

struct Goal {
    LPARAM operation;
    WPARAM argument;
    LRESULT value;
};

bool IsReached(const void* what) {
    const Goal& goal = *static_cast<const Goal*>(what);
    const LRESULT reply = Ask(Player(), WM_USER, goal.argument, goal.operation);
    const bool isPosition = goal.operation == 105 && goal.argument == 0;
    return isPosition ? reply >= goal.value : reply == goal.value;
}

}  // namespace

void RunPlayerScript(const std::vector<std::wstring>& words) {
    std::size_t at = 0;
    const auto word = [&] { return words.at(at++); };
    const auto number = [&] { return std::stoll(word()); };
    while (at < words.size()) {
        const std::wstring step = word();
        LRESULT reply = 0;
        if (step == L"start") {
            reply = Start();
        } else if (step == L"add") {
            const std::string bytes = WindowsText(GetACP()).MaybeToAnsi(Utf8(word())).value();
            reply = SendData(100, bytes.c_str(), bytes.size() + 1);
        } else if (step == L"path") {
            const std::wstring path = word();
            reply = SendData(RegisterWindowMessageW(kAddPathMessage), path.data(),
                             path.size() * sizeof(wchar_t));
        } else if (step == L"command") {
            reply = Ask(Player(), WM_COMMAND, static_cast<WPARAM>(number()), 0);
        } else if (step == L"ask") {
            const LPARAM operation = number();
            reply = Ask(Player(), WM_USER, static_cast<WPARAM>(number()), operation);
        } else if (step == L"until") {
            Goal goal{number(), 0, 0};
            goal.argument = static_cast<WPARAM>(number());
            goal.value = number();
            reply = static_cast<LRESULT>(WaitUntil(&IsReached, &goal));
        } else if (step == L"track") {
            reply = Ask(Player(), RegisterWindowMessageW(kTrackNumberMessage), 0, 0);
        } else if (step == L"wait") {
            Sleep(static_cast<DWORD>(number()));
        } else {
            throw std::runtime_error("not a step: " + Utf8(step));
        }
        std::printf("%lld\n", static_cast<long long>(reply));
    }
}

}  // namespace tobbin::driver
