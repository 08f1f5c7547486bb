#include "shell/Tips.h"

#include <algorithm>
#include <cstdint>

#include "util/DataText.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr char kFile[] = "TIPOFDAY.TXT";
constexpr std::uint64_t kLargest = Megabytes(1);
constexpr char kSetting[] = "Show Tips at Startup";

std::string MissingFileText() {
    return std::string("That the ") + kFile +
           " file was not found? \r\n\r\nCreate a text file named " + kFile +
           " using NotePad with 1 tip per line. Then place it in the same directory as the "
           "application. ";
}

}  // namespace

bool Tips::TipsAtStartUp() const {
    return m_environment.userSettings.MaybeRead(kSetting).value_or("1") != "0";
}

void Tips::Load(TipView& view) {
    view.TickTipsAtStartUp(TipsAtStartUp());
    m_tips.clear();
    std::string bytes;
    if (!ReadWholeFile(m_environment.disk, m_applicationFolder + kFile, kLargest, bytes).Ok()) {
        view.ShowTip(MissingFileText());
        return;
    }
    const std::string text = DecodeForeignText(m_environment.text, bytes);
    for (const std::string_view line : SplitLines(text))
        m_tips.emplace_back(line);
    OnNextTip(view);
}

void Tips::OnNextTip(TipView& view) {
    if (m_tips.empty())
        return;
    const auto place =
        static_cast<std::size_t>(m_environment.clock.Random() * static_cast<double>(m_tips.size()));
    view.ShowTip(m_tips[std::min(place, m_tips.size() - 1)]);
}

void Tips::OnTipsAtStartUpClicked(bool ticked) {
    m_environment.userSettings.Write(kSetting, ticked ? "1" : "0");
}

}  // namespace tobbin
