#include "tobbin_player/Texts.h"

#include "util/Text.h"

namespace tobbin::player {

std::string NameOfFile(std::string_view path) {
    const std::string name = FileNameOfPath(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

std::string NameOfSong(std::string_view artist, std::string_view title) {
    artist = TrimBlanks(artist.substr(0, artist.find('\0')));  // tags may be padded with NULs
    title = TrimBlanks(title.substr(0, title.find('\0')));
    std::string name(artist);
    if (!artist.empty() && !title.empty())
        name += " - ";
    return name += title;
}

}  // namespace tobbin::player
