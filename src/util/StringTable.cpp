#include "util/StringTable.h"

#include <algorithm>
#include <utility>

#include "util/Errors.h"

namespace tobbin {
namespace {

std::size_t Extent(std::int32_t lower, std::int32_t upper) {
    return static_cast<std::size_t>(std::max<std::int64_t>(std::int64_t{upper} - lower + 1, 0));
}

}  // namespace

StringTable::StringTable(std::int32_t lowerColumn, std::int32_t upperColumn, std::int32_t lowerRow,
                         std::int32_t upperRow)
    : m_lowerColumn(lowerColumn),
      m_upperColumn(upperColumn),
      m_lowerRow(lowerRow),
      m_upperRow(upperRow),
      m_cells(Extent(lowerColumn, upperColumn) * Extent(lowerRow, upperRow)) {}

std::size_t StringTable::IndexOf(std::int32_t column, std::int32_t row) const {
    if (column < m_lowerColumn || column > m_upperColumn || row < m_lowerRow || row > m_upperRow)
        throw SubscriptOutOfRangeError();
    const auto rowOffset = static_cast<std::size_t>(std::int64_t{row} - m_lowerRow);
    const auto columnOffset = static_cast<std::size_t>(std::int64_t{column} - m_lowerColumn);
    return rowOffset * Extent(m_lowerColumn, m_upperColumn) + columnOffset;
}

std::string& StringTable::At(std::int32_t column, std::int32_t row) {
    return m_cells[IndexOf(column, row)];
}

const std::string& StringTable::At(std::int32_t column, std::int32_t row) const {
    return m_cells[IndexOf(column, row)];
}

void StringTable::MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                           std::int32_t columnCount) {
    std::vector<std::string> moved(order.size());
    for (std::int32_t column = 1; column <= columnCount; ++column) {
        for (std::size_t k = 0; k < order.size(); ++k)
            moved[k] = std::move(At(column, order[k]));
        for (std::size_t k = 0; k < order.size(); ++k)
            At(column, firstRow + static_cast<std::int32_t>(k)) = std::move(moved[k]);
    }
}

}  // namespace tobbin
