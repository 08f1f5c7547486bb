#include "catalogue/clsMain.h"

#include <algorithm>
#include <limits>
#include <new>
#include <unordered_map>
#include <utility>

#include "catalogue/CatalogueBackup.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/FoundSongs.h"
#include "catalogue/Ranks.h"
#include "catalogue/SongFolderList.h"
#include "platform/ProgressTexts.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/Text.h"

namespace tobbin {

clsMain::clsMain(Environment& environment, clsINI& settings, SortCity& sorter, Progress& progress)
    : m_environment(environment), m_settings(settings), m_sorter(sorter), m_progress(progress) {}

std::string clsMain::CataloguePath() const {
    return m_settings.LocOfGroupingDir() + "FileLocNames.lmz";
}

std::string clsMain::MemoryPath() const {
    return FolderOfPath(m_settings.SettingsPath()) + "SongMemory.txt";
}

SongIdentity::Rule clsMain::NameRule() const {
    return m_environment.userSettings.MaybeRead(kKeepSongsOfOneName) == "Yes"
               ? SongIdentity::Rule::OneForEachPath
               : SongIdentity::Rule::OneForEachName;
}

std::string clsMain::Mp3Info(int field, std::int32_t record) const {
    return m_table.Text(field, record);
}

void clsMain::Mp3Info(int field, std::int32_t record, std::string_view text) {
    if (m_table.Set(field, record, text))
        m_dirty = true;
}

std::int32_t clsMain::UBoundOfMp3Array() const {
    return m_table.Size();
}

std::string clsMain::SongPath(std::int32_t record) const {
    return m_table.Text(kFolder, record) + m_table.Text(kFileName, record);
}

bool clsMain::IsPresent(std::int32_t record) const {
    return m_table.MaybeNumber(kPresence, record).value_or(0) != 0;
}

std::int32_t clsMain::Rank(std::int32_t record) const {
    return std::clamp(m_table.MaybeNumber(kRank, record).value_or(kWorstRank.shown),
                      kWorstRank.shown, kBestRank.shown);
}

std::int32_t clsMain::OnSongFound(const std::string& folder, const std::string& name) {
    const std::int32_t record = UBoundOfMp3Array() + 1;
    Mp3Info(kFolder, record, folder);
    Mp3Info(kFileName, record, name);
    Mp3Info(kPresence, record, "1");
    Mp3Info(kNumber, record, std::to_string(record));
    Mp3Info(kRank, record, std::to_string(kWorstRank.shown));
    return record;
}

bool clsMain::Save() {
    if (m_fileState == FileState::Unreadable)
        return SayNotSaved("the one on the disk could not be read and would be lost");
    // First what lets a song be known again, so that no moment finds it cleared and forgotten.
    if (!SaveMemory() || (!FileHoldsTable() && !SaveTable()))
        return false;
    m_settings.NumerOfRecordsInTheMain(UBoundOfMp3Array());
    return m_settings.Save(m_settings.SettingsPath());
}

// Nothing was changed since the file was loaded or saved, here or there.
bool clsMain::FileHoldsTable() {
    PathInfo now;
    return !m_dirty && m_fileState == FileState::InTable &&
           m_environment.disk.Stat(CataloguePath(), now).Ok() && now.kind == PathKind::File &&
           now == m_fileInfo;
}

bool clsMain::SaveTable() {
    std::string file;
    if (!MakeFile(file))
        return false;
    PathInfo old;
    if (m_fileState == FileState::Unknown &&
        (!m_environment.disk.Stat(CataloguePath(), old).Ok() || old.size > 0)) {
        std::string keptAs;
        if (const DiskStatus status =
                KeepCopyAside(m_environment.disk, CataloguePath(), kLargestCatalogue, keptAs);
            !status.Ok())
            return SayNotSaved("the old one could not be kept aside, " + status.Reason());
    }
    StatusLineProgress progress(m_environment.statusLine);
    progress.Show("Saving the song catalogue . . .");
    if (const DiskStatus status = SaveWholeFileIfChanged(m_environment.disk, CataloguePath(), file);
        !status.Ok())
        return SayNotSaved(status.Reason());
    m_fileState = FileState::InTable;
    m_recordsInFile = UBoundOfMp3Array();
    m_dirty = false;
    m_memory.OnCatalogueSaved(m_table);
    RememberFile();
    return true;
}

void clsMain::LoadMemory() {
    std::string bytes;
    const DiskStatus status = ReadWholeFile(m_environment.disk, MemoryPath(), kLargestSongMemory, bytes);
    m_memoryIsUnread = !status.Ok() && status.Error() != DiskError::NotFound;
    m_memory.ForgetCleared();
    if (!status.Ok())
        return;
    const LoadResult result = m_memory.Read(bytes, m_table);
    if (result.outcome == LoadOutcome::Loaded)
        return;
    std::string keptAs;
    m_memoryIsUnread = !KeepDamagedFileAside(m_environment.disk, MemoryPath(), keptAs).Ok();
    m_environment.statusLine.Say("The file \"" + MemoryPath() + "\" is damaged: " + result.message +
                                 ".  What could be read is used.");
}

bool clsMain::SaveMemory() {
    const bool withSizes = NameRule() == SongIdentity::Rule::OneForEachPath;
    if (!m_memory.IsDirty(withSizes))
        return true;
    std::string keptAs;
    DiskStatus status;
    if (m_memoryIsUnread)
        status = KeepCopyAside(m_environment.disk, MemoryPath(), kLargestSongMemory, keptAs);
    if (status.Ok())
        status = SaveWholeFileIfChanged(m_environment.disk, MemoryPath(),
                                        m_memory.Write(m_table, withSizes));
    if (!status.Ok())
        return SayNotSaved("the file \"" + MemoryPath() + "\" could not be written, " +
                           status.Reason());
    m_memoryIsUnread = false;
    m_memory.OnSaved();
    return true;
}

void clsMain::RememberFile() {
    if (!m_environment.disk.Stat(CataloguePath(), m_fileInfo).Ok())
        m_fileInfo = {};
}

// The bytes of the catalogue file; false, with the reason told, when a text or all of it is too
// long.
bool clsMain::MakeFile(std::string& file) {
    const auto tooLong = WriteRecords(m_table, m_environment.text, file);
    if (!tooLong && file.size() > kLargestCatalogue)
        return SayNotSaved(DiskStatus(DiskError::TooLarge).Reason());
    return !tooLong ||
           SayNotSaved("the text in field " + std::to_string(tooLong->field) + " of record " +
                       std::to_string(tooLong->record) + " is longer than " +
                       std::to_string(kCatalogueStringLimit) + " bytes");
}

bool clsMain::SayNotSaved(const std::string& why) {
    m_environment.statusLine.Say("The song catalogue \"" + CataloguePath() +
                                 "\" was not saved: " + why + ".");
    return false;
}

bool clsMain::LoadMain() {
    const DiskStatus status = LoadFile();
    if (!status.Ok()) {
        ClearTable();
        const bool notThere = status.Error() == DiskError::NotFound;
        m_lastLoad = {notThere ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
                      "The song catalogue \"" + CataloguePath() +
                          "\" can't be read: " + status.Reason() + "."};
        m_fileState = notThere ? FileState::Unknown : FileState::Unreadable;
    }
    const bool loaded = m_lastLoad.outcome == LoadOutcome::Loaded;
    if (loaded)
        m_dirty = false;
    return loaded;
}

void clsMain::ClearTable() {
    m_table.Clear();
    m_table.Resize(std::max(m_settings.NumerOfRecordsInTheMain(), 0));
    m_recordsInFile = 0;
}

DiskStatus clsMain::LoadFile() try {
    ClearTable();
    std::string file;
    if (DiskStatus status =
            ReadWholeFile(m_environment.disk, CataloguePath(), kLargestCatalogue, file);
        !status.Ok())
        return status;
    m_lastLoad = ReadRecords(file);
    m_fileState =
        m_lastLoad.outcome == LoadOutcome::Loaded ? FileState::InTable : FileState::Unknown;
    m_recordsInFile = UBoundOfMp3Array();
    RememberFile();
    LoadMemory();
    return {};
} catch (const std::bad_alloc&) {
    return DiskStatus(DiskError::OutOfMemory);
}

LoadResult clsMain::ReadRecords(std::string_view file) {
    const RecordsTaken taken = TakeRecords(file, m_environment.text, m_table);
    if (taken.tooMany)
        return {LoadOutcome::Damaged,
                "The song catalogue \"" + CataloguePath() + "\" holds more than the " +
                    std::to_string(m_table.Size()) + " records that the settings count."};
    if (taken.damage)
        return {LoadOutcome::Damaged,
                "The song catalogue \"" + CataloguePath() + "\" is " + taken.damage->Words() + "."};
    return {};
}

bool clsMain::KeepBackup() {
    return CatalogueBackup(m_environment, CataloguePath()).Keep();
}

ListedFolders clsMain::CheckToSeeIfFilesAreMissingAndMakeFalse() {
    MissingSongs check(m_environment, m_table);
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
    return check.TakeListed();
}

std::size_t clsMain::SongsLostByLastCheck() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        m_lost, [this](std::int32_t record) { return IsCleared(m_table, record); }));
}

