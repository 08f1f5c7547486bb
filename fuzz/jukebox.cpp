// Jukebox files: what was loaded is loaded again after a save, and then saved as the same bytes. An
// input is read as it is, and once more with the last line that fits it, which chance would never
// find.
#include "jukebox/Jukebox.h"
#include "catalogue/clsMain.h"
#include "Fuzzing.h"
#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"

namespace tobbin {
namespace {

// Returns what a save of the loaded jukebox writes; nothing for a file that is refused.
std::string Resave(const std::string& bytes) {
    FakeEnvironment fake;
    clsINI settings(fake.environment, "C:\\T\\");
    SortCity sorter(fake.text);
    FakeProgress progress;
    const clsMain catalogue(fake.environment, settings, sorter, progress);
    std::unique_ptr<Jukebox> jukebox;
    const LoadResult result = ReadJukebox(bytes, "C:\\a.juk", catalogue, jukebox);
    CHECK((jukebox != nullptr) == (result.outcome == LoadOutcome::Loaded));
    CHECK((jukebox != nullptr) == result.message.empty());
    return jukebox != nullptr ? WriteJukebox(*jukebox, catalogue) : "";
}

std::ptrdiff_t LinesOf(const std::string& bytes, const std::string& kind) {
    std::ptrdiff_t lines = 0;
    for (std::size_t at = bytes.find(kind); at != std::string::npos; at = bytes.find(kind, at + 1))
        ++lines;
    return lines;
}

void Read(const std::string& bytes) {
    const std::string saved = Resave(bytes);
    if (saved.empty())
        return;
    for (const char* kind : {"\nfolder\t", "\ncolumn\t"})
        CHECK(LinesOf(saved, kind) == LinesOf(bytes, kind));
    const auto songs = [](const std::string& file) {
        return LinesOf(file, "\nsong\t") + LinesOf(file, "\nagain\t");
    };
    CHECK(songs(saved) == songs(bytes));
    CHECK(Resave(saved) == saved);
}

}  // namespace

void TakeInput(std::string_view bytes) {
    std::string file(bytes);
    Read(file);
    std::size_t lines = 0;
    for (const char c : file)
        lines += c == '\n';
    Read(file + JukeboxEndLine(lines, file) + "\r\n");
}

}  // namespace tobbin
