#pragma once

#include <string>

#include "platform/Disk.h"
#include "tags/MP3TagEditor.h"
#include "tags/TagTexts.h"
#include "util/SystemText.h"

namespace tobbin {

// What a song's tags say together. ID3v1 comes first. ID3v2 serves where ID3v1 can't: for a song
// without it, for a field that is empty in it, and for a text of which the ID3v1 field holds only
// what such a field can hold. Where the two really differ, ID3v1 holds.
class SongTags {
 public:
    SongTags(Disk& disk, const SystemText& text);

    // Reads the wanted fields of a song, without padding; the genre as its name, "" for none.
    // Returns false, and no texts, when the file could not be read, or is not on this computer but
    // in a cloud store only. The file is opened once and read eight times at most.
    bool Load(const std::string& path, TagFields wanted, TagTexts& texts);

 private:
    TagTexts Id3v1Texts() const;
    bool Id3v2MayServe(TagField field, const std::string& id3v1) const;
    bool Id3v2Serves(TagField field, const std::string& id3v1, const std::string& id3v2);

    Disk& m_disk;
    const SystemText& m_text;
    MP3TagEditor m_editor;
};

}  // namespace tobbin
