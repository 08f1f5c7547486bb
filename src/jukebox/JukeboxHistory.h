#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "jukebox/JukeboxChange.h"

namespace tobbin {

// What was done to one jukebox, so that each step can be undone and done again. All editing goes
// through Do: a change of the folders or songs by anyone else, such as the filling of the automatic
// groups, ends the history. Knows at which step the jukebox was last saved; back there it is not
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
    // can no longer be done again.
    EditResult Do(std::string name, Changes changes);
    EditResult Do(std::string name, std::unique_ptr<JukeboxChange> change);

    bool CanUndo() const { return !m_done.empty(); }
    bool CanRedo() const { return !m_undone.empty(); }
    // The name of the step that would be next; CHECK that there is one.
    const std::string& UndoName() const;
    const std::string& RedoName() const;
    EditResult Undo();
    EditResult Redo();
    void Clear();

    // Makes the last steps of two jukeboxes one, as for what was dragged from the one to the other:
    // undone or done again in either, it is in both, as long as it is the next one in both.
    static void Join(JukeboxHistory& a, JukeboxHistory& b);

 private:
    // One of two joined steps, for as long as its history has it.
    struct JoinedStep {
        JukeboxHistory& history;
    };
    struct Step {
        std::string name;
        Changes changes;
        bool changesJukebox = false;
        std::shared_ptr<JoinedStep> maybeJoined = {};
        std::weak_ptr<JoinedStep> partner = {};  // in the other jukebox
    };
    using Steps = std::vector<Step>;

    EditResult UndoHere();
    EditResult RedoHere();
    EditResult FlipStep(Step& step, bool backwards);

    void OnFolderAdded(Folder& folder) override;
    void OnFolderRemoving(Folder& folder) override;
    void OnFolderTextChanged(Folder& folder) override;
    void OnChildrenReordered(Folder* parent) override;
    void OnSongsChanged(Folder& folder) override;
    void OnRecordsMoved() override;
    void OnDirtyChanged() override;
    void OnChange();

    static constexpr int kNowhere = -1;

    Jukebox& m_jukebox;
    Steps m_done;
    Steps m_undone;  // the next one last
    bool m_working = false;
    int m_place = 0;    // how many of the steps done change the jukebox
    int m_savedAt = 0;  // the place at which the jukebox was saved, or kNowhere
};

}  // namespace tobbin
