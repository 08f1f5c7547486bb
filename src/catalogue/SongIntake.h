#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "platform/Environment.h"

namespace tobbin {

// Takes single song files into the catalogue.
class SongIntake {
 public:
    SongIntake(Environment& environment, clsMain& catalogue)
        : m_environment(environment), m_catalogue(catalogue) {}

    // The record numbers of the MP3 files among these full paths, in their order. A file whose name
    // the catalogue has for a present song (case counts) is that song, as in every search; the
    // others are appended. The catalogue and the list of song folders are saved when there were
    // such. Files that are not there are passed over.
    std::vector<std::int32_t> RecordsOf(const std::vector<std::string>& paths);

 private:
    Environment& m_environment;
    clsMain& m_catalogue;
};

}  // namespace tobbin
