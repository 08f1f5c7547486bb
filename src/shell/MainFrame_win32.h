#pragma once

#include <windows.h>

#include "platform/WindowBase_win32.h"
#include "platform/WindowIcons_win32.h"
#include "platform/WindowsEnvironment_win32.h"
#include "shell/Application.h"
#include "shell/FrameBars_win32.h"
#include "shell/FrameContents_win32.h"
#include "shell/FrameMenu_win32.h"
#include "shell/RecentMenu.h"

namespace tobbin {

// The program's one top-level window `frmMDIForm1`: menus, toolbar, status bar and, between them,
// its contents.
class MainFrame : public WindowBase {
 public:
    static constexpr wchar_t kClassName[] = L"frmMDIForm1";

    MainFrame(Application& application, WindowsEnvironment& environment);
    ~MainFrame() override;

    // Creates the frame, not yet to be seen.
    bool Open();
    // Keeps the frame's place and size for the next run.
    void SaveDatForm();
    // Shows it.
    void Appear();

    FrameContents& Contents() { return m_contents; }

    // For the message loop: the keys of menus and MDI, and the moment between two messages.
    bool TranslateKeys(MSG& message);
    void BetweenMessages();

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate() override;
    void OnSize();
    void OnCommand(int command);
    void OnInitMenu(HMENU menu, bool isSystemMenu);
    void OnDpiChanged(const RECT& place);
    void UseLook();
    bool OnCopyData(const COPYDATASTRUCT& data);
    void OnSessionMustWait() override;
    void OnQueryEndSession();
    void OnEndSession(bool programCloses);
    void KeepCopies();
    void ShowDetails();
    void OnClose();
    void OnDestroy() override;
    void UpdateBars();
    void UpdateTheMenuControlArray();

    Application& m_application;
    WindowsEnvironment& m_environment;
    FrameContents m_contents;
    FrameMenu m_menu;
    RecentMenu m_recent;
    FrameToolbar m_toolbar;
    FrameStatusBar m_statusBar;
    WindowIcons m_icons;
    int m_loadedNumber = 0;
    int m_dpi = 96;            // of the screen that the frame's look is for
    bool m_maximized = false;  // as it was left
    bool m_barsOutdated = true;
    HWND m_barsOf = nullptr;  // the active child of which the bars tell
    bool m_closing = false;
};

}  // namespace tobbin
