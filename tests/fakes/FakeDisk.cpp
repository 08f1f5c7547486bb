#include "fakes/FakeDisk.h"

#include <algorithm>
#include <random>

#include "util/Check.h"
#include "util/Text.h"

namespace tobbin {
namespace {

void Put(std::string& content, std::uint64_t offset, std::string_view bytes) {
    content.resize(std::max<std::size_t>(content.size(), offset + bytes.size()));
    content.replace(offset, bytes.size(), bytes);
}

}  // namespace

class FakeFile : public File {
 public:
    FakeFile(FakeDisk& disk, std::string path, std::shared_ptr<std::string> content)
        : m_disk(disk), m_path(std::move(path)), m_content(std::move(content)) {}

    DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) override {
        const std::scoped_lock lock(*m_disk.m_mutex);
        DiskStatus status = m_disk.Step("read " + m_path);
        bytes.clear();
        if (status.Ok() && offset < m_content->size())
            bytes = m_content->substr(offset, count);
        return status;
    }
    DiskStatus Write(std::uint64_t offset, std::string_view bytes) override {
        DiskStatus status = m_disk.Step("write " + m_path);
        if (status.Ok() || m_disk.m_operations == m_disk.m_failAt)
            m_disk.WriteTo(m_content, offset,
                           bytes.substr(0, status.Ok() ? bytes.size() : bytes.size() / 2));
        return status;
    }
    DiskStatus Size(std::uint64_t& bytes) override {
        const std::scoped_lock lock(*m_disk.m_mutex);
        const auto claimed = m_disk.m_claimed.find(FakeDisk::Key(m_path));
        bytes = claimed != m_disk.m_claimed.end() ? claimed->second : m_content->size();
        return m_disk.Step("size " + m_path);
    }
    DiskStatus Flush() override {
        DiskStatus status = m_disk.Step("flush " + m_path);
        if (status.Ok())
            m_disk.m_unflushed.erase(m_content);
        return status;
    }
    DiskStatus Close() override { return m_disk.Step("close " + m_path); }

 private:
    FakeDisk& m_disk;
    std::string m_path;
    std::shared_ptr<std::string> m_content;
};

