#include "catalogue/CatalogueFile.h"

#include <algorithm>

#include "unit/catalogue/CatalogueFixture.h"
#include "util/Errors.h"

namespace tobbin {
namespace {

using namespace std::string_literals;

// "~" stands for a NUL.
std::string WithNuls(std::string text) {
    std::ranges::replace(text, '~', '\0');
    return text;
}

// Four records: plain with a text in a spare cell, an ANSI name, a free record, a Greek name.
const std::string kGolden = WithNuls(
    "\x05~a.mp3\x05~C:\\M\\\x01~1\x01~1\x01~7\x02~hi~~~~~~~~~~~~"
    "\x08~Caf\xE9.mp3\x05~C:\\M\\\x01~2\x01~1\x01~2~~~~~~~~~~~~~~"
    "~~~~~~~~~~~~~~~~~~~~~~~~"
    "\x09~\xEF\xBB\xBF\xCE\xA9.mp3\x01~0\x01~4\x01~0\x03~odd~~~~~~~~~~~~~~");
constexpr std::size_t kFirstEnd = 39, kSize = 142;

class CatalogueFileTest : public Catalogue {
 protected:
    void Fill() {
        const char* const rows[4][5] = {{"C:\\M\\", "a.mp3", "1", "1", "7"},
                                        {"C:\\M\\", "Caf\xC3\xA9.mp3", "1", "2", "2"},
                                        {"", "", "", "", ""},
                                        {"0", "\xCE\xA9.mp3", "0", "4", "odd"}};
        for (int record = 1; record <= 4; ++record)
            for (int field = 1; field <= 5; ++field)
                catalogue.Mp3Info(field, record, rows[record - 1][field - 1]);
        catalogue.Mp3Info(6, 1, "hi");
    }
};

TEST_F(CatalogueFileTest, IsWrittenByteForByteAndReadBack) {
    ASSERT_EQ(kGolden.size(), kSize);
    EXPECT_FALSE(catalogue.Mp3MainHasSomeMembers());
    Fill();
    EXPECT_TRUE(catalogue.MainIsDirty());
    EXPECT_TRUE(catalogue.Save());
    EXPECT_FALSE(catalogue.MainIsDirty());
    EXPECT_EQ(fake.disk.Content(kCatalogue), kGolden);
    EXPECT_EQ(settings.NumerOfRecordsInTheMain(), 4);
    EXPECT_NE(fake.disk.Content(settings.SettingsPath()).find("\r\n 4 \r\n"), std::string::npos);

    catalogue.MainIsDirty(true);
    EXPECT_TRUE(catalogue.LoadMain());
    EXPECT_FALSE(catalogue.MainIsDirty());
    EXPECT_EQ(Rows(), (Texts{"C:\\M\\|a.mp3|1|1|7", "C:\\M\\|Caf\xC3\xA9.mp3|1|2|2",
                             "0|\xCE\xA9.mp3|0|4|odd", "||||"}));
    EXPECT_EQ(catalogue.Mp3Info(6, 1), "");
    EXPECT_EQ(catalogue.Rank(1), 7);
    EXPECT_EQ(catalogue.Rank(3), 2);
    EXPECT_TRUE(catalogue.IsPresent(1));
    EXPECT_FALSE(catalogue.IsPresent(3));
    EXPECT_FALSE(catalogue.IsPresent(4));
    EXPECT_EQ(catalogue.SongPath(2), "C:\\M\\Caf\xC3\xA9.mp3");
}

TEST_F(CatalogueFileTest, DamageIsToldAndSoAreCountsThatDisagree) {
    std::string damaged = kGolden;
    damaged[kFirstEnd + 1] = '\x7F';  // the high byte of record 2's first length
    EXPECT_FALSE(Load(damaged, 3));
    EXPECT_EQ(catalogue.LastLoad().message,
              "The song catalogue \"C:\\T\\Grouping\\FileLocNames.lmz\" is damaged at byte 39 "
              "(record 2): a text there is longer than the rest of the file.");
    EXPECT_EQ(catalogue.LastLoad().outcome, LoadOutcome::Damaged);
    EXPECT_EQ(Rows(), (Texts{"C:\\M\\|a.mp3|1|1|7", "||||", "||||"}));
    EXPECT_TRUE(catalogue.Save());  // keeps what could not be read
    EXPECT_EQ(fake.disk.Content(kBad), damaged);
    EXPECT_FALSE(Load(kGolden, 2));  // surplus: what was read stays
    EXPECT_EQ(Row(2), "C:\\M\\|Caf\xC3\xA9.mp3|1|2|2");
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 2);
    EXPECT_FALSE(Load(kGolden, 0));
    EXPECT_TRUE(Load(kGolden, 5));
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 5);
    EXPECT_EQ(Row(5), "||||");
    EXPECT_TRUE(Load(kGolden, 2147483647));  // a mad count costs nothing
    EXPECT_EQ(catalogue.Mp3Info(2, 2147483647), "");
    EXPECT_TRUE(Load(std::string(48, '\0'), 2));  // free records only
    EXPECT_EQ(Rows(), (Texts{"||||", "||||"}));
    fake.disk.Erase(kCatalogue);
    EXPECT_FALSE(catalogue.LoadMain());
    EXPECT_EQ(catalogue.LastLoad().outcome, LoadOutcome::NotThere);
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 2);
}

