#pragma once

#include <string>
#include <vector>

#include "jukebox/Jukebox.h"

namespace tobbin {

// The folders that the program fills are known by their texts alone, compared exactly.
inline constexpr char kAllSongs[] = "All Songs";
inline constexpr char kNew[] = "New";
inline constexpr char kDecades[] = "Decades";
inline constexpr char kGenre[] = "Genre";
inline constexpr char kArtist[] = "Artist";
inline constexpr char kYear[] = "Year";

// "20's" to "90's", then "00's": in the order in which the sample jukebox makes them.
const std::vector<std::string>& DecadeTexts();

// Whether this is one of the six above at the top level, or a decade directly under a top-level
// "Decades".
bool IsSpecialFolder(const Folder& folder);

// Whether it is one of these or lies somewhere in one.
bool IsInSpecialFolder(const Folder& folder);

// Whether this is the top-level "All Songs", which songs can't be cut from.
bool IsAllSongs(const Folder& folder);

// Whether a folder with that text among a parent's children (null: at the top level) would be a
// second special folder beside one of the same text, or would, with the children of `content`, hold
// two such decades.
bool MakesSecondSpecialFolder(const Jukebox& jukebox, const Folder* parent, const std::string& text,
                              const Folder& content);

}  // namespace tobbin
