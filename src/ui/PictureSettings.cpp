#include "ui/PictureSettings.h"

#include <cstdint>

#include "util/Convert.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr std::uint64_t kLargest = Megabytes(1);

// A flag as the writer prints a whole number: with a blank in the place of the missing sign.
std::string PrintedFlag(bool flag, FlagText kind) {
    if (!flag)
        return " 0 ";
    return kind == FlagText::TruthValue ? "-1 " : " 1 ";
}

bool TakeFlag(std::string_view line, bool& flag) {
    try {
        flag = ToInteger(TrimBlanks(line)) != 0;
        return true;
    } catch (const TypeMismatchError&) {
        return false;
    } catch (const OverflowError&) {
        return false;
    }
}

}  // namespace

LoadResult LoadPictureSettings(Environment& environment, const std::string& path,
                               PictureSettings& settings) {
    std::string bytes;
    if (const DiskStatus status = ReadWholeFile(environment.disk, path, kLargest, bytes);
        !status.Ok())
        return {
            status.Error() == DiskError::NotFound ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
            "The picture settings \"" + path + "\" can't be read: " + status.Reason() + "."};
    const std::vector<std::string_view> lines = SplitLines(bytes);
    if (!lines.empty())
        settings.picture = TrimBlanks(DecodeDataText(environment.text, TrimBlanks(lines[0])));
    bool* const flags[] = {&settings.tiled, &settings.shown};
    for (std::size_t i = 1; i <= 2; ++i)
        if (i >= lines.size() || !TakeFlag(lines[i], *flags[i - 1]))
            return {LoadOutcome::Damaged, "The picture settings \"" + path +
                                              "\" are damaged: line " + std::to_string(i + 1) +
                                              " is neither \"True\" nor \"False\"."};
    return {};
}

DiskStatus SavePictureSettings(Environment& environment, const std::string& path,
                               const PictureSettings& settings, FlagText flags) {
    return SaveWholeFile(environment.disk, path,
                         EncodeDataText(environment.text, settings.picture) + "\r\n" +
                             PrintedFlag(settings.tiled, flags) + "\r\n" +
                             PrintedFlag(settings.shown, flags) + "\r\n");
}

}  // namespace tobbin
