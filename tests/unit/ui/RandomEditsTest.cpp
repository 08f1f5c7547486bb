#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <set>

#include "unit/ui/EditingFixture.h"
#include "unit/ui/PlainJukebox.h"

namespace tobbin {
namespace {

struct Step {
    PlainJukebox state;  // before it; after it when it is undone
    std::map<int, std::pair<std::string, std::string>> ranks;  // by song: before, after
    int pair = 0;                                              // the same in both jukeboxes
};
struct Side {
    PlainJukebox now;
    std::vector<Step> past, future;
    int savedVersion = 0;  // -1: no version is known to be saved
};

// Does edits chosen by chance in two windows and, by the plainest means, in plain jukeboxes.
class RandomEdits : public EditingTest {
 protected:
    static constexpr int kSongs = 12;
    static constexpr int kMostSongs = 26;
    std::mt19937 random{20250101};
    Side sides[2];
    std::map<int, std::string> ranks;  // "w" for the one that the list shows as "2"
    bool holdsFolder = false;
    PlainFolder heldFolder;
    std::vector<int> heldSongs;
    int lastId = 0;
    int lastVersion = 0;
    int lastPair = 0;

    RandomEdits() {
        OpenJukebox("OTHER");
        for (int record = 1; record <= kSongs; ++record)
            AddSong(record);
        for (std::size_t s = 0; s < 2; ++s) {
            Jukebox& jukebox = Window(s).Model();
            for (const char* const text : {"New", "Genre", "Year"})
                jukebox.AddChild(nullptr, text);
            jukebox.AddChild(At("Decades", s), "00's");
            jukebox.AddChild(At("By Mood", s), "70's");
            std::vector<SongItem> songs;
            for (int record = 1; record <= kSongs; ++record)
                songs.push_back(jukebox.MakeItem(NameOf(record), record, 2));
            jukebox.SetSongs(*At("All Songs", s), songs);
            jukebox.IsFormDirty(false);
            sides[s].now.root = Plain(s, "", nullptr);
            sides[s].now.bytes = FileOf(s);
        }
        application.Catalogue().Save();
    }

