#include "ui/ListSort.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>
#include <utility>

#include "util/SortableTable.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr int kByNameAscending = 1;
constexpr int kByNameDescending = 2;
constexpr int kBestFirst = 3;
constexpr std::int16_t kKeyColumn = 1;

// A song that the catalogue doesn't have is below the worst.
std::int32_t RankOf(const clsMain& catalogue, const SongItem& song) {
    return song.IsMissing() || song.recordNumber > catalogue.UBoundOfMp3Array()
               ? 0
               : catalogue.Rank(song.recordNumber);
}

template <typename KeyOf>
bool AreInOrder(const std::vector<SongItem>& songs, bool downwards, KeyOf keyOf) {
    decltype(keyOf(songs.front())) last = {};
    for (const SongItem& song : songs) {
        auto key = keyOf(song);
        if (&song != songs.data() && (downwards ? last < key : key < last))
            return false;
        last = std::move(key);
    }
    return true;
}

// The list as a table of keys. The rows' other columns are not copied: the order that the sort
// gives is all that is wanted of it.
class SongTable : public SortableTable {
 public:
    SongTable(const clsMain& catalogue, const Jukebox& jukebox, const Folder& folder, bool byRank)
        : m_catalogue(catalogue),
          m_jukebox(jukebox),
          m_songs(folder.Songs()),
          m_byRank(byRank),
          m_order(folder.Songs().size()) {
        std::iota(m_order.begin(), m_order.end(), 0);
    }

    const std::vector<std::size_t>& Order() const { return m_order; }

    std::int32_t LowerColumn() const override { return kKeyColumn; }
    std::int32_t UpperColumn() const override { return kKeyColumn; }
    std::int32_t LowerRow() const override { return 1; }
    std::int32_t UpperRow() const override { return static_cast<std::int32_t>(m_songs.size()); }

    std::string Cell(std::int32_t /*column*/, std::int32_t row) const override {
        const SongItem& song = m_songs[m_order[static_cast<std::size_t>(row) - 1]];
        return m_byRank ? std::to_string(RankOf(m_catalogue, song))
                        : std::string(m_jukebox.TextOf(song));
    }

    void MoveRows(std::int32_t firstRow, std::span<const std::int32_t> order,
                  std::int32_t /*columnCount*/) override {
        const std::vector<std::size_t> old = m_order;
        auto to = m_order.begin() + (firstRow - 1);
        for (const std::int32_t row : order)
            *to++ = old[static_cast<std::size_t>(row) - 1];
    }

 private:
    const clsMain& m_catalogue;
    const Jukebox& m_jukebox;
    const std::vector<SongItem>& m_songs;
    bool m_byRank;
    std::vector<std::size_t> m_order;
};

}  // namespace

std::string SortHeading(int state) {
    if (state <= kByNameDescending)
        return "Name    --   ";
    return state == kBestFirst ? "By Rank -- best to worst" : "By Rank -- worst to best";
}

std::vector<std::size_t> SortedOrder(SortCity& sorter, const clsMain& catalogue,
                                     const Jukebox& jukebox, const Folder& folder, int state) {
    SongTable table(catalogue, jukebox, folder, state > kByNameDescending);
    const std::int32_t last = table.UpperRow();
    if (state == kByNameAscending)
        sorter.QuickSortStringsAscending(table, 1, last, kKeyColumn, kKeyColumn);
    else if (state == kByNameDescending)
        sorter.QuickSortStringsDescending(table, 1, last, kKeyColumn, kKeyColumn);
    else if (state == kBestFirst)
        sorter.QuickSortNumericDecending(table, 1, last, kKeyColumn, kKeyColumn);
    else
        sorter.QuickSortNumericAscending(table, 1, last, kKeyColumn, kKeyColumn);
    return table.Order();
}

bool IsSorted(const SystemText& system, const clsMain& catalogue, const Jukebox& jukebox,
              const Folder& folder, int state) {
    const bool downwards = state == kByNameDescending || state == kBestFirst;
    if (state > kByNameDescending)
        return AreInOrder(folder.Songs(), downwards,
                          [&](const SongItem& song) { return RankOf(catalogue, song); });
    return AreInOrder(folder.Songs(), downwards, [&](const SongItem& song) {
        return Utf8ToUtf16(system.ToLower(std::string(jukebox.TextOf(song))));
    });
}

std::vector<std::size_t> OrderWithRowsBefore(std::size_t count,
                                             const std::vector<std::size_t>& rows,
                                             std::size_t before) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0);
    const auto place = order.begin() + static_cast<std::ptrdiff_t>(before);
    const auto isOne = [&](std::size_t row) { return std::ranges::binary_search(rows, row); };
    std::stable_partition(order.begin(), place, [&](std::size_t row) { return !isOne(row); });
    std::stable_partition(place, order.end(), isOne);
    return order;
}

}  // namespace tobbin
