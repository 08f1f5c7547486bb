#include "shell/RecoveredJukeboxes.h"

#include <algorithm>
#include <utility>

#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "ui/PictureSettings.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr char kExtension[] = ".juk";

std::string WithoutExtension(const std::string& path) {
    return path.substr(0, path.size() - std::min(path.size(), sizeof(kExtension) - 1));
}

// So much of a caption that a file name has room for what follows.
std::string Beginning(const std::string& caption) {
    constexpr std::size_t kMostUnits = 200;
    std::u16string units = Utf8ToUtf16(caption);
    units.resize(std::min(units.size(), kMostUnits));
    return Utf16ToUtf8(units);
}

DiskStatus MakeFolder(Disk& disk, const std::string& folder) {
    if (FolderExists(disk, folder))
        return {};
    const std::string parent = FolderOfPath(folder.substr(0, folder.size() - 1));
    if (!FolderExists(disk, parent))
        static_cast<void>(disk.CreateFolder(parent));  // The next one tells whether it worked.
    return disk.CreateFolder(folder);
}

}  // namespace

RecoveredJukeboxes::RecoveredJukeboxes(Application& application, FrameView& view)
    : m_application(application),
      m_view(view),
      m_environment(application.TheEnvironment()),
      m_lastKept(m_environment.clock.Milliseconds()) {}

void RecoveredJukeboxes::KeepWhenDue() {
    if (m_environment.clock.Milliseconds() - m_lastKept >= kMillisecondsBetweenCopies)
        KeepAll();
}

void RecoveredJukeboxes::LeaveForNextStart() {
    KeepAll();
    m_copies.clear();
}

void RecoveredJukeboxes::KeepAll() {
    m_lastKept = m_environment.clock.Milliseconds();
    for (const std::string& path : std::exchange(m_toRemove, {}))
        Remove(path);
    std::vector<const JukeboxWindow*> windows;
    m_view.MaybeVisibleJukebox([&](const JukeboxWindow& window) {
        windows.push_back(&window);
        return false;
    });
    for (const JukeboxWindow* const window : windows) {
        if (!window->HasUnsavedChanges()) {
            Drop(window->Model());
            continue;
        }
        const DiskStatus status = Keep(*window);
        if (!status.Ok())
            m_environment.statusLine.Say("No copy of the unsaved changes of \"" +
                                         window->DaCaption() +
                                         "\" could be kept: " + status.Reason() + ".");
    }
}

const RecoveredJukeboxes::Copy* RecoveredJukeboxes::MaybeCopyOf(const Jukebox& jukebox) const {
    const auto found =
        std::ranges::find_if(m_copies, [&](const Copy& copy) { return IsOf(copy, jukebox); });
    return found != m_copies.end() ? &*found : nullptr;
}

std::string RecoveredJukeboxes::PathOf(const Jukebox& jukebox) const {
    const Copy* const copy = MaybeCopyOf(jukebox);
    return copy != nullptr ? copy->path : std::string();
}

DiskStatus RecoveredJukeboxes::Keep(const JukeboxWindow& window) {
    const Jukebox& jukebox = window.Model();
    const std::uint64_t changes = jukebox.ChangeCount();
    const Copy* const old = MaybeCopyOf(jukebox);
    if (old != nullptr && old->changes == changes)
        return {};
    Copy copy{jukebox.LifeToken(), old != nullptr ? old->path : std::string(), changes};
    const bool written = old != nullptr && Write(copy.path, window).Ok();
    if (!written) {
        if (const DiskStatus status = WriteNew(window, copy.path); !status.Ok())
            return status;
        Drop(jukebox);
    }
    std::erase_if(m_copies,
                  [&](const Copy& one) { return one.jukebox.expired() || IsOf(one, jukebox); });
    m_copies.push_back(std::move(copy));
    return {};
}

DiskStatus RecoveredJukeboxes::WriteNew(const JukeboxWindow& window, std::string& path) {
    DiskStatus status(DiskError::NotFound);
    for (const std::string& folder : Folders()) {
        status = MakeFolder(m_environment.disk, folder);
        if (!status.Ok())
            continue;
        path = folder + FreeName(window.DaCaption()) + kExtension;
        status = Write(path, window);
        if (status.Ok())
            break;
    }
    return status;
}

DiskStatus RecoveredJukeboxes::Write(const std::string& path, const JukeboxWindow& window) {
    if (DiskStatus status =
            SaveJukeboxFile(m_environment.disk, path, window.Model(), m_application.Catalogue());
        !status.Ok())
        return status;
    // The picture matters less than what is kept already.
    if (!window.LastPicFileLocation().empty())
        static_cast<void>(SavePictureSettings(
            m_environment, WithoutExtension(path) + ".poc",
            {window.LastPicFileLocation(), window.BeItTiled(), window.ShowPictt()},
            FlagText::TruthValue));
    return {};
}

