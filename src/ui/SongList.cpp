#include "ui/SongList.h"

#include "jukebox/SpecialFolders.h"
#include "util/LowerCaseSearch.h"

namespace tobbin {
namespace {

constexpr int kKeyColumn = 1;

// Pictures of songs.
constexpr int kMissingImage = 0;
constexpr int kWorstRankImage = 2;

}  // namespace

std::size_t SongList::RowCount() const {
    return m_maybeFolder != nullptr ? m_maybeFolder->Songs().size() : 0;
}

std::string SongList::RowText(std::size_t row, int column) const {
    const SongItem& song = m_maybeFolder->Songs()[row];
    if (column == 0)
        return std::string(m_jukebox.TextOf(song));
    return column == kKeyColumn && !song.IsMissing() ? std::to_string(song.recordNumber)
                                                     : std::string();
}

int SongList::RowImage(std::size_t row) const {
    const SongItem& song = m_maybeFolder->Songs()[row];
    if (song.IsMissing() || song.recordNumber > m_catalogue.UBoundOfMp3Array() ||
        !m_catalogue.IsPresent(song.recordNumber))
        return kMissingImage;
    return m_jukebox.IsShownAsWorst(song.recordNumber) ? kWorstRankImage
                                                       : m_catalogue.Rank(song.recordNumber);
}

std::string SongList::EmptyText() const {
    if (m_maybeFolder == nullptr)
        return "Select a folder on the left to see its songs.";
    if (m_maybeFolder->ChildCount() > 0)
        return "This folder holds no songs of its own. Open one of the folders in it.";
    return IsSpecialFolder(*m_maybeFolder)
               ? "There are no songs in this folder yet."
               : "There are no songs in this folder yet. Copy songs from another folder and paste "
                 "them here.";
}

std::optional<std::size_t> SongList::MaybeRowBeginningWith(const SystemText& system,
                                                           std::string_view text,
                                                           std::size_t start) const {
    LowerCaseSearch search(system, text);
    for (std::size_t i = 0; i < RowCount(); ++i) {
        const std::size_t row = (start + i) % RowCount();
        if (search.Begins(m_jukebox.TextOf(m_maybeFolder->Songs()[row])))
            return row;
    }
    return std::nullopt;
}

}  // namespace tobbin
