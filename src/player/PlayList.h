#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tobbin {

// The catalogue's record numbers of the songs to play, in their order. One instance serves the
// whole program; every request to play rebuilds it.
class PlayList {
 public:
    // `firstName` is what the first song is called, for a song whose record knows no name.
    void Assign(std::vector<std::int32_t> records, std::string firstName = {}) {
        m_records = std::move(records);
        m_firstName = std::move(firstName);
    }
    const std::string& FirstName() const { return m_firstName; }

    // The catalogue's records have moved: `numberNow` says where to, 0 for one that has gone.
    void Follow(const std::function<std::int32_t(std::int32_t record)>& numberNow) {
        for (std::int32_t& record : m_records)
            record = numberNow(record);
    }

    std::int32_t UpperBound() const { return static_cast<std::int32_t>(m_records.size()); }

    // `place` from 1. Raises SubscriptOutOfRangeError outside the list.
    std::int32_t Song(std::int32_t place) const;

 private:
    std::vector<std::int32_t> m_records;
    std::string m_firstName;
};

}  // namespace tobbin
