#include "catalogue/SongIntake.h"

#include "catalogue/FoundSongs.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {

FoundOutcome SongIntake::TakeIn(const std::vector<std::string>& paths) {
    m_catalogue.BeginPass();
    FoundSongs songs(m_environment, m_catalogue);
    for (const std::string& path : paths) {
        PathInfo info;
        if (IsSongName(FileNameOfPath(path)) && m_environment.disk.Stat(path, info).Ok() &&
            info.kind == PathKind::File)
            songs.OnSongFound(FolderOfPath(path), FileNameOfPath(path), info.size);
    }
    FoundOutcome outcome = songs.Settle();
    if (m_catalogue.MainIsDirty())
        m_catalogue.WriteOutMp3DirectoryLocations();
    return outcome;
}

}  // namespace tobbin
