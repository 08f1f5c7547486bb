#pragma once

#include <string>
#include <string_view>

namespace tobbin::player {

// A file's name without its folder and its extension.
std::string NameOfFile(std::string_view path);

// "Artist - Title"; one of them when the other is empty; empty without both.
std::string NameOfSong(std::string_view artist, std::string_view title);

}  // namespace tobbin::player
