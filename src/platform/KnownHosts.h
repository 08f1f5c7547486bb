#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "util/SystemText.h"

namespace tobbin {

class Dialogs;
class Drives;
class UserSettings;

// The computer of the network that a path lies on, in small letters; empty for a path on a drive of
// this one. Text that is no full path has none either.
std::string HostOfPath(const SystemText& text, std::string_view path);

// Whether a path can name a file or folder: it begins with a drive or a computer of the network,
// and no part of it is the name of a device ("\\.\", "\\?\", "NUL", "COM1.mp3").
bool CanBeFile(std::string_view path);

// Which computers of the network may be touched. Whoever asks one for a file logs on to it, and a
// list, a jukebox or a catalogue that came from elsewhere may name any. One is known when a drive
// letter or the person leads there. All but `AskFor` may be called on any thread.
class KnownHosts {
 public:
    KnownHosts(const SystemText& text, Drives& drives, UserSettings& settings)
        : m_text(text), m_drives(drives), m_settings(settings) {}

    bool MayTouch(const std::string& path);

    // The person went to this path: it was chosen in a dialog or dropped. Kept in the per-user
    // settings; `KnowNow` holds until the program ends.
    void Trust(const std::string& path);
    void KnowNow(const std::string& path);

    // Asks in one box about all the computers that the paths lie on and that nobody has answered
    // for yet; the answer is kept. `what` begins the question: "The list names songs".
    void AskFor(Dialogs& dialogs, const std::vector<std::string>& paths, const std::string& what);

 private:
    bool IsKnown(const std::string& host);

    const SystemText& m_text;
    Drives& m_drives;
    UserSettings& m_settings;
    std::mutex m_mutex;
    std::map<std::string, bool> m_known;  // by host
};

}  // namespace tobbin
