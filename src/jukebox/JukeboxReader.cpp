#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"
#include "jukebox/SongFinder.h"
#include "util/Convert.h"

namespace tobbin {
namespace {

constexpr std::int32_t kMostNumber = std::numeric_limits<std::int32_t>::max();

// Reads the lines into a jukebox. Anything that the writer would not have written is damage.
class JukeboxReader {
 public:
    // The bytes are kept by the jukebox.
    JukeboxReader(std::string_view bytes, const clsMain& catalogue, const SystemText& text,
                  Jukebox& jukebox)
        : m_bytes(bytes),
          m_lines(bytes),
          m_records(catalogue.Records()),
          m_finder(catalogue, text),
          m_jukebox(jukebox) {
        m_known.reserve(bytes.size() / kUsualLine);
    }

    // What is wrong, as the end of a sentence; nothing when the whole file was read.
    std::optional<std::string> MaybeFault() {
        if (auto fault = FirstLineFault())
            return fault;
        while (true) {
            if (auto fault = UsualLinesFault())
                return fault;
            if (!m_lines.Next())
                break;
            const std::string_view kind = m_lines.Fields().front();
            if (kind == "end")
                return EndFault();
            if (auto fault = LineFault(kind))
                return fault;
        }
        return m_lines.IsCutShort() ? "the file is cut in it"
                                    : "the file is cut behind it: its last line is missing";
    }
    std::size_t LineNumber() const { return std::max<std::size_t>(m_lines.Number(), 1); }

 private:
    std::optional<std::string> FirstLineFault() {
        if (!m_bytes.starts_with(kJukeboxFirstWords) || !m_lines.Next())
            return "it is not the first line of a jukebox";
        const std::string_view version = m_lines.Line().substr(kJukeboxFirstWords.size());
        if (version == std::to_string(kJukeboxFileVersion))
            return std::nullopt;
        const auto number = MaybeToLong(version);
        if (number && *number > kJukeboxFileVersion)
            return "a newer Tobbin wrote it in version " + std::string(version) +
                   ", and this one reads versions up to " + std::to_string(kJukeboxFileVersion);
        return "it gives no version of a jukebox";
    }

    // Takes the songs of the usual kind, and their places, as long as nothing else comes.
    std::optional<std::string> UsualLinesFault() {
        AgainLine again;
        std::string_view place;
        while (true) {
            if (m_awaitingCount == kGroup)
                FindSongs();
            if (m_lines.TakeSong(m_awaiting[m_awaitingCount])) {
                if (auto fault = PlainSongFault(m_awaiting[m_awaitingCount]))
                    return fault;
            } else if (m_lines.TakeAgain(again)) {
                if (auto fault = PlainAgainFault(again))
                    return fault;
            } else if (m_lines.TakePlace(place)) {
                m_places.push_back({place, std::nullopt});
            } else {
                return std::nullopt;
            }
        }
    }

    std::optional<std::string> LineFault(std::string_view kind) {
        if (kind == "song")
            return SongFault();
        if (kind == "again")
            return AgainFault();
        if (kind == "place")
            return PlaceFault();
        if (kind == "folder")
            return FolderFault();
        if (kind == "column")
            return ColumnFault();
        return "it is no line that Tobbin writes";
    }

    std::optional<std::string> ColumnFault() {
        if (m_lines.Fields().size() != 2)
            return WrongFields();
        const auto heading = MaybeUnescape(m_lines.Fields()[1]);
        if (!heading)
            return WrongText();
        m_jukebox.AddColumn(*heading);
        return std::nullopt;
    }

    std::optional<std::string> PlaceFault() {
        if (m_lines.Fields().size() != 2)
            return WrongFields();
        auto place = MaybeUnescape(m_lines.Fields()[1]);
        if (!place)
            return WrongText();
        m_places.push_back({m_unescaped.emplace_back(std::move(*place)), std::nullopt});
        return std::nullopt;
    }

    std::optional<std::string> FolderFault() {
        if (m_lines.Fields().size() != 5)
            return WrongFields();
        const auto level = m_lines.MaybeNumber(1, 0, kMostNumber);
        const auto image = m_lines.MaybeNumber(2, -kMostNumber, kMostNumber);
        const auto selectedImage = m_lines.MaybeNumber(3, -kMostNumber, kMostNumber);
        if (!level || !image || !selectedImage)
            return WrongNumber();
        auto text = MaybeUnescape(m_lines.Fields()[4]);
        if (!text)
            return WrongText();
        const auto depth = static_cast<std::size_t>(*level);
        if (depth > m_path.size())
            return "its folder has none above it";
        GiveSongs();
        m_path.resize(depth);
        Folder* const parent = m_path.empty() ? nullptr : m_path.back();
        m_path.push_back(&m_jukebox.AddChild(parent, std::move(*text), *image, *selectedImage));
        return std::nullopt;
    }

