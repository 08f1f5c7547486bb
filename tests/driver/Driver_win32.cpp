// Uses the program from outside, through its windows, as a person or a screen reader does. One
// command for each run; answers are lines of UTF-8 whose fields are parted by tabs. Exit code 0
// when the command did what it says, 1 with a line on the error output when it didn't. With -v in
// front of it the error output also has "begun" and "done", to tell how far an ended program came.
//
//   windows                     every window of every program: class, text, "visible" or "hidden"
//   wait CLASS [TEXT] [SECONDS] waits for a visible window of the class whose text, or the text of
//                               a window in it, matches TEXT (wildcards * and ?); prints its text
//   gone CLASS [SECONDS]        waits until there is no such window
//   press CLASS BUTTON [TEXT]   waits as "wait" does, then presses a button by its caption, without
//                               its "&"
//   name TEXT                   writes a name into the edit of the file dialog that is open
//   close CLASS                 asks the window to close
//   command NUMBER              gives the frame a command by its number in src/ui/Commands.h
//   answers CLASS [SECONDS]     asks the window again and again whether it answers; prints the
//                               longest wait in milliseconds, which may not exceed a second
//   titles                      the captions of the jukebox windows, the active one first
//   tree                        the active jukebox's folders: depth, text, image number
//   contents                    selects each folder in turn: its line as for "tree", then its rows
//                               as for "rows", each behind a tab
//   open FOLDER...              opens and selects a folder by its path: open Artist Abba
//   where folder FOLDER..., where row ROW, where heading COLUMN
//                               where it is on the screen, for the mouse: x, y
//   marked                      the folder that is marked for a drop
//   rows [LIMIT]                the song list: one line of captions, then image, "x" if selected,
//                               cells
//   select ROW...               selects rows of the song list, counted from 0
//   status                      the text of the frame's status bar
//   clipboard                   the lines of text on the clipboard, then "files" and their paths
//   move LEFT TOP WIDTH HEIGHT  puts the frame there
//   end CLASS                   ends the program of such a window, if there is one
//   crash CLASS                 the same by a thread in it that begins where there is no code
//   freeze CLASS TEXT [SECONDS] waits as "wait" does, then stops the program; thaw CLASS lets it go
//   on player WORD...              see PlayerCommands_win32.cpp
#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/FileDrop_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "RemoteControls_win32.h"

