#pragma once

#include "platform/Disk.h"
#include "tobbin_player/Mpg123Library.h"
#include "tobbin_player/Songs.h"
#include "util/SystemText.h"

namespace tobbin::player {

// Songs of MPEG sound, layers I to III, decoded by libmpg123: without the silence that encoders put
// around them, and without regard to tags and junk.
class Mpg123Songs : public Songs {
 public:
    Mpg123Songs(const Mpg123Library& library, Disk& disk, const SystemText& text)
        : m_library(library), m_disk(disk), m_text(text) {}

    std::unique_ptr<Song> MaybeOpen(const std::string& path, std::string& reason) override;
    std::int64_t Measure(const std::string& path, const std::function<bool()>& keepOn) override;

 private:
    const Mpg123Library& m_library;
    Disk& m_disk;
    const SystemText& m_text;
};

}  // namespace tobbin::player
