#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fakes/FakeDisk.h"
#include "platform/Environment.h"
#include "platform/GuardedDisk.h"

namespace tobbin {

// What a map holds, if it holds the key.
template <typename Map>
std::optional<typename Map::mapped_type> MaybeAt(const Map& map, const std::string& key) {
    const auto found = map.find(key);
    return found == map.end() ? std::nullopt : std::optional(found->second);
}

// Code page 1252, with its five undefined bytes as the control characters of the same number, and
// the letter cases of Latin-1, Greek and Cyrillic.
class FakeText : public SystemText {
 public:
    std::string FromAnsi(std::string_view bytes) const override;
    std::optional<std::string> MaybeToAnsi(std::string_view text) const override;
    std::string ToLower(std::string_view text) const override;
    std::string ToUpper(std::string_view text) const override;
};

class FakeDrives : public Drives {
 public:
    std::vector<std::pair<std::string, unsigned>> drives{{"C:\\", 3U}};
    std::vector<std::string> unreachable;
    int unplugAfter = -1;  // every drive is away once it was found reachable that many times

    // What the tree search finds, by root; it asks `keepOn` three times before it answers.
    std::map<std::string, std::string> treeFinds;
    std::vector<std::string> treeSearches;

    std::vector<std::string> Roots() override {
        std::vector<std::string> roots;
        for (const auto& [root, type] : drives)
            roots.push_back(root);
        return roots;
    }
    unsigned Type(const std::string& root) override {
        const auto found =
            std::ranges::find_if(drives, [&](const auto& drive) { return drive.first == root; });
        return found == drives.end() ? 1 : found->second;
    }
    bool IsReachable(const std::string& root) override {
        asked.push_back(root);
        if (unplugAfter == 0)
            return false;
        --unplugAfter;
        return Type(root) != 1 && std::ranges::count(unreachable, root) == 0;
    }
    std::vector<std::string> mapped;
    std::vector<std::string> MappedHosts() override { return mapped; }
    std::map<std::string, std::uint64_t> volumes;
    std::vector<std::string> asked;  // the root of every question whether it can be reached
    std::string SystemRoot() override { return "C:\\"; }
    std::optional<std::uint64_t> MaybeVolume(const std::string& root) override {
        return MaybeAt(volumes, root);
    }
    std::optional<std::string> MaybeFindBelow(const std::string& root, const std::string& fileName,
                                              const std::function<bool(const std::string&)>& takes,
                                              const std::function<bool()>& keepOn) override {
        treeSearches.push_back(root + " " + fileName);
        for (int step = 0; step < 3; ++step)
            if (!keepOn())
                return std::nullopt;
        const auto found = treeFinds.find(root);
        return found == treeFinds.end() || !takes(found->second) ? std::nullopt
                                                                 : std::optional(found->second);
    }
};

// Writes down every box and gives the answers that the test laid ready; without one, the answer of
// an unwilling person (Ok, No).
class FakeDialogs : public Dialogs {
 public:
    struct Box {
        std::string text;
        Buttons buttons;
        BoxIcon icon;
        std::string title;
    };
    std::vector<Box> boxes;
    std::deque<Answer> answers;
    std::deque<std::optional<std::string>> files;
    std::vector<std::string> fileDialogs;  // filter and folder of each, with " in " between them

    Answer Ask(const std::string& text, Buttons buttons, BoxIcon icon,
               const std::string& title) override {
        boxes.push_back({text, buttons, icon, title});
        return buttons == Buttons::Ok ? Answer::Ok : Next(answers, Answer::No);
    }
    bool TellWithTick(const std::string& text, const std::string& tick) override {
        Tell(text, BoxIcon::None, tick);
        return Next(answers, Answer::No) == Answer::Yes;
    }
    std::optional<std::string> MaybeFileToOpen(const std::string& filter,
                                               const std::string& folder) override {
        fileDialogs.push_back(filter + " in " + folder);
        return Next(files, std::optional<std::string>());
    }
    std::optional<std::string> MaybeFileToSave(const std::string& filter,
                                               const std::string& folder) override {
        return MaybeFileToOpen(filter, folder);
    }

