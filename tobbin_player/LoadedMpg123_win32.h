#pragma once

#include <string>

#include "platform/UniqueHandle_win32.h"
#include "tobbin_player/Mpg123Library.h"

namespace tobbin::player {

// The decoder's DLL from a folder (which ends in "\\"), and from nowhere else. The table is empty
// when it can't be loaded.
class LoadedMpg123 {
 public:
    explicit LoadedMpg123(const std::string& folder);
    const Mpg123Library& Functions() const { return m_functions; }

 private:
    UniqueLibrary m_file;
    Mpg123Library m_functions;
};

}  // namespace tobbin::player
