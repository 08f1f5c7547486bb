#pragma once

#include <string>

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "fakes/FakeOutside.h"
#include "jukebox/AutomaticGroups.h"
#include "PosixDisk.h"

namespace tobbin {

// The core as a program of its own, with real files below a folder that stands for drive C:; all
// else of the outside is the tests' own.
class Machine : private OpenJukeboxes {
 public:
    explicit Machine(const std::string& root) : disk(root) {}

    FakeOutside fake;
    PosixDisk disk;
    Outside outside{fake.text,         disk,          fake.drives,   fake.dialogs,
                    fake.userSettings, fake.programs, fake.events,   fake.clock,
                    fake.statusLine,   fake.player,   fake.clipboard};
    SortCity sorter{fake.text};
    Progress progress;
    clsINI settings{outside, "C:\\Tobbin\\"};
    clsMain catalogue{outside, settings, sorter, progress};
    Jukebox* jukebox = nullptr;  // the open one, if any
    OpenJukeboxes& Open() { return *this; }
    AutomaticGroups groups{outside, catalogue, *this};

 private:
    std::size_t Count() const override { return jukebox != nullptr ? 1 : 0; }
    Jukebox& At(std::size_t /*index*/) const override { return *jukebox; }
};

// Fills a catalogue as a search would, with songs of made-up names; nothing is on any disk.
void FillCatalogue(clsMain& catalogue, int songs);

}  // namespace tobbin
