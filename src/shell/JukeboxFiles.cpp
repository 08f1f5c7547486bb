#include "shell/JukeboxFiles.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "jukebox/SpecialFolders.h"
#include "platform/ProgressTexts.h"
#include "ui/PictureSettings.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr char kFilter[] = "Juke Box Files (*.juk) |*.juk";
constexpr char kExtension[] = ".juk";
constexpr char kAlreadyOpen[] = "This file is already open";

// Shows the progress of a jukebox's groups in the status line until it shall stop.
class RebuildProgress : public StatusLineProgress {
 public:
    RebuildProgress(StatusLine& line, std::function<bool()> shallStop)
        : StatusLineProgress(line), m_shallStop(std::move(shallStop)) {}
    void ShowSteps(const std::string& text, const StepsDone& steps) override {
        StatusLineProgress::ShowSteps(text + ".  Esc stops it.", steps);
    }
    bool StopRequested() const override { return m_shallStop(); }

 private:
    std::function<bool()> m_shallStop;
};

}  // namespace

std::string JukeboxFiles::NormalPath(const SystemText& text, std::string_view path) {
    const std::string lower = text.ToLower(TrimBlanks(path));
    std::string name = FileNameOfPath(lower);
    if (!name.ends_with(kExtension))
        name += kExtension;
    while (name.find(".juk.juk") != std::string::npos)
        name.resize(name.size() - 4);
    return FolderOfPath(lower) + name;
}

bool JukeboxFiles::IsOpen(std::string_view title) const {
    return m_view.MaybeVisibleJukebox([&](const JukeboxWindow& window) {
        return MatchesPattern(window.DaCaption(), title);
    }) != nullptr;
}

void JukeboxFiles::Open() {
    const std::optional<std::string> path =
        m_application.TheEnvironment().dialogs.MaybeFileToOpen(kFilter, m_application.DataFolder());
    if (path)
        OpenPath(*path);
}

void JukeboxFiles::OpenRecent(int number) {
    const std::string path = RecentPath(m_application.Settings(), number);
    if (!path.empty())
        OpenPath(path);
}

void JukeboxFiles::OpenFromOutside(const std::vector<std::string>& paths) {
    const SystemText& text = m_application.TheEnvironment().text;
    for (const std::string& path : paths) {
        JukeboxWindow* const open = m_view.MaybeVisibleJukebox([&](const JukeboxWindow& window) {
            return !window.FileLocation().empty() &&
                   text.ToLower(window.FileLocation() + window.DaCaption() + kExtension) ==
                       text.ToLower(path);
        });
        if (open != nullptr)
            open->View().Activate();
        else
            OpenPath(path);
    }
}

bool JukeboxFiles::OpenPath(const std::string& chosen) {
    const std::string path(TrimBlanks(chosen));
    Environment& environment = m_application.TheEnvironment();
    if (m_application.Groups().IsBuilding())
        return false;
    if (IsOpen(JukeboxTitle(environment.text, path))) {
        environment.dialogs.Tell(kAlreadyOpen);
        return false;
    }
    Jukebox* const jukebox = m_application.MaybeLoadJukebox(path);
    if (jukebox == nullptr)
        return false;
    m_view.OpenJukeboxWindow(*jukebox);
    NoteAsRecent(path);
    RefreshGroups(*jukebox);
    return true;
}

// Songs have come to the catalogue since the jukebox was saved, or gone from it.
void JukeboxFiles::RefreshGroups(Jukebox& jukebox) {
    const Folder* const all = jukebox.MaybeFind(kAllSongs);
    if (all == nullptr || all->Level() != 0)
        return;
    std::vector<bool> added;
    m_application.Groups().SelectSongsNotInFolder(*all, added);
    if (!jukebox.SongsCameOrWent() && std::ranges::count(added, true) == 0)
        return;
    const auto hasClosed = [&] {
        return m_view.MaybeVisibleJukebox([&](const JukeboxWindow& window) {
            return &window.Model() == &jukebox;
        }) == nullptr;
    };
    Refresh(hasClosed, [&](Progress&) {
        m_application.Groups().BuildAutomaticGroups(0, true, jukebox.DaCaption());
    });
}

void JukeboxFiles::BuildSample(Jukebox& sample) {
    Refresh(
        [] { return false; },
        [&](Progress& progress) { BuildInitialJukebox(sample, m_application.Groups(), progress); });
}

void JukeboxFiles::Refresh(const std::function<bool()>& hasClosed,
                           const std::function<void(Progress&)>& build) {
    m_stopRefreshing = false;
    RebuildProgress progress(m_application.TheEnvironment().statusLine,
                             [&] { return m_stopRefreshing || hasClosed(); });
    m_refreshing = true;
    m_application.Groups().ShowProgressIn(progress, [&] { build(progress); });
    m_refreshing = false;
    if (m_stopRefreshing)
        m_application.TheEnvironment().statusLine.Say(AutomaticGroups::kStopped);
}

bool JukeboxFiles::StopRefreshing() {
    m_stopRefreshing = m_refreshing;
    return m_refreshing;
}

void JukeboxFiles::NoteAsRecent(const std::string& path) {
    clsINI& settings = m_application.Settings();
    settings.LocOfLastSavedJukeBox(path);
    settings.Save(settings.SettingsPath());
}

// The player panel steps aside, so that a jukebox window becomes the active one.
JukeboxWindow* JukeboxFiles::MaybeWindowToSave() {
    m_view.MinimizeActivePlayerPanel();
    return m_view.MaybeActiveJukebox();
}

