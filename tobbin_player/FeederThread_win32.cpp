#include "tobbin_player/FeederThread_win32.h"

#include "platform/WindowBase_win32.h"

namespace tobbin::player {

void FeederThread::Start(Player& player, Songs& songs) {
    m_player = &player;
    m_songs = &songs;
    m_thread = UniqueKernelObject(CreateThread(nullptr, 0, &Run, this, 0, nullptr));
    SetThreadPriority(m_thread.Get(), THREAD_PRIORITY_ABOVE_NORMAL);
}

DWORD WINAPI FeederThread::Run(void* self) {
    FeederThread& thread = *static_cast<FeederThread*>(self);
    GuardedHandler([&] {
        SystemClockAndRandom clock;
        WaveOut device(thread.m_wake.Get());
        SongFeeder feeder(*thread.m_player, *thread.m_songs, device, clock);
        while (!thread.m_ending) {
            const int rest = feeder.Work();
            if (rest != 0)
                WaitForSingleObject(thread.m_wake.Get(),
                                    rest < 0 ? INFINITE : static_cast<DWORD>(rest));
        }
    });
    return 0;
}

bool FeederThread::End() {
    m_ending = true;
    Wake();
    return !m_thread || WaitForSingleObject(m_thread.Get(), 1'000) == WAIT_OBJECT_0;
}

}  // namespace tobbin::player
