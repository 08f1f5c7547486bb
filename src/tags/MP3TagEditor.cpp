#include "tags/MP3TagEditor.h"

#include <algorithm>
#include <limits>

#include "util/Errors.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr std::string_view kTagMark = "TAG";

// Takes the next bytes of a tag into a field.
template <std::size_t Width>
void TakeField(std::string_view& bytes, std::array<char, Width>& field) {
    std::copy_n(bytes.begin(), Width, field.begin());
    bytes.remove_prefix(Width);
}

}  // namespace

MP3TagEditor::MP3TagEditor(Disk& disk, const SystemText& text) : m_disk(disk), m_text(text) {
    Clear();
}

void MP3TagEditor::Clear() {
    m_tagExists = false;
    m_title.fill(' ');
    m_artist.fill(' ');
    m_album.fill(' ');
    m_year.fill(' ');
    m_comment.fill(' ');
    m_genra = kNoGenra;
}

bool MP3TagEditor::LoadMP3(const std::string& path) {
    Clear();
    m_filename = path;
    std::unique_ptr<File> file;
    return m_disk.Open(path, OpenMode::Read, file).Ok() && LoadFrom(*file);
}

bool MP3TagEditor::LoadFrom(File& file) {
    Clear();
    std::uint64_t size = 0;
    if (!file.Size(size).Ok())
        return false;
    if (size <= kTagSize)
        return true;
    std::string tag;
    if (!file.Read(size - kTagSize, kTagSize, tag).Ok() || tag.size() != kTagSize)
        return false;
    std::string_view rest = tag;
    if (!rest.starts_with(kTagMark))
        return true;
    rest.remove_prefix(kTagMark.size());
    m_tagExists = true;
    TakeField(rest, m_title);
    TakeField(rest, m_artist);
    TakeField(rest, m_album);
    TakeField(rest, m_year);
    TakeField(rest, m_comment);
    m_genra = static_cast<unsigned char>(rest.front());
    return true;
}

DiskStatus MP3TagEditor::SaveMP3() {
    if (m_genra < 0 || m_genra > 255)
        throw OverflowError();
    std::string tag(kTagMark);
    tag.append(m_title.data(), m_title.size());
    tag.append(m_artist.data(), m_artist.size());
    tag.append(m_album.data(), m_album.size());
    tag.append(m_year.data(), m_year.size());
    tag.append(m_comment.data(), m_comment.size());
    tag.push_back(static_cast<char>(m_genra));

    std::unique_ptr<File> file;
    if (DiskStatus status = m_disk.Open(m_filename, OpenMode::Update, file); !status.Ok())
        return status;
    std::uint64_t size = 0;
    if (DiskStatus status = file->Size(size); !status.Ok())
        return status;
    // A first tag begins on the last byte of the file, which it overwrites.
    const std::uint64_t behind = m_tagExists ? kTagSize : 1;
    if (size < behind)
        return DiskStatus(DiskError::Other);
    if (DiskStatus status = file->Write(size - behind, tag); !status.Ok())
        return status;
    return file->Close();
}

void MP3TagEditor::Genra(std::int32_t id) {
    if (id < std::numeric_limits<std::int16_t>::min() ||
        id > std::numeric_limits<std::int16_t>::max())
        throw OverflowError();
    m_genra = static_cast<std::int16_t>(id);
}

std::string MP3TagEditor::ReadBytes(std::string_view bytes) const {
    return m_text.FromAnsi(TrimBlanks(bytes));
}

void MP3TagEditor::StoreBytes(std::string_view text, char* bytes, std::size_t width) const {
    // Character by character, so that one of two bytes is never cut in its middle.
    std::string stored;
    while (!text.empty() && stored.size() < width) {
        const std::string_view before = text;
        char32_t ignored = 0;
        TakeCodePoint(text, ignored);
        const std::string character =
            m_text.MaybeToAnsi(before.substr(0, before.size() - text.size())).value_or("?");
        if (stored.size() + character.size() > width)
            break;
        stored += character;
    }
    stored.resize(width, ' ');
    std::copy(stored.begin(), stored.end(), bytes);
}

}  // namespace tobbin
