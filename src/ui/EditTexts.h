#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "jukebox/FillingAnew.h"
#include "jukebox/Jukebox.h"

namespace tobbin {

// What the status bar says of edits.

// A folder's text in quotation marks; "the top level" for null.
std::string NameOf(const Folder* folder);

// The same with the songs in it and in all folders below it: "Happy" (4 songs).
std::string NameAndSongsOf(const Jukebox& jukebox, const Folder& folder);

// "2 songs, both here already": where the folder holds some of these songs. Of a song that the
// catalogue doesn't have nothing is said.
std::string SongsAndTwins(const std::vector<SongItem>& songs, const Folder& into);

// The line on an edit, and how to undo what it took out, or put in or changed.
enum class WayBack { BringsItBack, BringsThemBack, TakesItBack };
std::string WithWayBack(const std::string& done, WayBack way);

inline constexpr char kNotIntoItself[] = "A folder can't be pasted into itself.";
inline constexpr char kHoldsThemAll[] = "\"All Songs\" holds all of these songs already.";

// What filling the folders anew did, or that there was nothing to do.
std::string WordsOnFilling(const FillingAnew& anew);

// Why a folder can't have a text where such a special folder stands.
std::string StandsHereAlready(const std::string& text);

}  // namespace tobbin
