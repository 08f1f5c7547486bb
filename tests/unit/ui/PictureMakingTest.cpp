#include "ui/JpegPictureMaker.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "fakes/FakeDisk.h"
#include "ui/PictureLoader.h"

namespace tobbin {
namespace {

using Rows = std::vector<std::uint32_t>;

// Of pixels that tell their place in the stored picture: the column in the red part, the row in the
// green one. Scales by taking the nearest, and turns step by step.
class FakeDecoder : public JpegDecoder {
 public:
    PictureSize stored;
    int orientation = 1;
    bool readable = true;
    PicturePart part;
    bool Open(std::string_view) override { return stored.width > 0; }
    PictureSize Size() const override { return stored; }
    int Orientation() const override { return orientation; }
    bool Read(const PicturePart& of, PictureSize to, const PictureTurn& turn,
              PicturePixels& pixels) override {
        part = of;
        const auto mirrored = [](bool mirror, int at, int length) {
            return mirror ? length - 1 - at : at;
        };
        pixels = PicturePixels(to);
        for (int y = 0; y < to.height; ++y)
            for (int x = 0; x < to.width; ++x)
                pixels.Row(y)[x] = static_cast<std::uint32_t>(
                    (part.x + mirrored(turn.mirrorX, x, to.width) * part.width / to.width) << 16 |
                    (part.y + mirrored(turn.mirrorY, y, to.height) * part.height / to.height) << 8);
        for (int quarter = 0; quarter < turn.quarters; ++quarter) {
            PicturePixels turned({pixels.size.height, pixels.size.width});
            for (int y = 0; y < pixels.size.height; ++y)
                for (int x = 0; x < pixels.size.width; ++x)
                    turned.Row(x)[pixels.size.height - 1 - y] = pixels.Row(y)[x];
            pixels = turned;
        }
        return readable;
    }
    void Close() override {}
};

class JpegPictureMakerTest : public testing::Test {
 protected:
    FakeDisk* disk = new FakeDisk;
    FakeDecoder* decoder = new FakeDecoder;
    JpegPictureMaker maker{std::unique_ptr<Disk>(disk), std::unique_ptr<JpegDecoder>(decoder)};

    Picture Make(PictureSize stored, PictureSize pane, bool tiled, int orientation = 1) {
        decoder->stored = stored;
        decoder->orientation = orientation;
        disk->AddFile("C:\\a.jpg", "a picture");
        return maker.Make({"C:\\a.jpg", pane, tiled});
    }
};

// A picture of three columns a b c and two rows, as each orientation shows it.
TEST_F(JpegPictureMakerTest, TurnsThePictureAsTheCameraWasHeld) {
    const std::uint32_t a1 = 0, b1 = 0x10000, c1 = 0x20000, a2 = 0x100, b2 = 0x10100, c2 = 0x20100;
    const Rows expected[] = {{a1, b1, c1, a2, b2, c2}, {c1, b1, a1, c2, b2, a2},
                             {c2, b2, a2, c1, b1, a1}, {a2, b2, c2, a1, b1, c1},
                             {a1, a2, b1, b2, c1, c2}, {a2, a1, b2, b1, c2, c1},
                             {c2, c1, b2, b1, a2, a1}, {c1, c2, b1, b2, a1, a2}};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const PictureSize seen = orientation < 5 ? PictureSize{3, 2} : PictureSize{2, 3};
        for (const bool tiled : {false, true})
            EXPECT_EQ(Make({3, 2}, seen, tiled, orientation).pixels.pixels,
                      expected[orientation - 1]);
        // Only its first pixel fits.
        EXPECT_EQ(Make({3, 2}, {1, 1}, true, orientation).pixels.pixels[0],
                  expected[orientation - 1][0]);
    }
    EXPECT_EQ(Make({3, 2}, {3, 2}, false, 9).pixels.pixels, expected[0]);
}

TEST_F(JpegPictureMakerTest, CoversThePaneWithTheMiddleAndKeepsTheProportions) {
    EXPECT_EQ(Make({200, 100}, {50, 50}, false).pixels.size, (PictureSize{50, 50}));
    EXPECT_EQ(decoder->part, (PicturePart{50, 0, 100, 100}));
    Make({200, 100}, {50, 200}, false, 6);  // seen as 100 x 200
    EXPECT_EQ(decoder->part, (PicturePart{0, 25, 200, 50}));
}

TEST_F(JpegPictureMakerTest, TellsWhyThereIsNoPicture) {
    const char kDamaged[] = "the file is damaged, or no JPEG picture that this system can decode";
    disk->AddFolder("C:\\folder.jpg");
    for (const char* path : {"C:\\gone.jpg", "C:\\folder.jpg"})
        EXPECT_EQ(maker.Make({path, {9, 9}}).problem, "it is not there any more");
    disk->AddFile("C:\\empty.jpg");
    EXPECT_EQ(maker.Make({"C:\\empty.jpg", {9, 9}}).problem, "the file is empty");
    EXPECT_EQ(Make({0, 9}, {9, 9}, false).problem, kDamaged);
    EXPECT_EQ(Make({15000, 10000}, {9, 9}, false).problem, "");
    EXPECT_EQ(Make({15000, 10001}, {9, 9}, false).problem,
              "it is too large (15000 x 10001 pixels)");
    decoder->readable = false;
    EXPECT_EQ(Make({300, 300}, {90, 90}, false).problem, kDamaged);
    EXPECT_TRUE(Make({300, 300}, {90, 90}, false).pixels.pixels.empty());
    disk->Lock("C:\\a.jpg", DiskError::AccessDenied);
    EXPECT_EQ(maker.Make({"C:\\a.jpg", {9, 9}}).problem, "access is denied");
}

// Black text on white: every share of dark pixels above one in a hundred is lightened enough.
TEST(Veil, KeepsTextsReadableAndLeavesTheRestItsColors) {
    const auto share = [](std::uint32_t color, std::uint32_t veil, int every = 1) {
        PicturePixels picture({40, 25});
        for (std::size_t i = 0; i < picture.pixels.size(); ++i)
            picture.pixels[i] = i % static_cast<std::size_t>(every) == 0 ? color : veil;
        return Veil(picture, veil);
    };
    EXPECT_EQ(share(0x000000, 0xFFFFFF), 60);
    EXPECT_EQ(share(0x000000, 0xFFFFFF, 50), 60);
    EXPECT_EQ(share(0x000000, 0xFFFFFF, 200), 25);
    EXPECT_EQ(share(0xFFFFFF, 0x000000), 60);
    EXPECT_EQ(share(0xC0C0C0, 0xFFFFFF), 25);
    PicturePixels gray({1, 1});
    gray.pixels[0] = 0x808080;
    EXPECT_EQ(Veil(gray, 0xFFFFFF), 25);
    EXPECT_EQ(gray.pixels[0], 0xA0A0A0U);
}

using Lines = std::vector<std::string>;

// What the loader's thread does, as the test lets it: it makes a picture only while `open`.
struct Workshop {
    std::mutex mutex;
    std::condition_variable changed;
    bool open = true;
    int ready = 0;
    Lines made;
    std::string stamp;

