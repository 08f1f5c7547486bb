#pragma once

#include <cstdint>
#include <string_view>

namespace tobbin {

// The CRC-32C (Castagnoli) of some bytes, which shows whether they were cut or altered. It is no
// protection from someone who means to deceive.
std::uint32_t Crc32c(std::string_view bytes);

}  // namespace tobbin
