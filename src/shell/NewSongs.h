#pragma once

#include "shell/Application.h"
#include "shell/FrameView.h"

namespace tobbin {

// The two commands "Bring In New Songs", and the one that fills folders anew. The two search, put
// what was found into the catalogue and into the automatic groups of every open jukebox. The person
// sees the progress and can stop the search; what was found by then is kept.
class NewSongs {
 public:
    NewSongs(Application& application, FrameView& view)
        : m_application(application), m_view(view) {}

    void LookInKnownFolders();
    void SearchWholeComputer();

    // Looks which songs are gone, and fills the folders of one jukebox anew by the songs' tags.
    void FillAnew(JukeboxWindow& jukebox);

 private:
    void Search(bool wholeComputer);

    Application& m_application;
    FrameView& m_view;
};

// Runs the player's installer and, if it ran, searches for the player and for songs that came with
// it. `window` opens for the search.
void InstallPlayer(Application& application, SearchingWindow& window);

}  // namespace tobbin