    template <typename Condition>
    bool WaitFor(Condition condition) {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), condition);
    }
    void Set(const std::function<void()>& change) {
        const std::lock_guard lock(mutex);
        change();
        changed.notify_all();
    }
};

class FakeMaker : public PictureMaker {
 public:
    explicit FakeMaker(Workshop& workshop) : m_workshop(workshop) {}
    std::string Stamp(const std::string&) override {
        const std::lock_guard lock(m_workshop.mutex);
        return m_workshop.stamp;
    }
    Picture Make(const PictureRequest& request) override {
        m_workshop.Set([&] { m_workshop.made.push_back(request.path); });
        m_workshop.WaitFor([&] { return m_workshop.open; });
        Picture picture;
        picture.pixels = PicturePixels(request.pane);
        if (request.path == "bad")
            picture.problem = "it is bad";
        return picture;
    }

 private:
    Workshop& m_workshop;
};

class PictureLoaderTest : public testing::Test {
 protected:
    Workshop workshop;
    PictureLoader loader{[this] { return std::make_unique<FakeMaker>(workshop); }, 3 * 400};
    int first = 0, second = 0;  // two owners

    void Want(const int& owner, const std::string& path) {
        loader.Want(&owner, {path, {10, 10}}, [this] { workshop.Set([&] { ++workshop.ready; }); });
    }
    // Waits for the owner's picture.
    std::shared_ptr<const Picture> Get(const int& owner, const std::string& path) {
        const int before = workshop.ready;
        Want(owner, path);
        workshop.WaitFor([&] { return workshop.ready > before; });
        return loader.MaybeTake(&owner);
    }
};

TEST_F(PictureLoaderTest, KeepsTheLastPicturesAndMakesAChangedFileAnew) {
    for (const char* path : {"a", "b", "c", "a", "d", "a", "b"})
        ASSERT_NE(Get(first, path), nullptr);
    EXPECT_EQ(workshop.made, (Lines{"a", "b", "c", "d", "b"}));  // "b" was pushed out by "d"
    EXPECT_EQ(loader.MaybeTake(&first), nullptr);
    workshop.Set([&] { workshop.stamp = "later"; });
    Get(second, "b");
    EXPECT_EQ(workshop.made.size(), 6U);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Get(first, "bad")->problem, "it is bad");
    EXPECT_EQ(workshop.made.size(), 8U);  // a problem is not kept
}

TEST_F(PictureLoaderTest, ServesTheNewestRequestFirstAndForgetsTheOnesReplaced) {
    workshop.open = false;
    Want(first, "a");
    ASSERT_TRUE(workshop.WaitFor([&] { return workshop.made.size() == 1; }));
    Want(first, "b");
    Want(second, "c");
    Want(first, "d");
    loader.Expect(&first, {"e", {10, 10}});
    loader.Expect(&second, {"f", {10, 10}});
    loader.Forget(&second);
    workshop.Set([&] { workshop.open = true; });
    ASSERT_TRUE(workshop.WaitFor([&] { return workshop.made.size() == 3; }));
    EXPECT_EQ(workshop.made, (Lines{"a", "d", "e"}));
    EXPECT_EQ(workshop.ready, 1);
    EXPECT_NE(loader.MaybeTake(&first), nullptr);
    Get(first, "e");  // was made ahead
    EXPECT_EQ(workshop.made.size(), 3U);
}

}  // namespace
}  // namespace tobbin
