#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tobbin {

// The system's tree search (Drives::MaybeFindBelow). It can't be done in steps, so it runs on a
// thread of its own, which touches nothing else of the program. When `keepOn` answers false it is
// called off at the next folder; on a system that doesn't ask for that, it is left to end by
// itself.
std::optional<std::string> FindBelowWithSystemSearch(
    const std::string& root, const std::string& fileName,
    const std::function<bool(const std::string& path)>& takes, const std::function<bool()>& keepOn);

// Disk::MaybeShortPath.
std::optional<std::string> MaybeSystemShortPath(const std::string& path);

}  // namespace tobbin
