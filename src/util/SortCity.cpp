#include "util/SortCity.h"

#include <algorithm>
#include <bit>
#include <exception>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "util/Convert.h"
#include "util/Errors.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

struct Request {
    SortableTable& table;
    std::int32_t first;
    std::int32_t last;
    std::int16_t keyColumn;
    std::int16_t columnCount;

    std::int32_t Rows() const { return last - first + 1; }

    // Only a key that a swap moves along follows its row.
    bool KeysMove() const { return keyColumn >= 1 && keyColumn <= columnCount; }
};

// (first + last) / 2, a half rounded to the even row.
std::int32_t MiddleRow(std::int32_t first, std::int32_t last) {
    const std::int64_t sum = std::int64_t{first} + last;
    if (sum < std::numeric_limits<std::int32_t>::min() ||
        sum > std::numeric_limits<std::int32_t>::max())
        throw OverflowError();
    const std::int64_t below = sum >> 1;
    const bool roundUp = (sum & 1) != 0 && (below & 1) != 0;
    return static_cast<std::int32_t>(below + (roundUp ? 1 : 0));
}

void CheckSubscripts(const Request& request) {
    const SortableTable& table = request.table;
    const auto columnIsThere = [&](std::int32_t column) {
        return column >= table.LowerColumn() && column <= table.UpperColumn();
    };
    if (request.first < table.LowerRow() || request.last > table.UpperRow() ||
        !columnIsThere(request.keyColumn) || request.columnCount < 1 || !columnIsThere(1) ||
        !columnIsThere(request.columnCount))
        throw SubscriptOutOfRangeError();
}

// A key made ready once, with the row that it belongs to, counted from the first row sorted.
struct NumericEntry {
    std::int32_t key = 0;
    std::int32_t row = 0;
    bool operator<(const NumericEntry& other) const { return key < other.key; }
};

struct TextEntry {
    std::uint64_t start = 0;  // the first 8 bytes, the first one highest
    const char* text = nullptr;
    std::uint32_t length = 0;
    std::int32_t row = 0;
    std::string_view View() const { return {text, length}; }
    bool operator<(const TextEntry& other) const {
        return start != other.start ? start < other.start : View() < other.View();
    }
};

// Keys that are no numbers. They count only when a comparison meets one of them, which the first
// partition always does: it compares every row with the middle one.
class BadKeys {
 public:
    void Add(std::int32_t row, const std::exception_ptr& error) { m_bad.emplace_back(row, error); }
    bool Empty() const { return m_bad.empty(); }
    void RaiseIfBad(std::int32_t row) const {
        const auto bad = std::lower_bound(m_bad.begin(), m_bad.end(), row,
                                          [](const Bad& a, std::int32_t b) { return a.first < b; });
        if (bad != m_bad.end() && bad->first == row)
            std::rethrow_exception(bad->second);
    }

 private:
    using Bad = std::pair<std::int32_t, std::exception_ptr>;
    std::vector<Bad> m_bad;  // by ascending row
};

std::vector<NumericEntry> NumericEntries(const Request& request, BadKeys& badKeys) {
    std::vector<NumericEntry> entries(static_cast<std::size_t>(request.Rows()));
    for (std::int32_t row = 0; row < request.Rows(); ++row) {
        NumericEntry& entry = entries[static_cast<std::size_t>(row)];
        entry.row = row;
        try {
            entry.key = ToLong(request.table.Cell(request.keyColumn, request.first + row));
        } catch (const std::runtime_error&) {
            badKeys.Add(row, std::current_exception());
        }
    }
    return entries;
}

// UTF-8 in which a character beyond FFFF stands as its two surrogates, three bytes each. The order
// of such bytes is the order of the UTF-16 code units; that of plain UTF-8 is another one.
std::string WithSurrogates(std::string text) {
    const auto beyond = [](char c) { return static_cast<unsigned char>(c) >= 0xF0; };
    if (std::none_of(text.begin(), text.end(), beyond))
        return text;
    std::string result;
    for (const char16_t unit : Utf8ToUtf16(text))
        AppendUtf8(result, unit);
    return result;
}

// The lower-cased keys, one behind the other in `arena`. What all begin with alike, such as the
// root of a music folder, is left out: the first 8 bytes then decide nearly every comparison.
std::vector<TextEntry> TextEntries(const Request& request, const SystemText& system,
                                   std::string& arena) {
    std::vector<TextEntry> entries(static_cast<std::size_t>(request.Rows()));
    std::string shared;
    for (std::int32_t row = 0; row < request.Rows(); ++row) {
        const std::string key = WithSurrogates(
            system.ToLower(request.table.Cell(request.keyColumn, request.first + row)));
        if (row == 0)
            shared = key;
        const auto differ = std::mismatch(shared.begin(), shared.end(), key.begin(), key.end());
        shared.erase(differ.first, shared.end());
        arena += key;
        TextEntry& entry = entries[static_cast<std::size_t>(row)];
        entry.length = static_cast<std::uint32_t>(key.size());
        entry.row = row;
    }
    const char* next = arena.data();
    for (TextEntry& entry : entries) {
        entry.text = next + shared.size();
        next += entry.length;
        entry.length -= static_cast<std::uint32_t>(shared.size());
        for (std::uint32_t i = 0; i < 8; ++i) {
            const char byte = i < entry.length ? entry.text[i] : '\0';
            entry.start = entry.start << 8 | static_cast<unsigned char>(byte);
        }
    }
    return entries;
}

template <typename Entry, bool ascending>
class Sorter {
 public:
    Sorter(const Request& request, std::vector<Entry> entries, const BadKeys& badKeys)
        : m_request(request), m_entries(std::move(entries)), m_badKeys(badKeys) {
        if (!m_request.KeysMove()) {
            m_order.resize(m_entries.size());
            for (std::size_t row = 0; row < m_order.size(); ++row)
                m_order[row] = static_cast<std::int32_t>(row);
        }
    }

