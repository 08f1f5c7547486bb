#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Application.h"
#include "shell/FrameView.h"
#include "shell/RecentMenu.h"

namespace tobbin {

// Opens and saves jukeboxes as files. Where a file can't be read or written no box opens: the
// status line says why, and nothing else has changed.
class JukeboxFiles {
 public:
    JukeboxFiles(Application& application, FrameView& view)
        : m_application(application), m_view(view) {}

    // The Open dialog, a recent jukebox (1 newest to 3), and files named from outside the program,
    // which bring the window forward if they are open already.
    void Open();
    void OpenRecent(int number);
    void OpenFromOutside(const std::vector<std::string>& paths);

    // Fills the sample jukebox, as long as Esc doesn't stop it.
    void BuildSample(Jukebox& sample);

    // Ends the reading of new songs' tags for a jukebox; those that were read are filed. Returns
    // whether there was such work.
    bool StopRefreshing();

    void Save();
    void SaveAs();

    // Saves a window that is about to close and will close in any case: what could not be saved
    // where the person wanted it goes to the folder for recovered jukeboxes.
    void SaveBeforeClosing(JukeboxWindow& window);

    // Offers what SaveBeforeClosing had to put aside when the program ran last.
    void OfferRecovered();

    // Whether a window that can be seen has the title as its caption.
    bool IsOpen(std::string_view title) const;

    // The path of a jukebox file as it is saved: trimmed, in lower case, and with ".juk" at its end
    // once.
    static std::string NormalPath(const SystemText& text, std::string_view path);

 private:
    bool OpenPath(const std::string& path);
    void RefreshGroups(Jukebox& jukebox);
    void Refresh(const std::function<bool()>& hasClosed,
                 const std::function<void(Progress&)>& build);
    bool SaveTo(const std::string& path, JukeboxWindow& window);
    void WritePictureSettings(const std::string& path, const JukeboxWindow& window);
    void NoteAsRecent(const std::string& path);
    JukeboxWindow* MaybeWindowToSave();
    std::vector<std::string> RecoveredFolders() const;  // each ends in "\"
    bool KeepRecovered(JukeboxWindow& window);

    Application& m_application;
    FrameView& m_view;
    bool m_refreshing = false;
    bool m_stopRefreshing = false;
};

}  // namespace tobbin
