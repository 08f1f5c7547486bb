// The tips file: any chance shows one tip, or an empty file none.
#include "shell/Tips.h"
#include "Fuzzing.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    struct View : TipView {
        int shown = 0;
        void ShowTip(const std::string&) override { ++shown; }
        void TickTipsAtStartUp(bool) override {}
    } view;
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\T\\TIPOFDAY.TXT", std::string(bytes));
    fake.clock.random = 0.999999;
    Tips tips(fake.environment, "C:\\T\\");
    tips.Load(view);
    CHECK(view.shown == (bytes.empty() || bytes == "\xEF\xBB\xBF" ? 0 : 1));
}

}  // namespace tobbin
