#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// One song in a folder: a reference to a catalogue record, never a copy of the song. Small, so
// that half a million of them are no burden.
struct SongItem {
    std::uint32_t nameId = 0;       // its text, see Jukebox::TextOf
    std::int32_t recordNumber = 0;  // the catalogue record's own number, from 1; below 1 for a
                                    // song that the catalogue doesn't have
    std::int8_t image = 0;          // the rank when the item was made, 2 to 7
    std::int8_t selectedImage = 0;
    bool operator==(const SongItem&) const = default;
    bool IsMissing() const { return recordNumber < 1; }

    // In "All Songs": the song's tag could not be read yet, and its groups are still to come. Any
    // other song has its rank as its selected image, too.
    static constexpr std::int8_t kUnfiled = 0;
    bool IsUnfiled() const { return selectedImage == kUnfiled; }
};
static_assert(sizeof(SongItem) == 12);

// One folder of the tree, with its child folders and its ordered songs. Owned by its parent; made
// and changed through Jukebox only, so that every change is signalled. One that was taken out of
// the tree is owned by who took it, has no parent and keeps what is in it.
class Folder {
 public:
    Folder() = default;
    ~Folder();  // not recursive, so any depth is safe
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& Text() const { return m_text; }
    Folder* Parent() const;                        // null for a top-level folder
    int Level() const;                             // 0 for a top-level folder
    std::size_t Index() const { return m_index; }  // among its siblings, from 0
    std::size_t ChildCount() const { return m_children.size(); }
    Folder& Child(std::size_t index) const { return *m_children[index]; }  // from 0
    const std::vector<SongItem>& Songs() const { return m_songs; }
    int Image() const { return m_image; }
    int SelectedImage() const { return m_selectedImage; }

    // A number that no other folder of the jukebox has or will have; 0 before it is in one.
    std::uint64_t Serial() const { return m_serial; }

    // Whether this is `folder` or lies somewhere in it.
    bool IsInside(const Folder& folder) const;

    // The first child with exactly this text; null when there is none.
    Folder* MaybeChild(std::string_view text) const;

 private:
    friend class Jukebox;
    std::string m_text;
    Folder* m_parent = nullptr;  // null for the invisible root only
    std::size_t m_index = 0;
    std::uint64_t m_serial = 0;
    std::vector<std::unique_ptr<Folder>> m_children;
    std::vector<SongItem> m_songs;
    int m_image = 1;
    int m_selectedImage = 0;
};

}  // namespace tobbin
