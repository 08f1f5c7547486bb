#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>

#include "unit/ui/EditingFixture.h"

namespace tobbin {
namespace {

// A jukebox as plain as can be.
struct PlainFolder {
    int id = 0;  // the same for the same folder, also after it was cut and came back
    std::string text;
    std::vector<int> songs;  // record numbers
    std::vector<PlainFolder> children;
};

struct PlainJukebox {
    PlainFolder root;
    std::map<int, std::string> ranks;
    int version = 0;    // of what a jukebox file keeps
    std::string bytes;  // of the files

    // In the order of the tree; the root is the first.
    std::vector<PlainFolder*> Folders() {
        std::vector<PlainFolder*> found{&root};
        std::function<void(PlainFolder&)> walk = [&](PlainFolder& folder) {
            for (PlainFolder& child : folder.children) {
                found.push_back(&child);
                walk(child);
            }
        };
        walk(root);
        return found;
    }
    PlainFolder& ParentOf(const PlainFolder& wanted) {
        for (PlainFolder* const folder : Folders())
            for (const PlainFolder& child : folder->children)
                if (&child == &wanted)
                    return *folder;
        return root;
    }
    bool IsTop(const PlainFolder& folder) { return &ParentOf(folder) == &root; }
    bool IsSpecial(const PlainFolder& folder) {
        static const std::set<std::string> tops = {"All Songs", "New",    "Decades",
                                                   "Genre",     "Artist", "Year"};
        static const std::set<std::string> decades = {"00's", "20's", "30's", "40's", "50's",
                                                      "60's", "70's", "80's", "90's"};
        if (IsTop(folder))
            return tops.contains(folder.text);
        PlainFolder& parent = ParentOf(folder);
        return IsTop(parent) && parent.text == "Decades" && decades.contains(folder.text);
    }
    bool IsInside(const PlainFolder& folder, int id) {
        const PlainFolder* at = &folder;
        for (; at != &root && at->id != id; at = &ParentOf(*at)) {
        }
        return at->id == id;
    }
    PlainFolder& WithId(int id) {
        const auto folders = Folders();
        return **std::ranges::find(folders, id, &PlainFolder::id);
    }
    PlainFolder Take(PlainFolder& folder) {
        std::vector<PlainFolder>& siblings = ParentOf(folder).children;
        PlainFolder taken = folder;
        siblings.erase(siblings.begin() + (&folder - siblings.data()));
        return taken;
    }
    void Append(PlainFolder& to, const std::vector<int>& songs) {
        const bool once = to.text == "All Songs" && IsTop(to);
        for (const int song : songs)
            if (!once || std::ranges::count(to.songs, song) == 0)
                to.songs.push_back(song);
    }
};

std::vector<int> TakeRows(PlainFolder& folder, const std::vector<std::size_t>& rows) {
    std::vector<int> taken, left;
    for (std::size_t row = 0; row < folder.songs.size(); ++row)
        (std::ranges::count(rows, row) > 0 ? taken : left).push_back(folder.songs[row]);
    folder.songs = left;
    return taken;
}

// Does edits chosen by chance in the window and, by the plainest means, in the plain jukebox.
class RandomEdits : public EditingTest {
 protected:
    static constexpr int kSongs = 12;
    std::mt19937 random{20250101};
    PlainJukebox now;
    std::vector<PlainJukebox> past, future;
    bool holdsFolder = false;
    PlainFolder heldFolder;
    std::vector<int> heldSongs;
    int lastId = 0;
    int lastVersion = 0;
    int savedVersion = 0;  // -1: no version is known to be saved

    RandomEdits() {
        Jukebox& jukebox = Window().Model();
        for (const char* const text : {"New", "Genre", "Year"})
            jukebox.AddChild(nullptr, text);
        jukebox.AddChild(At("Decades"), "00's");
        jukebox.AddChild(At("By Mood"), "70's");
        std::vector<SongItem> songs;
        for (int record = 1; record <= kSongs; ++record) {
            const std::string name(1, static_cast<char>('`' + record));
            if (record > application.Catalogue().UBoundOfMp3Array())
                application.Catalogue().OnSongFound("C:\\M\\", name);
            songs.push_back(jukebox.MakeItem(name, record, 2));
            now.ranks[record] = "2";
        }
        application.Catalogue().Save();
        jukebox.SetSongs(*At("All Songs"), songs);
        jukebox.IsFormDirty(false);
        now.root = Plain("", nullptr);
        now.bytes = Bytes();
    }

