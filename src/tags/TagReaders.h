#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/Disk.h"
#include "tags/SongTags.h"
#include "tags/TagTexts.h"
#include "util/ReadAhead.h"
#include "util/SystemText.h"

namespace tobbin {

// Reads the tags of many songs side by side. A thread touches a path, the file's bytes and the
// texts that it reads, and nothing else.
class TagReaders {
 public:
    // Names the next song; false behind the last one. Called on the caller's thread.
    using NextPath = std::function<bool(std::string& path)>;

    // `threads` 0 reads on the caller's thread. What may be opened with OpenMode::ReadIfHere on any
    // thread is to live as long as this.
    TagReaders(Disk& disk, const SystemText& text, TagFields wanted, unsigned threads,
               NextPath next)
        : m_songs(
              threads, [next = std::move(next)](Song& song) { return next(song.path); },
              [&disk, &text, wanted] {
                  return [tags = SongTags(disk, text), wanted](Song& song) mutable {
                      song.wasRead = tags.Load(song.path, wanted, song.texts);
                  };
              }) {}

    // As those of ReadAhead.
    bool WaitForNext() { return m_songs.WaitForNext(); }
    void Stop() { m_songs.Stop(); }

    // Takes the song that WaitForNext found read. Returns whether its file could be read.
    bool Take(TagTexts& texts) {
        m_songs.Take(m_taken);
        std::swap(texts, m_taken.texts);
        return m_taken.wasRead;
    }

 private:
    struct Song {
        std::string path;
        TagTexts texts;
        bool wasRead = false;
    };
    ReadAhead<Song> m_songs;
    Song m_taken;
};

}  // namespace tobbin
