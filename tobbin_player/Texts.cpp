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

std::string StatusText(const Display& now) {
    if (!now.notice.empty())
        return now.notice;
    if (!now.track)
        return "The list is empty";
    const std::string song =
        "song " + std::to_string(*now.track + 1) + " of " + std::to_string(now.tracks);
    switch (now.status) {
        case Status::Playing:
            return "Playing " + song + (now.stopsAfterTrack ? ", stops after it" : "");
        case Status::Paused:
            return "Paused in " + song;
        default:
            return "Stopped at " + song;
    }
}

}  // namespace tobbin::player