    static std::string NameOf(int song) { return std::string(1, static_cast<char>('`' + song)); }
    void AddSong(int record) {
        if (record > application.Catalogue().UBoundOfMp3Array())
            application.Catalogue().OnSongFound("C:\\M\\", NameOf(record));
        ranks[record] = "2";
    }
    // Without the heading, which tells the order of the folder that is shown, and the checksum.
    std::size_t FileOf(std::size_t s) {
        std::string file = WriteJukebox(Window(s).Model(), application.Catalogue());
        const std::size_t heading = file.find("\ncolumn\t") + 1;
        file.erase(heading, file.find('\n', heading) - heading);
        return std::hash<std::string>()(file.substr(0, file.rfind("\nend\t")));
    }
    PlainFolder Plain(std::size_t s, const std::string& text, const Folder* from) {
        PlainFolder plain{lastId++, text, {}, {}};
        if (from != nullptr)
            for (const SongItem& song : from->Songs())
                plain.songs.push_back(song.recordNumber);
        for (std::size_t i = 0; i < Window(s).Model().ChildCount(from); ++i) {
            const Folder& child = from != nullptr ? from->Child(i) : Window(s).Model().Root(i);
            plain.children.push_back(Plain(s, child.Text(), &child));
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
            dump += (i == 0 ? "(" : "") + NameOf(folder.songs[i]);
        dump += folder.songs.empty() ? "" : ")";
        for (std::size_t i = 0; i < folder.children.size(); ++i)
            dump += (i > 0 ? " " : "[") + Dump(folder.children[i]);
        return dump + (folder.children.empty() ? "" : "]");
    }
    std::size_t Below(std::size_t limit) { return random() % limit; }

    Folder* FolderAt(std::size_t s, std::size_t place) {  // from 1; null for 0
        Folder* folder = nullptr;
        for (std::size_t i = 0; i < place; ++i)
            folder = Window(s).Model().Next(folder);
        return folder;
    }

    // What may not be cut stays, and the jukebox counts as changed.
    static void Refuse(Side& side) {
        if (side.now.version == side.savedVersion)
            side.savedVersion = -1;
    }

    // What can no longer be done again in one jukebox can't be in the other.
    static void ForgetFuture(Side& side, Side& other, std::size_t count) {
        const auto end = side.future.begin() + static_cast<std::ptrdiff_t>(count);
        const std::vector<Step> forgotten(side.future.begin(), end);
        side.future.erase(side.future.begin(), end);
        for (const Step& step : forgotten)
            for (std::size_t i = 0; step.pair != 0 && i < other.future.size(); ++i)
                if (other.future[i].pair == step.pair)
                    ForgetFuture(other, side, i + 1);
    }

    // One step of a side, where there is one.
    void Keep(std::size_t s, const PlainJukebox& before, bool isStep, Step step) {
        Side& side = sides[s];
        if (Dump(before.root) != Dump(side.now.root))
            side.now.version = ++lastVersion;
        else if (!isStep)
            return;
        side.now.bytes = FileOf(s);
        step.state = before;
        side.past.push_back(step);
        ForgetFuture(side, sides[1 - s], side.future.size());
    }

    void BringInSongs() {
        if (ranks.size() < kMostSongs)
            AddSong(static_cast<int>(ranks.size()) + 1);
        application.Groups().BuildAutomaticGroups(0, true, "");
        for (std::size_t s = 0; s < 2; ++s) {
            const PlainJukebox before = sides[s].now;
            PlainFolder* folders[2] = {};  // "All Songs" and "New"
            for (PlainFolder& child : sides[s].now.root.children)
                for (int i = 0; i < 2; ++i)
                    if (child.text == (i == 0 ? "All Songs" : "New"))
                        folders[i] = &child;
            for (const auto& [song, rank] : ranks)
                if (std::ranges::count(folders[0]->songs, song) == 0)
                    for (PlainFolder* const folder : folders)
                        folder->songs.push_back(song);
            Keep(s, before, false, {});
        }
    }

    // Undoes, or does again.
    void GoTo(std::size_t s, bool back) {
        const auto from = [&](Side & side) -> auto& {
            return back ? side.past : side.future;
        };
        const auto flip = [&](Side& side) {
            Step step = from(side).back();
            from(side).pop_back();
            std::swap(side.now, step.state);
            std::erase_if(step.ranks, [&](auto& change) {
                auto& [old, now] = change.second;
                const bool isStill = ranks[change.first] == (back ? now : old);
                if (isStill)
                    ranks[change.first] = back ? old : now;
                return !isStill;  // ranked otherwise since
            });
            (back ? side.future : side.past).push_back(step);
        };
        back ? Window(s).Undo() : Window(s).Redo();
        Side& side = sides[s];
        Side& other = sides[1 - s];
        if (from(side).empty())
            return;
        const int pair = from(side).back().pair;
        if (pair != 0 && (from(other).empty() || from(other).back().pair != pair))
            return;
        flip(side);
        if (pair != 0)
            flip(other);
    }

    void Edit(std::size_t s, std::size_t t) {
        Side& side = sides[s];
        PlainJukebox& now = side.now;
        PlainJukebox& there = sides[t].now;
        const PlainJukebox before = now;
        const PlainJukebox beforeThere = there;
        const auto plain = now.Folders();
        const auto plainThere = there.Folders();
        const std::size_t place = 1 + Below(plain.size() - 1);
        const std::size_t other = Below(plainThere.size());
        PlainFolder& on = *plain[place];
        PlainFolder& to = *plainThere[other];
        Folder* const folder = FolderAt(s, place);
        Folder* const target = FolderAt(t, other);
        const DropMode mode = Below(2) == 0 ? DropMode::Move : DropMode::Copy;
        const bool special = now.IsSpecial(on);
        const bool isAllSongs = special && on.text == "All Songs";
        bool fits = false;
        bool isStep = false;
        Step step;
        Rows rows;
        std::vector<int> songs;
        for (std::size_t row = 0; row < on.songs.size(); ++row)
            if (Below(2) == 0) {
                rows.push_back(row);
                songs.push_back(on.songs[row]);
            }
        View(s).SelectFolder(folder);
        View(s).SelectRows(rows);
        fake.dialogs.answers = {Answer::Yes};
        const auto menu = [&](int pane, int command) {
            Window(s).ActOnPopUpClick(command, pane, folder);
        };
        // A jukebox that has become big sees more cuts.
        const std::size_t edit = s != t                               ? 12 + Below(2)
                                 : plain.size() > 45 && Below(2) == 0 ? 2
                                                                      : Below(17);
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
                    Refuse(side);
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
            case 6: {
                const auto focus = View(s).focusedRow;
                const bool behind = edit == 6 && focus && Window(s).ShownOrder() == 0;
                menu(edit == 5 ? 1 : 2, edit == 5 ? 8 : 6);
                if (!holdsFolder)
                    now.Put(on, heldSongs, behind ? *focus + 1 : 1000);
                else if (!now.IsInside(on, heldFolder.id) && !now.MakesSecond(on, heldFolder.text))
                    on.children.push_back(Copy(heldFolder));
                break;
            }
            case 7:
            case 8:
                menu(2, edit == 7 ? 4 + 3 * static_cast<int>(Below(2)) : 5);
                if (rows.empty())
                    break;
                if (edit == 7 && isAllSongs) {
                    Refuse(side);
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
                const std::string text(1, "76543w"[rank]);
                for (const int song : songs)
                    if (ranks[song] != text)
                        step.ranks[song] = {std::exchange(ranks[song], text), text};
                isStep = !step.ranks.empty();
                break;
            }
            case 10:  // whether the order is the right one is the sort's own matter
            case 15:
                if (std::set(on.songs.begin(), on.songs.end()).size() < on.songs.size())
                    return;  // equal ones may change their places unseen
                if (edit == 15) {
                    const std::size_t row = Below(on.songs.size() + 1);
                    Window(s).MoveSongs(rows, row);
                    const auto above = std::ranges::lower_bound(rows, row) - rows.begin();
                    now.Put(on, TakeRows(on, rows), row - static_cast<std::size_t>(above));
                    break;
                }
                Window(s).OnHeaderClicked();
                for (std::size_t row = 0; row < on.songs.size(); ++row)
                    on.songs[row] = folder->Songs()[row].recordNumber;
                isStep = true;
                break;
            case 11:
                menu(1, 11);
                std::ranges::stable_sort(on.children, {}, [&](const PlainFolder& child) {
                    return fake.text.ToLower(child.text);
                });
                break;
            case 12:
                fits = s != t || (!now.IsInside(to, on.id) &&
                                  (mode == DropMode::Copy || &now.ParentOf(on) != &to));
                EXPECT_EQ(Window(t).CanDrop({&Window(s), folder, {}}, target, mode), fits);
                Window(t).Drop({&Window(s), folder, {}}, target, mode);
                if (!fits || there.MakesSecond(to, on.text))
                    break;
                if (mode == DropMode::Copy) {
                    to.children.push_back(Copy(on));
                } else if (special) {
                    Refuse(side);
                } else {
                    const int newParent = to.id;
                    const PlainFolder taken = now.Take(on);
                    there.WithId(newParent).children.push_back(s == t ? taken : Copy(taken));
                }
                break;
            case 13:
                if (rows.empty())
                    break;
                fits = target != nullptr && (mode == DropMode::Copy || &to != &on);
                EXPECT_EQ(Window(t).CanDrop({&Window(s), folder, rows}, target, mode), fits);
                Window(t).Drop({&Window(s), folder, rows}, target, mode);
                if (!fits)
                    break;
                if (mode == DropMode::Move && isAllSongs)
                    Refuse(side);
                else
                    there.Put(to, mode == DropMode::Copy ? songs : TakeRows(on, rows));
                break;
            case 14:
                Window(s).IsFormDirty(false);  // saved
                side.savedVersion = now.version;
                break;
            default: {
                const char* const texts[] = {"", " ", "A", "b", "AC", "New", "70's", "Decades"};
                const std::string text = texts[Below(8)];
                const bool isTaken = !special && text.size() > (text == " " ? 1 : 0) &&
                                     text != on.text && !now.MakesSecond(now.ParentOf(on), text);
                EXPECT_EQ(Window(s).OnFolderTextEdited(*folder, text), isTaken);
                if (isTaken)
                    on.text = text;
                break;
            }
        }
        if (s != t && Dump(before.root) != Dump(now.root) &&
            Dump(beforeThere.root) != Dump(there.root))
            step.pair = ++lastPair;
        Keep(s, before, isStep, step);
        if (s != t)
            Keep(t, beforeThere, false, step);
    }

