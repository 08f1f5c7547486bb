#include "shell/NewSongs.h"

#include <memory>
#include <string>

#include "search/PlayerDiscovery.h"
#include "search/SilentProgress.h"
#include "shell/CataloguePass.h"
#include "shell/SongsOfOneName.h"
#include "util/Text.h"

namespace tobbin {

void NewSongs::LookInKnownFolders() {
    Search(false);
}

void NewSongs::SearchWholeComputer() {
    Search(true);
}

void NewSongs::FillAnew(JukeboxWindow& jukebox) {
    clsMain& catalogue = m_application.Catalogue();
    const std::unique_ptr<SearchingWindow> window = m_view.MakeSearchingWindow();
    window->Open();
    m_application.LongWork().Window(window.get());
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    if (catalogue.MainIsDirty())
        catalogue.Save();
    m_application.Groups().ShowProgressIn(*window, [&] { jukebox.FillAnew(); });
    m_application.LongWork().Window(nullptr);
    window->Close();
}

void NewSongs::Search(bool wholeComputer) {
    clsMain& catalogue = m_application.Catalogue();
    const std::unique_ptr<SearchingWindow> window = m_view.MakeSearchingWindow();
    window->Open();
    window->Show("Searching to add new songs  . . . ");
    m_application.LongWork().Window(window.get());
    const bool saved = RunCataloguePass(m_application, [&] {
        if (wholeComputer)
            return catalogue.SearchHardDrives();
        return catalogue.AddAnyAdditionalMp3FromTheNormalDirectories() &&
               catalogue.WriteOutMp3DirectoryLocations();
    });
    std::string leftOut;
    if (saved) {
        leftOut = SettleSongsOfOneName(m_application, wholeComputer);
        window->GoOn();  // What a search found before it was stopped shall be filed.
        m_application.Groups().ShowProgressIn(
            *window, [this] { m_application.Groups().BuildAutomaticGroups(0, true, ""); });
    }
    m_application.LongWork().Window(nullptr);
    window->Close();
    if (!saved)
        return;
    const std::int32_t found = catalogue.LastSearch().added;
    std::string line = "No new songs were found.";
    if (found == 0 && !catalogue.SearchRemark().empty())
        line += "  " + catalogue.SearchRemark();
    if (found > 0)
        line = Counted(static_cast<std::size_t>(found), "new song") +
               (found == 1 ? " was found." : " were found.");
    if (const std::int32_t back = catalogue.LastSearch().cameBack; back > 0)
        line += "  " + Counted(static_cast<std::size_t>(back), "song") +
                (back == 1 ? " was found again." : " were found again.");
    if (!leftOut.empty())
        line += "  " + leftOut;
    if (window->StopRequested() && !m_application.Groups().StoppedText().empty())
        line += "  " + m_application.Groups().StoppedText();
    m_application.TheEnvironment().statusLine.Say(line);
}

void InstallPlayer(Application& application, SearchingWindow& window) {
    PlayerDiscovery& discovery = application.Discovery();
    if (!discovery.RunInstaller(application.Folders().application))
        return;
    discovery.SearchWithProgressWindow(window, [&] {
        SilentProgress silent(window);
        application.LongWork().Window(&silent);
        clsMain& catalogue = application.Catalogue();
        const std::int32_t before = catalogue.UBoundOfMp3Array();
        RunCataloguePass(application,
                         [&] { return catalogue.AddAnyAdditionalMp3FromTheNormalDirectories(); });
        if (catalogue.UBoundOfMp3Array() != before) {
            window.GoOn();
            application.Groups().ShowProgressIn(
                silent, [&] { application.Groups().BuildAutomaticGroups(0, true, ""); });
        }
        application.LongWork().Window(nullptr);
    });
}

}  // namespace tobbin
