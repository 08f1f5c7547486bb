#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace tobbin {

// The computer's drives, as the system lists them.
class SystemDrives : public Drives {
 public:
    std::vector<std::string> Roots() override;
    unsigned Type(const std::string& root) override;
    bool IsReachable(const std::string& root) override;
    std::vector<std::string> MappedHosts() override;
    std::string SystemRoot() override;
    std::optional<std::uint64_t> MaybeVolume(const std::string& root) override;
    std::optional<std::string> MaybeFindBelow(const std::string& root, const std::string& fileName,
                                              const std::function<bool(const std::string&)>& takes,
                                              const std::function<bool()>& keepOn) override;
};

}  // namespace tobbin
