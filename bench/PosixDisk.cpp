#include "PosixDisk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace tobbin {
namespace {

DiskStatus LastError() {
    const auto code = static_cast<std::uint32_t>(errno);
    switch (errno) {
        case ENOENT:
        case ENOTDIR:
            return DiskStatus(DiskError::NotFound, code);
        case EACCES:
        case EPERM:
            return DiskStatus(DiskError::AccessDenied, code);
        case ENOSPC:
            return DiskStatus(DiskError::DiskFull, code);
        case EEXIST:
            return DiskStatus(DiskError::AlreadyExists, code);
        default:
            return DiskStatus(DiskError::Other, code);
    }
}

DiskStatus Result(int result) {
    return result == 0 ? DiskStatus() : LastError();
}

class PosixFile : public File {
 public:
    explicit PosixFile(int handle) : m_handle(handle) {}
    ~PosixFile() override { static_cast<void>(Close()); }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) override {
        bytes.resize(count);
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = pread(m_handle, bytes.data() + done, count - done,
                                      static_cast<off_t>(offset + done));
            if (got < 0)
                return LastError();
            if (got == 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        bytes.resize(done);
        return {};
    }
    DiskStatus Write(std::uint64_t offset, std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t put =
                pwrite(m_handle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
            if (put < 0)
                return LastError();
            offset += static_cast<std::uint64_t>(put);
            bytes.remove_prefix(static_cast<std::size_t>(put));
        }
        return {};
    }
    DiskStatus Size(std::uint64_t& bytes) override {
        struct stat found {};
        if (fstat(m_handle, &found) != 0)
            return LastError();
        bytes = static_cast<std::uint64_t>(found.st_size);
        return {};
    }
    DiskStatus Flush() override { return Result(fsync(m_handle)); }
    DiskStatus Close() override {
        if (m_handle < 0)
            return {};
        const int handle = m_handle;
        m_handle = -1;
        return Result(close(handle));
    }

 private:
    int m_handle;
};

}  // namespace

std::string PosixDisk::Local(const std::string& path) const {
    std::string local = m_root + path.substr(std::min<std::size_t>(path.size(), 2));
    std::replace(local.begin(), local.end(), '\\', '/');
    return local;
}

DiskStatus PosixDisk::Stat(const std::string& path, PathInfo& info) {
    info = {};
    struct stat found {};
    if (stat(Local(path).c_str(), &found) != 0)
        return errno == ENOENT || errno == ENOTDIR ? DiskStatus() : LastError();
    info.kind = S_ISDIR(found.st_mode) ? PathKind::Folder : PathKind::File;
    info.size = static_cast<std::uint64_t>(found.st_size);
    info.modifiedTime = found.st_mtime;
    return {};
}

DiskStatus PosixDisk::List(const std::string& folder, const ListOptions& wish,
                           FolderListing& listing) {
    listing = {};
    DIR* const stream = opendir(Local(folder).c_str());
    if (stream == nullptr)
        return LastError();
    struct stat self {};
    if (wish.id && fstat(dirfd(stream), &self) == 0)
        listing.id = FolderId{self.st_dev, self.st_ino};
    while (const dirent* const entry = readdir(stream)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        struct stat target {};
        if ((entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) &&
            fstatat(dirfd(stream), entry->d_name, &target, 0) == 0)
            isFolder = S_ISDIR(target.st_mode);
        listing.entries.push_back({name, isFolder});
    }
    closedir(stream);
    return {};
}

DiskStatus PosixDisk::Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) {
    const int flags = mode == OpenMode::Update ? O_RDWR : O_RDONLY;
    const int handle = open(Local(path).c_str(), flags | O_CLOEXEC);
    if (handle < 0)
        return LastError();
    file = std::make_unique<PosixFile>(handle);
    return {};
}

DiskStatus PosixDisk::CreateNew(const std::string& path, const std::string& /*like*/,
                                std::unique_ptr<File>& file) {
    const int handle = open(Local(path).c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (handle < 0)
        return LastError();
    file = std::make_unique<PosixFile>(handle);
    return {};
}

DiskStatus PosixDisk::CreateFolder(const std::string& folder) {
    return Result(mkdir(Local(folder).c_str(), 0777));
}

DiskStatus PosixDisk::Remove(const std::string& path) {
    return Result(unlink(Local(path).c_str()));
}

DiskStatus PosixDisk::Replace(const std::string& from, const std::string& to) {
    return Result(rename(Local(from).c_str(), Local(to).c_str()));
}

}  // namespace tobbin
