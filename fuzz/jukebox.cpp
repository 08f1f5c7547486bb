// Jukebox files: what was loaded is loaded again after a save, and then saved as the same bytes. An
// input is read as it is, and once more with the last line that fits it, which chance would never
// find.
#include "jukebox/Jukebox.h"
#include "catalogue/clsMain.h"
#include "Fuzzing.h"
#include "jukebox/JukeboxFile.h"
#include "jukebox/JukeboxLines.h"
#include "util/Text.h"

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

// How many columns, folders and songs a file has.
std::vector<std::size_t> CountsOf(std::string_view bytes) {
    std::vector<std::size_t> counts(3);
    for (const std::string_view line : SplitLines(bytes)) {
        counts[0] += line.starts_with("column\t");
        counts[1] += line.starts_with("folder\t");
        counts[2] += line.starts_with("song\t") || line.starts_with("again\t");
    }
    return counts;
}

void Read(const std::string& bytes) {
    const std::string saved = Resave(bytes);
    if (saved.empty())
        return;
    CHECK(CountsOf(saved) == CountsOf(bytes));
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
