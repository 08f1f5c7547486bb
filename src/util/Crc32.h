#pragma once

#include <cstdint>
#include <string_view>

namespace tobbin {

// The CRC-32 of ISO 3309 (as in ZIP and PNG). It differs for any two texts of one length that
// differ within 32 neighbouring bits.
std::uint32_t Crc32(std::string_view bytes);

}  // namespace tobbin
