#include "ui/CommandMenus_win32.h"

#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

// "Ctrl+Shift+Z": the last word is the key, those before it are held.
ACCEL Accelerator(std::string_view key, Command command) {
    ACCEL accelerator = {FVIRTKEY, 0, static_cast<WORD>(command)};
    for (std::size_t plus = 0; (plus = key.find('+')) != std::string_view::npos;
         key.remove_prefix(plus + 1)) {
        const std::string_view held = key.substr(0, plus);
        accelerator.fVirt |= held == "Ctrl" ? FCONTROL : held == "Alt" ? FALT : FSHIFT;
    }
    int code = key.front();  // of a letter or a digit
    if (key == "Del")
        code = VK_DELETE;
    else if (key == "Backspace")
        code = VK_BACK;
    else if (key == "Up" || key == "Down")
        code = key == "Up" ? VK_UP : VK_DOWN;
    else if (key.size() > 1)
        code = VK_F1 - 1 + std::stoi(std::string(key.substr(1)));
    accelerator.key = static_cast<WORD>(code);
    return accelerator;
}

// An empty text would make a separator of an item that is appended.
void AppendItem(HMENU menu, Command command, const std::string& text) {
    std::wstring wide = Wide(text);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING;
    info.fType = MFT_STRING;
    info.wID = static_cast<UINT>(command);
    info.dwTypeData = wide.data();
    InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info);
}

HMENU AppendSubMenu(HMENU menu, const char* caption) {
    const HMENU subMenu = CreatePopupMenu();
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(subMenu), Wide(caption).c_str());
    return subMenu;
}

void AppendCommands(HMENU menu, Menu which, bool withKeys) {
    HMENU subMenu = nullptr;
    int free = 0;  // positions that no command had since the last one
    for (int position = 1; position <= kMostPositions; ++position) {
        const CommandRow* const row = MaybeRowAt(which, position);
        if (row == nullptr) {
            ++free;
            continue;
        }
        const MenuPlace& place = *MaybePlaceIn(which, *row);
        const bool opens = place.maybeSubMenu != nullptr && subMenu == nullptr;
        if (std::exchange(free, 0) > (opens ? 1 : 0))
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        if (opens)
            subMenu = AppendSubMenu(menu, place.maybeSubMenu);
        AppendItem(place.maybeSubMenu != nullptr ? subMenu : menu, row->command,
                   withKeys ? WithKey(place.caption, *row) : place.caption);
    }
}

}  // namespace

std::string WithKey(const std::string& caption, const CommandRow& row) {
    const std::string_view keys = row.keys;
    return keys.empty() ? caption : caption + "\t" + std::string(keys.substr(0, keys.find(' ')));
}

UniqueMenu MakeMenuBar() {
    UniqueMenu bar(CreateMenu());
    for (int i = 0; i < static_cast<int>(std::size(kMenuBar)); ++i)
        AppendCommands(AppendSubMenu(bar.Get(), kMenuBar[i]), static_cast<Menu>(i), true);
    return bar;
}

UniqueMenu MakePopUpMenu(Menu which) {
    UniqueMenu menu(CreatePopupMenu());
    AppendCommands(menu.Get(), which, false);
    return menu;
}

UniqueAccelerators MakeAccelerators() {
    std::vector<ACCEL> table;
    for (const CommandRow& row : kCommands) {
        std::istringstream keys(row.keys);
        for (std::string key; keys >> key;)
            table.push_back(Accelerator(key, row.command));
    }
    return UniqueAccelerators(
        CreateAcceleratorTableW(table.data(), static_cast<int>(table.size())));
}

HMENU MenuInBar(HMENU menuBar, Menu which) {
    return GetSubMenu(menuBar, static_cast<int>(which));
}

}  // namespace tobbin
