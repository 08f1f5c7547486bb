// The player as other programs use it, with songs and a sound device that are made up: what is
// heard, what is answered, and what comes of every fault.
#include <gtest/gtest.h>

#include <map>

#include "fakes/FakeEnvironment.h"
#include "tobbin_player/Messages.h"
#include "tobbin_player/SongFeeder.h"

namespace tobbin::player {
namespace {

constexpr int kBlocksAhead = SongFeeder::kAhead / SongFeeder::kBlock;

struct MadeUpSong {
    int blocks = 0;  // of 50 ms
    int rate = 1'000;
    int brokenAt = -1;  // block
    bool hasExactLength = true;
};

// The first sample of a block is the song's letter, the second the block's number.
class FakeSong : public Song {
 public:
    FakeSong(char letter, const MadeUpSong& song) : m_letter(letter), m_song(song) {}
    int Rate() const override { return m_song.rate; }
    std::string Name() const override { return std::string("Song ") + m_letter; }
    std::int64_t Length() const override { return m_song.blocks * BlockFrames(); }
    bool IsLengthExact() const override { return m_song.hasExactLength; }
    bool Seek(std::int64_t frame) override {
        m_block = static_cast<int>(frame / BlockFrames());
        return true;
    }
    Outcome Read(std::size_t frames, std::vector<std::int16_t>& samples) override {
        if (m_block == m_song.brokenAt)
            return Outcome::Broken;
        if (m_block >= m_song.blocks)
            return Outcome::End;
        samples.assign(frames * 2, 0);
        samples[0] = static_cast<std::int16_t>(m_letter);
        samples[1] = static_cast<std::int16_t>(m_block++);
        return Outcome::Samples;
    }
    std::string Reason() const override { return "the drive is not ready"; }

 private:
    std::int64_t BlockFrames() const { return m_song.rate * SongFeeder::kBlock / 1000; }
    char m_letter;
    MadeUpSong m_song;
    int m_block = 0;
};

class FakeSongs : public Songs {
 public:
    std::map<std::string, MadeUpSong> songs;
    std::unique_ptr<Song> MaybeOpen(const std::string& path, std::string& reason) override {
        reason = "it does not exist";
        const auto found = songs.find(path);
        return found == songs.end() ? nullptr
                                    : std::make_unique<FakeSong>(path.back(), found->second);
    }
    std::int64_t Measure(const std::string&, const std::function<bool()>& keepOn) override {
        return keepOn() ? 90'000 : -1;
    }
};

class FakeDevice : public SoundDevice {
 public:
    int refusals = 0;  // of the next openings
    bool isGone = false, stands = false, isPaused = false;
    int rate = 0, openings = 0;
    std::deque<std::string> queue;
    std::string heard, levels;  // levels: left and right

    bool Open(int newRate) override {
        ++openings;
        if (refusals > 0 && refusals-- > 0)
            return false;
        isGone = stands = isPaused = false;
        rate = newRate;
        return true;
    }
    void Close() override { rate = 0, Drop(); }
    bool Write(std::vector<std::int16_t> samples) override {
        EXPECT_EQ(samples.size(), static_cast<std::size_t>(rate / 10));
        queue.push_back(samples[0] == 0  // silence
                            ? ""
                            : static_cast<char>(samples[0]) + std::to_string(samples[1]) + " ");
        return !isGone;
    }
    int TakeFinishedBlocks() override { return std::exchange(m_finished, 0); }
    void Drop() override { queue.clear(), m_finished = 0, isPaused = false; }
    void Pause() override { isPaused = true; }
    void GoOn() override { isPaused = false; }
    void SetLevels(int left, int right) override {
        levels = std::to_string(left) + " " + std::to_string(right);
    }

    void Hear() {
        if (isPaused || stands || queue.empty())
            return;
        heard += queue.front();
        queue.pop_front();
        ++m_finished;
    }

