#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/SongIdentity.h"
#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"
#include "jukebox/MovedSongs.h"
#include "util/Convert.h"

namespace tobbin {
namespace {

constexpr std::int32_t kMostNumber = std::numeric_limits<std::int32_t>::max();

// What is wrong with a line, as the end of a sentence; nothing when it was read.
using MaybeError = std::optional<std::string>;

// Reads the lines into a jukebox. Anything that the writer would not have written is an error.
class JukeboxReader {
 public:
    JukeboxReader(std::string_view bytes, const clsMain& catalogue, Jukebox& jukebox)
        : m_bytes(bytes),
          m_lines(bytes),
          m_catalogue(catalogue),
          m_identity(catalogue),
          m_jukebox(jukebox) {}

    MaybeError Read() {
        if (auto error = ReadFirstLine())
            return error;
        while (m_lines.Next()) {
            if (m_lines.Kind() == "end")
                return ReadEnd();
            if (auto error = ReadLine())
                return error;
        }
        return m_lines.IsCutShort() ? "the file is cut in it"
                                    : "the file is cut behind it: its last line is missing";
    }
    std::size_t LineNumber() const { return std::max<std::size_t>(m_lines.Number(), 1); }

 private:
    MaybeError ReadFirstLine() {
        if (!m_bytes.starts_with(kJukeboxFirstWords) || !m_lines.Next())
            return "it is not the first line of a jukebox";
        const std::string_view version = m_lines.Line().substr(kJukeboxFirstWords.size());
        // A version 2 would get a reader of its own, chosen here; this one stays for version 1.
        if (version == std::to_string(kJukeboxFileVersion))
            return std::nullopt;
        const auto number = MaybeToLong(version);
        if (number && *number > kJukeboxFileVersion)
            return "a newer Tobbin wrote it in version " + std::string(version) +
                   ", and this one reads versions up to " + std::to_string(kJukeboxFileVersion);
        return "it gives no version of a jukebox";
    }

    MaybeError ReadLine() {
        const std::string_view kind = m_lines.Kind();
        if (kind == "song")
            return ReadSong();
        if (kind == "again")
            return ReadAgain();
        if (kind == "place")
            return ReadPlace();
        if (kind == "folder")
            return ReadFolder();
        if (kind == "column")
            return ReadColumn();
        return "it is no line that Tobbin writes";
    }

    MaybeError ReadColumn() {
        if (m_lines.FieldCount() != 2)
            return WrongFields();
        const auto heading = m_lines.MaybeText(1);
        if (!heading)
            return WrongText();
        if (m_jukebox.Columns().size() == kListColumns)
            return "the list has no more columns than " + std::to_string(kListColumns);
        m_jukebox.AddColumn(*heading);
        return std::nullopt;
    }

    MaybeError ReadPlace() {
        if (m_lines.FieldCount() != 2)
            return WrongFields();
        auto place = m_lines.MaybeText(1);
        if (!place)
            return WrongText();
        m_places.push_back(*std::move(place));
        return std::nullopt;
    }

    MaybeError ReadFolder() {
        if (m_lines.FieldCount() != 5)
            return WrongFields();
        const auto level = m_lines.MaybeNumber(1, 0, kMostNumber);
        const auto image = m_lines.MaybeNumber(2, -kMostNumber, kMostNumber);
        const auto selectedImage = m_lines.MaybeNumber(3, -kMostNumber, kMostNumber);
        if (!level || !image || !selectedImage)
            return WrongNumber();
        auto text = m_lines.MaybeText(4);
        if (!text)
            return WrongText();
        const auto depth = static_cast<std::size_t>(*level);
        if (depth > m_path.size())
            return "its folder has none above it";
        GiveSongs();
        m_path.resize(depth);
        Folder* const parent = m_path.empty() ? nullptr : m_path.back();
        m_path.push_back(&m_jukebox.AddChild(parent, *std::move(text), *image, *selectedImage));
        return std::nullopt;
    }

