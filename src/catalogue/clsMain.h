#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/clsINI.h"
#include "catalogue/MissingSongs.h"
#include "catalogue/RecordTable.h"
#include "catalogue/SongIdentity.h"
#include "catalogue/SongMemory.h"
#include "platform/Environment.h"
#include "search/SongDrives.h"
#include "util/SortCity.h"

namespace tobbin {

class FoundSongs;

// What became of the files that a search, a drop or a list has found.
struct FoundOutcome {
    struct LeftOut {
        SongFile file;
        std::int32_t kept = 0;  // the record of the song that has its name
    };
    std::vector<std::int32_t> records;  // of each file; for one that was left out, of the song kept
    std::int32_t added = 0;             // new songs
    std::int32_t cameBack = 0;          // songs whose files were gone from their places
    std::vector<LeftOut> leftOut;
};

// The song catalogue: the master list of every song that a search has found, in memory and in the
// file FileLocNames.lmz of the data folder (see docs/catalogue-file.md). Records count from 1 to
// UBoundOfMp3Array without a gap; each has the twelve text fields of Field.
class clsMain {
 public:
    clsMain(Environment& environment, clsINI& settings, SortCity& sorter, Progress& progress);

    enum Field : int {
        kFolder = 1,    // ends in "\"; "0" when the file is gone
        kFileName = 2,  // "0" when the file is gone; empty means a free record
        kPresence = 3,  // "1" there, "0" missing
        kNumber = 4,    // the record's own number
        kRank = 5,      // "2" worst to "7" best
        kFirstSpare = 6,
        kLastField = 12,
    };

    // Sets every record's presence flag from its file's existence; a missing song also gets the
    // folder and name "0", and what it was called is kept in the memory. Songs on a drive that
    // can't be reached stay as they are. Each folder is listed once. Returns what else the listings
    // held.
    ListedFolders CheckToSeeIfFilesAreMissingAndMakeFalse();

    // Takes in the songs of the listed song folders (see SongIdentity); with no
    // catalogue (the settings count no record), searches every hard drive. A lost list is made anew
    // from the catalogue. What a check has listed just now, in the same pass, is not listed again.
    // Returns whether all of it succeeded.
    bool AddAnyAdditionalMp3FromTheNormalDirectories(const ListedFolders* maybeListed = nullptr);

    // Takes in the songs of every hard drive, then drops duplicates, renumbers, saves, loads again
    // and writes the list of song folders. A search that was stopped keeps what it found.
    bool SearchHardDrives();

    // How many songs the last check has cleared, or missed on another disk in the place of theirs,
    // that no search has found since.
    std::size_t SongsLostByLastCheck() const;

    // What the last of these two searches found.
    const FoundOutcome& LastSearch() const { return m_lastSearch; }

    // Takes in what the last search left out, by the rule as it is now, saves and writes the list
    // of song folders.
    bool TakeInWhatWasLeftOut();

    // Keeps one present record for each file name (case counts), or for each path where that is the
    // rule: the one with the smallest number. Renumbers and saves. Cleared records stay.
    bool DeleteIdenticalFileNamesAndPaths();

    // Field 4 of every record becomes its record number.
    bool RenumberBasedOnArrayNumber();

    // Reorders whole records by one field: the number by value, every other field as text. The
    // further option is accepted and changes nothing. False when a key can't be sorted.
    bool Sort(bool ascending, int furtherOption, int keyField);
    // What the start-up calls after a search: ascending by file name.
    bool Sort() { return Sort(true, 0, kFileName); }

    // One cell; `field` 1 to 12, `record` from 1. Reading beyond the last record and a field
    // outside 1 to 12 raise SubscriptOutOfRangeError; writing beyond it makes the table grow.
    std::string Mp3Info(int field, std::int32_t record) const;
    void Mp3Info(int field, std::int32_t record, std::string_view text);

    // The number of records; 0 before the first load or search.
    std::int32_t UBoundOfMp3Array() const;

    // Whether the table has changed since it was last loaded or saved.
    bool MainIsDirty() const { return m_dirty; }
    void MainIsDirty(bool dirty) { m_dirty = dirty; }

    // Writes the catalogue file, then the settings with the number of records. False, and a line in
    // the status bar, when it fails; the old file is then as it was.
    bool Save();