std::string FakeDisk::Key(const std::string& path) {
    std::string key = path;
    while (key.ends_with('\\'))
        key.pop_back();
    std::ranges::transform(key, key.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    return key;
}

std::string FakeDisk::Resolve(const std::string& path) const {
    std::string key = Key(path);
    for (int hops = 0; hops < 64; ++hops) {
        const auto link = std::ranges::find_if(m_links, [&](const auto& entry) {
            return (key + "\\").starts_with(entry.first + "\\");
        });
        if (link == m_links.end())
            break;
        key.replace(0, link->first.size(), link->second);
    }
    return key;
}

FakeDisk::Node* FakeDisk::Find(const std::string& path) {
    const auto it = m_nodes.find(Resolve(path));
    return it == m_nodes.end() ? nullptr : &it->second;
}

FakeDisk::Node& FakeDisk::Existing(const std::string& path) {
    Node* const node = Find(path);
    CHECK(node != nullptr);
    return *node;
}

FakeDisk::Node& FakeDisk::Add(const std::string& path, bool isFolder) {
    const std::string bare = path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
    if (const std::size_t cut = bare.rfind('\\');
        cut != std::string::npos && !Find(bare.substr(0, cut)))
        Add(bare.substr(0, cut), true);
    std::string name = FileNameOfPath(bare);  // before the node is there: memory may run out
    Node& node = m_nodes[Resolve(bare)];
    if (node.id == 0) {
        node.id = m_nextId++;
        node.name = std::move(name);
        node.isFolder = isFolder;
    }
    node.modifiedTime = m_now;
    return node;
}

void FakeDisk::Erase(const std::string& path) {
    const std::string key = Key(path);
    m_nodes.erase(key);
    m_nodes.erase(m_nodes.lower_bound(key + "\\"),
                  m_nodes.lower_bound(key + "]"));  // what is in it
}

const std::string& FakeDisk::Content(const std::string& path) const {
    const Node* node = Find(path);
    CHECK(node != nullptr && !node->isFolder);
    return *node->content;
}

std::vector<std::string> FakeDisk::FilesIn(const std::string& folder) const {
    std::vector<std::string> names;
    const std::string prefix = Resolve(folder) + "\\";
    for (const auto& [key, node] : m_nodes)
        if (key.starts_with(prefix) && key.find('\\', prefix.size()) == key.npos && !node.isFolder)
            names.push_back(node.name);
    std::ranges::sort(names);
    return names;
}

std::map<std::string, std::string> FakeDisk::Everything() const {
    std::map<std::string, std::string> files;
    for (const auto& [key, node] : m_nodes)
        if (!node.isFolder)
            files[key] = *node.content;
    return files;
}

void FakeDisk::WriteTo(const ContentHandle& content, std::uint64_t offset, std::string_view bytes) {
    Unflushed& unflushed = m_unflushed[content];
    if (unflushed.writes.empty())
        unflushed.durable = *content;
    unflushed.writes.emplace_back(offset, bytes);
    Put(*content, offset, bytes);
}

void FakeDisk::LosePower(std::uint32_t seed) {
    std::mt19937 chance(seed);
    for (auto& [content, unflushed] : m_unflushed) {
        constexpr std::size_t kPiece = 64;  // bytes that reach the disk together
        std::vector<std::pair<std::uint64_t, std::string_view>> pieces;
        for (const auto& [offset, bytes] : unflushed.writes)
            for (std::size_t at = 0; at < bytes.size(); at += kPiece)
                pieces.emplace_back(offset + at, std::string_view(bytes).substr(at, kPiece));
        std::shuffle(pieces.begin(), pieces.end(), chance);
        pieces.resize(chance() % (pieces.size() + 1));
        *content = unflushed.durable;
        for (const auto& [offset, bytes] : pieces)
            Put(*content, offset, bytes);
    }
    m_unflushed.clear();
    Heal();
}

void FakeDisk::FailBelow(const std::string& path, DiskError error) {
    m_failingPath = Key(path);
    m_failureBelow = error;
}

void FakeDisk::AddLink(const std::string& link, const std::string& target) {
    Add(link, true).isLink = true;
    m_links[Resolve(link)] = Key(target);
}

void FakeDisk::SetId(const std::string& folder, const FolderId& id) {
    Node& node = Existing(folder);
    node.id = id.index;
    node.volume = id.volume;
}

void FakeDisk::FailAt(int operation, DiskError error, bool once) {
    m_operations = 0;
    m_failAt = operation;
    m_failOnce = once;
    m_failure = error;
}

DiskStatus FakeDisk::Step(const std::string& what) {
    m_log.push_back(what);
    ++m_operations;
    if (m_failureBelow != DiskError::None && Key(what).find(m_failingPath) != std::string::npos)
        return DiskStatus(m_failureBelow);
    const bool fails =
        m_failAt != 0 && (m_failOnce ? m_operations == m_failAt : m_operations >= m_failAt);
    return fails ? DiskStatus(m_failure) : DiskStatus();
}

DiskStatus FakeDisk::Stat(const std::string& path, PathInfo& info) {
    info = {};
    if (DiskStatus status = Step("stat " + path); !status.Ok())
        return status;
    if (const Node* node = Find(path)) {
        info.kind = node->isFolder ? PathKind::Folder : PathKind::File;
        info.size = node->content->size();
        info.modifiedTime = node->modifiedTime;
    }
    return {};
}

DiskStatus FakeDisk::List(const std::string& folder, const ListOptions& wish,
                          FolderListing& listing) {
    const std::scoped_lock lock(*m_mutex);
    listing = {};
    if (DiskStatus status = Step("list " + folder); !status.Ok())
        return status;
    const Node* node = Find(folder);
    if (node == nullptr || !node->isFolder)
        return DiskStatus(DiskError::NotFound);
    if (node->lock != DiskError::None)
        return DiskStatus(node->lock);
    if (wish.id)
        listing.id = FolderId{wish.volume.value_or(node->volume), node->id};
    const std::string prefix = Resolve(folder) + "\\";
    std::vector<const Node*> found;
    for (auto it = m_nodes.lower_bound(prefix);
         it != m_nodes.end() && it->first.starts_with(prefix); ++it)
        if (it->first.find('\\', prefix.size()) == std::string::npos)
            found.push_back(&it->second);
    std::ranges::sort(found, {}, &Node::id);
    for (const Node* entry : found)
        listing.entries.push_back(
            {entry->name, entry->isFolder, entry->isLink, entry->content->size()});
    return {};
}

DiskStatus FakeDisk::Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) {
    const std::scoped_lock lock(*m_mutex);
    if (DiskStatus status = Step("open " + path); !status.Ok())
        return status;
    Node* node = Find(path);
    if (node != nullptr && node->isFolder)
        return DiskStatus(DiskError::AccessDenied);
    if (node != nullptr && node->lock != DiskError::None)
        return DiskStatus(node->lock);
    if (m_held->contains(Key(path)))
        return DiskStatus(DiskError::SharingViolation);
    if (mode == OpenMode::Hold) {
        m_held->insert(Key(path));
        auto content = std::shared_ptr<std::string>(
            new std::string, [held = m_held, key = Key(path)](std::string* text) {
                held->erase(key);
                delete text;
            });
        file = std::make_unique<FakeFile>(*this, path, content);
        return {};
    }
    if (node == nullptr)
        return DiskStatus(DiskError::NotFound);
    file = std::make_unique<FakeFile>(*this, path, node->content);
    return {};
}

