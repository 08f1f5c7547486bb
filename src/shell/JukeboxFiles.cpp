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
#include "util/Utf.h"

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
    if (!path)
        return;
    m_application.TheEnvironment().hosts.Trust(*path);
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
    if (m_recovered.IsInFolder(path))
        return OpenRecovered(path);
    if (IsOpen(JukeboxTitle(environment.text, path))) {
        environment.dialogs.Tell(kAlreadyOpen);
        return false;
    }
    environment.hosts.AskFor(environment.dialogs, {path}, "The jukebox lies");
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
        m_application.TheEnvironment().statusLine.Say(m_application.Groups().StoppedText());
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
    environment.hosts.Trust(*chosen);
    const std::string path = NormalPath(environment.text, *chosen);
    const std::string title = JukeboxTitle(environment.text, path);
    if (!MatchesPattern(window->DaCaption(), title) && IsOpen(title)) {
        environment.dialogs.Tell(
            title +
            " is already open.  Close the file then you can save this Juke box "
            "with that file name.");
        return;
    }
    if (m_recovered.IsInFolder(path)) {
        environment.dialogs.Tell("The folder \"" + FolderOfPath(path) +
                                 "\" is for the copies that Tobbin keeps of unsaved changes and "
                                 "removes again.  Please choose another folder.");
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
    m_recovered.Drop(window.Model());
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

void JukeboxFiles::PrepareToClose(JukeboxWindow& window, bool save) {
    if (!save) {
        m_recovered.Drop(window.Model());
        return;
    }
    Environment& environment = m_application.TheEnvironment();
    window.View().Activate();
    Save();
    while (window.IsFormDirty()) {
        const DiskStatus status = m_recovered.Keep(window);
        if (status.Ok()) {
            environment.statusLine.Say(
                "The jukebox \"" + window.DaCaption() + "\" was not saved.  It is kept as \"" +
                m_recovered.PathOf(window.Model()) + "\", and the next start offers to open it.");
            return;
        }
        const std::string question =
            "The jukebox \"" + window.DaCaption() +
            "\" is not saved, and no copy of it could be kept in \"" +
            m_recovered.Folders().front() + "\": " + status.Reason() +
            ".\r\n\r\nWhen it closes now, its changes are lost.  Do you want to save it in another "
            "place first?";
        if (environment.dialogs.Ask(question, Buttons::YesNo, BoxIcon::Stop) != Answer::Yes)
            return;
        SaveAs();
    }
}

void JukeboxFiles::OfferRecovered() {
    Environment& environment = m_application.TheEnvironment();
    const std::vector<std::string> paths = m_recovered.LeftBehind();
    if (paths.empty())
        return;
    std::string question =
        "When Tobbin ran last, it ended with changes that were not saved.  It has kept them "
        "as:\r\n";
    for (const std::string& path : paths)
        question += "\r\n    " + FileNameOfPath(path);
    question +=
        "\r\n\r\nDo you want to open them now?  The jukeboxes that they belong to stay as they "
        "are.";
    if (environment.dialogs.Ask(question, Buttons::YesNo, BoxIcon::Question) == Answer::Yes) {
        for (const std::string& path : paths)
            OpenRecovered(path);
        return;
    }
    for (const std::string& path : paths)
        static_cast<void>(environment.disk.Replace(path, path.substr(0, path.size() - 4) + ".bak"));
    environment.statusLine.Say("What was kept of unsaved changes stays in \"" +
                               FolderOfPath(paths.front()) + "\", in files that end in \".bak\".");
}

bool JukeboxFiles::OpenRecovered(const std::string& path) {
    Jukebox* const jukebox = m_recovered.MaybeOpen(path);
    if (jukebox != nullptr)
        RefreshGroups(*jukebox);
    return jukebox != nullptr;
}

std::string JukeboxFiles::RestartArguments(std::size_t mostUnits) const {
    std::string arguments;
    for (std::size_t i = 0; i < m_application.Count(); ++i) {
        const Jukebox& jukebox = m_application.At(i);
        const std::string one = (arguments.empty() ? "\"" : " \"") + jukebox.FileLocation() +
                                jukebox.DaCaption() + kExtension + "\"";
        if (!jukebox.FileLocation().empty() && Utf8ToUtf16(arguments + one).size() <= mostUnits)
            arguments += one;
    }
    return arguments;
}

}  // namespace tobbin
