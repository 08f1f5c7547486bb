#include "catalogue/CatalogueBytes.h"

#include <algorithm>
#include <array>
#include <deque>
#include <span>
#include <vector>

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

// Takes records in groups, so that the file names of one are looked up together.
class Taker {
 public:
    Taker(const SystemText& text, RecordTable& table) : m_text(text), m_table(table) {
        m_names.reserve(kGroup);
        m_cells.reserve(kGroup);
    }
    void Take(const CatalogueStrings& strings) {
        if (m_cells.size() == kGroup)
            HandOver();
        if (strings[kFolderString] != m_lastFolder) {
            m_lastFolder = strings[kFolderString];
            m_folder = m_table.IdOf(Decoded(m_lastFolder));
        }
        RecordTable::PlainCells cells{};
        for (std::size_t i = kNumberString; i <= kRankString; ++i)
            cells[kFieldOfString[i] - 1] = m_table.IdOf(Decoded(strings[i]));
        cells[kFieldOfString[kFolderString] - 1] = m_folder;
        m_cells.push_back(cells);
        m_names.push_back(Decoded(strings[kFileNameString]));
    }
    void HandOver() {
        std::array<CellId, kGroup> names;
        m_table.IdsOf(m_names, std::span(names).first(m_names.size()));
        for (std::size_t i = 0; i < m_cells.size(); ++i) {
            m_cells[i][kFieldOfString[kFileNameString] - 1] = names[i];
            m_table.AppendWritten(m_cells[i]);
        }
        m_names.clear();
        m_cells.clear();
        m_decoded.clear();
    }

 private:
    static constexpr std::size_t kGroup = 256;

    // Valid until the group is handed over.
    std::string_view Decoded(std::string_view bytes) {
        return IsAscii(bytes) ? bytes : m_decoded.emplace_back(DecodeDataText(m_text, bytes));
    }

    const SystemText& m_text;
    RecordTable& m_table;
    std::string_view m_lastFolder;
    CellId m_folder = 0;
    std::vector<std::string_view> m_names;
    std::vector<RecordTable::PlainCells> m_cells;
    std::deque<std::string> m_decoded;
};

}  // namespace

RecordsTaken TakeRecords(std::string_view file, const SystemText& text, RecordTable& table) {
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
    file.reserve(static_cast<std::size_t>(table.Size()) * kUsualBytes);
    std::string folder;
    CellId folderId = 0;
    std::array<char, 10> digits{};
    const auto append = [&](std::int32_t field, CellId id) {
        if (field == kFolderField) {
            if (id != folderId) {
                folder = EncodeDataText(text, table.TextOf(id));
                folderId = id;
            }
            return AppendCatalogueString(file, folder);
        }
        const std::string_view cell = table.ViewOf(id, digits);
        return IsAscii(cell) ? AppendCatalogueString(file, cell)
                             : AppendCatalogueString(file, EncodeDataText(text, cell));
    };
    for (std::int32_t record = 1; record <= table.Size(); ++record) {
        const RecordTable::PlainCells& cells = table.Plain(record);
        for (const std::int32_t field : kFieldOfString)
            if (!append(field, cells[static_cast<std::size_t>(field) - 1]))
                return CellTooLong{field, record};
        if (!table.HasSpares(record)) {
            file.append(kSpareCount * sizeof(std::uint16_t), '\0');
            continue;
        }
        for (std::int32_t field = kFirstSpareField; field <= RecordTable::kFields; ++field)
            if (!append(field, table.Id(field, record)))
                return CellTooLong{field, record};
    }
    return std::nullopt;
}

}  // namespace tobbin
