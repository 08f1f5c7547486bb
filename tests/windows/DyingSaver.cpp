#include "windows/DyingSaver.h"

#include <windows.h>

#include "fakes/FakeEnvironment.h"
#include "jukebox/JukeboxFile.h"
#include "platform/Disk_win32.h"
#include "tags/MP3TagEditor.h"
#include "ui/PictureSettings.h"
#include "util/Check.h"

namespace tobbin {
namespace {

// The n-th operation from when it was set is the last one of the process: it ends in front of it,
// or behind it, which is behind the first half of a write.
struct Death {
    int operation = 0;  // 0: never
    bool behind = false;

    template <typename Operation>
    DiskStatus Meet(Operation operate) {
        const bool isNow = operation != 0 && --operation == 0;
        if (isNow && !behind)
            TerminateProcess(GetCurrentProcess(), kDeathCode);
        DiskStatus status = operate(isNow);
        if (isNow)
            TerminateProcess(GetCurrentProcess(), kDeathCode);
        return status;
    }
};

class MortalFile : public File {
 public:
    MortalFile(std::unique_ptr<File> file, Death& death)
        : m_file(std::move(file)), m_death(death) {}
    DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) override {
        return m_file->Read(offset, count, bytes);
    }
    DiskStatus Write(std::uint64_t offset, std::string_view bytes) override {
        return m_death.Meet([&](bool dies) {
            return m_file->Write(offset, bytes.substr(0, bytes.size() / (dies ? 2 : 1)));
        });
    }
    DiskStatus Size(std::uint64_t& bytes) override { return m_file->Size(bytes); }
    DiskStatus Flush() override {
        return m_death.Meet([&](bool) { return m_file->Flush(); });
    }
    DiskStatus Close() override {
        return m_death.Meet([&](bool) { return m_file->Close(); });
    }

 private:
    std::unique_ptr<File> m_file;
    Death& m_death;
};

class MortalDisk : public SystemDisk {
 public:
    Death death;
    DiskStatus Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) override {
        DiskStatus status = death.Meet([&](bool) { return SystemDisk::Open(path, mode, file); });
        if (status.Ok())
            file = std::make_unique<MortalFile>(std::move(file), death);
        return status;
    }
    DiskStatus Remove(const std::string& path) override {
        return death.Meet([&](bool) { return SystemDisk::Remove(path); });
    }
    DiskStatus Replace(const std::string& from, const std::string& to) override {
        return death.Meet([&](bool) { return SystemDisk::Replace(from, to); });
    }
};

void Save(MortalDisk& disk, const std::string& kind, const std::string& folder, bool changed,
          const Death& death) {
    FakeEnvironment fake;
    Environment environment{fake.text,         disk,          fake.drives,   fake.dialogs,
                            fake.userSettings, fake.programs, fake.events,   fake.clock,
                            fake.statusLine,   fake.player,   fake.clipboard};
    clsINI settings(environment, folder);
    SortCity sorter(fake.text);
    FakeProgress progress;
    clsMain catalogue(environment, settings, sorter, progress);
    (void)settings.GetandLoadIniInfo(settings.SettingsPath());
    catalogue.LoadMain();
    settings.LocOfLastSavedJukeBox(changed ? "C:\\new.juk" : "C:\\old one.juk");
    for (int song = catalogue.UBoundOfMp3Array(); song < (changed ? 900 : 700); ++song)
        catalogue.OnSongFound(changed ? "C:\\N\\" : "C:\\M\\",
                              "song " + std::to_string(song) + ".mp3");
    const std::string grouping = folder + "Grouping\\";
    bool saved = false;
    if (kind == "settings") {
        disk.death = death;
        saved = settings.Save(settings.SettingsPath());
    } else if (kind == "catalogue") {
        disk.death = death;
        saved = catalogue.Save();
    } else if (kind == "folders") {
        disk.death = death;
        saved = catalogue.WriteOutMp3DirectoryLocations();
    } else if (kind == "jukebox") {
        Jukebox jukebox;
        for (int i = 0; i < (changed ? 500 : 400); ++i)
            jukebox.AddChild(nullptr, "Folder " + std::to_string(i));
        disk.death = death;
        saved = SaveJukeboxFile(disk, grouping + "mine.juk", jukebox, catalogue).Ok();
    } else if (kind == "pictures") {
        disk.death = death;
        saved = SavePictureSettings(environment, grouping + "mine.poc",
                                    {changed ? "C:\\n.jpg" : "C:\\the old one.jpg", true, changed},
                                    FlagText::CheckBox)
                    .Ok();
    } else if (kind == "tag") {
        MP3TagEditor tag(disk, fake.text);
        CHECK(tag.LoadMP3(folder + "song.mp3"));
        tag.Title(changed ? "A new title" : "");
        disk.death = death;
        saved = tag.SaveMP3().Ok();
    }
    disk.death = {};
    CHECK(saved);
}

}  // namespace

const std::vector<std::string>& SavedKinds() {
    static const std::vector<std::string> kinds = {"settings", "catalogue", "folders",
                                                   "jukebox",  "pictures",  "tag"};
    return kinds;
}

void SaveKind(const std::string& kind, const std::string& folder, bool changed) {
    MortalDisk disk;
    Save(disk, kind, folder, changed, {});
}

void SaveUpTo(const std::string& kind, const std::string& folder, int operation, bool behind) {
    MortalDisk disk;
    Save(disk, kind, folder, true, {operation, behind});
}

}  // namespace tobbin
