#include "jukebox/JukeboxHistory.h"

#include <algorithm>
#include <utility>

#include "util/Check.h"

namespace tobbin {

JukeboxHistory::JukeboxHistory(Jukebox& jukebox) : m_jukebox(jukebox) {
    if (jukebox.HasUnsavedChanges())
        m_savedAt = kNowhere;
    m_jukebox.AddListener(*this);
}

JukeboxHistory::~JukeboxHistory() {
    m_jukebox.RemoveListener(*this);
}

EditResult JukeboxHistory::Do(std::string name, std::unique_ptr<JukeboxChange> change) {
    Changes changes;
    changes.push_back(std::move(change));
    return Do(std::move(name), std::move(changes));
}

EditResult JukeboxHistory::Do(std::string name, Changes changes) {
    m_undone.clear();
    if (m_savedAt > m_place)
        m_savedAt = kNowhere;
    const bool changesJukebox =
        std::ranges::any_of(changes, [](const auto& change) { return change->ChangesJukebox(); });
    m_undone.push_back({std::move(name), std::move(changes), changesJukebox});
    return RedoHere();
}

const std::string& JukeboxHistory::UndoName() const {
    CHECK(CanUndo());
    return m_done.back().name;
}

const std::string& JukeboxHistory::RedoName() const {
    CHECK(CanRedo());
    return m_undone.back().name;
}

EditResult JukeboxHistory::Undo() {
    CHECK(CanUndo());
    if (const auto partner = m_done.back().partner.lock();
        partner && partner->history.CanUndo() &&
        partner->history.m_done.back().maybeJoined == partner)
        partner->history.UndoHere();
    return UndoHere();
}

EditResult JukeboxHistory::Redo() {
    CHECK(CanRedo());
    if (const auto partner = m_undone.back().partner.lock();
        partner && partner->history.CanRedo() &&
        partner->history.m_undone.back().maybeJoined == partner)
        partner->history.RedoHere();
    return RedoHere();
}

void JukeboxHistory::Join(JukeboxHistory& a, JukeboxHistory& b) {
    CHECK(&a != &b && a.CanUndo() && b.CanUndo());
    Step& ofA = a.m_done.back();
    Step& ofB = b.m_done.back();
    ofA.maybeJoined = std::make_shared<JoinedStep>(JoinedStep{a});
    ofB.maybeJoined = std::make_shared<JoinedStep>(JoinedStep{b});
    ofA.partner = ofB.maybeJoined;
    ofB.partner = ofA.maybeJoined;
}

EditResult JukeboxHistory::UndoHere() {
    Step step = std::move(m_done.back());
    m_done.pop_back();
    m_place -= step.changesJukebox ? 1 : 0;
    EditResult place = FlipStep(step, true);
    m_undone.push_back(std::move(step));
    return place;
}

EditResult JukeboxHistory::RedoHere() {
    Step step = std::move(m_undone.back());
    m_undone.pop_back();
    m_place += step.changesJukebox ? 1 : 0;
    EditResult place = FlipStep(step, false);
    m_done.push_back(std::move(step));
    return place;
}

EditResult JukeboxHistory::FlipStep(Step& step, bool backwards) {
    EditResult last;
    m_working = true;
    if (backwards)
        std::ranges::reverse(step.changes);
    for (const auto& change : step.changes) {
        EditResult place = change->Flip(m_jukebox);
        if (place.maybeFolder != nullptr)
            last = std::move(place);
    }
    if (backwards)
        std::ranges::reverse(step.changes);
    if (step.changesJukebox)
        m_jukebox.HasUnsavedChanges(m_place != m_savedAt);
    m_working = false;
    return last;
}

void JukeboxHistory::Clear() {
    m_done.clear();
    m_undone.clear();
    m_place = 0;
    m_savedAt = m_jukebox.HasUnsavedChanges() ? kNowhere : 0;
}

void JukeboxHistory::OnFolderAdded(Folder& /*folder*/) {
    OnChange();
}
void JukeboxHistory::OnFolderRemoving(Folder& /*folder*/) {
    OnChange();
}
void JukeboxHistory::OnFolderTextChanged(Folder& /*folder*/) {
    OnChange();
}
void JukeboxHistory::OnChildrenReordered(Folder* /*parent*/) {
    OnChange();
}
void JukeboxHistory::OnSongsChanged(Folder& /*folder*/) {
    OnChange();
}

// What the steps hold has the old numbers.
void JukeboxHistory::OnRecordsMoved() {
    Clear();
}

// By someone else: what the steps hold fits the jukebox no longer.
void JukeboxHistory::OnChange() {
    if (m_working)
        return;
    Clear();
    m_savedAt = kNowhere;
}

void JukeboxHistory::OnDirtyChanged() {
    if (!m_working && m_jukebox.HasUnsavedChanges() != (m_place != m_savedAt))
        m_savedAt = m_jukebox.HasUnsavedChanges() ? kNowhere : m_place;
}

}  // namespace tobbin
