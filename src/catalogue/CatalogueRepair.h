#pragma once

#include <cstdint>
#include <string>

#include "catalogue/clsMain.h"

namespace tobbin {

// How the catalogue was found at start-up.
enum class CatalogueFinding {
    FirstRun,    // the settings count no songs, and there is no catalogue file with any
    Loaded,      // all is well; the settings' count may have been mended on the way
    Gone,        // the settings count songs, but the file is not there or holds none
    Damaged,     // the file could not be read to its end
    Unreadable,  // the file is there, but the system doesn't let it be read now
};

struct CatalogueStart {
    CatalogueFinding finding = CatalogueFinding::FirstRun;
    std::string message;  // sentences for a message box; empty for FirstRun and Loaded
    std::string keptAs;   // the path of the damaged file's copy; empty when there is none
};

// Loads the catalogue and mends what can be mended, so that no record is lost:
// - When the settings' count and the file disagree, the file's count is taken and saved.
// - After Gone the table and the count are empty, as at a first run; the person should be asked
//   whether the drives are to be searched (clsMain::SearchHardDrives).
// - After Damaged the table holds every record that could be read, and the damaged file is kept
//   aside; the file of the catalogue's name is whole again. Songs may be missing: ask as above.
// - After Unreadable the table has no songs, and neither it nor the settings must be changed: the
//   passes over the catalogue are to be left out in this run. clsMain::Save refuses.
CatalogueStart LoadCatalogueAtStart(Environment& environment, clsINI& settings, clsMain& catalogue);

}  // namespace tobbin
