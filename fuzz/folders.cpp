// The list of song folders: each is a folder's full path.
#include "catalogue/SongFolderList.h"
#include "Fuzzing.h"
#include "util/Text.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\list", std::string(bytes));
    std::vector<std::string> folders;
    CHECK(ReadSongFolderList(fake.environment, "C:\\list", folders).Ok());
    for (const std::string& folder : folders)
        CHECK(folder.ends_with('\\') && !RootOfPath(folder).empty());
}

}  // namespace tobbin
