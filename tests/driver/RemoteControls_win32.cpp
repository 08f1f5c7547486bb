#include "RemoteControls_win32.h"

#include <cstring>
#include <stdexcept>

namespace tobbin::driver {

namespace {

constexpr int textLength = 1024;  // characters; longer texts are cut

// A structure followed by room for a text, both in the process of the window.
template <typename Structure>
class RemoteText {
 public:
    explicit RemoteText(HWND window)
        : m_window(window), m_memory(window, sizeof(Structure) + textLength * sizeof(wchar_t)) {}

    wchar_t* Text() const {
        return reinterpret_cast<wchar_t*>(m_memory.Address() + sizeof(Structure));
    }

    // Sends a message with the structure and takes the control's answer back into it.
    LRESULT Ask(UINT message, WPARAM wParam, Structure& structure) {
        m_memory.Write(0, &structure, sizeof structure);
        const LRESULT result =
            driver::Ask(m_window, message, wParam, reinterpret_cast<LPARAM>(m_memory.Address()));
        m_memory.Read(0, &structure, sizeof structure);
        return result;
    }

    std::wstring Answer() const {
        std::wstring text(textLength, L'\0');
        m_memory.Read(sizeof(Structure), text.data(), textLength * sizeof(wchar_t));
        return text.substr(0, text.find(L'\0'));
    }

 private:
    HWND m_window;
    RemoteMemory m_memory;
};

// Asks a control for a rectangle, whose first bytes hold what the question needs; the rectangle's
// middle on the screen.
template <typename Question>
POINT AskPlace(HWND control, UINT message, WPARAM wParam, Question question) {
    RECT place{};
    std::memcpy(&place, &question, sizeof question);
    RemoteMemory memory(control, sizeof place);
    memory.Write(0, &place, sizeof place);
    if (Ask(control, message, wParam, reinterpret_cast<LPARAM>(memory.Address())) == 0)
        throw std::runtime_error("the control gives no place");
    memory.Read(0, &place, sizeof place);
    POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    ClientToScreen(control, &middle);
    return middle;
}

HTREEITEM Next(HWND tree, WPARAM which, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        Ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

void AddTree(HWND tree, RemoteText<TVITEMW>& remote, HTREEITEM item, int depth,
             std::vector<TreeRow>& rows) {
    for (; item != nullptr; item = Next(tree, TVGN_NEXT, item)) {
        TVITEMW question{};
        question.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_STATE;
        question.stateMask = TVIS_DROPHILITED;
        question.hItem = item;
        question.pszText = remote.Text();
        question.cchTextMax = textLength;
        if (remote.Ask(TVM_GETITEMW, 0, question) == 0)
            throw std::runtime_error("the tree gives no text for one of its items");
        rows.push_back({item, depth, remote.Answer(), question.iImage, question.state});
        AddTree(tree, remote, Next(tree, TVGN_CHILD, item), depth + 1, rows);
    }
}

}  // namespace

RemoteMemory::RemoteMemory(HWND window, std::size_t size) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    m_process.Reset(OpenProcess(
        PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_QUERY_INFORMATION,
        FALSE, process));
    if (m_process)
        m_address = static_cast<std::byte*>(VirtualAllocEx(
            m_process.Get(), nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    if (m_address == nullptr)
        throw std::runtime_error("no memory in the program's process");
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(m_process.Get(), m_address, 0, MEM_RELEASE);
}

void RemoteMemory::Write(std::size_t offset, const void* data, std::size_t size) {
    if (!WriteProcessMemory(m_process.Get(), m_address + offset, data, size, nullptr))
        throw std::runtime_error("the program's memory can't be written");
}

void RemoteMemory::Read(std::size_t offset, void* data, std::size_t size) const {
    if (!ReadProcessMemory(m_process.Get(), m_address + offset, data, size, nullptr))
        throw std::runtime_error("the program's memory can't be read");
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 30'000, &result) == 0)
        throw std::runtime_error("a window of the program doesn't answer");
    return static_cast<LRESULT>(result);
}

std::vector<TreeRow> ReadTree(HWND tree) {
    RemoteText<TVITEMW> remote(tree);
    std::vector<TreeRow> rows;
    AddTree(tree, remote, Next(tree, TVGN_ROOT, nullptr), 0, rows);
    return rows;
}

std::vector<std::wstring> ReadColumns(HWND list) {
    const auto header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER, 0, 0));
    const auto count = static_cast<int>(Ask(header, HDM_GETITEMCOUNT, 0, 0));
    RemoteText<LVCOLUMNW> remote(list);
    std::vector<std::wstring> captions;
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

std::vector<ListRow> ReadList(HWND list, int limit) {
    const auto columns = static_cast<int>(ReadColumns(list).size());
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT, 0, 0));
    RemoteText<LVITEMW> remote(list);
    std::vector<ListRow> rows;
    for (int row = 0; row < count && row < limit; ++row) {
        ListRow& answer = rows.emplace_back();
        for (int column = 0; column < columns; ++column) {
            LVITEMW question{};
            question.mask = LVIF_TEXT | (column == 0 ? LVIF_IMAGE : 0U);
            question.iItem = row;
            question.iSubItem = column;
            question.pszText = remote.Text();
            question.cchTextMax = textLength;
            if (remote.Ask(LVM_GETITEMW, 0, question) == 0)
                throw std::runtime_error("the list gives no text for one of its rows");
            answer.cells.push_back(remote.Answer());
            if (column == 0)
                answer.image = question.iImage;
        }
        answer.selected = Ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
    }
    return rows;
}

void SelectRows(HWND list, const std::vector<int>& rows) {
    RemoteText<LVITEMW> remote(list);
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), state);
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    for (const int row : rows)
        remote.Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), state);
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
    const auto header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER, 0, 0));
    return AskPlace(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), LONG{0});
}

std::wstring ReadStatus(HWND bar, int part) {
    const auto length = LOWORD(Ask(bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(part), 0));
    RemoteMemory memory(bar, (length + std::size_t{1}) * sizeof(wchar_t));
    Ask(bar, SB_GETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(memory.Address()));
    std::wstring text(length, L'\0');
    memory.Read(0, text.data(), length * sizeof(wchar_t));
    return text;
}

}  // namespace tobbin::driver
