#pragma once

#include <string>

#include "platform/Environment.h"

namespace tobbin {

// Starts programs by their full path only: no folder is searched for one, and the path is never
// cut at a blank. A program runs in its own folder. One that needs an administrator makes the
// system ask for it, if it is shown normally.
class SystemPrograms : public Programs {
 public:
    bool Start(const std::string& programPath, const std::string& arguments,
               ShowProgram show) override;
    std::optional<std::string> MaybeRegistered(const std::string& fileName) override;
    std::vector<std::string> InstallFolders() override;
    bool Open(const std::string& documentPath) override;
};

}  // namespace tobbin
