#include "ui/JukeboxEditor.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <unordered_set>
#include <utility>

#include "catalogue/SongIntake.h"
#include "jukebox/JukeboxChanges.h"
#include "jukebox/RankChange.h"
#include "jukebox/SpecialFolders.h"
#include "ui/ListSort.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr char kNewFolder[] = "New Folder";
constexpr char kNotIntoItself[] = "A folder can't be pasted into itself.";
constexpr char kHoldsThemAll[] = "\"All Songs\" holds all of these songs already.";

}  // namespace

JukeboxEditor::JukeboxEditor(const EditingTools& tools, Jukebox& jukebox)
    : m_tools(tools), m_jukebox(jukebox), m_history(jukebox) {}

EditResult JukeboxEditor::AddFolder(Folder* parent) {
    return Said("Added \"" + std::string(kNewFolder) + "\".", WayBack::TakesItBack,
                m_history.Do("Add Folder", PutFolder(Jukebox::MakeFolder(kNewFolder), parent,
                                                     m_jukebox.ChildCount(parent))));
}

EditResult JukeboxEditor::RenameFolder(Folder& folder, std::string text) {
    if (TrimBlanks(text).empty()) {
        Say("A folder needs a name.");
        return {};
    }
    if (MakesSecond(folder.Parent(), text, folder))
        return {};
    const std::string line = "Renamed " + NameOf(&folder) + " to \"" + text + "\".";
    return Said(line, WayBack::TakesItBack,
                m_history.Do("Rename Folder", tobbin::RenameFolder(folder, std::move(text))));
}

// Says the line on what was done, with the way back.
EditResult JukeboxEditor::Said(const std::string& line, WayBack way, EditResult result) {
    Say(WithWayBack(line, way));
    return result;
}

bool JukeboxEditor::MakesSecond(const Folder* parent, const std::string& text,
                                const Folder& content) {
    if (!MakesSecondSpecialFolder(m_jukebox, parent, text, content))
        return false;
    Say(StandsHereAlready(text));
    return true;
}

bool JukeboxEditor::MayTakeFolder(const Folder& folder) {
    if (!IsSpecialFolder(folder))
        return true;
    m_tools.environment.dialogs.Tell(
        "This is a special node that can not be cut.  It can be copied if you wish.");
    m_jukebox.IsFormDirty(true);
    return false;
}

bool JukeboxEditor::MayTakeSongs(const Folder& folder) {
    if (!IsAllSongs(folder))
        return true;
    m_tools.environment.dialogs.Tell(
        "Can not cut a song from 'All Songs.'  You can copy a song if you wish.");
    m_jukebox.IsFormDirty(true);
    return false;
}

EditResult JukeboxEditor::CutFolder(Folder& folder) {
    if (!MayTakeFolder(folder))
        return {};
    HoldFolder(folder);
    const std::string line = "Cut " + NameAndSongsOf(m_jukebox, folder) + ".";
    return Said(line, WayBack::BringsItBack, m_history.Do("Cut Folder", TakeFolder(folder)));
}

void JukeboxEditor::CopyFolder(const Folder& folder) {
    HoldFolder(folder);
}

void JukeboxEditor::HoldFolder(const Folder& folder) {
    m_tools.clipboard.HoldFolder(m_jukebox, folder);
    OfferFiles(PathsOf(folder, {}));
    m_tools.clipboard.SystemChange(m_tools.environment.clipboard.ChangeNumber());
}

void JukeboxEditor::HoldSongs(const Folder& folder, const std::vector<std::size_t>& rows) {
    m_tools.clipboard.HoldSongs(m_jukebox, folder, rows);
    OfferFiles(PathsOf(folder, rows));
    m_tools.clipboard.SystemChange(m_tools.environment.clipboard.ChangeNumber());
}

bool JukeboxEditor::CanPaste() const {
    return !m_tools.clipboard.IsEmpty() || m_tools.environment.clipboard.HasFilesOfOthers();
}

std::vector<std::string> JukeboxEditor::FilesToPaste() const {
    const SystemClipboard& system = m_tools.environment.clipboard;
    const bool isNewer =
        m_tools.clipboard.IsEmpty() || system.ChangeNumber() != m_tools.clipboard.SystemChange();
    return isNewer && system.HasFilesOfOthers() ? system.Files() : std::vector<std::string>();
}

// What is held is also offered to other programs.
void JukeboxEditor::OfferFiles(const std::vector<std::string>& paths) {
    if (!paths.empty())
        m_tools.environment.clipboard.OfferFiles(paths);
}

