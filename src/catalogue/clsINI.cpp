#include "catalogue/clsINI.h"

#include <stdexcept>
#include <utility>

#include "catalogue/CatalogueFile.h"
#include "util/Convert.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// How a number stands in the file: a blank in the place of a sign, a blank behind.
std::string NumberLine(std::int32_t value) {
    std::string line(value < 0 ? "" : " ");
    line += std::to_string(value);
    return line + " ";
}
const char* BooleanLine(bool value) {
    return value ? "True" : "False";
}

}  // namespace

clsINI::clsINI(Environment& environment, std::string applicationFolder)
    : m_environment(environment),
      m_applicationFolder(std::move(applicationFolder)),
      m_targetDirectories(m_applicationFolder + "Grouping\\System\\LocOfMainTargetFiles.lmz"),
      m_groupingDir(m_applicationFolder + "Grouping\\") {}

void clsINI::LocOfThirdToLastSaveJukeBox(std::string value) {
    m_thirdToLast = std::move(value);
    m_recentListChanged();
}

void clsINI::LocSecToLastSavedJukeBox(std::string value) {
    m_secondToLast = std::move(value);
    m_recentListChanged();
}

void clsINI::LocOfLastSavedJukeBox(std::string value) {
    if (value == m_last)
        return;
    m_thirdToLast = std::exchange(m_secondToLast, std::exchange(m_last, std::move(value)));
    m_recentListChanged();
}

std::string clsINI::SettingsPath() const {
    return m_applicationFolder + "Grouping\\System\\TheOrganizer.ini";
}

bool clsINI::Save(const std::string& path) {
    std::string bytes;
    for (const std::string& line :
         {m_targetDirectories, m_groupingDir, NumberLine(m_records), m_player, m_last,
          m_secondToLast, m_thirdToLast, std::string(BooleanLine(m_isThereAPicture)),
          std::string(BooleanLine(m_isItTiled)), m_pictureLocation})
        bytes += EncodeDataText(m_environment.text, line) + "\r\n";
    const DiskStatus status = SaveWholeFile(m_environment.disk, path, bytes);
    if (!status.Ok())
        m_environment.statusLine.Say("The settings \"" + path +
                                     "\" were not saved: " + status.Reason() + ".");
    return status.Ok();
}

bool clsINI::CreateNewIniFile(const std::string& path) {
    m_targetDirectories = m_applicationFolder + "Grouping\\System\\LocOfMainTargetFiles.lmz";
    m_groupingDir = m_applicationFolder + "Grouping\\";
    m_records = 0;
    std::string catalogue;
    if (ReadWholeFile(m_environment.disk, m_groupingDir + "FileLocNames.lmz", kLargestCatalogue,
                      catalogue)
            .Ok()) {
        const CatalogueSummary summary = SummariseCatalogue(catalogue);
        m_records = MaybeToLong(summary.lastNumber).value_or(-1);
        if (m_records < 0)  // The last number is none: the songs are counted instead.
            m_records = summary.songs;
    }
    m_player.clear();
    m_last.clear();
    m_secondToLast.clear();
    m_thirdToLast.clear();
    m_isThereAPicture = false;
    m_isItTiled = false;
    m_pictureLocation.clear();
    m_recentListChanged();
    Save(path);
    return true;
}

LoadResult clsINI::GetandLoadIniInfo(const std::string& path) {
    std::string bytes;
    if (const DiskStatus status = ReadWholeFile(m_environment.disk, path, kLargestSettings, bytes);
        !status.Ok()) {
        const bool notThere = status.Error() == DiskError::NotFound;
        return {notThere ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
                "The settings \"" + path + "\" can't be read: " + status.Reason() + "."};
    }
    int lineNumber = 0;
    for (const std::string_view line : SplitLines(bytes)) {
        ++lineNumber;
        const std::string text = DecodeDataText(m_environment.text, TrimBlanks(line));
        try {
            TakeLine(lineNumber, TrimBlanks(text));
        } catch (const std::runtime_error&) {
            return {LoadOutcome::Damaged, "The settings \"" + path + "\" are damaged: line " +
                                              std::to_string(lineNumber) +
                                              " must be a number, and is \"" + text + "\"."};
        }
    }
    return {};
}

void clsINI::TakeLine(int lineNumber, std::string_view line) {
    switch (lineNumber) {
        case 1:
            FileContainingTargetDirectories(std::string(line));
            break;
        case 2:
            LocOfGroupingDir(std::string(line));
            break;
        case 3: {
            const std::int32_t records = ToLong(line);
            if (records < 0)
                throw OverflowError();
            NumerOfRecordsInTheMain(records);
            break;
        }
        case 4:
            LocOfWinAmpExe(std::string(line));
            break;
        case 5:
            LocOfLastSavedJukeBox(std::string(line));
            break;
        case 6:
            LocSecToLastSavedJukeBox(std::string(line));
            break;
        case 7:
            LocOfThirdToLastSaveJukeBox(std::string(line));
            break;
        case 8:
            IsThereAPicture(ToInteger(line) != 0);
            break;
        case 9:
            IsItTiled(ToInteger(line) != 0);
            break;
        case 10:
            PictureLocation(std::string(line));
            break;
        default:
            break;
    }
}

}  // namespace tobbin
