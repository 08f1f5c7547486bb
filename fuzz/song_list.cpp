// Lists of songs from other programs: each path is full, and no way out of its drive.
#include <algorithm>

#include "catalogue/SongListFile.h"
#include "Fuzzing.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    const FakeText text;
    for (const char* const name : {"C:\\Lists\\a.m3u", "\\\\server\\share\\b.pls"}) {
        const SongListFile list(text, name, bytes);
        for (const auto& [entry, path] : list.Entries()) {
            CHECK(!entry.empty() && IsGeneralisedUtf8(entry));
            if (path.empty())
                continue;
            const std::string root = RootOfPath(path);
            CHECK(!root.empty());
            CHECK(("\\" + path.substr(root.size()) + "\\").find("\\..\\") == path.npos);
            CHECK(std::ranges::none_of(path, [](char c) { return c == '\0' || c == '/'; }));
        }
    }
}

}  // namespace tobbin
