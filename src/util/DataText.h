#pragma once

#include <string>
#include <string_view>

#include "util/SystemText.h"

namespace tobbin {

// How a text stands in a data file (a line of the settings, a string of the catalogue): in the
// system's ANSI code page, byte for byte, when the page can hold it, and otherwise as UTF-8 behind
// the three bytes EF BB BF. A text whose ANSI bytes would begin with those three bytes is written
// the second way as well, so that reading gives back what was written.

// The bytes for a data file.
std::string EncodeDataText(const SystemText& system, std::string_view text);

// The text of bytes from a data file. Bytes behind the mark that are not UTF-8 are read, mark and
// all, as ANSI.
std::string DecodeDataText(const SystemText& system, std::string_view bytes);

// The whole text of a file that another program wrote: bytes that are UTF-8 are taken so, with the
// mark in front or without, and all others as ANSI.
std::string DecodeForeignText(const SystemText& system, std::string_view bytes);

}  // namespace tobbin
