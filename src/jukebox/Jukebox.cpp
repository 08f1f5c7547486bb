#include "jukebox/Jukebox.h"

#include <algorithm>
#include <utility>

#include "util/Check.h"

namespace tobbin {

Jukebox::Jukebox() = default;

template <typename Call>
void Jukebox::Tell(Call call) {
    const std::vector<JukeboxListener*> listeners = m_listeners;
    for (JukeboxListener* const listener : listeners) {
        if (std::ranges::count(m_listeners, listener) > 0)
            call(*listener);
    }
}

template <typename Call>
void Jukebox::TellChange(Call call) {
    Tell(call);
    IsFormDirty(true);
}

Folder& Jukebox::AddChild(Folder* parent, std::string text, int image, int selectedImage) {
    return Insert(parent, ChildCount(parent), MakeFolder(std::move(text), image, selectedImage));
}

std::unique_ptr<Folder> Jukebox::MakeFolder(std::string text, int image, int selectedImage) {
    auto folder = std::make_unique<Folder>();
    folder->m_text = std::move(text);
    folder->m_image = image;
    folder->m_selectedImage = selectedImage;
    return folder;
}

std::unique_ptr<Folder> Jukebox::CopyFolder(const Jukebox& from, const Folder& folder) {
    struct Waiting {
        const Folder* original;
        Folder* copy;
    };
    const auto copyOne = [&](const Folder& original) {
        std::unique_ptr<Folder> copy =
            MakeFolder(original.m_text, original.m_image, original.m_selectedImage);
        copy->m_songs.reserve(original.m_songs.size());
        for (const SongItem& song : original.m_songs)
            copy->m_songs.push_back(CopyItem(from, song));
        return copy;
    };
    std::unique_ptr<Folder> top = copyOne(folder);
    std::vector<Waiting> waiting{{&folder, top.get()}};
    while (!waiting.empty()) {
        const Waiting next = waiting.back();
        waiting.pop_back();
        for (const auto& child : next.original->m_children) {
            Folder& copy = *next.copy->m_children.emplace_back(copyOne(*child));
            copy.m_parent = next.copy;
            copy.m_index = next.copy->m_children.size() - 1;
            waiting.push_back({child.get(), &copy});
        }
    }
    return top;
}

std::size_t Jukebox::ChildCount(const Folder* parent) const {
    return parent != nullptr ? parent->ChildCount() : m_root.ChildCount();
}

template <typename Call>
void Jukebox::ForEachIn(Folder& top, Call call) {
    Folder* folder = &top;
    while (true) {
        call(*folder);
        if (folder->ChildCount() > 0) {
            folder = &folder->Child(0);
            continue;
        }
        while (folder != &top && folder->m_index + 1 == folder->m_parent->ChildCount())
            folder = folder->m_parent;
        if (folder == &top)
            return;
        folder = &folder->m_parent->Child(folder->m_index + 1);
    }
}

Folder& Jukebox::Insert(Folder* parent, std::size_t index, std::unique_ptr<Folder> inserted) {
    Folder& above = OrRoot(parent);
    Folder& folder = *inserted;
    CHECK(index <= above.m_children.size() && folder.m_parent == nullptr);
    above.m_children.insert(above.m_children.begin() + static_cast<std::ptrdiff_t>(index),
                            std::move(inserted));
    for (std::size_t i = index; i < above.m_children.size(); ++i)
        above.m_children[i]->m_index = i;
    folder.m_parent = &above;
    ForEachIn(folder, [this](Folder& one) {
        ++m_folderCount;
        if (one.m_serial == 0)
            one.m_serial = ++m_lastSerial;
    });
    TellChange([&](JukeboxListener& listener) { listener.OnFolderAdded(folder); });
    return folder;
}

std::unique_ptr<Folder> Jukebox::Detach(Folder& folder) {
    Tell([&](JukeboxListener& listener) { listener.OnFolderRemoving(folder); });
    ForEachIn(folder, [this](Folder&) { --m_folderCount; });
    auto& siblings = folder.m_parent->m_children;
    const std::size_t index = folder.m_index;
    std::unique_ptr<Folder> detached = std::move(siblings[index]);
    siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(index));
    for (std::size_t i = index; i < siblings.size(); ++i)
        siblings[i]->m_index = i;
    detached->m_parent = nullptr;
    IsFormDirty(true);
    return detached;
}

