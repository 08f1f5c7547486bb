#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Disk.h"
#include "util/SystemText.h"

namespace tobbin {

// A list of songs as other programs write it: a path on each line (.m3u, .m3u8; lines that begin
// with "#" are notes) or "File1=path" and so on, in the order of the numbers (.pls). The bytes are
// UTF-8, with or without its mark, where they can be, else the ANSI code page.
inline constexpr std::uint64_t kLargestSongList = Megabytes(32);
class SongListFile {
 public:
    struct Entry {
        std::string text;  // as it stands in the list
        // Full and without "." and ".."; a relative one begins at the list's folder. Empty for
        // what names no file, such as an address on the network.
        std::string path;
        bool operator==(const Entry&) const = default;
    };

    // `listPath` is the list's own full path.
    SongListFile(const SystemText& system, const std::string& listPath, std::string_view bytes);

    const std::vector<Entry>& Entries() const { return m_entries; }

    // Whether a file of this name is such a list.
    static bool IsListName(std::string_view path);

 private:
    std::vector<Entry> m_entries;
};

}  // namespace tobbin
