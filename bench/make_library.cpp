// Makes a library of any size for measuring: make_library FOLDER SONGS
//
// The same number gives the same library, byte for byte. Songs lie in artist and album folders,
// about eight and a half to a folder. Each is four valid MPEG frames with a tag; one in twenty has
// none, a third has ID3v2.3 instead of ID3v1. Half of the ID3v1 tags are padded with NULs and half
// with blanks, one tag in thirty holds Latin-1 letters.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

// A small generator with a fixed sequence (SplitMix64), so that every machine makes the same files.
class Dice {
 public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t Roll(std::uint64_t sides) {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t z = m_state;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9U;
        z = (z ^ z >> 27) * 0x94D049BB133111EBU;
        return (z ^ z >> 31) % sides;
    }

 private:
    std::uint64_t m_state;
};

constexpr std::array<std::string_view, 24> kSyllables = {
    "ba", "cor", "dan", "el",  "fi", "gor", "hal", "in", "jo",  "kan", "lu",  "mor",
    "na", "ol",  "par", "qui", "ro", "sen", "ta",  "ul", "ver", "wi",  "xan", "zo"};

std::string Word(Dice& dice, std::uint64_t syllables) {
    std::string word;
    for (std::uint64_t i = 0; i < syllables; ++i)
        word += kSyllables[dice.Roll(kSyllables.size())];
    word[0] = static_cast<char>(word[0] - 'a' + 'A');
    return word;
}

// Four frames of MPEG 1 layer III, 32 kbit/s, 44.1 kHz, one channel: 104 bytes each.
std::string Frames() {
    std::string frames;
    for (int i = 0; i < 4; ++i) {
        frames += "\xFF\xFB\x10\xC0";
        frames.append(100, '\0');
    }
    return frames;
}

std::string Field(std::string text, std::size_t width, char padding) {
    text.resize(width, padding);
    return text;
}

struct Song {
    std::string title, artist, album;
};

std::string Tag(Dice& dice, const Song& song, std::uint64_t year) {
    const char padding = dice.Roll(2) == 0 ? '\0' : ' ';
    std::string tag = "TAG";
    tag += Field(song.title, 30, padding);
    tag += Field(song.artist, 30, padding);
    tag += Field(song.album, 30, padding);
    tag += Field(std::to_string(year), 4, padding);
    tag += Field("", 30, padding);
    tag.push_back(static_cast<char>(dice.Roll(148)));
    return tag;
}

// A text frame of ID3v2.3: name, size, flags, encoding 0, text.
std::string TextFrame(std::string_view name, const std::string& text) {
    const std::size_t size = text.size() + 1;
    std::string frame(name);
    for (int shift = 24; shift >= 0; shift -= 8)
        frame.push_back(static_cast<char>(size >> shift));
    return frame + std::string(3, '\0') + text;
}

// Its size is written in bytes of seven bits; a kilobyte of padding follows the frames.
std::string NewTag(Dice& dice, const Song& song, std::uint64_t year) {
    const std::string frames =
        TextFrame("TIT2", song.title) + TextFrame("TPE1", song.artist) +
        TextFrame("TALB", song.album) + TextFrame("TYER", std::to_string(year)) +
        TextFrame("TCON", "(" + std::to_string(dice.Roll(148)) + ")") + std::string(1024, '\0');
    std::string tag("ID3\x03\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7)
        tag.push_back(static_cast<char>(frames.size() >> shift & 0x7F));
    return tag + frames;
}

bool WriteSong(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.good();
}

bool MakeLibrary(const std::filesystem::path& root, std::uint64_t songs) {
    Dice dice(songs);
    const std::string frames = Frames();
    std::string artist;
    std::uint64_t albumsLeft = 0;
    for (std::uint64_t made = 0; made < songs;) {
        if (albumsLeft == 0) {
            artist = Word(dice, 2 + dice.Roll(2)) + " " + Word(dice, 2);
            if (dice.Roll(30) == 0)
                artist += " Caf\xE9";
            albumsLeft = 1 + dice.Roll(5);
        }
        --albumsLeft;
        const std::string album = Word(dice, 3) + " " + std::to_string(made);
        const std::uint64_t year = 1920 + dice.Roll(105);
        // Folder names stay within ASCII, so that every file system takes them.
        const std::filesystem::path folder = root / artist.substr(0, artist.find(" Caf")) / album;
        std::filesystem::create_directories(folder);
        const std::uint64_t end = std::min(songs, made + 3 + dice.Roll(12));
        for (; made < end; ++made) {
            const std::string title = Word(dice, 2 + dice.Roll(3));
            std::string bytes = frames;
            const std::uint64_t kind = dice.Roll(60);
            if (kind < 20)
                bytes.insert(0, NewTag(dice, {title, artist, album}, year));
            else if (kind < 57)
                bytes += Tag(dice, {title, artist, album}, year);
            const std::string name = std::to_string(made) + " " + title + ".mp3";
            if (!WriteSong(folder / name, bytes))
                return false;
        }
    }
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: make_library FOLDER SONGS\n");
        return 2;
    }
    if (!MakeLibrary(arguments[1], std::strtoull(arguments[2], nullptr, 10))) {
        std::fprintf(stderr, "%s: a song can't be written\n", arguments[1]);
        return 1;
    }
    return 0;
}
