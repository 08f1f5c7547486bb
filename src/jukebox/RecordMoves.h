#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/clsMain.h"
#include "catalogue/SongIdentity.h"
#include "catalogue/TextPool.h"
#include "jukebox/Jukebox.h"

namespace tobbin {

// Where the songs have gone in a pass over the catalogue that drops records and closes the gaps:
// jukeboxes name their songs by record number, and no song may become another one.
class RecordMoves {
 public:
    // Remembers where the songs are before the pass.
    explicit RecordMoves(const clsMain& catalogue);

    // After the pass: looks where they are now. Returns whether any has another number, or a name
    // in other letters.
    bool Find();

    // The number that a record from before the pass has now; 0 when its song has gone.
    std::int32_t NumberNow(std::int32_t before) const;

    // Gives the jukebox's song items their new numbers. A song that has gone stays in its folders,
    // as a missing one, and a missing one that has come back is itself again. Ends the jukebox's
    // history of changes where there was something to do.
    void Apply(Jukebox& jukebox);

 private:
    bool Stays(const SongItem& item) const;
    SongItem ItemNow(Jukebox& jukebox, const SongItem& item) const;

    const clsMain& m_catalogue;
    std::vector<Jukebox::SongMove> m_merged;  // dropped records whose song another one is now
    std::optional<SongIdentity> m_identity;   // of the catalogue after the pass
    bool m_moved = false;
    TextPool m_texts;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_paths;  // folder and name; record 1 at 0
    std::vector<std::int32_t> m_numbers;                           // the same, now
    std::vector<bool> m_isRenamed;                                 // the same
};

}  // namespace tobbin
