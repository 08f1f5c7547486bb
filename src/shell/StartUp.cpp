#include "shell/StartUp.h"

#include <memory>
#include <utility>

#include "catalogue/CatalogueRepair.h"
#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "search/SongSearch.h"
#include "shell/SongsOfOneName.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr char kRuntimeLibrary[] = "msvbvm50.dll";
constexpr char kRuntimeMessage[] =
    "You are missing a file Tobbin needs to run correctly.  msvbvm50.dll is missing.  For all "
    "operating systems please go to https://support.microsoft.com and download the 'VB 5 runtime "
    "module', unzip it and double click the exe.  It will automatically install the file you need. "
    " This information is also in the readme.txt file.";

// The per-user setting that turns the message off when it is "0".
constexpr char kRuntimeCheckKey[] = "Runtime Library Check";

// Grouping behind a text that stands: only the bar moves on.
class StandingText : public Progress {
 public:
    explicit StandingText(Progress& progress) : m_progress(progress) {}
    void Show(const std::string& text) override {
        m_text = text;
        m_progress.Show(text);
    }
    void ShowSteps(const std::string& /*text*/, const StepsDone& steps) override {
        m_progress.ShowSteps(m_text, steps);
    }
    bool StopRequested() const override { return m_progress.StopRequested(); }

 private:
    Progress& m_progress;
    std::string m_text;
};

// A new file can be made in the folder.
DiskStatus TryToWriteIn(Disk& disk, const std::string& folder) {
    const std::string path = folder + "TheOrganizer.ini." + disk.NameNobodyKnows() + ".tmp";
    std::unique_ptr<File> file;
    DiskStatus status = disk.CreateNew(path, {}, file);
    if (status.Ok())
        status = file->Close();
    file.reset();
    const DiskStatus removed = disk.Remove(path);
    return status.Ok() ? removed : status;
}

void SayNotWritable(Environment& environment, const std::string& folder, const DiskStatus& why) {
    environment.dialogs.Tell("Tobbin can't write to its data folder \"" + folder +
                                 "\": " + why.Reason() +
                                 ".  Move Tobbin's own folder to a place where you may write, or "
                                 "get the right to write there, and start Tobbin again.",
                             BoxIcon::Stop);
}

}  // namespace

StartUp::StartUp(Application& application, StartUpView& view)
    : m_application(application), m_view(view), m_environment(application.TheEnvironment()) {}

bool StartUp::Run() {
    CheckRuntimeLibrary();
    m_application.LongWork().Window(&m_view.LoadSplash());
    const bool canWork = PrepareDataFolders() && PrepareSettings();
    if (canWork) {
        FindPlayer();
        PrepareCatalogue();
        OpenFirstJukebox();
        ForgetMissingPlayer();
        TellOfCrash();
    }
    m_application.LongWork().Window(nullptr);
    // The frame first: once no window of the program is shown, Windows no longer lets it come to
    // the foreground by itself.
    if (canWork)
        m_view.HandOver();
    m_view.UnloadSplash();
    if (canWork)
        m_view.ShowTips();
    return canWork;
}

// Once: what was told of gets another name.
void StartUp::TellOfCrash() {
    const std::string dump = m_application.Folders().personal + "Tobbin.dmp";
    const std::string toldOf = m_application.Folders().personal + "Tobbin (last crash).dmp";
    if (m_environment.disk.Replace(dump, toldOf).Ok())
        m_environment.statusLine.Say(
            "Tobbin ended by a fault of its own the last time.  What it knows of that is in \"" +
            toldOf + "\", on this PC only.");
}

void StartUp::CheckRuntimeLibrary() {
    const ProgramFolders& folders = m_application.Folders();
    if (m_environment.userSettings.MaybeRead(kRuntimeCheckKey) == "0")
        return;
    for (const std::string& folder : {folders.system, folders.systemOf32Bit})
        if (!folder.empty() && FileExists(m_environment.disk, folder + kRuntimeLibrary))
            return;
    if (m_environment.dialogs.TellWithTick(kRuntimeMessage, "Don't look for it again"))
        m_environment.userSettings.Write(kRuntimeCheckKey, "0");
    m_environment.programs.Start(folders.system + "notepad.exe",
                                 "\"" + folders.application + "readme.txt\"", ShowProgram::Normal);
}

bool StartUp::PrepareDataFolders() {
    const std::string dataFolder = m_application.DataFolder();
    for (const std::string& folder : {dataFolder, dataFolder + "System\\"}) {
        DiskStatus status;
        if (!FolderExists(m_environment.disk, folder))
            status = m_environment.disk.CreateFolder(folder);
        if (status.Ok() && folder == dataFolder && !HoldDataFolder(folder))
            return false;
        if (status.Ok() && folder != dataFolder)
            status = TryToWriteIn(m_environment.disk, folder);
        if (!status.Ok()) {
            SayNotWritable(m_environment, folder, status);
            return false;
        }
        FinishOrRemoveNewFiles(m_environment.disk, folder);
    }
    return true;
}