    PlainFolder Plain(const std::string& text, const Folder* from) {
        PlainFolder plain{lastId++, text, {}, {}};
        if (from != nullptr)
            for (const SongItem& song : from->Songs())
                plain.songs.push_back(song.recordNumber);
        for (std::size_t i = 0; i < Window().Model().ChildCount(from); ++i) {
            const Folder& child = from != nullptr ? from->Child(i) : Window().Model().Root(i);
            plain.children.push_back(Plain(child.Text(), &child));
        }
        return plain;
    }
    PlainFolder Copy(PlainFolder folder) {
        folder.id = lastId++;
        for (PlainFolder& child : folder.children)
            child = Copy(child);
        return folder;
    }
    static std::string Dump(const PlainFolder& folder) {
        std::string dump = folder.text;
        for (std::size_t i = 0; i < folder.songs.size(); ++i)
            dump += (i == 0 ? "(" : "") + std::string(1, static_cast<char>('`' + folder.songs[i]));
        dump += folder.songs.empty() ? "" : ")";
        for (std::size_t i = 0; i < folder.children.size(); ++i)
            dump += (i > 0 ? " " : "[") + Dump(folder.children[i]);
        return dump + (folder.children.empty() ? "" : "]");
    }
    std::size_t Below(std::size_t limit) { return random() % limit; }

    Folder* FolderAt(std::size_t place) {  // from 1; null for 0
        Folder* folder = nullptr;
        for (std::size_t i = 0; i < place; ++i)
            folder = Window().Model().Next(folder);
        return folder;
    }

    // What may not be cut stays, and the jukebox counts as changed.
    void Refuse() {
        if (now.version == savedVersion)
            savedVersion = -1;
    }

