#include "ui/BackgroundPicture.h"

namespace tobbin {
namespace {

constexpr char kAddress[] = R"(file:\\)";
constexpr char kPickFirst[] = "You first need to pick a picture.\r\n\r\n";
constexpr char kToStep[] =
    "Once you've picked a picture this will allow you to cycle through all the pictures in that "
    "particular folder (directory).";
// Other programs have these keys for something else.
constexpr char kOtherKeys[] =
    "Ctrl+Z and Ctrl+A step through the pictures. Alt+Backspace is undo, Ctrl+Shift+A selects all.";
constexpr char kToSwitch[] = "Once you've picked a picture you can use this function.";

}  // namespace

void BackgroundPicture::ReadSettings(const std::string& path) {
    const LoadResult result = LoadPictureSettings(m_environment, path, m_kept);
    if (result.outcome == LoadOutcome::Damaged || result.outcome == LoadOutcome::Unreadable)
        m_environment.statusLine.Say(result.message);
    m_list.Read(m_environment, m_sorter, m_kept.picture);
    if (!m_list.IsEmpty()) {
        UpdatePictureStatus();
        return;
    }
    show({}, m_kept.tiled, {});
    if (m_kept.shown && !m_kept.picture.empty())
        m_environment.statusLine.Say("The background picture \"" + m_kept.picture +
                                     (FileExists(m_environment.disk, m_kept.picture)
                                          ? "\" is no \".jpg\" file."
                                          : "\" is not there any more."));
}

void BackgroundPicture::ChangePicture(bool forward) {
    if (m_list.IsEmpty()) {
        m_environment.statusLine.Say(kOtherKeys);
        AskToPick(kToStep);
        return;
    }
    m_list.Step(forward);
    ShowCurrent(forward);
}

void BackgroundPicture::UpdatePictureStatus() {
    if (m_list.IsEmpty())
        AskToPick(kToSwitch);
    else
        ShowCurrent(true);
}

void BackgroundPicture::ShowCurrent(bool forward) {
    if (!m_kept.shown) {
        show({}, m_kept.tiled, {});
        return;
    }
    m_kept.picture = m_list.Current();
    show(kAddress + m_kept.picture, m_kept.tiled,
         m_list.Count() > 1 ? m_list.Beside(forward) : std::string());
}

void BackgroundPicture::AskToPick(const char* whatFor) {
    m_environment.dialogs.Tell(std::string(kPickFirst) + whatFor);
    choose();
}

void BackgroundPicture::OnFailed(const std::string& path, const std::string& reason) {
    if (m_kept.shown && path == m_kept.picture)
        m_environment.statusLine.Say("The picture \"" + path + "\" can't be shown: " + reason +
                                     ".");
}

}  // namespace tobbin
