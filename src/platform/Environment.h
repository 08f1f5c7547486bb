#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Disk.h"
#include "platform/KnownHosts.h"
#include "platform/PlayerWindow.h"
#include "util/SystemText.h"

namespace tobbin {

// The computer's drives.
class Drives {
 public:
    virtual ~Drives() = default;

    // The roots in the system's order, such as "C:\".
    virtual std::vector<std::string> Roots() = 0;

    // The system's number for the kind of drive: 0 unknown, 1 no such root, 2 removable, 3 fixed,
    // 4 network, 5 CD-ROM, 6 RAM disk.
    virtual unsigned Type(const std::string& root) = 0;

    // Whether the drive with this root can be read now.
    virtual bool IsReachable(const std::string& root) = 0;

    // The computers of the network that drive letters of the person's lead to, connected now or
    // not.
    virtual std::vector<std::string> MappedHosts() = 0;

    // The drive that the system itself is on, such as "C:\".
    virtual std::string SystemRoot() = 0;

    // The number of the volume that answers under the root of a drive or network share now; nothing
    // where it can't be told.
    virtual std::optional<std::uint64_t> MaybeVolume(const std::string& root) = 0;

    // The full path of the first file of this name (case does not count) that the system's own
    // tree search finds below a root and that `takes` accepts, which is asked on another thread;
    // nothing without one. Calls `keepOn` every few milliseconds meanwhile and ends without a
    // result once that answers false; the search is then called off, where the system can do that.
    virtual std::optional<std::string> MaybeFindBelow(
        const std::string& root, const std::string& fileName,
        const std::function<bool(const std::string& path)>& takes,
        const std::function<bool()>& keepOn) = 0;
};

enum class Buttons {
    Ok,
    YesNo,
    YesNoPreferNo,  // as YesNo, with No as the one that Enter presses
    YesNoCancel,
};
enum class Answer { Ok, Yes, No, Cancel };
enum class BoxIcon { None, Information, Question, Warning, Stop };

// Message boxes and the system's file dialogs. Each waits for the person.
class Dialogs {
 public:
    virtual ~Dialogs() = default;

    // Shows a box. An empty title stands for the program's name.
    virtual Answer Ask(const std::string& text, Buttons buttons, BoxIcon icon = BoxIcon::None,
                       const std::string& title = {}) = 0;

    // A box with the plain OK button.
    void Tell(const std::string& text, BoxIcon icon = BoxIcon::None,
              const std::string& title = {}) {
        Ask(text, Buttons::Ok, icon, title);
    }

    // A box with the plain OK button and a text to tick. Returns whether it was ticked.
    virtual bool TellWithTick(const std::string& text, const std::string& tick) = 0;

    // The system's Open and Save dialogs. `filter` is a caption and a pattern with "|" between
    // them. Returns the full path; nothing when the person cancels.
    virtual std::optional<std::string> MaybeFileToOpen(const std::string& filter,
                                                       const std::string& folder) = 0;
    virtual std::optional<std::string> MaybeFileToSave(const std::string& filter,
                                                       const std::string& folder) = 0;
};

// Per-user settings outside the data folder, by key in the program's section "Options".
class UserSettings {
 public:
    virtual ~UserSettings() = default;
    virtual std::optional<std::string> MaybeRead(const std::string& key) = 0;

    // Returns whether the value was stored.
    virtual bool Write(const std::string& key, const std::string& value) = 0;
};

enum class ShowProgram { Normal, MinimizedInactive };

// Starting other programs.
class Programs {
 public:
    virtual ~Programs() = default;

    // Starts a program by its full path, quoted, with the arguments as given, and does not wait for
    // it. Returns whether it was started. Only one that is shown normally may ask for administrator
    // rights, if it wants them; any other gets none, even where this program has them.
    virtual bool Start(const std::string& programPath, const std::string& arguments,
                       ShowProgram show) = 0;

    // The full path of the program of this file name that an installer has registered; nothing
    // where none is.
    virtual std::optional<std::string> MaybeRegistered(const std::string& fileName) = 0;