namespace tobbin::driver {

namespace {

constexpr int defaultLimit = 60;  // seconds

void Print(const Words& fields) {
    std::string line;
    for (const std::wstring& field : fields)
        line += (&field == fields.data() ? "" : "\t") + Utf8(field);
    line += "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
}

std::wstring ClassOf(HWND window) {
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return name;
}

// The text as the window itself gives it, which is more than GetWindowText gives for a control of
// another process. Empty for a window that doesn't answer. A window at its end may answer anything.
std::wstring TextOf(HWND window) {
    wchar_t text[1024] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text),
                        SMTO_NORMAL | SMTO_ABORTIFHUNG, 2'000, &length);
    text[1023] = L'\0';
    return text;
}

std::vector<HWND> WindowsIn(HWND parent) {
    std::vector<HWND> found;
    const auto add = [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    if (parent == nullptr)
        EnumWindows(add, reinterpret_cast<LPARAM>(&found));
    else
        EnumChildWindows(parent, add, reinterpret_cast<LPARAM>(&found));
    return found;
}

bool Matches(HWND window, const std::wstring& pattern) {
    if (pattern.empty() || PathMatchSpecExW(TextOf(window).c_str(), pattern.c_str(), 0) == S_OK)
        return true;
    for (const HWND inside : WindowsIn(window))
        if (PathMatchSpecExW(TextOf(inside).c_str(), pattern.c_str(), 0) == S_OK)
            return true;
    return false;
}

// The visible window of the class that matches, at the top level or inside a window there.
HWND MaybeWindow(const std::wstring& windowClass, const std::wstring& pattern) {
    for (const HWND top : WindowsIn(nullptr)) {
        std::vector<HWND> candidates = WindowsIn(top);
        candidates.insert(candidates.begin(), top);
        for (const HWND window : candidates)
            if (IsWindowVisible(window) && ClassOf(window) == windowClass &&
                Matches(window, pattern))
                return window;
    }
    return nullptr;
}

HWND WindowOf(const std::wstring& windowClass, const std::wstring& pattern = L"") {
    const HWND window = MaybeWindow(windowClass, pattern);
    if (window == nullptr)
        throw std::runtime_error("no window " + Utf8(windowClass) + " " + Utf8(pattern));
    return window;
}

void WaitUntil(int seconds, const std::string& what, const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1'000;
    while (!condition()) {
        if (GetTickCount64() > end)
            throw std::runtime_error("waited in vain for " + what);
        Sleep(2);
    }
}

HWND Wait(const std::wstring& windowClass, const std::wstring& pattern, int seconds) {
    HWND window = nullptr;
    WaitUntil(seconds, Utf8(windowClass) + " " + Utf8(pattern), [&] {
        window = MaybeWindow(windowClass, pattern);
        return window != nullptr;
    });
    return window;
}

// A control of the active jukebox window, by its class.
HWND Pane(const wchar_t* controlClass) {
    const HWND client = FindWindowExW(WindowOf(L"frmMDIForm1"), nullptr, L"MDIClient", nullptr);
    const auto active = reinterpret_cast<HWND>(Ask(client, WM_MDIGETACTIVE, 0, 0));
    for (const HWND window : WindowsIn(active))
        if (ClassOf(window) == controlClass)
            return window;
    throw std::runtime_error("the active window has no " + Utf8(controlClass));
}

void Press(HWND dialog, const std::wstring& caption) {
    for (const HWND button : WindowsIn(dialog)) {
        std::wstring text = TextOf(button);
        std::erase(text, L'&');
        if (ClassOf(button) == L"Button" && text == caption) {
            // As the button itself tells its dialog. BM_CLICK fails while the dialog is not active.
            PostMessageW(GetParent(button), WM_COMMAND,
                         MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                         reinterpret_cast<LPARAM>(button));
            return;
        }
    }
    throw std::runtime_error("no button " + Utf8(caption));
}

Words Fields(const TreeRow& row) {
    return {std::to_wstring(row.depth), row.text, std::to_wstring(row.image)};
}

// The folder with this path; opens those above it.
HTREEITEM FolderAt(HWND tree, const Words& path) {
    std::size_t level = 0;
    for (const TreeRow& row : ReadTree(tree)) {
        if (row.depth < static_cast<int>(level))
            break;
        if (row.depth != static_cast<int>(level) || row.text != path[level])
            continue;
        if (++level == path.size())
            return row.item;
        Ask(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(row.item));
    }
    throw std::runtime_error("no folder " + Utf8(path[level]));
}

void OpenFolder(const Words& path) {
    const HWND tree = Pane(WC_TREEVIEWW);
    const auto item = reinterpret_cast<LPARAM>(FolderAt(tree, path));
    Ask(tree, TVM_EXPAND, TVE_EXPAND, item);
    Ask(tree, TVM_SELECTITEM, TVGN_CARET, item);
}

POINT PlaceOf(const std::wstring& what, const Words& words) {
    if (what == L"folder")
        return PlaceOfItem(Pane(WC_TREEVIEWW), FolderAt(Pane(WC_TREEVIEWW), words));
    const int number = std::stoi(words.at(0));
    return what == L"row" ? PlaceOfRow(Pane(WC_LISTVIEWW), number)
                          : PlaceOfHeading(Pane(WC_LISTVIEWW), number);
}

void PrintContents() {
    const HWND tree = Pane(WC_TREEVIEWW);
    const HWND list = Pane(WC_LISTVIEWW);
    for (const TreeRow& folder : ReadTree(tree)) {
        Print(Fields(folder));
        Ask(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(folder.item));
        for (Words& row : ReadList(list, 100'000)) {
            row.insert(row.begin(), L"");
            Print(row);
        }
    }
}

// Stops or continues every thread of the window's process.
void Halt(HWND window, bool stop) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot.Get(), &entry); more;
         more = Thread32Next(snapshot.Get(), &entry)) {
        if (entry.th32OwnerProcessID != process)
            continue;
        const UniqueKernelObject thread(
            OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID));
        if (stop)
            SuspendThread(thread.Get());
        else
            ResumeThread(thread.Get());
    }
}

void EndProgramOf(HWND window, bool byCrash) {
    if (window == nullptr)
        return;
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const UniqueKernelObject process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, id));
    const auto nowhere = reinterpret_cast<LPTHREAD_START_ROUTINE>(std::uintptr_t{16});
    if (byCrash ? !UniqueKernelObject(
                      CreateRemoteThread(process.Get(), nullptr, 0, nowhere, nullptr, 0, nullptr))
                : !TerminateProcess(process.Get(), 1))
        throw std::runtime_error("the program can't be ended");
    WaitForSingleObject(process.Get(), 10'000);
}

