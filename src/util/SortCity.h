#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "util/SystemText.h"

namespace tobbin {

// A table that SortCity can sort: text cells addressed by column and row, both with bounds of the
// table's own (inclusive; an upper bound below the lower one means an empty dimension).
class SortableTable {
 public:
    virtual ~SortableTable() = default;
    virtual std::int32_t LowerColumn() const = 0;
    virtual std::int32_t UpperColumn() const = 0;
    virtual std::int32_t LowerRow() const = 0;
    virtual std::int32_t UpperRow() const = 0;

    // A cell within the bounds.
    virtual std::string Cell(std::int32_t column, std::int32_t row) const = 0;

    // Rearranges the cells of columns 1 to `columnCount`: row firstRow + k gets what stood in row
    // order[k]. `order` is a permutation of the rows firstRow to firstRow + order.size() - 1. The
    // other columns stay where they are.
    virtual void MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                          std::int32_t columnCount) = 0;
};

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

// Four in-place quick-sorts over a table of text cells. All sort the rows `first` to `last` on one
// key column; a swap moves the cells 1 to `columnCount` of both rows. The text routines compare the
// lower-cased keys byte by byte; the numeric ones convert each key with ToLong. None is stable: the
// order of equal keys is the one that the partition of Hoare around the middle row's key gives.
//
// Raises SubscriptOutOfRangeError (a key column, row or column count outside the table),
// OverflowError (first + last leaves 32 bits) and, in the numeric routines, TypeMismatchError or
// OverflowError (a key that is no 32-bit number). The table may then be partly sorted.
class SortCity {
 public:
    explicit SortCity(const SystemText& text) : m_text(text) {}

    void QuickSortStringsAscending(SortableTable& table, std::int32_t first, std::int32_t last,
                                   std::int16_t keyColumn, std::int16_t columnCount);
    void QuickSortStringsDescending(SortableTable& table, std::int32_t first, std::int32_t last,
                                    std::int16_t keyColumn, std::int16_t columnCount);
    void QuickSortNumericAscending(SortableTable& table, std::int32_t first, std::int32_t last,
                                   std::int16_t keyColumn, std::int16_t columnCount);
    void QuickSortNumericDecending(SortableTable& table, std::int32_t first, std::int32_t last,
                                   std::int16_t keyColumn, std::int16_t columnCount);

 private:
    const SystemText& m_text;
};

}  // namespace tobbin
