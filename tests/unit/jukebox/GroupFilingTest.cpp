#include "jukebox/GroupFiling.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "fakes/FakeOutside.h"

namespace tobbin {
namespace {

using Match = GroupFiling::Match;

class GroupFilingTest : public testing::Test {
 protected:
    std::string FolderFor(const std::string& value, Match match = Match::BeginsWith) {
        GroupFiling filing(m_jukebox, m_group, match, m_text);
        return filing.FolderFor(value).Text();
    }
    FakeText m_text;
    Jukebox m_jukebox;
    Folder& m_group = m_jukebox.AddChild(nullptr, "Artist");
};

TEST_F(GroupFilingTest, EqualMeansEqual) {
    EXPECT_EQ(FolderFor("Rock", Match::Equal), "Rock");
    EXPECT_EQ(FolderFor("Rock n Roll", Match::Equal), "Rock n Roll");
    EXPECT_EQ(FolderFor("rock", Match::Equal), "rock");
    EXPECT_EQ(FolderFor("Rock", Match::Equal), "Rock");
    EXPECT_EQ(m_group.ChildCount(), 3U);
}

TEST_F(GroupFilingTest, FilesAsAWalkOverTheChildrenWould) {
    std::mt19937 random(20240117);
    const auto randomText = [&] {
        std::string text;
        for (auto length = random() % 6; length > 0; --length)
            text += "aAbB\xE4\xC4*?"[random() % 8];
        return m_text.FromAnsi(text);
    };
    for (int round = 0; round < 50; ++round) {
        Folder& group = m_jukebox.AddChild(nullptr, "Artist");
        std::vector<std::string> walked;
        for (auto children = random() % 5; children > 0; --children) {
            walked.push_back(randomText());
            m_jukebox.AddChild(&group, walked.back());
        }
        GroupFiling filing(m_jukebox, group, Match::BeginsWith, m_text);
        for (int i = 0; i < 60; ++i) {
            const std::string value = randomText();
            std::size_t place = 0;
            while (place < walked.size() &&
                   !m_text.ToLower(value).starts_with(m_text.ToLower(walked[place])))
                ++place;
            if (place == walked.size())
                walked.push_back(value);
            ASSERT_EQ(filing.FolderFor(value).Index(), place) << value;
        }
        ASSERT_EQ(group.ChildCount(), walked.size());
    }
}

}  // namespace
}  // namespace tobbin
