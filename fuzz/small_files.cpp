// The small formats, one input for all: the list of song folders, each a full path; settings and
// picture settings, saved as they were loaded; tips, of which any chance shows one.
#include "catalogue/clsINI.h"
#include "catalogue/SongFolderList.h"
#include "Fuzzing.h"
#include "shell/Tips.h"
#include "ui/PictureSettings.h"
#include "util/Text.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    for (const char* path : {"C:\\list", "C:\\a.poc", "C:\\a.ini", "C:\\TIPOFDAY.TXT"})
        fake.disk.AddFile(path, std::string(bytes));
    std::vector<std::string> folders;
    CHECK(ReadSongFolderList(fake.environment, "C:\\list", folders).Ok());
    for (const std::string& folder : folders)
        CHECK(folder.ends_with('\\') && !RootOfPath(folder).empty());

    PictureSettings settings;
    std::string saved;
    const auto load = [&] { return LoadPictureSettings(fake.environment, "C:\\a.poc", settings); };
    if (load().outcome == LoadOutcome::Loaded)
        for (const FlagText flags : {FlagText::TruthValue, FlagText::CheckBox})
            for (int time = 0; time < 2; ++time) {
                CHECK(SavePictureSettings(fake.environment, "C:\\a.poc", settings, flags).Ok());
                CHECK(time == 0 || fake.disk.Content("C:\\a.poc") == saved);
                saved = fake.disk.Content("C:\\a.poc");
                CHECK(load().outcome == LoadOutcome::Loaded);
            }

    clsINI ini(fake.environment, "C:\\T\\");
    const LoadResult result = ini.GetandLoadIniInfo("C:\\a.ini");
    CHECK(result.message.empty() == (result.outcome == LoadOutcome::Loaded));
    if (result.outcome == LoadOutcome::Loaded) {
        CHECK(ini.Save("C:\\a.ini"));
        saved = fake.disk.Content("C:\\a.ini");
        clsINI again(fake.environment, "C:\\T\\");
        CHECK(again.GetandLoadIniInfo("C:\\a.ini").outcome == LoadOutcome::Loaded);
        CHECK(again.Save("C:\\a.ini") && fake.disk.Content("C:\\a.ini") == saved);
    }

    struct View : TipView {
        int shown = 0;
        void ShowTip(const std::string&) override { ++shown; }
        void TickTipsAtStartUp(bool) override {}
    } view;
    fake.clock.random = 0.999999;
    Tips(fake.environment, "C:\\").Load(view);
    CHECK(view.shown == (bytes.empty() || bytes == "\xEF\xBB\xBF" ? 0 : 1));
}

}  // namespace tobbin
