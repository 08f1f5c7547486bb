#include "jukebox/SongFinder.h"

#include <array>

namespace tobbin {

std::int32_t SongFinder::RecordOf(std::int32_t number, std::string_view folder,
                                  std::string_view fileName) {
    const RecordTable& records = m_catalogue.Records();
    const RecordTable::PlainCells& cells = records.Plain(number);
    std::array<char, 10> digits{};
    if (number >= 1 && number <= records.Size() &&
        records.ViewOf(cells[clsMain::kFileName - 1], digits) == fileName &&
        records.ViewOf(cells[clsMain::kFolder - 1], digits) == folder)
        return number;
    return RecordAtPath(folder, fileName);
}

std::int32_t SongFinder::RecordAtPath(std::string_view folder, std::string_view fileName) {
    if (!m_recordsByPath) {
        m_recordsByPath.emplace();
        for (std::int32_t record = 1; record <= m_catalogue.UBoundOfMp3Array(); ++record) {
            if (m_catalogue.IsPresent(record))
                m_recordsByPath->try_emplace(m_text.ToLower(m_catalogue.SongPath(record)), record);
        }
    }
    const auto found =
        m_recordsByPath->find(m_text.ToLower(std::string(folder) + std::string(fileName)));
    return found == m_recordsByPath->end() ? 0 : found->second;
}

}  // namespace tobbin
