#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Disk.h"
#include "platform/KnownHosts.h"

namespace tobbin {

// The disk as all of the program sees it: what can be no file is not there, and a computer of the
// network that nobody knows is not touched. Both may be named by any file that came from elsewhere.
class GuardedDisk : public Disk {
 public:
    GuardedDisk(Disk& disk, KnownHosts& hosts) : m_disk(disk), m_hosts(hosts) {}

    DiskStatus Stat(const std::string& path, PathInfo& info) override;
    using Disk::List;
    DiskStatus List(const std::string& folder, const ListOptions& wish,
                    FolderListing& listing) override;
    DiskStatus Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) override;
    DiskStatus CreateNew(const std::string& path, const std::string& like,
                         std::unique_ptr<File>& file) override;
    DiskStatus CreateFolder(const std::string& folder) override;
    DiskStatus Remove(const std::string& path) override;
    DiskStatus Replace(const std::string& from, const std::string& to) override;
    void PauseForOthers() override { m_disk.PauseForOthers(); }
    std::string NameNobodyKnows() override { return m_disk.NameNobodyKnows(); }
    bool LeadsAway(const std::string& link) override { return m_disk.LeadsAway(link); }
    std::optional<std::string> MaybeShortPath(const std::string& path) override;

 private:
    DiskStatus Check(const std::string& path) const;

    Disk& m_disk;
    KnownHosts& m_hosts;
};

}  // namespace tobbin
