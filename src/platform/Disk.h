#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// Why a disk operation failed, as far as the program has different answers to it.
enum class DiskError {
    None,
    NotFound,  // the file, its folder or its drive is not there
    AccessDenied,
    SharingViolation,  // another program holds the file
    DiskFull,
    WriteProtected,
    NotReady,     // a drive without a medium, a network that is away
    NotHere,      // the content is in a cloud store only
    UnknownHost,  // on a computer of the network that the person has not agreed to (KnownHosts)
    AlreadyExists,
    TooLarge,     // for a file of its kind
    OutOfMemory,  // for what was read
    Other,
};

// The outcome of one disk operation.
class [[nodiscard]] DiskStatus {
 public:
    DiskStatus() = default;  // success
    explicit DiskStatus(DiskError error, std::uint32_t systemCode = 0)
        : m_error(error), m_systemCode(systemCode) {}

    bool Ok() const { return m_error == DiskError::None; }
    DiskError Error() const { return m_error; }

    // The system's own number of the error, 0 when there is none.
    std::uint32_t SystemCode() const { return m_systemCode; }

    // The reason as the end of a sentence, such as "access is denied".
    std::string Reason() const;

 private:
    DiskError m_error = DiskError::None;
    std::uint32_t m_systemCode = 0;
};

enum class PathKind { Nothing, File, Folder };

// What a path names.
struct PathInfo {
    PathKind kind = PathKind::Nothing;
    std::uint64_t size = 0;         // bytes, of a file
    std::int64_t modifiedTime = 0;  // seconds since 1970 (UTC)
    bool operator==(const PathInfo&) const = default;
};

// Which folder this is, whatever path led to it.
struct FolderId {
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    bool operator==(const FolderId&) const = default;
};

struct FolderEntry {
    std::string name;
    bool isFolder = false;
    bool isLink = false;     // leads to another place, which may be on another volume
    std::uint64_t size = 0;  // bytes, of a file; 0 where the listing does not tell
};

// Everything in a folder but "." and "..", in the order of the file system.
struct FolderListing {
    std::vector<FolderEntry> entries;
    std::optional<FolderId> id;  // nothing where it was not wished or the file system has none
};

// What a listing shall tell besides the entries.
struct ListOptions {
    bool id = false;
    // The volume that the folder is on, where the caller knows it: a folder that is no link is on
    // that of the folder around it. Asking the system for it takes longer than the listing.
    std::optional<std::uint64_t> volume;
};

// An open file. Closing it by destruction passes over an error; a writer calls Close itself.
class File {
 public:
    virtual ~File() = default;

    // Reads up to `count` bytes from `offset` (bytes, from 0); fewer only at the end of the file.
    virtual DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) = 0;

    // Writes all the bytes at `offset`; the file grows as needed.
    virtual DiskStatus Write(std::uint64_t offset, std::string_view bytes) = 0;

    virtual DiskStatus Size(std::uint64_t& bytes) = 0;

    // Returns when what was written is on the disk itself.
    virtual DiskStatus Flush() = 0;
    virtual DiskStatus Close() = 0;
};

enum class OpenMode {
    Read,        // an existing file; others may read and write it meanwhile
    ReadIfHere,  // the same, but fails with NotHere where a cloud store would have to fetch it
    Update,      // an existing file, for reading and writing in place
    Hold,        // a file that nobody else can open meanwhile; it goes when it is closed
};

// Files and folders. Paths are absolute, with "\" between their parts, of any length.
class Disk {
 public:
    virtual ~Disk() = default;

    // What the path names. A path that names nothing is no error: its kind is Nothing. An error
    // means that the question could not be answered.
    virtual DiskStatus Stat(const std::string& path, PathInfo& info) = 0;

    virtual DiskStatus List(const std::string& folder, const ListOptions& wish,
                            FolderListing& listing) = 0;
    DiskStatus List(const std::string& folder, FolderListing& listing) {
        return List(folder, {}, listing);
    }

