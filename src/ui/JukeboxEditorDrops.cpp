#include <algorithm>
#include <unordered_set>
#include <utility>

#include "catalogue/SongIntake.h"
#include "jukebox/JukeboxChanges.h"
#include "ui/JukeboxEditor.h"
#include "util/Text.h"

// What goes out of a jukebox and comes into it: files, and what is dragged between jukeboxes.

namespace tobbin {

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
