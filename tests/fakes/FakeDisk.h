#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "platform/Disk.h"

namespace tobbin {

// A disk in memory. Paths are looked up without regard to the case of ASCII letters, listings come
// in the order of creation. It writes down every operation and can fail, or stop dead, at the n-th.
class FakeDisk : public Disk {
 public:
    // Verbs for tests. AddFile makes the folders above it.
    void AddFolder(const std::string& folder) { Add(folder, true); }
    void AddFile(const std::string& path, std::string content = {}) {
        *Add(path, false).content = std::move(content);
    }
    void Erase(const std::string& path);  // a file, or a folder with all in it
    bool Has(const std::string& path) const { return Find(path) != nullptr; }
    const std::string& Content(const std::string& path) const;  // CHECKs that the file is there
    std::vector<std::string> FilesIn(const std::string& folder) const;  // names, sorted
    std::map<std::string, std::string> Everything() const;  // every file's content, by its key
    // No operation opens or changes the file, or lists the folder, until it is unlocked.
    void Lock(const std::string& path, DiskError error = DiskError::SharingViolation) {
        Existing(path).lock = error;
    }
    void Unlock(const std::string& path) { Lock(path, DiskError::None); }
    // From now on every operation on this path, and on what is below it, fails with the error.
    void FailBelow(const std::string& path, DiskError error);
    // The file says that it has this many bytes.
    void ClaimSize(const std::string& path, std::uint64_t size) { m_claimed[Key(path)] = size; }
    // Replacing a file takes two operations: the old one goes, then the new one gets its name.
    bool replacesInTwoSteps = false;
    // Whether a program holds this file (OpenMode::Hold); it is seen by nobody.
    bool IsHeld(const std::string& path) const { return m_held->contains(Key(path)); }
    // Entering `link` leads to `target`: the listing of the one is the listing of the other.
    void AddLink(const std::string& link, const std::string& target);
    void SetId(const std::string& folder, const FolderId& id);

    // What was done, one line each: "open C:\a", "write C:\a", "replace C:\a.new C:\a" ...
    const std::vector<std::string>& Log() const { return m_log; }
    void ClearLog() { m_log.clear(); }

    // From now on operation number n (from 1) fails with the error: once, or it and every later
    // one. Operations that only ask (stat, list, size) count as well. A write that fails so has
    // written the first half of its bytes.
    void FailAt(int operation, DiskError error, bool once);
    // From operation n on nothing reaches the disk any more; every call reports an error.
    void StopDeadAt(int operation) { FailAt(operation, DiskError::Other, false); }
    void Heal() { m_failAt = 0; }
    bool HasFailed() const { return m_failAt != 0 && m_operations >= m_failAt; }

    // The power goes and comes back: of what was written to each file since it was last flushed, a
    // chance part is there, in pieces that came to the disk in any order. Then the disk works.
    void LosePower(std::uint32_t seed);

    DiskStatus Stat(const std::string& path, PathInfo& info) override;
    using Disk::List;
    DiskStatus List(const std::string& folder, const ListOptions& wish,
                    FolderListing& listing) override;
    DiskStatus Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) override;
    DiskStatus CreateNew(const std::string& path, const std::string& like,
                         std::unique_ptr<File>& file) override;
    std::string NameNobodyKnows() override { return std::to_string(++m_lastName); }
    bool LeadsAway(const std::string& link) override;
    DiskStatus CreateFolder(const std::string& folder) override;
    DiskStatus Remove(const std::string& path) override;
    DiskStatus Replace(const std::string& from, const std::string& to) override;
    void PauseForOthers() override { onPause(); }
    std::function<void()> onPause = [] {};  // what other programs do meanwhile

    // The short path of a file, where a test gives it one.
    std::map<std::string, std::string> shortPaths;
    std::optional<std::string> MaybeShortPath(const std::string& path) override;

 private:
    friend class FakeFile;
    struct Node {
        std::string name;  // as it was created
        bool isFolder = false;
        std::shared_ptr<std::string> content = std::make_shared<std::string>();
        std::int64_t modifiedTime = 0;
        std::uint64_t id = 0;
        std::uint64_t volume = 1;
        DiskError lock = DiskError::None;
        bool isLink = false;
    };
    static std::string Key(const std::string& path);
    std::string Resolve(const std::string& path) const;  // key with links followed
    Node* Find(const std::string& path);
    const Node* Find(const std::string& path) const {
        return const_cast<FakeDisk*>(this)->Find(path);
    }
    Node& Existing(const std::string& path);
    Node& Add(const std::string& path, bool isFolder);
    DiskStatus Step(const std::string& what);
    // What a file held when it was last flushed, and the writes since: offsets and bytes.
    struct Unflushed {
        std::string durable;
        std::vector<std::pair<std::uint64_t, std::string>> writes;
    };
    using ContentHandle = std::shared_ptr<std::string>;
    void WriteTo(const ContentHandle& content, std::uint64_t offset, std::string_view bytes);

    // For what other threads may do: open and read.
    std::shared_ptr<std::mutex> m_mutex = std::make_shared<std::mutex>();
    std::map<std::string, Node> m_nodes;
    std::map<ContentHandle, Unflushed> m_unflushed;
    std::shared_ptr<std::set<std::string>> m_held = std::make_shared<std::set<std::string>>();
    std::map<std::string, std::string> m_links;  // their keys, and those of what they lead to
    std::map<std::string, std::uint64_t> m_claimed;
    std::uint64_t m_nextId = 1, m_lastName = 1'000'000'000'000'000;
    std::int64_t m_now = 1'000'000'000;
    std::vector<std::string> m_log;
    int m_operations = 0;
    int m_failAt = 0;
    bool m_failOnce = true;
    DiskError m_failure = DiskError::None;
    std::string m_failingPath;  // its key
    DiskError m_failureBelow = DiskError::None;
};

}  // namespace tobbin