    // The folders for installed programs, which only an administrator can write: "C:\Program
    // Files\" and the like.
    virtual std::vector<std::string> InstallFolders() = 0;

    // Opens a document by its full path in the program that the person has for it. Returns whether
    // there was one to be started.
    virtual bool Open(const std::string& documentPath) = 0;
};

// The clipboard that all programs share. What the program itself pastes is the SongClipboard's.
class SystemClipboard {
 public:
    virtual ~SystemClipboard() = default;

    // Offers files by their full paths: as files that can be copied, and as text, one on each line.
    // The clipboard stays as it is while another program holds it.
    virtual void OfferFiles(const std::vector<std::string>& paths) = 0;
    // Whether it has files that another program put there; the full paths of the files on it.
    virtual bool HasFilesOfOthers() const = 0;
    virtual std::vector<std::string> Files() const = 0;
    // Another number after each change, whoever made it.
    virtual std::uint32_t ChangeNumber() const = 0;
};

// Waiting window events.
class EventPump {
 public:
    virtual ~EventPump() = default;

    // Handles the events that wait now and returns. Cheap enough to be called for every song.
    virtual void LetEventsThrough() = 0;

    // Lets the windows be painted and answer, but take no input: for work in the middle of which no
    // command may run. As cheap.
    virtual void PumpWithoutInput() {}

    // Does work that may wait long while the windows only answer, as in there. It runs on another
    // thread; the caller waits for its end.
    virtual void RunWithoutInput(const std::function<void()>& work) { work(); }

    // Does work that may wait long for the outside, such as a drive that is asleep or away, while
    // events go through. The work runs on another thread and owns all that it changes. Returns
    // false as soon as `keepOn`, which is asked every few milliseconds, does: the work then ends by
    // itself, and nobody may look at what it has done.
    virtual bool RunAside(const std::function<void()>& work,
                          const std::function<bool()>& keepOn) = 0;
};

// The clock and chance.
class ClockAndRandom {
 public:
    virtual ~ClockAndRandom() = default;

    // Milliseconds since some fixed moment; never runs backwards.
    virtual std::int64_t Milliseconds() = 0;

    // Seconds since 1970 (UTC).
    virtual std::int64_t UnixTime() = 0;

    // A random number in [0, 1).
    virtual double Random() = 0;
};

// How many of the steps of long work are done; `all` is 0 while nobody knows how many there are.
struct StepsDone {
    std::size_t done = 0;
    std::size_t all = 0;
    bool operator==(const StepsDone&) const = default;
};

// One line that tells the person what happened where no box may open. The main frame shows the
// last one in its status bar until the next command.
class StatusLine {
 public:
    virtual ~StatusLine() = default;
    virtual void Say(const std::string& line) = 0;

    // How far long work is: the text, shown while there is no line, and a bar, if the steps are
    // counted. An empty text and no steps when the work has ended.
    virtual void ShowProgress(const std::string& text, const StepsDone& steps) = 0;
};

// Shows how far long work is and knows whether the person asked it to stop. The do-nothing default
// serves where no such window is open.
class Progress {
 public:
    virtual ~Progress() = default;
    virtual void Show(const std::string& /*text*/) {}
    virtual void ShowSteps(const std::string& text, const StepsDone& /*steps*/) { Show(text); }
    virtual bool StopRequested() const { return false; }
};

// How many threads read tags side by side in the program: with more a disk gains little.
constexpr unsigned kDiskReaders = 12;

// Everything outside the program that its core may touch, handed down by reference.
struct Environment {
    const SystemText& text;
    Disk& disk;
    Drives& drives;
    Dialogs& dialogs;
    UserSettings& userSettings;
    Programs& programs;
    EventPump& events;
    ClockAndRandom& clock;
    StatusLine& statusLine;
    PlayerWindow& player;
    SystemClipboard& clipboard;
    KnownHosts& hosts;

    unsigned diskReaders = 0;  // threads; 0 reads on the caller's own
};

}  // namespace tobbin
