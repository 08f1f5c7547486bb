#pragma once

#include <functional>
#include <string>

#include "catalogue/clsINI.h"
#include "platform/Environment.h"
#include "ui/PictureList.h"
#include "ui/PictureSettings.h"
#include "util/SortCity.h"

namespace tobbin {

// The picture behind one jukebox window's song list: which one, how, and the stepping through the
// pictures of its folder. The picture list is empty until a picture-settings file is read.
class BackgroundPicture {
 public:
    BackgroundPicture(Environment& environment, const clsINI& settings, SortCity& sorter)
        : m_environment(environment), m_settings(settings), m_sorter(sorter) {}

    // Sets the background of the window's control. The address is "file:\\" with the full path
    // behind it; the empty text removes the picture. `next` is the path of the picture that will
    // most likely follow, empty when there is none.
    using Show =
        std::function<void(const std::string& address, bool tiled, const std::string& next)>;
    Show show = [](const std::string&, bool, const std::string&) {};

    // Opens the picture dialog for the window and waits for its end.
    std::function<void()> choose = [] {};

    // Full path of the picture shown now, whether it is tiled, whether a picture is shown.
    const std::string& LastPicFileLocation() const { return m_kept.picture; }
    void LastPicFileLocation(std::string path) { m_kept.picture = std::move(path); }
    bool BeItTiled() const { return m_kept.tiled; }
    void BeItTiled(bool tiled) { m_kept.tiled = tiled; }
    bool ShowPictt() const { return m_kept.shown; }
    void ShowPictt(bool shown) { m_kept.shown = shown; }

    const PictureList& Pictures() const { return m_list; }

    // Takes the settings of a file of the data folder, if it is there, reads the picture list anew
    // and shows the picture. Opens no box: the status line tells of a picture that is gone.
    void ReadInImageArray(const std::string& name) {
        ReadSettings(m_settings.LocOfGroupingDir() + name);
    }
    void ReadSettings(const std::string& path);  // the same of any file

    // Steps to the next or the previous picture of the list and shows it. Without a list it says
    // so and opens the picture dialog; so does the second one, which shows or removes the picture
    // as the flags say.
    void ChangePicture(bool forward);
    void UpdatePictureStatus();

    // The view could not show a picture. Only the one that is wanted now matters.
    void OnFailed(const std::string& path, const std::string& reason);

 private:
    void ShowCurrent(bool forward);
    void AskToPick(const char* whatFor);

    Environment& m_environment;
    const clsINI& m_settings;
    SortCity& m_sorter;
    PictureSettings m_kept;
    PictureList m_list;
};

}  // namespace tobbin
