#include "platform/Disk.h"

#include <chrono>
#include <new>

namespace tobbin {
namespace {

// These follow the name of the file to be: a file is written as the one, behind a part that nobody
// can guess. Once it is whole, it gets the other if it shall replace a file.
constexpr std::string_view kWritten = ".tmp";
constexpr std::string_view kReplacement = ".new";
constexpr std::size_t kUnknownPart = 17;  // a dot and what Disk::NameNobodyKnows gives

// Names that are saved here; whatever else ends so is somebody else's.
bool IsSavedHere(std::string_view name) {
    for (const std::string_view ending : {".lmz", ".ini", ".juk", ".poc", ".bak"})
        if (name.ends_with(ending))
            return true;
    return false;
}

// Ends a save that was cut short between the two steps of replacing. Returns whether there was one.
bool FinishReplacing(Disk& disk, const std::string& path) {
    const std::string replacement = path + std::string(kReplacement);
    return FileExists(disk, replacement) && disk.Replace(replacement, path).Ok();
}

// Carries out the operation, again and again while another program holds its file: a virus scanner
// or a backup lets go soon. On a busy computer a try may take long, so that the time counts as
// well.
template <typename Operation>
DiskStatus WithRetries(Disk& disk, Operation operation) {
    using Clock = std::chrono::steady_clock;
    constexpr int kTries = 100;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(1'800);
    for (int tried = 1;; ++tried) {
        const DiskStatus status = operation();
        if (status.Error() != DiskError::SharingViolation || tried == kTries || Clock::now() > end)
            return status;
        disk.PauseForOthers();
    }
}

DiskStatus ReadAll(File& file, std::uint64_t limit, std::string& bytes) {
    std::uint64_t size = 0;
    if (DiskStatus status = file.Size(size); !status.Ok())
        return status;
    if (size > limit)
        return DiskStatus(DiskError::TooLarge);
    return file.Read(0, static_cast<std::size_t>(size), bytes);
}

// Reads no further than to the first difference.
bool Holds(File& file, std::string_view bytes) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::string piece;
    for (std::size_t at = 0; at < bytes.size(); at += kPiece) {
        const std::string_view expected = bytes.substr(at, kPiece);
        if (!file.Read(at, expected.size(), piece).Ok() || piece != expected)
            return false;
    }
    return true;
}

DiskStatus WriteNewFile(Disk& disk, const std::string& path, const std::string& like,
                        std::string_view bytes) {
    std::unique_ptr<File> file;
    if (DiskStatus status = disk.CreateNew(path, like, file); !status.Ok())
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
            case DiskError::NotHere:
                return "it is in a cloud store and not on this computer";
            case DiskError::UnknownHost:
                return "it lies on a computer of the network that you have not agreed to";
            case DiskError::AlreadyExists:
                return "it exists already";
            case DiskError::TooLarge:
                return "it is larger than a file of its kind may be";
            case DiskError::OutOfMemory:
                return "there is not enough memory for it";
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

DiskStatus ReadWholeFile(Disk& disk, const std::string& path, std::uint64_t limit,
                         std::string& bytes) try {
    std::unique_ptr<File> file;
    const auto open = [&] { return disk.Open(path, OpenMode::Read, file); };
    DiskStatus status = WithRetries(disk, open);
    if (status.Error() == DiskError::NotFound && FinishReplacing(disk, path))
        status = WithRetries(disk, open);
    return status.Ok() ? ReadAll(*file, limit, bytes) : status;
} catch (const std::bad_alloc&) {
    return DiskStatus(DiskError::OutOfMemory);
}

DiskStatus HoldFile(Disk& disk, const std::string& path, std::unique_ptr<File>& file) {
    return WithRetries(disk, [&] { return disk.Open(path, OpenMode::Hold, file); });
}

DiskStatus SaveWholeFile(Disk& disk, const std::string& path, std::string_view bytes) {
    const bool replaces = FileExists(disk, path);
    const std::string written = path + "." + disk.NameNobodyKnows() + std::string(kWritten);
    const std::string replacement = path + std::string(kReplacement);
    const auto rename = [&disk](const std::string& from, const std::string& to) {
        return WithRetries(disk, [&] { return disk.Replace(from, to); });
    };
    DiskStatus status = WriteNewFile(disk, written, path, bytes);
    if (status.Ok())
        status = rename(written, replaces ? replacement : path);
    // The first error is the one to tell.
    if (!status.Ok()) {
        static_cast<void>(disk.Remove(written));
        return status;
    }
    if (replaces)
        status = rename(replacement, path);
    // A whole file stays where the old one went already.
    PathInfo old;
    if (!status.Ok() && !(disk.Stat(path, old).Ok() && old.kind == PathKind::Nothing))
        static_cast<void>(disk.Remove(replacement));
    return status;
}

DiskStatus SaveWholeFileIfChanged(Disk& disk, const std::string& path, std::string_view bytes) {
    PathInfo info;
    std::unique_ptr<File> file;
    if (disk.Stat(path, info).Ok() && info.kind == PathKind::File && info.size == bytes.size() &&
        disk.Open(path, OpenMode::Read, file).Ok() && Holds(*file, bytes))
        return {};
    file.reset();
    return SaveWholeFile(disk, path, bytes);
}

void FinishOrRemoveNewFiles(Disk& disk, const std::string& folder) {
    FolderListing listing;
    if (!disk.List(folder, listing).Ok())
        return;
    for (const FolderEntry& entry : listing.entries) {
        const bool replaces = entry.name.ends_with(kReplacement);
        if (entry.isFolder || (!replaces && !entry.name.ends_with(kWritten)))
            continue;
        std::string saved = entry.name.substr(0, entry.name.size() - kReplacement.size());
        // Earlier versions of the program wrote without that part.
        if (!replaces && !IsSavedHere(saved) && saved.size() > kUnknownPart)
            saved.resize(saved.size() - kUnknownPart);
        PathInfo old;
        if (!IsSavedHere(saved) || !disk.Stat(folder + saved, old).Ok())
            continue;
        if (old.kind == PathKind::File || !replaces || !FinishReplacing(disk, folder + saved))
            static_cast<void>(disk.Remove(folder + entry.name));
    }
}

DiskStatus KeepDamagedFileAside(Disk& disk, const std::string& path, std::string& keptAs) {
    DiskStatus status = FindFreeName(disk, path, keptAs);
    return status.Ok() ? disk.Replace(path, keptAs) : status;
}

DiskStatus KeepCopyAside(Disk& disk, const std::string& path, std::uint64_t limit,
                         std::string& keptAs) {
    DiskStatus status = FindFreeName(disk, path, keptAs);
    std::string bytes;
    if (status.Ok())
        status = ReadWholeFile(disk, path, limit, bytes);
    return status.Ok() ? SaveWholeFile(disk, keptAs, bytes) : status;
}

}  // namespace tobbin
