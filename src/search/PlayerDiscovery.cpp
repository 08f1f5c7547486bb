#include "search/PlayerDiscovery.h"

#include <algorithm>

#include "search/SilentProgress.h"
#include "search/SongSearch.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr int kYieldsAfterADrive = 2000;
constexpr char kPlayerFile[] = "winamp.exe";

// The per-user setting by which our own player stays the one that is used, if it is "Own".
constexpr char kChoiceKey[] = "Chosen Player";

// The per-user settings that say whether a program may be used: this and its path in lower case.
constexpr char kAnswerKey[] = "Use ";

}  // namespace

PlayerDiscovery::Outcome PlayerDiscovery::Search(Progress& progress) {
    m_searchPending = false;
    Outcome outcome = SearchDrives(progress);
    if (outcome == Outcome::NotFound && HasOwnPlayer()) {
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
        !HasOwnPlayer())
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
    return !IsOwnPlayer(PlayerPath()) && HasOwnPlayer();
}

void PlayerDiscovery::UseOwnPlayer() {
    m_environment.userSettings.Write(kChoiceKey, "Own");
    m_location.OnPlayerFound(m_environment.text.ToLower(m_ownPlayer));
}

void PlayerDiscovery::UsePlayer(const std::string& path) {
    m_environment.userSettings.Write(kChoiceKey, IsOwnPlayer(path) ? "Own" : "Other");
    KeepAnswer(path, true);
    m_location.OnPlayerFound(m_environment.text.ToLower(path));
}

// A path that climbs out of a folder again is none that an installer or the system gives.
bool PlayerDiscovery::IsInstalled(const std::string& program) const {
    const SystemText& text = m_environment.text;
    const std::string path = text.ToLower(program);
    if (FileNameOfPath(path) != kPlayerFile || path.find("\\..") != std::string::npos)
        return false;
    const std::vector<std::string> folders = m_environment.programs.InstallFolders();
    const auto registered = m_environment.programs.MaybeRegistered(kPlayerFile);
    return std::ranges::any_of(
               folders,
               [&](const std::string& folder) { return path.starts_with(text.ToLower(folder)); }) ||
           (registered && text.ToLower(*registered) == path);
}

std::optional<std::string> PlayerDiscovery::MaybeAnswer(const std::string& program) const {
    const std::string key = kAnswerKey + m_environment.text.ToLower(program);
    const auto answer = m_answers.find(key);
    return answer != m_answers.end() ? answer->second : m_environment.userSettings.MaybeRead(key);
}

void PlayerDiscovery::KeepAnswer(const std::string& program, bool allowed) {
    const std::string key = kAnswerKey + m_environment.text.ToLower(program);
    const std::string answer = allowed ? "Yes" : "No";
    m_answers[key] = answer;
    if (!program.empty())
        m_environment.userSettings.Write(key, answer);
}

bool PlayerDiscovery::IsAllowed(const std::string& program) const {
    return IsOwnPlayer(program) || IsInstalled(program) || MaybeAnswer(program) == "Yes";
}

// Asks only where nothing is settled yet.
bool PlayerDiscovery::Ask(const std::string& program,
                          const std::function<std::string()>& question) {
    if (!IsAllowed(program) && !MaybeAnswer(program))
        KeepAnswer(program, m_environment.dialogs.Ask(question(), Buttons::YesNoPreferNo,
                                                      BoxIcon::Question) == Answer::Yes);
    return IsAllowed(program);
}

bool PlayerDiscovery::MayRun(const std::string& program) {
    return Ask(program, [&] {
        return "Tobbin has found this player:\n\n" + program +
               "\n\nIt isn't registered as installed and doesn't lie in a Program Files folder, so "
               "anybody who uses this computer may have put it there.  Do you want to run it?" +
               (HasOwnPlayer() ? "  With No, Tobbin's own player is used." : "");
    });
}

bool PlayerDiscovery::MayGetSongs(const std::string& program) {
    return Ask(program, [&] {
        return "The player that is open isn't one that Tobbin knows.  It is this program:\n\n" +
               (program.empty() ? "(Windows doesn't tell which)" : program) +
               "\n\nDo you want to play your songs with it?";
    });
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