void JukeboxFiles::Save() {
    JukeboxWindow* const window = MaybeWindowToSave();
    if (window == nullptr)
        return;
    if (window->DaCaption() == kSampleCaption || window->FileLocation().empty()) {
        SaveAs();
        return;
    }
    const SystemText& text = m_application.TheEnvironment().text;
    SaveTo(window->FileLocation() + text.ToLower(window->DaCaption()) + kExtension, *window);
}

void JukeboxFiles::SaveAs() {
    JukeboxWindow* const window = MaybeWindowToSave();
    if (window == nullptr)
        return;
    Environment& environment = m_application.TheEnvironment();
    const std::optional<std::string> chosen =
        environment.dialogs.MaybeFileToSave(kFilter, m_application.DataFolder());
    if (!chosen)
        return;
    const std::string path = NormalPath(environment.text, *chosen);
    const std::string title = JukeboxTitle(environment.text, path);
    if (!MatchesPattern(window->DaCaption(), title) && IsOpen(title)) {
        environment.dialogs.Tell(
            title +
            " is already open.  Close the file then you can save this Juke box "
            "with that file name.");
        return;
    }
    if (FileExists(environment.disk, path) &&
        environment.dialogs.Ask("File already exists, do you wish to replace this file?",
                                Buttons::YesNoCancel, BoxIcon::Warning) != Answer::Yes)
        return;
    if (!SaveTo(path, *window))
        return;
    window->DaCaption(title);
    window->FileLocation(FolderOfPath(path));
}

bool JukeboxFiles::SaveTo(const std::string& path, JukeboxWindow& window) {
    Environment& environment = m_application.TheEnvironment();
    StatusLineProgress progress(environment.statusLine);
    progress.Show("Saving " + path + " . . .");
    const DiskStatus status =
        SaveJukeboxFile(environment.disk, path, window.Model(), m_application.Catalogue());
    if (!status.Ok()) {
        environment.statusLine.Say("The jukebox was not saved to \"" + path +
                                   "\": " + status.Reason() + ".");
        return false;
    }
    WritePictureSettings(path, window);
    NoteAsRecent(path);
    window.IsFormDirty(false);
    return true;
}

void JukeboxFiles::WritePictureSettings(const std::string& path, const JukeboxWindow& window) {
    Environment& environment = m_application.TheEnvironment();
    std::string name = FileNameOfPath(path);
    name.resize(name.size() - std::min<std::size_t>(name.size(), 4));
    const std::string file = m_application.Settings().LocOfGroupingDir() + name + ".poc";
    const DiskStatus status = SavePictureSettings(
        environment, file, {window.LastPicFileLocation(), window.BeItTiled(), window.ShowPictt()},
        FlagText::TruthValue);
    if (!status.Ok())
        environment.statusLine.Say("The jukebox is saved, but not its picture settings \"" + file +
                                   "\": " + status.Reason() + ".");
}

void JukeboxFiles::SaveBeforeClosing(JukeboxWindow& window) {
    window.View().Activate();
    Save();
    if (window.IsFormDirty())
        KeepRecovered(window);
}

// The second one is for a data folder that can't be written.
std::vector<std::string> JukeboxFiles::RecoveredFolders() const {
    const std::string& temporary = m_application.Folders().temporary;
    std::vector<std::string> folders = {m_application.DataFolder() + "Recovered\\"};
    if (!temporary.empty())
        folders.push_back(temporary + "Tobbin Recovered\\");
    return folders;
}

// Under the first name that is free.
bool JukeboxFiles::KeepRecovered(JukeboxWindow& window) {
    Environment& environment = m_application.TheEnvironment();
    for (const std::string& folder : RecoveredFolders()) {
        if (!FolderExists(environment.disk, folder) && !environment.disk.CreateFolder(folder).Ok())
            continue;
        const std::string name = folder + environment.text.ToLower(window.DaCaption());
        std::string path = name + kExtension;
        for (int i = 2; FileExists(environment.disk, path); ++i)
            path = name + " (" + std::to_string(i) + ")" + kExtension;
        if (!SaveJukeboxFile(environment.disk, path, window.Model(), m_application.Catalogue())
                 .Ok())
            continue;
        environment.statusLine.Say("The jukebox \"" + window.DaCaption() +
                                   "\" was put aside as \"" + path + "\".");
        return true;
    }
    return false;
}

// What is offered is renamed first, so that a file which can't be opened is not offered for ever.
void JukeboxFiles::OfferRecovered() {
    Environment& environment = m_application.TheEnvironment();
    std::vector<std::string> paths;
    for (const std::string& folder : RecoveredFolders()) {
        FolderListing listing;
        if (!environment.disk.List(folder, listing).Ok())
            continue;
        for (const FolderEntry& entry : listing.entries)
            if (!entry.isFolder && entry.name.ends_with(kExtension))
                paths.push_back(folder + entry.name);
    }
    if (paths.empty())
        return;
    std::string question = "When Tobbin ran last, it could not save:\r\n";
    for (const std::string& path : paths)
        question += "\r\n    " + FileNameOfPath(path);
    question += "\r\n\r\nIt has kept what they held.  Do you want to open them now?";
    const bool open =
        environment.dialogs.Ask(question, Buttons::YesNo, BoxIcon::Question) == Answer::Yes;
    for (const std::string& path : paths) {
        Jukebox* const jukebox = open ? m_application.MaybeLoadJukebox(path) : nullptr;
        if (jukebox != nullptr) {
            jukebox->FileLocation("");
            jukebox->IsFormDirty(true);
            m_view.OpenJukeboxWindow(*jukebox);
        }
        if (jukebox != nullptr || !open)
            (void)environment.disk.Replace(path, path.substr(0, path.size() - 4) + ".bak");
    }
}

}  // namespace tobbin
