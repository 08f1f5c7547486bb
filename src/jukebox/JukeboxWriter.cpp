#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"
#include "util/ByteWriter.h"

namespace tobbin {
namespace {

// Writes the lines. The folder of a song file gets a line of its own before its first song.
class JukeboxWriter {
 public:
    explicit JukeboxWriter(const clsMain& catalogue) : m_records(catalogue.Records()) {}

    std::string Write(const Jukebox& jukebox) {
        m_file = ByteWriter(ExpectedBytes(jukebox));
        PutLine(std::string(kJukeboxFirstWords) + std::to_string(kJukeboxFileVersion));
        for (const std::string& column : jukebox.Columns())
            PutTextLine("column", column);
        std::size_t level = 0;
        const Folder* last = nullptr;
        for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
             last = folder, folder = jukebox.Next(folder)) {
            level = LevelAfter(last, level, *folder);
            WriteFolder(static_cast<std::int64_t>(level), *folder);
            WriteSongs(jukebox, folder->Songs());
        }
        PutLine(JukeboxEndLine(m_lines, m_file.Written()));
        return m_file.Take();
    }

 private:
    // Asking each folder for its level would be quadratic in a deep tree.
    static std::size_t LevelAfter(const Folder* last, std::size_t lastLevel, const Folder& folder) {
        if (last == nullptr)
            return 0;
        if (folder.Parent() == last)
            return lastLevel + 1;
        for (; last->Parent() != folder.Parent(); last = last->Parent())
            --lastLevel;
        return lastLevel;
    }

    static std::size_t ExpectedBytes(const Jukebox& jukebox) {
        constexpr std::size_t kUsualLine = 48;
        std::size_t lines = 2;
        for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
             folder = jukebox.Next(folder))
            lines += folder->Songs().size() + 1;
        return lines * kUsualLine;
    }

    void WriteFolder(std::int64_t level, const Folder& folder) {
        constexpr std::string_view kKind = "folder";
        char* at = m_file.Room(kKind.size() + 3 * kLongestNumber + LongestField(folder.Text()) +
                               kLineEnd.size());
        at += kKind.copy(at, kKind.size());
        at = PutField(at, level);
        at = PutField(at, folder.Image());
        at = PutField(at, folder.SelectedImage());
        EndLine(PutField(at, folder.Text()));
    }

    // What a song needs of the catalogue is asked for while those before it are written.
    void WriteSongs(const Jukebox& jukebox, const std::vector<SongItem>& songs) {
        constexpr std::size_t kAhead = 8;
        const auto recordAhead = [&](std::size_t i, std::size_t ahead) {
            return i + ahead < songs.size() ? songs[i + ahead].recordNumber : 0;
        };
        const auto nameAhead = [&](std::size_t i, std::size_t ahead) {
            return m_records.Plain(recordAhead(i, ahead))[clsMain::kFileName - 1];
        };
        for (std::size_t i = 0; i < songs.size(); ++i) {
            PrefetchKnown(recordAhead(i, 3 * kAhead));
            m_records.PrefetchRow(recordAhead(i, 3 * kAhead));
            PrefetchPlaceOf(m_records.Plain(recordAhead(i, 2 * kAhead))[clsMain::kFolder - 1]);
            m_records.PrefetchPlace(nameAhead(i, 2 * kAhead));
            m_records.PrefetchText(nameAhead(i, kAhead));
            WriteSong(jukebox, songs[i]);
        }
    }

    void PrefetchKnown(std::int32_t record) const {
        if (record > 0 && static_cast<std::size_t>(record) < m_knownRecords.size())
            __builtin_prefetch(&m_knownRecords[static_cast<std::size_t>(record)]);
    }
    void PrefetchPlaceOf(RecordTable::CellId folder) const {
        if (folder < m_placesOfFolders.size())
            __builtin_prefetch(&m_placesOfFolders[folder]);
    }

    void WriteSong(const Jukebox& jukebox, const SongItem& item) {
        const std::int32_t number = item.recordNumber;
        Known none;
        Known& known = KnownOf(number, none);
        if (known.song != 0 && known.nameId == item.nameId) {
            WriteAgain(known.song, item);
            return;
        }
        known = {item.nameId, ++m_songs};
        const std::string_view text = jukebox.TextOf(item);
        if (item.IsMissing()) {
            const MissingSong song = jukebox.MissingSongOf(item);
            WriteSong(-song.recordNumber, item, PlaceOf(song.folder), song.fileName, text);
        } else if (number > m_records.Size()) {
            WriteSong(-number, item, PlaceOf(std::string_view()), "", text);
        } else {
            const RecordTable::PlainCells& cells = m_records.Plain(number);
            std::array<char, 10> digits{};
            WriteSong(number, item, PlaceOf(cells[clsMain::kFolder - 1]),
                      m_records.ViewOf(cells[clsMain::kFileName - 1], digits), text);
        }
    }

