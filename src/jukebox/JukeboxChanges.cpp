#include "jukebox/JukeboxChanges.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tobbin {
namespace {

Folder* SiblingOrParent(const Jukebox& jukebox, Folder* parent, std::size_t index) {
    const std::size_t count = jukebox.ChildCount(parent);
    if (count == 0)
        return parent;
    const std::size_t at = std::min(index, count - 1);
    return parent != nullptr ? &parent->Child(at) : &jukebox.Root(at);
}

// What stands at k after the first change stood at order[k] before it; this leads back.
std::vector<std::size_t> Inverse(const std::vector<std::size_t>& order) {
    std::vector<std::size_t> inverse(order.size());
    for (std::size_t k = 0; k < order.size(); ++k)
        inverse[order[k]] = k;
    return inverse;
}

class FolderInsertion : public JukeboxChange {
 public:
    FolderInsertion(std::unique_ptr<Folder> maybeTaken, Folder& folder, Folder* parent,
                    std::size_t index)
        : m_maybeTaken(std::move(maybeTaken)), m_folder(folder), m_parent(parent), m_index(index) {}

    EditResult Flip(Jukebox& jukebox) override {
        if (m_maybeTaken != nullptr)
            return {&jukebox.Insert(m_parent, m_index, std::move(m_maybeTaken)), {}, {}};
        m_maybeTaken = jukebox.Detach(m_folder);
        return {SiblingOrParent(jukebox, m_parent, m_index), {}, {}};
    }

 private:
    std::unique_ptr<Folder> m_maybeTaken;
    Folder& m_folder;
    Folder* m_parent;
    std::size_t m_index;
};

class FolderMove : public JukeboxChange {
 public:
    FolderMove(Folder& folder, Folder* parent) : m_folder(folder), m_parent(parent) {}

    EditResult Flip(Jukebox& jukebox) override {
        Folder* const from = m_folder.Parent();
        const std::size_t fromIndex = m_folder.Index();
        std::unique_ptr<Folder> folder = jukebox.Detach(m_folder);
        const std::size_t index = std::min(m_index, jukebox.ChildCount(m_parent));
        jukebox.Insert(m_parent, index, std::move(folder));
        m_parent = from;
        m_index = fromIndex;
        return {&m_folder, {}, {}};
    }

 private:
    Folder& m_folder;
    Folder* m_parent;
    std::size_t m_index = static_cast<std::size_t>(-1);  // the last
};

class FolderText : public JukeboxChange {
 public:
    FolderText(Folder& folder, std::string text) : m_folder(folder), m_text(std::move(text)) {}
    EditResult Flip(Jukebox& jukebox) override {
        std::string old = m_folder.Text();
        jukebox.SetText(m_folder, std::exchange(m_text, std::move(old)));
        return {&m_folder, {}, {}};
    }

 private:
    Folder& m_folder;
    std::string m_text;
};

class ChildOrder : public JukeboxChange {
 public:
    ChildOrder(Folder* parent, std::vector<std::size_t> order)
        : m_parent(parent), m_order(std::move(order)) {}
    EditResult Flip(Jukebox& jukebox) override {
        jukebox.ReorderChildren(m_parent, m_order);
        m_order = Inverse(m_order);
        return {m_parent, {}, {}};
    }

 private:
    Folder* m_parent;
    std::vector<std::size_t> m_order;
};

class SongsInOrOut : public JukeboxChange {
 public:
    SongsInOrOut(Folder& folder, std::vector<std::size_t> rows, std::vector<SongItem> taken)
        : m_folder(folder), m_rows(std::move(rows)), m_taken(std::move(taken)) {}
    EditResult Flip(Jukebox& jukebox) override {
        if (m_taken.empty()) {
            m_taken = jukebox.TakeSongs(m_folder, m_rows);
            return {&m_folder, {}, {}};
        }
        jukebox.PutSongs(m_folder, m_rows, std::exchange(m_taken, {}));
        return {&m_folder, m_rows, {}};
    }

 private:
    Folder& m_folder;
    std::vector<std::size_t> m_rows;
    std::vector<SongItem> m_taken;
};

// A range instead of rows: a grouping run may append a million songs.
class SongsAtEnd : public JukeboxChange {
 public:
    SongsAtEnd(Folder& folder, std::size_t firstRow) : m_folder(folder), m_firstRow(firstRow) {}
    EditResult Flip(Jukebox& jukebox) override {
        if (m_taken.empty()) {
            std::vector<std::size_t> rows(m_folder.Songs().size() - m_firstRow);
            std::iota(rows.begin(), rows.end(), m_firstRow);
            m_taken = jukebox.TakeSongs(m_folder, rows);
        } else {
            jukebox.AppendSongs(m_folder, std::exchange(m_taken, {}));
        }
        return {};
    }

