#include "Pester_win32.h"

#include <windows.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

HWND Panel(HWND frame) {
    HWND client = FindWindowExW(frame, nullptr, L"MDIClient", nullptr);
    return FindWindowExW(client, nullptr, L"frmMainWinamp", nullptr);
}

class Chance {
 public:
    unsigned UpTo(unsigned most) { return m_numbers() % (most + 1); }

    // Absurd ones among them: negative, the largest, of 64 bits.
    LPARAM Number() {
        constexpr LPARAM kAbsurd[] = {0, -1, INT32_MIN, INT32_MAX, INT64_MIN, INT64_MAX};
        const unsigned which = UpTo(11);
        return which < std::size(kAbsurd) ? kAbsurd[which] : static_cast<int>(m_numbers());
    }

 private:
    std::mt19937 m_numbers{7};
};

}  // namespace

std::string Pester(int count) {
    constexpr UINT kLimit = 2'000;  // milliseconds
    Chance chance;
    std::vector<char> bytes(500'000,
                            'x');  // more would not fit the stack that Wine hands it over on
    ULONGLONG longest = 0;
    int unanswered = 0;
    for (int i = 0; i < count; ++i) {
        const HWND frame = FindWindowW(L"frmMDIForm1", nullptr);
        const HWND panel = Panel(frame);
        const HWND target = panel != nullptr && chance.UpTo(1) == 0 ? panel : frame;
        UINT message = 0;
        auto wParam = static_cast<WPARAM>(chance.Number());
        LPARAM lParam = chance.Number();
        COPYDATASTRUCT data = {};
        switch (chance.UpTo(4)) {
            case 0:
                message = WM_USER + chance.UpTo(0xBFFF - WM_USER);  // WM_APP and beyond, too
                break;
            case 1:
                message =
                    RegisterWindowMessageW((L"Player " + std::to_wstring(chance.UpTo(50))).c_str());
                break;
            case 2:  // numbers that are none of the frame's own commands, nor the system menu's
                message = WM_COMMAND;
                wParam = MAKEWPARAM(0x0900 + chance.UpTo(0xEFFF - 0x0900), chance.UpTo(0xFFFF));
                lParam = 0;
                break;
            case 3:
                message = chance.UpTo(1) == 0 ? WM_TIMER : WM_HSCROLL;
                lParam = 0;  // where a timer's function would stand
                break;
            default:
                message = WM_COPYDATA;
                data.dwData = wParam;
                data.cbData =
                    chance.UpTo(3) == 0 ? static_cast<DWORD>(bytes.size()) : chance.UpTo(300);
                data.lpData = data.cbData == 0 ? nullptr : bytes.data();
                wParam = 0;
                lParam = reinterpret_cast<LPARAM>(&data);
                break;
        }
        if (message != WM_COPYDATA && chance.UpTo(1) == 0) {
            PostMessageW(target, message, wParam, lParam);
            continue;
        }
        const ULONGLONG begin = GetTickCount64();
        DWORD_PTR answer = 0;
        unanswered +=
            SendMessageTimeoutW(target, message, wParam, lParam, SMTO_NORMAL, kLimit, &answer) == 0;
        longest = std::max(longest, GetTickCount64() - begin);
    }
    return std::to_string(count) + " messages, " + std::to_string(unanswered) +
           " unanswered, longest wait " + std::to_string(longest) + " ms";
}
