#include "search/PlayerDiscovery.h"

#include <optional>

#include "search/SilentProgress.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr int kYieldsAfterADrive = 2000;
constexpr char kPlayerFile[] = "winamp.exe";

// The per-user setting by which our own player stays the one that is used, if it is "Own".
constexpr char kChoiceKey[] = "Chosen Player";

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
    const auto takes = [&text = m_environment.text](const std::string& path) {
        return !IsInRecycleBin(text, path);
    };
    for (const std::string& root : m_environment.drives.Roots()) {
        progress.Show("Looking for WinAmp in " + root);
        std::optional<std::string> found;
        if (IsHardDrive(m_environment, root))
            found = m_environment.drives.MaybeFindBelow(root, kPlayerFile, takes, keepOn);
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

bool PlayerDiscovery::IsOwnPlayer(const std::string& path) const {
    const SystemText& text = m_environment.text;
    return text.ToLower(path) == text.ToLower(m_ownPlayer);
}

bool PlayerDiscovery::LookWhereRegistered() {
    // The program's folder may have been moved, or copied with its settings.
    const SystemText& text = m_environment.text;
    if (text.ToLower(FileNameOfPath(PlayerPath())) != text.ToLower(FileNameOfPath(m_ownPlayer)) ||
        !FileExists(m_environment.disk, m_ownPlayer))
        return false;
    if (!IsOwnPlayer(PlayerPath()))
        m_location.OnPlayerFound(text.ToLower(m_ownPlayer));
    if (m_environment.userSettings.MaybeRead(kChoiceKey) != "Own")
        if (const auto found = m_environment.programs.MaybeRegistered(kPlayerFile);
            found && !IsInRecycleBin(text, *found) && FileExists(m_environment.disk, *found))
            m_location.OnPlayerFound(text.ToLower(*found));
    return true;
}

bool PlayerDiscovery::OffersOwnPlayer() const {
    return !IsOwnPlayer(PlayerPath()) && FileExists(m_environment.disk, m_ownPlayer);
}

void PlayerDiscovery::UseOwnPlayer() {
    m_environment.userSettings.Write(kChoiceKey, "Own");
    m_location.OnPlayerFound(m_environment.text.ToLower(m_ownPlayer));
}

void PlayerDiscovery::UsePlayer(const std::string& path) {
    m_environment.userSettings.Write(kChoiceKey, IsOwnPlayer(path) ? "Own" : "Other");
    m_location.OnPlayerFound(m_environment.text.ToLower(path));
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
