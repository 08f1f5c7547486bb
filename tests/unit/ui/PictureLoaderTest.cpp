#include "ui/PictureLoader.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace tobbin {
namespace {

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
}

TEST_F(PictureLoaderTest, DeliversAProblemAndDoesNotKeepIt) {
    EXPECT_EQ(Get(first, "bad")->problem, "it is bad");
    EXPECT_EQ(Get(first, "bad")->problem, "it is bad");
    EXPECT_EQ(workshop.made.size(), 2U);
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
