#pragma once

#include <functional>
#include <memory>
#include <string>

#include "jukebox/Jukebox.h"
#include "search/PlayerDiscovery.h"
#include "ui/JukeboxWindow.h"

namespace tobbin {

enum class Arrangement { Cascade, TileHorizontally, Icons };

// What the commands of the main frame need of its window.
class FrameView {
 public:
    virtual ~FrameView() = default;

    // The active child when it is a jukebox window; null otherwise.
    virtual JukeboxWindow* MaybeActiveJukebox() const = 0;

    // The last of the jukebox windows that can be seen and for which `which` is true; null when
    // there is none.
    virtual JukeboxWindow* MaybeVisibleJukebox(
        const std::function<bool(const JukeboxWindow&)>& which) const = 0;

    // Whether any child window is open, and whether one of them is minimized.
    virtual bool HasChildren() const = 0;
    virtual bool HasMinimizedChildren() const = 0;

    // Opens a window on a jukebox, unless the frame has closed, shows it and makes it the active
    // one.
    virtual void OpenJukeboxWindow(Jukebox& jukebox) = 0;
    // How many have been opened since the program began.
    virtual int JukeboxWindowsOpened() const = 0;

    // Whether the player's place is known, after a search that was still pending. Offers to install
    // the player when it is not.
    virtual bool PlayerCheck() = 0;

    // Minimizes the player panel if it is loaded; the second: only if it is the active child.
    virtual void MinimizePlayerPanel() = 0;
    virtual void MinimizeActivePlayerPanel() = 0;
    virtual void Arrange(Arrangement arrangement) = 0;

    // Modal dialogs.
    virtual void ShowAbout() = 0;
    virtual void ShowTips() = 0;
    virtual void ShowFind() = 0;  // over FrameCommands::Find

    // The window `frmSearching`, not yet open. While it is, the frame takes no input.
    virtual std::unique_ptr<SearchingWindow> MakeSearchingWindow() = 0;

    // Closes the frame as the person does it.
    virtual void CloseFrame() = 0;
};

}  // namespace tobbin
