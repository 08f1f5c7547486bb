// Prints what ReadId3v2Tag finds in each file: five texts and how often the file was read, with a
// tab between each two. For tag_writers.py.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

#include "fakes/FakeEnvironment.h"
#include "tags/Id3v2Tag.h"
#include "util/Check.h"

int main(int count, char** paths) {
    using namespace tobbin;
    FakeEnvironment fake;
    for (int i = 1; i < count; ++i) {
        std::ifstream stream(paths[i], std::ios::binary);
        fake.disk.AddFile("C:\\a.mp3", {std::istreambuf_iterator(stream), {}});
        fake.disk.ClearLog();
        std::unique_ptr<File> file;
        TagTexts texts;
        CHECK(fake.disk.Open("C:\\a.mp3", OpenMode::ReadIfHere, file).Ok());
        CHECK(ReadId3v2Tag(*file, fake.text, TagFields::All(), texts).Ok());
        for (const TagField field : kTagFields)
            std::cout << texts[field] << '\t';
        std::cout << std::ranges::count(fake.disk.Log(), "read C:\\a.mp3") << '\n';
    }
}
