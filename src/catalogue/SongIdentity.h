#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalogue/RecordTable.h"
#include "catalogue/SongMemory.h"
#include "util/SystemText.h"
#include "util/TextHash.h"

namespace tobbin {

class clsMain;

// A file that a search, a drop or a list has found.
struct SongFile {
    std::string folder;  // ends in "\"
    std::string name;
    std::uint64_t size = 0;  // bytes; 0 when not known
};

// Which song of the catalogue a file is. This is the one place that says so, and search, drops,
// lists and jukebox files ask it.
//
// A song is its file name, and its path says where it lies now: two files of one name (case counts)
// are one song. When the person keeps different songs of one name, a song is its whole path.
//
// It looks at the catalogue as it is when it is first asked. Records may get other paths and new
// ones may be appended meanwhile; no record may be moved or dropped.
class SongIdentity {
 public:
    enum class Rule { OneForEachName, OneForEachPath };

    explicit SongIdentity(const clsMain& catalogue);

    // The present record at a path, the case of letters aside; 0 without one.
    std::int32_t AtPath(std::string_view folder, std::string_view name);

    // What a file is that lies at no record's path.
    enum class Finding {
        New,
        Back,     // the song of `record`, whose own file is not there: this is where it lies now
        LeftOut,  // another song has this name: that of `record`, or with 0 the one among the files
                  // that is not left out
    };
    struct Answer {
        Finding finding = Finding::New;
        std::int32_t record = 0;
    };
    // The answers for files that all have one name (case counts). `isThere` says of a present
    // record whether its own file is there now; it is asked only where that matters.
    std::vector<Answer> Meet(std::span<const SongFile> files,
                             const std::function<bool(std::int32_t)>& isThere);

    // The record of a song that was known by this number, folder and name when it was written down,
    // in a jukebox for instance; 0 when the catalogue doesn't have it now.
    std::int32_t RecordOf(std::int32_t number, std::string_view folder, std::string_view name);

 private:
    struct Candidate;
    struct Pair;

    std::vector<Candidate> CandidatesFor(std::string_view name);
    std::vector<Pair> PairsOf(std::span<const SongFile> files,
                              const std::vector<Candidate>& candidates) const;
    std::span<const std::pair<RecordTable::CellId, std::int32_t>> PresentNamed(
        std::string_view name);
    std::int32_t OneNamed(std::string_view folder, std::string_view name);
    std::string FolderOf(std::int32_t record) const;
    std::string NameOf(std::int32_t record) const;
    bool IsPresent(std::int32_t record) const;
    bool EqualIgnoringCase(std::string_view a, std::string_view b) const;

    const RecordTable& m_table;
    const SongMemory& m_memory;
    const SystemText& m_text;
    Rule m_rule;
    // Both ascending, and made when they are first needed: the present records by the hash of their
    // lower-cased path, and by their name.
    std::optional<std::vector<std::pair<std::uint64_t, std::int32_t>>> m_byPath;
    std::optional<std::vector<std::pair<RecordTable::CellId, std::int32_t>>> m_byName;
    // The cleared songs by their lower-cased name.
    std::optional<std::unordered_multimap<std::string, std::int32_t, TextHash>> m_cleared;
};

}  // namespace tobbin
