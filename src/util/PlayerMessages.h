#pragma once

namespace tobbin {

// Messages that our own player knows beside those of any player: see docs/player-messages.md. Both
// are registered with the system under these names, which gives them their numbers. A window that
// doesn't know them answers 0.

// The identifier of a copy-data record: adds the song whose full path the data is, in UTF-16
// without a NUL at its end. The reply is 1 when it was added.
inline constexpr wchar_t kAddPathMessage[] = L"TobbinPlayer.AddPath";

// The reply is the number of the song of the list that plays or would play, counted from 1; 0 when
// the list is empty.
inline constexpr wchar_t kTrackNumberMessage[] = L"TobbinPlayer.TrackNumber";

}  // namespace tobbin
