#pragma once

#include <functional>
#include <string>

#include "catalogue/clsINI.h"
#include "platform/Environment.h"
#include "ui/JukeboxWindow.h"

namespace tobbin {

// What the picture dialog shows and what the person set in it.
class PictureChoiceView {
 public:
    virtual ~PictureChoiceView() = default;
    virtual void TickTile(bool ticked) = 0;     // `CheckTilePicture`
    virtual void TickPicture(bool ticked) = 0;  // `ChkNoPicture`: ticked when one is shown
    virtual bool IsTileTicked() const = 0;
    virtual bool IsPictureTicked() const = 0;
    // The path of the picture chosen, empty for none.
    virtual void ShowPath(const std::string& path) = 0;
};

// Decides for the picture dialog `frmPicture`. Exists as long as the dialog does.
class PictureChoice {
 public:
    // The window that a choice is for: the active one at that moment, null when that is no jukebox.
    using ActiveWindow = std::function<JukeboxWindow*()>;

    PictureChoice(Environment& environment, clsINI& settings, ActiveWindow activeWindow);

    // The dialog opens.
    void Load(PictureChoiceView& view);

    // Its buttons. OK and Cancel close it afterwards.
    void OnBrowse(PictureChoiceView& view);
    void OnOk(const PictureChoiceView& view);
    void OnCancel() { m_settings.PictureLocation(m_pictureBefore); }

 private:
    Environment& m_environment;
    clsINI& m_settings;
    ActiveWindow m_activeWindow;
    std::string m_pictureBefore;
};

}  // namespace tobbin
