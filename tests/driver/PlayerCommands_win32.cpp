#include "PlayerCommands_win32.h"

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>

#include "platform/Disk_win32.h"
#include "platform/Programs_win32.h"
#include "platform/SystemText_win32.h"
#include "platform/Wide_win32.h"
#include "RemoteControls_win32.h"
#include "tobbin_player/LoadedMpg123_win32.h"
#include "tobbin_player/Mpg123Songs.h"
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

LRESULT Pester(int count) {
    std::mt19937 numbers(7);
    const auto upTo = [&](unsigned most) { return numbers() % (most + 1); };
    const auto absurd = [&]() -> LPARAM {
        constexpr LPARAM kNumbers[] = {0, 1, -1, INT32_MIN, INT32_MAX, INT64_MIN, INT64_MAX};
        const unsigned which = upTo(13);
        return which < std::size(kNumbers) ? kNumbers[which] : static_cast<int>(numbers());
    };
    std::vector<char> bytes(300'000, 'x');
    LRESULT unanswered = 0;
    while (count-- > 0) {
        constexpr UINT kMessages[] = {WM_COMMAND, WM_TIMER, WM_HSCROLL, WM_HOTKEY};
        UINT message = WM_USER + upTo(0xFFFF - WM_USER);
        auto wParam = static_cast<WPARAM>(absurd());
        LPARAM lParam = 100 + upTo(25);
        COPYDATASTRUCT data{};
        switch (upTo(3)) {
            case 0:
                message = WM_USER;
                break;
            case 1:
                message = kMessages[upTo(3)];
                wParam = upTo(1) == 0 ? 40'040 + upTo(10) : wParam;
                lParam = 0;
                break;
            case 2:
                message = WM_COPYDATA;
                data.dwData = upTo(1) == 0 ? 100 : RegisterWindowMessageW(kAddPathMessage);
                data.cbData = upTo(3) == 0 ? static_cast<DWORD>(bytes.size()) : upTo(300);
                data.lpData = data.cbData == 0 ? nullptr : bytes.data();
                lParam = reinterpret_cast<LPARAM>(&data);
                break;
            default:
                break;
        }
        DWORD_PTR answer = 0;
        unanswered += SendMessageTimeoutW(Player(), message, wParam, lParam, SMTO_NORMAL, 2'000,
                                          &answer) == 0;
    }
    return unanswered;
}

LRESULT Decode(const std::string& path, const std::string& file) {
    const player::LoadedMpg123 decoder("C:\\Tobbin\\Player\\");
    SystemDisk disk;
    const WindowsText text;
    player::Mpg123Songs songs(decoder.Functions(), disk, text);
    std::string reason;
    const auto song = songs.MaybeOpen(path, reason);
    if (song == nullptr)
        throw std::runtime_error(reason);
    std::ofstream out(file, std::ios::binary);
    std::vector<std::int16_t> samples;
    while (song->Read(4'096, samples) == player::Song::Outcome::Samples)
        out.write(reinterpret_cast<const char*>(samples.data()),
                  static_cast<std::streamsize>(samples.size() * sizeof(samples[0])));
    return song->Rate();
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
        } else if (step == L"pester") {
            reply = Pester(static_cast<int>(number()));
        } else if (step == L"decode") {
            const std::string path = Utf8(word());
            reply = Decode(path, Utf8(word()));
        } else {
            throw std::runtime_error("not a step: " + Utf8(step));
        }
        std::printf("%lld\n", static_cast<long long>(reply));
    }
}

}  // namespace tobbin::driver