std::vector<std::string> JukeboxEditor::PathsOf(const Folder& folder,
                                                const std::vector<std::size_t>& rows) const {
    const clsMain& catalogue = m_tools.catalogue;
    std::unordered_set<std::int32_t> taken;
    std::vector<std::string> paths;
    const auto take = [&](const SongItem& song) {
        if (!song.IsMissing() && song.recordNumber <= catalogue.UBoundOfMp3Array() &&
            catalogue.IsPresent(song.recordNumber) && taken.insert(song.recordNumber).second)
            paths.push_back(catalogue.SongPath(song.recordNumber));
    };
    for (const std::size_t row : rows)
        take(folder.Songs()[row]);
    if (rows.empty())
        for (const Folder* inside = &folder; inside != nullptr && inside->IsInside(folder);
             inside = m_jukebox.Next(inside))
            std::ranges::for_each(inside->Songs(), take);
    return paths;
}

EditResult JukeboxEditor::DeleteFolder(Folder& folder) {
    if (IsSpecialFolder(folder) ||
        m_tools.environment.dialogs.Ask(
            "Are you sure you want to delete this folder and all it's contents?",
            Buttons::YesNoCancel, BoxIcon::Question) != Answer::Yes)
        return {};
    const std::string line = "Deleted " + NameAndSongsOf(m_jukebox, folder) + ".";
    return Said(line, WayBack::BringsItBack, m_history.Do("Delete Folder", TakeFolder(folder)));
}

EditResult JukeboxEditor::Paste(Folder& into, std::optional<std::size_t> maybeBefore) {
    const SongClipboard& clipboard = m_tools.clipboard;
    if (clipboard.HoldsFolder()) {
        if (clipboard.IsInsideOriginal(m_jukebox, into)) {
            Say(kNotIntoItself);
            return {};
        }
        auto folder = clipboard.FolderFor(m_jukebox);
        if (MakesSecond(&into, folder->Text(), *folder))
            return {};
        const std::string line = "Pasted " + NameOf(folder.get()) + " into " + NameOf(&into) + ".";
        return Said(
            line, WayBack::TakesItBack,
            m_history.Do("Paste Folder", PutFolder(std::move(folder), &into, into.ChildCount())));
    }
    if (!clipboard.HoldsSongs())
        return {};
    std::vector<SongItem> songs = Wanted(into, clipboard.SongsFor(m_jukebox));
    if (songs.empty()) {
        Say(kHoldsThemAll);
        return {};
    }
    const std::string line = "Pasted " + SongsAndTwins(songs, into) + ".";
    return Said(
        line, WayBack::TakesItBack,
        m_history.Do("Paste Songs", InsertSongs(into, std::move(songs),
                                                maybeBefore.value_or(into.Songs().size()))));
}

std::vector<SongItem> JukeboxEditor::Wanted(const Folder& into, std::vector<SongItem> songs) const {
    if (!IsAllSongs(into))
        return songs;
    using Place = std::pair<std::string_view, std::string_view>;
    std::unordered_set<std::int32_t> held;
    std::set<Place> missingHeld;
    const auto isNew = [&](const SongItem& song) {
        if (!song.IsMissing())
            return held.insert(song.recordNumber).second;
        const MissingSong missing = m_jukebox.MissingSongOf(song);
        return missingHeld.emplace(missing.folder, missing.fileName).second;
    };
    std::ranges::for_each(into.Songs(), isNew);
    std::erase_if(songs, [&](const SongItem& song) { return !isNew(song); });
    return songs;
}

