#include "shell/SongsOfOneName.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "shell/CataloguePass.h"
#include "util/Text.h"

namespace tobbin {
namespace {

struct Namesakes {
    std::size_t count = 0;
    std::string first;   // the paths of two songs of one name
    std::string second;  // likewise
};

// The files that the last search left out although they are not of the size of the song kept.
Namesakes LeftOut(Environment& environment, const clsMain& catalogue) {
    Namesakes found;
    std::unordered_map<std::int32_t, std::uint64_t> sizes;  // of songs kept
    for (const auto& [file, kept] : catalogue.LastSearch().leftOut) {
        const auto [size, isNew] = sizes.try_emplace(kept, catalogue.Memory().SizeOf(kept));
        PathInfo info;
        if (isNew && size->second == 0 &&
            environment.disk.Stat(catalogue.SongPath(kept), info).Ok())
            size->second = info.size;
        if (size->second == 0 || file.size == 0 || file.size == size->second)
            continue;
        if (found.count++ == 0) {
            found.first = file.folder + file.name;
            found.second = catalogue.SongPath(kept);
        }
    }
    return found;
}

// The songs that are kept besides another one of their name.
Namesakes Kept(const clsMain& catalogue) {
    Namesakes found;
    std::unordered_map<RecordTable::CellId, std::int32_t> firsts;  // by name
    for (std::int32_t record = 1; record <= catalogue.UBoundOfMp3Array(); ++record) {
        if (!catalogue.IsPresent(record))
            continue;
        const auto [first, isNew] =
            firsts.try_emplace(catalogue.Records().Id(clsMain::kFileName, record), record);
        if (!isNew && found.count++ == 0) {
            found.first = catalogue.SongPath(record);
            found.second = catalogue.SongPath(first->second);
        }
    }
    return found;
}

std::string Question(const Namesakes& found) {
    return Counted(found.count, "file") +
           (found.count == 1 ? " has the name of another song" : " have the names of other songs") +
           " but a different size, such as\r\n\r\n" + found.first + "\r\n" + found.second +
           "\r\n\r\nShall Tobbin keep each of them as a song of its own?  With No it keeps one "
           "song of each file name.";
}

}  // namespace

std::string SettleSongsOfOneName(Application& application, bool askAgain) {
    Environment& environment = application.TheEnvironment();
    clsMain& catalogue = application.Catalogue();
    const bool keptAll = catalogue.NameRule() == SongIdentity::Rule::OneForEachPath;
    const bool isStored =
        environment.userSettings.MaybeRead(clsMain::kKeepSongsOfOneName).has_value();
    if (!isStored || askAgain) {
        const Namesakes found = keptAll ? Kept(catalogue) : LeftOut(environment, catalogue);
        if (found.count > 0) {
            const bool keepAll =
                environment.dialogs.Ask(Question(found),
                                        keptAll ? Buttons::YesNo : Buttons::YesNoPreferNo,
                                        BoxIcon::Question) == Answer::Yes;
            environment.userSettings.Write(clsMain::kKeepSongsOfOneName, keepAll ? "Yes" : "No");
            if (keepAll && !keptAll)
                catalogue.TakeInWhatWasLeftOut();
            if (!keepAll && keptAll)
                RunCataloguePass(application, [&] {
                    return catalogue.DeleteIdenticalFileNamesAndPaths() &&
                           catalogue.WriteOutMp3DirectoryLocations();
                });
        }
    }
    const std::size_t leftOut = catalogue.LastSearch().leftOut.size();
    if (leftOut == 0)
        return {};
    return Counted(leftOut, "file") + (leftOut == 1 ? " was" : " were") +
           " left out, as only one song of each file name is kept.";
}

}  // namespace tobbin