    MaybeError ReadSong() {
        const std::size_t fields = m_lines.FieldCount();
        if (fields != 6 && fields != 7)
            return WrongFields();
        const auto number = m_lines.MaybeNumber(1, -kMostNumber, kMostNumber);
        const auto place = m_lines.MaybeNumber(4, 1, kMostNumber);
        if (!number || !place || static_cast<std::size_t>(*place) > m_places.size())
            return WrongNumber();
        const auto fileName = m_lines.MaybeText(5);
        const auto ownText = fields == 7 ? m_lines.MaybeText(6) : std::string();
        if (!fileName || !ownText)
            return WrongText();
        m_known.push_back(FindSong(*number, m_places[static_cast<std::size_t>(*place) - 1],
                                   *fileName, fields == 7 ? *ownText : *fileName));
        return TakeSong(m_known.back());
    }

    MaybeError ReadAgain() {
        if (m_lines.FieldCount() != 4)
            return WrongFields();
        const auto song = m_lines.MaybeNumber(1, 1, kMostNumber);
        if (!song || static_cast<std::size_t>(*song) > m_known.size())
            return WrongNumber();
        return TakeSong(m_known[static_cast<std::size_t>(*song) - 1]);
    }

    MaybeError ReadEnd() {
        if (m_lines.Line() !=
            JukeboxEndLine(m_lines.Number() - 1, m_bytes.substr(0, m_lines.Offset())))
            return "the file was altered: what it says of the lines before it is not so";
        if (m_lines.Next() || m_lines.IsCutShort())
            return "the file should have ended before it";
        GiveSongs();
        return std::nullopt;
    }

    // Puts a song with the line's images, its fields 2 and 3, into the last folder.
    MaybeError TakeSong(SongItem song) {
        const auto image = m_lines.MaybeNumber(2, kLeastImage, kMostImage);
        const auto selectedImage = m_lines.MaybeNumber(3, kLeastImage, kMostImage);
        if (!image || !selectedImage)
            return WrongNumber();
        if (m_path.empty())
            return "its song stands in no folder";
        song.image = static_cast<std::int8_t>(*image);
        song.selectedImage = static_cast<std::int8_t>(*selectedImage);
        m_songs.push_back(song);
        return std::nullopt;
    }

    // A song that was missing already when the file was written has its number negated.
    SongItem FindSong(std::int32_t number, std::string_view folder, std::string_view fileName,
                      std::string_view text) {
        const std::int32_t record = m_identity.RecordOf(std::abs(number), folder, fileName);
        if (record != 0 && record != std::abs(number))
            m_jukebox.AddSongMove({std::abs(number), record});
        if ((record != 0) != (number > 0))
            m_jukebox.SongsCameOrWent(true);
        return record != 0
                   ? ItemOf(m_jukebox, m_catalogue, record, text, 0)
                   : m_jukebox.MakeMissingItem(text, {std::abs(number), folder, fileName}, 0);
    }

    void GiveSongs() {
        if (!m_songs.empty())
            m_jukebox.SetSongs(*m_path.back(), m_songs);
        m_songs.clear();
    }

    static std::string WrongFields() { return "it has not the number of fields that it must have"; }
    static std::string WrongNumber() { return "a number in it is none, or out of range"; }
    static std::string WrongText() { return "a text in it holds a character that can't be"; }

    static constexpr std::int32_t kLeastImage = -128;
    static constexpr std::int32_t kMostImage = 127;

    std::string_view m_bytes;
    JukeboxLines m_lines;
    const clsMain& m_catalogue;
    SongIdentity m_identity;
    Jukebox& m_jukebox;
    std::vector<Folder*> m_path;  // the last folder and those above it, from the top
    std::vector<std::string> m_places;
    std::vector<SongItem> m_songs;  // of the last folder
    std::vector<SongItem> m_known;  // of each song line
};

}  // namespace

LoadResult ReadJukebox(std::string_view bytes, const std::string& path, const clsMain& catalogue,
                       std::unique_ptr<Jukebox>& jukebox) {
    jukebox = std::make_unique<Jukebox>();
    JukeboxReader reader(bytes, catalogue, *jukebox);
    if (const auto error = reader.Read()) {
        jukebox.reset();
        return {LoadOutcome::Damaged, "The jukebox \"" + path + "\" was not opened: in line " +
                                          std::to_string(reader.LineNumber()) + ", " + *error +
                                          "."};
    }
    KeepMovedSongsOnce(*jukebox);
    jukebox->IsFormDirty(false);
    return {};
}

}  // namespace tobbin