    // With ReadIfHere it may be called on any thread, and what was opened so be used there.
    virtual DiskStatus Open(const std::string& path, OpenMode mode,
                            std::unique_ptr<File>& file) = 0;
    // A new file, to be written; AlreadyExists where there is something of that name, be it a link
    // that leads nowhere. It gets the access list of the file `like`, if there is one.
    virtual DiskStatus CreateNew(const std::string& path, const std::string& like,
                                 std::unique_ptr<File>& file) = 0;
    // Sixteen digits and letters that nobody can guess, another time others.
    virtual std::string NameNobodyKnows() = 0;

    // Whether a link leads off the volumes of this computer, which is found out without entering
    // it.
    virtual bool LeadsAway(const std::string& link) = 0;

    virtual DiskStatus CreateFolder(const std::string& folder) = 0;

    // Removes a file.
    virtual DiskStatus Remove(const std::string& path) = 0;

    // Gives the file `from` the name `to` in one step, in the place of a file of that name if there
    // is one. Both are on one drive.
    virtual DiskStatus Replace(const std::string& from, const std::string& to) = 0;

    // Rests for some 10 milliseconds, so that another program can let go of a file. The windows are
    // painted and answer meanwhile, but take no input.
    virtual void PauseForOthers() = 0;

    // The path of an existing file in short (8.3) names; nothing where the drive keeps none.
    virtual std::optional<std::string> MaybeShortPath(const std::string& path) = 0;
};

// Whether the path names an existing file (folder); false when that can't be found out.
bool FileExists(Disk& disk, const std::string& path);
bool FolderExists(Disk& disk, const std::string& path);

// A number of megabytes in bytes, for the largest size of each kind of file.
constexpr std::uint64_t Megabytes(std::uint64_t count) {
    return count << 20U;
}

// Holds a file (OpenMode::Hold) as a sign for others; one that another program holds is tried again
// for a second or so.
DiskStatus HoldFile(Disk& disk, const std::string& path, std::unique_ptr<File>& file);

// The whole content of a file of up to `limit` bytes; of a larger one nothing is read. A file that
// another program holds is tried again for a second or so. Where the file is missing and a whole
// new one stands beside it (see SaveWholeFile), that one is put in its place first.
DiskStatus ReadWholeFile(Disk& disk, const std::string& path, std::uint64_t limit,
                         std::string& bytes);

// Saves a file of the user's: writes a new file beside the old one, under a name that nobody can
// guess and with the old one's access list, flushes it to the disk and puts it in the old one's
// place in one step. At every moment the name holds the whole old content or
// the whole new one; on a drive that can't replace in one step (FAT) it may be missing after a
// crash, and the new file beside it is whole. On an error the old file is as it was and the new one
// is removed. A file that another program holds is tried again for a second or so.
DiskStatus SaveWholeFile(Disk& disk, const std::string& path, std::string_view bytes);

// SaveWholeFile, but leaves a file alone that holds just these bytes already.
DiskStatus SaveWholeFileIfChanged(Disk& disk, const std::string& path, std::string_view bytes);

// Brings a folder (which ends in "\") in order after saves that were cut short: a whole new file
// beside a missing one takes its place, everything else that they left is removed.
void FinishOrRemoveNewFiles(Disk& disk, const std::string& folder);

// Renames a file that could not be understood to a name beside it that is free: the path with its
// extension replaced by ".bad", then ".bad2", ".bad3" and so on. Returns that name in `keptAs`.
DiskStatus KeepDamagedFileAside(Disk& disk, const std::string& path, std::string& keptAs);

// The same with a copy, for a file of up to `limit` bytes that is about to be replaced.
DiskStatus KeepCopyAside(Disk& disk, const std::string& path, std::uint64_t limit,
                         std::string& keptAs);

}  // namespace tobbin
