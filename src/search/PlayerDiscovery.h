#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/Environment.h"

namespace tobbin {

// Where the player program's place is kept.
class PlayerLocation {
 public:
    virtual ~PlayerLocation() = default;
    virtual std::string PlayerPath() const = 0;  // full path; empty when not known

    // Stores the path for good.
    virtual void OnPlayerFound(const std::string& path) = 0;
};

// The small progress window `frmSearching`. Showing a text in it repaints it.
class SearchingWindow : public Progress {
 public:
    // Takes back a wish to stop: what follows is other work.
    virtual void GoOn() {}
    virtual void Open() = 0;
    virtual void Close() = 0;
};

// Finds the external player's program on the hard drives and runs its installer.
class PlayerDiscovery {
 public:
    // `ownPlayer` is the full path of the player that comes with the program, if the package has
    // one; it serves where no other is found.
    PlayerDiscovery(Environment& environment, PlayerLocation& location, std::string ownPlayer)
        : m_environment(environment), m_location(location), m_ownPlayer(std::move(ownPlayer)) {}

    enum class Outcome { Found, NotFound, Stopped };

    // Looks through the hard drives up to the first that holds the player, whose path is stored in
    // lower case, as is that of our own player where none does. The texts go to the progress
    // window, which can also stop the search; it is then pending, left to the first command that
    // needs the player.
    Outcome Search(Progress& progress);
    bool IsSearchPending() const { return m_searchPending; }

    // While our own player serves for want of another one, a later start looks only where installed
    // programs are registered, which takes no time; not once the person has chosen ours. Returns
    // false when it doesn't serve, so that a missing player is to be searched for.
    bool LookWhereRegistered();

    // What the person chooses. `OffersOwnPlayer`: another one is used, and the package has ours.
    std::string PlayerPath() const { return m_location.PlayerPath(); }
    bool OffersOwnPlayer() const;
    void UseOwnPlayer();
    void UsePlayer(const std::string& path);

    // Whether a program may be run as the player, or be sent songs because its window is open.
    // Anybody who uses the computer can put a "winamp.exe" on its disks, and a copied settings file
    // can name any program. Ours may, and one that is installed; any other once the person has said
    // so. `IsAllowed` doesn't ask. Each program is asked about once, and the answer is kept.
    bool IsAllowed(const std::string& program) const;
    bool MayRun(const std::string& program);
    bool MayGetSongs(const std::string& program);
    bool HasOwnPlayer() const { return FileExists(m_environment.disk, m_ownPlayer); }

    // Starts the installer that lies in the application folder (which ends in "\"), and goes on at
    // once. When it can't be started, a box gives its full name and the reason.
    bool RunInstaller(const std::string& applicationFolder);

    // Shows the window while the player is searched for and new songs are added.
    void SearchWithProgressWindow(SearchingWindow& window,
                                  const std::function<void()>& addNewSongs);

 private:
    Outcome SearchDrives(Progress& progress);
    bool IsOwnPlayer(const std::string& path) const;
    bool IsInstalled(const std::string& program) const;
    std::optional<std::string> MaybeAnswer(const std::string& program) const;
    void KeepAnswer(const std::string& program, bool allowed);
    bool Ask(const std::string& program, const std::function<std::string()>& question);

    Environment& m_environment;
    PlayerLocation& m_location;
    std::string m_ownPlayer;
    bool m_searchPending = false;
    std::map<std::string, std::string> m_answers;  // of this session, by the settings' keys
};

}  // namespace tobbin
