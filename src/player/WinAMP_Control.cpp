#include "player/WinAMP_Control.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "util/PlayerMessages.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr std::uint32_t kNull = 0x000;  // does nothing, but has to be answered
constexpr std::uint32_t kCommand = 0x111;
constexpr std::uint32_t kUser = 0x400;

// The operation codes behind kUser.
constexpr std::int32_t kVersion = 0;
constexpr std::int32_t kClearPlaylist = 101;
constexpr std::int32_t kStatus = 104;
constexpr std::int32_t kPositionOrLength = 105;
constexpr std::int32_t kSeek = 106;
constexpr std::int32_t kVolume = 122;
constexpr std::int32_t kBalance = 123;

constexpr std::uint32_t kAddFile = 100;  // the identifier of the data record

// Milliseconds. A player at work on a slow disk gets the first; one that is known not to answer is
// asked for a moment only, again and again. What is sent in one go shares about 600.
constexpr int kMessageLimit = 400;
constexpr int kQuestionLimit = 40;
constexpr int kLimitOfTwo = 250;
constexpr int kLimitOfThree = 170;  // beside one of 250, too

constexpr char kDenied[] =
    "The player runs as administrator, so that Windows lets no message of Tobbin reach it.\n\n"
    "Close the player, then ask for your songs again: Tobbin starts it without those rights. If it "
    "takes them by itself, turn off \"Run this program as an administrator\" among the properties "
    "of its program file, or choose another player with the button in the player panel.";
constexpr char kStillDenied[] = "The player runs as administrator. Close it, then play songs anew.";

// Little-endian, whatever this is built for.
std::string Utf16Bytes(const std::string& text) {
    std::string bytes;
    for (const char16_t unit : Utf8ToUtf16(text)) {
        bytes.push_back(static_cast<char>(unit & 0xFFU));
        bytes.push_back(static_cast<char>(unit >> 8U));
    }
    return bytes;
}

}  // namespace

bool WinAMP_Control::FindPlayerWindow() {
    const PlayerWindow::Handle found = m_environment.player.Find();
    if (found != m_window) {
        m_answering = true;
        m_ours.reset();
    }
    m_denied = m_gone = false;
    m_window = found;
    if (found == 0)
        return false;
    m_stranger = m_environment.player.Program(found);
    if (!m_discovery.IsAllowed(m_stranger))
        m_window = 0;
    return true;
}

bool WinAMP_Control::StartPlayer() {
    return !m_programPath.empty() &&
           m_environment.programs.Start(m_programPath, "", ShowProgram::MinimizedInactive);
}

bool WinAMP_Control::WindowOrBox() {
    if (m_window == 0) {
        m_environment.dialogs.Tell(
            "You have to first play a song to use this function.  Try selecting some songs you "
            "wish to play and hitting 'Enter'",
            BoxIcon::Stop, "First Play a Song");
    }
    return m_window != 0;
}

void WinAMP_Control::Note(const PlayerReply& reply) {
    m_gone = reply.outcome == PlayerReply::Outcome::NoWindow;
    if (reply.outcome == PlayerReply::Outcome::Denied) {
        m_answering = false;
        if (!std::exchange(m_denied, true))
            m_environment.dialogs.Tell(kDenied, BoxIcon::Warning);
        return;
    }
    const bool answering = reply.outcome != PlayerReply::Outcome::TimedOut;
    if (m_answering && !answering)
        m_environment.statusLine.Say(
            "The player doesn't answer. Nothing is sent to it until it does.");
    m_answering = answering;
}

bool WinAMP_Control::AnswersAgain() {
    if (m_denied)
        m_environment.statusLine.Say(kStillDenied);
    else if (!m_answering)
        Note(m_environment.player.Send(m_window, kNull, 0, 0, kQuestionLimit));
    return m_answering;
}

std::int32_t WinAMP_Control::Send(std::uint32_t message, std::int32_t wParam, std::int32_t lParam,
                                  int limit, std::int32_t noReply) {
    if (!AnswersAgain())
        return noReply;
    const PlayerReply reply = m_environment.player.Send(m_window, message, wParam, lParam, limit);
    Note(reply);
    return m_answering ? reply.value : noReply;
}

void WinAMP_Control::AskWhoseItIs() {
    const std::int32_t reply = AskTrack(kKnowsMessages);
    if (m_answering)
        m_ours = reply == 1;
}

std::int32_t WinAMP_Control::AskTrack(std::int32_t question) {
    return Send(m_environment.player.Registered(kTrackNumberMessage), question, 0, kLimitOfThree,
                -1);
}

std::int32_t WinAMP_Control::GetTrackNumber() {
    return IsOurs() ? AskTrack(kTrackNumber) : -1;
}

std::int32_t WinAMP_Control::GetTrackCount() {
    return IsOurs() ? AskTrack(kTrackCount) : -1;
}

std::string WinAMP_Control::GetSongName() const {
    std::string caption = IsOurs() ? m_environment.player.Caption(m_window) : std::string();
    if (!caption.ends_with(kCaptionEnd))
        return {};
    caption.resize(caption.size() - std::string_view(kCaptionEnd).size());
    return caption;
}

