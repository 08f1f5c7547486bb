#pragma once

#include <cstdint>
#include <vector>

namespace tobbin::player {

// Where sound goes: 16-bit stereo samples, left and right by turns, in blocks that are heard one
// after the other without a gap. Used by one thread, on which each call may take its time.
class SoundDevice {
 public:
    virtual ~SoundDevice() = default;

    // Opens the device that the system has for sound, for so many samples a second. Returns whether
    // there is one that takes them.
    virtual bool Open(int rate) = 0;
    virtual void Close() = 0;  // throws away what was not heard yet

    // Takes a block. Returns false when the device is gone.
    virtual bool Write(std::vector<std::int16_t> samples) = 0;

    // How many blocks were heard to their end since the last call.
    virtual int TakeFinishedBlocks() = 0;

    virtual void Drop() = 0;  // throws away what was not heard yet, and ends a pause
    virtual void Pause() = 0;
    virtual void GoOn() = 0;

    // 0 to 65535 each, at once.
    virtual void SetLevels(int left, int right) = 0;
};

}  // namespace tobbin::player
