#pragma once

#include <optional>
#include <string>

namespace tobbin {

// Programs::MaybeRegistered: asks the registry's lists of program paths, of programs that open
// files, and of what is installed.
std::optional<std::string> MaybeRegisteredProgram(const std::string& fileName);

}  // namespace tobbin
