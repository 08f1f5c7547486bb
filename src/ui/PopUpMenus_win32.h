#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// A pop-up menu of the jukebox window, made anew for each showing.
class PopUpMenu {
 public:
    // `pane` is 1 for the folder menu, 2 for the song menu; `window` gives the screen's measures.
    PopUpMenu(int pane, HWND window);
    PopUpMenu(const PopUpMenu&) = delete;
    PopUpMenu& operator=(const PopUpMenu&) = delete;
    ~PopUpMenu();

    void EnableEntries(const std::function<bool(int entry)>& isEnabled);

    // Adds "Next Pic" and "Prev. Pic" at the end.
    void AddControlCommands();

    // Waits for the choice: an entry from 1, or 0 for none. A command of the control is sent to
    // the window.
    int Show(POINT screen, HWND window) const;

    // A key that stands for no caption in the menu that is open: the keys 1 (best) to 6 rank.
    // Returns the answer to WM_MENUCHAR; 0 for a key that means nothing.
    static LRESULT OnKey(HMENU menu, wchar_t key);

    HMENU Handle() const { return GetSubMenu(m_menu.Get(), 0); }

 private:
    void AddRankPictures(HWND window);
    void GrayEmptySubMenus() const;

    int m_firstNumber;  // one less than the first entry's
    int m_entries;
    UniqueMenu m_menu;
    std::vector<UniqueBitmap> m_pictures;  // as long as the menu shows them
};

}  // namespace tobbin
