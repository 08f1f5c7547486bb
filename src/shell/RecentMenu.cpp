#include "shell/RecentMenu.h"

#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr std::size_t kLongest = 45;
constexpr std::size_t kFront = 20;
constexpr std::size_t kBack = 25;

}  // namespace

void RecentMenu::Update(const clsINI& settings) {
    for (std::size_t i = 0; i < kMost; ++i) {
        const int number = static_cast<int>(i) + 1;
        const std::string path = RecentPath(settings, number);
        if (path.empty())
            return;
        if (m_captions.size() == i)
            m_captions.emplace_back();
        m_captions[i] = Shortened("&" + std::to_string(number) + ".  " + path);
    }
}

std::string RecentMenu::Shortened(std::string_view caption) {
    const std::u16string units = Utf8ToUtf16(caption);
    if (units.size() <= kLongest)
        return std::string(caption);
    return Utf16ToUtf8(units.substr(0, kFront) + u" .... " + units.substr(units.size() - kBack));
}

std::string RecentPath(const clsINI& settings, int number) {
    switch (number) {
        case 1:
            return settings.LocOfLastSavedJukeBox();
        case 2:
            return settings.LocSecToLastSavedJukeBox();
        case 3:
            return settings.LocOfThirdToLastSaveJukeBox();
        default:
            return {};
    }
}

}  // namespace tobbin