// One program at a time writes a data folder, whoever runs it on whatever computer.
bool StartUp::HoldDataFolder(const std::string& folder) {
    std::unique_ptr<File> held;
    const DiskStatus status = HoldFile(m_environment.disk, folder + "InUse.lock", held);
    if (status.Error() == DiskError::SharingViolation)
        m_environment.dialogs.Tell(
            "The data folder \"" + folder +
                "\" is in use by another Tobbin: one that another person has open on this "
                "computer, that runs as administrator, or that runs on another computer.  Two must "
                "not write to one folder.  Close the other one, and start Tobbin again.",
            BoxIcon::Stop);
    else if (!status.Ok())
        SayNotWritable(m_environment, folder, status);
    else
        m_application.KeepOpen(std::move(held));
    return status.Ok();
}

// Settings that can't be read, or that can't be kept aside when they are damaged, are no reason to
// write new ones over them: nobody could go on without settings and save none.
bool StartUp::PrepareSettings() {
    clsINI& settings = m_application.Settings();
    const std::string path = settings.SettingsPath();
    const LoadResult result = settings.GetandLoadIniInfo(path);
    if (result.outcome == LoadOutcome::Loaded) {
        UseOwnData();
        const std::string& folder = settings.LocOfGroupingDir();
        return folder == m_application.DataFolder() || HoldDataFolder(folder);
    }
    std::string keptAs;
    DiskStatus status;
    if (result.outcome == LoadOutcome::Damaged)
        status = KeepDamagedFileAside(m_environment.disk, path, keptAs);
    if (result.outcome == LoadOutcome::Unreadable || !status.Ok()) {
        m_environment.dialogs.Tell(
            result.message +
                (status.Ok() ? "" : "  The file can't be kept aside: " + status.Reason() + ".") +
                "  Tobbin leaves it as it is and ends.  Close the program that uses the file, or "
                "get the right to change it, and start Tobbin again.",
            BoxIcon::Stop);
        return false;
    }
    settings.CreateNewIniFile(path);
    if (result.outcome == LoadOutcome::Damaged)
        m_environment.dialogs.Tell(
            result.message + "  The file is kept as \"" + keptAs + "\", and new settings are made.",
            BoxIcon::Warning);
    return true;
}

bool StartUp::HasFolder(const std::string& folder) {
    return !RootOfPath(folder).empty() && FolderExists(m_environment.disk, folder);
}

// The program's folder was moved, or copied with its data, so that the settings name the folder it
// came from; or they were edited by hand, and a folder lost its last "\" or stands there no more. A
// data folder with settings in it belongs to a program of its own.
void StartUp::UseOwnData() {
    clsINI& settings = m_application.Settings();
    const std::string own = m_application.DataFolder();
    const std::string theirs = FolderWithSeparator(settings.LocOfGroupingDir());
    const bool isOwn = theirs == own;
    const bool isAnothers =
        !isOwn && FileExists(m_environment.disk, theirs + "System\\TheOrganizer.ini");
    const bool serves = isOwn || (!isAnothers && HasFolder(theirs));
    settings.LocOfGroupingDir(serves ? theirs : own);
    if (serves && HasFolder(FolderOfPath(settings.FileContainingTargetDirectories())))
        return;
    settings.FileContainingTargetDirectories(own + "System\\LocOfMainTargetFiles.lmz");
    if (!serves) {
        const std::string second = InOwnFolder(settings.LocSecToLastSavedJukeBox(), theirs);
        const std::string third = InOwnFolder(settings.LocOfThirdToLastSaveJukeBox(), theirs);
        settings.LocOfLastSavedJukeBox(InOwnFolder(settings.LocOfLastSavedJukeBox(), theirs));
        settings.LocSecToLastSavedJukeBox(second);
        settings.LocOfThirdToLastSaveJukeBox(third);
    }
    settings.Save(settings.SettingsPath());
}

// The file of the own data folder that stands for one of theirs, where there is one.
std::string StartUp::InOwnFolder(const std::string& path, const std::string& theirs) {
    const SystemText& text = m_environment.text;
    if (!text.ToLower(path).starts_with(text.ToLower(theirs)))
        return path;
    const std::string own = m_application.DataFolder() + path.substr(theirs.size());
    return FileExists(m_environment.disk, own) ? own : path;
}

bool StartUp::PlayerIsThere() {
    const std::string& player = m_application.Settings().LocOfWinAmpExe();
    return !player.empty() && FileExists(m_environment.disk, player);
}

void StartUp::FindPlayer() {
    if (m_application.Discovery().LookWhereRegistered() || PlayerIsThere())
        return;
    m_view.ShowProgressArea(true);
    m_application.Discovery().Search(m_application.LongWork());
    m_view.ShowProgressArea(false);
}