    // The song waits until its group is looked up in the catalogue.
    std::optional<std::string> PlainSongFault(const SongLine& line) {
        if (m_path.empty())
            return NoFolder();
        if (!IsImage(line.image) || !IsImage(line.selectedImage) || !IsPlace(line.place))
            return WrongNumber();
        ++m_awaitingCount;
        Take(m_known.emplace_back(), line.image, line.selectedImage);
        return std::nullopt;
    }

    std::optional<std::string> PlainAgainFault(const AgainLine& line) {
        if (m_path.empty())
            return NoFolder();
        const auto song = static_cast<std::size_t>(line.song) - 1;
        if (!IsImage(line.image) || !IsImage(line.selectedImage) || song >= m_known.size())
            return WrongNumber();
        FindSongs();
        Take(m_known[song], line.image, line.selectedImage);
        return std::nullopt;
    }

    std::optional<std::string> SongFault() {
        const std::size_t fields = m_lines.Fields().size();
        if (fields != 6 && fields != 7)
            return WrongFields();
        if (m_path.empty())
            return NoFolder();
        const auto number = m_lines.MaybeNumber(1, -kMostNumber, kMostNumber);
        const auto image = m_lines.MaybeNumber(2, kLeastImage, kMostImage);
        const auto selectedImage = m_lines.MaybeNumber(3, kLeastImage, kMostImage);
        const auto place = m_lines.MaybeNumber(4, 1, kMostNumber);
        if (!number || !image || !selectedImage || !place || !IsPlace(*place))
            return WrongNumber();
        const auto fileName = MaybeUnescape(m_lines.Fields()[5]);
        const auto text = fields == 7 ? MaybeUnescape(m_lines.Fields()[6]) : fileName;
        if (!fileName || !text)
            return WrongText();
        FindSongs();
        m_known.push_back(Found(*number, m_places[static_cast<std::size_t>(*place) - 1].folder,
                                *fileName, *text));
        Take(m_known.back(), *image, *selectedImage);
        return std::nullopt;
    }

    std::optional<std::string> AgainFault() {
        if (m_lines.Fields().size() != 4)
            return WrongFields();
        const auto song = m_lines.MaybeNumber(1, 1, kMostNumber);
        const auto image = m_lines.MaybeNumber(2, kLeastImage, kMostImage);
        const auto selectedImage = m_lines.MaybeNumber(3, kLeastImage, kMostImage);
        if (!song || !image || !selectedImage)
            return WrongNumber();
        return PlainAgainFault({*song, *image, *selectedImage});
    }

    std::optional<std::string> EndFault() {
        if (m_lines.Line() !=
            JukeboxEndLine(m_lines.Number() - 1, m_bytes.substr(0, m_lines.Offset())))
            return "the file was altered: what it says of the lines before it is not so";
        if (m_lines.Next() || m_lines.IsCutShort())
            return "the file should have ended before it";
        GiveSongs();
        return std::nullopt;
    }

    void Take(const SongItem& song, std::int32_t image, std::int32_t selectedImage) {
        m_songs.push_back({song.nameId, song.recordNumber, static_cast<std::int8_t>(image),
                           static_cast<std::int8_t>(selectedImage)});
    }

    // Finds the waiting songs, which are the last known ones and the last in the folder. What each
    // needs of the catalogue is asked for in advance, in the order in which one leads to the other.
    void FindSongs() {
        const auto awaiting = std::span(m_awaiting).first(m_awaitingCount);
        for (const SongLine& line : awaiting)
            m_records.PrefetchRow(line.number);
        for (const SongLine& line : awaiting) {
            m_records.PrefetchPlace(NameOf(line));
            if (!PlaceOf(line).id)
                m_records.PrefetchPlace(FolderOf(line));
        }
        for (const SongLine& line : awaiting) {
            m_records.PrefetchText(NameOf(line));
            if (!PlaceOf(line).id)
                m_records.PrefetchText(FolderOf(line));
        }
        SongItem* known = m_known.data() + (m_known.size() - awaiting.size());
        SongItem* song = m_songs.data() + (m_songs.size() - awaiting.size());
        for (const SongLine& line : awaiting) {
            FindSong(line, *known);
            song->nameId = known->nameId;
            song->recordNumber = known->recordNumber;
            ++known;
            ++song;
        }
        m_awaitingCount = 0;
    }

