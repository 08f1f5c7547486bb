#include "jukebox/SpecialFolders.h"

#include <algorithm>

namespace tobbin {

const std::vector<std::string>& DecadeTexts() {
    static const std::vector<std::string> texts = {"20's", "30's", "40's", "50's", "60's",
                                                   "70's", "80's", "90's", "00's"};
    return texts;
}

namespace {

bool IsSpecialPlace(const Folder* parent, const std::string& text) {
    if (parent == nullptr)
        return text == kAllSongs || text == kNew || text == kDecades || text == kGenre ||
               text == kArtist || text == kYear;
    return parent->Parent() == nullptr && parent->Text() == kDecades &&
           std::ranges::count(DecadeTexts(), text) > 0;
}

}  // namespace

bool IsSpecialFolder(const Folder& folder) {
    return IsSpecialPlace(folder.Parent(), folder.Text());
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

bool MakesSecondSpecialFolder(const Jukebox& jukebox, const Folder* parent, const std::string& text,
                              const Folder& content) {
    if (!IsSpecialPlace(parent, text))
        return false;
    for (std::size_t i = 0; i < jukebox.ChildCount(parent); ++i) {
        const Folder& sibling = parent != nullptr ? parent->Child(i) : jukebox.Root(i);
        if (sibling.Text() == text)
            return true;
    }
    if (parent != nullptr || text != kDecades)
        return false;
    return std::ranges::any_of(DecadeTexts(), [&](const std::string& decade) {
        int count = 0;
        for (std::size_t i = 0; i < content.ChildCount(); ++i)
            count += content.Child(i).Text() == decade ? 1 : 0;
        return count > 1;
    });
}

}  // namespace tobbin
