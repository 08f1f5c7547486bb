#include "tobbin_player/Mpg123Songs.h"

#include <cstdio>
#include <utility>

#include "tags/SongTags.h"
#include "tobbin_player/SongSource.h"
#include "tobbin_player/Texts.h"
#include "util/Text.h"

namespace tobbin::player {
namespace {

constexpr long kRates[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
constexpr long kMostJunk = 1 << 20;  // bytes in a row without sound, tags apart
// Frames that are decoded before the one that was sought. One may use 511 bytes of those before it,
// which are this many of the smallest. With the library's 4 a low rate begins with silence.
constexpr long kPreframes = 20;

class Mpg123Song : public Song {
 public:
    Mpg123Song(const Mpg123Library& library, Disk& disk, const std::string& path,
               std::function<bool()> keepOn = {})
        : m_library(library),
          m_source(disk, path, std::move(keepOn)),
          m_handle(library.create(nullptr, nullptr)) {}
    Mpg123Song(const Mpg123Song&) = delete;
    Mpg123Song& operator=(const Mpg123Song&) = delete;
    ~Mpg123Song() override { m_library.destroy(m_handle); }

    // Returns whether there is sound.
    bool Open() {
        if (m_handle == nullptr || !m_source.Status().Ok())
            return false;
        m_library.setParameter(m_handle, Mpg123Library::kAddFlags,
                               Mpg123Library::kQuiet | Mpg123Library::kGapless |
                                   Mpg123Library::kSkipId3v2,  // else it is read as a whole
                               0);
        m_library.setParameter(m_handle, Mpg123Library::kResyncLimit, kMostJunk, 0);
        m_library.setParameter(m_handle, Mpg123Library::kPreframes, kPreframes, 0);
        m_library.formatNone(m_handle);
        for (const long rate : kRates)
            m_library.addFormat(m_handle, rate, Mpg123Library::kStereo, Mpg123Library::kSigned16);
        return m_library.replaceReader(m_handle, &ReadSource, &SeekSource, nullptr) ==
                   Mpg123Library::kOk &&
               m_library.open(m_handle, &m_source) == Mpg123Library::kOk && TakeFormat();
    }

    void SetName(std::string name) { m_name = std::move(name); }
    std::int64_t Measured() {
        return m_library.scan(m_handle) == Mpg123Library::kOk && m_source.Status().Ok() ? Length()
                                                                                        : -1;
    }

    int Rate() const override { return static_cast<int>(m_rate); }
    std::string Name() const override { return m_name; }
    std::int64_t Length() const override {
        const std::int64_t frames = m_library.length(m_handle);
        return frames < 0 ? -1 : frames;
    }
    bool IsLengthExact() const override {
        long delay = -1;
        return m_library.getState(m_handle, Mpg123Library::kEncoderDelay, &delay, nullptr) ==
                   Mpg123Library::kOk &&
               delay >= 0;
    }
    bool Seek(std::int64_t frame) override {
        return m_library.seek(m_handle, frame, SEEK_SET) >= 0;
    }

    Outcome Read(std::size_t frames, std::vector<std::int16_t>& samples) override {
        samples.resize(frames * 2);
        std::size_t done = 0;
        const int result = m_library.read(m_handle, samples.data(), frames * 4, &done);
        samples.resize(done / 4 * 2);
        if (!samples.empty()) {
            m_newRate = m_newRate || result == Mpg123Library::kNewFormat;
            return Outcome::Samples;
        }
        if (result == Mpg123Library::kNewFormat || std::exchange(m_newRate, false))
            return TakeFormat() ? Outcome::NewRate : Outcome::Broken;
        // Damage at the end is an end: what there was has been decoded.
        return m_source.Status().Ok() ? Outcome::End : Outcome::Broken;
    }

    std::string Reason() const override {
        return m_source.Status().Ok() ? "it holds no MP3 sound" : m_source.Status().Reason();
    }

 private:
    static std::ptrdiff_t ReadSource(void* source, void* to, std::size_t count) {
        return static_cast<SongSource*>(source)->Read(to, count);
    }
    static std::int64_t SeekSource(void* source, std::int64_t offset, int whence) {
        return static_cast<SongSource*>(source)->Seek(offset, whence);
    }

    bool TakeFormat() {
        int channels = 0, encoding = 0;
        return m_library.getFormat(m_handle, &m_rate, &channels, &encoding) == Mpg123Library::kOk &&
               channels == Mpg123Library::kStereo && encoding == Mpg123Library::kSigned16 &&
               m_rate >= kRates[0];
    }

    const Mpg123Library& m_library;
    SongSource m_source;
    Mpg123Library::Handle* m_handle;
    long m_rate = 0;
    bool m_newRate = false;
    std::string m_name;
};

// Only what lies on a drive or a network share; no name of a device.
bool IsFilePath(const std::string& path) {
    return !RootOfPath(path).empty() && !path.starts_with("\\\\.\\") &&
           !path.starts_with("\\\\?\\");
}

}  // namespace

std::unique_ptr<Song> Mpg123Songs::MaybeOpen(const std::string& path, std::string& reason) {
    if (!IsFilePath(path)) {
        reason = "this is not the full path of a file";
        return nullptr;
    }
    if (m_library.create == nullptr) {
        reason = "libmpg123-0.dll, which belongs beside the player, can't be loaded";
        return nullptr;
    }
    auto song = std::make_unique<Mpg123Song>(m_library, m_disk, path);
    if (!song->Open()) {
        reason = song->Reason();
        return nullptr;
    }
    TagTexts tag;
    std::string name;
    if (SongTags(m_disk, m_text).Load(path, {TagField::Artist, TagField::Title}, tag))
        name = NameOfSong(tag[TagField::Artist], tag[TagField::Title]);
    song->SetName(name.empty() ? NameOfFile(path) : name);
    return song;
}

std::int64_t Mpg123Songs::Measure(const std::string& path, const std::function<bool()>& keepOn) {
    Mpg123Song song(m_library, m_disk, path, keepOn);
    return song.Open() ? song.Measured() : -1;
}

}  // namespace tobbin::player
