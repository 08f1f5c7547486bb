#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace tobbin {

// The drives and network shares that the songs lie on. A song is away, not gone, while its drive
// can't be reached, while another disk answers in its place, and while a mounted folder or a
// junction above it leads nowhere. A drive is asked once in a pass, aside from the window's thread.
// The volumes that the songs were seen on are kept in a file (see docs/song-drives.md).
class SongDrives {
 public:
    explicit SongDrives(Environment& environment) : m_environment(environment) {}

    // A pass over the songs begins: every drive is asked anew. `knownFolders` are those of the
    // songs, each ending in "\". `keepOn` is asked while a drive is waited for; once it answers
    // false, a drive that has not answered is taken for away in this pass. `memoryPath` is the file
    // of the volumes.
    void BeginPass(const std::vector<std::string>& knownFolders, std::function<bool()> keepOn,
                   const std::string& memoryPath);

    // Whether songs in this folder (ending in "\") that can't be found are away. False for a text
    // that is no full path.
    bool IsAway(const std::string& folder);

    // The two questions that IsAway asks, for a path and for a folder that can't be listed.
    enum class Finding {
        Here,
        OtherDisk,  // answers, but with another volume or with none of the known folders
        Away,       // can't be reached, or refuses every question
    };
    Finding DriveOf(const std::string& path);
    bool LeadsNowhere(const std::string& folder);

    // DriveOf as far as the drive was asked in this pass; asks nobody.
    std::optional<Finding> MaybeDriveOf(const std::string& path) const;

    // Asks the drive of a path once more, since something on it could not be read.
    Finding AskAgain(const std::string& path);

    // Whether a folder is on a drive that is there and that may be asked on any thread.
    bool IsOnLocalDrive(const std::string& folder);

    // Lists a folder, aside from the window's thread where it lies on a network.
    DiskStatus List(const std::string& folder, FolderListing& listing);

    // A pass has found so many of a drive's songs. Where they are the half of them or more, the
    // volume that is there now is the one of the songs.
    void SongsSeen(const std::string& root, std::size_t found, std::size_t all);

    // Keeps the volume of every drive of these folders that none is kept for, and saves the file.
    void EndPass(const std::vector<std::string>& knownFolders);

 private:
    struct Drive {
        Finding finding = Finding::Here;
        std::optional<std::uint64_t> volume;
    };
    const Drive& Ask(const std::string& root);
    Drive Look(const std::string& root);
    void ReadMemory();
    bool IsOnNetwork(const std::string& root) const;

    Environment& m_environment;
    std::function<bool()> m_keepOn = [] { return true; };
    std::map<std::string, std::vector<std::string>> m_known;  // folders by root
    std::map<std::string, Drive> m_drives;                    // as asked in this pass, by root
    std::map<std::string, bool> m_leadsNowhere;               // by folder
    std::string m_memoryPath;
    std::map<std::string, std::uint64_t> m_volumes;  // as kept, by root
    bool m_changed = false;
};

}  // namespace tobbin
