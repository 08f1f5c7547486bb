#pragma once

#include "catalogue/clsMain.h"
#include "player/PlayerPanel.h"

namespace tobbin {

// The paths of the catalogue's songs: folder and file name. Empty for a number that is no record's
// and for a record that was cleared because its file is gone.
PlayerPanel::SongPathOf SongPathsOf(const clsMain& catalogue);

}  // namespace tobbin
