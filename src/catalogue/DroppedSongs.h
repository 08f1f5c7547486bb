#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "util/TextHash.h"

namespace tobbin {

// Files that were dropped on a folder, with each list of songs (SongListFile) among them replaced
// by the songs that it names.
class DroppedSongs {
 public:
    // `dropped` are full paths.
    DroppedSongs(Environment& environment, const std::vector<std::string>& dropped);

    const std::vector<std::string>& Paths() const { return m_paths; }

    // What the person is told of lists that could not be read and of what is in a list and no MP3
    // file that is there; empty when there is nothing of that kind.
    std::string Complaint() const;

 private:
    // The names of a folder's files by themselves and by their small letters: a list may name a
    // song in other letters than the catalogue and the file system do.
    using Names = TextMap<std::string>;

    void TakeList(const std::string& listPath);
    // The path as the file system has it; empty when there is no such song.
    std::string MaybeFound(const std::string& path);
    Names NamesIn(const std::string& folder);

    Environment& m_environment;
    std::map<std::string, bool> m_reachable;  // by drive or share: one that is away answers slowly
    std::map<std::string, Names> m_names;     // by folder
    std::vector<std::string> m_paths;
    std::vector<std::string> m_notFound;  // as in their lists
    std::string m_unreadLists;            // a sentence for each
    std::size_t m_listed = 0;
};

}  // namespace tobbin
