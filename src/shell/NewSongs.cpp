#include "shell/NewSongs.h"

#include <memory>
#include <string>
#include <string_view>

#include "jukebox/SpecialFolders.h"
#include "search/PlayerDiscovery.h"
#include "search/SilentProgress.h"
#include "shell/CataloguePass.h"
#include "shell/SongsOfOneName.h"
#include "util/Text.h"

namespace tobbin {
namespace {

std::string WhereNewSongsAre(Application& application) {
    for (const std::string_view folder : {kNew, kAllSongs})
        for (std::size_t i = 0; i < application.Count(); ++i)
            if (const Folder* const there = application.At(i).MaybeFind(folder);
                there != nullptr && there->Level() == 0)
                return "See the folder \"" + std::string(folder) + "\".";
    return "They are added to each jukebox when you open it.";
}

}  // namespace

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
    const auto found = static_cast<std::size_t>(catalogue.LastSearch().added);
    const auto back = static_cast<std::size_t>(catalogue.LastSearch().cameBack);
    m_application.TheEnvironment().statusLine.Say(
        Sentences({found == 0 ? "No new songs found." : Counted(found, "new song") + " found.",
                   found == 0 ? "" : WhereNewSongsAre(m_application),
                   back == 0 ? "" : Counted(back, "song") + " found again.", leftOut,
                   catalogue.SearchRemark(),
                   window->StopRequested() ? m_application.Groups().StoppedText() : ""}));
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
