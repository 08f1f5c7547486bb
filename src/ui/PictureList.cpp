#include "ui/PictureList.h"

#include <utility>
#include <vector>

#include "util/Text.h"

namespace tobbin {
namespace {

constexpr char kExtension[] = ".jpg";

}  // namespace

void PictureList::Read(Environment& environment, SortCity& sorter, const std::string& picture) {
    m_names = StringTable(1, 1, 1, 0);
    m_current = 1;
    m_folder = FolderOfPath(picture);
    FolderListing listing;
    if (!FileExists(environment.disk, picture) || !environment.disk.List(m_folder, listing).Ok())
        return;
    std::vector<std::string> names;
    for (const FolderEntry& entry : listing.entries)
        if (!entry.isFolder)
            if (std::string name = environment.text.ToLower(entry.name); name.ends_with(kExtension))
                names.push_back(std::move(name));
    const auto count = static_cast<std::int32_t>(names.size());
    m_names = StringTable(1, 1, 1, count);
    for (std::int32_t row = 1; row <= count; ++row)
        m_names.At(1, row) = std::move(names[static_cast<std::size_t>(row - 1)]);
    sorter.QuickSortStringsAscending(m_names, 1, count, 1, 1);
    const std::string wanted = environment.text.ToLower(FileNameOfPath(picture));
    for (std::int32_t row = 1; row <= count; ++row)
        if (MatchesPattern(m_names.At(1, row), wanted)) {
            m_current = row;
            return;
        }
}

std::int32_t PictureList::Neighbor(bool forward) const {
    const std::int32_t row = m_current + (forward ? 1 : -1);
    return row < 1 ? Count() : row > Count() ? 1 : row;
}

}  // namespace tobbin
