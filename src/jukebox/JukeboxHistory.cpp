#include "jukebox/JukeboxHistory.h"

#include <algorithm>
#include <utility>

#include "jukebox/JukeboxChanges.h"
#include "util/Check.h"

namespace tobbin {

JukeboxHistory::JukeboxHistory(Jukebox& jukebox) : m_jukebox(jukebox) {
    if (jukebox.HasUnsavedChanges())
        m_savedAt = kNowhere;
    m_jukebox.AddListener(*this);
}

JukeboxHistory::~JukeboxHistory() {
    for (const Steps* const steps : {&m_done, &m_undone})
        for (const Step& step : *steps)
            if (step.maybePair != nullptr)
                (step.maybePair->from == this ? step.maybePair->from : step.maybePair->to) =
                    nullptr;
    m_jukebox.RemoveListener(*this);
}

EditResult JukeboxHistory::Do(std::string name, std::unique_ptr<JukeboxChange> change,
                              std::string undone) {
    Changes changes;
    changes.push_back(std::move(change));
    return Do(std::move(name), std::move(changes), std::move(undone));
}

EditResult JukeboxHistory::Do(std::string name, Changes changes, std::string undone) {
    ForgetUndone(m_undone.size());
    const bool changesJukebox =
        std::ranges::any_of(changes, [](const auto& change) { return change->ChangesJukebox(); });
    m_undone.push_back(
        {std::move(name), std::move(undone), std::move(changes), nullptr, changesJukebox});
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

std::string JukeboxHistory::UndoneText() const {
    CHECK(CanUndo());
    const Step& step = m_done.back();
    return step.undone.empty() ? "Undone: " + step.name + "." : step.undone;
}

std::string JukeboxHistory::WhyNotUndo() const {
    if (!CanUndo() || m_done.back().maybePair == nullptr)
        return {};
    const Step& step = m_done.back();
    const JukeboxHistory* const partner = MaybePartner(step);
    const bool isFree = partner == nullptr ? step.maybePair->from == this  // it only brings back
                                           : IsNext(partner->m_done, step);
    return isFree ? std::string() : WordsOn(step, "undone");
}

std::string JukeboxHistory::WhyNotRedo() const {
    if (!CanRedo() || m_undone.back().maybePair == nullptr)
        return {};
    const Step& step = m_undone.back();
    const JukeboxHistory* const partner = MaybePartner(step);
    return partner != nullptr && IsNext(partner->m_undone, step) ? std::string()
                                                                 : WordsOn(step, "redone");
}

std::string JukeboxHistory::WordsOn(const Step& step, const char* failed) const {
    const JukeboxHistory* const partner = MaybePartner(step);
    return "\"" + step.name + "\" can't be " + failed + ": the other jukebox" +
           (partner == nullptr
                ? " was closed."
                : ", \"" + partner->m_jukebox.DaCaption() + "\", has been changed since.");
}

bool JukeboxHistory::IsNext(const Steps& steps, const Step& step) {
    return !steps.empty() && steps.back().maybePair == step.maybePair;
}

EditResult JukeboxHistory::Undo() {
    CHECK(CanUndo() && WhyNotUndo().empty());
    if (JukeboxHistory* const partner = MaybePartner(m_done.back()))
        partner->UndoHere();
    return UndoHere();
}

EditResult JukeboxHistory::Redo() {
    CHECK(CanRedo() && WhyNotRedo().empty());
    if (JukeboxHistory* const partner = MaybePartner(m_undone.back()))
        partner->RedoHere();
    return RedoHere();
}

void JukeboxHistory::Join(JukeboxHistory& from, JukeboxHistory& to) {
    CHECK(&from != &to && from.CanUndo() && to.CanUndo());
    from.m_done.back().maybePair = to.m_done.back().maybePair =
        std::make_shared<Pair>(Pair{&from, &to});
}

JukeboxHistory* JukeboxHistory::MaybePartner(const Step& step) const {
    if (step.maybePair == nullptr)
        return nullptr;
    return step.maybePair->from == this ? step.maybePair->to : step.maybePair->from;
}

// Forgets the last `count` of the steps that could be redone, in the partners, too.
void JukeboxHistory::ForgetUndone(std::size_t count) {
    const auto end = m_undone.begin() + static_cast<std::ptrdiff_t>(count);
    const Steps forgotten(std::make_move_iterator(m_undone.begin()), std::make_move_iterator(end));
    m_undone.erase(m_undone.begin(), end);
    if (m_savedAt > m_place + std::ranges::count_if(m_undone, &Step::changesJukebox))
        m_savedAt = kNowhere;
    for (const Step& step : forgotten)
        if (JukeboxHistory* const partner = MaybePartner(step))
            partner->ForgetUndoneFrom(*step.maybePair);
}

void JukeboxHistory::ForgetUndoneFrom(const Pair& pair) {
    const auto found = std::ranges::find_if(
        m_undone, [&](const Step& step) { return step.maybePair.get() == &pair; });
    if (found != m_undone.end())
        ForgetUndone(static_cast<std::size_t>(found - m_undone.begin()) + 1);
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
    ForgetUndone(m_undone.size());
    m_place = 0;
    m_savedAt = m_jukebox.HasUnsavedChanges() ? kNowhere : 0;
}

void JukeboxHistory::OnFolderAdded(Folder& folder) {
    if (m_isFilling)
        m_added.push_back(&folder);
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

void JukeboxHistory::OnFillingBegins() {
    m_isFilling = m_working = true;
    for (const Folder* folder = m_jukebox.Next(nullptr); folder != nullptr;
         folder = m_jukebox.Next(folder))
        m_songsBefore[folder] = folder->Songs().size();
}

void JukeboxHistory::OnFillingEnds() {
    Changes changes;
    for (Folder* const folder : m_added)
        changes.push_back(TakeFolder(*folder));
    for (Folder* folder = m_jukebox.Next(nullptr); folder != nullptr;
         folder = m_jukebox.Next(folder))
        if (const std::size_t before = m_songsBefore[folder]; folder->Songs().size() > before)
            changes.push_back(AppendedSongs(*folder, before));
    m_added.clear();
    m_songsBefore.clear();
    if (!changes.empty()) {
        ForgetUndone(m_undone.size());
        ++m_place;
        m_done.push_back({"Bring In New Songs", {}, std::move(changes), nullptr, true});
    }
    m_isFilling = m_working = false;
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
