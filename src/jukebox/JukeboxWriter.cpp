#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"
#include "util/Text.h"
#include "util/TextHash.h"

namespace tobbin {
namespace {

// Writes the lines. The folder of a song file gets a line of its own before its first song.
class JukeboxWriter {
 public:
    explicit JukeboxWriter(const clsMain& catalogue) : m_records(catalogue.Records()) {}

    std::string Write(const Jukebox& jukebox) {
        m_file = std::string(kJukeboxFirstWords) + std::to_string(kJukeboxFileVersion);
        EndLine();
        for (const std::string& column : jukebox.Columns())
            WriteText("column", column);
        std::int64_t level = 0;
        const Folder* last = nullptr;
        for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
             last = folder, folder = jukebox.Next(folder)) {
            level = LevelAfter(last, level, *folder);
            WriteFolder(level, *folder);
            for (const SongItem& song : folder->Songs())
                WriteSong(jukebox, song);
        }
        m_file += JukeboxEndLine(m_lines, m_file);
        EndLine();
        return std::move(m_file);
    }

 private:
    // Asking each folder for its level would be quadratic in a deep tree.
    static std::int64_t LevelAfter(const Folder* last, std::int64_t lastLevel,
                                   const Folder& folder) {
        if (last == nullptr)
            return 0;
        if (folder.Parent() == last)
            return lastLevel + 1;
        for (; last->Parent() != folder.Parent(); last = last->Parent())
            --lastLevel;
        return lastLevel;
    }

    void WriteText(std::string_view kind, std::string_view text) {
        m_file += kind;
        PutField(m_file, text);
        EndLine();
    }

    void WriteFolder(std::int64_t level, const Folder& folder) {
        m_file += "folder";
        PutField(m_file, level);
        PutField(m_file, folder.Image());
        PutField(m_file, folder.SelectedImage());
        PutField(m_file, folder.Text());
        EndLine();
    }

    void WriteSong(const Jukebox& jukebox, const SongItem& item) {
        Written& written = WrittenOf(item);
        if (written.song != 0 && written.nameId == item.nameId) {
            m_file += "again";
            PutField(m_file, written.song);
            PutField(m_file, item.image);
            PutField(m_file, item.selectedImage);
            EndLine();
            return;
        }
        written = {item.nameId, ++m_songs};
        const std::string_view text = jukebox.TextOf(item);
        if (item.IsMissing()) {
            const MissingSong song = jukebox.MissingSongOf(item);
            WriteSong(-song.recordNumber, item, PlaceOf(song.folder), song.fileName, text);
            return;
        }
        const RecordTable::PlainCells& cells = m_records.Plain(item.recordNumber);
        const std::int32_t place = PlaceOf(cells[clsMain::kFolder - 1]);
        std::array<char, 10> digits{};
        WriteSong(item.recordNumber, item, place,
                  m_records.ViewOf(cells[clsMain::kFileName - 1], digits), text);
    }

    void WriteSong(std::int32_t number, const SongItem& item, std::int32_t place,
                   std::string_view fileName, std::string_view text) {
        m_file += "song";
        PutField(m_file, number);
        PutField(m_file, item.image);
        PutField(m_file, item.selectedImage);
        PutField(m_file, place);
        PutField(m_file, fileName);
        if (text != fileName)
            PutField(m_file, text);
        EndLine();
    }

    // A song stands in several folders with one text: from the second time on, its line names the
    // line of the first time.
    struct Written {
        std::uint32_t nameId = 0;
        std::int32_t song = 0;  // the number of its line among the songs', from 1; 0 without
    };
    Written& WrittenOf(const SongItem& item) {
        std::vector<Written>& written = item.IsMissing() ? m_writtenMissing : m_writtenRecords;
        const auto at = static_cast<std::size_t>(std::abs(item.recordNumber));
        if (at >= written.size())
            written.resize(2 * at + 1);
        return written[at];
    }

    // The number of a folder of song files; one that is new gets its line first.
    std::int32_t PlaceOf(std::string_view folder) {
        if (const auto known = m_places.find(folder); known != m_places.end())
            return known->second;
        WriteText("place", folder);
        const auto place = static_cast<std::int32_t>(m_places.size() + 1);
        m_places.emplace(folder, place);
        return place;
    }
    std::int32_t PlaceOf(RecordTable::CellId folder) {
        if (RecordTable::IsNumber(folder))
            return PlaceOf(std::string_view(m_records.TextOf(folder)));
        if (folder >= m_placesOfTexts.size())
            m_placesOfTexts.resize(std::size_t{2} * folder + 1);
        std::int32_t& place = m_placesOfTexts[folder];
        std::array<char, 10> digits{};
        if (place == 0)
            place = PlaceOf(m_records.ViewOf(folder, digits));
        return place;
    }

    void EndLine() {
        m_file += kLineEnd;
        ++m_lines;
    }

    const RecordTable& m_records;
    TextMap<std::int32_t> m_places;
    std::vector<std::int32_t> m_placesOfTexts;  // by cell; 0 before it was looked up
    std::vector<Written> m_writtenRecords;      // by record number
    std::vector<Written> m_writtenMissing;      // by the item's number, negated
    std::int32_t m_songs = 0;                   // song lines written
    std::string m_file;
    std::size_t m_lines = 0;
};

}  // namespace

std::string WriteJukebox(const Jukebox& jukebox, const clsMain& catalogue) {
    return JukeboxWriter(catalogue).Write(jukebox);
}

}  // namespace tobbin
