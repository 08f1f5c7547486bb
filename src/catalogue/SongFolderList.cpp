#include "catalogue/SongFolderList.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "catalogue/clsMain.h"
#include "util/DataText.h"
#include "util/Text.h"

namespace tobbin {

std::vector<std::string> SongFoldersOf(const RecordTable& table) {
    std::unordered_set<RecordTable::CellId> ids;
    for (std::int32_t record = 1; record <= table.Size(); ++record)
        ids.insert(table.Id(clsMain::kFolder, record));
    std::vector<std::string> folders;
    for (const RecordTable::CellId id : ids)
        folders.push_back(table.TextOf(id));
    return folders;
}

DiskStatus WriteSongFolderList(Environment& environment, const std::string& path,
                               const RecordTable& table) {
    std::vector<std::pair<std::string, std::string>> folders;  // the lower-cased text first
    for (const std::string& folder : SongFoldersOf(table))
        if (!folder.empty())
            folders.emplace_back(environment.text.ToLower(folder), folder);
    std::sort(folders.begin(), folders.end());
    std::string bytes;
    for (const auto& [lowered, folder] : folders)
        bytes += EncodeDataText(environment.text, folder) + "\r\n";
    if (bytes.size() > kLargestSongFolderList)
        return DiskStatus(DiskError::TooLarge);
    return SaveWholeFileIfChanged(environment.disk, path, bytes);
}

DiskStatus ReadSongFolderList(Environment& environment, const std::string& path,
                              std::vector<std::string>& folders) {
    folders.clear();
    std::string bytes;
    const DiskStatus status = ReadWholeFile(environment.disk, path, kLargestSongFolderList, bytes);
    for (const std::string_view line : SplitLines(bytes)) {
        const std::string text = DecodeDataText(environment.text, TrimBlanks(line));
        const std::string folder = FolderWithSeparator(TrimBlanks(text));
        if (!RootOfPath(folder).empty())
            folders.push_back(folder);
    }
    return status;
}

}  // namespace tobbin