DiskStatus FakeDisk::CreateNew(const std::string& path, const std::string& /*like*/,
                               std::unique_ptr<File>& file) {
    if (DiskStatus status = Step("create " + path); !status.Ok())
        return status;
    if (Find(path))
        return DiskStatus(DiskError::AlreadyExists);
    if (!Find(path.substr(0, path.rfind('\\'))))
        return DiskStatus(DiskError::NotFound);
    file = std::make_unique<FakeFile>(*this, path, Add(path, false).content);
    return {};
}

bool FakeDisk::LeadsAway(const std::string& link) {
    return Resolve(link).starts_with("\\\\");
}

DiskStatus FakeDisk::CreateFolder(const std::string& folder) {
    if (DiskStatus status = Step("create folder " + folder); !status.Ok())
        return status;
    if (Has(folder))
        return DiskStatus(DiskError::AlreadyExists);
    AddFolder(folder);
    return {};
}

DiskStatus FakeDisk::Remove(const std::string& path) {
    if (DiskStatus status = Step("remove " + path); !status.Ok())
        return status;
    Node* node = Find(path);
    if (node == nullptr)
        return DiskStatus(DiskError::NotFound);
    if (node->lock != DiskError::None)
        return DiskStatus(node->lock);
    m_nodes.erase(Resolve(path));
    return {};
}

DiskStatus FakeDisk::Replace(const std::string& from, const std::string& to) {
    if (DiskStatus status = Step("replace " + from + " " + to); !status.Ok())
        return status;
    Node* source = Find(from);
    if (source == nullptr)
        return DiskStatus(DiskError::NotFound);
    if (const Node* target = Find(to); target != nullptr && target->lock != DiskError::None)
        return DiskStatus(target->lock);
    if (source->lock != DiskError::None)
        return DiskStatus(source->lock);
    Node moved = *source;
    if (replacesInTwoSteps && Find(to) != nullptr) {
        m_nodes.erase(Resolve(to));
        if (DiskStatus status = Step("name " + from + " " + to); !status.Ok())
            return status;
    }
    moved.name = FileNameOfPath(to);
    m_nodes.erase(Resolve(from));
    m_nodes[Resolve(to)] = std::move(moved);
    return {};
}

std::optional<std::string> FakeDisk::MaybeShortPath(const std::string& path) {
    return shortPaths.contains(path) ? std::optional(shortPaths[path]) : std::nullopt;
}

}  // namespace tobbin