    void Edit() {
        const PlainJukebox before = now;
        const auto plain = now.Folders();
        const std::size_t place = 1 + Below(plain.size() - 1);
        const std::size_t other = Below(plain.size());
        PlainFolder& on = *plain[place];
        PlainFolder& to = *plain[other];
        Folder* const folder = FolderAt(place);
        Folder* const target = FolderAt(other);
        const DropMode mode = Below(2) == 0 ? DropMode::Move : DropMode::Copy;
        const bool special = now.IsSpecial(on);
        const bool isAllSongs = special && on.text == "All Songs";
        bool fits = false;
        Rows rows;
        std::vector<int> songs;
        for (std::size_t row = 0; row < on.songs.size(); ++row)
            if (Below(2) == 0) {
                rows.push_back(row);
                songs.push_back(on.songs[row]);
            }
        View().SelectFolder(folder);
        View().SelectRows(rows);
        fake.dialogs.answers = {Answer::Yes};
        const auto menu = [&](int pane, int command) {
            Window().ActOnPopUpClick(command, pane, folder);
        };
        // A jukebox that has become big sees more cuts.
        const std::size_t edit = plain.size() > 45 && Below(2) == 0 ? 2 : Below(16);
        switch (edit) {
            case 0:
            case 1:
                menu(1, edit == 0 ? 4 : 5);
                (edit == 0 ? on : now.root).children.push_back({lastId++, "New Folder", {}, {}});
                break;
            case 2:
            case 3:
                menu(1, edit == 2 ? 6 : 9);
                if (special && edit == 2)
                    Refuse();
                if (special)
                    break;
                if (edit == 2) {
                    heldFolder = on;
                    holdsFolder = true;
                }
                now.Take(on);
                break;
            case 4:
                menu(1, 7);
                heldFolder = on;
                holdsFolder = true;
                break;
            case 5:
            case 6:
                menu(edit == 5 ? 1 : 2, edit == 5 ? 8 : 6);
                if (!holdsFolder)
                    now.Append(on, heldSongs);
                else if (!now.IsInside(on, heldFolder.id))
                    on.children.push_back(Copy(heldFolder));
                break;
            case 7:
            case 8:
                menu(2, edit == 7 ? 4 : 5);
                if (rows.empty())
                    break;
                if (edit == 7 && isAllSongs) {
                    Refuse();
                    break;
                }
                heldSongs = songs;
                holdsFolder = false;
                if (edit == 7)
                    TakeRows(on, rows);
                break;
            case 9: {
                const int rank = static_cast<int>(Below(6));
                menu(2, 9 + rank);
                for (const int song : songs)  // "w" for the one that the list shows as "2"
                    now.ranks[song] = std::string(1, "76543w"[rank]);
                break;
            }
            case 10:  // whether the order is the right one is the sort's own matter
                if (std::set(on.songs.begin(), on.songs.end()).size() < on.songs.size())
                    return;  // equal ones may change their places unseen
                Window().OnHeaderClicked();
                for (std::size_t row = 0; row < on.songs.size(); ++row)
                    on.songs[row] = folder->Songs()[row].recordNumber;
                break;
            case 11:
                menu(1, 11);
                std::ranges::stable_sort(on.children, {}, [&](const PlainFolder& child) {
                    return fake.text.ToLower(child.text);
                });
                break;
            case 12:
                fits = !now.IsInside(to, on.id) &&
                       (mode == DropMode::Copy || &now.ParentOf(on) != &to);
                EXPECT_EQ(Window().CanDrop({&Window(), folder, {}}, target, mode), fits);
                Window().Drop({&Window(), folder, {}}, target, mode);
                if (!fits)
                    break;
                if (mode == DropMode::Copy) {
                    to.children.push_back(Copy(on));
                } else if (special) {
                    Refuse();
                } else {
                    const int newParent = to.id;
                    const PlainFolder taken = now.Take(on);
                    now.WithId(newParent).children.push_back(taken);
                }
                break;
            case 13:
                if (rows.empty())
                    break;
                fits = target != nullptr && (mode == DropMode::Copy || &to != &on);
                EXPECT_EQ(Window().CanDrop({&Window(), folder, rows}, target, mode), fits);
                Window().Drop({&Window(), folder, rows}, target, mode);
                if (!fits)
                    break;
                if (mode == DropMode::Move && isAllSongs)
                    Refuse();
                else
                    now.Append(to, mode == DropMode::Copy ? songs : TakeRows(on, rows));
                break;
            case 14:
                Window().IsFormDirty(false);  // saved
                savedVersion = now.version;
                break;
            default: {
                const std::string text(Below(3), "AbC"[Below(3)]);
                const bool isTaken = !special && !text.empty() && text != on.text;
                EXPECT_EQ(Window().OnFolderTextEdited(*folder, text), isTaken);
                if (isTaken)
                    on.text = text;
                break;
            }
        }
        if (Dump(before.root) != Dump(now.root))
            now.version = ++lastVersion;
        else if (edit != 10 && before.ranks == now.ranks)
            return;  // which is no step
        past.push_back(before);
        future.clear();
    }
};

TEST_F(RandomEdits, DoWhatThePlainJukeboxDoesAndAreUndoneToTheByte) {
    const auto step = [&](std::vector<PlainJukebox>& from, std::vector<PlainJukebox>& to) {
        if (from.empty())
            return;
        to.push_back(now);
        now = from.back();
        from.pop_back();
    };
    const auto undo = [&] {
        Window().Undo();
        step(past, future);
    };
    const auto redo = [&] {
        Window().Redo();
        step(future, past);
    };
    for (int i = 0; i < 5000; ++i) {
        const std::size_t choice = Below(8);
        if (choice == 0) {
            undo();
        } else if (choice == 1) {
            redo();
        } else {
            Edit();
            now.bytes = Bytes();
        }
        std::string ranks;
        for (const auto& [song, rank] : now.ranks)
            ranks += rank == "w" ? "3" : rank;
        ASSERT_EQ("[" + Tree() + "]", Dump(now.root)) << i;
        ASSERT_EQ(Ranks(), ranks) << i;
        ASSERT_EQ(Bytes(), now.bytes) << i;
        ASSERT_EQ(Window().IsFormDirty(), now.version != savedVersion) << i;
        ASSERT_EQ(Window().CanUndo(), !past.empty()) << i;
        ASSERT_EQ(Window().CanRedo(), !future.empty()) << i;
    }
    for (const bool back : {true, false})
        while (back ? Window().CanUndo() : Window().CanRedo()) {
            back ? undo() : redo();
            ASSERT_EQ(Bytes(), now.bytes);
        }
}

}  // namespace
}  // namespace tobbin
