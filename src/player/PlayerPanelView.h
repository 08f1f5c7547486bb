#pragma once

#include <cstdint>
#include <string>

namespace tobbin {

enum class PlayerBar { Track, Volume, Balance };

// A horizontal scroll bar. A maximum below the minimum leaves it nowhere to go.
struct BarState {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::int32_t value = 0;
    bool operator==(const BarState&) const = default;
};

// What the player panel needs of its window. Nothing here calls the panel back at once.
class PlayerPanelView {
 public:
    virtual ~PlayerPanelView() = default;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetOuterSize(int widthTwips, int heightTwips) = 0;
    virtual void SetButton(const std::string& caption, bool enabled) = 0;  // cmdPlayPause
    virtual void SetStatus(const std::string& text) = 0;                   // lblStatus
    virtual void SetSong(const std::string& text) = 0;                     // which one plays
    virtual void SetBar(PlayerBar bar, const BarState& state) = 0;
    virtual void SetBarText(PlayerBar bar, const std::string& text) = 0;  // its value, beside it
    virtual void SetChoice(const std::string& caption) = 0;               // cmdChoosePlayer
    virtual void OfferStop(bool offered) = 0;   // a button that ends the adding of songs
    virtual void SetTimer(bool enabled) = 0;    // tmrScrollUpdate: calls OnTimer
    virtual void WorkIn(int milliseconds) = 0;  // calls PlayerPanel::Work once, that much later
};

}  // namespace tobbin
