#include "ui/TreePane_win32.h"

#include <uxtheme.h>

#include <algorithm>

#include "jukebox/SpecialFolders.h"
#include "platform/AccessibleNames_win32.h"
#include "platform/DrawingPause_win32.h"
#include "platform/ImageStrip_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/PaneColors_win32.h"

namespace tobbin {
namespace {

Folder* Sibling(const Jukebox& jukebox, const Folder& folder, std::size_t index) {
    return folder.Parent() != nullptr ? &folder.Parent()->Child(index) : &jukebox.Root(index);
}

// The folders that the program fills have the pictures behind those of the others, and the folders
// in them the ones behind these.
int KindOffset(const Folder& folder) {
    return IsSpecialFolder(folder) ? 2 : IsInSpecialFolder(folder) ? 4 : 0;
}

// The folder that follows one and all that is in it, in the order of the tree; null for none.
const Folder* Behind(const Jukebox& jukebox, const Folder& folder) {
    for (const Folder* at = &folder; at != nullptr; at = at->Parent()) {
        const std::size_t next = at->Index() + 1;
        const Folder* const parent = at->Parent();
        if (next < (parent != nullptr ? parent->ChildCount() : jukebox.RootCount()))
            return parent != nullptr ? &parent->Child(next) : &jukebox.Root(next);
    }
    return nullptr;
}

int CALLBACK CompareByIndex(LPARAM a, LPARAM b, LPARAM /*unused*/) {
    const std::size_t first = reinterpret_cast<const Folder*>(a)->Index();
    const std::size_t second = reinterpret_cast<const Folder*>(b)->Index();
    return first < second ? -1 : first > second ? 1 : 0;
}

}  // namespace

TreePane::TreePane(Jukebox& jukebox, TreePaneDelegate& delegate)
    : m_jukebox(jukebox), m_delegate(delegate) {
    m_jukebox.AddListener(*this);
}

TreePane::~TreePane() {
    m_jukebox.RemoveListener(*this);
}

bool TreePane::Create(HWND parent, int number) {
    m_handle = CreateWindowExW(
        WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"Folders",
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TVS_HASLINES | TVS_LINESATROOT |
            TVS_HASBUTTONS | TVS_SHOWSELALWAYS | TVS_EDITLABELS | TVS_INFOTIP,
        0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
        GetModuleHandleW(nullptr), nullptr);
    if (m_handle == nullptr)
        return false;
    TreeView_SetExtendedStyle(m_handle, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    NameWindow(m_handle, L"Folders");
    OnDpiChanged();
    if (Folder* const first = m_jukebox.Next(nullptr); first != nullptr)
        Insert(*first, nullptr);
    return true;
}

void TreePane::OnDpiChanged() {
    UniqueImageList icons = LoadImageStrip(IDB_FOLDERS, m_handle);
    TreeView_SetImageList(m_handle, icons.Get(), TVSIL_NORMAL);
    m_icons = std::move(icons);
}

void TreePane::OnDestroy() {
    m_jukebox.RemoveListener(*this);
    m_handle = nullptr;
    m_items.clear();
}

// Inserts the folders from one to the one before the end, in the order of the tree.
void TreePane::Insert(Folder& first, const Folder* end) {
    const DrawingPause pause(m_handle);
    for (Folder* folder = &first; folder != end; folder = m_jukebox.Next(folder))
        InsertItem(*folder);
}

void TreePane::InsertItem(Folder& folder) {
    std::wstring text = WideShown(folder.Text());
    TVINSERTSTRUCTW insert = {};
    insert.hParent = folder.Parent() != nullptr ? ItemOf(folder.Parent()) : TVI_ROOT;
    insert.hInsertAfter =
        folder.Index() > 0 ? ItemOf(Sibling(m_jukebox, folder, folder.Index() - 1)) : TVI_FIRST;
    insert.itemex.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    insert.itemex.pszText = text.data();
    insert.itemex.iImage = folder.Image() + KindOffset(folder);
    insert.itemex.iSelectedImage = folder.SelectedImage() + KindOffset(folder);
    insert.itemex.lParam = reinterpret_cast<LPARAM>(&folder);
    m_items[&folder] = reinterpret_cast<HTREEITEM>(
        SendMessageW(m_handle, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TreePane::OnFolderAdded(Folder& folder) {
    if (m_handle != nullptr)
        Insert(folder, Behind(m_jukebox, folder));
}

void TreePane::OnFolderRemoving(Folder& folder) {
    const HTREEITEM item = ItemOf(&folder);
    if (item == nullptr)
        return;
    TreeView_EndEditLabelNow(m_handle, TRUE);
    const DrawingPause pause(m_handle);
    TreeView_DeleteItem(m_handle, item);  // which tells of each item below
}

// Its text may make it, or may have made it, one that the program fills; so the pictures of the
// folders in it may change, too.
void TreePane::OnFolderTextChanged(Folder& folder) {
    for (const Folder* at = &folder; at != nullptr && at->IsInside(folder);
         at = m_jukebox.Next(at)) {
        std::wstring text = WideShown(at->Text());
        TVITEMW item = {};
        item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        item.hItem = ItemOf(at);
        item.pszText = text.data();
        item.iImage = at->Image() + KindOffset(*at);
        item.iSelectedImage = at->SelectedImage() + KindOffset(*at);
        if (item.hItem != nullptr)
            SendMessageW(m_handle, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void TreePane::OnChildrenReordered(Folder* parent) {
    TVSORTCB sort = {};
    sort.hParent = parent != nullptr ? ItemOf(parent) : TVI_ROOT;
    sort.lpfnCompare = &CompareByIndex;
    if (m_handle != nullptr && sort.hParent != nullptr)
        SendMessageW(m_handle, TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort));
}

LRESULT TreePane::OnNotify(NMHDR& header) {
    switch (header.code) {
        case TVN_SELCHANGEDW:
            m_delegate.OnFolderSelected(reinterpret_cast<Folder*>(
                reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.lParam));
            return 0;
        case TVN_ITEMEXPANDINGW: {
            const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
            if ((change.action & TVE_TOGGLE) == TVE_COLLAPSE)
                SelectOver(FolderOf(change.itemNew.hItem));
            return 0;
        }
        case TVN_DELETEITEMW:
            m_items.erase(reinterpret_cast<const Folder*>(
                reinterpret_cast<const NMTREEVIEWW&>(header).itemOld.lParam));
            return 0;
        case TVN_BEGINLABELEDITW: {
            const auto& info = reinterpret_cast<const NMTVDISPINFOW&>(header);
            const auto* const folder = reinterpret_cast<const Folder*>(info.item.lParam);
            return folder == nullptr || !m_delegate.MayEditText(*folder);
        }
        case TVN_ENDLABELEDITW:
            return OnEndLabelEdit(reinterpret_cast<const NMTVDISPINFOW&>(header));
        case TVN_BEGINDRAGW:
            if (Folder* const folder = reinterpret_cast<Folder*>(
                    reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.lParam);
                folder != nullptr)
                m_delegate.OnFolderDragged(*folder);
            return 0;
        case NM_RETURN:
            TreeView_Expand(m_handle, TreeView_GetSelection(m_handle), TVE_TOGGLE);
            return TRUE;  // or the control beeps
        case TVN_KEYDOWN:
            return m_delegate.OnTreeKey(reinterpret_cast<const NMTVKEYDOWN&>(header).wVKey);
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
        case NM_SETFOCUS:
            m_delegate.OnTreeFocused();
            return 0;
        default:
            return 0;
    }
}

LRESULT TreePane::OnCustomDraw(NMTVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return GetFocus() == m_handle ? CDRF_DODEFAULT : CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && (draw.nmcd.uItemState & CDIS_SELECTED) != 0) {
        draw.clrTextBk = QuietSelectionColor();
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
    }
    return CDRF_DODEFAULT;
}

// The jukebox's own signal sets the item's text.
LRESULT TreePane::OnEndLabelEdit(const NMTVDISPINFOW& info) {
    if (info.item.pszText != nullptr)
        if (Folder* const folder = FolderOf(info.item.hItem); folder != nullptr)
            m_delegate.OnTextEdited(*folder, Utf8(info.item.pszText));
    return FALSE;
}

HTREEITEM TreePane::ItemOf(const Folder* folder) const {
    const auto found = m_items.find(folder);
    return found != m_items.end() ? found->second : nullptr;
}

Folder* TreePane::FolderOf(HTREEITEM handle) const {
    if (handle == nullptr)
        return nullptr;
    TVITEMW item = {};
    item.mask = TVIF_PARAM;
    item.hItem = handle;
    SendMessageW(m_handle, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return reinterpret_cast<Folder*>(item.lParam);
}

Folder* TreePane::SelectedFolder() const {
    return FolderOf(TreeView_GetSelection(m_handle));
}

void TreePane::SelectFolder(Folder* folder) {
    TreeView_SelectItem(m_handle, ItemOf(folder));
}

void TreePane::ExpandFolder(Folder& folder, bool open) {
    if (!open)
        SelectOver(&folder);
    if (const HTREEITEM item = ItemOf(&folder); item != nullptr)
        TreeView_Expand(m_handle, item, open ? TVE_EXPAND : TVE_COLLAPSE);
}

// A folder that closes is about to hide the selected one. The control of Wine 8 marks it then
// without telling its parent.
void TreePane::SelectOver(Folder* closing) {
    const Folder* const selected = SelectedFolder();
    if (closing != nullptr && selected != nullptr && selected != closing &&
        selected->IsInside(*closing))
        SelectFolder(closing);
}

void TreePane::EditText(const Folder& folder) {
    if (const HTREEITEM item = ItemOf(&folder); item != nullptr) {
        SetFocus(m_handle);
        TreeView_EnsureVisible(m_handle, item);
        SendMessageW(m_handle, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(item));
    }
}

void TreePane::MarkDrop(const Folder* folder) {
    TreeView_SelectDropTarget(m_handle, ItemOf(folder));
}

POINT TreePane::MenuPlace() const {
    RECT place = {};
    POINT point = {0, 0};
    const HTREEITEM item = TreeView_GetSelection(m_handle);
    if (item != nullptr) {
        TreeView_EnsureVisible(m_handle, item);
        if (TreeView_GetItemRect(m_handle, item, &place, TRUE))
            point = {place.left, place.bottom};
    }
    ClientToScreen(m_handle, &point);
    return point;
}

Folder* TreePane::MaybeFolderAt(POINT screen) const {
    TVHITTESTINFO hit = {};
    hit.pt = screen;
    ScreenToClient(m_handle, &hit.pt);
    RECT inner = {};
    GetClientRect(m_handle, &inner);
    hit.pt.x = std::clamp(hit.pt.x, inner.left, std::max(inner.left, inner.right - 1));
    hit.pt.y = std::clamp(hit.pt.y, inner.top, std::max(inner.top, inner.bottom - 1));
    return FolderOf(TreeView_HitTest(m_handle, &hit));
}

}  // namespace tobbin
