#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tobbin::player {

// A song that is being decoded, to 16-bit stereo samples. A frame is one left and one right sample.
class Song {
 public:
    virtual ~Song() = default;

    virtual int Rate() const = 0;  // frames a second; may change where Read says so
    virtual std::string Name() const = 0;

    // Frames; -1 when there is no telling. An estimate unless the second one says otherwise.
    virtual std::int64_t Length() const = 0;
    virtual bool IsLengthExact() const = 0;

    // Goes to a frame, counted from 0; the next Read begins with it. Returns whether it could.
    virtual bool Seek(std::int64_t frame) = 0;

    enum class Outcome { Samples, NewRate, End, Broken };
    // Reads up to so many frames. No samples come with any other outcome; after NewRate they go on.
    virtual Outcome Read(std::size_t frames, std::vector<std::int16_t>& samples) = 0;

    // Why it is broken, as the end of a sentence.
    virtual std::string Reason() const = 0;
};

// Opens songs by their full path.
class Songs {
 public:
    virtual ~Songs() = default;

    // Returns null, and why as the end of a sentence, for a file that can't be read or holds no
    // sound.
    virtual std::unique_ptr<Song> MaybeOpen(const std::string& path, std::string& reason) = 0;

    // The length in frames by going through the whole file; -1 when it can't be found out or when
    // `keepOn` answered false.
    virtual std::int64_t Measure(const std::string& path, const std::function<bool()>& keepOn) = 0;
};

}  // namespace tobbin::player
