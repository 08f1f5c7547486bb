// Songs: a saved tag is loaded again, and nothing in front of it has changed.
#include "Fuzzing.h"
#include "tags/MP3TagEditor.h"

namespace tobbin {
namespace {

std::string Everything(const MP3TagEditor& tag) {
    return tag.Title() + "\n" + tag.Artist() + "\n" + tag.Album() + "\n" + tag.Year() + "\n" +
           tag.Comment() + "\n" + std::to_string(tag.Genra());
}

}  // namespace

void TakeInput(std::string_view bytes) {
    FakeEnvironment fake;
    fake.disk.AddFile("C:\\a.mp3", std::string(bytes));
    MP3TagEditor tag(fake.disk, fake.text);
    CHECK(tag.LoadMP3("C:\\a.mp3"));
    const std::string before = Everything(tag);
    tag.Title(tag.Title());
    CHECK(Everything(tag) == before);
    const bool saved = tag.SaveMP3().Ok();
    CHECK(saved == !bytes.empty());
    const std::string& after = fake.disk.Content("C:\\a.mp3");
    const std::size_t tagSize = saved ? MP3TagEditor::kTagSize : 0;
    const std::size_t kept = bytes.size() - (tag.TagExists() ? tagSize : saved);
    CHECK(after.size() == kept + tagSize);
    CHECK(after.compare(0, kept, bytes, 0, kept) == 0);
    MP3TagEditor again(fake.disk, fake.text);
    CHECK(again.LoadMP3("C:\\a.mp3"));
    if (after.size() > MP3TagEditor::kTagSize)
        CHECK(Everything(again) == before);
}

}  // namespace tobbin
