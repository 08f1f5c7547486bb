#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "util/SortableTable.h"

namespace tobbin {

// The plain table of strings, with the bounds that its maker gives it.
class StringTable : public SortableTable {
 public:
    StringTable(std::int32_t lowerColumn, std::int32_t upperColumn, std::int32_t lowerRow,
                std::int32_t upperRow);

    std::int32_t LowerColumn() const override { return m_lowerColumn; }
    std::int32_t UpperColumn() const override { return m_upperColumn; }
    std::int32_t LowerRow() const override { return m_lowerRow; }
    std::int32_t UpperRow() const override { return m_upperRow; }
    std::string Cell(std::int32_t column, std::int32_t row) const override {
        return At(column, row);
    }
    void MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                  std::int32_t columnCount) override;

    // A cell, for reading and writing. Raises SubscriptOutOfRangeError outside the bounds.
    std::string& At(std::int32_t column, std::int32_t row);
    const std::string& At(std::int32_t column, std::int32_t row) const;

 private:
    std::size_t IndexOf(std::int32_t column, std::int32_t row) const;

    std::int32_t m_lowerColumn, m_upperColumn, m_lowerRow, m_upperRow;
    std::vector<std::string> m_cells;  // row by row
};

}  // namespace tobbin
