#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/JukeboxChange.h"

namespace tobbin {

// A rank as the catalogue keeps it, and whether it is shown as the worst one all the same.
struct SongRank {
    std::string text;
    bool shownAsWorst = false;
    bool operator==(const SongRank&) const = default;
};

// Gives songs a rank, in the catalogue and in every open jukebox, and saves the catalogue once.
// Taken back, each song has its old rank again, unless it has been ranked otherwise meanwhile:
// then it keeps that.
class RankChange : public JukeboxChange {
 public:
    // Songs that the catalogue doesn't have or that have the rank already are left out.
    RankChange(clsMain& catalogue, const OpenJukeboxes& open, const Jukebox& jukebox,
               std::vector<std::int32_t> records, SongRank rank);

    bool IsEmpty() const { return m_groups.empty(); }
    EditResult Flip(Jukebox& jukebox) override;
    bool ChangesJukebox() const override { return false; }

 private:
    struct Group {
        SongRank before;
        std::vector<std::int32_t> records;
    };
    SongRank RankOf(const Jukebox& jukebox, std::int32_t record) const;
    void Write(Jukebox& jukebox, Group& group, const SongRank& from, const SongRank& to);

    clsMain& m_catalogue;
    const OpenJukeboxes& m_open;
    SongRank m_rank;
    std::vector<Group> m_groups;  // by what they had before: few
    bool m_done = false;
};

}  // namespace tobbin
