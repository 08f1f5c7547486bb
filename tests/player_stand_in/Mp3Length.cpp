#include "Mp3Length.h"

#include <cstddef>

namespace {

struct Frame {
    std::size_t bytes = 0;  // 0: no frame stands here
    int samples = 0;
    int samplesPerSecond = 1;
};

// A layer III frame's header, at `at`.
Frame ReadFrame(const std::string& bytes, std::size_t at) {
    static constexpr int kBitRates[2][15] = {
        {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},  // version 1
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};     // versions 2 and 2.5
    static constexpr int kSampleRates[3] = {44100, 48000, 32000};
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[at + k]); };
    if (at + 4 > bytes.size() || byte(0) != 0xFF || (byte(1) & 0xE6) != 0xE2)
        return {};
    const int version = (byte(1) >> 3) & 3;  // 0: 2.5, 2: 2, 3: 1
    const int bitRate = byte(2) >> 4, sampleRate = (byte(2) >> 2) & 3;
    if (version == 1 || bitRate == 0 || bitRate == 15 || sampleRate == 3)
        return {};
    const bool first = version == 3;
    Frame frame;
    frame.samples = first ? 1152 : 576;
    frame.samplesPerSecond = kSampleRates[sampleRate] / (first ? 1 : version == 2 ? 2 : 4);
    frame.bytes = static_cast<std::size_t>(frame.samples / 8 * kBitRates[first ? 0 : 1][bitRate] *
                                               1000 / frame.samplesPerSecond +
                                           ((byte(2) >> 1) & 1));
    return frame;
}

}  // namespace

int Mp3LengthMilliseconds(const std::string& bytes) {
    double seconds = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const Frame frame = ReadFrame(bytes, at);
        if (frame.bytes != 0)
            seconds += static_cast<double>(frame.samples) / frame.samplesPerSecond;
        at += frame.bytes != 0 ? frame.bytes : 1;
    }
    return seconds > 0 ? static_cast<int>(seconds * 1000) : -1;
}
