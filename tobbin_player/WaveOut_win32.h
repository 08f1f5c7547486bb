#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "tobbin_player/SoundDevice.h"

namespace tobbin::player {

// The system's own wave output, which follows a change of the default device by itself.
class WaveOut : public SoundDevice {
 public:
    // The event is set whenever a block has been heard.
    explicit WaveOut(HANDLE event) : m_event(event) {}
    ~WaveOut() override { Close(); }

    bool Open(int rate) override;
    void Close() override;
    bool Write(std::vector<std::int16_t> samples) override;
    int TakeFinishedBlocks() override;
    void Drop() override;
    void Pause() override;
    void GoOn() override;
    void SetLevels(int left, int right) override;

 private:
    struct Block {
        WAVEHDR header = {};
        std::vector<std::int16_t> samples;
    };

    HANDLE m_event;
    HWAVEOUT m_device = nullptr;
    std::deque<std::unique_ptr<Block>> m_blocks;  // what the device holds
};

}  // namespace tobbin::player
