#include "jukebox/SpecialFolders.h"

#include <algorithm>

namespace tobbin {

const std::vector<std::string>& DecadeTexts() {
    static const std::vector<std::string> texts = {"20's", "30's", "40's", "50's", "60's",
                                                   "70's", "80's", "90's", "00's"};
    return texts;
}

bool IsSpecialFolder(const Folder& folder) {
    const std::string& text = folder.Text();
    if (folder.Parent() == nullptr)
        return text == kAllSongs || text == kNew || text == kDecades || text == kGenre ||
               text == kArtist || text == kYear;
    const Folder& parent = *folder.Parent();
    return parent.Parent() == nullptr && parent.Text() == kDecades &&
           std::ranges::count(DecadeTexts(), text) > 0;
}

bool IsInSpecialFolder(const Folder& folder) {
    const Folder* at = &folder;
    while (at != nullptr && !IsSpecialFolder(*at))
        at = at->Parent();
    return at != nullptr;
}

bool IsAllSongs(const Folder& folder) {
    return folder.Parent() == nullptr && folder.Text() == kAllSongs;
}

}  // namespace tobbin
