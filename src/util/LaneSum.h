#pragma once

#include <cstdint>
#include <string_view>

namespace tobbin {

// A sum that shows whether bytes were cut or altered, at the speed of reading them: any change
// within one of their 64-bit words for sure, any other with the odds of 64 bits. It is no
// protection from someone who means to deceive. docs/jukebox-file.md defines it.
std::uint64_t LaneSum(std::string_view bytes);

}  // namespace tobbin