TEST_F(CatalogueFileTest, ATextOfMoreThan65535BytesIsRefused) {
    Load(kGolden, 3);
    catalogue.Mp3Info(2, 2, std::string(65536, 'x'));
    EXPECT_FALSE(catalogue.Save());
    EXPECT_NE(fake.statusLine.lines.at(0).find("field 2 of record 2 "), std::string::npos);
    EXPECT_EQ(fake.disk.Content(kCatalogue), kGolden);
    EXPECT_TRUE(catalogue.MainIsDirty());
    catalogue.Mp3Info(2, 2, std::string(65535, 'x'));
    EXPECT_TRUE(catalogue.Save());
    EXPECT_EQ(fake.disk.Content(kCatalogue).substr(37, 3), "\xFF\xFFx");
    EXPECT_TRUE(catalogue.LoadMain());
    EXPECT_EQ(catalogue.Mp3Info(2, 2).size(), 65535U);
}

TEST_F(CatalogueFileTest, CellsCheckTheirSubscripts) {
    Fill();
    for (const int field : {0, 13})
        EXPECT_THROW(catalogue.Mp3Info(field, 1), SubscriptOutOfRangeError);
    for (const std::int32_t record : {0, 5})
        EXPECT_THROW(catalogue.Mp3Info(1, record), SubscriptOutOfRangeError);
    EXPECT_THROW(catalogue.Mp3Info(13, 1, "x"), SubscriptOutOfRangeError);
    EXPECT_THROW(catalogue.Mp3Info(1, 0, "x"), SubscriptOutOfRangeError);
    catalogue.Mp3Info(12, 20, "x");
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 20);
    EXPECT_EQ(Row(17), "||||");
}

TEST_F(CatalogueFileTest, SalvageFindsTheRecordsBeyondADamage) {
    std::string file;
    for (int i = 1; i <= 9; ++i)
        file += FileRecord("song.mp3", "C:\\M\\", std::to_string(i));
    const std::size_t one = file.size() / 9;
    for (std::size_t byte = 0; byte < 2 * one; ++byte) {
        std::string damaged = file;
        damaged[3 * one + byte] = '\xFF';
        const CatalogueSummary good = SummariseCatalogue(SalvageCatalogue(damaged));
        EXPECT_FALSE(good.damage);
        EXPECT_GE(good.songs, 8) << byte;
        EXPECT_EQ(good.lastNumber, "9");
    }
    EXPECT_EQ(SalvageCatalogue(std::string(1000, '\xFF')), "");
    // Records that only their place tells from chance.
    const std::string odd = FileRecord("a", "b", "c", "d", "e");
    EXPECT_EQ(SalvageCatalogue(odd + odd + odd.substr(0, 9)), odd + odd);
    EXPECT_EQ(SalvageCatalogue("\xFF\xFF" + odd), odd);
}

}  // namespace
}  // namespace tobbin
