#include "tobbin_player/LoadedMpg123_win32.h"

#include "platform/Wide_win32.h"

namespace tobbin::player {

LoadedMpg123::LoadedMpg123(const std::string& folder)
    : m_file(LoadLibraryExW(Wide(folder + "libmpg123-0.dll").c_str(), nullptr,
                            LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    const auto find = [&](const char* name) {
        return m_file ? reinterpret_cast<void*>(GetProcAddress(m_file.Get(), name)) : nullptr;
    };
    if (!m_functions.Load(find))
        m_functions = {};
}

}  // namespace tobbin::player
