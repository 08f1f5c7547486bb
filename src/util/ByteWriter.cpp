#include "util/ByteWriter.h"

#include <algorithm>
#include <utility>

namespace tobbin {

// In steps that stay in the processor's cache: a string can't be made longer without writing it.
void ByteWriter::Grow(std::size_t count) {
    constexpr std::size_t kStep = std::size_t{256} * 1024;
    m_bytes.resize(m_used + std::max(count, kStep));
}

std::string ByteWriter::Take() {
    m_bytes.resize(std::exchange(m_used, 0));
    return std::exchange(m_bytes, {});
}

}  // namespace tobbin
