#pragma once

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "jukebox/SongClipboard.h"
#include "platform/Outside.h"
#include "util/SortCity.h"

namespace tobbin {

// What all jukebox windows work with; each lives as long as the program.
struct EditingTools {
    Outside& outside;
    clsMain& catalogue;
    const clsINI& settings;
    SortCity& sorter;
    SongClipboard& clipboard;
    OpenJukeboxes& jukeboxes;
};

}  // namespace tobbin
