#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "platform/Environment.h"
#include "util/SystemText.h"

namespace tobbin {

// What a list pane shows of a folder's songs; of none without a folder. Rows and columns from 0.
class SongList {
 public:
    SongList(const Jukebox& jukebox, const clsMain& catalogue, const Folder* maybeFolder)
        : m_jukebox(jukebox), m_catalogue(catalogue), m_maybeFolder(maybeFolder) {}

    std::size_t RowCount() const;
    // The name, or the record number in the column "Key".
    std::string RowText(std::size_t row, int column) const;
    // The rank, 2 to 7; 0 for a song whose file is missing.
    int RowImage(std::size_t row) const;
    // The rank as it is spoken and read: "rank: best"; "missing" for a song whose file is missing.
    std::string RankText(std::size_t row) const;
    // The row as a screen reader says it: name, rank and place.
    std::string AccessibleRowText(std::size_t row) const;
    // Why a song can't be played: "Not found" or "Its drive E: is away"; empty when it is there as
    // far as is known.
    std::string WhyMissing(std::size_t row) const;
    // What is known of a song besides: title, artist, album and year as far as its tags tell, and
    // its path; for a song that can't be found, why. Tags are read on fixed drives only, since
    // others may take long to answer.
    std::string DetailsOf(std::size_t row, Environment& environment) const;
    // What is said while there is no song, and what can be done about it: lines with LF.
    std::string EmptyText() const;

    // The next row from `start` on, and round once, whose name begins with a text, whatever the
    // case of letters.
    std::optional<std::size_t> MaybeRowBeginningWith(const SystemText& system,
                                                     std::string_view text,
                                                     std::size_t start) const;

 private:
    const Jukebox& m_jukebox;
    const clsMain& m_catalogue;
    const Folder* m_maybeFolder;
};

}  // namespace tobbin
