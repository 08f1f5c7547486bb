#pragma once

#include <windows.h>

#include "platform/PacedLabel_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {

// The small window `frmSearching`: one line of text, a bar, and a button that stops the work.
// While it is open its owner takes no input.
class SearchingPopup : public SearchingWindow, private WindowBase {
 public:
    static constexpr wchar_t kClassName[] = L"frmSearching";
    enum Control : int { lblSearching = 101, cmdStop, barSearching };

    explicit SearchingPopup(HWND owner) : m_owner(owner) {}
    ~SearchingPopup() override { Close(); }

    void Open() override;
    void Close() override;
    void Show(const std::string& text) override { ShowSteps(text, {}); }
    void ShowSteps(const std::string& text, const StepsDone& steps) override;
    void GoOn() override { m_stop = false; }
    bool StopRequested() const override { return m_stop; }

    // Esc stops the search, as the button does. Returns whether the message was for such a window.
    static bool TranslateKeys(MSG& message);

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate() override;
    void Layout();
    void UseFonts();

    HWND m_owner;
    UniqueFont m_font;
    PacedLabel m_label{lblSearching, barSearching, 1};
    bool m_stop = false;
};

}  // namespace tobbin
