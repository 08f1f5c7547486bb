#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "Pinger_win32.h"

namespace tobbin::bench {

// What a person does in the program's windows, measured: each returns the milliseconds until the
// windows show the result, all painted and the frame answering. Throws std::runtime_error when the
// program doesn't do it. The active window is a jukebox.
class Actions {
 public:
    explicit Actions(DWORD process);

    // Clicks on a folder by its path; the folders above it are opened first, which doesn't count.
    double SelectFolder(const std::vector<std::wstring>& path);
    // Clicks on the folder's "+"; a second time closes it.
    double ToggleFolder(const std::vector<std::wstring>& path);
    double ClickHeading();
    // A key in the song list.
    double PressKey(WPARAM key);
    // The find dialog stays open until CloseFind.
    double OpenFind();
    double Find(const std::wstring& text);
    // The same where nothing is found: until the box that says so is seen. Closes the box.
    double FindInVain(const std::wstring& text);
    void CloseFind();
    // Selects every n-th row, from outside, or all rows but these.
    void SelectEvery(int n, bool inverse);
    // With the mouse, by a click on the first row and one with Shift on the last.
    double SelectAllByMouse();
    // A command of the frame's menu, by its number, until it has been carried out.
    double Command(int command);
    // One that opens a searching window: presses Stop when that has been open for a while, and
    // measures from there.
    double StopCommand(int command, int afterMilliseconds);
    // Until everything is painted and the frame answers.
    void WaitUntilShown() const;
    int RowCount() const;
    int SelectedCount() const;

 private:
    HWND Pane(const wchar_t* controlClass) const;
    double Shown(double begin) const;
    HWND TypeIntoFind(const std::wstring& text);
    LPARAM ItemAt(const std::vector<std::wstring>& path) const;

    HWND m_frame;
};

}  // namespace tobbin::bench
