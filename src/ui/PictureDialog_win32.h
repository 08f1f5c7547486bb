#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "platform/DialogBase_win32.h"
#include "ui/PictureChoice.h"
#include "ui/PictureLoader.h"

namespace tobbin {

// The dialog `frmPicture`, with a small look at the picture chosen.
class PictureDialog : public DialogBase, private PictureChoiceView {
 public:
    PictureDialog(PictureChoice& choice, PictureLoader& loader)
        : m_choice(choice), m_loader(loader) {}
    ~PictureDialog() override { m_loader.Forget(this); }

    // Shows the dialog and waits for its end.
    void Show(HWND owner);

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    HWND OnLoad() override;
    bool OnCommand(int control, int notification) override;

 private:
    void TickTile(bool ticked) override;
    void TickPicture(bool ticked) override;
    bool IsTileTicked() const override;
    bool IsPictureTicked() const override;
    void ShowPath(const std::string& path) override;

    void OnReady();
    void RequestPreview();
    void DrawPreview(const DRAWITEMSTRUCT& draw) const;

    PictureChoice& m_choice;
    PictureLoader& m_loader;
    std::string m_path;
    std::shared_ptr<const Picture> m_preview;
};

}  // namespace tobbin
