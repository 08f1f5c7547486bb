#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "jukebox/JukeboxChange.h"

namespace tobbin {

// What was done to one jukebox, so that each step can be undone and redone. All editing goes
// through Do; a grouping run is a step of its own. A change of the folders or songs by anyone else
// ends the history. Knows at which step the jukebox was last saved; back there it is not
// dirty.
//
// A step keeps what it took out of the jukebox or moved in it, never the jukebox.
class JukeboxHistory : private JukeboxListener {
 public:
    using Changes = std::vector<std::unique_ptr<JukeboxChange>>;

    explicit JukeboxHistory(Jukebox& jukebox);
    ~JukeboxHistory() override;
    JukeboxHistory(const JukeboxHistory&) = delete;
    JukeboxHistory& operator=(const JukeboxHistory&) = delete;

    // Does the changes in order, as one step of that name ("Cut Folder"). What was undone before
    // can no longer be redone. `undone` is the sentence that tells of its undoing, if it has one of
    // its own.
    EditResult Do(std::string name, Changes changes, std::string undone = {});
    EditResult Do(std::string name, std::unique_ptr<JukeboxChange> change, std::string undone = {});

    bool CanUndo() const { return !m_done.empty(); }
    bool CanRedo() const { return !m_undone.empty(); }
    // The name of the step that would be next; CHECK that there is one.
    const std::string& UndoName() const;
    const std::string& RedoName() const;
    // What to tell when the next step is undone: "Undone: Move Songs." or its own sentence.
    std::string UndoneText() const;
    // Why the next step can't be undone or redone, for the person; empty when it can.
    std::string WhyNotUndo() const;
    std::string WhyNotRedo() const;
    // CHECK that there is a step and nothing is in its way.
    EditResult Undo();
    EditResult Redo();
    void Clear();

    // Makes the last steps of two jukeboxes one, which moved something from the one to the other.
    // It is undone and redone in both or in neither, so as long as it is the next one in both.
    // Of two steps whose other jukebox was closed, the one that took something out can be undone.
    static void Join(JukeboxHistory& from, JukeboxHistory& to);

 private:
    struct Pair {  // null for a jukebox that was closed
        JukeboxHistory* from;
        JukeboxHistory* to;
    };
    struct Step {
        std::string name;
        std::string undone;
        Changes changes;
        std::shared_ptr<Pair> maybePair;  // shared with the other jukebox's step
        bool changesJukebox = false;
    };
    using Steps = std::vector<Step>;

    JukeboxHistory* MaybePartner(const Step& step) const;
    static bool IsNext(const Steps& steps, const Step& step);
    std::string WordsOn(const Step& step, const char* failed) const;
    void ForgetUndone(std::size_t count);
    void ForgetUndoneFrom(const Pair& pair);
    EditResult UndoHere();
    EditResult RedoHere();
    EditResult FlipStep(Step& step, bool backwards);

    void OnFolderAdded(Folder& folder) override;
    void OnFolderRemoving(Folder& folder) override;
    void OnFolderTextChanged(Folder& folder) override;
    void OnChildrenReordered(Folder* parent) override;
    void OnSongsChanged(Folder& folder) override;
    void OnFillingBegins() override;
    void OnFillingEnds() override;
    void OnRecordsMoved() override;
    void OnDirtyChanged() override;
    void OnChange();

    static constexpr int kNowhere = -1;

    Jukebox& m_jukebox;
    Steps m_done;
    Steps m_undone;  // the next one last
    bool m_working = false;
    // While a grouping run is at work: the folders that it added, and how many songs each of the
    // others had before.
    bool m_isFilling = false;
    std::vector<Folder*> m_added;
    std::unordered_map<const Folder*, std::size_t> m_songsBefore;
    int m_place = 0;    // how many of the steps done change the jukebox
    int m_savedAt = 0;  // the place at which the jukebox was saved, or kNowhere
};

}  // namespace tobbin
