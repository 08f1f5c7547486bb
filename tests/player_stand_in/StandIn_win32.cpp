// A stand-in for the external player: its window class, its messages, a play list that plays in
// silence and real time. Every message is written down in winamp.log beside the program:
//
//     started
//     window
//     <message> <wParam> <lParam>               numbers, signed
//     74 0 <identifier> <byte count> <bytes>    bytes in hexadecimal
//     started again                             a second start leaves the first one alone
//     closed
//
// winamp.ini beside the program, section [behave], makes it behave otherwise:
//
//     open_after=<ms>     opens its window late
//     open_never=1        never opens it
//     slow=<ms>           takes so long for each message
//     hang_at=<n>         at the n-th message (from 1) it stops answering ...
//     hang_for=<ms>       ... for this long; for ever without it
//     vanish_at=<n>       at the n-th message its process ends
//     version=<n>, status=<n>, unknown=<n>   replies in place of its own
//     pester=<n>          sends Tobbin that many random messages when it is asked to stop after the
//                         track, and writes down how they were taken
//     knows_nothing=1     replies to every question as to one that it doesn't know
#include <windows.h>

#include <cstdio>
#include <string>

#include "Deck.h"
#include "Pester_win32.h"

namespace {

std::wstring FileBesideProgram(const wchar_t* extension) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring text = path;
    return text.substr(0, text.rfind(L'\\') + 1) + L"winamp" + extension;
}

void Log(const std::string& line) {
    // Opened anew for each line, so that a reader sees all of it at any moment.
    if (FILE* file = _wfopen(FileBesideProgram(L".log").c_str(), L"ab")) {
        std::fprintf(file, "%s\n", line.c_str());
        std::fclose(file);
    }
}

int Told(const wchar_t* key, int otherwise) {
    static const std::wstring file = FileBesideProgram(L".ini");
    return static_cast<int>(GetPrivateProfileIntW(L"behave", key, otherwise, file.c_str()));
}

DWORD WINAPI PesterOnThread(void* count) {
    Log("pestered: " + Pester(static_cast<int>(reinterpret_cast<INT_PTR>(count))));
    return 0;
}

class StandIn {
 public:
    LRESULT Take(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_COPYDATA)
            return TakeFile(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        if (message == WM_COMMAND || message == WM_USER) {
            Write(message, wParam, lParam, "");
            return message == WM_USER ? Answer(static_cast<int>(wParam), static_cast<int>(lParam))
                                      : Command(window, static_cast<int>(wParam));
        }
        if (message == WM_DESTROY) {
            Log("closed");
            PostQuitMessage(0);
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

 private:
    void Write(UINT message, WPARAM wParam, LPARAM lParam, const std::string& rest) {
        Log(std::to_string(message) + " " + std::to_string(static_cast<LONG_PTR>(wParam)) + " " +
            std::to_string(lParam) + rest);
        ++m_messages;
        if (m_messages == m_vanishAt)
            ExitProcess(1);
        if (m_slow > 0)
            Sleep(static_cast<DWORD>(m_slow));
        if (m_messages == m_hangAt)
            Sleep(static_cast<DWORD>(m_hangFor));
    }

    LRESULT TakeFile(const COPYDATASTRUCT& record) {
        const auto* const bytes = static_cast<const unsigned char*>(record.lpData);
        std::string rest = " " + std::to_string(record.cbData) + " ";
        for (DWORD i = 0; i < record.cbData; ++i) {
            char hex[3];
            std::snprintf(hex, sizeof hex, "%02X", bytes[i]);
            rest += hex;
        }
        Write(WM_COPYDATA, 0, static_cast<LPARAM>(record.dwData), rest);
        if (record.dwData == 100)
            m_deck.Add(std::string(reinterpret_cast<const char*>(bytes),
                                   record.cbData == 0 ? 0 : record.cbData - 1));
        return 1;
    }

    LRESULT Command(HWND window, int id) {
        switch (id) {
            case 40001:
                PostMessageW(window, WM_CLOSE, 0, 0);
                break;
            case 40044:
                m_deck.Step(-1);
                break;
            case 40045:
                m_deck.Play();
                break;
            case 40046:
                m_deck.Pause();
                break;
            case 40047:
                m_deck.Stop();
                break;
            case 40048:
                m_deck.Step(1);
                break;
            case 40157:
                m_deck.StopAfterTrack();
                if (const int count = Told(L"pester", 0); count != 0)
                    CloseHandle(CreateThread(nullptr, 0, &PesterOnThread,
                                             reinterpret_cast<void*>(static_cast<INT_PTR>(count)),
                                             0, nullptr));
                break;
            default:
                return Told(L"unknown", 0);
        }
        return 0;
    }

    LRESULT Answer(int argument, int operation) {
        if (Told(L"knows_nothing", 0) != 0)
            return Told(L"unknown", 0);
        switch (operation) {
            case 0:
                return Told(L"version", 0x2091);
            case 101:
                m_deck.Clear();
                return 0;
            case 104:
                return Told(L"status", m_deck.Now());
            case 105: {
                if (argument != 1)
                    return m_deck.Position();
                const int length = m_deck.Length();
                return length < 0 ? -1 : length / 1000;
            }
            case 106:
                m_deck.Seek(argument);
                return 0;
            case 122:
            case 123:
                return 0;  // Silence has neither volume nor balance.
            default:
                return Told(L"unknown", 0);
        }
    }

    Deck m_deck;
    int m_messages = 0;
    int m_vanishAt = Told(L"vanish_at", 0);
    int m_slow = Told(L"slow", 0);
    int m_hangAt = Told(L"hang_at", 0);
    int m_hangFor = Told(L"hang_for", -1);  // -1: INFINITE
};

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static StandIn standIn;
    return standIn.Take(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int show) {
    if (FindWindowW(L"Winamp v1.x", nullptr) != nullptr) {
        Log("started again");
        return 0;
    }
    Log("started");
    Sleep(static_cast<DWORD>(Told(L"open_after", 0)));
    if (Told(L"open_never", 0) != 0)
        return 0;
    WNDCLASSW look{};
    look.lpfnWndProc = Procedure;
    look.hInstance = instance;
    look.lpszClassName = L"Winamp v1.x";
    RegisterClassW(&look);
    const HWND window = CreateWindowW(look.lpszClassName, L"Stand-in player", WS_OVERLAPPEDWINDOW,
                                      40, 40, 300, 120, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, show);
    Log("window");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
