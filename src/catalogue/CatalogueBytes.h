#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/CatalogueFile.h"
#include "catalogue/RecordTable.h"
#include "util/SystemText.h"

namespace tobbin {

// The way of the catalogue's records between a file's bytes and the table. A million of them are on
// it at every start, so it takes them in large groups and copies few texts.

struct RecordsTaken {
    bool tooMany = false;  // for the table's size; the first ones are in it
    std::optional<CatalogueDamage> damage;
};

// Fills an empty table (see RecordTable::Resize) with the records that have a file name. The table
// keeps the bytes, and nearly all its texts are parts of them.
RecordsTaken TakeRecords(std::string file, const SystemText& text, RecordTable& table);

struct CellTooLong {
    int field = 0;
    std::int32_t record = 0;
};

// The bytes of a file of all records, or the cell that no file can hold.
std::optional<CellTooLong> WriteRecords(const RecordTable& table, const SystemText& text,
                                        std::string& file);

}  // namespace tobbin
