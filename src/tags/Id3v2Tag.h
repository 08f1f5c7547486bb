#pragma once

#include "platform/Disk.h"
#include "tags/TagTexts.h"
#include "util/SystemText.h"

namespace tobbin {

// Reads fields of the ID3v2 tag that a file begins with: versions 2.2, 2.3 and 2.4, as their
// documents at id3.org describe them ("ID3 tag version 2", "2.3.0", "2.4.0 - Main Structure" and
// "- Native Frames"), and with the mistakes that are widespread in them. `texts` holds UTF-8, the
// year as four digits; a field that is not wanted, that the tag lacks or that makes no sense is
// empty. Compressed and encrypted frames are passed over. Of a frame no more than 4 KB are looked
// at. A damaged tag serves as far as it can be read. Returns an error when the file can't be read.
DiskStatus ReadId3v2Tag(File& file, const SystemText& text, TagFields wanted, TagTexts& texts);

}  // namespace tobbin
