#include "ui/EditTexts.h"

#include <algorithm>
#include <unordered_set>

#include "util/Text.h"

namespace tobbin {

std::string NameOf(const Folder* folder) {
    return folder == nullptr ? "the top level" : "\"" + folder->Text() + "\"";
}

std::string NameAndSongsOf(const Jukebox& jukebox, const Folder& folder) {
    std::size_t songs = 0;
    for (const Folder* inside = &folder; inside != nullptr && inside->IsInside(folder);
         inside = jukebox.Next(inside))
        songs += inside->Songs().size();
    return NameOf(&folder) + " (" + Counted(songs, "song") + ")";
}

std::string SongsAndTwins(const std::vector<SongItem>& songs, const Folder& into) {
    std::unordered_set<std::int32_t> here;
    for (const SongItem& song : into.Songs())
        here.insert(song.recordNumber);
    const auto twins =
        static_cast<std::size_t>(std::ranges::count_if(songs, [&](const SongItem& song) {
            return !song.IsMissing() && here.contains(song.recordNumber);
        }));
    std::string words = Counted(songs.size(), "song");
    if (twins == 0)
        return words;
    if (twins < songs.size())
        return words + ", " + GroupedNumber(twins) + " of them here already";
    const char* const all = twins == 1 ? "" : twins == 2 ? "both " : "all ";
    return words + ", " + all + "here already";
}

std::string WithWayBack(const std::string& done, WayBack way) {
    const char* const what = way == WayBack::BringsItBack     ? "brings it back."
                             : way == WayBack::BringsThemBack ? "brings them back."
                                                              : "takes it back.";
    return done + " Alt+Backspace " + what;
}

std::string WordsOnFilling(const FillingAnew& anew) {
    if (!anew.hasAllSongs)
        return "Without a folder \"All Songs\" at the top level, no folder is filled.";
    std::string words;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0)
            words += (words.empty() ? "" : ", ") + Counted(count, "song") + what;
    };
    add(anew.added, " added");
    add(anew.filedOtherwise, " moved to other folders");
    add(anew.gone, " taken out as gone");
    words = words.empty() ? "The folders are filled as the songs' tags say"
                          : "Filled the folders anew: " + words;
    if (anew.unread > 0)
        words += "; " + Counted(anew.unread, "song") + " can't be read now and " +
                 (anew.unread == 1 ? "keeps its place" : "keep their places");
    return words + ".";
}

std::string StandsHereAlready(const std::string& text) {
    return "There is a folder \"" + text + "\" already that the program fills; there can't be two.";
}

}  // namespace tobbin
