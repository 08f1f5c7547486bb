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

std::string SongList::WhyMissing(std::size_t row) const {
    const SongItem& song = m_maybeFolder->Songs()[row];
    if (RowImage(row) == kMissingImage) {
        const MissingSong was = m_jukebox.MissingSongOf(song);
        return was.folder.empty() ? "Not found" : "Not found; it was in " + std::string(was.folder);
    }
    const std::string path = m_catalogue.SongPath(song.recordNumber);
    if (m_catalogue.Drives().MaybeDriveOf(path) != SongDrives::Finding::Away)
        return {};
    std::string root = RootOfPath(path);
    root.resize(std::max<std::size_t>(root.size(), 1) - 1);
    return "Its drive " + root + " is away";
}

std::string SongList::DetailsOf(std::size_t row, Environment& environment) const {
    const SongItem& song = m_maybeFolder->Songs()[row];
    if (const std::string why = WhyMissing(row); !why.empty())
        return RowText(row, 0) + ":  " + why;
    const std::string path = m_catalogue.SongPath(song.recordNumber);
    const std::string root = RootOfPath(path);
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
                   : "This jukebox has no folders.\nOpen or make another one in the File menu.";
    if (m_maybeFolder->ChildCount() > 0)
        return "This folder has no songs of its own.\nSelect one of the folders in it.";
    if (!IsInSpecialFolder(*m_maybeFolder))
        return "This folder is empty.\nDrag songs here from the list of another folder, or drop "
               "MP3 "
               "files from File Explorer.";
    if (!IsAllSongs(*m_maybeFolder))
        return "This folder is empty.\nTobbin fills it when new songs are brought in (Songs menu).";
    std::string drives;
    for (const std::string& root : m_catalogue.DrivesSearched())
        drives += (drives.empty() ? "" : ", ") + root;
    return (drives.empty() ? "There are no songs yet.\n"
                           : "No MP3 files were found on " + drives + ".\n") +
           "Drop MP3 files or song lists (.m3u, .m3u8, .pls) here, or choose \"Bring In New "
           "Songs\" "
           "in the Songs menu.";
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
