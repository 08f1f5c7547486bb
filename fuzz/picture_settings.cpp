// Picture-settings files: what was loaded is loaded again after a save, with either kind of flag.
#include "Fuzzing.h"
#include "ui/PictureSettings.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\a.poc", std::string(bytes));
    PictureSettings settings;
    if (LoadPictureSettings(fake.environment, "C:\\a.poc", settings).outcome != LoadOutcome::Loaded)
        return;
    for (const FlagText flags : {FlagText::TruthValue, FlagText::CheckBox}) {
        CHECK(SavePictureSettings(fake.environment, "C:\\a.poc", settings, flags).Ok());
        PictureSettings again;
        CHECK(LoadPictureSettings(fake.environment, "C:\\a.poc", again).outcome ==
              LoadOutcome::Loaded);
        CHECK(again.picture == settings.picture);
        CHECK(again.tiled == settings.tiled && again.shown == settings.shown);
    }
}

}  // namespace tobbin
