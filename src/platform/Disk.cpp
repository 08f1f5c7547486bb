#include "platform/Disk.h"

namespace tobbin {
namespace {

DiskStatus WriteNewFile(Disk& disk, const std::string& path, std::string_view bytes) {
    std::unique_ptr<File> file;
    if (DiskStatus status = disk.Open(path, OpenMode::Create, file); !status.Ok())
        return status;
    if (DiskStatus status = file->Write(0, bytes); !status.Ok())
        return status;
    if (DiskStatus status = file->Flush(); !status.Ok())
        return status;
    return file->Close();
}

// The first name that is free of those under which a damaged file is kept.
DiskStatus FindFreeName(Disk& disk, const std::string& path, std::string& keptAs) {
    const std::size_t dot = path.rfind('.');
    const std::size_t name = path.rfind('\\') + 1;
    const bool hasExtension = dot != std::string::npos && dot >= name;
    const std::string stem = hasExtension ? path.substr(0, dot) : path;
    for (int number = 1;; ++number) {
        keptAs = stem + ".bad" + (number > 1 ? std::to_string(number) : "");
        PathInfo info;
        if (DiskStatus status = disk.Stat(keptAs, info); !status.Ok())
            return status;
        if (info.kind == PathKind::Nothing)
            return {};
    }
}

}  // namespace

std::string DiskStatus::Reason() const {
    const auto words = [this]() -> std::string {
        switch (m_error) {
            case DiskError::None:
                return "no error";
            case DiskError::NotFound:
                return "it does not exist";
            case DiskError::AccessDenied:
                return "access is denied";
            case DiskError::SharingViolation:
                return "another program is using it";
            case DiskError::DiskFull:
                return "the disk is full";
            case DiskError::WriteProtected:
                return "the disk is write-protected";
            case DiskError::NotReady:
                return "the drive is not ready";
            case DiskError::AlreadyExists:
                return "it exists already";
            case DiskError::Other:
                break;
        }
        return "the system reports an error";
    };
    if (m_systemCode == 0)
        return words();
    return words() + " (error " + std::to_string(m_systemCode) + ")";
}

bool FileExists(Disk& disk, const std::string& path) {
    PathInfo info;
    return disk.Stat(path, info).Ok() && info.kind == PathKind::File;
}

bool FolderExists(Disk& disk, const std::string& path) {
    PathInfo info;
    return disk.Stat(path, info).Ok() && info.kind == PathKind::Folder;
}

DiskStatus ReadWholeFile(Disk& disk, const std::string& path, std::string& bytes) {
    std::unique_ptr<File> file;
    if (DiskStatus status = disk.Open(path, OpenMode::Read, file); !status.Ok())
        return status;
    std::uint64_t size = 0;
    if (DiskStatus status = file->Size(size); !status.Ok())
        return status;
    return file->Read(0, static_cast<std::size_t>(size), bytes);
}

DiskStatus SaveWholeFile(Disk& disk, const std::string& path, std::string_view bytes) {
    const std::string newPath = path + ".new";
    DiskStatus status = WriteNewFile(disk, newPath, bytes);
    if (status.Ok())
        status = disk.Replace(newPath, path);
    if (!status.Ok())
        static_cast<void>(disk.Remove(newPath));  // The first error is the one to tell.
    return status;
}

DiskStatus SaveWholeFileIfChanged(Disk& disk, const std::string& path, std::string_view bytes) {
    PathInfo info;
    std::string old;
    if (disk.Stat(path, info).Ok() && info.kind == PathKind::File && info.size == bytes.size() &&
        ReadWholeFile(disk, path, old).Ok() && old == bytes)
        return {};
    return SaveWholeFile(disk, path, bytes);
}

DiskStatus KeepDamagedFileAside(Disk& disk, const std::string& path, std::string& keptAs) {
    DiskStatus status = FindFreeName(disk, path, keptAs);
    return status.Ok() ? disk.Replace(path, keptAs) : status;
}

DiskStatus KeepCopyAside(Disk& disk, const std::string& path, std::string& keptAs) {
    DiskStatus status = FindFreeName(disk, path, keptAs);
    std::string bytes;
    if (status.Ok())
        status = ReadWholeFile(disk, path, bytes);
    return status.Ok() ? SaveWholeFile(disk, keptAs, bytes) : status;
}

}  // namespace tobbin
