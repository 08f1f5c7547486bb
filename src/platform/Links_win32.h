#pragma once

#include <string>

namespace tobbin {

// Whether the way to a path leaves the volumes of this computer through a link (a symbolic link or
// a junction), which is followed on paper only: to open it would touch what it leads to. Links that
// lead to other links for ever, or that can't be read, count as leading away.
bool LeadsOffThisComputer(const std::string& path);

}  // namespace tobbin