    // A song stands in several folders with one text: from the second time on, its line names the
    // line of the first time.
    struct Known {
        std::uint32_t nameId = 0;
        std::int32_t song = 0;  // the number of its line among the songs', from 1; 0 without
    };
    // `none` for a number of neither the catalogue nor the missing songs.
    Known& KnownOf(std::int32_t number, Known& none) {
        if (number == 0 || number > m_records.Size())
            return none;
        std::vector<Known>& known = number > 0 ? m_knownRecords : m_knownMissing;
        const auto at = static_cast<std::size_t>(std::abs(number));
        if (at >= known.size())
            known.resize(number > 0 ? static_cast<std::size_t>(m_records.Size()) + 1 : 2 * at);
        return known[at];
    }

    void WriteSong(std::int32_t number, const SongItem& item, std::int64_t place,
                   std::string_view fileName, std::string_view text) {
        constexpr std::string_view kKind = "song";
        char* at = m_file.Room(kKind.size() + 4 * kLongestNumber + LongestField(fileName) +
                               LongestField(text) + kLineEnd.size());
        at += kKind.copy(at, kKind.size());
        at = PutField(at, number);
        at = PutField(at, item.image);
        at = PutField(at, item.selectedImage);
        at = PutField(at, place);
        at = PutField(at, fileName);
        EndLine(text == fileName ? at : PutField(at, text));
    }

    void WriteAgain(std::int64_t song, const SongItem& item) {
        constexpr std::string_view kKind = "again";
        char* at = m_file.Room(kKind.size() + 3 * kLongestNumber + kLineEnd.size());
        at += kKind.copy(at, kKind.size());
        at = PutField(at, song);
        at = PutField(at, item.image);
        EndLine(PutField(at, item.selectedImage));
    }

    // The number of a folder of song files; one that is new gets its line first. The catalogue's
    // folders are known by their cells, so that no text need be looked up.
    std::int32_t PlaceOf(RecordTable::CellId folder) {
        if (RecordTable::IsNumber(folder))
            return PlaceOf(std::string_view(m_records.TextOf(folder)));
        m_placesOfFolders.resize(m_records.TextCount());
        std::int32_t& place = m_placesOfFolders[folder];
        if (place == 0) {
            std::array<char, 10> digits{};
            place = WritePlace(m_records.ViewOf(folder, digits));
        }
        return place;
    }
    std::int32_t PlaceOf(std::string_view folder) {
        std::int32_t& place = m_otherPlaces[std::string(folder)];
        if (place == 0)
            place = WritePlace(folder);
        return place;
    }
    std::int32_t WritePlace(std::string_view folder) {
        PutTextLine("place", folder);
        return ++m_places;
    }

    void PutTextLine(std::string_view kind, std::string_view text) {
        char* const at = m_file.Room(kind.size() + LongestField(text) + kLineEnd.size());
        EndLine(PutField(at + kind.copy(at, kind.size()), text));
    }

    void PutLine(std::string_view line) {
        char* const at = m_file.Room(line.size() + kLineEnd.size());
        EndLine(at + line.copy(at, line.size()));
    }

    void EndLine(char* at) {
        m_file.End(at + kLineEnd.copy(at, kLineEnd.size()));
        ++m_lines;
    }

    const RecordTable& m_records;
    std::int32_t m_places = 0;  // place lines written
    std::unordered_map<std::string, std::int32_t> m_otherPlaces;
    std::vector<std::int32_t> m_placesOfFolders;  // by text id; 0 before its place has a line
    std::vector<Known> m_knownRecords;            // by record number
    std::vector<Known> m_knownMissing;            // by the item's number, negated
    std::int32_t m_songs = 0;                     // song lines written
    ByteWriter m_file;
    std::size_t m_lines = 0;
};

}  // namespace

std::string WriteJukebox(const Jukebox& jukebox, const clsMain& catalogue) {
    return JukeboxWriter(catalogue).Write(jukebox);
}

}  // namespace tobbin
