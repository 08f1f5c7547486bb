#pragma once

#include <string>
#include <string_view>

#include "tobbin_player/Player.h"

namespace tobbin::player {

// A file's name without its folder and its extension.
std::string NameOfFile(std::string_view path);

// "Artist - Title"; one of them when the other is empty; empty without both.
std::string NameOfSong(std::string_view artist, std::string_view title);

// What the player does, in a line.
std::string StatusText(const Display& now);

}  // namespace tobbin::player
