#pragma once

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

    // Takes in the MP3 files among these full paths (see FoundSongs); the outcome's records are
    // theirs, in their order. The catalogue and the list of song folders are saved when there were
    // songs that are new or back. Files that are not there are passed over.
    FoundOutcome TakeIn(const std::vector<std::string>& paths);

 private:
    Environment& m_environment;
    clsMain& m_catalogue;
};

}  // namespace tobbin
