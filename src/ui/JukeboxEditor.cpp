#include "ui/JukeboxEditor.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <unordered_set>
#include <utility>

#include "jukebox/JukeboxChanges.h"
#include "jukebox/RankChange.h"
#include "jukebox/SpecialFolders.h"
#include "ui/ListSort.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr char kNewFolder[] = "New Folder";

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
    return TakeOut("Cut", "Cut Folder", folder);
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

EditResult JukeboxEditor::DeleteFolder(Folder& folder) {
    if (IsSpecialFolder(folder) ||
        m_tools.environment.dialogs.Ask(
            "Are you sure you want to delete this folder and all it's contents?",
            Buttons::YesNoCancel, BoxIcon::Question) != Answer::Yes)
        return {};
    return TakeOut("Deleted", "Delete Folder", folder);
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

EditResult JukeboxEditor::TakeOut(const char* did, const char* name, Folder& folder) {
    const std::string what = NameAndSongsOf(m_jukebox, folder);
    return Said(std::string(did) + " " + what + ".", WayBack::BringsItBack,
                m_history.Do(name, TakeFolder(folder), what + " put back."));
}

EditResult JukeboxEditor::TakeOut(const char* did, const char* name, Folder& folder,
                                  const std::vector<std::size_t>& rows) {
    const std::string what = Counted(rows.size(), "song");
    return Said(std::string(did) + " " + what + " from " + NameOf(&folder) + ".",
                rows.size() == 1 ? WayBack::BringsItBack : WayBack::BringsThemBack,
                m_history.Do(name, TakeSongs(folder, rows), what + " put back."));
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

EditResult JukeboxEditor::FillAnew() {
    std::optional<FillingAnew> anew = m_tools.groups.FillAnew(m_jukebox);
    if (!anew)
        return {};
    const std::string line = Sentences({WordsOnFilling(*anew), m_tools.groups.StoppedText("F5")});
    if (auto change = anew->TakeChange(); change != nullptr)
        return Said(line, WayBack::TakesItBack,
                    m_history.Do("Fill Folders Anew", std::move(change)));
    Say(line);
    return {};
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

}  // namespace tobbin
