#include "jukebox/JukeboxFile.h"

#include <algorithm>
#include <utility>

#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {

DiskStatus SaveJukeboxFile(Disk& disk, const std::string& path, const Jukebox& jukebox,
                           const clsMain& catalogue) {
    return SaveWholeFile(disk, path, WriteJukebox(jukebox, catalogue));
}

LoadResult LoadJukeboxFile(Disk& disk, const std::string& path, const clsMain& catalogue,
                           const SystemText& text, std::unique_ptr<Jukebox>& jukebox) {
    jukebox.reset();
    std::string bytes;
    if (const DiskStatus status = ReadWholeFile(disk, path, bytes); !status.Ok())
        return {
            status.Error() == DiskError::NotFound ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
            "The jukebox \"" + path + "\" was not opened: " + status.Reason() + "."};
    LoadResult result = ReadJukebox(std::move(bytes), path, catalogue, text, jukebox);
    if (jukebox != nullptr) {
        jukebox->DaCaption(JukeboxTitle(text, path));
        jukebox->FileLocation(FolderOfPath(path));
        if (!jukebox->Columns().empty())
            jukebox->SetColumn(0, kNameHeading);
    }
    return result;
}

std::string JukeboxTitle(const SystemText& text, std::string_view path) {
    std::u16string name = Utf8ToUtf16(FileNameOfPath(path));
    name.resize(name.size() - std::min<std::size_t>(name.size(), 4));
    return text.ToUpper(Utf16ToUtf8(name));
}

}  // namespace tobbin
