#pragma once

#include <windows.h>

#include <string>

#include "platform/Environment.h"
#include "platform/PacedLabel_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"

namespace tobbin {

// The splash window `frmSplash`: the program's picture and title and, while there is something to
// tell, the progress area: one line of text, a bar, and a button that stops the search.
class Splash : public WindowBase, public Progress {
 public:
    static constexpr wchar_t kClassName[] = L"frmSplash";
    enum Control : int { lblProgress = 101, cmdStop, barProgress };

    ~Splash() override;

    // Shows the window in the middle of the main screen.
    bool Open();

    // Showing the area anew takes back an earlier request to stop.
    void ShowProgressArea(bool visible);

    void Show(const std::string& text) override { ShowSteps(text, {}); }
    void ShowSteps(const std::string& text, const StepsDone& steps) override;
    bool StopRequested() const override { return m_stop; }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate() override;
    void OnPaint();
    void OnStop();
    void Layout();
    void UseFonts();

    UniqueFont m_font;
    UniqueFont m_titleFont;
    PacedLabel m_label{lblProgress, barProgress, 1};
    bool m_stop = false;
};

}  // namespace tobbin
