#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "catalogue/clsMain.h"
#include "catalogue/FoundSongs.h"
#include "catalogue/NewFolders.h"
#include "catalogue/SongFolderList.h"
#include "util/Text.h"
#include "util/TextHash.h"

// The passes over the catalogue: the check for missing songs, the searches, the duplicates.

namespace tobbin {
void clsMain::BeginPass() {
    const std::vector<std::string> folders = SongFoldersOf(m_table);
    m_environment.hosts.AskFor(m_environment.dialogs, folders, "The song catalogue names songs");
    m_drives.BeginPass(
        folders, [this] { return !m_progress.StopRequested(); },
        FolderOfPath(m_settings.SettingsPath()) + "SongDrives.ini");
}

ListedFolders clsMain::CheckToSeeIfFilesAreMissingAndMakeFalse() {
    BeginPass();
    MissingSongs check(m_environment, m_table, m_drives, m_progress);
    const std::vector<std::int32_t> missing = check.Find();
    m_seen = check.TakeSeen();
    for (const auto& [record, size] : m_seen)
        m_memory.TakeSize(record, size);
    const bool losesSongs =
        std::any_of(missing.begin(), missing.end(), [this](std::int32_t record) {
            const std::string name = m_table.Text(kFileName, record);
            return !name.empty() && name != "0";
        });
    m_lost.clear();
    if (!losesSongs || KeepBackup()) {
        for (const std::int32_t record : missing) {
            const std::string name = m_table.Text(kFileName, record);
            if (!name.empty() && name != "0") {
                m_memory.Clear(record, m_table.Text(kFolder, record), name);
                m_lost.push_back(record);
            }
            for (const Field field : {kPresence, kFolder, kFileName})
                Mp3Info(field, record, "0");
        }
    }
    // Songs that another disk in the place of theirs doesn't have are not where they were, either.
    std::vector<bool> isSeen(static_cast<std::size_t>(UBoundOfMp3Array()) + 1);
    for (const auto& [record, size] : m_seen)
        isSeen[static_cast<std::size_t>(record)] = true;
    for (std::int32_t record = 1; record <= UBoundOfMp3Array(); ++record)
        if (!isSeen[static_cast<std::size_t>(record)] && IsPresent(record) &&
            m_drives.DriveOf(SongPath(record)) == SongDrives::Finding::OtherDisk)
            m_lost.push_back(record);
    m_drives.EndPass(SongFoldersOf(m_table));
    return check.TakeListed();
}

std::size_t clsMain::SongsLostByLastCheck() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_lost, [this](std::int32_t record) {
        return IsCleared(m_table, record) ||
               m_drives.MaybeDriveOf(SongPath(record)) == SongDrives::Finding::OtherDisk;
    }));
}

bool clsMain::DeleteIdenticalFileNamesAndPaths() {
    if (UBoundOfMp3Array() == 0)
        return true;  // Never an empty table over a file of records.
    const RecordTable::CellId present = m_table.IdOf("1");
    const bool byPath = NameRule() == SongIdentity::Rule::OneForEachPath;
    TextMap<std::uint64_t> folders;                           // numbered, by their small letters
    std::unordered_map<std::uint64_t, std::int32_t> keepers;  // by file name, and folder if wished
    keepers.reserve(static_cast<std::size_t>(UBoundOfMp3Array()));
    std::vector<std::int32_t> dropped;
    for (std::int32_t record = 1; record <= UBoundOfMp3Array(); ++record) {
        if (m_table.Id(kPresence, record) != present)
            continue;
        std::uint64_t folder = 0;
        if (byPath)
            folder = folders
                         .try_emplace(m_environment.text.ToLower(m_table.Text(kFolder, record)),
                                      folders.size())
                         .first->second;
        const auto [keeper, isFirst] =
            keepers.try_emplace(folder << 32U | m_table.Id(kFileName, record), record);
        if (isFirst)
            continue;
        const bool isSmaller = NumberOrLargest(record) < NumberOrLargest(keeper->second);
        dropped.push_back(isSmaller ? std::exchange(keeper->second, record) : record);
    }
    const auto isInFile = [this](std::int32_t record) {
        return NumberOrLargest(record) <= m_recordsInFile;
    };
    const bool mayDropOldOnes =
        std::none_of(dropped.begin(), dropped.end(), isInFile) || KeepBackup();
    for (const std::int32_t record : dropped)
        if (mayDropOldOnes || !isInFile(record))
            Mp3Info(kFileName, record, "");
    m_environment.events.PumpWithoutInput();
    const std::int32_t sizeBefore = UBoundOfMp3Array();
    m_table.RemoveRecordsWithEmpty(kFileName);
    if (UBoundOfMp3Array() != sizeBefore)
        m_dirty = true;

    bool inOrder = true;
    for (std::int32_t record = 2; inOrder && record <= UBoundOfMp3Array(); ++record)
        inOrder = NumberOrLargest(record - 1) <= NumberOrLargest(record);
    m_environment.events.PumpWithoutInput();
    const bool sorted = inOrder || Sort(true, 0, kNumber);
    m_environment.events.PumpWithoutInput();
    RememberMoves();
    return RenumberBasedOnArrayNumber() && Save() && sorted;
}

