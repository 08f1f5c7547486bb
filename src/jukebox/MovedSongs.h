#pragma once

#include <cstdint>
#include <string_view>

#include "catalogue/clsMain.h"
#include "catalogue/SongIdentity.h"
#include "jukebox/Jukebox.h"

namespace tobbin {

// What follows in a jukebox when songs have other records than it knew (see SongIdentity).

// An item of a record that was made with `text`. Where that was the file's name, and only the case
// of letters has changed, it shows the new spelling.
SongItem ItemOf(Jukebox& jukebox, const clsMain& catalogue, std::int32_t record,
                std::string_view text, int image);

// Where a folder that the program fills holds a song both as it was known before (see
// Jukebox::SongMoves) and as it is known now, the first of the two stays. Other folders keep every
// entry.
void KeepMovedSongsOnce(Jukebox& jukebox);

// Missing songs that the catalogue has now are themselves again, wherever they stand. Returns
// whether there were any.
bool FindMissingSongsAgain(Jukebox& jukebox, const clsMain& catalogue, SongIdentity& identity);

// Tells the catalogue what a loaded jukebox knows of its cleared records: what their songs were
// called, and which record such a song has now. That one gets the rank of the cleared one, unless
// it was ranked itself. Returns whether the catalogue was told anything new.
bool TellOfClearedSongs(const Jukebox& jukebox, clsMain& catalogue);

}  // namespace tobbin
