#include <cstdlib>
#include <functional>
#include <new>

#include "catalogue/DroppedSongs.h"
#include "catalogue/SongFolderList.h"
#include "jukebox/JukeboxFile.h"
#include "shell/Tips.h"
#include "tags/MP3TagEditor.h"
#include "ui/PictureSettings.h"
#include "unit/shell/FrameFixture.h"

namespace {
int allocationsUntilOneFails = 0;  // 0: none fails
}

void* operator new(std::size_t size) {
    void* const memory = allocationsUntilOneFails == 1 ? nullptr : std::malloc(size);
    allocationsUntilOneFails -= allocationsUntilOneFails > 0 ? 1 : 0;
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace tobbin {
namespace {

constexpr char kGrouping[] = "C:\\App\\Grouping\\";
constexpr char kPictures[] = "C:\\App\\Grouping\\mine.poc";
constexpr char kFolderList[] = "C:\\App\\Grouping\\System\\LocOfMainTargetFiles.lmz";
constexpr char kSong[] = "C:\\M\\tagged.mp3";
const std::string kJukebox = std::string(kGrouping) + "mine.juk";

using Files = std::map<std::string, std::string>;

// The program with everything saved once, and then changed.
class World {
 public:
    FakeEnvironment fake;
    Application application{fake.environment,
                            {"C:\\App\\", "C:\\Windows\\System32\\", "C:\\Temp\\"}};
    FakeFrame frame{application};
    FrameCommands commands{application, frame};
    MP3TagEditor tag{fake.disk, fake.text};
    bool reported = false;  // by a save that returns its outcome

    World() {
        fake.disk.AddFolder("C:\\App\\Grouping\\System");
        fake.disk.AddFile(kSong,
                          "music and more of it" + std::string("TAG") + std::string(125, ' '));
        application.Settings().CreateNewIniFile(application.Settings().SettingsPath());
        FindSongs("C:\\M\\", 20);
        application.Catalogue().WriteOutMp3DirectoryLocations();
        Jukebox& jukebox = application.AddJukebox(std::make_unique<Jukebox>());
        BuildInitialJukebox(jukebox, application.Groups(), application.LongWork());
        frame.OpenJukeboxWindow(jukebox);
        fake.dialogs.files.push_back(kJukebox);
        commands.Do(Command::SaveAs);
        FindSongs("C:\\N\\", 10);
        application.Settings().PictureLocation("C:\\new.jpg");
        Window().LastPicFileLocation("C:\\new.jpg");
        commands.Do(Command::AddFolderToRoot);
        tag.LoadMP3(kSong);
        tag.Title("A new title");
        fake.disk.LosePower(0);  // what is on the disk by now is there to stay
        fake.statusLine.lines.clear();
    }
    JukeboxWindow& Window() { return *frame.MaybeActiveJukebox(); }
    bool WasTold() const {
        return reported || !fake.statusLine.lines.empty() || !fake.dialogs.boxes.empty();
    }
    // What the next start finds.
    Files AfterTheNextStart() {
        for (const char* folder : {"", "System\\"})
            FinishOrRemoveNewFiles(fake.disk, std::string(kGrouping) + folder);
        return fake.disk.Everything();
    }

 private:
    void FindSongs(const std::string& folder, int count) {
        for (int i = 0; i < count; ++i) {
            const std::string name = folder.substr(3, 1) + std::to_string(i) + ".mp3";
            fake.disk.AddFile(folder + name, "no tag");
            application.Catalogue().OnSongFound(folder, name);
        }
    }
};

struct Kind {
    const char* name;
    std::function<void(World&)> save;
};

class Saving : public testing::TestWithParam<Kind> {
 protected:
    const Files m_old = World().fake.disk.Everything();
    const Files m_new = [] {
        World world;
        GetParam().save(world);
        return world.AfterTheNextStart();
    }();

    // How many files are neither as they were nor as they should be, or are missing. A tag is
    // written in place: only of the song before it every byte counts.
    int Broken(const Files& files) const {
        int broken = 0;
        const auto isAs = [](const Files& expected, const auto& file) {
            const auto found = expected.find(file.first);
            if (found == expected.end() || found->second.size() != file.second.size())
                return false;
            const std::size_t tag = file.first.ends_with("tagged.mp3") ? MP3TagEditor::kTagSize : 0;
            return found->second.compare(0, file.second.size() - tag, file.second, 0,
                                         file.second.size() - tag) == 0;
        };
        for (const auto& file : files)
            broken += !isAs(m_old, file) && !isAs(m_new, file);
        for (const auto& [path, content] : m_old)
            broken += m_new.contains(path) && !files.contains(path);
        return broken;
    }
};

TEST_P(Saving, IsWholeOrNotAtAllWithAFaultAtEveryDiskOperation) {
    ASSERT_NE(m_old, m_new);
    for (const DiskError error : {DiskError::AccessDenied, DiskError::SharingViolation,
                                  DiskError::DiskFull, DiskError::WriteProtected}) {
        for (const bool once : {true, false}) {
            for (int operation = 1;; ++operation) {
                World world;
                world.fake.disk.replacesInTwoSteps = once;
                world.fake.disk.FailAt(operation, error, once);
                GetParam().save(world);
                if (!world.fake.disk.HasFailed())
                    break;
                SCOPED_TRACE("operation " + world.fake.disk.Log().back() +
                             (once ? ", once" : ", from there on") + ", error " +
                             std::to_string(static_cast<int>(error)));
                world.fake.disk.Heal();
                const Files files = world.AfterTheNextStart();
                ASSERT_EQ(Broken(files), 0);
                if (files != m_new) {
                    ASSERT_TRUE(world.WasTold());
                }
                GetParam().save(world);  // The change is still there to be saved.
                ASSERT_EQ(world.AfterTheNextStart(), m_new);
            }
        }
    }
}

TEST_P(Saving, IsWholeOrNotAtAllAfterAPowerLossAtEveryDiskOperation) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        bool lost = true;
        for (int operation = 1; lost; ++operation) {
            World world;
            world.fake.disk.replacesInTwoSteps = seed % 2 == 0;
            world.fake.disk.StopDeadAt(operation);
            GetParam().save(world);
            lost = world.fake.disk.HasFailed();
            world.fake.disk.LosePower(seed);
            ASSERT_EQ(Broken(world.AfterTheNextStart()), 0) << operation;
        }
    }
}

// Does the work with each of its allocations failing in turn, and looks at the world after each.
template <typename Work, typename Check>
void FailEveryAllocation(Work work, Check check) {
    for (int allocation = 1, isLast = false; !isLast; ++allocation) {
        World world;
        allocationsUntilOneFails = allocation;
        try {
            work(world);
            isLast = std::exchange(allocationsUntilOneFails, 0) != 0;
        } catch (const std::bad_alloc&) {
            allocationsUntilOneFails = 0;
        }
        check(world);
        ASSERT_TRUE(allocation > 10 || !isLast);
    }
}

TEST_P(Saving, IsWholeOrNotAtAllWhenMemoryRunsOut) {
    FailEveryAllocation(GetParam().save,
                        [&](World& world) { EXPECT_EQ(Broken(world.AfterTheNextStart()), 0); });
}

TEST(Loading, ChangesNothingAndThrowsNothingWhenMemoryRunsOut) {
    const Files before = World().fake.disk.Everything();
    FailEveryAllocation(
        [&](World& world) noexcept {
            std::unique_ptr<Jukebox> jukebox;
            world.application.Catalogue().LoadMain();
            (void)LoadJukeboxFile(world.fake.disk, kJukebox, world.application.Catalogue(),
                                  world.fake.text, jukebox);
        },
        [&](World& world) { EXPECT_EQ(world.fake.disk.Everything(), before); });
}

void LoadAll(World& world) {
    struct : TipView {
        void TickTipsAtStartUp(bool /*ticked*/) override {}
        void ShowTip(const std::string& /*text*/) override {}
    } view;
    Application& application = world.application;
    PictureSettings pictures;
    std::vector<std::string> folders;
    std::unique_ptr<Jukebox> jukebox;
    (void)application.Settings().GetandLoadIniInfo(application.Settings().SettingsPath());
    application.Catalogue().LoadMain();
    (void)LoadJukeboxFile(world.fake.disk, kJukebox, application.Catalogue(), world.fake.text,
                          jukebox);
    (void)ReadSongFolderList(world.fake.environment, kFolderList, folders);
    (void)LoadPictureSettings(world.fake.environment, kPictures, pictures);
    Tips(world.fake.environment, "C:\\App\\").Load(view);
    DroppedSongs(world.fake.environment, {"C:\\M\\list.m3u"});
}

TEST(Loading, ReadsNothingOfAFileThatIsTooLarge) {
    const std::string data = kGrouping;
    for (const auto& [path, megabytes] : {std::pair(kJukebox, 512U),
                                          {data + "FileLocNames.lmz", 512},
                                          {data + "System\\TheOrganizer.ini", 1},
                                          {kFolderList, 64},
                                          {kPictures, 1},
                                          {"C:\\App\\TIPOFDAY.TXT", 1},
                                          {"C:\\M\\list.m3u", 32}}) {
        for (const std::uint64_t beyond : {0, 1}) {
            World world;
            if (!world.fake.disk.Has(path))
                world.fake.disk.AddFile(path, "one");
            world.fake.disk.ClaimSize(path, (std::uint64_t{megabytes} << 20U) + beyond);
            const std::string content = world.fake.disk.Content(path);
            world.fake.disk.ClearLog();
            LoadAll(world);
            EXPECT_EQ(std::ranges::count(world.fake.disk.Log(), "read " + path), beyond == 0)
                << path;
            if (path.ends_with(".lmz"))
                world.application.Catalogue().Save();
            EXPECT_EQ(world.fake.disk.Content(path), content);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Files, Saving,
    testing::Values(Kind{"settings",
                         [](World& w) {
                             w.application.Settings().Save(w.application.Settings().SettingsPath());
                         }},
                    Kind{"catalogue", [](World& w) { w.application.Catalogue().Save(); }},
                    Kind{"folders",
                         [](World& w) {
                             w.application.Catalogue().WriteOutMp3DirectoryLocations();
                         }},
                    Kind{"jukebox", [](World& w) { w.commands.Do(Command::Save); }},
                    Kind{"pictures",
                         [](World& w) {
                             w.reported =
                                 !SavePictureSettings(w.fake.environment, kPictures,
                                                      {"C:\\n.jpg", true, true}, FlagText::CheckBox)
                                      .Ok();
                         }},
                    Kind{"tag", [](World& w) { w.reported = !w.tag.SaveMP3().Ok(); }}),
    [](const auto& kind) { return kind.param.name; });

TEST(SavingTogetherWithOthers, TriesAgainForABoundedTime) {
    FakeDisk disk;
    disk.AddFile("C:\\a.juk", "old");
    int pauses = 0;
    disk.onPause = [&] {
        if (++pauses == 40)
            disk.Unlock("C:\\a.juk");
    };
    const auto lock = [&](int pausesBefore, DiskError error = DiskError::SharingViolation) {
        disk.Lock("C:\\a.juk", error);
        pauses = pausesBefore;
    };
    std::string read;
    lock(0);
    EXPECT_TRUE(ReadWholeFile(disk, "C:\\a.juk", 1000, read).Ok());
    lock(0);
    EXPECT_TRUE(SaveWholeFileIfChanged(disk, "C:\\a.juk", "new").Ok());
    EXPECT_EQ(pauses, 40);
    lock(40);
    EXPECT_EQ(SaveWholeFile(disk, "C:\\a.juk", "newer").Error(), DiskError::SharingViolation);
    EXPECT_LT(pauses, 40 + 150);
    lock(40, DiskError::AccessDenied);
    EXPECT_FALSE(SaveWholeFile(disk, "C:\\a.juk", "newer").Ok());
    EXPECT_EQ(pauses, 40);  // waiting would not help
    EXPECT_EQ(disk.Everything(), (Files{{"c:\\a.juk", "new"}}));
}

TEST(SavingTogetherWithOthers, ClearsAtTheStartOnlyWhatSavesLeft) {
    FakeDisk disk;
    for (const char* name : {"a.juk", "a.juk.new", "b.lmz.new", "mine.new", "c.txt.new", ".new",
                             "d.ini.tmp", "e.juk.0123456789abcdef.tmp", "TheOrganizer.tmp"})
        disk.AddFile(std::string("C:\\") + name);
    FinishOrRemoveNewFiles(disk, "C:\\");
    EXPECT_EQ(disk.FilesIn("C:"), (std::vector<std::string>{".new", "TheOrganizer.tmp", "a.juk",
                                                            "b.lmz", "c.txt.new", "mine.new"}));
}

}  // namespace
}  // namespace tobbin
