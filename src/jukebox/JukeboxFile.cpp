#include "jukebox/JukeboxFile.h"

#include <algorithm>
#include <new>

#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

LoadResult NotOpened(const std::string& path, const DiskStatus& status) {
    return {status.Error() == DiskError::NotFound ? LoadOutcome::NotThere : LoadOutcome::Unreadable,
            "The jukebox \"" + path + "\" was not opened: " + status.Reason() + "."};
}

}  // namespace

DiskStatus SaveJukeboxFile(Disk& disk, const std::string& path, const Jukebox& jukebox,
                           const clsMain& catalogue) {
    const std::string bytes = WriteJukebox(jukebox, catalogue);
    return bytes.size() <= kLargestJukebox ? SaveWholeFile(disk, path, bytes)
                                           : DiskStatus(DiskError::TooLarge);
}

LoadResult LoadJukeboxFile(Disk& disk, const std::string& path, const clsMain& catalogue,
                           const SystemText& text, std::unique_ptr<Jukebox>& jukebox) try {
    jukebox.reset();
    std::string bytes;
    if (const DiskStatus status = ReadWholeFile(disk, path, kLargestJukebox, bytes); !status.Ok())
        return NotOpened(path, status);
    LoadResult result = ReadJukebox(bytes, path, catalogue, jukebox);
    if (jukebox != nullptr) {
        jukebox->DaCaption(JukeboxTitle(text, path));
        jukebox->FileLocation(FolderOfPath(path));
        if (!jukebox->Columns().empty())
            jukebox->SetColumn(0, kNameHeading);
    }
    return result;
} catch (const std::bad_alloc&) {
    jukebox.reset();
    return NotOpened(path, DiskStatus(DiskError::OutOfMemory));
}

std::string JukeboxTitle(const SystemText& text, std::string_view path) {
    std::u16string name = Utf8ToUtf16(FileNameOfPath(path));
    name.resize(name.size() - std::min<std::size_t>(name.size(), 4));
    return text.ToUpper(Utf16ToUtf8(name));
}

}  // namespace tobbin
