#pragma once

#include <windows.h>

#include <commctrl.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"

namespace tobbin::driver {

using Words = std::vector<std::wstring>;

// Sends a message, for at most half a minute. Throws when the window doesn't answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

constexpr int textLength = 1024;  // characters; longer texts are cut

inline void Demand(bool done, const char* otherwise) {
    if (!done)
        throw std::runtime_error(otherwise);
}

// Memory in the process of a window, for the messages whose argument points to a structure: that
// structure, and room for a text behind it.
template <typename Structure>
class Remote {
 public:
    explicit Remote(HWND window) : m_window(window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_process.Reset(OpenProcess(
            PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_QUERY_INFORMATION,
            FALSE, process));
        m_address = static_cast<std::byte*>(
            VirtualAllocEx(m_process.Get(), nullptr, sizeof(Structure) + sizeof m_text,
                           MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        Demand(m_address != nullptr, "no memory in the program's process");
    }
    ~Remote() { VirtualFreeEx(m_process.Get(), m_address, 0, MEM_RELEASE); }
    Remote(const Remote&) = delete;
    Remote& operator=(const Remote&) = delete;

    wchar_t* Text() const { return reinterpret_cast<wchar_t*>(m_address + sizeof(Structure)); }

    // Sends a message with the structure and takes the control's answer back into it.
    LRESULT Ask(UINT message, WPARAM wParam, Structure& structure) {
        Demand(WriteProcessMemory(m_process.Get(), m_address, &structure, sizeof structure,
                                  nullptr) != FALSE,
               "the program's memory can't be written");
        const LRESULT result =
            driver::Ask(m_window, message, wParam, reinterpret_cast<LPARAM>(m_address));
        Read(m_address, &structure, sizeof structure);
        return result;
    }
    std::wstring Answer() {
        Read(m_address + sizeof(Structure), m_text, sizeof m_text);
        const std::wstring text(m_text, textLength);
        return text.substr(0, text.find(L'\0'));
    }

 private:
    void Read(const std::byte* from, void* to, std::size_t size) {
        Demand(ReadProcessMemory(m_process.Get(), from, to, size, nullptr) != FALSE,
               "the program's memory can't be read");
    }

    HWND m_window;
    UniqueKernelObject m_process;
    std::byte* m_address = nullptr;
    wchar_t m_text[textLength] = L"";
};

struct TreeRow {
    HTREEITEM item = nullptr;
    int depth = 0;  // 0 at the top level
    std::wstring text;
    int image = 0;
    UINT state = 0;  // TVIS_ flags
};

// All items of a SysTreeView32 of another process, from the top, closed ones included.
std::vector<TreeRow> ReadTree(HWND tree);

// The captions of a SysListView32's columns, and its rows, at most `limit` of them: image number,
// "x" if selected, cells.
Words ReadColumns(HWND list);
std::vector<Words> ReadList(HWND list, int limit);

// Selects the rows numbered, from 0, and no others.
void SelectRows(HWND list, const Words& rows);

// The middle of a tree item's label, a list row's name or a column's heading, on the screen; item
// and row are scrolled into view.
POINT PlaceOfItem(HWND tree, HTREEITEM item);
POINT PlaceOfRow(HWND list, int row);
POINT PlaceOfHeading(HWND list, int column);

// The text of a status bar's first part.
std::wstring ReadStatus(HWND bar);

// Does what PlayerCommands_win32.cpp says with a player's window; each reply is a line.
void RunPlayerScript(const Words& words);

}  // namespace tobbin::driver
