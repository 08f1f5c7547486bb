#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "catalogue/LoadResult.h"
#include "platform/Environment.h"

namespace tobbin {

inline constexpr std::uint64_t kLargestSettings = Megabytes(1);

// The program's lasting settings: ten lines of text in TheOrganizer.ini, each one property's value
// in a fixed order. docs/settings-file.md describes the file.
class clsINI {
 public:
    // `applicationFolder` ends in "\".
    clsINI(Environment& environment, std::string applicationFolder);

    // The path of the background picture in use, whether it is tiled, whether one is shown.
    const std::string& PictureLocation() const { return m_pictureLocation; }
    void PictureLocation(std::string value) { m_pictureLocation = std::move(value); }
    bool IsItTiled() const { return m_isItTiled; }
    void IsItTiled(bool value) { m_isItTiled = value; }
    bool IsThereAPicture() const { return m_isThereAPicture; }
    void IsThereAPicture(bool value) { m_isThereAPicture = value; }

    // The three most recent jukebox files. Setting the newest to another value (case counts) moves
    // the others down; setting any of them calls the recent-list listener.
    const std::string& LocOfThirdToLastSaveJukeBox() const { return m_thirdToLast; }
    void LocOfThirdToLastSaveJukeBox(std::string value);
    const std::string& LocSecToLastSavedJukeBox() const { return m_secondToLast; }
    void LocSecToLastSavedJukeBox(std::string value);
    const std::string& LocOfLastSavedJukeBox() const { return m_last; }
    void LocOfLastSavedJukeBox(std::string value);

    // The full path of the player program; empty when not known.
    const std::string& LocOfWinAmpExe() const { return m_player; }
    void LocOfWinAmpExe(std::string value) { m_player = std::move(value); }

    // How many records the song catalogue's file has.
    std::int32_t NumerOfRecordsInTheMain() const { return m_records; }
    void NumerOfRecordsInTheMain(std::int32_t value) { m_records = value; }

    // Writes the ten lines. Opens no box when it fails: the status line says so, and the result is
    // false.
    bool Save(const std::string& path);

    // Sets the defaults, takes the number of records from an existing catalogue file (the record
    // number of its last record with a file name; 0 without one) and saves. Returns true.
    bool CreateNewIniFile(const std::string& path);

    // Reads the file. A line that is no number where one must stand ends the reading there: the
    // lines before it have been taken over. A file of fewer lines leaves the rest as it was.
    LoadResult GetandLoadIniInfo(const std::string& path);

    // The path of the list of song folders.
    const std::string& FileContainingTargetDirectories() const { return m_targetDirectories; }
    void FileContainingTargetDirectories(std::string value) {
        m_targetDirectories = std::move(value);
    }

    // The data folder, ending in "\".
    const std::string& LocOfGroupingDir() const { return m_groupingDir; }
    void LocOfGroupingDir(std::string value) { m_groupingDir = std::move(value); }

    // Called whenever one of the three recent entries is set.
    void OnRecentListChanged(std::function<void()> listener) {
        m_recentListChanged = std::move(listener);
    }

    // Application folder + "Grouping\System\TheOrganizer.ini".
    std::string SettingsPath() const;
    const std::string& ApplicationFolder() const { return m_applicationFolder; }

 private:
    void TakeLine(int lineNumber, std::string_view line);

    Environment& m_environment;
    std::string m_applicationFolder;
    std::function<void()> m_recentListChanged = [] {};
    std::string m_pictureLocation;
    bool m_isItTiled = false;
    bool m_isThereAPicture = false;
    std::string m_thirdToLast, m_secondToLast, m_last;
    std::string m_player;
    std::int32_t m_records = 0;
    std::string m_targetDirectories, m_groupingDir;
};

}  // namespace tobbin
