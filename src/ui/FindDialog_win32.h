#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include "platform/DialogBase_win32.h"
#include "platform/WindowIcons_win32.h"
#include "platform/WindowSubclass_win32.h"
#include "ui/frmFind.h"

namespace tobbin {

// The dialog of `frmFind`: the text box `Text1` and the buttons `Command1`, which finds, and
// `Command3`, which closes. Enter finds wherever the focus is. It goes aside for what it finds.
class FindDialog : public DialogBase {
 public:
    static constexpr wchar_t kClassName[] = L"frmFind";

    // `placeOfHit` answers where the row of the list that has the focus is on the screen.
    FindDialog(frmFind& find, std::function<RECT()> placeOfHit)
        : m_find(find), m_placeOfHit(std::move(placeOfHit)) {}

    // Shows the dialog and waits for its end.
    void Show(HWND owner);

 protected:
    HWND OnLoad() override;
    bool OnCommand(int control, int notification) override;

 private:
    void Find();
    void MakeWay();
    LRESULT OnCancelMessage(UINT message, WPARAM wParam, LPARAM lParam);

    frmFind& m_find;
    WindowIcons m_icons;
    std::function<RECT()> m_placeOfHit;
    WindowSubclass m_cancel{[this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnCancelMessage(message, wParam, lParam);
    }};
};

}  // namespace tobbin
