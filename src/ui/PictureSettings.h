#pragma once

#include <string>

#include "catalogue/clsINI.h"
#include "platform/Environment.h"

namespace tobbin {

// What a jukebox keeps of its background picture, in a file of three lines beside it;
// docs/picture-settings-file.md describes the file.
struct PictureSettings {
    std::string picture;  // full path, empty for none
    bool tiled = false;
    bool shown = false;
};

// How the two flags are written: as truth values (-1 and 0) or as check boxes (1 and 0). Read are
// both, and "True" and "False".
enum class FlagText { TruthValue, CheckBox };

// Reads a picture-settings file. What the file lacks, and a flag that is none, stays as it was.
LoadResult LoadPictureSettings(Environment& environment, const std::string& path,
                               PictureSettings& settings);

DiskStatus SavePictureSettings(Environment& environment, const std::string& path,
                               const PictureSettings& settings, FlagText flags);

}  // namespace tobbin
