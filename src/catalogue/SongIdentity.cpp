#include "catalogue/SongIdentity.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "catalogue/clsMain.h"
#include "util/Text.h"

namespace tobbin {
namespace {

std::uint64_t PathHash(std::uint64_t folderHash, std::string_view lowerName) {
    return folderHash * 0x9E3779B97F4A7C15U ^ TextHash()(lowerName);
}

// How many parts at their ends two folders (lower-cased, ending in "\") have in common.
int EqualEnd(std::string_view a, std::string_view b) {
    int parts = 0;
    while (a.size() > 1 && b.size() > 1) {
        const std::size_t beginA = a.rfind('\\', a.size() - 2) + 1;
        const std::size_t beginB = b.rfind('\\', b.size() - 2) + 1;
        if (a.substr(beginA) != b.substr(beginB))
            break;
        ++parts;
        a = a.substr(0, beginA);
        b = b.substr(0, beginB);
    }
    return parts;
}

std::string_view LastPart(std::string_view lowerFolder) {
    return lowerFolder.size() < 2
               ? lowerFolder
               : lowerFolder.substr(lowerFolder.rfind('\\', lowerFolder.size() - 2) + 1);
}

}  // namespace

// A record whose file may be gone from its place.
struct SongIdentity::Candidate {
    std::int32_t record = 0;
    bool isPresent = false;
    std::size_t order = 0;  // of clearing
    std::uint64_t size = 0;
    std::string lowerFolder;
    bool nameIsEqual = true;  // else it differs in case
};

struct SongIdentity::Pair {
    std::size_t file = 0;
    std::size_t candidate = 0;
    bool samePath = false;
    int equalEnd = 0;
    bool sameSize = false;
};

SongIdentity::SongIdentity(const clsMain& catalogue)
    : m_table(catalogue.Records()),
      m_memory(catalogue.Memory()),
      m_text(catalogue.Text()),
      m_rule(catalogue.NameRule()) {}

std::string SongIdentity::FolderOf(std::int32_t record) const {
    return m_table.Text(clsMain::kFolder, record);
}

std::string SongIdentity::NameOf(std::int32_t record) const {
    return m_table.Text(clsMain::kFileName, record);
}

bool SongIdentity::IsPresent(std::int32_t record) const {
    return m_table.MaybeNumber(clsMain::kPresence, record).value_or(0) != 0;
}

bool SongIdentity::EqualIgnoringCase(std::string_view a, std::string_view b) const {
    return a == b || m_text.ToLower(a) == m_text.ToLower(b);
}

std::int32_t SongIdentity::AtPath(std::string_view folder, std::string_view name) {
    if (!m_byPath) {
        m_byPath.emplace();
        std::unordered_map<RecordTable::CellId, std::uint64_t> folders;  // their hashes
        for (std::int32_t record = 1; record <= m_table.Size(); ++record) {
            if (!IsPresent(record))
                continue;
            const auto [hash, isNew] = folders.try_emplace(m_table.Id(clsMain::kFolder, record), 0);
            if (isNew)
                hash->second = TextHash()(m_text.ToLower(FolderOf(record)));
            m_byPath->emplace_back(PathHash(hash->second, m_text.ToLower(NameOf(record))), record);
        }
        std::ranges::sort(*m_byPath);
    }
    if (m_byPath->empty())
        return 0;
    const std::string lowerFolder = m_text.ToLower(folder);
    const std::string lowerName = m_text.ToLower(name);
    const std::uint64_t hash = PathHash(TextHash()(lowerFolder), lowerName);
    for (auto found = std::ranges::lower_bound(*m_byPath, std::pair(hash, std::int32_t{0}));
         found != m_byPath->end() && found->first == hash; ++found)
        if (m_text.ToLower(FolderOf(found->second)) == lowerFolder &&
            m_text.ToLower(NameOf(found->second)) == lowerName)
            return found->second;
    return 0;
}

std::span<const std::pair<RecordTable::CellId, std::int32_t>> SongIdentity::PresentNamed(
    std::string_view name) {
    if (!m_byName) {
        m_byName.emplace();
        for (std::int32_t record = 1; record <= m_table.Size(); ++record)
            if (IsPresent(record))
                m_byName->emplace_back(m_table.Id(clsMain::kFileName, record), record);
        std::ranges::sort(*m_byName);
    }
    const auto id = name.empty() ? std::nullopt : m_table.MaybeIdOf(name);
    if (!id)
        return {};
    return {
        std::lower_bound(m_byName->begin(), m_byName->end(), std::pair(*id, std::int32_t{0})),
        std::lower_bound(m_byName->begin(), m_byName->end(), std::pair(*id + 1, std::int32_t{0}))};
}

std::vector<SongIdentity::Candidate> SongIdentity::CandidatesFor(std::string_view name) {
    std::vector<Candidate> candidates;
    for (const auto& [id, record] : PresentNamed(name))
        candidates.push_back(
            {record, true, 0, m_memory.SizeOf(record), m_text.ToLower(FolderOf(record)), true});
    if (!m_cleared) {
        m_cleared.emplace();
        for (const SongMemory::Cleared& song : m_memory.ClearedSongs())
            m_cleared->emplace(m_text.ToLower(song.name), song.record);
    }
    if (m_cleared->empty())
        return candidates;
    const auto [begin, end] = m_cleared->equal_range(m_text.ToLower(name));
    for (auto found = begin; found != end; ++found)
        if (const SongMemory::Cleared* const song = m_memory.MaybeCleared(found->second))
            candidates.push_back(
                {song->record, false,
                 static_cast<std::size_t>(song - m_memory.ClearedSongs().data()) + 1, song->size,
                 m_text.ToLower(song->folder), song->name == name});
    return candidates;
}

// The pairs that may be one song, the surest first.
std::vector<SongIdentity::Pair> SongIdentity::PairsOf(
    std::span<const SongFile> files, const std::vector<Candidate>& candidates) const {
    std::unordered_multimap<std::uint64_t, std::size_t> bySize;
    std::unordered_multimap<std::string_view, std::size_t, TextHash> byLastPart;
    const bool anyPath = m_rule == Rule::OneForEachName;
    for (std::size_t i = 0; !anyPath && i < candidates.size(); ++i) {
        bySize.emplace(candidates[i].size, i);
        byLastPart.emplace(LastPart(candidates[i].lowerFolder), i);
    }
    std::vector<Pair> pairs;
    for (std::size_t file = 0; !candidates.empty() && file < files.size(); ++file) {
        const std::string lowerFolder = m_text.ToLower(files[file].folder);
        const std::uint64_t size = files[file].size;
        const auto add = [&](std::size_t i) {
            const Candidate& song = candidates[i];
            const bool samePath = song.lowerFolder == lowerFolder;
            const int end = EqualEnd(song.lowerFolder, lowerFolder);
            if (samePath || song.nameIsEqual)
                pairs.push_back({file, i, samePath, anyPath ? std::min(end, 1) : end,
                                 size != 0 && size == song.size});
        };
        if (anyPath) {
            for (std::size_t i = 0; i < candidates.size(); ++i)
                add(i);
            continue;
        }
        if (size != 0) {
            const auto [begin, end] = bySize.equal_range(size);
            for (auto found = begin; found != end; ++found)
                add(found->second);
        }
        // A size that isn't known says nothing; the folder must then be of one name.
        const auto [begin, end] = byLastPart.equal_range(LastPart(lowerFolder));
        for (auto found = begin; found != end; ++found)
            if (size == 0 || candidates[found->second].size == 0 ||
                candidates[found->second].lowerFolder == lowerFolder)
                add(found->second);
    }
    const auto sureness = [&](const Pair& pair) {
        const Candidate& song = candidates[pair.candidate];
        return std::tuple(pair.samePath, pair.equalEnd, song.isPresent, song.order, pair.sameSize);
    };
    std::ranges::stable_sort(pairs, std::greater(), sureness);
    return pairs;
}

std::vector<SongIdentity::Answer> SongIdentity::Meet(
    std::span<const SongFile> files, const std::function<bool(std::int32_t)>& isThere) {
    const bool oneForAll = m_rule == Rule::OneForEachName;
    std::vector<Answer> answers(files.size());
    if (files.empty())
        return answers;
    const std::vector<Candidate> candidates = CandidatesFor(files.front().name);
    if (oneForAll)
        for (const Candidate& song : candidates)
            if (song.isPresent && isThere(song.record)) {
                std::ranges::fill(answers, Answer{Finding::LeftOut, song.record});
                return answers;
            }
    std::vector<bool> isTaken(candidates.size());
    for (const Pair& pair : PairsOf(files, candidates)) {
        const Candidate& song = candidates[pair.candidate];
        Answer& answer = answers[pair.file];
        if (isTaken[pair.candidate] || answer.finding != Finding::New)
            continue;
        isTaken[pair.candidate] = true;
        if (!oneForAll && song.isPresent && isThere(song.record))
            continue;
        answer = {Finding::Back, song.record};
        if (oneForAll)
            break;
    }
    if (oneForAll) {
        const auto one = std::ranges::find(answers, Finding::Back, &Answer::finding);
        const std::size_t kept = one == answers.end() ? 0 : one - answers.begin();
        for (std::size_t i = 0; i < answers.size(); ++i)
            if (i != kept)
                answers[i] = {Finding::LeftOut, answers[kept].record};
    }
    return answers;
}

std::int32_t SongIdentity::RecordOf(std::int32_t number, std::string_view folder,
                                    std::string_view name) {
    const bool inTable = number >= 1 && number <= m_table.Size();
    const RecordTable::PlainCells& cells = m_table.Plain(number);
    std::array<char, 10> digits{};
    if (inTable && m_table.ViewOf(cells[clsMain::kFileName - 1], digits) == name &&
        m_table.ViewOf(cells[clsMain::kFolder - 1], digits) == folder)
        return number;
    if (name.empty() || name == "0")
        return 0;
    if (const std::int32_t record = AtPath(folder, name))
        return record;
    if (inTable && IsPresent(number) && EqualIgnoringCase(NameOf(number), name))
        return number;
    return OneNamed(folder, name);
}

// The present song of a name that is the one meant, wherever it lies; 0 where that is not sure.
std::int32_t SongIdentity::OneNamed(std::string_view folder, std::string_view name) {
    const auto named = PresentNamed(name);
    if (m_rule == Rule::OneForEachName)
        return named.empty() ? 0 : named.front().second;
    const std::string lowerFolder = m_text.ToLower(folder);
    std::int32_t best = 0;
    int bestEnd = 0;
    for (const auto& [id, record] : named) {
        const int end = EqualEnd(m_text.ToLower(FolderOf(record)), lowerFolder);
        if (end >= bestEnd)
            best = end > bestEnd ? record : 0;
        bestEnd = std::max(end, bestEnd);
    }
    return best;
}

}  // namespace tobbin