void Jukebox::SetText(Folder& folder, std::string text) {
    folder.m_text = std::move(text);
    TellChange([&](JukeboxListener& listener) { listener.OnFolderTextChanged(folder); });
}

void Jukebox::ReorderChildren(Folder* parent, const std::vector<std::size_t>& order) {
    auto& children = OrRoot(parent).m_children;
    CHECK(order.size() == children.size());
    std::vector<std::unique_ptr<Folder>> reordered;
    reordered.reserve(order.size());
    for (const std::size_t from : order) {
        CHECK(from < children.size() && children[from] != nullptr);
        children[from]->m_index = reordered.size();
        reordered.push_back(std::move(children[from]));
    }
    children = std::move(reordered);
    TellChange([&](JukeboxListener& listener) { listener.OnChildrenReordered(parent); });
}

SongItem Jukebox::MakeItem(std::string_view text, std::int32_t recordNumber, int image) {
    return {m_names.Add(text), recordNumber, static_cast<std::int8_t>(image),
            static_cast<std::int8_t>(image)};
}

SongItem Jukebox::MakeMissingItem(std::string_view text, const MissingSong& song, int image) {
    m_missing.push_back({song.recordNumber, m_names.Add(song.folder), m_names.Add(song.fileName)});
    return MakeItem(text, -static_cast<std::int32_t>(m_missing.size()), image);
}

MissingSong Jukebox::MissingSongOf(const SongItem& item) const {
    const auto index = static_cast<std::size_t>(-(item.recordNumber + 1));
    if (item.recordNumber >= 0 || index >= m_missing.size())
        return {};
    const Missing& song = m_missing[index];
    return {song.recordNumber, m_names.Text(song.folderId), m_names.Text(song.fileNameId)};
}

SongItem Jukebox::CopyItem(const Jukebox& from, const SongItem& item) {
    SongItem copy = item;
    if (item.IsMissing())
        copy = MakeMissingItem(from.TextOf(item), from.MissingSongOf(item), item.image);
    else
        copy.nameId = m_names.Add(from.TextOf(item));
    copy.selectedImage = item.selectedImage;
    return copy;
}

void Jukebox::AppendSongs(Folder& folder, const std::vector<SongItem>& songs) {
    if (songs.empty())
        return;
    folder.m_songs.insert(folder.m_songs.end(), songs.begin(), songs.end());
    TellChange([&](JukeboxListener& listener) { listener.OnSongsChanged(folder); });
}

void Jukebox::SetSongs(Folder& folder, std::vector<SongItem> songs) {
    folder.m_songs = std::move(songs);
    TellChange([&](JukeboxListener& listener) { listener.OnSongsChanged(folder); });
}

std::vector<SongItem> Jukebox::TakeSongs(Folder& folder, const std::vector<std::size_t>& rows) {
    auto& songs = folder.m_songs;
    std::vector<SongItem> taken;
    taken.reserve(rows.size());
    std::size_t to = rows.empty() ? songs.size() : rows.front();
    for (std::size_t from = to; from < songs.size(); ++from) {
        if (taken.size() < rows.size() && rows[taken.size()] == from)
            taken.push_back(songs[from]);
        else
            songs[to++] = songs[from];
    }
    CHECK(taken.size() == rows.size());
    songs.resize(to);
    TellChange([&](JukeboxListener& listener) { listener.OnSongsChanged(folder); });
    return taken;
}

void Jukebox::PutSongs(Folder& folder, const std::vector<std::size_t>& rows,
                       const std::vector<SongItem>& songs) {
    CHECK(rows.size() == songs.size());
    const std::vector<SongItem> old = std::move(folder.m_songs);
    std::vector<SongItem>& all = folder.m_songs = {};
    all.reserve(old.size() + songs.size());
    std::size_t next = 0;
    for (std::size_t k = 0; k < rows.size(); ++k) {
        while (all.size() < rows[k]) {
            CHECK(next < old.size());
            all.push_back(old[next++]);
        }
        all.push_back(songs[k]);
    }
    all.insert(all.end(), old.begin() + static_cast<std::ptrdiff_t>(next), old.end());
    TellChange([&](JukeboxListener& listener) { listener.OnSongsChanged(folder); });
}

