#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakeJukeboxView.h"
#include "jukebox/InitialJukebox.h"
#include "platform/Wide_win32.h"
#include "shell/Application.h"
#include "ui/JukeboxView_win32.h"
#include "ui/WicDecoder_win32.h"

namespace tobbin {
namespace {

// A jukebox window in an MDI client window of a hidden frame.
class JukeboxPanesTest : public testing::Test {
 protected:
    FakeEnvironment fake;
    Application application{fake.environment, {"C:\\App\\", "C:\\Windows\\System32\\"}};
    FakeJukeboxWindowHost host;
    Jukebox jukebox;
    JukeboxWindow controller{application.Tools(), jukebox, host};
    PictureLoader pictures{[] { return MakeSystemPictureMaker(); }, 1 << 20};
    JukeboxMdiChild window{controller, pictures};
    HWND frame = nullptr;

    JukeboxPanesTest() {
        frame = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 900, 700, nullptr,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
        CLIENTCREATESTRUCT creation = {};
        const HWND client =
            CreateWindowExW(0, L"MDICLIENT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 880, 660, frame,
                            nullptr, GetModuleHandleW(nullptr), &creation);
        AddListColumns(jukebox);
        for (const char* text : {"All Songs", "Artist", "Mine"})
            jukebox.AddChild(nullptr, text);
        jukebox.AddChild(&jukebox.Root(1), "Zappa");
        jukebox.AddChild(&jukebox.Root(1), "ABBA");
        EXPECT_TRUE(window.Open(client, false, nullptr, [] {}));
    }
    ~JukeboxPanesTest() override {
        window.Destroy();
        DestroyWindow(frame);
    }

    HWND Tree() { return window.Explorer().Tree().Handle(); }
    HWND List() { return window.Explorer().List().Handle(); }

    void AddSongs(Folder& folder, int count) {
        std::vector<SongItem> songs;
        songs.reserve(static_cast<std::size_t>(count));
        for (int i = 1; i <= count; ++i) {
            const std::string name = "song " + std::to_string(i) + ".mp3";
            application.Catalogue().OnSongFound("C:\\M\\", name);
            application.Catalogue().Mp3Info(clsMain::kRank, i, std::to_string(2 + i % 6));
            songs.push_back(jukebox.MakeItem(name, i, 2 + i % 6));
        }
        jukebox.SetSongs(folder, std::move(songs));
    }

