#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Application.h"
#include "shell/FrameView.h"

namespace tobbin {

// Copies of open jukeboxes with changes that are not saved. They lie in a folder "Recovered" of the
// data folder, or where that can't be written in one of the person's own, so that a crash, a power
// loss, a failed save or the end of the Windows session costs no more than the changes of the last
// minutes. Each jukebox has one copy, under a name that no other file there and no open window has;
// it goes when the jukebox is saved or closed.
//
// The name ends in "(recovered)", as does the title of the window in which it is opened, and a
// jukebox that is opened from it has no file location: it is saved under a name that the person
// gives it, never over the one that it is a copy of.
class RecoveredJukeboxes {
 public:
    // How often the open jukeboxes are looked at.
    static constexpr std::int64_t kMillisecondsBetweenCopies = 3 * 60 * 1'000;

    RecoveredJukeboxes(Application& application, FrameView& view);

    // Brings the copies up to date: always, or if so much time has gone since the last time. Opens
    // no box; the status line says which jukebox can't be kept.
    void KeepAll();
    void KeepWhenDue();
    // The same at the end of the Windows session; the copies stay whatever happens until then.
    void LeaveForNextStart();

    // Brings the copy of one jukebox up to date. The error is that of the last folder tried.
    DiskStatus Keep(const JukeboxWindow& window);
    // The path of its copy; empty when there is none.
    std::string PathOf(const Jukebox& jukebox) const;
    // Removes the copy of a jukebox, if there is one.
    void Drop(const Jukebox& jukebox);

    // The folders in which copies may lie, each with "\" at its end, and whether a path is in one.
    std::vector<std::string> Folders() const;
    bool IsInFolder(std::string_view path) const;

    // What was left by earlier runs of the program: the full paths.
    std::vector<std::string> LeftBehind() const;
    // Opens a copy in a window; null where it can't be loaded: a damaged one is kept under another
    // name, and the status line says what is wrong with it.
    Jukebox* MaybeOpen(const std::string& path);

 private:
    struct Copy {
        std::weak_ptr<const void> jukebox;  // its life token
        std::string path;
        std::uint64_t changes = 0;  // of the jukebox that are in the copy
    };
    static bool IsOf(const Copy& copy, const Jukebox& jukebox) {
        return copy.jukebox.lock() == jukebox.LifeToken();
    }
    const Copy* MaybeCopyOf(const Jukebox& jukebox) const;
    bool IsTaken(std::string_view path) const;
    bool IsTitleOpen(const std::string& title) const;
    DiskStatus Write(const std::string& path, const JukeboxWindow& window);
    DiskStatus WriteNew(const JukeboxWindow& window, std::string& path);
    std::string FreeName(const std::string& caption);
    void Remove(const std::string& path);

    Application& m_application;
    FrameView& m_view;
    Environment& m_environment;
    std::vector<Copy> m_copies;
    std::vector<std::string> m_toRemove;  // which another program held
    std::int64_t m_lastKept;
};

}  // namespace tobbin
