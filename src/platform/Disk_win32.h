#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Disk.h"

namespace tobbin {

// The computer's files and folders, at any path length and with any name that the system allows.
class SystemDisk : public Disk {
 public:
    DiskStatus Stat(const std::string& path, PathInfo& info) override;
    using Disk::List;
    DiskStatus List(const std::string& folder, const ListOptions& wish,
                    FolderListing& listing) override;
    DiskStatus Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) override;
    DiskStatus CreateNew(const std::string& path, const std::string& like,
                         std::unique_ptr<File>& file) override;
    std::string NameNobodyKnows() override;
    bool LeadsAway(const std::string& link) override;
    DiskStatus CreateFolder(const std::string& folder) override;
    DiskStatus Remove(const std::string& path) override;

    // Refuses to replace a read-only file. The new file takes over whether the old one was hidden,
    // of the system or kept out of the index.
    DiskStatus Replace(const std::string& from, const std::string& to) override;
    void PauseForOthers() override;

    std::optional<std::string> MaybeShortPath(const std::string& path) override;
};

}  // namespace tobbin