    std::string CellText(int row, int column) {
        wchar_t text[100] = L"";
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 100;
        SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return Utf8(text);
    }
    int RowImage(int row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    }
};

TEST_F(JukeboxPanesTest, SelectingAFolderListsItsSongs) {
    AddSongs(jukebox.Root(0), 3);
    window.SelectFolder(&jukebox.Root(0));
    EXPECT_EQ(controller.SelectedFolder(), &jukebox.Root(0));
    ASSERT_EQ(ListView_GetItemCount(List()), 3);
    EXPECT_EQ(CellText(1, 0), "song 2.mp3");
    EXPECT_EQ(CellText(1, 1), "2");
    EXPECT_EQ(RowImage(1), 4);
    const ComApartment com;
    void* spoken = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(List(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         &spoken),
              S_OK);
    const ComPtr<IAccessible> rows(static_cast<IAccessible*>(spoken));
    VARIANT row = {};
    row.vt = VT_I4;
    for (const wchar_t* text : {L"Songs", L"song 1.mp3, rank: second-worst, 1 of 3",
                                L"song 2.mp3, rank: third-worst, 2 of 3"}) {
        BSTR name = nullptr;
        EXPECT_EQ(rows->get_accName(row, &name), S_OK);
        EXPECT_STREQ(name, text);
        SysFreeString(name);
        ++row.lVal;
    }
    window.SelectRows({0, 2});
    EXPECT_EQ(window.SelectedRows(), (std::vector<std::size_t>{0, 2}));
    RECT second = {};
    ListView_GetItemRect(List(), 1, &second, LVIR_BOUNDS);
    for (const auto& [y, gap] : {std::pair(second.top + 2L, 1U), std::pair(second.bottom - 2L, 2U),
                                 std::pair(second.bottom + 500L, 3U), std::pair(-50L, 0U)}) {
        POINT at = {20, y};
        ClientToScreen(List(), &at);
        EXPECT_EQ(window.Explorer().List().Mark().GapAt(at), gap);
    }
    window.SelectRows({2});
    controller.OnHeaderClicked();
    controller.OnHeaderClicked();
    EXPECT_EQ(CellText(0, 0), "song 3.mp3");
    HDITEMW heading = {};
    heading.mask = HDI_FORMAT;
    SendMessageW(ListView_GetHeader(List()), HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&heading));
    EXPECT_EQ(heading.fmt & (HDF_SORTUP | HDF_SORTDOWN), HDF_SORTDOWN);
    AddSongs(jukebox.Root(0), 1);  // while they are shown
    EXPECT_EQ(ListView_GetItemCount(List()), 1);
    AddSongs(jukebox.Root(2), 3);
    window.SelectFolder(&jukebox.Root(2));
    EXPECT_EQ(window.SelectedCount(), 0U);
    jukebox.Remove(jukebox.Root(2));  // which selects another
    EXPECT_EQ(controller.SelectedFolder(), window.Explorer().Tree().SelectedFolder());
    EXPECT_EQ(static_cast<std::size_t>(ListView_GetItemCount(List())), controller.RowCount());
}

// The whole row is a folder's place, also under the scroll bar; a closed branch gives the selection
// to its folder.
TEST_F(JukeboxPanesTest, WhatTheTreeMarksIsWhatACommandGets) {
    TreePane& tree = window.Explorer().Tree();
    Folder& artist = jukebox.Root(1);
    const HTREEITEM item = TreeView_GetNextSibling(Tree(), TreeView_GetRoot(Tree()));
    RECT row = {};
    ASSERT_TRUE(TreeView_GetItemRect(Tree(), item, &row, FALSE));
    RECT outer = {};
    GetWindowRect(Tree(), &outer);
    const auto folderAt = [&](int x, int y) {
        POINT at = {0, y};
        ClientToScreen(Tree(), &at);
        return tree.MaybeFolderAt({x, at.y});
    };
    const int middle = (row.top + row.bottom) / 2;
    for (const int x : {static_cast<int>(outer.left), static_cast<int>(outer.right) - 4,
                        static_cast<int>(outer.right) - 1})
        EXPECT_EQ(folderAt(x, middle), &artist) << x - outer.left;
    EXPECT_EQ(folderAt(outer.left + 40, row.bottom + 3 * (row.bottom - row.top)), nullptr);

    for (const bool byMouse : {false, true}) {
        window.ExpandFolder(artist, true);
        window.SelectFolder(&artist.Child(1));
        ASSERT_EQ(controller.SelectedFolder(), &artist.Child(1));
        TVHITTESTINFO hit = {{0, middle}, 0, nullptr};
        while (hit.pt.x < row.right &&
               (TreeView_HitTest(Tree(), &hit), hit.flags) != static_cast<UINT>(TVHT_ONITEMBUTTON))
            ++hit.pt.x;
        if (byMouse)
            SendMessageW(Tree(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(hit.pt.x, middle));
        else
            window.ExpandFolder(artist, false);
        EXPECT_EQ(tree.SelectedFolder(), &artist);
        EXPECT_EQ(controller.SelectedFolder(), &artist);
    }
}

TEST_F(JukeboxPanesTest, ListsHalfAMillionSongs) {
    constexpr int kMany = 500'000;
    AddSongs(jukebox.Root(0), kMany);
    window.SelectFolder(&jukebox.Root(0));
    EXPECT_EQ(CellText(kMany - 1, 0), "song 500000.mp3");
    std::vector<std::size_t> most;  // A large selection gives way, with the same rows in view.
    for (std::size_t row = 0; row < kMany; ++row)
        if (row % 1000 != 7)
            most.push_back(row);
    window.SelectRows(most);
    EXPECT_EQ(window.SelectedRows(), most);
    window.MakeRowVisible(kMany - 1);
    const int top = ListView_GetTopIndex(List());
    window.SelectRows({7, 400'000});
    EXPECT_EQ(window.SelectedRows(), (std::vector<std::size_t>{7, 400'000}));
    EXPECT_EQ(window.MaybeFocusedRow(), 7U);
    EXPECT_EQ(ListView_GetTopIndex(List()), top);
}

TEST_F(JukeboxPanesTest, TheSplitterMoves) {
    const HWND explorer = window.Explorer().Handle();
    const auto treeEnd = [&] {
        RECT place = {};
        GetWindowRect(Tree(), &place);
        MapWindowPoints(nullptr, explorer, reinterpret_cast<POINT*>(&place), 2);
        return static_cast<int>(place.right);
    };
    const int before = treeEnd();
    SendMessageW(explorer, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(before + 1, 50));
    SendMessageW(explorer, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(before + 41, 50));
    SendMessageW(explorer, WM_LBUTTONUP, 0, MAKELPARAM(before + 41, 50));
    EXPECT_NEAR(treeEnd(), before + 40, 1);
    SendMessageW(explorer, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(before + 41, 50));
    EXPECT_EQ(treeEnd(), before);
}

}  // namespace
}  // namespace tobbin
