#pragma once

#include <windows.h>

#include <string>

#include "platform/DialogBase_win32.h"
#include "platform/Environment.h"

namespace tobbin {

// The About box: version, license, libraries, and the data folder, which a click opens.
class AboutDialog : public DialogBase {
 public:
    AboutDialog(Programs& programs, std::string dataFolder)
        : m_programs(programs), m_dataFolder(std::move(dataFolder)) {}

    // Shows the dialog and waits for its end.
    void Show(HWND owner);

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    HWND OnLoad() override;

 private:
    Programs& m_programs;
    std::string m_dataFolder;
};

}  // namespace tobbin
