#include "catalogue/DroppedSongs.h"

#include <algorithm>
#include <utility>

#include "catalogue/SongListFile.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr std::size_t kLinesTold = 10;

// Short enough for a line of a box; the end of a path says most.
std::string Shortened(const std::string& text) {
    constexpr std::size_t kBytes = 80;
    if (text.size() <= kBytes)
        return text;
    std::size_t begin = text.size() - kBytes;
    while (begin < text.size() && (static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80U)
        ++begin;
    return "..." + text.substr(begin);
}

}  // namespace

DroppedSongs::DroppedSongs(Environment& environment, const std::vector<std::string>& dropped)
    : m_environment(environment) {
    for (const std::string& path : dropped) {
        m_environment.hosts.Trust(path);
        if (SongListFile::IsListName(path))
            TakeList(path);
        else
            m_paths.push_back(path);
    }
}

void DroppedSongs::TakeList(const std::string& listPath) {
    std::string bytes;
    const DiskStatus status = ReadWholeFile(m_environment.disk, listPath, kLargestSongList, bytes);
    if (!status.Ok()) {
        m_unreadLists +=
            "The list " + listPath + " could not be read: " + status.Reason() + ".\r\n";
        return;
    }
    const SongListFile list(m_environment.text, listPath, bytes);
    m_listed += list.Entries().size();
    std::vector<std::string> paths;
    for (const auto& entry : list.Entries())
        paths.push_back(entry.path);
    m_environment.hosts.AskFor(m_environment.dialogs, paths,
                               "The list \"" + FileNameOfPath(listPath) + "\" names songs");
    for (const auto& [text, path] : list.Entries()) {
        std::string found = MaybeFound(path);
        if (found.empty())
            m_notFound.push_back(text);
        else
            m_paths.push_back(std::move(found));
    }
}

std::string DroppedSongs::MaybeFound(const std::string& path) {
    if (!IsSongName(path))
        return {};
    const std::string root = RootOfPath(path);
    const auto [known, isNewRoot] = m_reachable.try_emplace(root, false);
    if (isNewRoot)
        m_environment.events.RunWithoutInput(
            [&, &isReachable = known->second] { isReachable = IsReachable(m_environment, root); });
    if (!known->second)
        return {};
    const std::string name = FileNameOfPath(path);
    const std::string folder = path.substr(0, path.size() - name.size());
    const auto [listed, isNewFolder] = m_names.try_emplace(folder);
    Names& names = listed->second;
    if (isNewFolder)
        names = NamesIn(folder);
    auto found = names.find(name);
    if (found == names.end())
        found = names.find(m_environment.text.ToLower(name));
    if (found != names.end())
        return folder + found->second;
    return FileExists(m_environment.disk, path) ? path : std::string();
}

DroppedSongs::Names DroppedSongs::NamesIn(const std::string& folder) {
    FolderListing listing;
    Names names;
    DiskStatus status;
    m_environment.events.RunWithoutInput(
        [&] { status = m_environment.disk.List(folder, listing); });
    if (!status.Ok())
        return names;
    for (const FolderEntry& entry : listing.entries) {
        names.insert_or_assign(entry.name, entry.name);
        names.try_emplace(m_environment.text.ToLower(entry.name), entry.name);
    }
    return names;
}

std::string DroppedSongs::Complaint() const {
    std::string text = m_unreadLists;
    if (m_notFound.empty())
        return text;
    text +=
        (text.empty() ? "" : "\r\n") + std::to_string(m_notFound.size()) + " of " +
        std::to_string(m_listed) +
        (m_notFound.size() == 1 ? " songs was not added, since there is no such MP3 file:\r\n"
                                : " songs were not added, since there are no such MP3 files:\r\n");
    for (std::size_t i = 0; i < std::min(m_notFound.size(), kLinesTold); ++i)
        text += "\r\n" + Shortened(m_notFound[i]);
    if (m_notFound.size() > kLinesTold)
        text += "\r\n... and " + std::to_string(m_notFound.size() - kLinesTold) + " more";
    return text;
}

}  // namespace tobbin
