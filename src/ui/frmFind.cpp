#include "ui/frmFind.h"

#include <array>
#include <utility>

#include "util/Text.h"

namespace tobbin {
namespace {

// A walk that asks for more songs than that without a hit is a long one.
constexpr int kMostAskedSingly = 2000;

// The folder at a place in the order of the tree, from 1; null beyond the last.
Folder* MaybeFolderAt(const Jukebox& jukebox, std::size_t place) {
    Folder* folder = jukebox.Next(nullptr);
    while (folder != nullptr && --place > 0)
        folder = jukebox.Next(folder);
    return folder;
}

// The place of the first folder that has a folder's text and level.
std::size_t PlaceOf(const Jukebox& jukebox, const Folder& wanted) {
    const int level = wanted.Level();
    std::size_t place = 1;
    for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
         folder = jukebox.Next(folder), ++place)
        if (folder->Text() == wanted.Text() && folder->Level() == level)
            break;
    return place;
}

}  // namespace

frmFind::frmFind(Environment& environment, const clsMain& catalogue,
                 std::function<JukeboxWindow*()> activeJukebox)
    : m_environment(environment),
      m_catalogue(catalogue),
      m_activeJukebox(std::move(activeJukebox)) {}

void frmFind::Load() {
    m_firstRun = true;
    m_lookingForTheLastNode = false;
}

void frmFind::Unload() {
    m_firstRun = true;
}

void frmFind::Command1_Click(const std::string& text) {
    m_lastText = text;
    LookFor(text);
    JukeboxWindow* const window = m_activeJukebox();
    if (window == nullptr || window->SelectedFolder() == nullptr)
        return;
    if (m_firstRun) {
        m_current = m_start = PlaceOf(window->Model(), *window->SelectedFolder());
        m_lastHit = kBeforeTheFirst;
        m_firstRun = m_lookingForTheLastNode = false;
    }
    Step(*window);
}

void frmFind::FindNext() {
    JukeboxWindow* const window = m_activeJukebox();
    if (!CanFindNext() || window == nullptr || window->SelectedFolder() == nullptr)
        return;
    const std::optional<std::size_t> focused = window->View().MaybeFocusedRow();
    Forget();
    m_current = m_start = 1;
    for (const Folder* folder = window->Model().Next(nullptr); folder != window->SelectedFolder();
         folder = window->Model().Next(folder))
        ++m_current, ++m_start;
    m_lastHit = focused ? static_cast<std::ptrdiff_t>(*focused) : kBeforeTheFirst;
    m_lookingForTheLastNode = false;
    Step(*window);
    m_firstRun = true;
}

// What is known of the songs serves as long as the text stays and the dialog is open.
void frmFind::LookFor(const std::string& text) {
    LowerCaseSearch search(m_environment.text, text);
    if (m_firstRun || search.Wanted() != LastLookedFor())
        Forget();
    m_search.emplace(std::move(search));
}

void frmFind::Forget() {
    m_answers.clear();
    m_asked = 0;
}

void frmFind::Step(JukeboxWindow& window) {
    const Jukebox& jukebox = window.Model();
    Folder* folder = MaybeFolderAt(jukebox, m_current);
    if (folder == nullptr)
        return;
    if (folder == window.SelectedFolder())
        window.View().SelectRows({});
    while (!FindInFolder(window, *folder)) {
        if (m_current == m_start) {
            if (std::exchange(m_lookingForTheLastNode, true)) {
                window.View().SelectFolder(folder);
                m_environment.statusLine.Say({});
                m_environment.dialogs.Tell("Can't find '" + LastLookedFor() + "'");
                m_firstRun = true;
                m_lookingForTheLastNode = false;
                return;
            }
        }
        folder = jukebox.Next(folder);
        ++m_current;
        if (folder == nullptr) {
            folder = jukebox.Next(nullptr);
            m_current = 1;
        }
        m_lastHit = kBeforeTheFirst;
    }
}

// Shows the next song of the folder that matches. Only the folder of a hit is selected, so that the
// list is not filled for each one passed.
bool frmFind::FindInFolder(JukeboxWindow& window, Folder& folder) {
    const std::vector<SongItem>& songs = folder.Songs();
    for (auto row = static_cast<std::size_t>(m_lastHit + 1); row < songs.size(); ++row) {
        if (!Matches(window.Model(), songs[row]))
            continue;
        m_lastHit = static_cast<std::ptrdiff_t>(row);
        if (window.SelectedFolder() != &folder)
            window.View().SelectFolder(&folder);
        window.View().SelectRows({row});
        window.View().MakeRowVisible(row);
        window.View().FocusList();  // where Enter plays what was found
        SayWhichHit(window, folder, row);
        return true;
    }
    return false;
}

void frmFind::SayWhichHit(const JukeboxWindow& window, const Folder& folder, std::size_t row) {
    const Jukebox& jukebox = window.Model();
    std::size_t hits = 0;
    std::size_t here = 0;
    for (const Folder* each = jukebox.Next(nullptr); each != nullptr; each = jukebox.Next(each))
        for (const SongItem& song : each->Songs()) {
            hits += Matches(jukebox, song) ? 1 : 0;
            if (each == &folder && &song == &folder.Songs()[row])
                here = hits;
        }
    m_environment.statusLine.Say("Hit " + GroupedNumber(here) + " of " + GroupedNumber(hits) +
                                 ": \"" + std::string(jukebox.TextOf(folder.Songs()[row])) +
                                 "\" in \"" + folder.Text() + "\".");
}

// A song that the catalogue no longer knows the name of is looked for by the one that is shown.
bool frmFind::Matches(const Jukebox& jukebox, const SongItem& song) {
    const std::int32_t record = song.recordNumber;
    if (record < 1 || record > m_catalogue.UBoundOfMp3Array() || !m_catalogue.IsPresent(record))
        return m_search->IsIn(jukebox.TextOf(song));
    if (m_answers.size() <= static_cast<std::size_t>(record))
        m_answers.resize(static_cast<std::size_t>(m_catalogue.UBoundOfMp3Array()) + 1);
    if (m_answers[static_cast<std::size_t>(record)] == Answer::Unknown) {
        if (++m_asked == kMostAskedSingly)
            AnswerAll();
        else
            AnswerFor(record);
    }
    return m_answers[static_cast<std::size_t>(record)] == Answer::Yes;
}

void frmFind::AnswerFor(std::int32_t record) {
    std::array<char, 10> digits{};
    m_answers[static_cast<std::size_t>(record)] =
        m_search->IsIn(m_catalogue.FileName(record, digits)) ? Answer::Yes : Answer::No;
}

// In the order in which the names lie in memory, which takes a quarter of the time.
void frmFind::AnswerAll() {
    for (std::int32_t record = 1; record < static_cast<std::int32_t>(m_answers.size()); ++record)
        AnswerFor(record);
}

}  // namespace tobbin