void WinAMP_Control::SendPlayerCommand(PlayerCommand command) {
    if (WindowOrBox())
        Send(kCommand, static_cast<std::int32_t>(command), 0, kMessageLimit);
}

void WinAMP_Control::ClearPlaylist() {
    if (WindowOrBox())
        Send(kUser, 0, kClearPlaylist, kMessageLimit);
}

// All three, even when one is not answered in time: a slow player takes them one after the other.
void WinAMP_Control::StopAndClose() {
    if (!WindowOrBox() || !AnswersAgain())
        return;
    const auto send = [this](std::uint32_t message, PlayerCommand command, std::int32_t operation) {
        Note(m_environment.player.Send(m_window, message, static_cast<std::int32_t>(command),
                                       operation, kLimitOfThree));
    };
    send(kCommand, PlayerCommand::Stop, 0);
    send(kUser, PlayerCommand{}, kClearPlaylist);
    send(kCommand, PlayerCommand::Close, 0);
}

std::optional<std::string> WinAMP_Control::MaybePathForPlayer(const std::string& path) const {
    if (IsOurs())
        return Utf16Bytes(path);
    auto bytes = m_environment.text.MaybeToSystemPage(path);
    if (!bytes)
        if (const auto shortPath = m_environment.disk.MaybeShortPath(path))
            bytes = m_environment.text.MaybeToSystemPage(*shortPath);
    if (bytes)
        bytes->push_back('\0');
    return bytes;
}

void WinAMP_Control::AddFileToPlaylist(const std::string& path) {
    auto bytes = MaybePathForPlayer(path);
    if (m_window == 0 || !bytes || !AnswersAgain())
        return;
    const std::uint32_t identifier =
        IsOurs() ? m_environment.player.Registered(kAddPathMessage) : kAddFile;
    const PlayerReply reply =
        m_environment.player.SendData(m_window, identifier, *bytes, kMessageLimit);
    Note(reply);
    m_lastAddResult = reply.value;
}

std::string WinAMP_Control::GetPlayerStatus() {
    if (!WindowOrBox())
        return {};
    const std::int32_t reply = Send(kUser, 0, kStatus, kLimitOfThree);
    if (!m_answering)
        return {};
    return reply == 1 ? "PLAYING" : reply == 3 ? "PAUSED" : "STOPPED";
}

std::int32_t WinAMP_Control::GetTrackPosition() {
    if (!WindowOrBox())
        return 0;
    const std::int32_t milliseconds = Send(kUser, 0, kPositionOrLength, kLimitOfThree, -1);
    return milliseconds == -1 ? -1 : milliseconds / 1000;
}

std::int32_t WinAMP_Control::GetTrackLength() {
    return WindowOrBox() ? TrackLength() : 0;
}

std::int32_t WinAMP_Control::TrackLength() {
    return Send(kUser, 1, kPositionOrLength, kLimitOfTwo, -1);
}

void WinAMP_Control::SetTrackPosition(std::int32_t seconds) {
    if (!WindowOrBox() || seconds < 0 || seconds > TrackLength())
        return;
    // The player takes 32 bits, whatever they stand for.
    Send(kUser, static_cast<std::int32_t>(static_cast<std::int64_t>(seconds) * 1000), kSeek,
         kLimitOfTwo);
}

void WinAMP_Control::SetVolume(std::int32_t level) {
    if (WindowOrBox() && level >= 0 && level <= 255)
        Send(kUser, level, kVolume, kMessageLimit);
}

void WinAMP_Control::SetBalance(std::int32_t balance) {
    if (WindowOrBox() && balance >= -127 && balance <= 127)
        Send(kUser, balance < 0 ? balance + 255 : balance, kBalance, kMessageLimit);
}

std::string WinAMP_Control::GetPlayerVersion() {
    if (!WindowOrBox())
        return {};
    char digits[9];
    const auto reply = static_cast<std::uint32_t>(Send(kUser, 0, kVersion, kMessageLimit));
    const int count = std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(reply));
    if (count <= 3)
        return "UNKNOWN";
    // The third digit is left out, as the player's own version texts have none for it.
    return std::string{digits[0], '.', digits[1]} + (digits + 3);
}

bool WinAMP_Control::FileExists(const std::string& path, std::size_t& failures) {
    PathInfo info;
    const DiskStatus status = m_environment.disk.Stat(path, info);
    switch (status.Error()) {
        case DiskError::None:
            return info.kind == PathKind::File;
        case DiskError::NotFound:
        case DiskError::NotReady:
        case DiskError::UnknownHost:
            return false;
        default:
            break;
    }
    if (failures++ > 0)
        return false;
    m_environment.dialogs.Tell("Error Number: " + std::to_string(status.SystemCode()) + "  " +
                                   DiskStatus(status.Error()).Reason() + "\n\n" + path,
                               BoxIcon::None, "Error");
    return false;
}

}  // namespace tobbin
