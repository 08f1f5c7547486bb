#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"

namespace tobbin::driver {

// Memory in the process of a window, for the messages whose argument points to a structure. Closed
// with the object; throws std::runtime_error when the process doesn't allow it.
class RemoteMemory {
 public:
    RemoteMemory(HWND window, std::size_t size);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    std::byte* Address() const { return m_address; }
    void Write(std::size_t offset, const void* data, std::size_t size);
    void Read(std::size_t offset, void* data, std::size_t size) const;

 private:
    UniqueKernelObject m_process;
    std::byte* m_address = nullptr;
};

// Sends a message, for at most half a minute. Throws when the window doesn't answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

struct TreeRow {
    HTREEITEM item = nullptr;
    int depth = 0;  // 0 at the top level
    std::wstring text;
    int image = 0;
    UINT state = 0;  // TVIS_ flags
};

// All items of a SysTreeView32 of another process, from the top, closed ones included.
std::vector<TreeRow> ReadTree(HWND tree);

struct ListRow {
    std::vector<std::wstring> cells;
    int image = 0;
    bool selected = false;
};

// The captions of a SysListView32's columns, and its rows, at most `limit` of them.
std::vector<std::wstring> ReadColumns(HWND list);
std::vector<ListRow> ReadList(HWND list, int limit);

// Selects the rows numbered, from 0, and no others.
void SelectRows(HWND list, const std::vector<int>& rows);

// The middle of a tree item's label, a list row's name or a column's heading, on the screen; item
// and row are scrolled into view.
POINT PlaceOfItem(HWND tree, HTREEITEM item);
POINT PlaceOfRow(HWND list, int row);
POINT PlaceOfHeading(HWND list, int column);

// The text of a part of a status bar.
std::wstring ReadStatus(HWND bar, int part);

}  // namespace tobbin::driver
