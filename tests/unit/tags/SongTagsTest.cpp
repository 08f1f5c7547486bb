#include "tags/SongTags.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/FakeEnvironment.h"
#include "fakes/TaggedSong.h"
#include "tags/Id3v2Tag.h"
#include "tags/TagReaders.h"
#include "util/Text.h"

namespace tobbin {
namespace {

using namespace std::string_literals;

// A number of so many bytes, with so many bits in each.
std::string Number(std::size_t number, int bytes = 4, int bits = 8) {
    std::string text;
    while (bytes-- > 0)
        text += static_cast<char>(number >> bytes * bits & ((1U << bits) - 1));
    return text;
}
std::string Tag(int version, const std::string& frames, int flags = 0) {
    return "ID3"s + static_cast<char>(version) + '\0' + static_cast<char>(flags) +
           Number(frames.size(), 4, 7) + frames;
}
// A frame of 2.2, 2.3 and 2.4. `flags` are those of its second byte.
std::string F2(const std::string& name, const std::string& content) {
    return name + Number(content.size(), 3) + content;
}
std::string F3(const std::string& name, const std::string& content, int flags = 0) {
    return name + Number(content.size()) + '\0' + static_cast<char>(flags) + content;
}
std::string F4(const std::string& name, const std::string& content, int flags = 0) {
    return name + Number(content.size(), 4, 7) + '\0' + static_cast<char>(flags) + content;
}
const std::string kPicture = "\0image/jpeg\0\3\0\xFF\xD8"s + std::string(300'000, '\xFE');

// Counts what is read of it, and can fail.
class SongFile : public File {
 public:
    explicit SongFile(std::string bytes) : m_bytes(std::move(bytes)) {}
    int reads = 0;
    std::size_t bytesRead = 0;
    int failAt = 0;
    DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) override {
        bytes = m_bytes.substr(std::min<std::size_t>(offset, m_bytes.size()), count);
        bytesRead += count;
        return ++reads == failAt ? DiskStatus(DiskError::NotReady) : DiskStatus();
    }
    DiskStatus Write(std::uint64_t, std::string_view) override { return {}; }
    DiskStatus Size(std::uint64_t& bytes) override {
        bytes = m_bytes.size();
        return {};
    }
    DiskStatus Flush() override { return {}; }
    DiskStatus Close() override { return {}; }

 private:
    std::string m_bytes;
};

std::string Fields(SongFile& file, const FakeText& text = {}) {
    TagTexts texts;
    EXPECT_TRUE(ReadId3v2Tag(file, text, TagFields::All(), texts).Ok());
    std::string line;
    for (const TagField field : kTagFields)
        line += texts[field] + "|";
    return line;
}
std::string Fields(const std::string& bytes) {
    SongFile file(bytes);
    return Fields(file);
}

// Plain tags of 2.3 and 2.4 are tried on those of other programs, by tag_writers.py.
TEST(Id3v2, ReadsEveryVersion) {
    EXPECT_EQ(
        Fields(Tag(2, F2("TT2", "\0Fernando\0"s) + F2("TP1", "\0Abba"s) + F2("TAL", "\0Gold"s) +
                          F2("TYE", "\0001976"s) + F2("TCO", "\0(13)"s))),
        "Abba|Gold|Fernando|1976|Pop|");
    const std::string artist3 = F3("TPE1", "\0Abba"s), artist4 = F4("TPE1", "\3Abba"s);
    EXPECT_EQ(Fields(Tag(3, F3("TCOP", "\0Polar"s) + F3("TYER", "\0001976"s) + artist3)),
              "Abba|||1976||");
    EXPECT_EQ(Fields(Tag(4, artist4 + F4("TYER", "\0031992"s) + F4("TDRC", "\0031976-03-01T10"s) +
                                F4("TYER", "\0031993"s) + F4("TCON", "\00313\00017"s))),
              "Abba|||1976|Pop|");
    // Extended headers: 2.3 doesn't count its size with it, 2.4 does; some only claim to have one.
    const std::string crc(10, '\0');
    for (const std::string& tag : {Tag(3, Number(10) + crc + artist3, 0x40),
                                   Tag(4, Number(14) + crc + artist4, 0x40), Tag(4, artist4, 0x40)})
        EXPECT_EQ(Fields(tag), "Abba|||||");
    // Names of 2.2 in a later tag; the first of two frames, but for an empty one; padding.
    EXPECT_EQ(Fields(Tag(3, F3("TP1\0"s, "\0"s) + F3("TP1\0"s, "\0Abba"s) + F3("TPE1", "\0Cher"s) +
                                std::string(99, '\0') + F3("TALB", "\0Gold"s))),
              "Abba|||||");
    for (const std::string& none :
         {""s, "ID3"s, "TAG"s + artist3, Tag(1, artist3), Tag(5, artist3),
          Tag(2, F2("TP1", "\0Abba"s), 0x40), "ID3\3\0\0\0\0\0\x80"s + artist3, Tag(3, "")})
        EXPECT_EQ(Fields(none), "|||||");
}

TEST(Id3v2, ReadsTextsOfEveryEncoding) {
    const std::pair<std::string, std::string> rows[] = {
        {"\0Caf\xE9\0Cher"s, "Caf\xC3\xA9"},
        {"\0 \x93Q\x94 "s, "\xE2\x80\x9CQ\xE2\x80\x9D"},
        {"\1\xFF\xFE\xA9\3A\0\0\0B\0"s, "\u03A9A"},
        {"\1\xFE\xFF\x03\xA9\0A"s, "\u03A9A"},
        {"\1A\0\xA9\x03"s, "A\xCE\xA9"},
        {"\1\0A\x03\xA9"s, "A\xCE\xA9"},
        {"\2\x03\xA9\0A\0"s, "\u03A9A"},
        {"\2\xFF\xFE\xA9\x03"s, "\xCE\xA9"},
        {"\2\xD8\x3D\xDE\x00"s, "\xF0\x9F\x98\x80"},
        {"\3\xCE\xA9"s, "\xCE\xA9"},
        {"\3\xEF\xBB\xBF\xCE\xA9\0"s, "\xCE\xA9"},
        {"\3Caf\xE9"s, "Caf\xC3\xA9"},
        {"\4Abba"s, ""},
        {"\1A"s, ""},
        {"\3\0Abba"s, ""},
        {""s, ""},
        {"\3" + std::string(4094, 'a') + "\xC3\xA9"s, std::string(4094, 'a')}};
    for (const auto& [content, artist] : rows)
        EXPECT_EQ(Fields(Tag(4, F4("TPE1", content))), artist + "|||||") << content;
}

TEST(Id3v2, NamesGenresAndYears) {
    // What a tag holds, and the name of the genre; "~" is a NUL.
    std::string rows =
        "17=Rock\n(17)=Rock\n(17)Hard Stuff=Rock\n(4)(17)=Disco\n(150)Dub=Dub\n150=\n150~17=Rock\n"
        "(255)Dub=Dub\n255=\n((Live)=(Live)\n(Live)=(Live)\n(17=(17\n(RX)=Remix\nCR=Cover\n"
        "Hip-Hop=Hip Hop\nLO-FI=Lo Fi\neuro-dance=Eurodance\nDeath Metal=Death Metal\n"
        "Dub~Rock=Dub\n1980=1980\n";
    std::ranges::replace(rows, '~', '\0');
    for (const std::string_view row : SplitLines(rows)) {
        const std::string text(row.substr(0, row.find('='))), name(row.substr(text.size() + 1));
        EXPECT_EQ(Fields(Tag(4, F4("TCON", "\3" + text))), "||||" + name + "|") << text;
    }
    for (const auto& [text, year] : {std::pair("20040506", "2004"),
                                     {"May 1985", "1985"},
                                     {"85", ""},
                                     {"198-5", ""},
                                     {" 2001 ", "2001"}})
        EXPECT_EQ(Fields(Tag(3, F3("TYER", "\0"s + text))), "|||"s + year + "||") << text;
}

TEST(Id3v2, TakesBackWhatHidTheText) {
    // A comma behind FF is a letter of its own; a 00 is none. FF FF is how "\u00FF\u00FF" ends.
    const std::string hidden = "\0\xFF\0\xFF,\xFF\0\0"s, shown = "\xC3\xBF\xC3\xBF,\xC3\xBF|||||";
    EXPECT_EQ(Fields(Tag(2, F2("PIC", std::string(70'000, '\0')) + "TP1\0\0\5"s + hidden, 0x80)),
              shown);
    EXPECT_EQ(Fields(Tag(3, "TPE1\0\0\0\5\0\0"s + hidden, 0x80)), shown);
    EXPECT_EQ(Fields(Tag(4, F4("TPE1", hidden), 0x80)), shown);
    EXPECT_EQ(Fields(Tag(4, F4("TPE1", hidden, 0x02))), shown);
    EXPECT_EQ(Fields(Tag(4, F4("TPE1", "g\0\0\0\5"s + hidden, 0x43))), shown);
    // Only claimed: the mark of UTF-16 would not have stayed as it is.
    const std::string mark = "\1\xFF\xFE\xFF\0"s;
    EXPECT_EQ(Fields(Tag(3, F3("TPE1", mark), 0x80)), "\xC3\xBF|||||");
    EXPECT_EQ(Fields(Tag(4, F4("TPE1", mark), 0x80)), "\xC3\xBF|||||");
    EXPECT_EQ(Fields(Tag(3, F3("TPE1", "g\0Abba"s, 0x20))), "Abba|||||");
    for (const int flag : {0x80, 0x40})  // compressed, encrypted
        EXPECT_EQ(Fields(Tag(3, F3("TPE1", "\0Abba"s, flag) + F3("TALB", "\0Gold"s))), "|Gold||||");
    for (const int flag : {0x08, 0x04})
        EXPECT_EQ(Fields(Tag(4, F4("TPE1", "\0Abba"s, flag) + F4("TALB", "\0Gold"s))), "|Gold||||");
}

TEST(Id3v2, SeeksOverPicturesAndKnowsSizesWrittenPlainly) {
    const std::string text = "\0"s + std::string(200, 'a'), shown = text.substr(1) + "|Gold||||";
    const std::string tags[] = {
        Tag(2, F2("PIC", kPicture) + F2("TP1", text) + F2("TAL", "\0Gold"s)),
        Tag(3, F3("APIC", kPicture) + F3("TPE1", text) + F3("TALB", "\0Gold"s)),
        Tag(4, F4("APIC", kPicture) + F4("TPE1", text) + F4("TALB", "\0Gold"s)),
        Tag(4, F3("APIC", kPicture) + F3("TPE1", text) + F3("TALB", "\0Gold"s)),
        Tag(4, F3("TPE1", text) + F3("TALB", "\0Gold"s) + F3("APIC", kPicture)),
        Tag(4, F3("TALB", "\0Gold"s) + F3("TPE1", text))};
    for (const std::string& tag : tags) {
        SongFile file(tag);
        EXPECT_EQ(Fields(file), shown);
        EXPECT_LE(file.reads, 4);
        EXPECT_LE(file.bytesRead, 28U * 1024);
        for (int i = 1; i <= file.reads; ++i) {
            SongFile failing(tag);
            failing.failAt = i;
            TagTexts texts;
            EXPECT_EQ(ReadId3v2Tag(failing, FakeText(), TagFields::All(), texts).Error(),
                      DiskError::NotReady);
        }
    }
}

class SongTagsTest : public testing::Test {
 protected:
    FakeEnvironment m_fake;
    SongTags m_tags{m_fake.disk, m_fake.text};

    TagTexts Load(const std::string& song) {
        TagTexts texts;
        m_fake.disk.AddFile("C:\\a.mp3", song);
        m_fake.disk.ClearLog();
        EXPECT_TRUE(m_tags.Load("C:\\a.mp3", TagFields::ForFiling(), texts));
        return texts;
    }
};

TEST_F(SongTagsTest, Id3v2ServesWhereId3v1IsEmptyOrCutOrLacksLetters) {
    const std::string thirty = "Nick Cave and the Bad Seeds, t";
    struct {
        std::string id3v1, id3v2, artist;
    } rows[] = {
        {"", "Abba", "Abba"},
        {std::string(30, '\0'), "Abba", "Abba"},
        {"Abba", "", "Abba"},
        {"Abba", "Cher", "Abba"},
        {"Abba", "Abba and Friends", "Abba"},  // could have been written
        {"Abba", "ABBA", "Abba"},
        {thirty, thirty + "oo", thirty + "oo"},
        {thirty, "Nick Cave", thirty},
        {"Nick Cave and the Bad Seeds,", "Nick Cave and the Bad Seeds,  too",
         "Nick Cave and the Bad Seeds,  too"},
        {"??????", "\u0391\u0392\u0393\u0394\u0395\u0396", "\u0391\u0392\u0393\u0394\u0395\u0396"},
        {"Dvo?\xE1k", "Dvo\u0159\u00E1k", "Dvo\u0159\u00E1k"},
        {"Dvo?ak", "Dvo\u0159\u00E1k", "Dvo?ak"},
        {"Who?", "Whom", "Who?"},
        {"Caf\xC3\xA9", "Caf\xC3\xA9", "Caf\xC3\xA9"},  // UTF-8 in ID3v1
        {"Caf\xE9", "Cafe", "Caf\xC3\xA9"}};
    for (const auto& row : rows) {
        const std::string tag =
            Tag(4, F4("TPE1", "\3" + row.id3v2) + F4("TDRC", "\0031976"s) + F4("TCON", "\00313"s));
        const TagTexts both = Load(tag + TaggedSong(row.id3v1, "1985", 17));
        EXPECT_EQ(both[TagField::Artist], row.artist) << row.id3v1;
        EXPECT_EQ(both[TagField::Year] + both[TagField::Genre], "1985Rock");
        const TagTexts empty = Load(tag + TaggedSong("x", "0", 200));
        EXPECT_EQ(empty[TagField::Year] + empty[TagField::Genre], "1976Pop");
        const TagTexts alone = Load(tag + std::string(300, 'm'));
        EXPECT_EQ(alone[TagField::Artist] + alone[TagField::Year] + alone[TagField::Title],
                  row.id3v2 + "1976");  // no title was asked for
    }
    Load(TaggedSong("Abba", "1985", 17));
    EXPECT_EQ(std::ranges::count(m_fake.disk.Log(), "read C:\\a.mp3"), 1);  // nothing is in doubt
}

TEST_F(SongTagsTest, ManyThreadsReadTheSameInTheSameOrder) {
    constexpr int kSongs = 1'000;
    for (int i = 0; i < kSongs; ++i)
        if (i % 7 != 0)
            m_fake.disk.AddFile("C:\\" + std::to_string(i), TaggedSong(std::to_string(i), ""));
    for (const unsigned threads : {0U, 1U, 8U}) {
        int named = 0;
        TagReaders readers(m_fake.disk, m_fake.text, TagFields::ForFiling(), threads,
                           [&](std::string& path) {
                               path = "C:\\" + std::to_string(named);
                               return ++named <= kSongs;
                           });
        TagTexts texts;
        for (int i = 0; i < kSongs; ++i) {
            while (!readers.WaitForNext()) {
            }
            ASSERT_EQ(readers.Take(texts), i % 7 != 0) << i;
            ASSERT_EQ(texts[TagField::Artist], i % 7 == 0 ? "" : std::to_string(i));
        }
    }
}

TEST_F(SongTagsTest, SaysThatASongCanNotBeRead) {
    TagTexts texts = Load(TaggedSong("Abba", "1985", 255));  // open, size, and two reads
    for (int operation = 1; operation <= 4; ++operation) {
        m_fake.disk.FailAt(operation, DiskError::NotHere, true);
        EXPECT_FALSE(m_tags.Load("C:\\a.mp3", TagFields::ForFiling(), texts)) << operation;
        EXPECT_EQ(texts, TagTexts());
    }
}

}  // namespace
}  // namespace tobbin
