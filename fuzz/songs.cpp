// Songs, as the player decodes them: whatever a file holds, reading it comes to an end, before and
// after a seek, and its length can be measured.
#include <dlfcn.h>

#include "Fuzzing.h"
#include "tobbin_player/Mpg123Songs.h"

namespace tobbin {
namespace {

const player::Mpg123Library& Decoder() {
    static const player::Mpg123Library library = [] {
        void* const file = dlopen("libmpg123.so.0", RTLD_NOW);
        player::Mpg123Library functions;
        CHECK(file != nullptr &&
              functions.Load([&](const char* name) { return dlsym(file, name); }));
        return functions;
    }();
    return library;
}

std::int64_t ReadAll(player::Song& song, std::size_t most) {
    std::vector<std::int16_t> samples;
    std::int64_t frames = 0;
    for (std::size_t steps = 0;; ++steps) {
        CHECK(steps < most);
        switch (song.Read(1'000, samples)) {
            case player::Song::Outcome::Samples:
                CHECK(!samples.empty() && samples.size() <= 2'000 && samples.size() % 2 == 0);
                frames += static_cast<std::int64_t>(samples.size() / 2);
                break;
            case player::Song::Outcome::NewRate:
                CHECK(song.Rate() >= 8'000 && song.Rate() <= 48'000);
                break;
            default:
                return frames;
        }
    }
}

}  // namespace

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\song.mp3", std::string(bytes));
    player::Mpg123Songs songs(Decoder(), fake.disk, fake.text);
    std::string reason;
    const auto song = songs.MaybeOpen("C:\\song.mp3", reason);
    if (song == nullptr) {
        CHECK(!reason.empty());
        return;
    }
    CHECK(song->Rate() >= 8'000 && song->Rate() <= 48'000);
    const std::size_t most = 100 + bytes.size() * 4;
    const std::int64_t frames = ReadAll(*song, most);
    if (song->Seek(frames / 2))
        ReadAll(*song, most);
    songs.Measure("C:\\song.mp3", [] { return true; });
}

}  // namespace tobbin
