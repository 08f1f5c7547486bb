#pragma once

#include "jukebox/AutomaticGroups.h"
#include "jukebox/Jukebox.h"
#include "platform/Environment.h"

namespace tobbin {

// The caption by which the unsaved sample jukebox is known.
inline constexpr char kSampleCaption[] =
    "Jukebox One  (sample Jukebox you can use as a starting point)";

// Adds the list pane's two columns, as every new jukebox has them.
void AddListColumns(Jukebox& jukebox);

// Builds the sample jukebox of a first run in an empty one, which is the only open one or has a
// caption of its own: columns, folders, automatic groups, caption.
void BuildInitialJukebox(Jukebox& jukebox, AutomaticGroups& groups, Progress& progress);

// Appends a copy of every folder of a jukebox, with all below them and their songs, to another.
void CopyJukebox(const Jukebox& from, Jukebox& to);

}  // namespace tobbin
