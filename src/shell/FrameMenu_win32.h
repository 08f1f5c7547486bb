#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"
#include "shell/FrameCommands.h"

namespace tobbin {

// The menu bar of the main frame and its keys.
class FrameMenu {
 public:
    FrameMenu();

    HMENU Handle() const { return m_menu.Get(); }
    HACCEL Keys() const { return m_keys.Get(); }
    // The menu that carries the list of open windows.
    HMENU WindowList() const { return m_windowList; }

    // Grays what can't act, ticks what is on, and names what undo and redo would do in a menu that
    // is about to open. A recent jukebox can be opened when any can.
    static void ShowStates(HMENU menu, const std::function<CommandState(Command)>& stateOf);

    // The captions of the recent jukeboxes, from element 1 on: never fewer than before.
    void ShowRecent(const std::vector<std::string>& captions);

    // Which of the recent jukeboxes an item stands for, from 1.
    static std::optional<int> MaybeRecent(int number);

 private:
    UniqueMenu m_menu;
    HMENU m_file;  // found by its place once: a maximized child puts its own menu before it
    HMENU m_windowList;
    UniqueAccelerators m_keys;
    std::size_t m_recentShown = 0;
};

}  // namespace tobbin
