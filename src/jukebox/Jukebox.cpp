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
    Folder& above = OrRoot(parent);
    Folder& folder = *above.m_children.emplace_back(std::make_unique<Folder>());
    folder.m_text = std::move(text);
    folder.m_parent = &above;
    folder.m_index = above.m_children.size() - 1;
    folder.m_image = image;
    folder.m_selectedImage = selectedImage;
    ++m_folderCount;
    TellChange([&](JukeboxListener& listener) { listener.OnFolderAdded(folder); });
    return folder;
}

void Jukebox::Remove(Folder& folder) {
    Tell([&](JukeboxListener& listener) { listener.OnFolderRemoving(folder); });
    const Folder* const last = [&] {
        const Folder* deepest = &folder;
        while (deepest->ChildCount() > 0)
            deepest = &deepest->Child(deepest->ChildCount() - 1);
        return deepest;
    }();
    --m_folderCount;
    for (const Folder* below = &folder; below != last; below = Next(below))
        --m_folderCount;

    auto& siblings = folder.m_parent->m_children;
    const std::size_t index = folder.m_index;
    siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(index));
    for (std::size_t i = index; i < siblings.size(); ++i)
        siblings[i]->m_index = i;
    IsFormDirty(true);
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
    if (std::exchange(m_dirty, dirty) != dirty)
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
