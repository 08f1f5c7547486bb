#include "tags/Id3v2Tag.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "tags/Id3v2Bytes.h"
#include "tags/Id3v2Text.h"

namespace tobbin {
namespace {

constexpr std::size_t kHeaderSize = 10;
constexpr std::size_t kMostOfAFrame = 4096;

// Flags of the tag, and those of frames in their second byte; the versions have different ones.
constexpr unsigned kUnsynchronized = 0x80;
constexpr unsigned kExtendedHeader = 0x40;  // 2.2: the tag is compressed, in no way ever laid down
constexpr unsigned kCompressed3 = 0x80, kEncrypted3 = 0x40, kGrouped3 = 0x20;
constexpr unsigned kGrouped4 = 0x40, kCompressed4 = 0x08, kEncrypted4 = 0x04;
constexpr unsigned kUnsynchronized4 = 0x02, kDataLength4 = 0x01;

struct FrameName {
    std::string_view name;       // in 2.3 and 2.4
    std::string_view shortName;  // in 2.2
    TagField field;
};
constexpr std::array<FrameName, 6> kFrameNames = {{{"TPE1", "TP1", TagField::Artist},
                                                   {"TALB", "TAL", TagField::Album},
                                                   {"TIT2", "TT2", TagField::Title},
                                                   {"TYER", "TYE", TagField::Year},
                                                   {"TDRC", "TDRC", TagField::Year},
                                                   {"TCON", "TCO", TagField::Genre}}};
constexpr std::string_view kRecordingTime = "TDRC";

unsigned ByteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

// A number whose first byte is the highest, of so many bits a byte.
std::uint32_t Number(std::string_view bytes, int bits) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        number = number << bits | ByteAt(bytes, i);
    return number;
}
std::uint32_t PlainNumber(std::string_view bytes) {
    return Number(bytes, 8);
}
// Seven bits in a byte, the eighth 0.
std::optional<std::uint32_t> MaybeSynchsafe(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (ByteAt(bytes, i) >= 0x80)
            return std::nullopt;
    return Number(bytes, 7);
}

// A name of 2.2 may stand in a later tag, filled up.
std::string_view WithoutFilling(std::string_view name) {
    const bool isFilled = name.size() == 4 && (name[3] == '\0' || name[3] == ' ');
    return name.substr(0, isFilled ? 3 : 4);
}

// Whether it is made of capital letters and digits.
bool IsFrameName(std::string_view name) {
    name = WithoutFilling(name);
    return name.size() >= 3 && std::ranges::all_of(name, [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
           });
}

const FrameName* MaybeKnown(std::string_view name) {
    name = WithoutFilling(name);
    for (const FrameName& known : kFrameNames)
        if (name == known.name || name == known.shortName)
            return &known;
    return nullptr;
}

// A text that ends in the middle of a character ends in front of it.
void DropCutCharacter(std::string& content) {
    if (content[0] != '\x03')
        return;
    while (content.size() > 1 && (ByteAt(content, content.size() - 1) & 0xC0) == 0x80)
        content.pop_back();
    if (ByteAt(content, content.size() - 1) >= 0xC0)
        content.pop_back();
}

class TagReader {
 public:
    TagReader(File& file, const SystemText& text, TagFields wanted, TagTexts& texts)
        : m_bytes(file), m_text(text), m_wanted(wanted), m_texts(texts) {}

    // Reads the fields. With `asWritten` nothing counts as unsynchronized as a whole.
    DiskStatus Read(bool asWritten) {
        m_texts = {};
        if (ReadHeader(asWritten)) {
            SkipExtendedHeader();
            while (!m_wanted.IsEmpty() && ReadFrame()) {
            }
        }
        return m_bytes.Status();
    }
    bool WasFalselyUnsynchronized() const { return m_bytes.WasFalselyUnsynchronized(); }

 private:
    bool ReadHeader(bool asWritten) {
        const std::string_view header = m_bytes.At(0, kHeaderSize);
        if (header.size() < kHeaderSize || !header.starts_with("ID3"))
            return false;
        m_version = ByteAt(header, 3);
        m_flags = ByteAt(header, 5);
        const auto size = MaybeSynchsafe(header.substr(6));
        if (m_version < 2 || m_version > 4 || !size ||
            (m_version == 2 && (m_flags & kExtendedHeader) != 0))
            return false;
        m_end = kHeaderSize + *size;
        m_bytes.EndAt(m_end);
        if (m_version < 4 && (m_flags & kUnsynchronized) != 0 && !asWritten)
            m_bytes.TakeBackUnsynchronization(kHeaderSize);
        return true;
    }

    // Some claim to have one and don't.
    void SkipExtendedHeader() {
        const std::string_view size = m_bytes.At(m_at, 4);
        if (m_version == 2 || (m_flags & kExtendedHeader) == 0 || size.size() < 4 ||
            IsFrameName(size))
            return;
        m_at += m_version == 3 ? 4 + std::uint64_t{PlainNumber(size)}
                               : MaybeSynchsafe(size).value_or(0);
    }

