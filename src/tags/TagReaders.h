#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/Disk.h"
#include "tags/TagTexts.h"
#include "util/SystemText.h"

namespace tobbin {

// Reads the tags of many songs side by side, on threads of its own: a disk that is asked for one
// file after the other mostly waits. A thread touches a path, the file's bytes and the texts that
// it reads, and nothing else. The songs come back in the order in which they were named.
class TagReaders {
 public:
    // Names the next song; false behind the last one. Called on the caller's thread.
    using NextPath = std::function<bool(std::string& path)>;

    // `threads` 0 reads on the caller's thread. What may be opened with OpenMode::ReadIfHere on any
    // thread is to live as long as this.
    TagReaders(Disk& disk, const SystemText& text, TagFields wanted, unsigned threads,
               NextPath next);
    ~TagReaders();  // waits for the songs that are being read
    TagReaders(const TagReaders&) = delete;
    TagReaders& operator=(const TagReaders&) = delete;

    // Waits a hundredth of a second at most until the next song is read, and returns whether it is.
    // Must not be asked behind the last one.
    bool WaitForNext();

    // Takes the song that WaitForNext found read. Returns whether its file could be read.
    bool Take(TagTexts& texts);

    // Begins with no further song.
    void Stop();

 private:
    static constexpr std::size_t kAhead = 256;  // songs that are named before they are taken
    struct Song {
        std::string path;
        TagTexts texts;
        bool wasRead = false;
        bool isDone = false;
    };
    Song& At(std::size_t number) { return m_songs[number % kAhead]; }
    void Work();
    void NameMore();

    Disk& m_disk;
    const SystemText& m_text;
    TagFields m_wanted;
    NextPath m_next;
    bool m_isLastNamed = false;

    std::mutex m_mutex;  // for all that follows but the threads; a song that was begun and is not
                         // done belongs to the thread that reads it
    std::condition_variable m_songNamed, m_songDone;
    std::array<Song, kAhead> m_songs;
    std::size_t m_named = 0, m_begun = 0, m_taken = 0;  // how many songs
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

}  // namespace tobbin
