#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
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
    JukeboxReader(std::string_view bytes, const clsMain& catalogue, const SystemText& text)
        : m_bytes(bytes), m_lines(bytes), m_finder(catalogue, text) {}

    // What is wrong, as the end of a sentence; nothing when the whole file was read.
    std::optional<std::string> MaybeFault(Jukebox& jukebox) {
        if (auto fault = FirstLineFault())
            return fault;
        while (m_lines.Next()) {
            const std::string_view kind = m_lines.Fields().front();
            std::optional<std::string> fault;
            if (kind == "end")
                return EndFault(jukebox);
            if (kind == "song")
                fault = SongFault(jukebox);
            else if (kind == "place")
                fault = PlaceFault();
            else if (kind == "folder")
                fault = FolderFault(jukebox);
            else if (kind == "column")
                fault = ColumnFault(jukebox);
            else
                fault = "it is no line that Tobbin writes";
            if (fault)
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

    std::optional<std::string> ColumnFault(Jukebox& jukebox) {
        if (m_lines.Fields().size() != 2)
            return WrongFields();
        const auto heading = MaybeUnescape(m_lines.Fields()[1]);
        if (!heading)
            return WrongText();
        jukebox.AddColumn(*heading);
        return std::nullopt;
    }

    std::optional<std::string> PlaceFault() {
        if (m_lines.Fields().size() != 2)
            return WrongFields();
        auto place = MaybeUnescape(m_lines.Fields()[1]);
        if (!place)
            return WrongText();
        m_places.push_back(std::move(*place));
        return std::nullopt;
    }

    std::optional<std::string> FolderFault(Jukebox& jukebox) {
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
        TakeSongs(jukebox);
        m_path.resize(depth);
        Folder* const parent = m_path.empty() ? nullptr : m_path.back();
        m_path.push_back(&jukebox.AddChild(parent, std::move(*text), *image, *selectedImage));
        return std::nullopt;
    }

    std::optional<std::string> SongFault(Jukebox& jukebox) {
        const std::size_t fields = m_lines.Fields().size();
        if (fields != 6 && fields != 7)
            return WrongFields();
        if (m_path.empty())
            return "its song stands in no folder";
        const auto number = m_lines.MaybeNumber(1, -kMostNumber, kMostNumber);
        const auto image = m_lines.MaybeNumber(2, -128, 127);
        const auto selectedImage = m_lines.MaybeNumber(3, -128, 127);
        if (!number || !image || !selectedImage)
            return WrongNumber();
        SongItem item;
        if (auto fault = ItemFault(jukebox, *number, item))
            return fault;
        item.image = static_cast<std::int8_t>(*image);
        item.selectedImage = static_cast<std::int8_t>(*selectedImage);
        m_songs.push_back(item);
        return std::nullopt;
    }

    // A song stands in several folders: from its second time on it is known by the part of its line
    // from the place on.
    std::optional<std::string> ItemFault(Jukebox& jukebox, std::int32_t number, SongItem& item) {
        const char* const start = m_lines.Fields()[4].data();
        const std::string_view ending(
            start, static_cast<std::size_t>(m_lines.Line().data() + m_lines.Line().size() - start));
        Known& known = m_known[number];
        if (known.ending != ending) {
            SongItem made;
            if (auto fault = NewItemFault(jukebox, number, made))
                return fault;
            if (made.IsMissing()) {  // Each has its own entry of what is kept.
                item = made;
                return std::nullopt;
            }
            known = {ending, made};
        }
        item = known.item;
        return std::nullopt;
    }

    std::optional<std::string> NewItemFault(Jukebox& jukebox, std::int32_t number, SongItem& item) {
        const auto place = m_lines.MaybeNumber(4, 1, kMostNumber);
        if (!place || static_cast<std::size_t>(*place) > m_places.size())
            return WrongNumber();
        const auto fileName = MaybeUnescape(m_lines.Fields()[5]);
        const auto text =
            m_lines.Fields().size() == 7 ? MaybeUnescape(m_lines.Fields()[6]) : fileName;
        if (!fileName || !text)
            return WrongText();
        const std::string& folder = m_places[static_cast<std::size_t>(*place) - 1];
        const std::int32_t record = m_finder.RecordOf(number, folder, *fileName);
        item = record != 0 ? jukebox.MakeItem(*text, record, 0)
                           : jukebox.MakeMissingItem(*text, {number, folder, *fileName}, 0);
        return std::nullopt;
    }

    std::optional<std::string> EndFault(Jukebox& jukebox) {
        if (m_lines.Line() !=
            JukeboxEndLine(m_lines.Number() - 1, m_bytes.substr(0, m_lines.Offset())))
            return "the file was altered: what it says of the lines before it is not so";
        if (m_lines.Next() || m_lines.IsCutShort())
            return "the file should have ended before it";
        TakeSongs(jukebox);
        return std::nullopt;
    }

    void TakeSongs(Jukebox& jukebox) {
        if (!m_songs.empty())
            jukebox.SetSongs(*m_path.back(), std::exchange(m_songs, {}));
    }

    static std::string WrongFields() { return "it has not the number of fields that it must have"; }
    static std::string WrongNumber() { return "a number in it is none, or out of range"; }
    static std::string WrongText() { return "a text in it holds a character that can't be"; }

    struct Known {
        std::string_view ending;
        SongItem item;
    };

    std::string_view m_bytes;
    JukeboxLines m_lines;
    SongFinder m_finder;
    std::vector<Folder*> m_path;  // the last folder and those above it, from the top
    std::vector<std::string> m_places;
    std::vector<SongItem> m_songs;                    // of the last folder
    std::unordered_map<std::int32_t, Known> m_known;  // by the number in the file
};

}  // namespace

LoadResult ReadJukebox(std::string_view bytes, const std::string& path, const clsMain& catalogue,
                       const SystemText& text, std::unique_ptr<Jukebox>& jukebox) {
    jukebox = std::make_unique<Jukebox>();
    JukeboxReader reader(bytes, catalogue, text);
    if (const auto fault = reader.MaybeFault(*jukebox)) {
        jukebox.reset();
        return {LoadOutcome::Damaged, "The jukebox \"" + path + "\" was not opened: in line " +
                                          std::to_string(reader.LineNumber()) + ", " + *fault +
                                          "."};
    }
    jukebox->IsFormDirty(false);
    return {};
}

}  // namespace tobbin
