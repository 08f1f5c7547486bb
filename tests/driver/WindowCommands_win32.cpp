#include "WindowCommands_win32.h"

#include <shlobj.h>

#include <cstdio>
#include <stdexcept>

#include "platform/Wide_win32.h"
#include "RemoteControls_win32.h"

namespace tobbin::driver {

namespace {

using Words = std::vector<std::wstring>;

void PrintLine(const std::string& line) {
    std::printf("%s\n", line.c_str());
}

void NameFile(HWND frame, const std::wstring& name) {
    const HWND dialog = GetLastActivePopup(frame);
    const HWND edit = FindWindowExW(dialog, nullptr, L"Edit", nullptr);
    if (dialog == frame || edit == nullptr)
        throw std::runtime_error("no file dialog is open");
    Ask(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void PrintTitles(HWND frame) {
    const HWND client = FindWindowExW(frame, nullptr, L"MDIClient", nullptr);
    for (HWND child = GetWindow(client, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[32] = L"", caption[512] = L"";
        GetClassNameW(child, name, 32);
        GetWindowTextW(child, caption, 512);
        if (std::wstring(name) == L"frmMain" && IsWindowVisible(child))
            PrintLine(Utf8(caption));
    }
}

// The list of files must lie in the memory of the program.
void DropFiles(HWND frame, const Words& paths) {
    std::wstring list;
    for (const std::wstring& path : paths)
        list += path + L'\0';
    list += L'\0';
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    RemoteMemory memory(frame, sizeof head + list.size() * sizeof(wchar_t));
    memory.Write(0, &head, sizeof head);
    memory.Write(sizeof head, list.data(), list.size() * sizeof(wchar_t));
    Ask(frame, WM_DROPFILES, reinterpret_cast<WPARAM>(memory.Address()), 0);
}

void PressKey(HWND frame, WPARAM key) {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetWindowThreadProcessId(frame, nullptr), &thread);
    const HWND focus = thread.hwndFocus != nullptr ? thread.hwndFocus : frame;
    PostMessageW(focus, WM_KEYDOWN, key, 1);
    PostMessageW(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void PrintPlace(HWND frame) {
    RECT place{};
    GetWindowRect(frame, &place);
    for (const LONG number :
         {place.left, place.top, place.right - place.left, place.bottom - place.top})
        PrintLine(std::to_string(number));
}

}  // namespace

bool RunWindowCommand(HWND frame, const std::wstring& command, const Words& words) {
    const auto number = [&](std::size_t i) { return i < words.size() ? std::stoi(words[i]) : 0; };
    if (command == L"name" && !words.empty())
        NameFile(frame, words[0]);
    else if (command == L"titles")
        PrintTitles(frame);
    else if (command == L"drop")
        DropFiles(frame, words);
    else if (command == L"send")
        PrintLine(std::to_string(
            Ask(frame, static_cast<UINT>(number(0)), static_cast<WPARAM>(number(1)), 0)));
    else if (command == L"key")
        PressKey(frame, static_cast<WPARAM>(number(0)));
    else if (command == L"place")
        PrintPlace(frame);
    else if (command == L"move")
        SetWindowPos(frame, nullptr, number(0), number(1), number(2), number(3), SWP_NOZORDER);
    else
        return false;
    return true;
}

}  // namespace tobbin::driver
