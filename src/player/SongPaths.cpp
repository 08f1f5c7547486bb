#include "player/SongPaths.h"

namespace tobbin {

PlayerPanel::SongPathOf SongPathsOf(const clsMain& catalogue) {
    return [&catalogue](std::int32_t record) -> std::string {
        if (record < 1 || record > catalogue.UBoundOfMp3Array())
            return {};
        const std::string name = catalogue.Mp3Info(clsMain::kFileName, record);
        if (name.empty() || name == "0")
            return {};
        return catalogue.Mp3Info(clsMain::kFolder, record) + name;
    };
}

}  // namespace tobbin
