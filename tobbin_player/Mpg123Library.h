#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace tobbin::player {

// What is used of libmpg123, version 1.26 or later, as its header declares it. The library is
// loaded while the program runs, so that a missing one is a message and no refusal to start.
struct Mpg123Library {
    struct Handle;
    using ReadFunction = std::ptrdiff_t (*)(void* source, void* to, std::size_t count);
    using SeekFunction = std::int64_t (*)(void* source, std::int64_t offset, int whence);

    enum { kOk = 0, kNewFormat = -11 };
    enum Parameter { kAddFlags = 2, kResyncLimit = 14, kPreframes = 16 };
    enum Flag { kQuiet = 0x20, kGapless = 0x40, kSkipId3v2 = 0x2000 };
    enum { kStereo = 2, kSigned16 = 0xD0 };
    enum State { kEncoderDelay = 5 };

    Handle* (*create)(const char* decoder, int* error) = nullptr;
    void (*destroy)(Handle*) = nullptr;
    int (*setParameter)(Handle*, int parameter, long value, double number) = nullptr;
    int (*formatNone)(Handle*) = nullptr;
    int (*addFormat)(Handle*, long rate, int channels, int encodings) = nullptr;
    int (*replaceReader)(Handle*, ReadFunction, SeekFunction, void (*cleanUp)(void*)) = nullptr;
    int (*open)(Handle*, void* source) = nullptr;
    int (*getFormat)(Handle*, long* rate, int* channels, int* encoding) = nullptr;
    int (*read)(Handle*, void* to, std::size_t size, std::size_t* done) = nullptr;
    std::int64_t (*seek)(Handle*, std::int64_t frame, int whence) = nullptr;
    std::int64_t (*length)(Handle*) = nullptr;
    int (*scan)(Handle*) = nullptr;
    int (*getState)(Handle*, int state, long* value, double* number) = nullptr;

    // Fills the table. `find` returns the function of a name, null for one that is not there.
    // Returns whether all were.
    bool Load(const std::function<void*(const char*)>& find);
};

}  // namespace tobbin::player
