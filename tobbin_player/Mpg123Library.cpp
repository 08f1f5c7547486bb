#include "tobbin_player/Mpg123Library.h"

namespace tobbin::player {

bool Mpg123Library::Load(const std::function<void*(const char*)>& find) {
    bool all = true;
    const auto take = [&](auto& function, const char* name) {
        void* const found = find(name);
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(found);
        all = all && found != nullptr;
    };
    take(create, "mpg123_new");
    take(destroy, "mpg123_delete");
    take(setParameter, "mpg123_param");
    take(formatNone, "mpg123_format_none");
    take(addFormat, "mpg123_format");
    take(replaceReader, "mpg123_replace_reader_handle_64");
    take(open, "mpg123_open_handle_64");
    take(getFormat, "mpg123_getformat");
    take(read, "mpg123_read");
    take(seek, "mpg123_seek_64");
    take(length, "mpg123_length_64");
    take(scan, "mpg123_scan");
    take(getState, "mpg123_getstate");
    return all;
}

}  // namespace tobbin::player