void AskForAnswers(HWND window, int seconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1'000;
    ULONGLONG longest = 0;
    while (GetTickCount64() < end) {
        const ULONGLONG begin = GetTickCount64();
        DWORD_PTR reply = 0;
        if (!SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 10'000, &reply))
            throw std::runtime_error("the window doesn't answer");
        longest = std::max(longest, GetTickCount64() - begin);
        Sleep(5);
    }
    Print({std::to_wstring(longest)});
    if (longest > 1'000)
        throw std::runtime_error("the window was blocked for too long");
}

void NameFile(const std::wstring& name) {
    const HWND frame = WindowOf(L"frmMDIForm1");
    const HWND dialog = GetLastActivePopup(frame);
    const HWND edit = FindWindowExW(dialog, nullptr, L"Edit", nullptr);
    if (dialog == frame || edit == nullptr)
        throw std::runtime_error("no file dialog is open");
    Ask(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void PrintTitles() {
    const HWND client = FindWindowExW(WindowOf(L"frmMDIForm1"), nullptr, L"MDIClient", nullptr);
    for (HWND child = GetWindow(client, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (ClassOf(child) == L"frmMain" && IsWindowVisible(child))
            Print({TextOf(child)});
}

void PrintClipboard() {
    OpenClipboard(nullptr);
    if (const HANDLE text = GetClipboardData(CF_UNICODETEXT)) {
        Print({static_cast<const wchar_t*>(GlobalLock(text))});
        GlobalUnlock(text);
    }
    if (const HANDLE files = GetClipboardData(CF_HDROP)) {
        Print({L"files"});
        for (const std::string& path : FilesOf(static_cast<HDROP>(files)))
            Print({Wide(path)});
    }
    CloseClipboard();
}

void Run(const std::wstring& command, const Words& words) {
    const auto word = [&](std::size_t i) { return i < words.size() ? words[i] : std::wstring(); };
    const auto number = [&](std::size_t i, int otherwise) {
        return i < words.size() ? std::stoi(words[i]) : otherwise;
    };
    const auto frame = [] { return WindowOf(L"frmMDIForm1"); };
    if (command == L"windows") {
        for (const HWND window : WindowsIn(nullptr))
            Print({ClassOf(window), TextOf(window),
                   IsWindowVisible(window) ? L"visible" : L"hidden"});
    } else if (command == L"wait") {
        Print({TextOf(Wait(word(0), word(1), number(2, defaultLimit)))});
    } else if (command == L"gone") {
        WaitUntil(number(1, defaultLimit), "the end of " + Utf8(word(0)),
                  [&] { return MaybeWindow(word(0), L"") == nullptr; });
    } else if (command == L"press") {
        Press(Wait(word(0), word(2), defaultLimit), word(1));
    } else if (command == L"name") {
        NameFile(word(0));
    } else if (command == L"close") {
        PostMessageW(WindowOf(word(0)), WM_CLOSE, 0, 0);
    } else if (command == L"command") {
        PostMessageW(frame(), WM_COMMAND, static_cast<WPARAM>(number(0, 0)), 0);
    } else if (command == L"answers") {
        AskForAnswers(WindowOf(word(0)), number(1, 3));
    } else if (command == L"player") {
        RunPlayerScript(words);
    } else if (command == L"titles") {
        PrintTitles();
    } else if (command == L"tree") {
        for (const TreeRow& row : ReadTree(Pane(WC_TREEVIEWW)))
            Print(Fields(row));
    } else if (command == L"contents") {
        PrintContents();
    } else if (command == L"open") {
        OpenFolder(words);
    } else if (command == L"where") {
        const POINT place = PlaceOf(word(0), {words.begin() + 1, words.end()});
        Print({std::to_wstring(place.x), std::to_wstring(place.y)});
    } else if (command == L"marked") {
        for (const TreeRow& row : ReadTree(Pane(WC_TREEVIEWW)))
            if ((row.state & TVIS_DROPHILITED) != 0)
                Print({row.text});
    } else if (command == L"rows") {
        Print(ReadColumns(Pane(WC_LISTVIEWW)));
        for (const Words& row : ReadList(Pane(WC_LISTVIEWW), number(0, 1'000)))
            Print(row);
    } else if (command == L"select") {
        SelectRows(Pane(WC_LISTVIEWW), words);
    } else if (command == L"status") {
        Print({ReadStatus(FindWindowExW(frame(), nullptr, STATUSCLASSNAMEW, nullptr))});
    } else if (command == L"clipboard") {
        PrintClipboard();
    } else if (command == L"move") {
        SetWindowPos(frame(), nullptr, number(0, 0), number(1, 0), number(2, 0), number(3, 0),
                     SWP_NOZORDER);
    } else if (command == L"end" || command == L"crash") {
        EndProgramOf(MaybeWindow(word(0), L""), command == L"crash");
    } else if (command == L"freeze" || command == L"thaw") {
        Halt(Wait(word(0), word(1), number(2, defaultLimit)), command == L"freeze");
    } else {
        throw std::runtime_error("not a command: " + Utf8(command));
    }
}

}  // namespace

}  // namespace tobbin::driver

int main() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const bool tells = count > 1 && std::wstring(arguments[1]) == L"-v";
    const tobbin::driver::Words words(arguments + (tells ? 2 : 1), arguments + count);
    try {
        if (words.empty())
            throw std::runtime_error("name a command");
        if (tells)
            std::fputs("begun\n", stderr);
        tobbin::driver::Run(words[0], {words.begin() + 1, words.end()});
        std::fflush(stdout);
        if (tells)
            std::fputs("done\n", stderr);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tobbin_driver: %s\n", error.what());
        return 1;
    }
}
