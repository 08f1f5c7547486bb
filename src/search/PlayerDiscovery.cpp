#include "search/PlayerDiscovery.h"

#include <optional>

#include "search/SilentProgress.h"
#include "search/SongSearch.h"

namespace tobbin {
namespace {

constexpr int kYieldsAfterADrive = 2000;

}  // namespace

PlayerDiscovery::Outcome PlayerDiscovery::Search(Progress& progress) {
    m_searchPending = false;
    Outcome outcome = SearchDrives(progress);
    if (outcome == Outcome::NotFound && FileExists(m_environment.disk, m_ownPlayer)) {
        m_location.OnPlayerFound(m_environment.text.ToLower(m_ownPlayer));
        outcome = Outcome::Found;
    }
    m_searchPending = outcome == Outcome::Stopped;
    return outcome;
}

PlayerDiscovery::Outcome PlayerDiscovery::SearchDrives(Progress& progress) {
    const auto keepOn = [&] {
        m_environment.events.LetEventsThrough();
        return !progress.StopRequested();
    };
    for (const std::string& root : m_environment.drives.Roots()) {
        progress.Show("Looking for WinAmp in " + root);
        std::optional<std::string> found;
        if (IsHardDrive(m_environment, root))
            found = m_environment.drives.MaybeFindBelow(root, "winamp.exe", keepOn);
        if (found && !found->empty()) {
            progress.Show("Found WinAmp!!");
            m_location.OnPlayerFound(m_environment.text.ToLower(*found));
            return Outcome::Found;
        }
        for (int i = 0; i < kYieldsAfterADrive; ++i)
            m_environment.events.LetEventsThrough();
        if (progress.StopRequested())
            return Outcome::Stopped;
    }
    return Outcome::NotFound;
}

bool PlayerDiscovery::RunInstaller(const std::string& applicationFolder) {
    const std::string installer = applicationFolder + "winamp265_lite.exe";
    const bool isThere = FileExists(m_environment.disk, installer);
    if (isThere && m_environment.programs.Start(installer, "", ShowProgram::Normal))
        return true;
    m_environment.dialogs.Tell(
        "The player's installer can't be started:\n\n" + installer + "\n\n" +
            (isThere ? "The system refused to run it. Try to start it yourself."
                     : "It does not exist. Put it there, or install the player yourself; Tobbin "
                       "will search for it next time it opens."),
        BoxIcon::Warning);
    return false;
}

void PlayerDiscovery::SearchWithProgressWindow(SearchingWindow& window,
                                               const std::function<void()>& addNewSongs) {
    window.Open();
    window.Show("Searching for Winamp  . . . ");
    SilentProgress silent(window);
    Search(silent);
    window.Show("Searching to add new songs  . . . ");
    addNewSongs();
    window.Close();
}

}  // namespace tobbin
