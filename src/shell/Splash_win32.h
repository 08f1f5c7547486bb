#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/Outside.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"

namespace tobbin {

// The splash window `frmSplash`: the program's picture and title and, while there is something to
// tell, the progress area: one line of text, a bar that moves, and a button that stops the search.
class Splash : public WindowBase, public Progress {
 public:
    static constexpr wchar_t kClassName[] = L"frmSplash";
    enum Control : int { lblProgress = 101, cmdStop, barProgress };

    ~Splash() override;

    // Shows the window in the middle of the main screen.
    bool Open();

    // Showing the area anew takes back an earlier request to stop.
    void ShowProgressArea(bool visible);

    // The text appears at once, or as soon as the last one has been seen for a moment.
    void Show(const std::string& text) override;
    bool StopRequested() const override { return m_stop; }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate() override;
    void OnPaint();
    void OnStop();
    void OnTimer();
    void Layout();
    void ShowText();

    UniqueFont m_font;
    UniqueFont m_titleFont;
    std::string m_text;
    bool m_textWaits = false;
    std::uint64_t m_lastShown = 0;  // GetTickCount64
    bool m_stop = false;
};

}  // namespace tobbin
