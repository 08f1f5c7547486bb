#pragma once

#include <windows.h>

#include <functional>

#include "platform/UniqueHandle_win32.h"
#include "ui/Commands.h"

namespace tobbin {

// A pop-up menu of the jukebox window, made anew for each showing.
class PopUpMenu {
 public:
    // `which` is that of the folders or that of the songs.
    explicit PopUpMenu(Menu which);
    PopUpMenu(const PopUpMenu&) = delete;
    PopUpMenu& operator=(const PopUpMenu&) = delete;
    ~PopUpMenu();

    void EnableEntries(const std::function<bool(Command)>& isEnabled);

    // Adds "Next Pic" and "Prev. Pic" at the end.
    void AddControlCommands();

    // Waits for the choice: the entry's position, or 0 for none. A command of the control is sent
    // to the window.
    int Show(POINT screen, HWND window) const;

    // A key that stands for no caption in the menu that is open: the keys 1 (best) to 6 rank.
    // Returns the answer to WM_MENUCHAR; 0 for a key that means nothing.
    static LRESULT OnKey(HMENU menu, wchar_t key);

    // The window that shows the menu measures and draws the ranks' pictures: the system would
    // invert them, or give them a ground of their own, where an entry is selected.
    static void OnMeasure(MEASUREITEMSTRUCT& item, HWND window);
    static void OnDraw(const DRAWITEMSTRUCT& item, HWND window);

    HMENU Handle() const { return m_menu.Get(); }

 private:
    template <typename Call>
    void ForEachRank(Call call) const;
    void AddRankPictures();
    void GrayEmptySubMenus() const;

    Menu m_which;
    UniqueMenu m_menu;
};

}  // namespace tobbin
