// A stand-in for the external player: its window class and its messages; it "plays" in silence, one
// track of ten minutes that never goes on. In winamp.log beside the program it writes "started",
// "window", "closed", "started again" (a second start leaves the first one alone), and each
// message:
//
//     <message> <wParam> <lParam>               numbers, signed
//     74 0 <identifier> <byte count> <bytes>    bytes in hexadecimal
//
// winamp.ini beside the program, section [behave], makes it behave otherwise:
//
//     hang_at=<n>         at the n-th message (from 1) it stops answering ...
//     hang_for=<ms>       ... for this long; for ever without it
//     vanish_at=<n>       at the n-th message its process ends
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

std::wstring FileBesideProgram(const wchar_t* extension) {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);  // of winamp.exe
    return std::wstring(path, length - 4) + extension;
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
        if (++m_messages == m_vanishAt)
            ExitProcess(1);
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
        return 1;
    }

    LRESULT Command(HWND window, int id) {
        if (id == 40001)
            PostMessageW(window, WM_CLOSE, 0, 0);
        else if (id == 40045)
            m_status = Playing;
        else if (id == 40046)
            m_status = m_status == Playing ? Paused : m_status == Paused ? Playing : Stopped;
        else if (id == 40047)
            m_status = Stopped;
        return 0;
    }

    LRESULT Answer(int argument, int operation) const {
        constexpr int kTrackSeconds = 600;
        switch (operation) {
            case 0:
                return 0x2091;  // the version
            case 104:
                return m_status;
            case 105:
                return argument == 1 ? kTrackSeconds : m_status == Stopped ? -1 : 0;
            default:
                return 0;
        }
    }

    enum Status { Stopped = 0, Playing = 1, Paused = 3 };
    Status m_status = Stopped;
    int m_messages = 0;
    int m_vanishAt = Told(L"vanish_at", 0);
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
