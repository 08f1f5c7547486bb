// The settings file: what was loaded is loaded again after a save.
#include "catalogue/clsINI.h"
#include "Fuzzing.h"

namespace tobbin {
namespace {

constexpr char kPath[] = "C:\\T\\Grouping\\System\\TheOrganizer.ini";

std::string Everything(const clsINI& settings) {
    std::string all = std::to_string(settings.NumerOfRecordsInTheMain()) +
                      (settings.IsThereAPicture() ? "shown" : "") +
                      (settings.IsItTiled() ? "tiled" : "");
    for (const std::string& text :
         {settings.FileContainingTargetDirectories(), settings.LocOfGroupingDir(),
          settings.LocOfWinAmpExe(), settings.LocOfLastSavedJukeBox(),
          settings.LocSecToLastSavedJukeBox(), settings.LocOfThirdToLastSaveJukeBox(),
          settings.PictureLocation()})
        all += "\n" + text;
    return all;
}

}  // namespace

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile(kPath, std::string(bytes));
    clsINI settings(fake.environment, "C:\\T\\");
    const LoadResult result = settings.GetandLoadIniInfo(kPath);
    CHECK(result.message.empty() == (result.outcome == LoadOutcome::Loaded));
    if (result.outcome != LoadOutcome::Loaded)
        return;
    CHECK(settings.Save(kPath));
    clsINI again(fake.environment, "C:\\T\\");
    CHECK(again.GetandLoadIniInfo(kPath).outcome == LoadOutcome::Loaded);
    CHECK(Everything(again) == Everything(settings));
}

}  // namespace tobbin
