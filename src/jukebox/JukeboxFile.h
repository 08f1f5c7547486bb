#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "catalogue/clsMain.h"
#include "catalogue/LoadResult.h"
#include "jukebox/Jukebox.h"
#include "platform/Disk.h"
#include "util/SystemText.h"

namespace tobbin {

// Jukebox files (".juk"): one line of UTF-8 text for each column, song folder, folder and song, a
// first line with the format's version and a last line that makes a cut or altered file visible.
// docs/jukebox-file.md describes them.
//
// Plain lines, because a person can read and mend them. No XML or JSON: half a million songs are to
// be there at once, and a tree of any depth needs no nesting when each folder gives its level.

inline constexpr int kJukeboxFileVersion = 1;
inline constexpr std::uint64_t kLargestJukebox = Megabytes(512);

// The bytes of a jukebox file. The songs' paths are taken from the catalogue.
std::string WriteJukebox(const Jukebox& jukebox, const clsMain& catalogue);

// Reads the bytes of the jukebox file `path`, which is named in messages only, into a new jukebox:
// its tree, songs and columns. A song whose record is no longer the same is found again (see
// SongIdentity), or becomes a missing one. When the outcome is not Loaded, `jukebox` is empty.
LoadResult ReadJukebox(std::string_view bytes, const std::string& path, const clsMain& catalogue,
                       std::unique_ptr<Jukebox>& jukebox);

// The same from and to the disk. A loaded jukebox has the caption and the file location of its
// path, the first heading of an unsorted list, and is not dirty.
DiskStatus SaveJukeboxFile(Disk& disk, const std::string& path, const Jukebox& jukebox,
                           const clsMain& catalogue);
LoadResult LoadJukeboxFile(Disk& disk, const std::string& path, const clsMain& catalogue,
                           const SystemText& text, std::unique_ptr<Jukebox>& jukebox);

// The title of a jukebox: its file's name without the last four characters, in upper case.
std::string JukeboxTitle(const SystemText& text, std::string_view path);

}  // namespace tobbin
