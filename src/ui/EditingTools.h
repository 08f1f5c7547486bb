#pragma once

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "jukebox/AutomaticGroups.h"
#include "jukebox/Jukebox.h"
#include "jukebox/SongClipboard.h"
#include "platform/Environment.h"
#include "util/SortCity.h"

namespace tobbin {

// What all jukebox windows work with; each lives as long as the program.
struct EditingTools {
    Environment& environment;
    clsMain& catalogue;
    const clsINI& settings;
    SortCity& sorter;
    SongClipboard& clipboard;
    OpenJukeboxes& jukeboxes;
    AutomaticGroups& groups;
};

}  // namespace tobbin
