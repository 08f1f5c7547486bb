#include "tags/SongTags.h"

#include <memory>
#include <optional>
#include <string_view>

#include "tags/Id3v2Tag.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr std::size_t kFieldSize = 30;  // bytes of a text in an ID3v1 tag

std::string WithoutPadding(std::string_view text) {
    return std::string(TrimBlanks(text.substr(0, text.find('\0'))));
}

// A year of 0 is no year.
std::string YearOf(const std::string& text) {
    return text.find_first_not_of('0') == std::string::npos ? std::string() : text;
}

std::string GenreOf(std::int16_t id) {
    return id == MP3TagEditor::kNoGenra ? "" : MP3TagEditor::GenraLookupByID(id);
}

}  // namespace

SongTags::SongTags(Disk& disk, const SystemText& text)
    : m_disk(disk), m_text(text), m_editor(disk, text) {}

bool SongTags::Load(const std::string& path, TagFields wanted, TagTexts& texts) {
    texts = {};
    std::unique_ptr<File> file;
    if (!m_disk.Open(path, OpenMode::ReadIfHere, file).Ok() || !m_editor.LoadFrom(*file))
        return false;
    const TagTexts id3v1 = Id3v1Texts();
    TagFields open;
    for (const TagField field : kTagFields)
        if (wanted.Has(field) && Id3v2MayServe(field, id3v1[field]))
            open.Add(field);
    TagTexts id3v2;
    if (!open.IsEmpty() && !ReadId3v2Tag(*file, m_text, open, id3v2).Ok())
        return false;
    for (const TagField field : kTagFields)
        if (wanted.Has(field))
            texts[field] =
                Id3v2Serves(field, id3v1[field], id3v2[field]) ? id3v2[field] : id3v1[field];
    return true;
}

TagTexts SongTags::Id3v1Texts() const {
    TagTexts texts;
    if (!m_editor.TagExists())
        return texts;
    texts[TagField::Artist] = WithoutPadding(m_editor.Artist());
    texts[TagField::Album] = WithoutPadding(m_editor.Album());
    texts[TagField::Title] = WithoutPadding(m_editor.Title());
    texts[TagField::Year] = YearOf(WithoutPadding(m_editor.Year()));
    texts[TagField::Genre] = GenreOf(m_editor.Genra());
    return texts;
}

// Whether it is worth a look: most ID3v1 texts are short and plain, and need no second read.
bool SongTags::Id3v2MayServe(TagField field, const std::string& id3v1) const {
    if (id3v1.empty())
        return true;
    if (field == TagField::Year || field == TagField::Genre)
        return false;
    constexpr std::size_t kBlanksWhereItWasCut = 2;
    const std::optional<std::string> bytes = m_text.MaybeToAnsi(id3v1);
    return !bytes || bytes->size() + kBlanksWhereItWasCut >= kFieldSize ||
           id3v1.find('?') != std::string::npos || (!IsAscii(*bytes) && IsGeneralisedUtf8(*bytes));
}

// A text serves when the field holds just what is left of it there: its beginning, and "?" for what
// the code page lacks. Some programs write it into the field in UTF-8.
bool SongTags::Id3v2Serves(TagField field, const std::string& id3v1, const std::string& id3v2) {
    if (id3v1.empty() || id3v2.empty())
        return id3v1.empty();
    if (field == TagField::Year || field == TagField::Genre)
        return false;
    m_editor.Title(id3v2);
    return m_editor.Title() == id3v1 ||
           m_text.MaybeToAnsi(id3v1) == WithoutPadding(id3v2.substr(0, kFieldSize));
}

}  // namespace tobbin
