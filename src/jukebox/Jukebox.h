#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/TextPool.h"
#include "jukebox/Folder.h"
#include "jukebox/JukeboxListener.h"

namespace tobbin {

// The list pane's first heading until it is sorted, and the second one.
inline constexpr char kNameHeading[] = "Name    --        (click to sort)";
inline constexpr char kKeyHeading[] = "Key";
inline constexpr std::size_t kListColumns = 2;

// What is kept of a song that the catalogue doesn't have: its number, folder (ending in "\") and
// file name when it last had it.
struct MissingSong {
    std::int32_t recordNumber = 0;
    std::string_view folder;
    std::string_view fileName;
};

// The user's document: a tree of named folders, each with an ordered list of songs, and what the
// jukebox window knows about it. A change of the tree, its texts or its songs sets IsFormDirty and
// is told to the listeners; a song item's text is stored once however often the song appears.
class Jukebox {
 public:
    Jukebox();
    Jukebox(const Jukebox&) = delete;
    Jukebox& operator=(const Jukebox&) = delete;

    // The top level's folders, from 0.
    std::size_t RootCount() const { return m_root.ChildCount(); }
    Folder& Root(std::size_t index) const { return m_root.Child(index); }

    // Appends a folder under a parent; null means the top level.
    Folder& AddChild(Folder* parent, std::string text, int image = 1, int selectedImage = 0);
    // Removes a folder with everything below it. Not recursive, so any depth is safe.
    void Remove(Folder& folder) { Detach(folder); }
    // Takes a folder out of the tree as a whole, and puts one that was taken out, or made anew, at
    // a place among the parent's children. It stays the same object.
    std::unique_ptr<Folder> Detach(Folder& folder);
    Folder& Insert(Folder* parent, std::size_t index, std::unique_ptr<Folder> folder);
    // A folder that is not in the tree yet, and a copy of one with all that is in it.
    static std::unique_ptr<Folder> MakeFolder(std::string text, int image = 1,
                                              int selectedImage = 0);
    std::unique_ptr<Folder> CopyFolder(const Jukebox& from, const Folder& folder);
    std::size_t ChildCount(const Folder* parent) const;
    void SetText(Folder& folder, std::string text);
    // Puts a folder's children (null: the top level's folders) into another order: child k becomes
    // what was child order[k], from 0.
    void ReorderChildren(Folder* parent, const std::vector<std::size_t>& order);

    // The songs of a folder.
    SongItem MakeItem(std::string_view text, std::int32_t recordNumber, int image);
    // An item for a song that can't be found now; it keeps what it takes to find it again.
    SongItem MakeMissingItem(std::string_view text, const MissingSong& song, int image);
    // An item for this jukebox that is like one of another.
    SongItem CopyItem(const Jukebox& from, const SongItem& item);
    void AppendSongs(Folder& folder, const std::vector<SongItem>& songs);
    void SetSongs(Folder& folder, std::vector<SongItem> songs);
    // Takes the songs at these rows out (ascending, from 0), and puts songs in so that the k-th
    // stands at rows[k] afterwards: the one takes back the other.
    std::vector<SongItem> TakeSongs(Folder& folder, const std::vector<std::size_t>& rows);
    void PutSongs(Folder& folder, const std::vector<std::size_t>& rows,
                  const std::vector<SongItem>& songs);
    // Song k becomes what was song order[k].
    void ReorderSongs(Folder& folder, const std::vector<std::size_t>& order);
    // Texts are valid as long as the jukebox.
    std::string_view TextOf(const SongItem& item) const { return m_names.Text(item.nameId); }
    // What is kept of an item's song; nothing unless it IsMissing.
    MissingSong MissingSongOf(const SongItem& item) const;

    // Whether the catalogue has got or lost songs of the jukebox since its file was written.
    bool SongsCameOrWent() const { return m_songsCameOrWent; }
    void SongsCameOrWent(bool cameOrWent) { m_songsCameOrWent = cameOrWent; }

