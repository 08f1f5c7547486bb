#include "catalogue/SongListFile.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "util/DataText.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// The path and number of a line "File12=path".
std::optional<std::pair<unsigned, std::string_view>> MaybeNumbered(std::string_view line) {
    constexpr std::string_view kKey = "file";
    if (!EqualsIgnoringAsciiCase(line.substr(0, kKey.size()), kKey))
        return std::nullopt;
    unsigned number = 0;
    const char* const end = line.data() + line.size();
    const auto [rest, error] = std::from_chars(line.data() + kKey.size(), end, number);
    if (error != std::errc() || rest == end || *rest != '=')
        return std::nullopt;
    return std::pair(number, TrimBlanks(std::string_view(rest + 1, end)));
}

// Only "\" between the parts, none of which is empty, "." or "..".
std::string Resolved(const std::string& root, std::string_view rest) {
    std::vector<std::string_view> parts;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\\'), rest.size());
        const std::string_view part = rest.substr(0, end);
        if (part == ".." && !parts.empty())
            parts.pop_back();
        else if (!part.empty() && part != "." && part != "..")
            parts.push_back(part);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::string path = root;
    for (const std::string_view part : parts)
        path.append(part).append("\\");
    if (!parts.empty())
        path.pop_back();
    return path;
}

std::string FullPath(const std::string& folder, std::string_view text) {
    const auto isNoPathCharacter = [](unsigned char c) {
        return c < ' ' ||
               std::string_view("<>\"|?*").find(static_cast<char>(c)) != std::string_view::npos;
    };
    if (std::ranges::any_of(text, isNoPathCharacter))
        return {};
    std::string path(text);
    std::ranges::replace(path, '/', '\\');
    std::string root = RootOfPath(path);
    if (!root.empty()) {
        path.erase(0, root.size());
    } else if (!path.starts_with("\\\\")) {
        root = RootOfPath(folder);
        if (!path.starts_with('\\'))
            path.insert(0, folder.substr(std::min(root.size(), folder.size())));
    }
    // Elsewhere a ":" stands in an address, a drive's current folder or a stream of a file.
    return root.empty() || path.find(':') != path.npos ? std::string() : Resolved(root, path);
}

}  // namespace

SongListFile::SongListFile(const SystemText& system, const std::string& listPath,
                           std::string_view bytes) {
    const std::string text = DecodeForeignText(system, bytes);
    std::vector<std::pair<unsigned, std::string_view>> found;
    const bool numbered = EndsWithIgnoringAsciiCase(listPath, ".pls");
    for (const std::string_view whole : SplitLines(text)) {
        const std::string_view line = TrimBlanks(whole);
        if (numbered) {
            if (const auto entry = MaybeNumbered(line))
                found.push_back(*entry);
        } else if (!line.starts_with('#')) {
            found.emplace_back(0, line);
        }
    }
    std::ranges::stable_sort(found, {}, [](const auto& entry) { return entry.first; });
    const std::string folder = FolderOfPath(listPath);
    for (const auto& [number, name] : found)
        if (!name.empty())
            m_entries.push_back({std::string(name), FullPath(folder, name)});
}

bool SongListFile::IsListName(std::string_view path) {
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{".m3u", ".m3u8", ".pls"},
        [&](std::string_view end) { return EndsWithIgnoringAsciiCase(path, end); });
}

}  // namespace tobbin
