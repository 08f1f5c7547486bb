#include "ui/PopUpMenus_win32.h"

#include <string>

#include "platform/AccessibleNames_win32.h"
#include "platform/ImageStrip_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/CommandMenus_win32.h"

namespace tobbin {
namespace {

// One picture of a list on the menu's own color, and some room before the text: not every system
// blends pictures with alpha into its menus.
UniqueBitmap BitmapOf(HIMAGELIST list, int index) {
    RECT place = {};
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list, &width, &height);
    width += height / 4;
    SetRect(&place, 0, 0, width, height);
    const HDC screen = GetDC(nullptr);
    UniqueBitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const UniqueMemoryDc dc(CreateCompatibleDC(screen));
    ReleaseDC(nullptr, screen);
    const HGDIOBJ old = SelectObject(dc.Get(), bitmap.Get());
    FillRect(dc.Get(), &place, GetSysColorBrush(COLOR_MENU));
    ImageList_Draw(list, index, dc.Get(), 0, 0, ILD_TRANSPARENT);
    SelectObject(dc.Get(), old);
    return bitmap;
}

}  // namespace

PopUpMenu::PopUpMenu(Menu which, HWND window) : m_which(which), m_menu(MakePopUpMenu(which)) {
    AddRankPictures(window);
    MENUINFO pictures = {};
    pictures.cbSize = sizeof(pictures);
    pictures.fMask = MIM_STYLE;
    pictures.dwStyle = MNS_CHECKORBMP;  // where ticks would be: nothing is ticked here
    SetMenuInfo(Handle(), &pictures);
}

PopUpMenu::~PopUpMenu() {
    ForEachRank([&](int place, const CommandRow&) { ForgetMenuItemName(Handle(), place); });
}

// Calls with the place, from 0, and the row of each entry that ranks.
template <typename Call>
void PopUpMenu::ForEachRank(Call call) const {
    for (int place = 0; place < GetMenuItemCount(Handle()); ++place)
        if (const CommandRow* const row =
                MaybeRowOf(static_cast<int>(GetMenuItemID(Handle(), place)));
            row != nullptr && row->acts.maybeRank != nullptr)
            call(place, *row);
}

// The ranks between best and worst have nothing but their pictures.
void PopUpMenu::AddRankPictures(HWND window) {
    const UniqueImageList ranks = LoadImageStrip(IDB_RANKS, window);
    ForEachRank([&](int place, const CommandRow& row) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_BITMAP;
        info.hbmpItem =
            m_pictures.emplace_back(BitmapOf(ranks.Get(), row.acts.maybeRank->shown)).Get();
        SetMenuItemInfoW(Handle(), static_cast<UINT>(place), TRUE, &info);
        NameMenuItem(Handle(), place, Wide(row.acts.maybeRank->menuName).c_str());
    });
}

LRESULT PopUpMenu::OnKey(HMENU menu, wchar_t key) {
    for (int place = 0; place < GetMenuItemCount(menu); ++place)
        if (const CommandRow* const row = MaybeRowOf(static_cast<int>(GetMenuItemID(menu, place)));
            row != nullptr && row->acts.maybeRank != nullptr &&
            row->acts.maybeRank - kRanks == key - L'1')
            return MAKELRESULT(place, MNC_EXECUTE);
    return 0;
}

void PopUpMenu::EnableEntries(const std::function<bool(Command)>& isEnabled) {
    for (const CommandRow& row : kCommands)
        if (MaybePlaceIn(m_which, row) != nullptr)
            EnableMenuItem(Handle(), static_cast<UINT>(row.command),
                           isEnabled(row.command) ? MF_ENABLED : MF_GRAYED);
    GrayEmptySubMenus();
}

// The caption of a menu in which no entry can act can't act either.
void PopUpMenu::GrayEmptySubMenus() const {
    for (int place = 0; place < GetMenuItemCount(Handle()); ++place) {
        const HMENU inside = GetSubMenu(Handle(), place);
        bool canAct = false;
        for (int i = 0; i < GetMenuItemCount(inside); ++i)
            canAct = canAct ||
                     (GetMenuState(inside, static_cast<UINT>(i), MF_BYPOSITION) & MF_GRAYED) == 0;
        if (inside != nullptr)
            EnableMenuItem(Handle(), static_cast<UINT>(place),
                           MF_BYPOSITION | (canAct ? MF_ENABLED : MF_GRAYED));
    }
}

void PopUpMenu::AddControlCommands() {
    for (const CommandRow& row : kCommands)
        if (const MenuPlace* const place = MaybePlaceIn(Menu::Control, row))
            AppendMenuW(Handle(), MF_STRING, static_cast<UINT_PTR>(place->position),
                        Wide(place->caption).c_str());
}

int PopUpMenu::Show(POINT screen, HWND window) const {
    const int chosen = TrackPopupMenuEx(Handle(), TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_LEFTALIGN,
                                        screen.x, screen.y, window, nullptr);
    if (MaybeRowAt(Menu::Control, chosen) != nullptr)
        SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    const CommandRow* const row = MaybeRowOf(chosen);
    return row != nullptr ? MaybePlaceIn(m_which, *row)->position : 0;
}

}  // namespace tobbin
