#pragma once

#include <cstdint>
#include <string>

#include "catalogue/clsINI.h"
#include "catalogue/RecordTable.h"
#include "platform/Outside.h"
#include "search/SongSearch.h"
#include "util/SortCity.h"

namespace tobbin {

// The song catalogue: the master list of every song that a search has found, in memory and in the
// file FileLocNames.lmz of the data folder (see docs/catalogue-file.md). Records count from 1 to
// UBoundOfMp3Array without a gap; each has the twelve text fields of Field.
class clsMain : public SongSink {
 public:
    clsMain(Outside& outside, clsINI& settings, SortCity& sorter, Progress& progress);

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
    // folder and name "0". Songs on a drive that can't be reached stay as they are. Each folder is
    // listed once.
    void CheckToSeeIfFilesAreMissingAndMakeFalse();

    // Appends the songs of the listed song folders that are not in the catalogue yet; with no
    // catalogue, searches every hard drive. Returns whether all of it succeeded.
    bool AddAnyAdditionalMp3FromTheNormalDirectories();

    // Keeps one present record for each file name (case counts), the one with the smallest number,
    // renumbers and saves. Cleared records stay.
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
    // LastLoad says more.
    bool LoadMain();
    const LoadResult& LastLoad() const { return m_lastLoad; }

    bool Mp3MainHasSomeMembers() const { return m_dimensioned; }

    // Saves the catalogue and writes the list of song folders, each folder once, in ascending
    // order.
    bool WriteOutMp3DirectoryLocations();

    // The full path of a record's song: folder and name.
    std::string SongPath(std::int32_t record) const;

    // Quick answers for the panes and the grouping.
    bool IsPresent(std::int32_t record) const;     // presence flag is not 0
    std::int32_t Rank(std::int32_t record) const;  // 2 to 7; 2 when the cell holds no number

    std::string CataloguePath() const;

    // SongSink: appends a record with rank "2".
    std::int32_t OnSongFound(const std::string& folder, const std::string& name) override;

 private:
    Outside& m_outside;
    clsINI& m_settings;
    SortCity& m_sorter;
    Progress& m_progress;
    RecordTable m_table;
    bool m_dimensioned = false;
    bool m_dirty = false;
    LoadResult m_lastLoad;
};

}  // namespace tobbin
