#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tobbin {

// The system's tree search (Drives::MaybeFindBelow). It can neither be stepped nor broken off, so
// it runs on a thread of its own, which touches nothing else of the program; when `keepOn` answers
// false it is left to end by itself.
std::optional<std::string> FindBelowWithSystemSearch(const std::string& root,
                                                     const std::string& fileName,
                                                     const std::function<bool()>& keepOn);

// Disk::MaybeShortPath.
std::optional<std::string> MaybeSystemShortPath(const std::string& path);

}  // namespace tobbin
