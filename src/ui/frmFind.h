#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "platform/Environment.h"
#include "ui/JukeboxWindow.h"
#include "util/LowerCaseSearch.h"

namespace tobbin {

// The search of the find dialog: walks from song to song whose name contains a text, from the
// selected folder on through the whole tree of the active jukebox and round once.
class frmFind {
 public:
    // `activeJukebox` answers null while no jukebox window is the active one.
    frmFind(Environment& environment, const clsMain& catalogue,
            std::function<JukeboxWindow*()> activeJukebox);

    // The dialog opens; its text is changed; it closes.
    void Load();
    void Text1_Change() { m_firstRun = true; }
    void Unload();

    // The find button, with the text of the text box: shows the next song and says in the status
    // line which of all hits it is, counted from the top of the tree, or tells that there is none.
    void Command1_Click(const std::string& text);

    // Looks on for what was last looked for, also while the dialog is closed: from the song behind
    // the focused one of the selected folder. Does nothing before anything was looked for.
    void FindNext();
    bool CanFindNext() const { return m_search.has_value(); }

    bool LookingForTheLastNode() const { return m_lookingForTheLastNode; }
    bool FirstRun() const { return m_firstRun; }
    // As it was typed last; the dialog opens with it.
    const std::string& LastText() const { return m_lastText; }
    std::string LastLookedFor() const { return m_search ? m_search->Wanted() : std::string(); }

 private:
    enum class Answer : std::uint8_t { Unknown, No, Yes };

    void Step(JukeboxWindow& window);
    void Forget();
    void LookFor(const std::string& text);
    bool FindInFolder(JukeboxWindow& window, Folder& folder);
    void SayWhichHit(const JukeboxWindow& window, const Folder& folder, std::size_t row);
    bool Matches(const Jukebox& jukebox, const SongItem& song);
    void AnswerFor(std::int32_t record);
    void AnswerAll();

    static constexpr std::ptrdiff_t kBeforeTheFirst = -1;

    Environment& m_environment;
    const clsMain& m_catalogue;
    std::function<JukeboxWindow*()> m_activeJukebox;

    bool m_lookingForTheLastNode = false;
    bool m_firstRun = true;
    std::optional<LowerCaseSearch> m_search;  // for what was last looked for

    std::string m_lastText;
    std::size_t m_current = 0;  // places in the order of the tree, from 1
    std::size_t m_start = 0;
    std::ptrdiff_t m_lastHit = kBeforeTheFirst;

    int m_asked = 0;
    std::vector<Answer> m_answers;  // by record number: a song stands in many folders
};

}  // namespace tobbin
