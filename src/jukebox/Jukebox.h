#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tobbin {

// The texts of song items, each distinct one stored once. Texts are known by number, so that an
// item takes a few bytes however often its song stands in the folders.
class NamePool {
 public:
    std::uint32_t Add(std::string_view text);
    const std::string& Text(std::uint32_t id) const { return *m_texts[id]; }

 private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> m_ids;
    std::vector<const std::string*> m_texts;
};

// One song in a folder: a reference to a catalogue record, never a copy of the song.
struct SongItem {
    std::uint32_t nameId = 0;      // its text, in the jukebox's NamePool
    std::int32_t recordNumber = 0;  // the catalogue record's own number, from 1
    std::int8_t image = 0;          // the rank when the item was made or last ranked, 2 to 7
    std::int8_t selectedImage = 0;
    bool operator==(const SongItem&) const = default;
};

// One folder of the tree, with its child folders and its ordered songs. Owned by its parent; made
// and changed through Jukebox only, so that every change is signalled.
class Folder {
 public:
    const std::string& Text() const { return m_text; }
    Folder* Parent() const { return m_parent; }  // null for a top-level folder
    int Level() const;                           // 0 for a top-level folder
    std::size_t ChildCount() const { return m_children.size(); }
    Folder& Child(std::size_t index) const { return *m_children[index]; }  // from 0
    const std::vector<SongItem>& Songs() const { return m_songs; }
    int Image() const { return m_image; }
    int SelectedImage() const { return m_selectedImage; }

 private:
    friend class Jukebox;
    std::string m_text;
    Folder* m_parent = nullptr;
    std::vector<std::unique_ptr<Folder>> m_children;
    std::vector<SongItem> m_songs;
    int m_image = 1;
    int m_selectedImage = 0;
};

// Hears of each change after it was made; does nothing by default. A null folder stands for the
// (invisible) root.
class JukeboxListener {
 public:
    virtual ~JukeboxListener() = default;
    virtual void OnFolderAdded(Folder& /*folder*/) {}
    virtual void OnFolderRemoving(Folder& /*folder*/) {}  // still in the tree
    virtual void OnFolderTextChanged(Folder& /*folder*/) {}
    virtual void OnChildrenReordered(Folder* /*parent*/) {}
    virtual void OnSongsChanged(Folder& /*folder*/) {}
    virtual void OnCaptionChanged() {}
    virtual void OnDirtyChanged() {}
};

// The user's document: a tree of named folders, each with an ordered list of songs, and what the
// jukebox window knows about it.
class Jukebox {
 public:
    Jukebox();
    ~Jukebox();
    Jukebox(const Jukebox&) = delete;
    Jukebox& operator=(const Jukebox&) = delete;

    // The top level's folders, from 0.
    std::size_t RootCount() const { return m_root->ChildCount(); }
    Folder& Root(std::size_t index) const { return m_root->Child(index); }

    // Appends a folder under a parent; null means the top level.
    Folder& AddChild(Folder* parent, std::string text, int image = 1, int selectedImage = 0);
    // Removes a folder with everything below it. Not recursive, so any depth is safe.
    void Remove(Folder& folder);
    void SetText(Folder& folder, std::string text);

    // The songs of a folder.
    SongItem MakeItem(std::string_view text, std::int32_t recordNumber, int image);
    void AppendSongs(Folder& folder, const std::vector<SongItem>& songs);
    void SetSongs(Folder& folder, std::vector<SongItem> songs);
    const std::string& TextOf(const SongItem& item) const { return m_names.Text(item.nameId); }

    // The folder behind `folder` in the order of the tree as if all were open (parents before
    // their children); null after the last. A null argument asks for the first.
    Folder* Next(const Folder* folder) const;
    std::size_t FolderCount() const { return m_folderCount; }

    // The top-level folder with exactly this text, else the first folder in tree order that has
    // it; null when there is none.
    Folder* MaybeFind(std::string_view text) const;
    // The first child with exactly this text; null when there is none.
    static Folder* MaybeChild(const Folder& parent, std::string_view text);

    // The window's properties around the tree.
    const std::string& DaCaption() const { return m_caption; }
    void DaCaption(std::string caption);
    const std::string& FileLocation() const { return m_fileLocation; }  // ends in "\", or empty
    void FileLocation(std::string folder) { m_fileLocation = std::move(folder); }
    bool IsFormDirty() const { return m_dirty; }
    void IsFormDirty(bool dirty);

    // The list pane's column headings.
    const std::vector<std::string>& Columns() const { return m_columns; }
    void AddColumn(std::string heading);
    void SetColumn(std::size_t index, std::string heading);  // from 0

    // Listeners are told in the order they were added; they outlive the jukebox or remove
    // themselves.
    void AddListener(JukeboxListener& listener);
    void RemoveListener(JukeboxListener& listener);

 private:
    template <typename Call>
    void Tell(Call call);
    Folder& ParentOrRoot(Folder* parent) { return parent != nullptr ? *parent : *m_root; }

    std::unique_ptr<Folder> m_root;
    std::size_t m_folderCount = 0;
    NamePool m_names;
    std::string m_caption;
    std::string m_fileLocation;
    bool m_dirty = false;
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

// The list pane's first heading until it is sorted, and the second one.
inline constexpr char kNameHeading[] = "Name    --        (click to sort)";
inline constexpr char kKeyHeading[] = "Key";

// Special folders are those that the program fills: six at the top level and the nine decades
// under "Decades". Texts are compared exactly.
bool IsSpecialFolder(const Folder& folder);

// "00's", "20's" to "90's", in the order in which the sample jukebox makes them ("20's" first).
const std::vector<std::string>& DecadeTexts();

}  // namespace tobbin