    // Reads or passes over one frame. Returns false behind the last one.
    bool ReadFrame() {
        const std::size_t nameSize = m_version == 2 ? 3 : 4;
        const std::size_t headerSize = m_version == 2 ? 6 : 10;
        const std::string header(m_bytes.At(m_at, headerSize));
        const std::string_view name = std::string_view(header).substr(0, nameSize);
        if (header.size() < headerSize || !IsFrameName(name))
            return false;
        m_at += headerSize;
        const std::uint64_t size = SizeOf(std::string_view(header).substr(nameSize, nameSize));
        const FrameName* const known = MaybeKnown(name);
        if (known != nullptr && m_wanted.Has(known->field))
            TakeText(*known, size, m_version == 2 ? 0 : ByteAt(header, 9));
        m_at += size;
        return true;
    }

    // The size of the frame whose content begins at m_at. In 2.4 it is synchsafe, but a widespread
    // program wrote plain numbers; what stands behind the frame tells.
    std::uint64_t SizeOf(std::string_view bytes) {
        const std::uint64_t plain = PlainNumber(bytes);
        if (m_version < 4 || plain < 0x80)
            return plain;
        const auto synchsafe = MaybeSynchsafe(bytes);
        if (!m_sizesArePlain) {
            if (!synchsafe)
                m_sizesArePlain = true;
            else if (const Next next = WhatIsAt(m_at + *synchsafe); next == Next::Frame)
                m_sizesArePlain = false;
            else if (const Next other = WhatIsAt(m_at + plain); other > next)
                m_sizesArePlain = true;
        }
        return m_sizesArePlain.value_or(false) || !synchsafe ? plain : *synchsafe;
    }

    enum class Next { Nothing, End, Frame };  // in the order of what they prove
    Next WhatIsAt(std::uint64_t at) {
        const std::string_view name = m_bytes.At(at, 4);
        if (name.size() == 4 && IsFrameName(name))
            return Next::Frame;
        const bool isEnd = at == m_end || (name.size() == 4 && PlainNumber(name) == 0);
        return isEnd ? Next::End : Next::Nothing;
    }

    void TakeText(const FrameName& frame, std::uint64_t size, unsigned flags) {
        std::string_view written = m_bytes.At(
            m_at, static_cast<std::size_t>(std::min<std::uint64_t>(size, kMostOfAFrame)));
        const bool isCut = written.size() < size;
        if (m_version == 3) {
            if ((flags & (kCompressed3 | kEncrypted3)) != 0)
                return;
            Drop(written, (flags & kGrouped3) != 0 ? 1 : 0);
        }
        bool isUnsynchronized = false;
        if (m_version == 4) {
            if ((flags & (kCompressed4 | kEncrypted4)) != 0)
                return;
            Drop(written, (flags & kGrouped4) != 0 ? 1 : 0);
            Drop(written, (flags & kDataLength4) != 0 ? 4 : 0);
            isUnsynchronized = ((m_flags & kUnsynchronized) | (flags & kUnsynchronized4)) != 0;
        }
        std::string content(written);
        if (isUnsynchronized) {
            Id3v2Unsynchronization unsynchronization;
            std::string before;
            unsynchronization.TakeBack(written, before);
            if (!unsynchronization.WasFalse())
                content = std::move(before);
        }
        if (isCut && !content.empty())
            DropCutCharacter(content);
        Keep(frame, Id3v2Texts(content, m_text));
    }
    static void Drop(std::string_view& bytes, std::size_t count) {
        bytes.remove_prefix(std::min(count, bytes.size()));
    }

    // The first frame of a field counts; a recording time, which has taken the place of the year in
    // 2.4, counts more than that.
    void Keep(const FrameName& frame, const std::vector<std::string>& values) {
        std::string value = values.empty() ? std::string() : values.front();
        if (frame.field == TagField::Genre)
            value = Id3v2Genre(values);
        else if (frame.field == TagField::Year)
            value = Id3v2Year(value);
        const bool isRecordingTime = frame.name == kRecordingTime;
        if (value.empty() || !(m_texts[frame.field].empty() || isRecordingTime))
            return;
        m_texts[frame.field] = std::move(value);
        if (frame.field != TagField::Year || m_version < 4 || isRecordingTime)
            m_wanted.Remove(frame.field);
    }

    Id3v2Bytes m_bytes;
    const SystemText& m_text;
    TagFields m_wanted;
    TagTexts& m_texts;
    unsigned m_version = 0;
    unsigned m_flags = 0;
    std::uint64_t m_end = 0;
    std::uint64_t m_at = kHeaderSize;  // the next byte to look at
    std::optional<bool> m_sizesArePlain;
};

}  // namespace

DiskStatus ReadId3v2Tag(File& file, const SystemText& text, TagFields wanted, TagTexts& texts) {
    TagReader reader(file, text, wanted, texts);
    const DiskStatus status = reader.Read(false);
    if (!status.Ok() || !reader.WasFalselyUnsynchronized())
        return status;
    return TagReader(file, text, wanted, texts).Read(true);
}

}  // namespace tobbin
