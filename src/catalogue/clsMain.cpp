#include "catalogue/clsMain.h"

#include <algorithm>
#include <limits>
#include <new>
#include <tuple>
#include <utility>

#include "catalogue/CatalogueBackup.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/Ranks.h"
#include "catalogue/SongFolderList.h"
#include "platform/ProgressTexts.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/Text.h"

namespace tobbin {

clsMain::clsMain(Environment& environment, clsINI& settings, SortCity& sorter, Progress& progress)
    : m_environment(environment),
      m_settings(settings),
      m_sorter(sorter),
      m_progress(progress),
      m_drives(environment) {}

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
    progress.Show("Saving the song catalog . . .");
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
    const DiskStatus status =
        ReadWholeFile(m_environment.disk, MemoryPath(), kLargestSongMemory, bytes);
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
    m_environment.statusLine.Say("The song catalog \"" + CataloguePath() +
                                 "\" was not saved: " + why + ".");
    return false;
}

bool clsMain::LoadMain() {
    const DiskStatus status = LoadFile();
    if (!status.Ok()) {
        ClearTable();
        const bool notThere = status.Error() == DiskError::NotFound;
        m_lastLoad = {
            notThere ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
            "The song catalog \"" + CataloguePath() + "\" can't be read: " + status.Reason() + "."};
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

bool clsMain::Reload() {
    RecordTable table = std::exchange(m_table, RecordTable());
    const auto before = std::tuple(m_dirty, m_fileState, m_recordsInFile, m_fileInfo);
    if (LoadMain())
        return true;
    m_table = std::move(table);
    std::tie(m_dirty, m_fileState, m_recordsInFile, m_fileInfo) = before;
    LoadMemory();
    m_environment.statusLine.Say(m_lastLoad.message);
    return false;
}

LoadResult clsMain::ReadRecords(std::string_view file) {
    const RecordsTaken taken = TakeRecords(file, m_environment.text, m_table);
    if (taken.tooMany)
        return {LoadOutcome::Damaged,
                "The song catalog \"" + CataloguePath() + "\" holds more than the " +
                    std::to_string(m_table.Size()) + " records that the settings count."};
    if (taken.damage)
        return {LoadOutcome::Damaged,
                "The song catalog \"" + CataloguePath() + "\" is " + taken.damage->Words() + "."};
    return {};
}

bool clsMain::KeepBackup() {
    return CatalogueBackup(m_environment, CataloguePath()).Keep();
}

bool clsMain::RenumberBasedOnArrayNumber() {
    for (std::int32_t record = 1; record <= UBoundOfMp3Array(); ++record)
        Mp3Info(kNumber, record, std::to_string(record));
    return true;
}

std::int32_t clsMain::NumberOrLargest(std::int32_t record) const {
    return m_table.MaybeNumber(kNumber, record).value_or(std::numeric_limits<std::int32_t>::max());
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
