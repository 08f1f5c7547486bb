#include "jukebox/Folder.h"

#include <iterator>

namespace tobbin {

Folder::~Folder() {
    std::vector<std::unique_ptr<Folder>> below = std::move(m_children);
    while (!below.empty()) {
        const std::unique_ptr<Folder> folder = std::move(below.back());
        below.pop_back();
        std::move(folder->m_children.begin(), folder->m_children.end(), std::back_inserter(below));
        folder->m_children.clear();
    }
}

Folder* Folder::Parent() const {
    return m_parent != nullptr && m_parent->m_parent != nullptr ? m_parent : nullptr;
}

int Folder::Level() const {
    int level = 0;
    for (const Folder* folder = Parent(); folder != nullptr; folder = folder->Parent())
        ++level;
    return level;
}

bool Folder::IsInside(const Folder& folder) const {
    for (const Folder* above = this; above != nullptr; above = above->m_parent)
        if (above == &folder)
            return true;
    return false;
}

Folder* Folder::MaybeChild(std::string_view text) const {
    for (const auto& child : m_children)
        if (child->m_text == text)
            return child.get();
    return nullptr;
}

}  // namespace tobbin
