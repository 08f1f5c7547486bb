#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Disk.h"
#include "util/SystemText.h"

namespace tobbin {

// One genre of the ID3v1 list.
class MP3Genra {
 public:
    MP3Genra(std::string name, std::int16_t id) : m_name(std::move(name)), m_id(id) {}
    const std::string& Name() const { return m_name; }
    std::int16_t ID() const { return m_id; }

 private:
    std::string m_name;
    std::int16_t m_id;
};

// The genres 0 to 147, then 255, each found by the key "ID" + its id in decimal. All collections
// share one list.
class GenraCollection {
 public:
    std::size_t Count() const { return Genres().size(); }

    // `index` counts from 1 in the order of the ids.
    const MP3Genra& Item(std::size_t index) const { return Genres().at(index - 1); }

    // The genre with this key; null when there is none.
    const MP3Genra* MaybeByKey(std::string_view key) const;

    // The genre of this name, however its letters are capital or small and its words hyphenated;
    // null when there is none.
    static const MP3Genra* MaybeByName(std::string_view text);

 private:
    static const std::vector<MP3Genra>& Genres();
};

// Reads and writes the ID3v1 tag: the last 128 bytes of an MP3 file, "TAG", title (30 bytes),
// artist (30), album (30), year (4), comment (30) and the genre's id (1), texts in the system's
// ANSI code page, one byte a character. Holds one song's fields between a read and a write.
//
// The fields are kept as the bytes they have in the file, so reading and saving changes none of
// them. Titles and the like go in and out as UTF-8; a character that the code page lacks is written
// as "?", and none of two bytes is cut at the end of its field.
class MP3TagEditor {
 public:
    static constexpr std::size_t kTagSize = 128;
    static constexpr std::int16_t kNoGenra = 255;

    MP3TagEditor(Disk& disk, const SystemText& text);

    // Reads the tag of a file into the fields. Returns true, also when the file has no tag (a file
    // of 128 bytes or less is not looked into); false when reading failed. The fields are blank
    // and the genre 255 wherever no tag was read.
    bool LoadMP3(const std::string& path);

    // The same from an open file; leaves `filename` alone.
    bool LoadFrom(File& file);

    // Writes the fields to the file that `filename` names: over its tag when TagExists, otherwise
    // from the last byte of the file on, so that a file without a tag grows by 127 bytes. Every
    // field is padded with blanks. Unlike LoadMP3 it hands on why it failed; a genre outside 0 to
    // 255 raises OverflowError before anything is written. A file that is too short to hold the
    // place (under 128 bytes when TagExists, empty otherwise) is an error and stays as it is.
    DiskStatus SaveMP3();

    // The fields. Reading strips blanks at both ends, and blanks only; writing pads with blanks or
    // cuts to the field's width.
    std::string Title() const { return Read(m_title); }
    void Title(std::string_view text) { Store(text, m_title); }
    std::string Artist() const { return Read(m_artist); }
    void Artist(std::string_view text) { Store(text, m_artist); }
    std::string Album() const { return Read(m_album); }
    void Album(std::string_view text) { Store(text, m_album); }
    std::string Year() const { return Read(m_year); }
    void Year(std::string_view text) { Store(text, m_year); }
    std::string Comment() const { return Read(m_comment); }
    void Comment(std::string_view text) { Store(text, m_comment); }

    std::int16_t Genra() const { return m_genra; }
    // Raises OverflowError for an id outside the 16-bit range.
    void Genra(std::int32_t id);

    bool TagExists() const { return m_tagExists; }
    void TagExists(bool exists) { m_tagExists = exists; }
    const std::string& filename() const { return m_filename; }
    void filename(std::string path) { m_filename = std::move(path); }

    const GenraCollection& GenraList() const { return m_genraList; }

    // The name of a genre: ids 0 to 147 and 255; the empty text for every other id.
    static std::string GenraLookupByID(std::int16_t id);

 private:
    template <std::size_t Width>
    using Field = std::array<char, Width>;

    void Clear();
    std::string ReadBytes(std::string_view bytes) const;
    void StoreBytes(std::string_view text, char* bytes, std::size_t width) const;

    template <std::size_t Width>
    std::string Read(const Field<Width>& field) const {
        return ReadBytes({field.data(), Width});
    }
    template <std::size_t Width>
    void Store(std::string_view text, Field<Width>& field) {
        StoreBytes(text, field.data(), Width);
    }

    Disk& m_disk;
    const SystemText& m_text;
    bool m_tagExists = false;
    Field<30> m_title{}, m_artist{}, m_album{};
    Field<4> m_year{};
    Field<30> m_comment{};
    std::int16_t m_genra = kNoGenra;
    std::string m_filename;
    GenraCollection m_genraList;
};

}  // namespace tobbin