    // The songs that were found under another record number than their file gives.
    struct SongMove {
        std::int32_t before = 0;
        std::int32_t now = 0;
    };
    const std::vector<SongMove>& SongMoves() const { return m_songMoves; }
    void AddSongMove(const SongMove& move) { m_songMoves.push_back(move); }

    // A song ranked worst is shown one rank below the one that the catalogue has for it, until the
    // jukebox is opened again. Who changes ranks tells so when it is done.
    bool IsShownAsWorst(std::int32_t recordNumber) const;
    void ShowAsWorst(std::int32_t recordNumber, bool worst);
    void TellRanksChanged();
    // Around a run that only appends songs to folders, and folders to the children of others.
    void TellFillingBegins();
    void TellFillingEnds();
    // Record numbers mean other songs now, and all items have their new ones.
    void TellRecordsMoved();

    // The folder behind `folder` in the order of the tree as if all were open (parents before
    // their children); null after the last. A null argument asks for the first.
    Folder* Next(const Folder* folder) const;
    std::size_t FolderCount() const { return m_folderCount; }

    // The top-level folder with exactly this text, else the first folder in tree order that has
    // it; null when there is none.
    Folder* MaybeFind(std::string_view text) const;

    // The window's properties around the tree.
    const std::string& DaCaption() const { return m_caption; }
    void DaCaption(std::string caption);
    const std::string& FileLocation() const { return m_fileLocation; }  // ends in "\", or empty
    void FileLocation(std::string folder) { m_fileLocation = std::move(folder); }
    bool IsFormDirty() const { return m_changed || m_filled; }
    void IsFormDirty(bool dirty);
    // What would be lost without a save: changes other than what the program itself did and would
    // do again, such as a grouping run that added nothing. Such a run marks the jukebox as filled,
    // which makes it dirty.
    bool HasUnsavedChanges() const { return m_changed; }
    void HasUnsavedChanges(bool has);
    void MarkAsFilled();
    // Grows with every change, undone ones included.
    std::uint64_t ChangeCount() const { return m_changes; }

    // The list pane's column headings. They make nothing dirty.
    const std::vector<std::string>& Columns() const { return m_columns; }
    void AddColumn(std::string heading);
    void SetColumn(std::size_t index, std::string heading);  // from 0

    // Lives as long as the jukebox, and is no other's.
    std::shared_ptr<const void> LifeToken() const { return m_lifeToken; }

    // Listeners are told in the order they were added; they outlive the jukebox or remove
    // themselves, which they may do while they are told.
    void AddListener(JukeboxListener& listener);
    void RemoveListener(JukeboxListener& listener);

 private:
    template <typename Call>
    void Tell(Call call);
    template <typename Call>
    void TellChange(Call call);
    template <typename Call>
    void ForEachIn(Folder& top, Call call);  // not recursive, so any depth is safe
    void SetDirty(bool changed, bool filled);
    Folder& OrRoot(Folder* folder) { return folder != nullptr ? *folder : m_root; }

    struct Missing {
        std::int32_t recordNumber = 0;
        std::uint32_t folderId = 0;  // texts in m_names
        std::uint32_t fileNameId = 0;
    };

    std::shared_ptr<const void> m_lifeToken = std::make_shared<char>();
    Folder m_root;
    std::size_t m_folderCount = 0;
    std::uint64_t m_lastSerial = 0;
    TextPool m_names;
    std::vector<Missing> m_missing;    // item.recordNumber is -1 for the first one
    std::vector<bool> m_shownAsWorst;  // by record number
    std::string m_caption;
    std::string m_fileLocation;
    bool m_changed = false;
    bool m_filled = false;
    std::uint64_t m_changes = 0;
    bool m_songsCameOrWent = false;
    std::vector<SongMove> m_songMoves;
    std::vector<std::string> m_columns;
    std::vector<JukeboxListener*> m_listeners;
};

// The jukeboxes with an open window, in the order of their opening. Each has the form name
// "frmMain".
class OpenJukeboxes {
 public:
    virtual ~OpenJukeboxes() = default;
    virtual std::size_t Count() const = 0;
    virtual Jukebox& At(std::size_t index) const = 0;  // from 0
};

}  // namespace tobbin
