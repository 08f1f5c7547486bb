#include "shell/FrameMenu_win32.h"

#include "platform/ShownText_win32.h"
#include "shell/RecentMenu.h"
#include "ui/CommandMenus_win32.h"

namespace tobbin {
namespace {

// A menu takes "&" for the mark of an access key; those behind the first one are a path's own and
// are doubled.
std::wstring MenuText(const std::string& caption) {
    std::wstring text = WideShown(caption);
    for (std::size_t at = 1; (at = text.find(L'&', at)) != std::wstring::npos; at += 2)
        text.insert(at, 1, L'&');
    return text;
}

}  // namespace

FrameMenu::FrameMenu()
    : m_menu(MakeMenuBar()),
      m_file(MenuInBar(m_menu.Get(), Menu::File)),
      m_windowList(MenuInBar(m_menu.Get(), Menu::WindowList)),
      m_keys(MakeAccelerators()) {}

std::optional<int> FrameMenu::MaybeRecent(int number) {
    if (number <= kRecentNumber || number > kRecentNumber + static_cast<int>(RecentMenu::kMost))
        return std::nullopt;
    return number - kRecentNumber;
}

void FrameMenu::ShowStates(HMENU menu, const std::function<CommandState(Command)>& stateOf) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const auto number = static_cast<int>(GetMenuItemID(menu, i));  // -1 for a menu in it
        const CommandRow* const row = MaybeRowOf(number);
        if (row == nullptr && !MaybeRecent(number))
            continue;
        const CommandState state = stateOf(row != nullptr ? row->command : Command::Open);
        const auto place = static_cast<UINT>(i);
        EnableMenuItem(menu, place, MF_BYPOSITION | (state.enabled ? MF_ENABLED : MF_GRAYED));
        CheckMenuItem(menu, place, MF_BYPOSITION | (state.on ? MF_CHECKED : MF_UNCHECKED));
        if (state.caption.empty())
            continue;
        std::wstring text = Wide(WithKey(state.caption, *row));
        MENUITEMINFOW item = {};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_STRING;
        item.dwTypeData = text.data();
        SetMenuItemInfoW(menu, place, TRUE, &item);
    }
}

// The elements stand at the end of the File menu.
void FrameMenu::ShowRecent(const std::vector<std::string>& captions) {
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const auto number = static_cast<UINT>(kRecentNumber + i + 1);
        const std::wstring text = MenuText(captions[i]);
        if (i == 0 && m_recentShown == 0)
            AppendMenuW(m_file, MF_SEPARATOR, kRecentNumber, nullptr);
        if (i < m_recentShown)
            ModifyMenuW(m_file, number, MF_BYCOMMAND | MF_STRING, number, text.c_str());
        else
            AppendMenuW(m_file, MF_STRING, number, text.c_str());
    }
    m_recentShown = captions.size();
}

}  // namespace tobbin
