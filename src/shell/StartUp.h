#pragma once

#include <functional>
#include <string>

#include "jukebox/Jukebox.h"
#include "platform/Environment.h"
#include "shell/Application.h"

namespace tobbin {

// What start-up shows. Each call is one window coming or going; start-up itself decides.
class StartUpView {
 public:
    virtual ~StartUpView() = default;

    // Loads and shows the splash window `frmSplash`, its progress area hidden. The result shows a
    // text in its label and knows its stop button; it is valid until UnloadSplash.
    virtual Progress& LoadSplash() = 0;
    virtual void UnloadSplash() = 0;

    // The splash's label and its stop button. Showing them takes back an earlier stop.
    virtual void ShowProgressArea(bool visible) = 0;

    // Opens a jukebox window on a jukebox that is filled already. It is seen once the main frame
    // is.
    virtual void OpenJukeboxWindow(Jukebox& jukebox) = 0;

    // Shows the main frame, which takes over.
    virtual void HandOver() = 0;

    // Shows the tips dialog `frmTip` modally, unless tips at start-up are turned off.
    virtual void ShowTips() = 0;
};

// What the program does before its main frame is seen: it prepares the data folders, the settings,
// the player's place, the catalogue and the first jukebox.
class StartUp {
 public:
    StartUp(Application& application, StartUpView& view);

    // Runs every step. False means that the program can't work here and ends; the person has been
    // told why.
    bool Run();

 private:
    void TellOfCrash();
    void CheckRuntimeLibrary();
    bool PrepareDataFolders();
    bool PrepareSettings();
    bool HasFolder(const std::string& folder);
    bool HoldDataFolder(const std::string& folder);
    void UseOwnData();
    std::string InOwnFolder(const std::string& path, const std::string& theirs);
    bool PlayerIsThere();
    bool PlayerIsGone();
    void FindPlayer();
    void ForgetMissingPlayer();
    void PrepareCatalogue();
    void BringCatalogueUpToDate();
    void SearchForSongs();
    void ShowWork(const std::string& text);
    void Group(Progress& progress, const std::function<void()>& build);
    void OpenFirstJukebox();
    Jukebox* MaybeLastJukebox();

    Application& m_application;
    StartUpView& m_view;
    Environment& m_environment;
};

}  // namespace tobbin
