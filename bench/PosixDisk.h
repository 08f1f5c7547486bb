#pragma once

#include <string>

#include "platform/Disk.h"

namespace tobbin {

// A folder of this system as drive C: of the program: "C:\Music\a.mp3" is ROOT/Music/a.mp3. Letter
// case counts, as it does below the root. For measuring with real files only.
class PosixDisk : public Disk {
 public:
    explicit PosixDisk(std::string root) : m_root(std::move(root)) {}

    DiskStatus Stat(const std::string& path, PathInfo& info) override;
    using Disk::List;
    DiskStatus List(const std::string& folder, const ListOptions& wish,
                    FolderListing& listing) override;
    DiskStatus Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) override;
    DiskStatus CreateNew(const std::string& path, const std::string& like,
                         std::unique_ptr<File>& file) override;
    std::string NameNobodyKnows() override { return "0123456789abcdef"; }
    bool LeadsAway(const std::string& /*link*/) override { return false; }
    DiskStatus CreateFolder(const std::string& folder) override;
    DiskStatus Remove(const std::string& path) override;
    DiskStatus Replace(const std::string& from, const std::string& to) override;
    void PauseForOthers() override {}
    std::optional<std::string> MaybeShortPath(const std::string&) override { return std::nullopt; }

 private:
    std::string Local(const std::string& path) const;

    std::string m_root;
};

}  // namespace tobbin
