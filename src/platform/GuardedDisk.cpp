#include "platform/GuardedDisk.h"

#include <vector>

namespace tobbin {

DiskStatus GuardedDisk::Check(const std::string& path) const {
    if (!CanBeFile(path))
        return DiskStatus(DiskError::NotFound);
    return m_hosts.MayTouch(path) ? DiskStatus() : DiskStatus(DiskError::UnknownHost);
}

DiskStatus GuardedDisk::Stat(const std::string& path, PathInfo& info) {
    info = {};
    if (const DiskStatus status = Check(path); !status.Ok())
        return status.Error() == DiskError::NotFound ? DiskStatus() : status;
    return m_disk.Stat(path, info);
}

// A listing shows nothing that could not be opened.
DiskStatus GuardedDisk::List(const std::string& folder, const ListOptions& wish,
                             FolderListing& listing) {
    listing = {};
    if (const DiskStatus status = Check(folder); !status.Ok())
        return status;
    const DiskStatus status = m_disk.List(folder, wish, listing);
    std::erase_if(listing.entries,
                  [](const FolderEntry& entry) { return !CanBeFile("C:\\" + entry.name); });
    return status;
}

DiskStatus GuardedDisk::Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) {
    const DiskStatus status = Check(path);
    return status.Ok() ? m_disk.Open(path, mode, file) : status;
}

DiskStatus GuardedDisk::CreateNew(const std::string& path, const std::string& like,
                                  std::unique_ptr<File>& file) {
    const DiskStatus status = Check(path);
    return status.Ok() ? m_disk.CreateNew(path, like, file) : status;
}

DiskStatus GuardedDisk::CreateFolder(const std::string& folder) {
    const DiskStatus status = Check(folder);
    return status.Ok() ? m_disk.CreateFolder(folder) : status;
}

DiskStatus GuardedDisk::Remove(const std::string& path) {
    const DiskStatus status = Check(path);
    return status.Ok() ? m_disk.Remove(path) : status;
}

DiskStatus GuardedDisk::Replace(const std::string& from, const std::string& to) {
    DiskStatus status = Check(from);
    if (status.Ok())
        status = Check(to);
    return status.Ok() ? m_disk.Replace(from, to) : status;
}

std::optional<std::string> GuardedDisk::MaybeShortPath(const std::string& path) {
    return Check(path).Ok() ? m_disk.MaybeShortPath(path) : std::nullopt;
}

}  // namespace tobbin
