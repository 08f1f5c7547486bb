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
    m_undone.push_back({std::move(name), std::move(changes), nullptr, changesJukebox});
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
    const std::shared_ptr<Pair> pair = m_done.back().maybePair;
    JukeboxHistory* const partner = MaybePartner(m_done.back());
    if (partner != nullptr && partner->CanUndo() && partner->m_done.back().maybePair == pair)
        partner->UndoHere();
    return UndoHere();
}

EditResult JukeboxHistory::Redo() {
    CHECK(CanRedo());
    const std::shared_ptr<Pair> pair = m_undone.back().maybePair;
    JukeboxHistory* const partner = MaybePartner(m_undone.back());
    if (partner != nullptr && partner->CanRedo() && partner->m_undone.back().maybePair == pair)
        partner->RedoHere();
    return RedoHere();
}

void JukeboxHistory::Join(JukeboxHistory& a, JukeboxHistory& b) {
    CHECK(&a != &b && a.CanUndo() && b.CanUndo());
    a.m_done.back().maybePair = b.m_done.back().maybePair = std::make_shared<Pair>(Pair{&a, &b});
}

// Each of the two steps holds the pair: while both do, both histories are there.
JukeboxHistory* JukeboxHistory::MaybePartner(const Step& step) const {
    constexpr long kThisOneAndACopy = 2;
    if (step.maybePair == nullptr || step.maybePair.use_count() <= kThisOneAndACopy)
        return nullptr;
    return step.maybePair->first == this ? step.maybePair->second : step.maybePair->first;
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
