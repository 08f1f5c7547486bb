#include "catalogue/SongMemory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "catalogue/clsMain.h"

namespace tobbin {
namespace {

constexpr std::string_view kFirstWords = "Tobbin song memory 1\t";
constexpr std::string_view kLastWord = "end";
constexpr std::size_t kSizeFields = 2;
constexpr std::size_t kClearedFields = 5;

// Tells catalogues apart by which of their records are cleared. 32-bit FNV-1a of the numbers.
std::uint32_t Fingerprint(const RecordTable& table) {
    std::uint32_t hash = 2166136261U;
    for (std::int32_t record = 1; record <= table.Size(); ++record) {
        if (!IsCleared(table, record))
            continue;
        for (std::uint32_t rest = static_cast<std::uint32_t>(record), i = 0; i < 4; ++i, rest >>= 8)
            hash = (hash ^ (rest & 0xFFU)) * 16777619U;
    }
    return hash;
}

template <typename Number>
std::optional<Number> MaybeNumber(std::string_view text, Number least) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= least
               ? std::optional(number)
               : std::nullopt;
}

std::vector<std::string_view> FieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    while (true) {
        const std::size_t tab = line.find('\t');
        fields.push_back(line.substr(0, tab));
        if (tab == std::string_view::npos)
            return fields;
        line.remove_prefix(tab + 1);
    }
}