    // Reads the catalogue file into a table of as many records as the settings say. False when the
    // file is missing, damaged or holds more records; what could be read is in the table, and
    // LastLoad says more. A file that was not read to its end is never lost by a later Save: that
    // keeps a copy of it aside, and refuses to write over one that could not be read at all.
    bool LoadMain();
    const LoadResult& LastLoad() const { return m_lastLoad; }

    // LoadMain while jukeboxes are open: when it fails, the table stays as it was, and the status
    // line says why.
    bool Reload();

    bool Mp3MainHasSomeMembers() const { return UBoundOfMp3Array() > 0; }

    // Saves the catalogue and writes the list of song folders, each folder once, in ascending
    // order.
    bool WriteOutMp3DirectoryLocations();

    // The full path of a record's song: folder and name.
    std::string SongPath(std::int32_t record) const;

    // Quick answers for the panes, the grouping and the search. `digits` holds a name that is a
    // number.
    std::string_view FileName(std::int32_t record, std::array<char, 10>& digits) const {
        return m_table.ViewOf(m_table.Id(kFileName, record), digits);
    }
    const RecordTable& Records() const { return m_table; }
    bool IsPresent(std::int32_t record) const;     // presence flag is not 0
    std::int32_t Rank(std::int32_t record) const;  // 2 to 7; 2 when the cell holds no number

    // Whether the songs of one name are one song, by the per-user setting "Keep Songs Of One Name".
    SongIdentity::Rule NameRule() const;
    static constexpr char kKeepSongsOfOneName[] = "Keep Songs Of One Name";

    SongMemory& Memory() { return m_memory; }
    const SongMemory& Memory() const { return m_memory; }
    const SystemText& Text() const { return m_environment.text; }

    std::string CataloguePath() const;
    std::string MemoryPath() const;

    // Makes the copy FileLocNames.bak of the catalogue file, as CatalogueBackup describes. The
    // passes above call it themselves before they clear or drop a record of the file; without the
    // copy they leave those records alone.
    bool KeepBackup();

    // What there is to say of the last search besides what it found: what it left out, where it was
    // stopped, or where the person may look instead. May be empty.
    const std::string& SearchRemark() const { return m_searchRemark; }
    // The roots of the drives that the last search of the drives looked at.
    const std::vector<std::string>& DrivesSearched() const { return m_drivesSearched; }

    // Where the songs lie, as it was found since the last BeginPass, after which every drive is
    // asked anew. The passes above begin by themselves.
    void BeginPass();
    SongDrives& Drives() { return m_drives; }
    const SongDrives& Drives() const { return m_drives; }

    // Appends a record with rank "2" and returns its number.
    std::int32_t OnSongFound(const std::string& folder, const std::string& name);

 private:
    // How the table stands to the catalogue file.
    enum class FileState {
        Unknown,     // the file, if there is one, may hold what the table doesn't
        InTable,     // the table was loaded from the whole file, or saved
        Unreadable,  // the file is there and could not be read
    };
    void ClearTable();
    DiskStatus LoadFile();
    LoadResult ReadRecords(std::string_view file);
    bool FileHoldsTable();
    bool SaveTable();
    void LoadMemory();
    bool SaveMemory();
    void RememberMoves();
    void Settle(FoundSongs& found);
    void RememberFile();
    bool MakeFile(std::string& file);
    bool SayNotSaved(const std::string& why);
    std::int32_t NumberOrLargest(std::int32_t record) const;

    Environment& m_environment;
    clsINI& m_settings;
    SortCity& m_sorter;
    Progress& m_progress;
    SongDrives m_drives;
    RecordTable m_table;
    bool m_dirty = false;
    LoadResult m_lastLoad;
    std::string m_searchRemark;
    std::vector<std::string> m_drivesSearched;
    FileState m_fileState = FileState::Unknown;
    std::int32_t m_recordsInFile = 0;  // as last loaded or saved
    PathInfo m_fileInfo;               // likewise; a path that names nothing when it is not known
    SongMemory m_memory;
    bool m_memoryIsUnread = false;
    std::vector<MissingSongs::SeenSong> m_seen;  // by the last check
    std::vector<std::int32_t> m_lost;            // the records it cleared
    FoundOutcome m_lastSearch;
};

}  // namespace tobbin
