#include "catalogue/CatalogueFile.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "util/Convert.h"
#include "util/DataText.h"
#include "util/Text.h"
#include "util/TextHash.h"

namespace tobbin {
namespace {

// The fields in the order of the file's strings, see docs/catalogue-file.md.
constexpr std::array<std::int32_t, RecordTable::kFields> kFieldOfString = {2, 1, 4, 3,  5,  6,
                                                                           7, 8, 9, 10, 11, 12};

constexpr std::size_t kPrefix = 2;  // bytes of a length

constexpr std::size_t kLongestName = 1024;  // bytes; a file system's limit is 255 characters

bool IsSmallNumber(std::string_view text) {
    return !text.empty() && text.size() <= 10 &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Whether a record says so much about itself that it can't be bytes read at the wrong place. Cheap
// for any bytes, since it is asked at every place of a damaged file.
bool IsSurelyARecord(const CatalogueStrings& strings) {
    const std::string_view name = strings[kFileNameString];
    const std::string_view folder = strings[kFolderString];
    const std::string_view presence = strings[kPresenceString];
    if (!IsSmallNumber(strings[kNumberString]) || !IsSmallNumber(strings[kRankString]) ||
        (presence != "0" && presence != "1") || name.empty() || name.size() > kLongestName)
        return false;
    if (presence == "0" && name == "0" && folder == "0")
        return true;
    return folder.ends_with('\\') && std::none_of(name.begin(), name.end(), [](char c) {
               return static_cast<unsigned char>(c) < 0x20 || c == '\\';
           });
}

bool IsSurelyARecordAt(std::string_view file, std::size_t offset) {
    CatalogueStrings strings;
    return CatalogueReader(file, offset).Read(strings) && IsSurelyARecord(strings);
}

}  // namespace

std::string CatalogueDamage::Words() const {
    return "damaged at byte " + std::to_string(offset) + " (record " + std::to_string(record) +
           "): a text there is longer than the rest of the file";
}

bool CatalogueReader::Read(CatalogueStrings& strings) {
    if (m_damage || m_offset >= m_file.size())
        return false;
    ++m_record;
    std::size_t at = m_offset;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        const std::size_t left = m_file.size() - at;
        std::size_t length = 0;
        if (left >= kPrefix)
            length = static_cast<unsigned char>(m_file[at]) |
                     static_cast<std::size_t>(static_cast<unsigned char>(m_file[at + 1])) << 8;
        if (left < kPrefix || length > left - kPrefix) {
            m_damage = CatalogueDamage{at, m_record};
            return false;
        }
        strings[i] = m_file.substr(at + kPrefix, length);
        at += kPrefix + length;
    }
    m_offset = at;
    return true;
}

RecordsTaken TakeRecords(std::string_view file, const SystemText& text, RecordTable& table) {
    // What the settings count may be anything; the file can't hold more than this.
    const std::size_t mostRecords = file.size() / (kCatalogueStringCount * sizeof(std::uint16_t));
    const auto size = static_cast<std::size_t>(table.Size());
    table.Reserve(std::min(size, mostRecords));
    CatalogueReader reader(file);
    CatalogueStrings strings;
    RecordsTaken taken;
    std::size_t count = 0;
    while (reader.Read(strings)) {
        if (strings[kFileNameString].empty())
            continue;
        if (++count > size) {
            taken.tooMany = true;
            break;
        }
        RecordTable::PlainCells cells{};
        for (std::size_t i = 0; i < kFirstSpareString; ++i) {
            const std::string_view bytes = strings[i];
            cells[static_cast<std::size_t>(kFieldOfString[i]) - 1] =
                table.IdOf(IsAscii(bytes) ? bytes : DecodeDataText(text, bytes));
        }
        table.AppendWritten(cells);
    }
    taken.damage = reader.MaybeDamage();
    return taken;
}

std::optional<CellTooLong> WriteRecords(const RecordTable& table, const SystemText& text,
                                        std::string& file) {
    file.clear();
    for (std::int32_t record = 1; record <= table.Size(); ++record) {
        for (const std::int32_t field : kFieldOfString) {
            std::array<char, 10> digits{};
            std::string encoded;
            std::string_view cell = table.ViewOf(table.Id(field, record), digits);
            if (!IsAscii(cell))
                cell = encoded = EncodeDataText(text, cell);
            if (cell.size() > kCatalogueStringLimit)
                return CellTooLong{field, record};
            file += static_cast<char>(cell.size() & 0xFF);
            file += static_cast<char>(cell.size() >> 8);
            file += cell;
        }
    }
    return std::nullopt;
}

bool SaysPresent(std::string_view presenceFlag) {
    if (presenceFlag == "1")
        return true;
    return MaybeToLong(presenceFlag).value_or(0) != 0;
}

CatalogueSummary SummariseCatalogue(std::string_view file) {
    CatalogueSummary summary;
    CatalogueReader reader(file);
    CatalogueStrings strings;
    std::string_view lastNumber;
    while (reader.Read(strings)) {
        if (strings[kFileNameString].empty() ||
            summary.songs == std::numeric_limits<std::int32_t>::max())
            continue;
        ++summary.songs;
        if (SaysPresent(strings[kPresenceString]))
            ++summary.presentSongs;
        lastNumber = strings[kNumberString];
    }
    summary.lastNumber = lastNumber;
    summary.damage = reader.MaybeDamage();
    summary.end = reader.Offset();
    return summary;
}

std::string SalvageCatalogue(std::string_view file) {
    std::string good;
    for (std::size_t at = 0; at < file.size();) {
        CatalogueReader reader(file, at);
        CatalogueStrings strings;
        // A record of odd texts counts when what follows it shows that it ends where it should.
        if (reader.Read(strings) && (IsSurelyARecord(strings) || reader.Offset() == file.size() ||
                                     IsSurelyARecordAt(file, reader.Offset()))) {
            if (!strings[kFileNameString].empty())
                good.append(file.substr(at, reader.Offset() - at));
            at = reader.Offset();
        } else {
            ++at;
        }
    }
    // Records of texts too odd to be told from chance are read from the front only.
    const CatalogueSummary front = SummariseCatalogue(file);
    if (front.songs > SummariseCatalogue(good).songs)
        good.assign(file.substr(0, front.end));
    return good;
}

std::string MergeCatalogues(std::string_view file, std::string_view older) {
    constexpr std::int32_t kNoNumber = std::numeric_limits<std::int32_t>::max();
    std::unordered_set<std::int32_t> numbers;
    std::unordered_set<std::int32_t> cleared;         // since the copy was made
    std::unordered_set<std::string, TextHash> songs;  // by path, and by name and number
    std::vector<std::pair<std::int32_t, std::string_view>> records;
    const auto take = [&](std::string_view bytes, bool isOlder) {
        CatalogueReader reader(bytes);
        CatalogueStrings strings;
        for (std::size_t begin = 0; reader.Read(strings);) {
            const std::string_view record = bytes.substr(begin, reader.Offset() - begin);
            begin = reader.Offset();
            const std::string name(strings[kFileNameString]);
            const std::string path = std::string(strings[kFolderString]) + name;
            const std::string numbered = name + "|" + std::string(strings[kNumberString]);
            const bool isCleared = name == "0" && !SaysPresent(strings[kPresenceString]);
            std::int32_t number = MaybeToLong(strings[kNumberString]).value_or(kNoNumber);
            const bool isTaken = numbers.contains(number);
            if (isOlder && (isCleared ? isTaken
                                      : name.empty() || cleared.contains(number) ||
                                            songs.contains(path) || songs.contains(numbered)))
                continue;
            if (isOlder && isTaken)
                number = kNoNumber;
            numbers.insert(number);
            if (!isCleared)
                songs.insert({path, numbered});
            else if (!isOlder)
                cleared.insert(number);
            records.emplace_back(number, record);
        }
    };
    take(file, false);
    take(older, true);
    std::ranges::stable_sort(records, {}, &std::pair<std::int32_t, std::string_view>::first);
    std::string merged;
    for (const auto& [number, bytes] : records)
        merged.append(bytes);
    return merged;
}

}  // namespace tobbin
