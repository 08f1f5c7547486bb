#include "jukebox/RankChange.h"

#include <algorithm>
#include <utility>

namespace tobbin {
namespace {

template <typename Call>
void ForEachOpen(const OpenJukeboxes& open, Jukebox& jukebox, Call call) {
    call(jukebox);
    for (std::size_t i = 0; i < open.Count(); ++i)
        if (&open.At(i) != &jukebox)
            call(open.At(i));
}

}  // namespace

RankChange::RankChange(clsMain& catalogue, const OpenJukeboxes& open, const Jukebox& jukebox,
                       std::vector<std::int32_t> records, SongRank rank)
    : m_catalogue(catalogue), m_open(open), m_rank(std::move(rank)) {
    std::ranges::sort(records);
    records.erase(std::unique(records.begin(), records.end()), records.end());
    for (const std::int32_t record : records) {
        if (record < 1 || record > m_catalogue.UBoundOfMp3Array())
            continue;
        SongRank before = RankOf(jukebox, record);
        if (before == m_rank)
            continue;
        auto group = std::ranges::find(m_groups, before, &Group::before);
        if (group == m_groups.end())
            group = m_groups.insert(group, {std::move(before), {}});
        group->records.push_back(record);
    }
}

SongRank RankChange::RankOf(const Jukebox& jukebox, std::int32_t record) const {
    return {m_catalogue.Mp3Info(clsMain::kRank, record), jukebox.IsShownAsWorst(record)};
}

EditResult RankChange::Flip(Jukebox& jukebox) {
    for (Group& group : m_groups) {
        if (m_done)
            Write(jukebox, group, m_rank, group.before);
        else
            Write(jukebox, group, group.before, m_rank);
    }
    m_done = !m_done;
    ForEachOpen(m_open, jukebox, [](Jukebox& one) { one.TellRanksChanged(); });
    m_catalogue.Save();
    return {};
}

// A song that was ranked otherwise since is no longer of this change.
void RankChange::Write(Jukebox& jukebox, Group& group, const SongRank& from, const SongRank& to) {
    std::erase_if(group.records, [&](std::int32_t record) {
        return record > m_catalogue.UBoundOfMp3Array() || RankOf(jukebox, record) != from;
    });
    for (const std::int32_t record : group.records)
        m_catalogue.Mp3Info(clsMain::kRank, record, to.text);
    ForEachOpen(m_open, jukebox, [&](Jukebox& one) {
        for (const std::int32_t record : group.records)
            one.ShowAsWorst(record, to.shownAsWorst);
    });
}

}  // namespace tobbin