bool CanStandInALine(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

bool IsCleared(const RecordTable& table, std::int32_t record) {
    std::array<char, 10> digits{};
    const RecordTable::PlainCells& cells = table.Plain(record);
    return table.ViewOf(cells[clsMain::kPresence - 1], digits) == "0" &&
           table.ViewOf(cells[clsMain::kFileName - 1], digits) == "0";
}

const SongMemory::Cleared* SongMemory::MaybeCleared(std::int32_t record) const {
    const auto found = m_places.find(record);
    return found == m_places.end() || m_cleared[found->second].isBack ? nullptr
                                                                      : &m_cleared[found->second];
}

void SongMemory::Clear(std::int32_t record, std::string_view folder, std::string_view name) {
    if (!CanStandInALine(folder) || !CanStandInALine(name))
        return;
    TakeCleared({record, record, SizeOf(record), std::string(folder), std::string(name), false});
    m_dirty = true;
}

// The last one in order, also when the record was cleared before.
void SongMemory::TakeCleared(Cleared song) {
    const std::int32_t record = song.record;
    if (const auto old = m_places.find(record); old != m_places.end()) {
        m_cleared.erase(m_cleared.begin() + static_cast<std::ptrdiff_t>(old->second));
        m_cleared.push_back(std::move(song));
        IndexCleared();
        return;
    }
    m_cleared.push_back(std::move(song));
    m_places[record] = m_cleared.size() - 1;
}

void SongMemory::IndexCleared() {
    m_places.clear();
    for (std::size_t i = 0; i < m_cleared.size(); ++i)
        m_places.try_emplace(m_cleared[i].record, i);
}

void SongMemory::BringBack(std::int32_t record) {
    const auto found = m_places.find(record);
    if (found == m_places.end())
        return;
    m_cleared[found->second].isBack = true;
    m_dirty = true;
}

std::uint64_t SongMemory::SizeOf(std::int32_t record) const {
    const auto at = static_cast<std::size_t>(record);
    return record >= 1 && at < m_sizes.size() ? m_sizes[at] : 0;
}

void SongMemory::TakeSize(std::int32_t record, std::uint64_t size) {
    if (size == 0 || SizeOf(record) == size)
        return;
    const auto at = static_cast<std::size_t>(record);
    if (at >= m_sizes.size())
        m_sizes.resize(at + 1);
    m_sizes[at] = size;
    m_sizesDirty = true;
}

void SongMemory::Move(const std::unordered_map<std::int32_t, std::int32_t>& moved) {
    if (moved.empty())
        return;
    std::vector<std::int32_t> taken;
    for (const auto& [before, now] : moved)
        taken.push_back(now);
    std::ranges::sort(taken);
    const auto numberNow = [&](std::int32_t before) {
        if (const auto found = moved.find(before); found != moved.end())
            return found->second;
        return std::ranges::binary_search(taken, before) ? 0 : before;
    };
    for (Cleared& song : m_cleared)
        song.record = numberNow(song.record);
    std::erase_if(m_cleared, [](const Cleared& song) { return song.record == 0; });
    IndexCleared();
    std::vector<std::uint64_t> sizes(m_sizes.size());
    for (std::size_t at = 1; at < m_sizes.size(); ++at) {
        const auto now = static_cast<std::size_t>(numberNow(static_cast<std::int32_t>(at)));
        if (now >= sizes.size())
            sizes.resize(now + 1);
        if (now != 0)
            sizes[now] = m_sizes[at];
    }
    m_sizes = std::move(sizes);
    m_dirty = m_dirty || !m_cleared.empty();
    m_sizesDirty = true;
}

LoadResult SongMemory::Read(std::string_view bytes, const RecordTable& table) {
    ForgetCleared();
    const bool hadSizes = !m_sizes.empty();
    m_fingerprint = Fingerprint(table);
    std::vector<std::string_view> lines = SplitLines(bytes);
    const auto damaged = [](std::size_t line, const char* what) {
        return LoadResult{LoadOutcome::Damaged, "line " + std::to_string(line) + " " + what};
    };
    m_dirty = true;
    if (lines.empty() || !lines.front().starts_with(kFirstWords))
        return damaged(1, "is not the first line of a song memory");
    const auto before = MaybeNumber<std::uint32_t>(lines.front().substr(kFirstWords.size()), 0);
    LoadResult result;
    if (!before)
        result = damaged(1, "has no number where one must stand");
    // Records that the file leaves out have let the ones behind them move up.
    std::unordered_map<std::int32_t, std::int32_t> moved;
    for (std::int32_t record = 1; record <= table.Size(); ++record)
        if (const auto own = table.MaybeNumber(clsMain::kNumber, record); own && *own != record)
            moved.try_emplace(*own, record);
    const auto recordOf = [&](std::int32_t number) {
        if (const auto found = moved.find(number); found != moved.end())
            return found->second;
        return number <= table.Size() && table.MaybeNumber(clsMain::kNumber, number) == number
                   ? number
                   : 0;
    };
    const bool isWhole = lines.size() > 1 && lines.back() == kLastWord && bytes.ends_with('\n');
    const std::size_t end = isWhole ? lines.size() - 1 : lines.size();
    for (std::size_t i = 1; i < end; ++i)
        if (!TakeLine(lines[i], before == m_fingerprint, recordOf, table) &&
            result.outcome == LoadOutcome::Loaded)
            result = damaged(i + 1, "is none that Tobbin writes");
    if (!isWhole && result.outcome == LoadOutcome::Loaded)
        result = damaged(lines.size(), "is not the last one: the file is cut");
    m_dirty = result.outcome != LoadOutcome::Loaded;
    m_sizesDirty = hadSizes;
    return result;
}

bool SongMemory::TakeLine(std::string_view line, bool numbersBefore, const Records& recordOf,
                          const RecordTable& table) {
    const std::vector<std::string_view> fields = FieldsOf(line);
    if (fields.size() != kSizeFields && fields.size() != kClearedFields)
        return false;
    const auto number = MaybeNumber<std::int32_t>(fields[0], 1);
    if (!number)
        return false;
    if (fields.size() == kSizeFields) {
        const auto size = MaybeNumber<std::uint64_t>(fields[1], 1);
        if (const std::int32_t record = recordOf(*number); size && record != 0)
            TakeSize(record, *size);
        return size.has_value();
    }
    const auto before = MaybeNumber<std::int32_t>(fields[1], 1);
    const auto size = MaybeNumber<std::uint64_t>(fields[2], 0);
    if (!before || !size || fields[3].empty() || fields[4].empty() || !CanStandInALine(fields[3]) ||
        !CanStandInALine(fields[4]))
        return false;
    const std::int32_t record = recordOf(numbersBefore ? *before : *number);
    if (m_places.contains(record))
        return false;
    if (record != 0 && IsCleared(table, record))
        TakeCleared({record, record, *size, std::string(fields[3]), std::string(fields[4]), false});
    return true;
}

std::string SongMemory::Write(const RecordTable& table, bool withSizes) const {
    std::string bytes = std::string(kFirstWords) + std::to_string(m_fingerprint) + "\r\n";
    for (const Cleared& song : m_cleared)
        bytes += std::to_string(song.record) + "\t" + std::to_string(song.recordInFile) + "\t" +
                 std::to_string(song.size) + "\t" + song.folder + "\t" + song.name + "\r\n";
    for (std::int32_t record = 1; withSizes && record <= table.Size(); ++record)
        if (const std::uint64_t size = SizeOf(record); size != 0 && !IsCleared(table, record))
            bytes += std::to_string(record) + "\t" + std::to_string(size) + "\r\n";
    return bytes + std::string(kLastWord) + "\r\n";
}

void SongMemory::OnSaved() {
    m_dirty = m_sizesDirty = false;
}

void SongMemory::OnCatalogueSaved(const RecordTable& table) {
    m_fingerprint = Fingerprint(table);
    if (std::erase_if(m_cleared, [](const Cleared& song) { return song.isBack; }) > 0)
        IndexCleared();
    for (Cleared& song : m_cleared)
        song.recordInFile = song.record;
}

void SongMemory::ForgetCleared() {
    m_cleared.clear();
    m_places.clear();
    m_dirty = false;
}

}  // namespace tobbin