bool clsMain::RenumberBasedOnArrayNumber() {
    for (std::int32_t record = 1; record <= UBoundOfMp3Array(); ++record)
        Mp3Info(kNumber, record, std::to_string(record));
    return true;
}

std::int32_t clsMain::NumberOrLargest(std::int32_t record) const {
    return m_table.MaybeNumber(kNumber, record).value_or(std::numeric_limits<std::int32_t>::max());
}

bool clsMain::DeleteIdenticalFileNamesAndPaths() {
    if (UBoundOfMp3Array() == 0)
        return true;  // Never an empty table over a file of records.
    const RecordTable::CellId present = m_table.IdOf("1");
    const bool byPath = NameRule() == SongIdentity::Rule::OneForEachPath;
    std::unordered_map<std::string, std::uint64_t> folders;   // numbered, by their small letters
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

bool clsMain::Sort(bool ascending, int /*furtherOption*/, int keyField) {
    if (keyField < kFolder || keyField > kLastField)
        return false;
    const std::int32_t last = UBoundOfMp3Array();
    if (last < 2)
        return true;
    m_dirty = true;
    const auto key = static_cast<std::int16_t>(keyField);
    constexpr auto kFields = static_cast<std::int16_t>(RecordTable::kFields);
    try {
        if (key == kNumber) {
            NumberedRecords records(m_table);
            if (ascending)
                m_sorter.QuickSortNumericAscending(records, 1, last, key, kFields);
            else
                m_sorter.QuickSortNumericDecending(records, 1, last, key, kFields);
        } else if (ascending) {
            m_sorter.QuickSortStringsAscending(m_table, 1, last, key, kFields);
        } else {
            m_sorter.QuickSortStringsDescending(m_table, 1, last, key, kFields);
        }
    } catch (const SubscriptOutOfRangeError&) {
        return false;
    }
    return true;
}

bool clsMain::SearchHardDrives() {
    RenumberBasedOnArrayNumber();  // Of two equal songs the older one has the smaller number.
    FoundSongs found(m_environment, *this);
    SongSearch(m_environment, m_progress, found).SearchHardDrives();
    m_lastSearch = found.Settle();
    m_environment.events.PumpWithoutInput();
    return !Mp3MainHasSomeMembers() ||
           (DeleteIdenticalFileNamesAndPaths() && LoadMain() && WriteOutMp3DirectoryLocations());
}

bool clsMain::AddAnyAdditionalMp3FromTheNormalDirectories(const ListedFolders& listedJustNow) {
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
    FoundSongs found(m_environment, *this);
    found.Seen(std::exchange(m_seen, {}));
    SongSearch search(m_environment, m_progress, found);
    for (const std::string& folder : folders) {
        if (m_progress.StopRequested())
            break;
        if (const auto listed = listedJustNow.find(folder); listed != listedJustNow.end())
            search.HandOverSongs(folder, listed->second);
        else
            search.SearchFolder(folder);
        m_environment.events.LetEventsThrough();
    }
    m_lastSearch = found.Settle();
    return DeleteIdenticalFileNamesAndPaths() && status.Ok();
}

bool clsMain::TakeInWhatWasLeftOut() {
    FoundSongs found(m_environment, *this);
    for (const FoundOutcome::LeftOut& one : m_lastSearch.leftOut)
        found.OnSongFound(one.file.folder, one.file.name, one.file.size);
    const std::int32_t cameBack = m_lastSearch.cameBack;
    const std::int32_t added = m_lastSearch.added;
    m_lastSearch = found.Settle();
    m_lastSearch.cameBack += cameBack;
    m_lastSearch.added += added;
    return WriteOutMp3DirectoryLocations();
}

bool clsMain::WriteOutMp3DirectoryLocations() {
    const bool saved = Save();
    const std::string list = m_settings.FileContainingTargetDirectories();
    const DiskStatus status = WriteSongFolderList(m_environment, list, m_table);
    if (!status.Ok())
        m_environment.statusLine.Say("The list of song folders \"" + list +
                                     "\" was not saved: " + status.Reason() + ".");
    return saved && status.Ok();
}

}  // namespace tobbin
