#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "jukebox/Jukebox.h"
#include "util/SystemText.h"
#include "util/Text.h"
#include "util/TextHash.h"

namespace tobbin {

// Finds the child of a group folder into which a value is filed, and adds one where none fits. The
// first child in order counts; children are added at the end, so an earlier answer stays right.
//
// A walk over the children for each song would be quadratic. Instead the children are known by
// their texts, each text by its first child, and a value asks for every beginning of its own. The
// children must not be changed by others meanwhile.
class GroupFiling {
 public:
    enum class Match {
        BeginsWith,  // the value begins with the child's text, the case of letters aside
        Equal,       // case counts
    };
    // Makes the child that a group lacks. It need not be in the group yet.
    using AddChild = std::function<Folder*(Folder& group, const std::string& text)>;
    GroupFiling(Folder& group, Match match, const SystemText& text, AddChild addChild);

    Folder& FolderFor(const std::string& value);

 private:
    std::string KeyOf(const std::string& text) const;
    void Know(Folder& child);
    const std::size_t* MaybeIndexOf(std::string_view key) const;

    Folder& m_group;
    Match m_match;
    const SystemText& m_text;
    AddChild m_addChild;
    std::vector<Folder*> m_children;
    TextMap<std::size_t> m_firstChild;
};

}  // namespace tobbin
