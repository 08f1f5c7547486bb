#include "tobbin_player/WaveOut_win32.h"

#include <utility>

namespace tobbin::player {

bool WaveOut::Open(int rate) {
    constexpr WORD kChannels = 2, kBits = 16;
    WAVEFORMATEX format = {};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = kChannels;
    format.nSamplesPerSec = static_cast<DWORD>(rate);
    format.wBitsPerSample = kBits;
    format.nBlockAlign = kChannels * kBits / 8;
    format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
    if (waveOutOpen(&m_device, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(m_event), 0,
                    CALLBACK_EVENT) == MMSYSERR_NOERROR)
        return true;
    m_device = nullptr;
    return false;
}

void WaveOut::Close() {
    if (m_device == nullptr)
        return;
    Drop();
    // Blocks that a lost device has not given back stay with it: it might still read them.
    if (waveOutClose(m_device) != MMSYSERR_NOERROR)
        for (std::unique_ptr<Block>& block : m_blocks)
            static_cast<void>(block.release());
    m_blocks.clear();
    m_device = nullptr;
}

bool WaveOut::Write(std::vector<std::int16_t> samples) {
    auto block = std::make_unique<Block>();
    block->samples = std::move(samples);
    block->header.lpData = reinterpret_cast<char*>(block->samples.data());
    block->header.dwBufferLength = static_cast<DWORD>(block->samples.size() * sizeof(std::int16_t));
    if (waveOutPrepareHeader(m_device, &block->header, sizeof(WAVEHDR)) != MMSYSERR_NOERROR)
        return false;
    if (waveOutWrite(m_device, &block->header, sizeof(WAVEHDR)) != MMSYSERR_NOERROR) {
        waveOutUnprepareHeader(m_device, &block->header, sizeof(WAVEHDR));
        return false;
    }
    m_blocks.push_back(std::move(block));
    return true;
}

int WaveOut::TakeFinishedBlocks() {
    int finished = 0;
    while (!m_blocks.empty() &&
           (static_cast<volatile WAVEHDR&>(m_blocks.front()->header).dwFlags & WHDR_DONE) != 0) {
        waveOutUnprepareHeader(m_device, &m_blocks.front()->header, sizeof(WAVEHDR));
        m_blocks.pop_front();
        ++finished;
    }
    return finished;
}

void WaveOut::Drop() {
    waveOutReset(m_device);
    TakeFinishedBlocks();
}

void WaveOut::Pause() {
    waveOutPause(m_device);
}

void WaveOut::GoOn() {
    waveOutRestart(m_device);
}

void WaveOut::SetLevels(int left, int right) {
    waveOutSetVolume(m_device, MAKELONG(left, right));
}

}  // namespace tobbin::player