std::string RecoveredJukeboxes::FreeName(const std::string& caption) {
    const std::string name =
        caption == kSampleCaption ? "jukebox one" : m_environment.text.ToLower(Beginning(caption));
    const std::vector<std::string> folders = Folders();
    std::string free = name + " (recovered)";
    const auto isTaken = [&] {
        return IsTitleOpen(m_environment.text.ToUpper(free)) ||
               std::ranges::any_of(folders, [&](const std::string& folder) {
                   return FileExists(m_environment.disk, folder + free + kExtension);
               });
    };
    for (int number = 2; isTaken(); ++number)
        free = name + " (recovered " + std::to_string(number) + ")";
    return free;
}

bool RecoveredJukeboxes::IsTitleOpen(const std::string& title) const {
    return m_view.MaybeVisibleJukebox(
               [&](const JukeboxWindow& window) { return window.DaCaption() == title; }) != nullptr;
}

void RecoveredJukeboxes::Drop(const Jukebox& jukebox) {
    if (const Copy* const copy = MaybeCopyOf(jukebox)) {
        const std::string path = copy->path;
        std::erase_if(m_copies, [&](const Copy& one) { return IsOf(one, jukebox); });
        Remove(path);
    }
}

// What another program holds goes at the next opportunity.
void RecoveredJukeboxes::Remove(const std::string& path) {
    static_cast<void>(m_environment.disk.Remove(WithoutExtension(path) + ".poc"));
    const DiskStatus status = m_environment.disk.Remove(path);
    if (!status.Ok() && status.Error() != DiskError::NotFound)
        m_toRemove.push_back(path);
}

std::vector<std::string> RecoveredJukeboxes::Folders() const {
    const std::string& personal = m_application.Folders().personal;
    std::vector<std::string> folders = {m_application.DataFolder() + "Recovered\\"};
    if (!personal.empty())
        folders.push_back(personal + "Recovered\\");
    return folders;
}

bool RecoveredJukeboxes::IsInFolder(std::string_view path) const {
    const std::string folder = m_environment.text.ToLower(FolderOfPath(path));
    return std::ranges::any_of(Folders(), [&](const std::string& one) {
        return m_environment.text.ToLower(one) == folder;
    });
}

bool RecoveredJukeboxes::IsTaken(std::string_view path) const {
    const std::string lower = m_environment.text.ToLower(path);
    return std::ranges::any_of(m_copies, [&](const Copy& copy) {
        return !copy.jukebox.expired() && m_environment.text.ToLower(copy.path) == lower;
    });
}

std::vector<std::string> RecoveredJukeboxes::LeftBehind() const {
    std::vector<std::string> paths;
    for (const std::string& folder : Folders()) {
        FinishOrRemoveNewFiles(m_environment.disk, folder);
        FolderListing listing;
        if (!m_environment.disk.List(folder, listing).Ok())
            continue;
        for (const FolderEntry& entry : listing.entries)
            if (!entry.isFolder && m_environment.text.ToLower(entry.name).ends_with(kExtension) &&
                !IsTaken(folder + entry.name))
                paths.push_back(folder + entry.name);
    }
    return paths;
}

Jukebox* RecoveredJukeboxes::MaybeOpen(const std::string& path) {
    LoadOutcome outcome = LoadOutcome::Loaded;
    Jukebox* const jukebox = m_application.MaybeLoadJukebox(path, &outcome);
    if (jukebox == nullptr) {
        std::string keptAs;
        if (outcome == LoadOutcome::Damaged)  // and not offered for ever
            static_cast<void>(KeepDamagedFileAside(m_environment.disk, path, keptAs));
        return nullptr;
    }
    std::string title = jukebox->DaCaption();
    if (title.find("(RECOVERED") == std::string::npos)
        title += " (RECOVERED)";
    jukebox->DaCaption(title);
    for (int number = 2; IsTitleOpen(jukebox->DaCaption()); ++number)
        jukebox->DaCaption(title + " " + std::to_string(number));
    jukebox->FileLocation("");
    jukebox->IsFormDirty(true);
    if (!IsTaken(path))
        m_copies.push_back({jukebox->LifeToken(), path, jukebox->ChangeCount()});
    m_view.OpenJukeboxWindow(*jukebox);
    JukeboxWindow* const window = m_view.MaybeVisibleJukebox(
        [&](const JukeboxWindow& one) { return &one.Model() == jukebox; });
    const std::string picture = WithoutExtension(path) + ".poc";
    if (window != nullptr && FileExists(m_environment.disk, picture))
        window->Picture().ReadSettings(picture);
    return jukebox;
}

}  // namespace tobbin
