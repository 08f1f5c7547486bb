// Uses a player's window by the messages that other programs send. One run does a whole script, so
// that nothing else takes time; each reply is a line. The words of the script:
//
//   start                    starts our own player; the reply is how many milliseconds it took
//   add PATH, path PATH      adds a song by its path in the ANSI code page, in UTF-16
//   command ID               WM_COMMAND
//   ask OPERATION ARGUMENT   WM_USER
//   until OPERATION ARGUMENT VALUE  asks until the reply is that; a position (105 0) may be beyond
//   track                    the number of the song that plays
//   wait MILLISECONDS
//   pester COUNT             sends random messages, but none that closes a window; the reply is how
//                            many were not answered in two seconds
//   decode PATH FILE         decodes a song with the player's own DLL, without the player, into a
//                            file of samples
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
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

LRESULT WaitUntil(const std::function<bool()>& holds) {
    const ULONGLONG begin = GetTickCount64();
    for (; !holds(); Sleep(5))
        if (GetTickCount64() - begin > 60'000)
            throw std::runtime_error("the player doesn't get there");
    return static_cast<LRESULT>(GetTickCount64() - begin);
}

LRESULT Start() {
    SystemPrograms().Start("C:\\Tobbin\\Player\\TobbinPlayer.exe", "",
                           ShowProgram::MinimizedInactive);
    return WaitUntil([] { return Player() != nullptr; });
}

LRESULT SendData(ULONG_PTR identifier, const void* bytes, std::size_t size) {
    COPYDATASTRUCT data{};
    data.dwData = identifier;
    data.cbData = static_cast<DWORD>(size);
    data.lpData = const_cast<void*>(bytes);
    return Ask(Player(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

LRESULT Pester(int count) {
    constexpr LPARAM kAbsurd[] = {0, 1, -1, INT32_MIN, INT32_MAX, INT64_MIN, INT64_MAX};
    std::mt19937 numbers(7);
    const auto upTo = [&](unsigned most) { return numbers() % (most + 1); };
    std::vector<char> bytes(300'000, 'x');
    LRESULT unanswered = 0;
    while (count-- > 0) {
        const UINT messages[] = {WM_COMMAND, WM_TIMER,    WM_HSCROLL,
                                 WM_USER,    WM_COPYDATA, WM_USER + upTo(0xFFFF - WM_USER)};
        const UINT message = messages[upTo(5)];
        LPARAM wParam = upTo(1) == 0 ? kAbsurd[upTo(6)] : static_cast<int>(numbers());
        LPARAM lParam = message >= WM_USER ? 100 + upTo(25) : 0;
        COPYDATASTRUCT data{upTo(1) == 0 ? 100 : RegisterWindowMessageW(kAddPathMessage),
                            upTo(300'000), bytes.data()};
        if (message == WM_COMMAND && upTo(1) == 0)
            wParam = 40'040 + upTo(10);
        if (message == WM_COPYDATA)
            lParam = reinterpret_cast<LPARAM>(&data);
        DWORD_PTR answer = 0;
        unanswered += SendMessageTimeoutW(Player(), message, static_cast<WPARAM>(wParam), lParam,
                                          SMTO_NORMAL, 2'000, &answer) == 0;
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

}  // namespace

void RunPlayerScript(const Words& words) {
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
            const LPARAM operation = number();
            const auto argument = static_cast<WPARAM>(number());
            const LRESULT value = number();
            reply = WaitUntil([&] {
                const LRESULT now = Ask(Player(), WM_USER, argument, operation);
                return operation == 105 && argument == 0 ? now >= value : now == value;
            });
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
