#include "ui/SongList.h"

#include <algorithm>
#include <iterator>

#include "catalogue/Ranks.h"
#include "jukebox/SpecialFolders.h"
#include "search/SongSearch.h"
#include "tags/SongTags.h"
#include "util/LowerCaseSearch.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr int kKeyColumn = 1;
constexpr int kMissingImage = 0;

constexpr unsigned kFixedDrive = 3;  // see Drives::Type

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
    return m_jukebox.IsShownAsWorst(song.recordNumber) ? kWorstRank.shown
                                                       : m_catalogue.Rank(song.recordNumber);
}

std::string SongList::RankText(std::size_t row) const {
    const auto* const rank = std::ranges::find(kRanks, RowImage(row), &RankRow::shown);
    return rank != std::end(kRanks) ? rank->name : "missing";
}

std::string SongList::AccessibleRowText(std::size_t row) const {
    return RowText(row, 0) + ", " + RankText(row) + ", " + GroupedNumber(row + 1) + " of " +
           GroupedNumber(RowCount());
}

std::string SongList::DetailsOf(std::size_t row, Environment& environment) const {
    const SongItem& song = m_maybeFolder->Songs()[row];
    if (RowImage(row) == kMissingImage) {
        const MissingSong was = m_jukebox.MissingSongOf(song);
        return RowText(row, 0) + " is not found." +
               (was.folder.empty() ? "" : "  It was in " + std::string(was.folder));
    }
    const std::string path = m_catalogue.SongPath(song.recordNumber);
    const std::string root = RootOfPath(path);
    if (m_catalogue.Drives().MaybeDriveOf(path) == SongDrives::Finding::Away)
        return "The drive " + root + " is away:  " + path;
    constexpr TagField shown[] = {TagField::Title, TagField::Artist, TagField::Album,
                                  TagField::Year};
    TagTexts texts;
    if (environment.drives.Type(root) == kFixedDrive)
        SongTags(environment.disk, environment.text).Load(path, TagFields::All(), texts);
    std::string details;
    for (const TagField field : shown)
        if (!texts[field].empty())
            details += (details.empty() ? "" : " - ") + texts[field];
    return details + (details.empty() ? "" : ":  ") + path;
}

std::string SongList::EmptyText() const {
    if (m_maybeFolder == nullptr)
        return m_jukebox.RootCount() > 0
                   ? "Select a folder on the left to see its songs."
                   : "This jukebox has no folders. Open or make another one in the File menu.";
    if (m_maybeFolder->ChildCount() > 0)
        return "This folder holds no songs of its own. Open one of the folders in it.";
    if (!IsSpecialFolder(*m_maybeFolder))
        return "There are no songs in this folder yet. Copy songs from another folder and paste "
               "them here, or drop MP3 files on it.";
    return m_maybeFolder->Text() == kAllSongs
               ? "No songs were found yet. Choose one of the two \"Bring In New Songs\" in the "
                 "Songs menu, or drop MP3 files here."
               : "There are no songs in this folder. It is filled when new songs are brought in: "
                 "see the Songs menu.";
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
