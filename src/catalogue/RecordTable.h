#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/TextPool.h"
#include "util/SortCity.h"

namespace tobbin {

// The catalogue's table of text cells: fields 1 to 12, records from 1. Any text may stand in any
// cell. A cell is a number of four bytes: a plain decimal number as it is, any other text by its
// place in a pool that holds each distinct text once. So a record takes 24 bytes and its texts, and
// equal texts are equal numbers. Fields 6 to 12, nearly always empty, lie apart.
class RecordTable : public SortableTable {
 public:
    static constexpr std::int32_t kFields = 12;

    // Stands for a cell's text: equal exactly when the texts are equal. 0 is the empty text.
    using CellId = std::uint32_t;

    std::int32_t Size() const { return m_size; }

    // Makes the table that long; cells that stay keep their text, new ones are empty. Empty records
    // at the end take no memory until they are written.
    void Resize(std::int32_t size);
    void Clear();

    // Raise SubscriptOutOfRangeError for a field outside 1 to 12 or a record outside 1 to Size().
    std::string Text(std::int32_t field, std::int32_t record) const;
    CellId Id(std::int32_t field, std::int32_t record) const;

    // The cell as a whole number; nothing when it holds none.
    std::optional<std::int32_t> MaybeNumber(std::int32_t field, std::int32_t record) const;

    // Set a cell; the table grows up to the record. Return whether the cell's text is another one
    // now. Raise SubscriptOutOfRangeError for a field outside 1 to 12 and a record below 1.
    bool Set(std::int32_t field, std::int32_t record, std::string_view text);
    bool Set(std::int32_t field, std::int32_t record, CellId id);

    // Appends a record with these texts in fields 1 to 5, behind the last one that was written.
    static constexpr std::int32_t kPlainFields = 5;  // they stand in the row itself
    using PlainCells = std::array<CellId, kPlainFields>;
    void AppendWritten(const PlainCells& cells);

    // Fields 1 to 5 of a record from 1 on; of one beyond Size() they are empty.
    const PlainCells& Plain(std::int32_t record) const;

    // Makes room for that many more records with a text of their own each.
    void Reserve(std::size_t records);

    CellId IdOf(std::string_view text);
    // The same for a text that some cell may have; nothing when none has it.
    std::optional<CellId> MaybeIdOf(std::string_view text) const;
    std::string TextOf(CellId id) const;

    static bool IsNumber(CellId id) { return (id & kNumberBit) != 0; }

    // TextOf without a copy where there is one to look at; `digits` holds a number's text.
    std::string_view ViewOf(CellId id, std::array<char, 10>& digits) const;

    // Removes every record whose cell in this field is empty; the others keep their order.
    void RemoveRecordsWithEmpty(std::int32_t field);

    std::int32_t LowerColumn() const override { return 1; }
    std::int32_t UpperColumn() const override { return kFields; }
    std::int32_t LowerRow() const override { return 1; }
    std::int32_t UpperRow() const override { return m_size; }
    std::string Cell(std::int32_t column, std::int32_t row) const override {
        return Text(column, row);
    }
    void MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                  std::int32_t columnCount) override;

 private:
    // A cell with this bit is the plain decimal number in its other bits.
    static constexpr CellId kNumberBit = 0x80000000U;

    struct Row {
        PlainCells cells{};
        std::uint32_t spares = 0;  // in m_spares; 0 when all are empty
    };
    using Spares = std::array<CellId, kFields - kPlainFields>;

    TextPool m_pool;
    std::vector<Row> m_rows;  // may be shorter than the table: what is missing is empty
    std::vector<Spares> m_spares{1};
    std::int32_t m_size = 0;
};

inline const RecordTable::PlainCells& RecordTable::Plain(std::int32_t record) const {
    static constexpr PlainCells kEmpty{};
    const auto index = static_cast<std::size_t>(record) - 1;
    return index < m_rows.size() ? m_rows[index].cells : kEmpty;
}

// The table as a sort by number sees it: a key cell that holds no number counts as the largest one,
// so that such records gather at the end and no sort fails.
class NumberedRecords : public SortableTable {
 public:
    explicit NumberedRecords(RecordTable& table) : m_table(table) {}
    std::int32_t LowerColumn() const override { return m_table.LowerColumn(); }
    std::int32_t UpperColumn() const override { return m_table.UpperColumn(); }
    std::int32_t LowerRow() const override { return m_table.LowerRow(); }
    std::int32_t UpperRow() const override { return m_table.UpperRow(); }
    std::string Cell(std::int32_t column, std::int32_t row) const override;
    void MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                  std::int32_t columnCount) override {
        m_table.MoveRows(firstRow, order, columnCount);
    }

 private:
    RecordTable& m_table;
};

}  // namespace tobbin
