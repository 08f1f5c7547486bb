#pragma once

#include <string>
#include <vector>

namespace tobbin {

// What a test starts as "another program", which ends itself in the middle of a save.

// The kinds of file that the program saves.
const std::vector<std::string>& SavedKinds();

// Saves one kind in the data folder below `folder`, with the code that the program saves it with:
// as it was, or as it is after a change.
void SaveKind(const std::string& kind, const std::string& folder, bool changed);

// Saves the change and ends this process with kDeathCode in front of the n-th disk operation (from
// 1), or behind it, which is behind the first half of a write. Returns when there are fewer.
constexpr unsigned kDeathCode = 9;
void SaveUpTo(const std::string& kind, const std::string& folder, int operation, bool behind);

}  // namespace tobbin
