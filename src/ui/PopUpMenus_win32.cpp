#include "ui/PopUpMenus_win32.h"

#include <string>

#include "platform/AccessibleNames_win32.h"
#include "platform/Dpi_win32.h"
#include "platform/ImageStrip_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/CommandMenus_win32.h"

namespace tobbin {
namespace {

// Pixels at 96 to the inch, between a picture and a text. Wine 8 begins the text where the
// picture's column ends, however wide that wants to be; so the picture moves to the left a little.
constexpr int kAir = 4, kMove = 3;

const RankRow* MaybeRankOf(UINT item) {
    const CommandRow* const row = MaybeRowOf(static_cast<int>(item));
    return row != nullptr ? row->acts.maybeRank : nullptr;
}

}  // namespace

PopUpMenu::PopUpMenu(Menu which) : m_which(which), m_menu(MakePopUpMenu(which)) {
    AddRankPictures();
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
void PopUpMenu::AddRankPictures() {
    ForEachRank([&](int place, const CommandRow& row) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_BITMAP;
        info.hbmpItem = HBMMENU_CALLBACK;
        SetMenuItemInfoW(Handle(), static_cast<UINT>(place), TRUE, &info);
        NameMenuItem(Handle(), place, Wide(row.acts.maybeRank->menuName).c_str());
    });
}

void PopUpMenu::OnMeasure(MEASUREITEMSTRUCT& item, HWND window) {
    int width = 0;
    int height = 0;
    if (item.CtlType != ODT_MENU || MaybeRankOf(item.itemID) == nullptr ||
        !ImageList_GetIconSize(LoadImageStrip(IDB_RANKS, window).Get(), &width, &height))
        return;
    item.itemWidth = static_cast<UINT>(width + ScalePixels(kAir, window));
    item.itemHeight = static_cast<UINT>(height);
}

void PopUpMenu::OnDraw(const DRAWITEMSTRUCT& item, HWND window) {
    const RankRow* const rank = MaybeRankOf(item.itemID);
    if (item.CtlType != ODT_MENU || rank == nullptr)
        return;
    const UniqueImageList pictures = LoadImageStrip(IDB_RANKS, window);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(pictures.Get(), &width, &height);
    ImageList_Draw(pictures.Get(), rank->shown, item.hDC,
                   item.rcItem.left - ScalePixels(kMove, window),
                   (item.rcItem.top + item.rcItem.bottom - height) / 2, ILD_TRANSPARENT);
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
