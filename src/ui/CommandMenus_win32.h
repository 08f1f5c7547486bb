#pragma once

#include <windows.h>

#include <string>

#include "platform/UniqueHandle_win32.h"
#include "ui/Commands.h"

namespace tobbin {

// What the table of commands says, made into menus and keys.
UniqueMenu MakeMenuBar();
UniqueMenu MakePopUpMenu(Menu which);
UniqueAccelerators MakeAccelerators();

// What an item of the menu bar shows: the caption, and the first key of its command.
std::string WithKey(const std::string& caption, const CommandRow& row);

// The menu that an item of the menu bar opens. A maximized child puts its own menu before them.
HMENU MenuInBar(HMENU menuBar, Menu which);

}  // namespace tobbin
