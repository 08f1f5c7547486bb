#pragma once

namespace tobbin {

// Messages that our own player knows beside those of any player: see docs/player-messages.md. Both
// are registered with the system under these names, which gives them their numbers. A window that
// doesn't know them answers 0.

// The identifier of a copy-data record: adds the song whose full path the data is, in UTF-16
// without a NUL at its end. The reply is 1 when it was added.
inline constexpr wchar_t kAddPathMessage[] = L"TobbinPlayer.AddPath";

// What is asked for is the first parameter.
inline constexpr wchar_t kTrackNumberMessage[] = L"TobbinPlayer.TrackNumber";
enum TrackQuestion : int {
    kTrackNumber = 0,  // the song of the list that plays or would play, counted from 1; 0 when the
                       // list is empty
    kTrackCount = 1,   // how many songs the list holds
    kKnowsMessages = 2,  // always 1
};

// While a song plays or is paused the window's caption is its name and this.
inline constexpr char kCaptionEnd[] = " - Tobbin Player";

}  // namespace tobbin
