// Songs: whatever their tags hold, the texts are short and sound, and little is read.
#include <algorithm>

#include "Fuzzing.h"
#include "tags/SongTags.h"
#include "util/Utf.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\a.mp3", std::string(bytes));
    SongTags tags(fake.disk, fake.text);
    TagTexts texts;
    CHECK(tags.Load("C:\\a.mp3", TagFields::All(), texts));
    CHECK(std::ranges::count(fake.disk.Log(), "read C:\\a.mp3") <= 16);  // 8, or twice that
    for (const TagField field : kTagFields) {
        CHECK(IsGeneralisedUtf8(texts[field]) && texts[field].size() <= 3 * 4096);
        CHECK(texts[field].find('\0') == std::string::npos);
    }
    TagTexts fewer;
    CHECK(tags.Load("C:\\a.mp3", TagFields::ForFiling(), fewer));
    CHECK(fewer[TagField::Artist] == texts[TagField::Artist]);
}

}  // namespace tobbin
