#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Application.h"
#include "shell/FrameView.h"
#include "shell/RecentMenu.h"
#include "shell/RecoveredJukeboxes.h"

namespace tobbin {

// Opens and saves jukeboxes as files. Where a file can't be read or written no box opens: the
// status line says why, and nothing else has changed.
class JukeboxFiles {
 public:
    JukeboxFiles(Application& application, FrameView& view)
        : m_application(application), m_view(view), m_recovered(application, view) {}

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

    // A window is about to close and will close in any case. What is to be saved, and can't be
    // where the person wanted it, is left as a recovered jukebox; where that fails, too, a box
    // offers another place. What is not to be saved leaves no copy behind.
    void PrepareToClose(JukeboxWindow& window, bool save);

    // The copies of jukeboxes with unsaved changes, and the offer to open what earlier runs of the
    // program left there.
    RecoveredJukeboxes& Recovered() { return m_recovered; }
    void OfferRecovered();

    // The arguments with which a start of the program opens the jukeboxes that are open now, as far
    // as they come from files: quoted paths, no more than `mostUnits` UTF-16 units.
    std::string RestartArguments(std::size_t mostUnits) const;

    // Whether a window that can be seen has the title as its caption.
    bool IsOpen(std::string_view title) const;

    // The path of a jukebox file as it is saved: trimmed, in lower case, and with ".juk" at its end
    // once.
    static std::string NormalPath(const SystemText& text, std::string_view path);

 private:
    bool OpenPath(const std::string& path);
    bool OpenRecovered(const std::string& path);
    void RefreshGroups(Jukebox& jukebox);
    void Refresh(const std::function<bool()>& hasClosed,
                 const std::function<void(Progress&)>& build);
    bool SaveTo(const std::string& path, JukeboxWindow& window);
    void WritePictureSettings(const std::string& path, const JukeboxWindow& window);
    void NoteAsRecent(const std::string& path);
    JukeboxWindow* MaybeWindowToSave();

    Application& m_application;
    FrameView& m_view;
    RecoveredJukeboxes m_recovered;
    bool m_refreshing = false;
    bool m_stopRefreshing = false;
};

}  // namespace tobbin
