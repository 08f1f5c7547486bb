#pragma once

#include "fakes/TaggedSong.h"
#include "jukebox/AutomaticGroups.h"
#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {

class SomeJukeboxes : public OpenJukeboxes {
 public:
    std::vector<Jukebox*> open;
    std::size_t Count() const override { return open.size(); }
    Jukebox& At(std::size_t index) const override { return *open[index]; }
};

// A catalogue on a disk in memory, and one open jukebox.
class JukeboxFixture : public Catalogue {
 protected:
    SomeJukeboxes jukeboxes;
    AutomaticGroups groups{fake.environment, catalogue, jukeboxes};
    Jukebox jukebox;

    JukeboxFixture() { jukeboxes.open.push_back(&jukebox); }

    // Puts a song on the disk and into the catalogue.
    void AddSong(const std::string& name, const std::string& bytes = "no tag") {
        Add("C:\\M\\", name);
        fake.disk.AddFile("C:\\M\\" + name, bytes);
    }
    void AddFolders(const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            jukebox.AddChild(nullptr, text);
    }
    // The texts of a folder's children and songs: "child/ song ".
    static std::string Inside(const Jukebox& of, const Folder& folder) {
        std::string inside;
        for (std::size_t i = 0; i < folder.ChildCount(); ++i)
            inside += folder.Child(i).Text() + "/ ";
        for (const SongItem& song : folder.Songs())
            inside += std::string(of.TextOf(song)) + " ";
        return inside;
    }
    std::string Inside(const std::string& folder, const std::string& child = "") const {
        const Folder* found = jukebox.MaybeFind(folder);
        if (found != nullptr && !child.empty())
            found = found->MaybeChild(child);
        return found == nullptr ? "no such folder" : Inside(jukebox, *found);
    }
};

}  // namespace tobbin
