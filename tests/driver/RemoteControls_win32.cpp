#include "RemoteControls_win32.h"

#include <cstring>

namespace tobbin::driver {

namespace {

// Asks a control for a rectangle, whose first bytes hold what the question needs; the rectangle's
// middle on the screen.
template <typename Question>
POINT AskPlace(HWND control, UINT message, WPARAM wParam, Question question) {
    RECT place{};
    std::memcpy(&place, &question, sizeof question);
    Demand(Remote<RECT>(control).Ask(message, wParam, place) != 0, "the control gives no place");
    POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    ClientToScreen(control, &middle);
    return middle;
}

HTREEITEM Next(HWND tree, WPARAM which, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        Ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

void AddTree(HWND tree, Remote<TVITEMW>& remote, HTREEITEM item, int depth,
             std::vector<TreeRow>& rows) {
    for (; item != nullptr; item = Next(tree, TVGN_NEXT, item)) {
        TVITEMW question{};
        question.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_STATE;
        question.stateMask = TVIS_DROPHILITED;
        question.hItem = item;
        question.pszText = remote.Text();
        question.cchTextMax = textLength;
        Demand(remote.Ask(TVM_GETITEMW, 0, question) != 0, "the tree gives no text for an item");
        rows.push_back({item, depth, remote.Answer(), question.iImage, question.state});
        AddTree(tree, remote, Next(tree, TVGN_CHILD, item), depth + 1, rows);
    }
}

HWND HeaderOf(HWND list) {
    return reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER, 0, 0));
}

}  // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    Demand(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 30'000, &result) != 0,
           "a window of the program doesn't answer");
    return static_cast<LRESULT>(result);
}

std::vector<TreeRow> ReadTree(HWND tree) {
    Remote<TVITEMW> remote(tree);
    std::vector<TreeRow> rows;
    AddTree(tree, remote, Next(tree, TVGN_ROOT, nullptr), 0, rows);
    return rows;
}

Words ReadColumns(HWND list) {
    const auto count = static_cast<int>(Ask(HeaderOf(list), HDM_GETITEMCOUNT, 0, 0));
    Remote<LVCOLUMNW> remote(list);
    Words captions;
    for (int column = 0; column < count; ++column) {
        LVCOLUMNW question{};
        question.mask = LVCF_TEXT;
        question.pszText = remote.Text();
        question.cchTextMax = textLength;
        remote.Ask(LVM_GETCOLUMNW, static_cast<WPARAM>(column), question);
        captions.push_back(remote.Answer());
    }
    return captions;
}

std::vector<Words> ReadList(HWND list, int limit) {
    const auto columns = static_cast<int>(ReadColumns(list).size());
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT, 0, 0));
    Remote<LVITEMW> remote(list);
    std::vector<Words> rows;
    for (int row = 0; row < count && row < limit; ++row) {
        Words& answer = rows.emplace_back(2);
        for (int column = 0; column < columns; ++column) {
            LVITEMW question{};
            question.mask = LVIF_TEXT | (column == 0 ? LVIF_IMAGE | LVIF_STATE : 0U);
            question.stateMask = LVIS_SELECTED;
            question.iItem = row;
            question.iSubItem = column;
            question.pszText = remote.Text();
            question.cchTextMax = textLength;
            Demand(remote.Ask(LVM_GETITEMW, 0, question) != 0, "the list gives no text for a row");
            answer.push_back(remote.Answer());
            if (column == 0) {
                answer[0] = std::to_wstring(question.iImage);
                answer[1] = (question.state & LVIS_SELECTED) != 0 ? L"x" : L"";
            }
        }
    }
    return rows;
}

void SelectRows(HWND list, const Words& rows) {
    Remote<LVITEMW> remote(list);
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), state);
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    for (const std::wstring& row : rows)
        remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(std::stoi(row)), state);
}

POINT PlaceOfItem(HWND tree, HTREEITEM item) {
    Ask(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    return AskPlace(tree, TVM_GETITEMRECT, TRUE, item);
}

POINT PlaceOfRow(HWND list, int row) {
    Ask(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    return AskPlace(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), LONG{LVIR_LABEL});
}

POINT PlaceOfHeading(HWND list, int column) {
    return AskPlace(HeaderOf(list), HDM_GETITEMRECT, static_cast<WPARAM>(column), LONG{0});
}

std::wstring ReadStatus(HWND bar) {
    Remote<LONGLONG> remote(bar);
    Ask(bar, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(remote.Text()));
    return remote.Answer();
}

}  // namespace tobbin::driver
