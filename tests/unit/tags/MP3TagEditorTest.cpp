#include "tags/MP3TagEditor.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "util/Errors.h"

namespace tobbin {
namespace {

constexpr char kPath[] = "C:\\Music\\song.mp3";

// A text in a field of a tag.
std::string Field(std::string text, std::size_t width, char padding) {
    text.resize(width, padding);
    return text;
}

std::string Tag(char padding) {
    return "TAG" + Field("Caf\xE9", 30, padding) + Field("Abba", 30, padding) +
           Field("Gold", 30, padding) + "1985" + Field("hello", 30, padding) + '\x11';
}

class TagEditor : public testing::Test {
 protected:
    FakeEnvironment m_fake;
    MP3TagEditor m_editor{m_fake.disk, m_fake.text};

    bool Load(const std::string& content) {
        m_fake.disk.AddFile(kPath, content);
        return m_editor.LoadMP3(kPath);
    }
    std::string Texts() const {
        return m_editor.Title() + "|" + m_editor.Artist() + "|" + m_editor.Album() + "|" +
               m_editor.Year() + "|" + m_editor.Comment();
    }
    void ExpectBlank() {
        EXPECT_FALSE(m_editor.TagExists());
        EXPECT_EQ(Texts(), "||||");
        EXPECT_EQ(m_editor.Genra(), 255);
    }
};

TEST_F(TagEditor, ReadsTheLast128Bytes) {
    ASSERT_TRUE(Load("x" + Tag(' ')));  // 129 bytes
    EXPECT_TRUE(m_editor.TagExists());
    EXPECT_EQ(Texts(), "Caf\xC3\xA9|Abba|Gold|1985|hello");
    EXPECT_EQ(m_editor.Genra(), 17);

    ASSERT_TRUE(Load("x" + Tag('\0')));
    EXPECT_EQ(m_editor.Artist(), "Abba" + std::string(26, '\0'));  // only blanks are stripped

    // What the last song left behind must not show in one without a tag.
    for (const std::string& content : {std::string(), std::string(127, 'x'), Tag(' '),
                                       "x" + std::string("tag") + Tag(' ').substr(3),
                                       Tag(' ') + "x", "xx" + Tag(' ').substr(1)}) {
        ASSERT_TRUE(Load("x" + Tag(' ')));
        ASSERT_TRUE(Load(content)) << content.size();
        ExpectBlank();
    }
}

// Nothing is written then.
TEST_F(TagEditor, SaysWhyItCanNotLoadOrSave) {
    m_fake.disk.AddFile(kPath, "x" + Tag(' '));
    for (int operation = 1; operation <= 3; ++operation) {
        m_fake.disk.FailAt(operation, DiskError::AccessDenied, true);
        EXPECT_FALSE(m_editor.LoadMP3(kPath)) << operation;
        ExpectBlank();
    }
    EXPECT_FALSE(m_editor.LoadMP3("C:\\none.mp3"));
    EXPECT_EQ(m_editor.SaveMP3().Error(), DiskError::NotFound);
    EXPECT_FALSE(m_fake.disk.Has("C:\\none.mp3"));

    // No room for the tag.
    for (const auto& [length, tagExists] : {std::pair(0U, false), std::pair(127U, true)}) {
        ASSERT_TRUE(Load(std::string(length, 'm')));
        m_editor.TagExists(tagExists);
        EXPECT_FALSE(m_editor.SaveMP3().Ok());
        EXPECT_EQ(m_fake.disk.Content(kPath), std::string(length, 'm'));
    }

    ASSERT_TRUE(Load("m"));
    EXPECT_THROW(m_editor.Genra(40000), OverflowError);
    m_editor.Genra(256);
    EXPECT_THROW(static_cast<void>(m_editor.SaveMP3()), OverflowError);
    EXPECT_EQ(m_fake.disk.Content(kPath), "m");
}

TEST_F(TagEditor, SavesOverTheTagOrFromTheLastByteOn) {
    ASSERT_TRUE(Load("music" + Tag('\0')));
    m_editor.Title("A title of thirty-five characters..");
    m_editor.Year("7");
    m_editor.Comment("\xCE\xA9 \xC3\xA9");  // code page 1252 has no omega
    ASSERT_TRUE(m_editor.SaveMP3().Ok());
    EXPECT_EQ(m_fake.disk.Content(kPath), "musicTAGA title of thirty-five charact" +
                                              Field("Abba", 30, '\0') + Field("Gold", 30, '\0') +
                                              "7   " + Field("? \xE9", 30, ' ') + '\x11');

    for (const std::size_t length : {1U, 200U}) {
        ASSERT_TRUE(Load(std::string(length, 'm')));
        m_editor.Artist("Abba");
        ASSERT_TRUE(m_editor.SaveMP3().Ok());
        EXPECT_FALSE(m_editor.TagExists());
        EXPECT_EQ(m_fake.disk.Content(kPath), std::string(length - 1, 'm') + "TAG" +
                                                  Field("", 30, ' ') + Field("Abba", 30, ' ') +
                                                  Field("", 64, ' ') + '\xFF');
    }
}

// A page in which every character beyond ASCII is two bytes, as in those of East Asia.
class TwoByteText : public FakeText {
 public:
    std::optional<std::string> MaybeToAnsi(std::string_view text) const override {
        return text == "\xE6\xAD\x8C" ? "\x89\xCC" : FakeText::MaybeToAnsi(text);
    }
};

TEST_F(TagEditor, CutsNoCharacterInItsMiddle) {
    const TwoByteText twoBytes;
    MP3TagEditor editor(m_fake.disk, twoBytes);
    m_fake.disk.AddFile(kPath, "m");
    ASSERT_TRUE(editor.LoadMP3(kPath));
    editor.Year("abc\u6B4Cd");
    editor.Title(std::string(28, 'a') + "\xE6\xAD\x8C");
    ASSERT_TRUE(editor.SaveMP3().Ok());
    EXPECT_EQ(m_fake.disk.Content(kPath).substr(93, 4), "abc ");
    EXPECT_EQ(m_fake.disk.Content(kPath).substr(3, 30), std::string(28, 'a') + "\x89\xCC");
}

TEST_F(TagEditor, KnowsTheGenres) {
    for (const std::int16_t id : {-1, 148, 254, 256})
        EXPECT_EQ(MP3TagEditor::GenraLookupByID(id), "") << id;
    const GenraCollection& list = m_editor.GenraList();
    ASSERT_EQ(list.Count(), 149U);
    for (std::size_t i = 1; i <= list.Count(); ++i)
        EXPECT_EQ(list.MaybeByKey("ID" + std::to_string(list.Item(i).ID())), &list.Item(i));
    EXPECT_EQ(list.Item(145).Name() + list.Item(149).Name(), "Trash MetalNone");
    for (const char* key : {"ID148", "ID254", "ID007", "17", "ID"})
        EXPECT_EQ(list.MaybeByKey(key), nullptr) << key;
}

}  // namespace
}  // namespace tobbin