    void Compare() {
        std::string all;
        for (const auto& [song, rank] : ranks)
            all += rank == "w" ? "3" : rank;
        ASSERT_EQ(Ranks(), all);
        for (std::size_t s = 0; s < 2; ++s) {
            const Side& side = sides[s];
            ASSERT_EQ("[" + Tree(s) + "]", Dump(side.now.root)) << s;
            ASSERT_EQ(FileOf(s), side.now.bytes) << s;
            ASSERT_EQ(Window(s).HasUnsavedChanges(), side.now.version != side.savedVersion) << s;
            ASSERT_EQ(Window(s).CanUndo(), !side.past.empty()) << s;
            ASSERT_EQ(Window(s).CanRedo(), !side.future.empty()) << s;
        }
    }
};

TEST_F(RandomEdits, OverTwoJukeboxesLoseNothingAndAreUndoneToTheByte) {
    const char* const steps = std::getenv("RANDOM_EDITS");  // 10000 take half a minute
    for (int i = 0; i < (steps != nullptr ? std::stoi(steps) : 2500); ++i) {
        SCOPED_TRACE(i);
        const std::size_t s = Below(2);
        const std::size_t choice = Below(40);
        if (choice < 12)
            GoTo(s, choice < 6);
        else if (choice == 12)
            BringInSongs();
        else
            Edit(s, Below(4) == 0 ? 1 - s : s);
        ASSERT_NO_FATAL_FAILURE(Compare());
    }
    for (const bool back : {true, false})
        while (back ? Window(0).CanUndo() || Window(1).CanUndo()
                    : Window(0).CanRedo() || Window(1).CanRedo()) {
            GoTo(Below(2), back);
            ASSERT_NO_FATAL_FAILURE(Compare());
        }
}

}  // namespace
}  // namespace tobbin
