#pragma once

#include <cstddef>
#include <string>

namespace tobbin {

// The bytes of a song file: some sound, then a tag. Texts are ANSI bytes; what is left of a field
// is filled up with `padding`.
inline std::string TaggedSong(const std::string& artist, const std::string& year, int genre = 255,
                              char padding = ' ') {
    const auto field = [&](std::string text, std::size_t width) {
        text.resize(width, padding);
        return text;
    };
    return std::string(300, '\x55') + "TAG" + field("Title", 30) + field(artist, 30) +
           field("Album", 30) + field(year, 4) + field("", 30) + static_cast<char>(genre);
}

}  // namespace tobbin
