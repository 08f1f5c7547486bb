#pragma once

#include <string>

#include "shell/Application.h"

namespace tobbin {

// To be called after a search: where it left out files that have the name of another song but not
// its size, the person is asked whether each of them is a song of its own. The answer is the
// per-user setting "Keep Songs Of One Name"; once it is stored, only `askAgain` asks anew. The
// catalogue is brought to what the answer says. Returns what the status line is to say of the files
// that were left out; empty when there is none.
std::string SettleSongsOfOneName(Application& application, bool askAgain);

}  // namespace tobbin
