#include "jukebox/GroupFiling.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "fakes/FakeEnvironment.h"

namespace tobbin {
namespace {

using Match = GroupFiling::Match;

TEST(GroupFiling, FilesAsAWalkOverTheChildrenWould) {
    const FakeText text;
    std::mt19937 random(20240117);
    const auto randomText = [&] {
        std::string letters;
        for (auto length = random() % 6; length > 0; --length)
            letters += "aAbB\xE4\xC4*?"[random() % 8];
        return text.FromAnsi(letters);
    };
    Jukebox jukebox;
    for (int round = 0; round < 100; ++round) {
        const Match match = round % 2 == 0 ? Match::BeginsWith : Match::Equal;
        const auto fits = [&](const std::string& value, const std::string& child) {
            return match == Match::Equal ? value == child
                                         : text.ToLower(value).starts_with(text.ToLower(child));
        };
        Folder& group = jukebox.AddChild(nullptr, "Artist");
        std::vector<std::string> walked;
        for (auto children = random() % 5; children > 0; --children) {
            walked.push_back(randomText());
            jukebox.AddChild(&group, walked.back());
        }
        GroupFiling filing(group, match, text, [&](Folder& parent, const std::string& name) {
            return &jukebox.AddChild(&parent, name);
        });
        for (int i = 0; i < 60; ++i) {
            const std::string value = randomText();
            std::size_t place = 0;
            while (place < walked.size() && !fits(value, walked[place]))
                ++place;
            if (place == walked.size())
                walked.push_back(value);
            const Folder& folder = filing.FolderFor(value);
            ASSERT_EQ(folder.Index(), place) << value;
            ASSERT_EQ(folder.Text(), walked[place]);
        }
        ASSERT_EQ(group.ChildCount(), walked.size());
    }
}

}  // namespace
}  // namespace tobbin
