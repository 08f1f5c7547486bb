#include "tobbin_player/Messages.h"

#include "util/Utf.h"

namespace tobbin::player {
namespace {

enum Operation : std::int64_t {
    kVersion = 0,
    kClearList = 101,
    kStatus = 104,
    kPositionOrLength = 105,
    kSeek = 106,
    kSetVolume = 122,
    kSetBalance = 123,
};

enum Command : std::uint64_t {
    kClose = 40001,
    kPrevious = 40044,
    kPlay = 40045,
    kPause = 40046,
    kStop = 40047,
    kNext = 40048,
    kStopAfterTrack = 40157,
};

constexpr std::int64_t kVersionReply = 0x1000;  // read as "1.00"
constexpr std::size_t kMostPathUnits = 32'767;  // the system's own limit
constexpr std::int64_t kLongestSeek = 0x7FFF'FFFF;

std::int64_t StatusReply(Status status) {
    switch (status) {
        case Status::Playing:
            return 1;
        case Status::Paused:
            return 3;
        default:
            return 0;
    }
}

}  // namespace

std::int64_t Messages::OnUser(std::uint64_t argument, std::int64_t operation) {
    switch (operation) {
        case kVersion:
            return kVersionReply;
        case kClearList:
            m_player.Clear();
            return 0;
        case kStatus:
            return StatusReply(m_player.Now().status);
        case kPositionOrLength: {
            if (argument > 1)
                return 0;
            const Display now = m_player.Now(argument == 1);
            return argument == 0 ? now.position : now.length < 0 ? -1 : now.length / 1000;
        }
        case kSeek:
            if (argument <= kLongestSeek)
                m_player.Seek(static_cast<std::int64_t>(argument));
            return 0;
        case kSetVolume:
            if (argument <= 255)
                m_player.SetVolume(static_cast<int>(argument));
            return 0;
        case kSetBalance:  // 128 to 254 stand for -127 to -1
            if (argument <= 254)
                m_player.SetBalance(static_cast<int>(argument) - (argument > 127 ? 255 : 0));
            return 0;
        default:
            return 0;
    }
}

bool Messages::OnCommand(std::uint64_t id) {
    switch (id) {
        case kClose:
            m_close();
            return true;
        case kPrevious:
            m_player.Step(-1);
            return true;
        case kPlay:
            m_player.Play();
            return true;
        case kPause:
            m_player.Pause();
            return true;
        case kStop:
            m_player.Stop();
            return true;
        case kNext:
            m_player.Step(1);
            return true;
        case kStopAfterTrack:
            m_player.StopAfterTrack();
            return true;
        default:
            return false;
    }
}

std::int64_t Messages::OnAddFile(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    // A character takes three bytes for one unit of UTF-16 at most.
    return bytes.size() > 3 * kMostPathUnits ? 0 : Add(m_text.FromAnsi(bytes));
}

std::int64_t Messages::OnAddPath(std::u16string_view path) {
    const bool isPath = path.size() <= kMostPathUnits && path.find(u'\0') == path.npos;
    return isPath ? Add(Utf16ToUtf8(path)) : 0;
}

std::int64_t Messages::Add(std::string path) {
    return !path.empty() && m_player.Add(std::move(path)) ? 1 : 0;
}

std::int64_t Messages::OnTrackNumber(std::uint64_t question) {
    const Display now = m_player.Now();
    switch (question) {
        case kTrackNumber:
            return now.track ? static_cast<std::int64_t>(*now.track) + 1 : 0;
        case kTrackCount:
            return static_cast<std::int64_t>(now.tracks);
        case kKnowsMessages:
            return 1;
        default:
            return 0;
    }
}

}  // namespace tobbin::player
