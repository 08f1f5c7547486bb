#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/SystemText.h"

namespace tobbin {

// The texts in a text frame's content: a byte for the encoding, then texts with a zero between each
// two (ID3v2.4, "4.2. Text information frames"). Texts called ISO-8859-1 are taken for the system's
// page, which is what is written on Windows. A byte order mark may be there or not, wherever it may
// stand. Blanks at the ends are left out, and so is a zero behind the last one.
std::vector<std::string> Id3v2Texts(std::string_view content, const SystemText& text);

// The first four digits that stand together in a year or a recording time, such as
// "2004-05-06T07:08"; empty without them.
std::string Id3v2Year(std::string_view text);

// The genre that the texts of a frame name first: "17", "(17)", "(17)Rock", "(RX)" or its name.
// Names take the spelling of the genre table where only case and hyphens differ. Empty when there
// is none.
std::string Id3v2Genre(const std::vector<std::string>& texts);

}  // namespace tobbin
