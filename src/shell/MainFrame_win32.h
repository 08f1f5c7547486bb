#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/WindowBase_win32.h"
#include "platform/WindowsOutside_win32.h"
#include "shell/Application.h"
#include "shell/FrameBars_win32.h"
#include "shell/FrameChildren_win32.h"
#include "shell/FrameCommands.h"
#include "shell/FrameMenu_win32.h"
#include "shell/FramePlayer_win32.h"
#include "shell/FrameView.h"
#include "shell/RecentMenu.h"

namespace tobbin {

// The program's one top-level window `frmMDIForm1`: menus, toolbar, status bar and, between them,
// the client window of the jukebox windows and the player panel.
class MainFrame : public WindowBase, private FrameView, private JukeboxWindowHost {
 public:
    static constexpr wchar_t kClassName[] = L"frmMDIForm1";

    MainFrame(Application& application, WindowsOutside& outside);
    ~MainFrame() override;

    // Creates the frame, not yet to be seen.
    bool Open();
    // Keeps the frame's place and size for the next run.
    void SaveDatForm();
    // Shows it.
    void Appear();

    FrameView& View() { return *this; }
    void ShowTipsAtStartUp();
    void OfferRecovered() { m_commands.Files().OfferRecovered(); }

    // Opens jukebox files by their full paths, in the moment between two messages. They wait until
    // the frame is seen, and for the end of a dialog or a search.
    void OpenFiles(const std::vector<std::string>& paths) override;

    // For the message loop: the keys of menus and MDI, and the moment between two messages.
    bool TranslateKeys(MSG& message);
    void BetweenMessages();

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    bool OnCreate();
    void OnSize();
    void OnCommand(int command);
    void OnInitMenu(HMENU menu, bool isSystemMenu);
    void OnDpiChanged(const RECT& place);
    bool OnCopyData(const COPYDATASTRUCT& data);
    bool OnQueryEndSession();
    void OnClose();
    void OnDestroy();
    void UpdateBars();
    void UpdateTheMenuControlArray();

    JukeboxWindow* MaybeActiveJukebox() const override;
    JukeboxWindow* MaybeVisibleJukebox(
        const std::function<bool(const JukeboxWindow&)>& which) const override;
    bool HasChildren() const override;
    bool HasMinimisedChildren() const override;
    void OpenJukeboxWindow(Jukebox& jukebox) override;
    int JukeboxWindowsOpened() const override { return m_children.OpenedSoFar(); }
    bool PlayerCheck() override;
    void MinimisePlayerPanel() override;
    void MinimiseActivePlayerPanel() override;
    void Arrange(Arrangement arrangement) override;
    void ShowAbout() override;
    void ShowTips() override;
    void ShowFind() override;
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override;
    void CloseFrame() override;

    void PlayAllSongsInFolder(JukeboxWindow& window) override;
    void PlaySelectedSongs(JukeboxWindow& window) override;
    void ChangeBackgroundPicture(JukeboxWindow& window) override;
    void SaveBeforeClosing(JukeboxWindow& window) override;
    void OnSelectionChanged(JukeboxWindow& window) override;

    HWND ActiveChild() const;

    Application& m_application;
    WindowsOutside& m_outside;
    FramePlayer m_player;
    FrameCommands m_commands;
    FrameChildren m_children;
    FrameMenu m_menu;
    RecentMenu m_recent;
    FrameToolbar m_toolbar;
    FrameStatusBar m_statusBar;
    HWND m_client = nullptr;
    std::vector<std::string> m_filesToOpen;
    int m_loadedNumber = 0;
    bool m_maximised = false;  // as it was left
    bool m_barsOutdated = true;
    HWND m_barsOf = nullptr;  // the active child of which the bars tell
    bool m_closing = false;
};

}  // namespace tobbin
