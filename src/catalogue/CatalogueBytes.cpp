#include "catalogue/CatalogueBytes.h"

#include <algorithm>
#include <array>
#include <deque>
#include <span>
#include <utility>
#include <vector>

#include "util/ByteWriter.h"
#include "util/DataText.h"
#include "util/Text.h"

namespace tobbin {
namespace {

using CellId = RecordTable::CellId;

constexpr std::int32_t kFolderField = 1;
constexpr std::int32_t kFirstSpareField = 6;
constexpr std::size_t kSpareCount = RecordTable::kFields - RecordTable::kPlainFields;

// The plain fields in the order of the file's strings, see docs/catalogue-file.md.
constexpr std::array<std::int32_t, RecordTable::kPlainFields> kFieldOfString = {2, 1, 4, 3, 5};

// Takes records in groups, so that the names and folders of one are looked up together.
class Taker {
 public:
    Taker(const SystemText& text, RecordTable& table) : m_text(text), m_table(table) {
        m_texts.reserve(2 * kGroup);
        m_records.reserve(kGroup);
    }
    void Take(const CatalogueStrings& strings) {
        if (m_records.size() == kGroup)
            HandOver();
        if (strings[kFolderString] != m_lastFolder || m_texts.empty()) {
            m_lastFolder = strings[kFolderString];
            m_texts.push_back(Decoded(m_lastFolder));
            m_folder = m_texts.size() - 1;
        }
        Waiting& record = m_records.emplace_back();
        record.folder = m_folder;
        for (std::size_t i = kNumberString; i <= kRankString; ++i) {
            const auto number = RecordTable::MaybeIdOfNumber(strings[i]);
            CellOf(record.cells, i) = number ? *number : m_table.IdOf(Decoded(strings[i]));
        }
        record.name = m_texts.size();
        m_texts.push_back(Decoded(strings[kFileNameString]));
    }
    void HandOver() {
        std::array<CellId, 2 * kGroup> ids;
        m_table.IdsOf(m_texts, std::span(ids).first(m_texts.size()));
        for (Waiting& record : m_records) {
            CellOf(record.cells, kFileNameString) = ids[record.name];
            CellOf(record.cells, kFolderString) = ids[record.folder];
            m_table.AppendWritten(record.cells);
        }
        m_texts.clear();
        m_records.clear();
        m_decoded.clear();
    }

 private:
    static constexpr std::size_t kGroup = 128;

    struct Waiting {
        RecordTable::PlainCells cells{};
        std::size_t folder = 0;  // in m_texts
        std::size_t name = 0;    // likewise
    };

    static CellId& CellOf(RecordTable::PlainCells& cells, std::size_t string) {
        return cells[static_cast<std::size_t>(kFieldOfString[string]) - 1];
    }

    // Valid until the group is handed over.
    std::string_view Decoded(std::string_view bytes) {
        return IsAscii(bytes) ? bytes : m_decoded.emplace_back(DecodeDataText(m_text, bytes));
    }

    const SystemText& m_text;
    RecordTable& m_table;
    std::string_view m_lastFolder;
    std::size_t m_folder = 0;
    std::vector<std::string_view> m_texts;
    std::vector<Waiting> m_records;
    std::deque<std::string> m_decoded;
};

char* PutString(char* at, std::string_view bytes) {
    *at++ = static_cast<char>(bytes.size() & 0xFF);
    *at++ = static_cast<char>(bytes.size() >> 8);
    return at + bytes.copy(at, bytes.size());
}

}  // namespace

RecordsTaken TakeRecords(std::string bytes, const SystemText& text, RecordTable& table) {
    const std::string_view file = table.Keep(std::move(bytes));
    // What the settings count may be anything; the file can't hold more than this.
    const std::size_t mostRecords = file.size() / (kCatalogueStringCount * sizeof(std::uint16_t));
    const auto size = static_cast<std::size_t>(table.Size());
    table.Reserve(std::min(size, mostRecords));
    CatalogueReader reader(file);
    CatalogueStrings strings;
    Taker taker(text, table);
    RecordsTaken taken;
    std::size_t count = 0;
    while (reader.Read(strings)) {
        if (strings[kFileNameString].empty())
            continue;
        if (++count > size) {
            taken.tooMany = true;
            break;
        }
        taker.Take(strings);
    }
    taker.HandOver();
    taken.damage = reader.MaybeDamage();
    return taken;
}

std::optional<CellTooLong> WriteRecords(const RecordTable& table, const SystemText& text,
                                        std::string& file) {
    constexpr std::size_t kUsualBytes = 96;  // of a record
    constexpr std::size_t kLength = sizeof(std::uint16_t);
    ByteWriter writer(static_cast<std::size_t>(table.Size()) * kUsualBytes);
    std::array<char, 10> digits{};
    std::string encoded;
    const auto append = [&](CellId id) {
        std::string_view cell = table.ViewOf(id, digits);
        if (!IsAscii(cell))
            cell = encoded = EncodeDataText(text, cell);
        if (cell.size() > kCatalogueStringLimit)
            return false;
        writer.End(PutString(writer.Room(kLength + cell.size()), cell));
        return true;
    };
    std::string folder;  // as a string of the file
    CellId folderId = 0;
    const auto appendFolder = [&](CellId id) {
        if (folder.empty() || id != folderId) {
            const std::size_t before = writer.Written().size();
            if (!append(id))
                return false;
            folder = writer.Written().substr(before);
            folderId = id;
            return true;
        }
        writer.Append(folder);
        return true;
    };
    for (std::int32_t record = 1; record <= table.Size(); ++record) {
        const RecordTable::PlainCells& cells = table.Plain(record);
        for (const std::int32_t field : kFieldOfString) {
            const CellId id = cells[static_cast<std::size_t>(field) - 1];
            if (!(field == kFolderField ? appendFolder(id) : append(id)))
                return CellTooLong{field, record};
        }
        if (!table.HasSpares(record)) {
            constexpr std::size_t kEmpty = kSpareCount * kLength;
            char* const at = writer.Room(kEmpty);
            std::fill_n(at, kEmpty, '\0');
            writer.End(at + kEmpty);
            continue;
        }
        for (std::int32_t field = kFirstSpareField; field <= RecordTable::kFields; ++field)
            if (!append(table.Id(field, record)))
                return CellTooLong{field, record};
    }
    file = writer.Take();
    return std::nullopt;
}

}  // namespace tobbin