    // Sorts the entries and takes the rows after them, as far as they got when an error is raised.
    void Run() {
        try {
            SortRange({0, m_request.Rows() - 1, 0});
        } catch (...) {
            MoveRows();
            throw;
        }
        MoveRows();
    }

 private:
    // Rows counted from 0, both inclusive, and how often the table was split to get here.
    struct Range {
        std::int32_t first;
        std::int32_t last;
        int depth;
    };

    static bool Before(const Entry& a, const Entry& b) { return ascending ? a < b : b < a; }

    Entry& At(std::int32_t row) { return m_entries[static_cast<std::size_t>(row)]; }

    void Swap(std::int32_t a, std::int32_t b) {
        if (m_request.KeysMove())
            std::swap(At(a), At(b));
        else
            std::swap(m_order[static_cast<std::size_t>(a)], m_order[static_cast<std::size_t>(b)]);
    }

    // Brings what belongs before the middle row's key to the front. The two parts left to sort are
    // range.first to j and i to range.last. Every row is compared at least once.
    template <typename Compare>
    void Partition(const Range& range, std::int32_t& i, std::int32_t& j, Compare before) {
        const std::int32_t middle =
            MiddleRow(m_request.first + range.first, m_request.first + range.last);
        const Entry pivot = At(middle - m_request.first);
        i = range.first;
        j = range.last;
        while (i <= j) {
            while (before(At(i), pivot) && i < range.last)
                ++i;
            while (before(pivot, At(j)) && j > range.first)
                --j;
            if (i <= j)
                Swap(i++, j--);
        }
    }

    // Front part first, as a recursion would go, but with the waiting parts in a list of our own,
    // so that no table can exhaust the stack.
    void SortRange(const Range& whole) {
        const auto checked = [this](const Entry& a, const Entry& b) {
            m_badKeys.RaiseIfBad(a.row);
            m_badKeys.RaiseIfBad(b.row);
            return Before(a, b);
        };
        const int depthLimit =
            4 * static_cast<int>(std::bit_width(static_cast<std::uint32_t>(m_request.Rows())));
        std::vector<Range> waiting{whole};
        while (!waiting.empty()) {
            const Range range = waiting.back();
            waiting.pop_back();
            if (range.depth > depthLimit && m_request.KeysMove()) {
                std::sort(m_entries.begin() + range.first, m_entries.begin() + range.last + 1,
                          Before);
                continue;
            }
            std::int32_t i = 0;
            std::int32_t j = 0;
            if (range.depth == 0 && !m_badKeys.Empty()) {
                m_badKeys.RaiseIfBad(MiddleRow(m_request.first, m_request.last) - m_request.first);
                Partition(range, i, j, checked);
            } else {
                Partition(range, i, j, Before);
            }
            if (i < range.last)
                waiting.push_back({i, range.last, range.depth + 1});
            if (range.first < j)
                waiting.push_back({range.first, j, range.depth + 1});
        }
    }

    void MoveRows() {
        if (m_request.KeysMove()) {
            m_order.reserve(m_entries.size());
            for (const Entry& entry : m_entries)
                m_order.push_back(entry.row);
        }
        if (std::is_sorted(m_order.begin(), m_order.end()))
            return;
        for (std::int32_t& row : m_order)
            row += m_request.first;
        m_request.table.MoveRows(m_request.first, m_order, m_request.columnCount);
    }

    const Request& m_request;
    std::vector<Entry> m_entries;
    const BadKeys& m_badKeys;
    std::vector<std::int32_t> m_order;  // the rows' new order; kept up only while keys stay put
};

// Whether there is anything to sort; raises what the request as a whole deserves.
bool IsWorthSorting(const Request& request) {
    MiddleRow(request.first, request.last);
    if (request.first > request.last)
        return false;
    CheckSubscripts(request);
    return true;
}

template <bool ascending>
void SortStrings(const Request& request, const SystemText& system) {
    if (!IsWorthSorting(request))
        return;
    std::string arena;
    Sorter<TextEntry, ascending>(request, TextEntries(request, system, arena), {}).Run();
}

template <bool ascending>
void SortNumbers(const Request& request) {
    if (!IsWorthSorting(request))
        return;
    BadKeys badKeys;
    auto entries = NumericEntries(request, badKeys);
    Sorter<NumericEntry, ascending>(request, std::move(entries), badKeys).Run();
}

}  // namespace

void SortCity::QuickSortStringsAscending(SortableTable& table, std::int32_t first,
                                         std::int32_t last, std::int16_t keyColumn,
                                         std::int16_t columnCount) {
    SortStrings<true>({table, first, last, keyColumn, columnCount}, m_text);
}

void SortCity::QuickSortStringsDescending(SortableTable& table, std::int32_t first,
                                          std::int32_t last, std::int16_t keyColumn,
                                          std::int16_t columnCount) {
    SortStrings<false>({table, first, last, keyColumn, columnCount}, m_text);
}

void SortCity::QuickSortNumericAscending(SortableTable& table, std::int32_t first,
                                         std::int32_t last, std::int16_t keyColumn,
                                         std::int16_t columnCount) {
    SortNumbers<true>({table, first, last, keyColumn, columnCount});
}

void SortCity::QuickSortNumericDecending(SortableTable& table, std::int32_t first,
                                         std::int32_t last, std::int16_t keyColumn,
                                         std::int16_t columnCount) {
    SortNumbers<false>({table, first, last, keyColumn, columnCount});
}

}  // namespace tobbin
