#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"

namespace tobbin {
namespace {

// Writes the lines. The folder of a song file gets a line of its own before its first song.
class JukeboxWriter {
 public:
    explicit JukeboxWriter(const clsMain& catalogue) : m_catalogue(catalogue) {}

    std::string Write(const Jukebox& jukebox) {
        m_bytes = std::string(kJukeboxFirstWords) + std::to_string(kJukeboxFileVersion);
        EndLine();
        for (const std::string& column : jukebox.Columns()) {
            m_bytes += "column";
            AppendField(m_bytes, column);
            EndLine();
        }
        std::size_t level = 0;
        const Folder* last = nullptr;
        for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
             last = folder, folder = jukebox.Next(folder)) {
            level = LevelAfter(last, level, *folder);
            m_bytes += "folder";
            AppendField(m_bytes, static_cast<std::int64_t>(level));
            AppendField(m_bytes, folder->Image());
            AppendField(m_bytes, folder->SelectedImage());
            AppendField(m_bytes, folder->Text());
            EndLine();
            for (const SongItem& song : folder->Songs())
                WriteSong(jukebox, song);
        }
        m_bytes += JukeboxEndLine(m_lines, m_bytes);
        EndLine();
        return std::move(m_bytes);
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

    void WriteSong(const Jukebox& jukebox, const SongItem& item) {
        const std::string_view text = jukebox.TextOf(item);
        const std::int32_t number = item.recordNumber;
        if (item.IsMissing()) {
            const MissingSong song = jukebox.MissingSongOf(item);
            WriteSong(song.recordNumber, item, std::string(song.folder), song.fileName, text);
        } else if (number > m_catalogue.UBoundOfMp3Array()) {
            WriteSong(number, item, "", "", text);
        } else {
            WriteCatalogueSong(number, item, text);
        }
    }

    void WriteCatalogueSong(std::int32_t number, const SongItem& item, std::string_view text) {
        m_ends.resize(static_cast<std::size_t>(m_catalogue.UBoundOfMp3Array()) + 1);
        LineEnding& last = m_ends[static_cast<std::size_t>(number)];
        if (last.length > 0 && last.nameId == item.nameId) {
            BeginSong(number, item);
            m_bytes.append(m_bytes, last.offset, last.length);
            EndLine();
        } else {
            last = WriteSong(number, item, m_catalogue.Mp3Info(clsMain::kFolder, number),
                             m_catalogue.Mp3Info(clsMain::kFileName, number), text);
        }
    }

    // A song stands in several folders with one text: from the second time on, the part of the line
    // from the place on is copied from where it was first written.
    struct LineEnding {
        std::uint32_t nameId = 0;
        std::size_t offset = 0;
        std::size_t length = 0;
    };

    LineEnding WriteSong(std::int32_t number, const SongItem& item, const std::string& folder,
                         std::string_view fileName, std::string_view text) {
        const auto [place, isNew] =
            m_places.try_emplace(folder, static_cast<std::int64_t>(m_places.size()) + 1);
        if (isNew) {
            m_bytes += "place";
            AppendField(m_bytes, folder);
            EndLine();
        }
        BeginSong(number, item);
        const std::size_t offset = m_bytes.size();
        AppendField(m_bytes, place->second);
        AppendField(m_bytes, fileName);
        if (text != fileName)
            AppendField(m_bytes, text);
        const std::size_t length = m_bytes.size() - offset;
        EndLine();
        return {item.nameId, offset, length};
    }

    void BeginSong(std::int32_t number, const SongItem& item) {
        m_bytes += "song";
        AppendField(m_bytes, number);
        AppendField(m_bytes, item.image);
        AppendField(m_bytes, item.selectedImage);
    }

    void EndLine() {
        m_bytes += kLineEnd;
        ++m_lines;
    }

    const clsMain& m_catalogue;
    std::unordered_map<std::string, std::int64_t> m_places;
    std::vector<LineEnding> m_ends;  // by record number
    std::string m_bytes;
    std::size_t m_lines = 0;
};

}  // namespace

std::string WriteJukebox(const Jukebox& jukebox, const clsMain& catalogue) {
    return JukeboxWriter(catalogue).Write(jukebox);
}

}  // namespace tobbin
