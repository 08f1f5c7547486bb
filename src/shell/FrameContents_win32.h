#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/WindowSubclass_win32.h"
#include "shell/Application.h"
#include "shell/FrameChildren_win32.h"
#include "shell/FrameCommands.h"
#include "shell/FramePlayer_win32.h"
#include "shell/FrameView.h"

namespace tobbin {

// What lies in the main frame: its client window with the jukebox windows and the player panel, the
// dialogs that open over it, and the commands, which work on all of them.
class FrameContents : private FrameView, private JukeboxWindowHost {
 public:
    explicit FrameContents(Application& application);

    bool CreateIn(HWND frame, HMENU windowList);

    FrameView& View() { return *this; }
    FrameCommands& Commands() { return m_commands; }
    FrameChildren& Children() { return m_children; }
    FramePlayer& Player() { return m_player; }

    // The client window, and its active child. Null when there is none.
    HWND Client() const { return m_client; }
    HWND ActiveChild() const;

    // Called when the bars' texts or buttons may no longer be true.
    std::function<void()> onChanged = [] {};

    void ShowTipsAtStartUp();

    // Opens jukebox files by their full paths. They wait for OpenWaitingFiles, which opens them if
    // the frame is seen and no dialog or search is over it.
    void OpenFiles(const std::vector<std::string>& paths) override;
    void OpenWaitingFiles();

    // The screen or the colors have changed: windows that don't fill the frame keep their share of
    // it.
    void UseLook(int oldDpi, int dpi);

    // Releases windows that are closed. Only to be called when no message of one is at work.
    void ReleaseClosed();

 private:
    JukeboxWindow* MaybeActiveJukebox() const override;
    JukeboxWindow* MaybeVisibleJukebox(
        const std::function<bool(const JukeboxWindow&)>& which) const override;
    bool HasChildren() const override;
    bool HasMinimizedChildren() const override;
    void OpenJukeboxWindow(Jukebox& jukebox) override;
    int JukeboxWindowsOpened() const override { return m_children.OpenedSoFar(); }
    bool PlayerCheck() override;
    void MinimizePlayerPanel() override;
    void MinimizeActivePlayerPanel() override;
    void Arrange(Arrangement arrangement) override;
    void ShowAbout() override;
    void ShowTips() override;
    void ShowFind() override;
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override;
    void CloseFrame() override;

    void PlayAllSongsInFolder(JukeboxWindow& window) override;
    void PlaySelectedSongs(JukeboxWindow& window) override;
    void ChangeBackgroundPicture(JukeboxWindow& window) override;
    void PrepareToClose(JukeboxWindow& window, bool save) override;
    void OnSelectionChanged(JukeboxWindow& window) override;

    LRESULT OnClientMessage(UINT message, WPARAM wParam, LPARAM lParam);

    Application& m_application;
    FramePlayer m_player;
    FrameCommands m_commands;
    FrameChildren m_children;
    HWND m_frame = nullptr;
    HWND m_client = nullptr;
    bool m_clientIsEmpty = true;
    WindowSubclass m_clientMessages{[this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnClientMessage(message, wParam, lParam);
    }};
    std::vector<std::string> m_filesToOpen;
};

}  // namespace tobbin
