#include "tags/MP3TagEditor.h"

#include <algorithm>

#include "util/Text.h"

namespace tobbin {
namespace {

// The ids 0 to 147 in order: the ID3v1 list with its usual extension, in this program's spelling.
constexpr std::array<const char*, 148> kNames = {
    "Blues",
    "Classic Rock",
    "Country",
    "Dance",
    "Disco",
    "Funk",
    "Grunge",
    "Hip Hop",
    "Jazz",
    "Metal",
    "New Age",
    "Oldies",
    "Other",
    "Pop",
    "Rhythm and Blues",
    "Rap",
    "Reggae",
    "Rock",
    "Techno",
    "Industrial",
    "Alternative",
    "Ska",
    "DeathMetal",
    "Pranks",
    "Soundtrack",
    "Euro Techno",
    "Ambient",
    "Trip Hop",
    "Vocal",
    "Jazz Funk",
    "Fusion",
    "Trance",
    "Classical",
    "Instrumental",
    "Acid",
    "House",
    "Game",
    "Sound Clip",
    "Gospel",
    "Noise",
    "Alternative Rock",
    "Bass",
    "Soul",
    "Punk",
    "Space",
    "Meditative",
    "Instrumental Pop",
    "Instrumental Rock",
    "Ethnic",
    "Gothic",
    "Darkwave",
    "Techno Industrial",
    "Electronic",
    "Pop Folk",
    "Eurodance",
    "Dream",
    "Southern Rock",
    "Comedy",
    "Cult",
    "Gangsta",
    "Top 40",
    "Christian Rap",
    "Pop Funk",
    "Jungle",
    "Native American",
    "Cabaret",
    "New Wave",
    "Psychadelic",
    "Rave",
    "Show Tunes",
    "Trailer",
    "Lo Fi",
    "Tribal",
    "Acid Punk",
    "Acid Jazz",
    "Polka",
    "Retro",
    "Musical",
    "Rock n Roll",
    "Hard Rock",
    "Folk",
    "Folk Rock",
    "National Folk",
    "Swing",
    "Fast Fusion",
    "Bebob",
    "Latin",
    "Revival",
    "Celtic",
    "Bluegrass",
    "Avantgarde",
    "Gothic Rock",
    "Progressive Rock",
    "Psychedelic Rock",
    "Symphonic Rock",
    "Slow Rock",
    "Big Band",
    "Chorus",
    "Easy Listening",
    "Acoustic",
    "Humour",
    "Speech",
    "Chanson",
    "Opera",
    "Chamber Music",
    "Sonata",
    "Symphony",
    "Booty Bass",
    "Primus",
    "Porn Groove",
    "Satire",
    "Slow Jam",
    "Club",
    "Tango",
    "Samba",
    "Folklore",
    "Ballad",
    "Power Ballad",
    "Rhytmic Soul",
    "Freestyle",
    "Duet",
    "Punk Rock",
    "Drum Solo",
    "Acapella",
    "Euro House",
    "Dance Hall",
    "Goa",
    "Drum n Bass",
    "Club House",
    "Hardcore",
    "Terror",
    "Indie",
    "Brit Pop",
    "Negerpunk",
    "Polsk Punk",
    "Beat",
    "Christian Gangsta Rap",
    "Heavy Metal",
    "Black Metal",
    "Crossover",
    "Contemporary Christian",
    "Christian Rock",
    "Merengue",
    "Salsa",
    "Trash Metal",
    "Anime",
    "J Pop",
    "Synth Pop",
};

std::vector<MP3Genra> AllGenres() {
    std::vector<MP3Genra> genres;
    for (std::size_t id = 0; id < kNames.size(); ++id)
        genres.emplace_back(kNames[id], static_cast<std::int16_t>(id));
    genres.emplace_back("None", MP3TagEditor::kNoGenra);
    return genres;
}

}  // namespace

const std::vector<MP3Genra>& GenraCollection::Genres() {
    static const std::vector<MP3Genra> genres = AllGenres();
    return genres;
}

const MP3Genra* GenraCollection::MaybeByKey(std::string_view key) const {
    if (!key.starts_with("ID"))
        return nullptr;
    for (const MP3Genra& genre : Genres()) {
        if (key.substr(2) == std::to_string(genre.ID()))
            return &genre;
    }
    return nullptr;
}

const MP3Genra* GenraCollection::MaybeByName(std::string_view text) {
    // A hyphen may stand for a blank or for nothing.
    std::string blanks(text), nothing(text);
    std::ranges::replace(blanks, '-', ' ');
    std::erase(nothing, '-');
    for (const MP3Genra& genre : Genres())
        if (EqualsIgnoringAsciiCase(blanks, genre.Name()) ||
            EqualsIgnoringAsciiCase(nothing, genre.Name()))
            return &genre;
    return nullptr;
}

std::string MP3TagEditor::GenraLookupByID(std::int16_t id) {
    if (id == kNoGenra)
        return "None";
    if (id < 0 || static_cast<std::size_t>(id) >= kNames.size())
        return {};
    return kNames[static_cast<std::size_t>(id)];
}

}  // namespace tobbin
