#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/Environment.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {

// The commands of SendPlayerCommand.
enum class PlayerCommand : std::int32_t {
    Close = 40001,
    PreviousTrack = 40044,
    Play = 40045,
    Pause = 40046,
    Stop = 40047,
    NextTrack = 40048,
    StopAfterTrack = 40157,
};

// The external player, as one small operation for each message to its main window. One instance
// serves the whole program. Our own player knows messages beside the described ones, which are used
// once it has said so; any other gets none of them but that question.
//
// With no known window, every operation but FindPlayerWindow, StartPlayer and AddFileToPlaylist
// sends nothing, shows the "First Play a Song" box and returns its empty value. A window that is
// gone is not noticed: what is sent to it has no effect and its replies are 0.
//
// No operation waits for longer than some 600 milliseconds, late as the replies may be. After one
// that the player did not answer in time nothing more is sent until a cheap question gets an answer
// again; meanwhile the operations return at once. A player that runs as administrator, so that no
// message reaches it, is told of in one box; nothing more is sent to it until it is looked for
// anew.
class WinAMP_Control {
 public:
    // `discovery` knows which programs may be sent anything.
    WinAMP_Control(Environment& environment, const PlayerDiscovery& discovery)
        : m_environment(environment), m_discovery(discovery) {}

    // The player program's full path; empty when no player is known.
    const std::string& PlayerProgramPath() const { return m_programPath; }
    void PlayerProgramPath(std::string path) { m_programPath = std::move(path); }

    // Looks for the player's window and keeps it; forgets the one known before. Returns whether
    // there is one. That of a program that may not be used doesn't get known; `Stranger` is that
    // program's path.
    bool FindPlayerWindow();
    const std::string& Stranger() const { return m_stranger; }
    bool IsWindowKnown() const { return m_window != 0; }

    // Whether it is our own player: AskWhoseItIs asks, once for each window.
    bool IsOurs() const { return m_ours.value_or(false); }
    bool MustAskWhoseItIs() const { return m_window != 0 && !m_ours; }
    void AskWhoseItIs();

    // Our own player's: the number of the current song, from 1 (0: the list is empty), and how many
    // the list holds; -1 without a reply. And the name of the song that plays; empty when none
    // does.
    std::int32_t GetTrackNumber();
    std::int32_t GetTrackCount();
    std::string GetSongName() const;

    // Starts the player minimized and does not wait for its window. False without a program path
    // or when it can't be started.
    bool StartPlayer();

    void SendPlayerCommand(PlayerCommand command);
    void ClearPlaylist();
    // Stops the player, clears its list and closes it.
    void StopAndClose();

    // The bytes by which the player is told of a file: our own by its path in UTF-16, any other by
    // that in the system's code page or, where the page can't hold it, by the short path. Nothing
    // when it has neither.
    std::optional<std::string> MaybePathForPlayer(const std::string& path) const;

    // Adds a file that has a path for the player.
    void AddFileToPlaylist(const std::string& path);
    std::int32_t LastAddResult() const { return m_lastAddResult; }

    // "PLAYING", "PAUSED" or "STOPPED"; empty when the player didn't answer.
    std::string GetPlayerStatus();
    // Seconds; -1 when the player has none to tell or didn't answer.
    std::int32_t GetTrackPosition();
    std::int32_t GetTrackLength();
    // Such as "2.01"; "UNKNOWN" for a reply that is no version.
    std::string GetPlayerVersion();

    // These pass over a value out of range: 0 to the track's length, 0 to 255, -127 to 127.
    void SetTrackPosition(std::int32_t seconds);
    void SetVolume(std::int32_t level);
    void SetBalance(std::int32_t balance);

    // Whether the file exists. A failure other than a file, path or device that is not there counts
    // as missing; it is counted, and the first one shows a box.
    bool FileExists(const std::string& path, std::size_t& failures);
    bool FileExists(const std::string& path) {
        std::size_t failures = 0;
        return FileExists(path, failures);
    }

    // Whether the last message was answered in time.
    bool IsAnswering() const { return m_answering; }
    // Whether the player answers now; asks it when it didn't before.
    bool AnswersAgain();
    // Whether it has more rights than this program, and: whether its window was gone at last.
    bool IsDenied() const { return m_denied; }
    bool IsGone() const { return m_gone; }

 private:
    bool WindowOrBox();
    // `limit` in milliseconds. Returns the reply; `noReply` for one that didn't come in time.
    std::int32_t Send(std::uint32_t message, std::int32_t wParam, std::int32_t lParam, int limit,
                      std::int32_t noReply = 0);
    std::int32_t TrackLength();
    std::int32_t AskTrack(std::int32_t question);
    void Note(const PlayerReply& reply);

    Environment& m_environment;
    const PlayerDiscovery& m_discovery;
    std::string m_programPath, m_stranger;
    PlayerWindow::Handle m_window = 0;
    std::int32_t m_lastAddResult = 0;
    std::optional<bool> m_ours;
    bool m_answering = true;
    bool m_denied = false;
    bool m_gone = false;
};

}  // namespace tobbin
