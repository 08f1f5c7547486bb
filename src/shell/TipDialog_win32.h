#pragma once

#include <windows.h>

#include <string>

#include "platform/DialogBase_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "shell/Tips.h"

namespace tobbin {

// The dialog `frmTip`.
class TipDialog : public DialogBase, private TipView {
 public:
    explicit TipDialog(Tips& tips) : m_tips(tips) {}

    // Shows the dialog and waits for its end, if it may open.
    void Show(HWND owner);

 protected:
    HWND OnLoad() override;
    bool OnCommand(int control, int notification) override;

 private:
    void ShowTip(const std::string& text) override;
    void MakeRoomFor(const std::wstring& text);
    void TickTipsAtStartUp(bool ticked) override;

    Tips& m_tips;
};

}  // namespace tobbin
