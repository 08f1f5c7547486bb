#pragma once

#include <string>
#include <vector>

namespace tobbin::driver {

// Uses a player's window by the messages that other programs send. One run does a whole script, so
// that nothing else takes time; each reply is a line. The words of the script:
//
//   start                    starts our own player; its reply is after how many milliseconds the
//                            window was there
//   add PATH, path PATH      adds a song by its path in the ANSI code page, in UTF-16
//   command ID               WM_COMMAND
//   ask OPERATION ARGUMENT   WM_USER
//   until OPERATION ARGUMENT VALUE  asks until the reply is that; a position (105 0) may be beyond
//   track                    the number of the song that plays
//   wait MILLISECONDS
//   pester COUNT             sends random messages, but none that closes a window; the reply is how
//                            many were not answered in two seconds
//   decode PATH FILE         decodes a song with the player's own DLL, without the player, into a
//                            file of samples
void RunPlayerScript(const std::vector<std::wstring>& words);

}  // namespace tobbin::driver
