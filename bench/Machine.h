#pragma once

#include <string>

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "fakes/FakeEnvironment.h"
#include "jukebox/AutomaticGroups.h"
#include "PosixDisk.h"

namespace tobbin {

// The core as a program of its own, with real files below a folder that stands for drive C:; all
// else of the outside is the tests' own.
class Machine : private OpenJukeboxes {
 public:
    explicit Machine(const std::string& root) : disk(root) {}

    FakeEnvironment fake;
    PosixDisk disk;
    Environment environment{fake.text,         disk,          fake.drives,    fake.dialogs,
                            fake.userSettings, fake.programs, fake.events,    fake.clock,
                            fake.statusLine,   fake.player,   fake.clipboard, fake.hosts,
                            kDiskReaders};
    SortCity sorter{fake.text};
    Progress progress;
    clsINI settings{environment, "C:\\Tobbin\\"};
    clsMain catalogue{environment, settings, sorter, progress};
    Jukebox* jukebox = nullptr;  // the open one, if any
    OpenJukeboxes& Open() { return *this; }
    AutomaticGroups groups{environment, catalogue, *this};

 private:
    std::size_t Count() const override { return jukebox != nullptr ? 1 : 0; }
    Jukebox& At(std::size_t /*index*/) const override { return *jukebox; }
};

// Fills a catalogue as a search would, with songs of made-up names; nothing is on any disk.
void FillCatalogue(clsMain& catalogue, int songs);

}  // namespace tobbin