void Jukebox::ReorderSongs(Folder& folder, const std::vector<std::size_t>& order) {
    CHECK(order.size() == folder.m_songs.size());
    std::vector<SongItem> reordered;
    reordered.reserve(order.size());
    for (const std::size_t from : order)
        reordered.push_back(folder.m_songs[from]);
    folder.m_songs = std::move(reordered);
    TellChange([&](JukeboxListener& listener) { listener.OnSongsChanged(folder); });
}

bool Jukebox::IsShownAsWorst(std::int32_t recordNumber) const {
    const auto at = static_cast<std::size_t>(recordNumber);
    return recordNumber >= 0 && at < m_shownAsWorst.size() && m_shownAsWorst[at];
}

void Jukebox::ShowAsWorst(std::int32_t recordNumber, bool worst) {
    if (IsShownAsWorst(recordNumber) == worst || recordNumber < 0)
        return;
    const auto at = static_cast<std::size_t>(recordNumber);
    if (at >= m_shownAsWorst.size())
        m_shownAsWorst.resize(at + 1);
    m_shownAsWorst[at] = worst;
}

void Jukebox::TellRanksChanged() {
    Tell([](JukeboxListener& listener) { listener.OnRanksChanged(); });
}

void Jukebox::TellFillingBegins() {
    Tell([](JukeboxListener& listener) { listener.OnFillingBegins(); });
}

void Jukebox::TellFillingEnds() {
    Tell([](JukeboxListener& listener) { listener.OnFillingEnds(); });
}

void Jukebox::TellRecordsMoved() {
    ++m_changes;
    m_shownAsWorst.clear();
    Tell([](JukeboxListener& listener) { listener.OnRecordsMoved(); });
}

Folder* Jukebox::Next(const Folder* folder) const {
    if (folder == nullptr)
        folder = &m_root;
    if (folder->ChildCount() > 0)
        return &folder->Child(0);
    for (; folder->m_parent != nullptr; folder = folder->m_parent) {
        if (folder->m_index + 1 < folder->m_parent->ChildCount())
            return &folder->m_parent->Child(folder->m_index + 1);
    }
    return nullptr;
}

Folder* Jukebox::MaybeFind(std::string_view text) const {
    if (Folder* const top = m_root.MaybeChild(text))
        return top;
    Folder* folder = Next(nullptr);
    while (folder != nullptr && folder->Text() != text)
        folder = Next(folder);
    return folder;
}

void Jukebox::DaCaption(std::string caption) {
    m_caption = std::move(caption);
    Tell([](JukeboxListener& listener) { listener.OnCaptionChanged(); });
}

void Jukebox::IsFormDirty(bool dirty) {
    m_changes += dirty ? 1 : 0;
    SetDirty(dirty, dirty && m_filled);
}

void Jukebox::HasUnsavedChanges(bool has) {
    SetDirty(has, m_filled);
}

void Jukebox::MarkAsFilled() {
    SetDirty(m_changed, true);
}

void Jukebox::SetDirty(bool changed, bool filled) {
    const bool wasChanged = std::exchange(m_changed, changed);
    const bool wasFilled = std::exchange(m_filled, filled);
    if (wasChanged != changed || wasFilled != filled)
        Tell([](JukeboxListener& listener) { listener.OnDirtyChanged(); });
}

void Jukebox::AddColumn(std::string heading) {
    m_columns.push_back(std::move(heading));
    Tell([](JukeboxListener& listener) { listener.OnColumnsChanged(); });
}

void Jukebox::SetColumn(std::size_t index, std::string heading) {
    CHECK(index < m_columns.size());
    m_columns[index] = std::move(heading);
    Tell([](JukeboxListener& listener) { listener.OnColumnsChanged(); });
}

void Jukebox::AddListener(JukeboxListener& listener) {
    m_listeners.push_back(&listener);
}

void Jukebox::RemoveListener(JukeboxListener& listener) {
    std::erase(m_listeners, &listener);
}

}  // namespace tobbin
