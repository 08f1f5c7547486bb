#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "catalogue/SongIdentity.h"
#include "platform/Environment.h"
#include "search/SongSearch.h"

namespace tobbin {

// Gathers the files that a search, a drop or a list has found, and then takes them into the
// catalogue all at once: those of known songs say where these lie now, and new songs are appended.
class FoundSongs : public SongSink {
 public:
    FoundSongs(Environment& environment, clsMain& catalogue);

    // These songs are known to be in their places.
    void Seen(const std::vector<MissingSongs::SeenSong>& songs);

    // SongSink. Returns how many songs there are together with the files found.
    std::int32_t OnSongFound(const std::string& folder, const std::string& name,
                             std::uint64_t size) override;

    // Takes them in; call it once. The catalogue is changed, not saved. Lets the windows be
    // painted.
    FoundOutcome Settle();

 private:
    void TakeKnownPlaces(SongIdentity& identity);
    void TakeNamesakes(SongIdentity& identity, const std::size_t* first, const std::size_t* last);
    std::int32_t Append(const SongFile& file);
    void MoveTo(std::int32_t record, const SongFile& file);
    bool IsThere(std::int32_t record);

    Environment& m_environment;
    clsMain& m_catalogue;
    std::vector<SongFile> m_files;
    std::vector<bool> m_seen;  // by record
    FoundOutcome m_outcome;
};

}  // namespace tobbin
