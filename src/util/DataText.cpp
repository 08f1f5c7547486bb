#include "util/DataText.h"

#include "util/Utf.h"

namespace tobbin {
namespace {
constexpr std::string_view kMark = "\xEF\xBB\xBF";
}

std::string EncodeDataText(const SystemText& system, std::string_view text) {
    if (auto ansi = system.MaybeToAnsi(text); ansi && !ansi->starts_with(kMark))
        return *std::move(ansi);
    return std::string(kMark).append(text);
}

std::string DecodeDataText(const SystemText& system, std::string_view bytes) {
    if (bytes.starts_with(kMark)) {
        const std::string_view text = bytes.substr(kMark.size());
        if (IsGeneralisedUtf8(text))
            return std::string(text);
    }
    return system.FromAnsi(bytes);
}

std::string DecodeForeignText(const SystemText& system, std::string_view bytes) {
    const std::string_view text = bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes;
    return IsGeneralisedUtf8(text) ? std::string(text) : system.FromAnsi(text);
}

}  // namespace tobbin
