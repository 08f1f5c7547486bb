#include "catalogue/SongIntake.h"

#include <array>
#include <string_view>
#include <unordered_map>

#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {

std::vector<std::int32_t> SongIntake::RecordsOf(const std::vector<std::string>& paths) {
    std::vector<std::string> songs;
    for (const std::string& path : paths)
        if (IsSongName(FileNameOfPath(path)) && FileExists(m_environment.disk, path))
            songs.push_back(path);

    std::unordered_map<std::string, std::int32_t> byName;
    for (const std::string& song : songs)
        byName.try_emplace(FileNameOfPath(song), 0);
    std::array<char, 10> digits{};
    std::string name;
    for (std::int32_t record = m_catalogue.UBoundOfMp3Array(); record >= 1; --record) {
        name = m_catalogue.FileName(record, digits);
        const auto found = byName.find(name);
        if (found != byName.end() && m_catalogue.IsPresent(record))
            found->second = record;
    }

    const std::int32_t before = m_catalogue.UBoundOfMp3Array();
    std::vector<std::int32_t> records;
    for (const std::string& song : songs) {
        std::int32_t& record = byName.at(FileNameOfPath(song));
        if (record == 0)
            record = m_catalogue.OnSongFound(FolderOfPath(song), FileNameOfPath(song));
        records.push_back(record);
    }
    if (m_catalogue.UBoundOfMp3Array() != before)
        m_catalogue.WriteOutMp3DirectoryLocations();
    return records;
}

}  // namespace tobbin
