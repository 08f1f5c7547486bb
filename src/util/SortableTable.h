#pragma once

#include <cstdint>
#include <span>
#include <string>

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

}  // namespace tobbin
