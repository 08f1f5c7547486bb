#pragma once

#include <cstdint>

#include "util/SortableTable.h"
#include "util/SystemText.h"

namespace tobbin {

// Four in-place quick-sorts over a table of text cells. All sort the rows `first` to `last` on one
// key column; a swap moves the cells 1 to `columnCount` of both rows. The text routines compare the
// lower-cased keys by their UTF-16 code units; the numeric ones convert each key with ToLong. None
// is stable: the order of equal keys is the one that Hoare's partition around the middle row's key
// gives, unless the table is one that it splits very unevenly all the way (there it is free).
// Nothing moves, and nothing is looked at, when first > last.
//
// Raises OverflowError (first + last leaves 32 bits), SubscriptOutOfRangeError (a row, the key
// column or a column up to the count outside the table) and, in the numeric routines,
// TypeMismatchError or OverflowError when a comparison meets a key that is no 32-bit number. The
// table may then be partly sorted.
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
