#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tobbin {

// Puts a long file together in memory. Many short pieces are written at a bare pointer, so that
// room is asked for once for all pieces of a line.
class ByteWriter {
 public:
    // Makes room for the whole, as far as its length can be told before.
    explicit ByteWriter(std::size_t expected = 0) { m_bytes.reserve(expected); }

    // Where to write the next bytes, that many at most. End tells where they end.
    char* Room(std::size_t count) {
        if (m_bytes.size() - m_used < count)
            Grow(count);
        return m_bytes.data() + m_used;
    }
    void End(const char* end) { m_used = static_cast<std::size_t>(end - m_bytes.data()); }

    void Append(std::string_view bytes) {
        char* const at = Room(bytes.size());
        End(at + bytes.copy(at, bytes.size()));
    }

    std::string_view Written() const { return {m_bytes.data(), m_used}; }

    // The bytes; the writer is empty afterwards.
    std::string Take();

 private:
    void Grow(std::size_t count);

    std::string m_bytes;  // as long as there is room
    std::size_t m_used = 0;
};

}  // namespace tobbin
