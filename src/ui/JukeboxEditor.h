#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/clsMain.h"
#include "catalogue/Ranks.h"
#include "jukebox/Jukebox.h"
#include "jukebox/JukeboxHistory.h"
#include "ui/Dragging.h"
#include "ui/EditingTools.h"
#include "ui/EditTexts.h"

namespace tobbin {

// What the editing commands do to one jukebox, with their guards and questions. Each that changes
// something is one step of the history; each answers what there is to be shown of it, nothing when
// it did nothing.
class JukeboxEditor {
 public:
    JukeboxEditor(const EditingTools& tools, Jukebox& jukebox);

    JukeboxHistory& History() { return m_history; }
    const JukeboxHistory& History() const { return m_history; }

    EditResult AddFolder(Folder* parent);
    // Refused, with a word, for a name of blanks, and as below.
    EditResult RenameFolder(Folder& folder, std::string text);
    // Refused, with a message, for a folder that the program fills; the jukebox counts as changed
    // all the same.
    EditResult CutFolder(Folder& folder);
    void CopyFolder(const Folder& folder);
    // Asks first. A folder that the program fills stays, without a word.
    EditResult DeleteFolder(Folder& folder);
    // None of what follows makes a second special folder: that is refused with a word.
    // Puts what was cut or copied last into a folder: songs before one of its rows, or to its end,
    // a folder to the end of its folders.
    EditResult Paste(Folder& into, std::optional<std::size_t> maybeBefore);
    // Whether there is anything to paste, ours or files that another program put on the system's
    // clipboard. The paths of those when they came later than ours, else none.
    bool CanPaste() const;
    std::vector<std::string> FilesToPaste() const;
    // By text, up. Folders of equal texts stay in their order.
    EditResult SortNodes(Folder& parent);

    // Refused, with a message, for "All Songs"; as above.
    EditResult CutSongs(Folder& folder, const std::vector<std::size_t>& rows);
    // The same, but not offered to other programs.
    EditResult DeleteSongs(Folder& folder, const std::vector<std::size_t>& rows);
    void CopySongs(const Folder& folder, const std::vector<std::size_t>& rows);
    void RankSongs(const RankRow& rank, const Folder& folder, const std::vector<std::size_t>& rows);
    // By a state of the sort cycle, which `sortedBy` becomes; `sortState` becomes the next one.
    EditResult SortSongs(Folder& folder, int state, int& sortState, int& sortedBy);
    // Fills the folders that the program fills by the songs' tags as they are now, after a check
    // for missing songs.
    EditResult FillAnew();
    // Brings rows together before another row; the number of rows is the end.
    EditResult MoveSongs(Folder& folder, const std::vector<std::size_t>& rows, std::size_t before);
    EditResult AddFiles(Folder& folder, const std::vector<std::string>& paths);

    // The full paths of the songs at these rows, or with none of all songs in the folder and those
    // in it, each once. Songs whose file is missing are left out.
    std::vector<std::string> PathsOf(const Folder& folder,
                                     const std::vector<std::size_t>& rows) const;

    // Dragging from one editor's jukebox to a folder of another's or its own.
    static bool CanDrop(const JukeboxEditor& from, const Dragged& dragged, const JukeboxEditor& to,
                        const Folder* target, DropMode mode);
    static EditResult Drop(JukeboxEditor& from, const Dragged& dragged, JukeboxEditor& to,
                           Folder* target, DropMode mode);

 private:
    std::string WordsOnNamesakes(const FoundOutcome& found) const;
    bool MayTakeFolder(const Folder& folder);
    bool MayTakeSongs(const Folder& folder);
    EditResult Said(const std::string& line, WayBack way, EditResult result);
    bool MakesSecond(const Folder* parent, const std::string& text, const Folder& content);
    EditResult TakeOut(const char* did, const char* name, Folder& folder);
    EditResult TakeOut(const char* did, const char* name, Folder& folder,
                       const std::vector<std::size_t>& rows);
    // The songs that a folder takes in: "All Songs" holds each only once.
    std::vector<SongItem> Wanted(const Folder& into, std::vector<SongItem> songs) const;
    void HoldFolder(const Folder& folder);
    void HoldSongs(const Folder& folder, const std::vector<std::size_t>& rows);
    void OfferFiles(const std::vector<std::string>& paths);
    EditResult DropFolder(JukeboxEditor& from, Folder& folder, Folder* target, DropMode mode);
    EditResult DropSongs(JukeboxEditor& from, const Dragged& dragged, Folder& target,
                         DropMode mode);
    void Say(const std::string& line) { m_tools.environment.statusLine.Say(line); }

    EditingTools m_tools;
    Jukebox& m_jukebox;
    JukeboxHistory m_history;
};

}  // namespace tobbin
