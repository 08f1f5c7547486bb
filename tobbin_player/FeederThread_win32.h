#pragma once

#include <windows.h>

#include <atomic>

#include "platform/ClockAndRandom_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "tobbin_player/Player.h"
#include "tobbin_player/SongFeeder.h"
#include "tobbin_player/WaveOut_win32.h"

namespace tobbin::player {

// The thread on which songs are read and decoded and the sound device is used, all of which may
// take its time.
class FeederThread {
 public:
    FeederThread() : m_wake(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

    void Start(Player& player, Songs& songs);
    void Wake() { SetEvent(m_wake.Get()); }

    // Returns false when the thread doesn't end in a second, as a disk or the device holds it up.
    // All that it uses must then stay.
    bool End();

 private:
    static DWORD WINAPI Run(void* self);

    UniqueKernelObject m_wake;
    UniqueKernelObject m_thread;
    std::atomic<bool> m_ending = false;
    Player* m_player = nullptr;
    Songs* m_songs = nullptr;
};

}  // namespace tobbin::player
