#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/RecordTable.h"
#include "platform/Disk.h"
#include "util/SystemText.h"

namespace tobbin {

// The catalogue file is a plain sequence of records, each of twelve strings, each string a 16-bit
// little-endian length and that many bytes: no header, no count, no trailer. A reader that meets a
// length beyond the end of the file stops there; the records before it are good.
// docs/catalogue-file.md has the whole format.

inline constexpr std::size_t kCatalogueStringCount = 12;
inline constexpr std::size_t kCatalogueStringLimit = 0xFFFF;  // bytes
inline constexpr std::uint64_t kLargestCatalogue = Megabytes(512);

// The strings of one record as bytes, in the order of the file.
using CatalogueStrings = std::array<std::string_view, kCatalogueStringCount>;
enum CatalogueString : std::size_t {
    kFileNameString = 0,
    kFolderString = 1,
    kNumberString = 2,
    kPresenceString = 3,
    kRankString = 4,
    kFirstSpareString = 5,
};

// Where a catalogue file can't be read any further.
struct CatalogueDamage {
    std::size_t offset = 0;   // of the string that is cut, in bytes from 0
    std::int64_t record = 0;  // from 1, records with an empty file name included
    std::string Words() const;
};

// Reads the records of a catalogue file's bytes one after the other.
class CatalogueReader {
 public:
    explicit CatalogueReader(std::string_view file, std::size_t offset = 0)
        : m_file(file), m_offset(offset) {}

    // The next record; its strings are parts of the file's bytes. False at the end of the file and
    // at damage.
    bool Read(CatalogueStrings& strings);

    // Where the next record begins, in bytes from 0.
    std::size_t Offset() const { return m_offset; }
    const std::optional<CatalogueDamage>& MaybeDamage() const { return m_damage; }

 private:
    std::string_view m_file;
    std::size_t m_offset;
    std::int64_t m_record = 0;
    std::optional<CatalogueDamage> m_damage;
};

struct RecordsTaken {
    bool tooMany = false;  // for the table's size; the first ones are in it
    std::optional<CatalogueDamage> damage;
};

// Fills an empty table (see RecordTable::Resize) with the records that have a file name; the spare
// fields stay empty.
RecordsTaken TakeRecords(std::string_view file, const SystemText& text, RecordTable& table);

struct CellTooLong {
    int field = 0;
    std::int32_t record = 0;
};

// The bytes of a file of all records, or the cell that no file can hold.
std::optional<CellTooLong> WriteRecords(const RecordTable& table, const SystemText& text,
                                        std::string& file);

// What a catalogue file holds, found out without taking it into the table.
struct CatalogueSummary {
    std::int32_t songs = 0;         // records with a file name
    std::int32_t presentSongs = 0;  // those of them whose presence flag is not 0
    std::string lastNumber;         // the number cell of the last record with a file name, as bytes
    std::size_t end = 0;            // behind the last good record, in bytes
    std::optional<CatalogueDamage> damage;
};
CatalogueSummary SummariseCatalogue(std::string_view file);

// Whether a presence flag says that the song's file is there: it is a number other than 0.
bool SaysPresent(std::string_view presenceFlag);

// The bytes of a whole catalogue file with every record of a damaged one that can still be told:
// those before the damage and, beyond it, every run of bytes that can only be a record.
std::string SalvageCatalogue(std::string_view file);

// The bytes of a catalogue file with all records of the first one, and of an older copy those whose
// songs it doesn't have, in the order of their numbers. Both are whole.
std::string MergeCatalogues(std::string_view file, std::string_view older);

}  // namespace tobbin