 private:
    Folder& m_folder;
    std::size_t m_firstRow;
    std::vector<SongItem> m_taken;
};

class SongOrder : public JukeboxChange {
 public:
    SongOrder(Folder& folder, std::vector<std::size_t> order)
        : m_folder(folder), m_order(std::move(order)) {}
    EditResult Flip(Jukebox& jukebox) override {
        jukebox.ReorderSongs(m_folder, m_order);
        std::vector<std::size_t> back = Inverse(m_order);
        return {&m_folder, {}, std::exchange(m_order, std::move(back))};
    }

 private:
    Folder& m_folder;
    std::vector<std::size_t> m_order;
};

class OtherSongs : public JukeboxChange {
 public:
    OtherSongs(Folder& folder, std::vector<SongItem> songs)
        : m_folder(folder), m_songs(std::move(songs)) {}
    EditResult Flip(Jukebox& jukebox) override {
        std::vector<SongItem> before = m_folder.Songs();
        jukebox.SetSongs(m_folder, std::exchange(m_songs, std::move(before)));
        return {};
    }

 private:
    Folder& m_folder;
    std::vector<SongItem> m_songs;
};

class ManyChanges : public JukeboxChange {
 public:
    explicit ManyChanges(std::vector<std::unique_ptr<JukeboxChange>> changes)
        : m_changes(std::move(changes)) {}
    EditResult Flip(Jukebox& jukebox) override {
        for (const auto& change : m_changes)
            change->Flip(jukebox);
        std::ranges::reverse(m_changes);
        return {};
    }

 private:
    std::vector<std::unique_ptr<JukeboxChange>> m_changes;  // in the order of the next flip
};

class Value : public JukeboxChange {
 public:
    Value(int& variable, int value) : m_variable(variable), m_value(value) {}
    EditResult Flip(Jukebox& /*jukebox*/) override {
        std::swap(m_variable, m_value);
        return {};
    }
    bool ChangesJukebox() const override { return false; }

 private:
    int& m_variable;
    int m_value;
};

}  // namespace

std::unique_ptr<JukeboxChange> PutFolder(std::unique_ptr<Folder> folder, Folder* parent,
                                         std::size_t index) {
    Folder& inside = *folder;
    return std::make_unique<FolderInsertion>(std::move(folder), inside, parent, index);
}

std::unique_ptr<JukeboxChange> TakeFolder(Folder& folder) {
    return std::make_unique<FolderInsertion>(nullptr, folder, folder.Parent(), folder.Index());
}

std::unique_ptr<JukeboxChange> MoveFolder(Folder& folder, Folder* newParent) {
    return std::make_unique<FolderMove>(folder, newParent);
}

std::unique_ptr<JukeboxChange> RenameFolder(Folder& folder, std::string text) {
    return std::make_unique<FolderText>(folder, std::move(text));
}

std::unique_ptr<JukeboxChange> OrderChildren(Folder* parent, std::vector<std::size_t> order) {
    return std::make_unique<ChildOrder>(parent, std::move(order));
}

std::unique_ptr<JukeboxChange> TakeSongs(Folder& folder, std::vector<std::size_t> rows) {
    return std::make_unique<SongsInOrOut>(folder, std::move(rows), std::vector<SongItem>());
}

std::unique_ptr<JukeboxChange> AppendSongs(Folder& folder, std::vector<SongItem> songs) {
    return InsertSongs(folder, std::move(songs), folder.Songs().size());
}

std::unique_ptr<JukeboxChange> InsertSongs(Folder& folder, std::vector<SongItem> songs,
                                           std::size_t before) {
    std::vector<std::size_t> rows(songs.size());
    std::iota(rows.begin(), rows.end(), before);
    return std::make_unique<SongsInOrOut>(folder, std::move(rows), std::move(songs));
}

std::unique_ptr<JukeboxChange> AppendedSongs(Folder& folder, std::size_t firstRow) {
    return std::make_unique<SongsAtEnd>(folder, firstRow);
}

std::unique_ptr<JukeboxChange> OrderSongs(Folder& folder, std::vector<std::size_t> order) {
    return std::make_unique<SongOrder>(folder, std::move(order));
}

std::unique_ptr<JukeboxChange> ReplaceSongs(Folder& folder, std::vector<SongItem> songs) {
    return std::make_unique<OtherSongs>(folder, std::move(songs));
}

std::unique_ptr<JukeboxChange> Together(std::vector<std::unique_ptr<JukeboxChange>> changes) {
    return std::make_unique<ManyChanges>(std::move(changes));
}

std::unique_ptr<JukeboxChange> ChangeValue(int& variable, int value) {
    return std::make_unique<Value>(variable, value);
}

}  // namespace tobbin