 private:
    template <typename Given>
    static Given Next(std::deque<Given>& given, Given otherwise) {
        if (given.empty())
            return otherwise;
        const Given next = given.front();
        given.pop_front();
        return next;
    }
};

class FakeUserSettings : public UserSettings {
 public:
    std::map<std::string, std::string> values;
    std::optional<std::string> MaybeRead(const std::string& key) override {
        return MaybeAt(values, key);
    }
    bool Write(const std::string& key, const std::string& value) override {
        values[key] = value;
        return true;
    }
};

class FakePrograms : public Programs {
 public:
    struct Started {
        std::string program;
        std::string arguments;
        ShowProgram show;
    };
    std::vector<Started> started;
    std::vector<std::string> opened;
    std::optional<std::string> registered;
    bool succeeds = true;
    bool Start(const std::string& programPath, const std::string& arguments,
               ShowProgram show) override {
        started.push_back({programPath, arguments, show});
        return succeeds;
    }
    std::optional<std::string> MaybeRegistered(const std::string& /*fileName*/) override {
        return registered;
    }
    std::vector<std::string> InstallFolders() override { return {"C:\\Program Files\\"}; }
    bool Open(const std::string& documentPath) override {
        opened.push_back(documentPath);
        return true;
    }
};

class FakeEventPump : public EventPump {
 public:
    int count = 0;
    std::function<void()> onEvents = [] {};  // what a person does meanwhile
    void LetEventsThrough() override {
        ++count;
        onEvents();
    }
    bool RunAside(const std::function<void()>& work, const std::function<bool()>& keepOn) override {
        work();
        return keepOn();
    }
};

class FakeClockAndRandom : public ClockAndRandom {
 public:
    std::int64_t milliseconds = 0;
    std::int64_t unixTime = 1'000'000'000;
    double random = 0;
    std::int64_t Milliseconds() override { return milliseconds++; }
    std::int64_t UnixTime() override { return unixTime; }
    double Random() override { return random; }
};

class FakeStatusLine : public StatusLine {
 public:
    std::vector<std::string> lines;
    std::vector<std::string> progress;
    std::vector<StepsDone> steps;
    void Say(const std::string& line) override { lines.push_back(line); }
    void ShowProgress(const std::string& text, const StepsDone& stepsDone) override {
        progress.push_back(text);
        steps.push_back(stepsDone);
    }
};

class FakeProgress : public Progress {
 public:
    std::vector<std::string> texts;
    int stopAfter = -1;  // a stop is requested once that many texts were shown
    void Show(const std::string& text) override { texts.push_back(text); }
    bool StopRequested() const override {
        return stopAfter >= 0 && texts.size() >= static_cast<std::size_t>(stopAfter);
    }
};

// A player that plays by itself. Writes every message down as a line: "273 40047 0" for numbers,
// "copy 100 C:\\a.mp3|" for data ("|" stands for a NUL).
class FakePlayerWindow : public PlayerWindow {
 public:
    static constexpr Handle kHandle = 0x10234;
    static constexpr std::uint32_t kPathMessage = 50'001, kTrackMessage = 50'002;
    bool isOpen = true;
    int findsBeforeItOpens = 0;
    bool hangs = false;   // every message runs into its limit
    int hangsAfter = -1;  // hangs once that many messages have come
    std::int32_t version = 0x2091, status = 1, positionMilliseconds = 0, lengthSeconds = 180;
    bool hasMoreRights = false;
    // The one that comes with the program, which knows messages of its own; another one's log has
    // none of these.
    bool isOurs = false;
    std::int32_t track = 0, tracks = 0;
    std::string caption, program = "C:\\Program Files\\Winamp.exe";
    std::vector<std::string> log;                           // messages that reached the player
    std::vector<int> limits;                                // of every attempt, in milliseconds
    std::function<void(int limit)> onMessage = [](int) {};  // while it is waited for
    Handle Find() override;
    std::string Program(Handle /*window*/) override { return program; }
    std::string Caption(Handle /*window*/) override { return caption; }
    std::uint32_t Registered(const wchar_t* name) override;
    PlayerReply Send(Handle window, std::uint32_t message, std::int32_t wParam, std::int32_t lParam,
                     int limitMilliseconds) override;
    PlayerReply SendData(Handle window, std::uint32_t identifier, std::string_view bytes,
                         int limitMilliseconds) override;

 private:
    PlayerReply Take(Handle window, std::string line, std::int32_t value, int limit);
};

class FakeSystemClipboard : public SystemClipboard {
 public:
    std::vector<std::string> paths;
    bool ofOthers = false;
    std::uint32_t changes = 0;
    void OfferFiles(const std::vector<std::string>& offered) override { Fill(offered, false); }
    bool HasFilesOfOthers() const override { return ofOthers; }
    std::vector<std::string> Files() const override { return paths; }
    std::uint32_t ChangeNumber() const override { return changes; }

    void Fill(const std::vector<std::string>& files, bool byOthers) {
        paths = files;
        ofOthers = byOthers;
        ++changes;
    }
};

// All of the outside, ready to be handed to the core.
struct FakeEnvironment {
    FakeText text;
    FakeDisk disk;
    FakeDrives drives;
    FakeDialogs dialogs;
    FakeUserSettings userSettings;
    FakePrograms programs;
    FakeEventPump events;
    FakeClockAndRandom clock;
    FakeStatusLine statusLine;
    FakePlayerWindow player;
    FakeSystemClipboard clipboard;
    KnownHosts hosts{text, drives, userSettings};
    GuardedDisk guardedDisk{disk, hosts};
    Environment environment{text,   guardedDisk, drives,     dialogs, userSettings, programs,
                            events, clock,       statusLine, player,  clipboard,    hosts};
};

}  // namespace tobbin
