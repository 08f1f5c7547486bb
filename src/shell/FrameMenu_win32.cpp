#include "shell/FrameMenu_win32.h"

#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/RecentMenu.h"

namespace tobbin {
namespace {

static_assert(static_cast<int>(FrameCommand::New) == IDM_NEW);
static_assert(static_cast<int>(FrameCommand::Exit) == IDM_EXIT);
static_assert(static_cast<int>(FrameCommand::AddFolderToSelectedFolder) ==
              IDM_ADD_FOLDER_TO_SELECTED);
static_assert(static_cast<int>(FrameCommand::SortList) == IDM_SORT_LIST);
static_assert(static_cast<int>(FrameCommand::ClosePlayer) == IDM_CLOSE_PLAYER);
static_assert(static_cast<int>(FrameCommand::PreviousPicture) == IDM_PREVIOUS_PICTURE);
static_assert(static_cast<int>(FrameCommand::ArrangeIcons) == IDM_ARRANGE_ICONS);
static_assert(static_cast<int>(FrameCommand::About) == IDM_ABOUT);

// A menu takes "&" for the mark of an access key; those behind the first one are a path's own and
// are doubled.
std::wstring MenuText(const std::string& caption) {
    std::wstring text = Wide(caption);
    for (std::size_t at = 1; (at = text.find(L'&', at)) != std::wstring::npos; at += 2)
        text.insert(at, 1, L'&');
    return text;
}

}  // namespace

FrameMenu::FrameMenu()
    : m_menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_FRAME_MENU))),
      m_file(GetSubMenu(m_menu.Get(), MENU_FILE)),
      m_windowList(GetSubMenu(m_menu.Get(), MENU_WINDOW)),
      m_keys(LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS))) {}

bool FrameMenu::IsFrameCommand(int number) {
    return number >= IDM_NEW && number <= IDM_ABOUT;
}

std::optional<int> FrameMenu::MaybeRecent(int number) {
    if (number <= IDM_RECENT || number > IDM_RECENT + static_cast<int>(RecentMenu::kMost))
        return std::nullopt;
    return number - IDM_RECENT;
}

void FrameMenu::EnableItems(HMENU menu, const std::function<bool(FrameCommand)>& isEnabled) const {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const auto number = static_cast<int>(GetMenuItemID(menu, i));  // -1 for a menu in it
        const bool isRecent = MaybeRecent(number).has_value();
        if (!isRecent && !IsFrameCommand(number))
            continue;
        const auto command = isRecent ? FrameCommand::Open : static_cast<FrameCommand>(number);
        EnableMenuItem(menu, static_cast<UINT>(number),
                       isEnabled(command) ? MF_ENABLED : MF_GRAYED);
    }
}

void FrameMenu::TickItem(FrameCommand command, bool ticked) const {
    CheckMenuItem(m_menu.Get(), static_cast<UINT>(command), ticked ? MF_CHECKED : MF_UNCHECKED);
}

// The elements stand at the end of the File menu.
void FrameMenu::ShowRecent(const std::vector<std::string>& captions) {
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const auto number = static_cast<UINT>(IDM_RECENT + i + 1);
        const std::wstring text = MenuText(captions[i]);
        if (i == 0 && m_recentShown == 0)
            AppendMenuW(m_file, MF_SEPARATOR, IDM_RECENT, nullptr);
        if (i < m_recentShown)
            ModifyMenuW(m_file, number, MF_BYCOMMAND | MF_STRING, number, text.c_str());
        else
            AppendMenuW(m_file, MF_STRING, number, text.c_str());
    }
    m_recentShown = captions.size();
}

}  // namespace tobbin
