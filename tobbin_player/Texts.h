#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tobbin::player {

// A file's name without its folder and its extension.
std::string NameOfFile(std::string_view path);

// "Artist - Title"; one of them when the other is empty; empty without both.
std::string NameOfSong(std::string_view artist, std::string_view title);

// Minutes and seconds, "3:05"; "-:--" for a negative time.
std::string TimeText(std::int64_t milliseconds);

}  // namespace tobbin::player
