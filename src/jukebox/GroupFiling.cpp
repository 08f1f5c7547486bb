#include "jukebox/GroupFiling.h"

#include <utility>

namespace tobbin {

GroupFiling::GroupFiling(Folder& group, Match match, const SystemText& text, AddChild addChild)
    : m_group(group), m_match(match), m_text(text), m_addChild(std::move(addChild)) {
    for (std::size_t i = 0; i < group.ChildCount(); ++i)
        Know(group.Child(i));
}

std::string GroupFiling::KeyOf(const std::string& text) const {
    return m_match == Match::BeginsWith ? m_text.ToLower(text) : text;
}

void GroupFiling::Know(Folder& child) {
    m_firstChild.try_emplace(KeyOf(child.Text()), m_children.size());
    m_children.push_back(&child);
}

const std::size_t* GroupFiling::MaybeIndexOf(std::string_view key) const {
    const auto found = m_firstChild.find(key);
    return found == m_firstChild.end() ? nullptr : &found->second;
}

Folder& GroupFiling::FolderFor(const std::string& value) {
    const std::string key = KeyOf(value);
    const std::size_t* first = MaybeIndexOf(key);
    if (m_match == Match::BeginsWith) {
        for (std::size_t length = 0; length < key.size(); ++length) {
            const std::size_t* const index = MaybeIndexOf(std::string_view(key).substr(0, length));
            if (index != nullptr && (first == nullptr || *index < *first))
                first = index;
        }
    }
    if (first != nullptr)
        return *m_children[*first];
    Folder& child = *m_addChild(m_group, value);
    Know(child);
    return child;
}

}  // namespace tobbin
