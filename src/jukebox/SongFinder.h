#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "catalogue/clsMain.h"
#include "util/SystemText.h"

namespace tobbin {

// Finds the catalogue record of a song that a jukebox file names. The number that the file gives
// counts only if that record is the same song still: after the catalogue was rebuilt it may be
// another one, and then the song's path decides.
class SongFinder {
 public:
    SongFinder(const clsMain& catalogue, const SystemText& text)
        : m_catalogue(catalogue), m_text(text) {}

    // `folder` ends in "\". 0 when the catalogue doesn't have the song.
    std::int32_t RecordOf(std::int32_t number, std::string_view folder, std::string_view fileName);

 private:
    std::int32_t RecordAtPath(std::string_view folder, std::string_view fileName);

    const clsMain& m_catalogue;
    const SystemText& m_text;
    // By lower-cased path; made when it is first needed.
    std::optional<std::unordered_map<std::string, std::int32_t>> m_recordsByPath;
};

}  // namespace tobbin
