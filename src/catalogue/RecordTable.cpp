#include "catalogue/RecordTable.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "util/Check.h"
#include "util/Convert.h"
#include "util/Errors.h"

namespace tobbin {
namespace {

// A number that is written in the one plain way: no sign, no blanks, no leading zeros.
bool IsPlainNumber(std::string_view text, std::uint32_t& value) {
    constexpr std::size_t kMostDigits = 10;
    if (text.empty() || text.size() > kMostDigits || (text.size() > 1 && text.front() == '0'))
        return false;
    if (text.size() == 1) {
        value = static_cast<std::uint32_t>(text.front() - '0');
        return value <= 9;
    }
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() && value < 0x80000000U;
}

void CheckField(std::int32_t field) {
    if (field < 1 || field > RecordTable::kFields)
        throw SubscriptOutOfRangeError();
}

}  // namespace

void RecordTable::Resize(std::int32_t size) {
    CHECK(size >= 0);
    if (static_cast<std::size_t>(size) < m_rows.size())
        m_rows.resize(static_cast<std::size_t>(size));
    m_size = size;
}

void RecordTable::Clear() {
    m_rows.clear();
    m_spares.assign(1, {});
    m_pool.Clear();
    m_size = 0;
}

RecordTable::CellId RecordTable::IdOf(std::string_view text) {
    std::uint32_t value = 0;
    return IsPlainNumber(text, value) ? kNumberBit | value : m_pool.Add(text);
}

std::optional<RecordTable::CellId> RecordTable::MaybeIdOf(std::string_view text) const {
    std::uint32_t value = 0;
    return IsPlainNumber(text, value) ? std::optional(kNumberBit | value) : m_pool.MaybeFind(text);
}

void RecordTable::Reserve(std::size_t records) {
    m_rows.reserve(m_rows.size() + records);
    m_pool.Reserve(records);
}

void RecordTable::AppendWritten(const PlainCells& cells) {
    m_rows.push_back({cells, 0});
    m_size = std::max(m_size, static_cast<std::int32_t>(m_rows.size()));
}

std::string RecordTable::TextOf(CellId id) const {
    return (id & kNumberBit) != 0 ? std::to_string(id & ~kNumberBit) : std::string(m_pool.Text(id));
}

std::string_view RecordTable::ViewOf(CellId id, std::array<char, 10>& digits) const {
    if ((id & kNumberBit) == 0)
        return m_pool.Text(id);
    const char* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), id & ~kNumberBit).ptr;
    return {digits.data(), end};
}

RecordTable::CellId RecordTable::Id(std::int32_t field, std::int32_t record) const {
    CheckField(field);
    if (record < 1 || record > m_size)
        throw SubscriptOutOfRangeError();
    const auto index = static_cast<std::size_t>(record) - 1;
    if (index >= m_rows.size())
        return 0;
    const Row& row = m_rows[index];
    return field <= kPlainFields ? row.cells[field - 1]
                                 : m_spares[row.spares][field - 1 - kPlainFields];
}

std::string RecordTable::Text(std::int32_t field, std::int32_t record) const {
    return TextOf(Id(field, record));
}

std::optional<std::int32_t> RecordTable::MaybeNumber(std::int32_t field,
                                                     std::int32_t record) const {
    const CellId id = Id(field, record);
    if ((id & kNumberBit) != 0)
        return static_cast<std::int32_t>(id & ~kNumberBit);
    return MaybeToLong(m_pool.Text(id));
}

bool RecordTable::Set(std::int32_t field, std::int32_t record, std::string_view text) {
    return Set(field, record, IdOf(text));
}

bool RecordTable::Set(std::int32_t field, std::int32_t record, CellId id) {
    CheckField(field);
    if (record < 1)
        throw SubscriptOutOfRangeError();
    if (record <= m_size && Id(field, record) == id)
        return false;
    const auto index = static_cast<std::size_t>(record) - 1;
    if (index >= m_rows.size())
        m_rows.resize(index + 1);
    m_size = std::max(m_size, record);
    Row& row = m_rows[index];
    if (field <= kPlainFields) {
        row.cells[field - 1] = id;
        return true;
    }
    if (row.spares == 0) {
        m_spares.emplace_back();
        row.spares = static_cast<std::uint32_t>(m_spares.size() - 1);
    }
    m_spares[row.spares][field - 1 - kPlainFields] = id;
    return true;
}

void RecordTable::RemoveRecordsWithEmpty(std::int32_t field) {
    CHECK(field >= 1 && field <= kPlainFields);
    std::erase_if(m_rows, [field](const Row& row) { return row.cells[field - 1] == 0; });
    m_size = static_cast<std::int32_t>(m_rows.size());
}

void RecordTable::MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                           std::int32_t columnCount) {
    CHECK(columnCount == kFields);  // Whole records only.
    m_rows.resize(static_cast<std::size_t>(m_size));
    std::vector<Row> moved;
    moved.reserve(order.size());
    for (const std::int32_t row : order)
        moved.push_back(m_rows[static_cast<std::size_t>(row) - 1]);
    std::copy(moved.begin(), moved.end(), m_rows.begin() + (firstRow - 1));
}

std::string NumberedRecords::Cell(std::int32_t column, std::int32_t row) const {
    return std::to_string(
        m_table.MaybeNumber(column, row).value_or(std::numeric_limits<std::int32_t>::max()));
}

}  // namespace tobbin
