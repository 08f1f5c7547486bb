#include "ui/PictureChoice.h"

#include <optional>
#include <utility>

#include "ui/PictureSettings.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr char kFilter[] = "JPEG (*.jpg) |*.jpg";

}  // namespace

PictureChoice::PictureChoice(Environment& environment, clsINI& settings, ActiveWindow activeWindow)
    : m_environment(environment),
      m_settings(settings),
      m_activeWindow(std::move(activeWindow)),
      m_pictureBefore(settings.PictureLocation()) {}

void PictureChoice::Load(PictureChoiceView& view) {
    view.TickTile(m_settings.IsItTiled());
    view.TickPicture(m_settings.IsThereAPicture());
    view.ShowPath(m_settings.PictureLocation());
}

void PictureChoice::OnBrowse(PictureChoiceView& view) {
    const std::string& picture = m_settings.PictureLocation();
    const std::optional<std::string> chosen = m_environment.dialogs.MaybeFileToOpen(
        kFilter, FileExists(m_environment.disk, picture)
                     ? FolderOfPath(picture)
                     : m_settings.ApplicationFolder() + "Grouping\\");
    if (!chosen)
        return;
    m_environment.hosts.Trust(*chosen);
    m_settings.PictureLocation(*chosen);
    view.TickPicture(true);
    view.ShowPath(*chosen);
}

void PictureChoice::OnOk(const PictureChoiceView& view) {
    JukeboxWindow* const window = m_activeWindow();
    if (window == nullptr)
        return;
    window->BeItTiled(view.IsTileTicked());
    window->ShowPictt(view.IsPictureTicked());
    m_settings.IsItTiled(view.IsTileTicked());
    m_settings.IsThereAPicture(view.IsPictureTicked());
    m_settings.Save(m_settings.SettingsPath());
    const std::string name = window->DaCaption() + ".poc";
    const std::string path = m_settings.LocOfGroupingDir() + name;
    const DiskStatus status = SavePictureSettings(
        m_environment, path,
        {m_settings.PictureLocation(), view.IsTileTicked(), view.IsPictureTicked()},
        FlagText::CheckBox);
    if (!status.Ok())
        m_environment.dialogs.Tell("The picture settings \"" + path +
                                       "\" could not be written: " + status.Reason() +
                                       ".  The jukebox keeps the picture that it had.",
                                   BoxIcon::Warning);
    window->ReadInImageArray(name);
}

}  // namespace tobbin