// A player on a drive that is away, or of which the disk tells nothing, may be there all the same.
// The drive is asked last, since it may go away meanwhile.
bool StartUp::PlayerIsGone() {
    const std::string& player = m_application.Settings().LocOfWinAmpExe();
    if (player.empty())
        return true;
    PathInfo info;
    const std::string root = RootOfPath(player);
    return m_environment.disk.Stat(player, info).Ok() && info.kind != PathKind::File &&
           (root.empty() || IsReachable(m_environment, root));
}

void StartUp::ForgetMissingPlayer() {
    clsINI& settings = m_application.Settings();
    if (!PlayerIsGone())
        return;
    settings.LocOfWinAmpExe("");
    settings.Save(settings.SettingsPath());
}

void StartUp::PrepareCatalogue() {
    clsMain& catalogue = m_application.Catalogue();
    ShowWork("Opening the song catalog . . .");
    const CatalogueStart start =
        LoadCatalogueAtStart(m_environment, m_application.Settings(), catalogue);
    m_view.ShowProgressArea(false);
    switch (start.finding) {
        case CatalogueFinding::FirstRun:
            SearchForSongs();
            break;
        case CatalogueFinding::Loaded:
            BringCatalogueUpToDate();
            break;
        case CatalogueFinding::Damaged:
        case CatalogueFinding::Gone:
            BringCatalogueUpToDate();
            if (m_environment.dialogs.Ask(
                    start.message + "  Do you want to search the hard drives for your songs now?",
                    Buttons::YesNo, BoxIcon::Question) == Answer::Yes)
                SearchForSongs();
            break;
        case CatalogueFinding::Unreadable:
            m_environment.dialogs.Tell(
                start.message +
                    "  Tobbin goes on without it and leaves it as it is.  Close the "
                    "program that uses it, and start Tobbin again.",
                BoxIcon::Warning);
            break;
    }
}

void StartUp::BringCatalogueUpToDate() {
    clsMain& catalogue = m_application.Catalogue();
    if (!catalogue.Mp3MainHasSomeMembers())
        return;
    ShowWork(kLookingAtFolders);
    const ListedFolders listed = catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    catalogue.AddAnyAdditionalMp3FromTheNormalDirectories(&listed);
    m_view.ShowProgressArea(false);
    SettleSongsOfOneName(m_application, false);
    if (const std::size_t lost = catalogue.SongsLostByLastCheck(); lost > 0)
        m_environment.statusLine.Say(
            Counted(lost, "song") +
            (lost == 1 ? " is not where it was.  " : " are not where they were.  ") +
            "\"Bring In New Songs (Search my whole computer)\" in the Songs menu looks for " +
            (lost == 1 ? "it." : "them."));
    m_environment.events.LetEventsThrough();
}

// A piece of work of its own: an earlier wish to stop is not for it.
void StartUp::ShowWork(const std::string& text) {
    m_view.ShowProgressArea(true);
    m_application.LongWork().Show(text);
}

void StartUp::SearchForSongs() {
    m_view.ShowProgressArea(true);
    m_application.Catalogue().SearchHardDrives();
    m_view.ShowProgressArea(false);
    const clsMain& catalogue = m_application.Catalogue();
    const std::string leftOut = SettleSongsOfOneName(m_application, false);
    m_environment.statusLine.Say(Sentences(
        {Counted(static_cast<std::size_t>(catalogue.LastSearch().added), "song") + " found.",
         leftOut, catalogue.SearchRemark()}));
}

void StartUp::OpenFirstJukebox() {
    Jukebox* jukebox = MaybeLastJukebox();
    if (jukebox == nullptr) {
        jukebox = &m_application.AddJukebox(std::make_unique<Jukebox>());
        StandingText progress(m_application.LongWork());  // Building tells what it does.
        Group(progress, [&] { BuildInitialJukebox(*jukebox, m_application.Groups(), progress); });
    }
    m_environment.events.LetEventsThrough();
    m_view.OpenJukeboxWindow(*jukebox);
    m_environment.events.LetEventsThrough();
}

Jukebox* StartUp::MaybeLastJukebox() {
    const std::string& path = m_application.Settings().LocOfLastSavedJukeBox();
    if (path.empty())
        return nullptr;
    m_environment.hosts.AskFor(m_environment.dialogs, {path}, "The last jukebox lies");
    ShowWork("Opening " + path + " . . .");
    Jukebox* const jukebox = m_application.MaybeLoadJukebox(path);
    m_view.ShowProgressArea(false);
    if (jukebox == nullptr)
        return nullptr;
    Group(m_application.LongWork(), [&] {
        m_application.LongWork().Show("Filling the folders of " + jukebox->DaCaption() + " . . .");
        m_application.Groups().BuildAutomaticGroups(0, true, jukebox->DaCaption());
    });
    return jukebox;
}

void StartUp::Group(Progress& progress, const std::function<void()>& build) {
    m_view.ShowProgressArea(true);
    m_application.Groups().ShowProgressIn(progress, build);
    if (progress.StopRequested())
        m_environment.statusLine.Say(m_application.Groups().StoppedText());
    m_view.ShowProgressArea(false);
}

}  // namespace tobbin