 private:
    int m_finished = 0;
};

class OwnPlayer : public testing::Test {
 protected:
    void Add(const std::string& letters, MadeUpSong song) {
        for (const char letter : letters) {
            songs.songs[std::string("C:\\") + letter] = song;
            EXPECT_EQ(messages.OnAddFile(std::string("C:\\") + letter + '\0'), 1);
        }
    }
    void Command(int id) {
        EXPECT_TRUE(messages.OnCommand(static_cast<std::uint64_t>(id)));
        Work();
    }
    void Remove(std::size_t track) {
        player.Remove(track);
        Work();
    }
    void Work() {
        for (int steps = 0; feeder.Work() == 0; ++steps)
            ASSERT_LT(steps, 1'000);
    }
    // What is heard in that many turns of the device.
    std::string Hear(int blocks) {
        device.heard.clear();
        while (blocks-- > 0) {
            device.Hear();
            clock.milliseconds += SongFeeder::kBlock;
            Work();
        }
        return device.heard;
    }
    // The replies: status, position, length, number of the track.
    std::string State() {
        std::string state;
        for (const auto& [argument, operation] : {std::pair(0, 104), {0, 105}, {1, 105}})
            state += std::to_string(messages.OnUser(argument, operation)) + " ";
        return state + std::to_string(messages.OnTrackNumber());
    }
    std::string Notice() { return player.Now().notice; }

    FakeText text;
    FakeSongs songs;
    FakeDevice device;
    FakeClockAndRandom clock;
    Player player{[] {}};
    SongFeeder feeder{player, songs, device, clock};
    bool closed = false;
    Messages messages{player, text, [this] { closed = true; }};
};

TEST_F(OwnPlayer, AnswersEachMessage) {
    EXPECT_EQ(messages.OnUser(0, 0), 0x1000);
    Command(40045);  // nothing to play
    EXPECT_EQ(State(), "0 -1 -1 0");
    Add("ab", {50});
    Command(40045);
    EXPECT_EQ(Hear(3), "a0 a1 a2 ");
    EXPECT_EQ(State(), "1 150 2 1");
    Command(40046);
    EXPECT_EQ(Hear(5), "");
    EXPECT_EQ(State(), "3 150 2 1");
    messages.OnUser(1'000, 106);  // while paused
    EXPECT_EQ(Hear(2), "");
    EXPECT_EQ(State(), "3 1000 2 1");
    Command(40045);  // goes on
    Command(40045);  // does nothing
    EXPECT_EQ(Hear(2), "a20 a21 ");
    Command(40048);
    Command(40048);  // there is none behind
    EXPECT_EQ(Hear(2), "b0 b1 ");
    EXPECT_EQ(messages.OnTrackNumber(), 2);
    Command(40044);
    EXPECT_EQ(Hear(1), "a0 ");
    Command(40047);
    EXPECT_EQ(State(), "0 -1 2 1");
    EXPECT_EQ(device.rate, 0);
    for (const auto& [value, levels] : {std::pair(0U, "65535 65535"),
                                        {127U, "0 65535"},
                                        {128U, "65535 0"},
                                        {254U, "65535 65018"}}) {
        messages.OnUser(value, 123);
        Command(40045);
        EXPECT_EQ(device.levels, levels) << value;
    }
    messages.OnUser(128, 122);
    Work();
    EXPECT_EQ(device.levels, "32896 32636");
    messages.OnUser(0, 101);
    EXPECT_EQ(State(), "0 -1 -1 0");
    Command(40001);
    EXPECT_TRUE(closed);
}

TEST_F(OwnPlayer, PassesOverNumbersThatMeanNothing) {
    Add("a", {50});
    Command(40045);
    Hear(2);
    for (const std::int64_t number : {std::int64_t{-1}, INT64_MIN, INT64_MAX, std::int64_t{2501},
                                      std::int64_t{INT32_MAX} + 1}) {
        const auto argument = static_cast<std::uint64_t>(number);
        for (const int operation : {105, 106, 122, 123})
            EXPECT_EQ(messages.OnUser(argument, operation), 0);
        EXPECT_EQ(messages.OnUser(0, number), 0);
        EXPECT_FALSE(messages.OnCommand(argument));
    }
    messages.OnUser(256, 122);
    messages.OnUser(255, 123);
    EXPECT_EQ(messages.OnAddFile({}), 0);
    EXPECT_EQ(messages.OnAddFile(std::string(200'000, 'x')), 0);
    EXPECT_EQ(messages.OnAddPath(std::u16string(40'000, u'x')), 0);
    EXPECT_EQ(Hear(2), "a2 a3 ");
    EXPECT_EQ(device.levels, "65535 65535");
    EXPECT_EQ(player.Now().tracks, 1u);
    EXPECT_EQ(messages.OnAddPath(u"D:\\\u03a9 \u6f22.mp3"), 1);
    EXPECT_EQ(messages.OnAddFile("D:\\Caf\xe9.mp3"), 1);  // without a NUL
    EXPECT_EQ(player.NameOf(1), "\u03a9 \u6f22");
    EXPECT_EQ(player.NameOf(2), "Caf\u00e9");
}

TEST_F(OwnPlayer, PlaysSongAfterSongWithoutAGap) {
    Add("abc", {2});
    player.Add("C:\\missing.mp3");
    Add("d", {4, 1'000, 2});
    Add("efghi", {2});
    Command(40045);
    EXPECT_EQ(device.queue.size(), 18u);
    EXPECT_EQ(Hear(6), "a0 a1 b0 b1 c0 c1 ");
    EXPECT_EQ(messages.OnTrackNumber(), 5);
    EXPECT_EQ(Notice(), "d: the drive is not ready.");
    EXPECT_EQ(player.NameOf(4), "Song d");
    Add("j", {2});  // comes while the last ones are on their way
    EXPECT_EQ(Hear(40), "d0 d1 e0 e1 f0 f1 g0 g1 h0 h1 i0 i1 j0 j1 ");
    EXPECT_EQ(device.openings, 1);
    EXPECT_EQ(State(), "0 -1 0 1");
}

TEST_F(OwnPlayer, StopsAfterTheTrackAndFollowsChangesOfTheList) {
    Add("abcd", {4});
    Command(40045);
    EXPECT_EQ(Hear(2), "a0 a1 ");
    Command(40157);  // when the next one is on its way already
    EXPECT_EQ(Hear(9), "a2 a3 ");
    EXPECT_EQ(State(), "0 -1 0 2");
    Command(40045);
    Remove(2);
    EXPECT_EQ(Hear(6), "b0 b1 b2 b3 d0 d1 ");
    Remove(0);
    EXPECT_EQ(Hear(1), "d2 ");
    EXPECT_EQ(messages.OnTrackNumber(), 2);
    player.PlayTrack(0);
    Work();
    EXPECT_EQ(Hear(1), "b0 ");
    Remove(0);
    EXPECT_EQ(Hear(1), "d0 ");
    Remove(0);
    EXPECT_EQ(Hear(2) + State(), "0 -1 -1 0");
}

TEST_F(OwnPlayer, ChangesTheRateWhenTheSongBeforeHasBeenHeard) {
    Add("a", {2});
    Add("b", {60, 2'000, -1, false});
    Command(40045);
    EXPECT_EQ(device.queue.size(), 6u);  // with the silence before the device is closed
    EXPECT_EQ(Hear(6), "a0 a1 ");
    EXPECT_EQ(std::pair(device.rate, device.queue.size()), std::pair(2'000, std::size_t{40}));
    EXPECT_EQ(Hear(3), "b0 b1 b2 ");
    EXPECT_EQ(State(), "1 150 45 2");  // the length is measured by going through the file
}

TEST_F(OwnPlayer, OpensALostDeviceAgainAndGivesUpInTheEnd) {
    Add("a", {600});
    Command(40045);
    Hear(10);
    device.isGone = true;
    EXPECT_EQ(Hear(3), "a10 a11 ");  // nothing in the turn in which it is lost
    device.stands = true;
    device.heard.clear();
    Hear(SongFeeder::kStandstill / SongFeeder::kBlock + 10);
    EXPECT_EQ(device.heard.substr(0, 8), "a12 a13 ");
    EXPECT_EQ(device.openings, 3);
    device.isGone = true;
    device.refusals = 100;
    Hear(10);
    EXPECT_EQ(State(), "0 -1 30 1");
    EXPECT_EQ(Notice(), "There is no sound device that can be used.");
    EXPECT_EQ(device.openings, 5);
    device.refusals = 0;
    Command(40045);
    EXPECT_EQ(Hear(1) + Notice(), "a0 ");
    // A pause is no standstill.
    Command(40046);
    Hear(2 * SongFeeder::kStandstill / SongFeeder::kBlock);
    EXPECT_EQ(device.queue.size(), static_cast<std::size_t>(kBlocksAhead));
    EXPECT_EQ(State(), "3 50 30 1");
}

}  // namespace
}  // namespace tobbin::player