EditResult JukeboxEditor::SortNodes(Folder& parent) {
    std::vector<std::u16string> keys;
    for (std::size_t i = 0; i < parent.ChildCount(); ++i)
        keys.push_back(Utf8ToUtf16(m_tools.environment.text.ToLower(parent.Child(i).Text())));
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order,
                             [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    if (std::ranges::is_sorted(order))
        return {};
    return Said("Sorted the folders in " + NameOf(&parent) + ".", WayBack::TakesItBack,
                m_history.Do("Sort Nodes", OrderChildren(&parent, std::move(order))));
}

EditResult JukeboxEditor::CutSongs(Folder& folder, const std::vector<std::size_t>& rows) {
    if (!MayTakeSongs(folder))
        return {};
    HoldSongs(folder, rows);
    return TakeOut("Cut", "Cut Songs", folder, rows);
}

EditResult JukeboxEditor::TakeOut(const char* did, const char* name, Folder& folder,
                                  const std::vector<std::size_t>& rows) {
    return Said(
        std::string(did) + " " + Counted(rows.size(), "song") + " from " + NameOf(&folder) + ".",
        rows.size() == 1 ? WayBack::BringsItBack : WayBack::BringsThemBack,
        m_history.Do(name, TakeSongs(folder, rows)));
}

EditResult JukeboxEditor::DeleteSongs(Folder& folder, const std::vector<std::size_t>& rows) {
    if (!MayTakeSongs(folder))
        return {};
    m_tools.clipboard.HoldSongs(m_jukebox, folder, rows);
    m_tools.clipboard.SystemChange(m_tools.environment.clipboard.ChangeNumber());
    return TakeOut("Deleted", "Delete Songs", folder, rows);
}

void JukeboxEditor::CopySongs(const Folder& folder, const std::vector<std::size_t>& rows) {
    HoldSongs(folder, rows);
}

void JukeboxEditor::RankSongs(const RankRow& rank, const Folder& folder,
                              const std::vector<std::size_t>& rows) {
    std::vector<std::int32_t> records;
    records.reserve(rows.size());
    for (const std::size_t row : rows)
        records.push_back(folder.Songs()[row].recordNumber);
    const bool shownAsWorst = &rank == &kWorstRank;
    auto change = std::make_unique<RankChange>(m_tools.catalogue, m_tools.jukeboxes, m_jukebox,
                                               std::move(records),
                                               SongRank{rank.catalogueValue, shownAsWorst});
    if (change->IsEmpty())
        m_tools.catalogue.Save();
    else
        Said("Ranked " + Counted(rows.size(), "song") + ".", WayBack::TakesItBack,
             m_history.Do("Rank Songs", std::move(change)));
}

EditResult JukeboxEditor::SortSongs(Folder& folder, int state, int& sortState, int& sortedBy) {
    std::vector<std::size_t> order =
        SortedOrder(m_tools.sorter, m_tools.catalogue, m_jukebox, folder, state);
    JukeboxHistory::Changes changes;
    if (!std::ranges::is_sorted(order))
        changes.push_back(OrderSongs(folder, std::move(order)));
    changes.push_back(ChangeValue(sortedBy, state));
    changes.push_back(ChangeValue(sortState, state % kSortStates + 1));
    return Said("Sorted the songs of " + NameOf(&folder) + ".", WayBack::TakesItBack,
                m_history.Do("Sort Songs", std::move(changes)));
}

EditResult JukeboxEditor::MoveSongs(Folder& folder, const std::vector<std::size_t>& rows,
                                    std::size_t before) {
    const std::size_t count = folder.Songs().size();
    std::vector<std::size_t> order = OrderWithRowsBefore(count, rows, std::min(before, count));
    return std::ranges::is_sorted(order)
               ? EditResult()
               : Said("Moved " + Counted(rows.size(), "song") + ".", WayBack::TakesItBack,
                      m_history.Do("Move Songs", OrderSongs(folder, std::move(order))));
}

// What the person is told of files whose names other songs have; empty when there is none.
std::string JukeboxEditor::WordsOnNamesakes(const FoundOutcome& found) const {
    if (found.leftOut.empty())
        return {};
    const auto& [file, kept] = found.leftOut.front();
    std::string words = "  \"" + m_tools.catalogue.SongPath(kept) +
                        "\" is known by that name and was added in the place of \"" + file.folder +
                        file.name + "\"";
    if (found.leftOut.size() > 1)
        words += ", and so were songs in the place of " + GroupedNumber(found.leftOut.size() - 1) +
                 " other " + (found.leftOut.size() == 2 ? "file" : "files");
    return words + ".";
}

EditResult JukeboxEditor::AddFiles(Folder& folder, const std::vector<std::string>& paths) {
    const clsMain& catalogue = m_tools.catalogue;
    const FoundOutcome found = SongIntake(m_tools.environment, m_tools.catalogue).TakeIn(paths);
    const std::vector<std::int32_t>& records = found.records;
    if (found.added + found.cameBack > 0)
        m_tools.groups.FileNewSongs();
    std::vector<SongItem> songs;
    songs.reserve(records.size());
    for (const std::int32_t record : records)
        songs.push_back(m_jukebox.MakeItem(catalogue.Mp3Info(clsMain::kFileName, record), record,
                                           catalogue.Rank(record)));
    songs = Wanted(folder, std::move(songs));
    const std::string line = "Added " + SongsAndTwins(songs, folder) + " to " + NameOf(&folder) +
                             "." + WordsOnNamesakes(found);
    if (!songs.empty())
        return Said(line, WayBack::TakesItBack,
                    m_history.Do("Add Files", AppendSongs(folder, std::move(songs))));
    Say(records.empty() ? "There is no MP3 file among these files." : line);
    return {};
}

bool JukeboxEditor::CanDrop(const JukeboxEditor& from, const Dragged& dragged,
                            const JukeboxEditor& to, const Folder* target, DropMode mode) {
    const Folder& folder = *dragged.folder;
    if (!dragged.IsFolder())
        return target != nullptr && (mode == DropMode::Copy || target != &folder);
    if (&from != &to)
        return true;
    const bool isThere = mode == DropMode::Move && folder.Parent() == target;
    return !isThere && (target == nullptr || !target->IsInside(folder));
}

EditResult JukeboxEditor::Drop(JukeboxEditor& from, const Dragged& dragged, JukeboxEditor& to,
                               Folder* target, DropMode mode) {
    if (!CanDrop(from, dragged, to, target, mode)) {
        if (dragged.IsFolder() && target != nullptr && target->IsInside(*dragged.folder))
            to.Say(kNotIntoItself);
        return {};
    }
    if (dragged.IsFolder() && to.MakesSecond(target, dragged.folder->Text(), *dragged.folder))
        return {};
    if (mode == DropMode::Move && !(dragged.IsFolder() ? from.MayTakeFolder(*dragged.folder)
                                                       : from.MayTakeSongs(*dragged.folder)))
        return {};
    return dragged.IsFolder() ? to.DropFolder(from, *dragged.folder, target, mode)
                              : to.DropSongs(from, dragged, *target, mode);
}

EditResult JukeboxEditor::DropFolder(JukeboxEditor& from, Folder& folder, Folder* target,
                                     DropMode mode) {
    const std::string line = (mode == DropMode::Move ? "Moved " : "Copied ") +
                             NameAndSongsOf(from.m_jukebox, folder) + " to " + NameOf(target) + ".";
    if (mode == DropMode::Move && &from == this)
        return Said(line, WayBack::TakesItBack,
                    m_history.Do("Move Folder", MoveFolder(folder, target)));
    const std::string name = mode == DropMode::Move ? "Move Folder" : "Copy Folder";
    EditResult place = m_history.Do(name, PutFolder(m_jukebox.CopyFolder(from.m_jukebox, folder),
                                                    target, m_jukebox.ChildCount(target)));
    if (mode == DropMode::Move) {
        from.m_history.Do(name, TakeFolder(folder));
        JukeboxHistory::Join(from.m_history, m_history);
    }
    return Said(line, WayBack::TakesItBack, place);
}

EditResult JukeboxEditor::DropSongs(JukeboxEditor& from, const Dragged& dragged, Folder& target,
                                    DropMode mode) {
    std::vector<SongItem> songs;
    for (const std::size_t row : dragged.rows)
        songs.push_back(m_jukebox.CopyItem(from.m_jukebox, dragged.folder->Songs()[row]));
    songs = Wanted(target, std::move(songs));
    const bool isMove = mode == DropMode::Move;
    if (songs.empty() && !isMove) {
        Say(kHoldsThemAll);
        return {};
    }
    const std::string line = (isMove ? "Moved " + Counted(dragged.rows.size(), "song")
                                     : "Copied " + SongsAndTwins(songs, target)) +
                             " to " + NameOf(&target) + ".";
    const std::string name = isMove ? "Move Songs" : "Copy Songs";
    JukeboxHistory::Changes changes;
    if (!songs.empty())
        changes.push_back(AppendSongs(target, std::move(songs)));
    if (!isMove)
        return Said(line, WayBack::TakesItBack, m_history.Do(name, std::move(changes)));
    auto taken = TakeSongs(*dragged.folder, dragged.rows);
    if (&from == this) {
        changes.insert(changes.begin(), std::move(taken));
        return Said(line, WayBack::TakesItBack, m_history.Do(name, std::move(changes)));
    }
    from.m_history.Do(name, std::move(taken));
    if (changes.empty()) {
        from.Say(WithWayBack(line, WayBack::BringsThemBack));
        return {};
    }
    EditResult place = m_history.Do(name, std::move(changes));
    JukeboxHistory::Join(from.m_history, m_history);
    return Said(line, WayBack::TakesItBack, place);
}

}  // namespace tobbin