    void FindSong(const SongLine& line, SongItem& item) {
        Place& place = PlaceOf(line);
        const auto offset = static_cast<std::size_t>(line.fileName.data() - m_bytes.data());
        if (line.fileName.empty() || !Jukebox::CanBeInFile(offset)) {
            item = Found(line.number, place.folder, line.fileName, line.fileName);
            return;
        }
        std::array<char, 10> digits{};
        if (!place.id && m_records.ViewOf(FolderOf(line), digits) == place.folder)
            place.id = FolderOf(line);
        if (place.id == FolderOf(line) && m_records.ViewOf(NameOf(line), digits) == line.fileName)
            item.recordNumber = line.number;
        else
            item = Found(line.number, place.folder, line.fileName, {});
        item.nameId = Jukebox::NameInFile(offset);
    }

    // A song that was missing already when the file was written has its number negated.
    SongItem Found(std::int32_t number, std::string_view folder, std::string_view fileName,
                   std::string_view text) {
        const std::int32_t record = m_finder.RecordOf(std::abs(number), folder, fileName);
        if ((record != 0) != (number > 0))
            m_jukebox.SongsCameOrWent(true);
        return record != 0
                   ? m_jukebox.MakeItem(text, record, 0)
                   : m_jukebox.MakeMissingItem(text, {std::abs(number), folder, fileName}, 0);
    }

    void GiveSongs() {
        FindSongs();
        if (!m_songs.empty())
            m_jukebox.SetSongs(*m_path.back(), {m_songs.begin(), m_songs.end()});
        m_songs.clear();
    }

    // What the catalogue has under a song's number; the empty text where it has no such record.
    RecordTable::CellId NameOf(const SongLine& line) const {
        return m_records.Plain(line.number)[clsMain::kFileName - 1];
    }
    RecordTable::CellId FolderOf(const SongLine& line) const {
        return m_records.Plain(line.number)[clsMain::kFolder - 1];
    }

    // A folder of song files, and what the catalogue calls it, once that is known.
    struct Place {
        std::string_view folder;
        std::optional<RecordTable::CellId> id;
    };
    Place& PlaceOf(const SongLine& line) {
        return m_places[static_cast<std::size_t>(line.place) - 1];
    }
    bool IsPlace(std::int32_t number) const {
        return number >= 1 && static_cast<std::size_t>(number) <= m_places.size();
    }
    static bool IsImage(std::int32_t number) {
        return number >= kLeastImage && number <= kMostImage;
    }

    static std::string WrongFields() { return "it has not the number of fields that it must have"; }
    static std::string WrongNumber() { return "a number in it is none, or out of range"; }
    static std::string WrongText() { return "a text in it holds a character that can't be"; }

    static std::string NoFolder() { return "its song stands in no folder"; }

    static constexpr std::int32_t kLeastImage = -128;
    static constexpr std::int32_t kMostImage = 127;
    static constexpr std::size_t kGroup = 64;      // of songs that are looked up together
    static constexpr std::size_t kUsualLine = 24;  // bytes of a song's line, or more

    std::string_view m_bytes;
    JukeboxLines m_lines;
    const RecordTable& m_records;
    SongFinder m_finder;
    Jukebox& m_jukebox;
    std::vector<Folder*> m_path;  // the last folder and those above it, from the top
    std::vector<Place> m_places;
    std::deque<std::string> m_unescaped;
    std::vector<SongItem> m_songs;            // of the last folder
    std::vector<SongItem> m_known;            // of each song line
    std::array<SongLine, kGroup> m_awaiting;  // of the last song lines, those still to be found
    std::size_t m_awaitingCount = 0;
};

}  // namespace

LoadResult ReadJukebox(std::string bytes, const std::string& path, const clsMain& catalogue,
                       const SystemText& text, std::unique_ptr<Jukebox>& jukebox) {
    jukebox = std::make_unique<Jukebox>();
    const std::string_view kept = jukebox->KeepFile(std::move(bytes));
    JukeboxReader reader(kept, catalogue, text, *jukebox);
    if (const auto fault = reader.MaybeFault()) {
        jukebox.reset();
        return {LoadOutcome::Damaged, "The jukebox \"" + path + "\" was not opened: in line " +
                                          std::to_string(reader.LineNumber()) + ", " + *fault +
                                          "."};
    }
    jukebox->IsFormDirty(false);
    return {};
}

}  // namespace tobbin
