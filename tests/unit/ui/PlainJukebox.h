#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tobbin {

// A jukebox as plain as can be.
struct PlainFolder {
    int id = 0;  // the same for the same folder, also after it was cut and came back
    std::string text;
    std::vector<int> songs;  // record numbers
    std::vector<PlainFolder> children;
};

struct PlainJukebox {
    PlainFolder root;
    int version = 0;        // of what a jukebox file keeps
    std::size_t bytes = 0;  // a hash of the file's

    // In the order of the tree; the root is the first.
    std::vector<PlainFolder*> Folders() {
        std::vector<PlainFolder*> found{&root};
        std::function<void(PlainFolder&)> walk = [&](PlainFolder& folder) {
            for (PlainFolder& child : folder.children) {
                found.push_back(&child);
                walk(child);
            }
        };
        walk(root);
        return found;
    }
    PlainFolder& ParentOf(const PlainFolder& wanted) {
        for (PlainFolder* const folder : Folders())
            for (const PlainFolder& child : folder->children)
                if (&child == &wanted)
                    return *folder;
        return root;
    }
    bool IsTop(const PlainFolder& folder) { return &ParentOf(folder) == &root; }
    bool IsSpecial(const PlainFolder& folder) {
        static const std::set<std::string> tops = {"All Songs", "New",    "Decades",
                                                   "Genre",     "Artist", "Year"};
        static const std::set<std::string> decades = {"00's", "20's", "30's", "40's", "50's",
                                                      "60's", "70's", "80's", "90's"};
        if (IsTop(folder))
            return tops.contains(folder.text);
        PlainFolder& parent = ParentOf(folder);
        return IsTop(parent) && parent.text == "Decades" && decades.contains(folder.text);
    }
    bool MakesSecond(const PlainFolder& parent, const std::string& text) {
        return std::ranges::any_of(parent.children, [&](const PlainFolder& child) {
            return child.text == text && IsSpecial(child);
        });
    }
    bool IsInside(const PlainFolder& folder, int id) {
        const PlainFolder* at = &folder;
        for (; at != &root && at->id != id; at = &ParentOf(*at)) {
        }
        return at->id == id;
    }
    PlainFolder& WithId(int id) {
        const auto folders = Folders();
        return **std::ranges::find(folders, id, &PlainFolder::id);
    }
    PlainFolder Take(PlainFolder& folder) {
        std::vector<PlainFolder>& siblings = ParentOf(folder).children;
        PlainFolder taken = folder;
        siblings.erase(siblings.begin() + (&folder - siblings.data()));
        return taken;
    }
    void Put(PlainFolder& to, const std::vector<int>& songs, std::size_t before = 1000) {
        const bool once = to.text == "All Songs" && IsTop(to);
        before = std::min(before, to.songs.size());
        for (const int song : songs)
            if (!once || std::ranges::count(to.songs, song) == 0)
                to.songs.insert(to.songs.begin() + static_cast<std::ptrdiff_t>(before++), song);
    }
};

inline std::vector<int> TakeRows(PlainFolder& folder, const std::vector<std::size_t>& rows) {
    std::vector<int> taken, left;
    for (std::size_t row = 0; row < folder.songs.size(); ++row)
        (std::ranges::count(rows, row) > 0 ? taken : left).push_back(folder.songs[row]);
    folder.songs = left;
    return taken;
}

}  // namespace tobbin
