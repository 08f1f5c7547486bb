#include "ui/PopUpMenus_win32.h"

#include <string>

#include "platform/AccessibleNames_win32.h"
#include "platform/ImageStrip_win32.h"
#include "resource.h"
#include "ui/JukeboxWindow.h"

namespace tobbin {
namespace {

// The entries of the song menu that rank, and the picture of the first one's rank.
constexpr int kBestEntry = 9;
constexpr int kWorstEntry = 14;
constexpr int kBestPicture = 7;

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

std::wstring RankName(int rank) {
    return L"Rank " + std::to_wstring(rank) + L" of 6" +
           (rank == 1   ? L", best"
            : rank == 6 ? L", worst"
                        : L"");
}

}  // namespace

PopUpMenu::PopUpMenu(int pane, HWND window)
    : m_firstNumber(pane == static_cast<int>(Pane::Tree) ? IDM_FOLDER_POPUP : IDM_SONG_POPUP),
      m_entries(pane == static_cast<int>(Pane::Tree) ? kFolderMenuEntries : kSongMenuEntries),
      m_menu(LoadMenuW(GetModuleHandleW(nullptr),
                       MAKEINTRESOURCEW(pane == static_cast<int>(Pane::Tree) ? IDR_FOLDER_POPUP
                                                                             : IDR_SONG_POPUP))) {
    if (pane != static_cast<int>(Pane::Tree))
        AddRankPictures(window);
    MENUINFO pictures = {};
    pictures.cbSize = sizeof(pictures);
    pictures.fMask = MIM_STYLE;
    pictures.dwStyle = MNS_CHECKORBMP;  // where ticks would be: nothing is ticked here
    SetMenuInfo(Handle(), &pictures);
}

PopUpMenu::~PopUpMenu() {
    if (!m_pictures.empty())
        for (int entry = kBestEntry; entry <= kWorstEntry; ++entry)
            ForgetMenuItemName(Handle(), entry - 1);
}

// The ranks between best and worst have nothing but their pictures. Without a text an entry of the
// resource is a separator, so its kind is set here.
void PopUpMenu::AddRankPictures(HWND window) {
    const UniqueImageList ranks = LoadImageStrip(IDB_RANKS, window);
    for (int entry = kBestEntry; entry <= kWorstEntry; ++entry) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_BITMAP;
        info.hbmpItem =
            m_pictures.emplace_back(BitmapOf(ranks.Get(), kBestPicture - (entry - kBestEntry)))
                .Get();
        wchar_t noText[] = L"";
        if (entry != kBestEntry && entry != kWorstEntry) {
            info.fMask |= MIIM_FTYPE | MIIM_STRING;
            info.fType = MFT_STRING;
            info.dwTypeData = noText;
        }
        SetMenuItemInfoW(m_menu.Get(), static_cast<UINT>(m_firstNumber + entry), FALSE, &info);
        NameMenuItem(Handle(), entry - 1, RankName(entry - kBestEntry + 1).c_str());
    }
}

LRESULT PopUpMenu::OnKey(HMENU menu, wchar_t key) {
    if (key < L'1' || key > L'6')
        return 0;
    const UINT wanted = static_cast<UINT>(IDM_SONG_POPUP + kBestEntry + (key - L'1'));
    for (int place = 0; place < GetMenuItemCount(menu); ++place)
        if (GetMenuItemID(menu, place) == wanted)
            return MAKELRESULT(place, MNC_EXECUTE);
    return 0;
}

void PopUpMenu::EnableEntries(const std::function<bool(int entry)>& isEnabled) {
    for (int entry = 1; entry <= m_entries; ++entry)
        EnableMenuItem(m_menu.Get(), static_cast<UINT>(m_firstNumber + entry),
                       isEnabled(entry) ? MF_ENABLED : MF_GRAYED);
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
    AppendMenuW(Handle(), MF_STRING, kNextPic, L"Next Pic");
    AppendMenuW(Handle(), MF_STRING, kPrevPic, L"Prev. Pic");
}

int PopUpMenu::Show(POINT screen, HWND window) const {
    const int chosen = TrackPopupMenuEx(Handle(), TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_LEFTALIGN,
                                        screen.x, screen.y, window, nullptr);
    if (chosen == kNextPic || chosen == kPrevPic) {
        SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
        return 0;
    }
    return chosen > 0 ? chosen - m_firstNumber : 0;
}

}  // namespace tobbin