// Each record still has the number that it had before records were dropped.
void clsMain::RememberMoves() {
    std::unordered_map<std::int32_t, std::int32_t> moved;
    for (std::int32_t record = 1; record <= UBoundOfMp3Array(); ++record)
        if (const std::int32_t before = NumberOrLargest(record); before != record)
            moved.try_emplace(before, record);
    m_memory.Move(moved);
}

// What was found is not lost any more.
void clsMain::Settle(FoundSongs& found) {
    m_lastSearch = found.Settle();
    if (m_lost.empty())
        return;
    const std::unordered_set<std::int32_t> there(m_lastSearch.records.begin(),
                                                 m_lastSearch.records.end());
    std::erase_if(m_lost, [&](std::int32_t record) { return there.contains(record); });
}

bool clsMain::SearchHardDrives() {
    RenumberBasedOnArrayNumber();  // Of two equal songs the older one has the smaller number.
    BeginPass();
    FoundSongs found(m_environment, *this);
    const DriveSearch search = SongSearch(m_environment, m_progress, found).SearchHardDrives();
    m_searchRemark = search.Words();
    m_drivesSearched = search.fixedDrives;
    Settle(found);
    m_environment.events.PumpWithoutInput();
    m_drives.EndPass(SongFoldersOf(m_table));
    return !Mp3MainHasSomeMembers() ||
           (DeleteIdenticalFileNamesAndPaths() && Reload() && WriteOutMp3DirectoryLocations());
}

bool clsMain::AddAnyAdditionalMp3FromTheNormalDirectories(const ListedFolders* maybeListed) {
    if (m_settings.NumerOfRecordsInTheMain() < 1)
        return SearchHardDrives();
    const std::string list = m_settings.FileContainingTargetDirectories();
    std::vector<std::string> folders;
    DiskStatus status = ReadSongFolderList(m_environment, list, folders);
    if (status.Error() == DiskError::NotFound &&
        WriteSongFolderList(m_environment, list, m_table).Ok())
        status = ReadSongFolderList(m_environment, list, folders);
    if (!status.Ok())
        m_environment.statusLine.Say("The list of song folders \"" + list +
                                     "\" can't be read: " + status.Reason() + ".");
    RenumberBasedOnArrayNumber();
    if (maybeListed == nullptr)
        BeginPass();
    const ListedFolders none;
    const ListedFolders& listedJustNow = maybeListed != nullptr ? *maybeListed : none;
    FoundSongs found(m_environment, *this);
    found.Seen(std::exchange(m_seen, {}));
    SongSearch search(m_environment, m_progress, found);
    std::vector<std::string> subfolders;
    StepsDone steps{0, folders.size()};
    for (const std::string& folder : folders) {
        if (m_progress.StopRequested())
            break;
        if (maybeListed == nullptr)
            m_progress.ShowSteps(kLookingAtFolders, steps);
        ++steps.done;
        if (m_drives.DriveOf(folder) == SongDrives::Finding::Away)
            continue;
        FolderListing listing;
        if (const auto listed = listedJustNow.find(folder); listed != listedJustNow.end())
            search.HandOverSongs(folder, listed->second);
        else if (m_drives.List(folder, listing).Ok())
            search.SearchFolder(folder, listing);
        for (const FolderEntry& entry : listing.entries)
            if (entry.isFolder)
                subfolders.push_back(folder + entry.name + "\\");
        m_environment.events.LetEventsThrough();
    }
    Settle(found);
    const bool cleaned = DeleteIdenticalFileNamesAndPaths();
    m_searchRemark.clear();
    if (steps.done < steps.all)
        m_searchRemark = "Stopped after " + GroupedNumber(steps.done) + " of " +
                         Counted(steps.all, "folder") +
                         "; \"Bring In New Songs\" searches the rest.";
    else if (m_lastSearch.added == 0)
        m_searchRemark = RemarkOnNewFolder(m_environment, m_drives, folders, subfolders,
                                           [this] { return !m_progress.StopRequested(); });
    return cleaned && status.Ok();
}

bool clsMain::TakeInWhatWasLeftOut() {
    FoundSongs found(m_environment, *this);
    for (const FoundOutcome::LeftOut& one : m_lastSearch.leftOut)
        found.OnSongFound(one.file.folder, one.file.name, one.file.size);
    const std::int32_t cameBack = m_lastSearch.cameBack;
    const std::int32_t added = m_lastSearch.added;
    Settle(found);
    m_lastSearch.cameBack += cameBack;
    m_lastSearch.added += added;
    return WriteOutMp3DirectoryLocations();
}

}  // namespace tobbin
