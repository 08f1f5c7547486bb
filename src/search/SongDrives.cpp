#include "search/SongDrives.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <utility>

#include "search/SongSearch.h"
#include "util/DataText.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr unsigned kNetworkDrive = 4;
constexpr std::uint64_t kLargestDriveList = Megabytes(1);
constexpr std::size_t kVolumeDigits = 16;

std::string VolumeText(std::uint64_t volume) {
    char digits[kVolumeDigits];
    const auto end = std::to_chars(digits, digits + kVolumeDigits, volume, 16).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    return std::string(kVolumeDigits - count, '0') + std::string(digits, count);
}

std::optional<std::uint64_t> MaybeVolumeFrom(std::string_view text) {
    std::uint64_t volume = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), volume, 16);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return volume;
}

}  // namespace

void SongDrives::BeginPass(const std::vector<std::string>& knownFolders,
                           std::function<bool()> keepOn, const std::string& memoryPath) {
    m_keepOn = std::move(keepOn);
    m_known.clear();
    for (const std::string& folder : knownFolders)
        if (const std::string root = RootOfPath(folder); !root.empty())
            m_known[root].push_back(folder);
    m_drives.clear();
    m_leadsNowhere.clear();
    if (std::exchange(m_memoryPath, memoryPath) != memoryPath)
        ReadMemory();
}

bool SongDrives::IsAway(const std::string& folder) {
    return DriveOf(folder) != Finding::Here ||
           (!FolderExists(m_environment.disk, folder) && LeadsNowhere(folder));
}

SongDrives::Finding SongDrives::DriveOf(const std::string& path) {
    const std::string root = RootOfPath(path);
    return root.empty() ? Finding::Here : Ask(root).finding;
}

std::optional<SongDrives::Finding> SongDrives::MaybeDriveOf(const std::string& path) const {
    const auto drive = m_drives.find(RootOfPath(path));
    return drive == m_drives.end() ? std::nullopt : std::optional(drive->second.finding);
}

SongDrives::Finding SongDrives::AskAgain(const std::string& path) {
    const std::string root = RootOfPath(path);
    if (root.empty())
        return Finding::Here;
    Drive& drive = m_drives[root];
    if (drive.finding != Finding::Away)
        drive = Look(root);
    return drive.finding;
}

const SongDrives::Drive& SongDrives::Ask(const std::string& root) {
    const auto [drive, isNew] = m_drives.try_emplace(root);
    if (isNew)
        drive->second = Look(root);
    return drive->second;
}

SongDrives::Drive SongDrives::Look(const std::string& root) {
    struct Answers {
        std::atomic<bool> wanted = true;
        bool reachable = false, hasKnownFolder = false, refuses = false;
        std::optional<std::uint64_t> volume;
    };
    const auto answers = std::make_shared<Answers>();
    const bool isOfSystem = root == RootOfPath(m_environment.drives.SystemRoot());
    const std::vector<std::string> folders = m_known[root];
    const auto ask = [answers, isOfSystem, root, folders, &environment = m_environment] {
        answers->reachable = IsReachable(environment, root);
        if (!answers->reachable || isOfSystem || !answers->wanted)
            return;
        answers->volume = environment.drives.MaybeVolume(root);
        answers->hasKnownFolder = folders.empty();
        for (const std::string& folder : folders) {
            PathInfo info;
            if (answers->hasKnownFolder || !answers->wanted)
                break;
            const bool answered = environment.disk.Stat(folder, info).Ok();
            answers->refuses = answers->refuses || !answered;
            answers->hasKnownFolder = answered && info.kind == PathKind::Folder;
        }
    };
    if (!m_environment.events.RunAside(ask, m_keepOn)) {
        answers->wanted = false;
        return {Finding::Away, std::nullopt};
    }
    const bool isBare = !isOfSystem && !answers->hasKnownFolder;
    if (!answers->reachable || (isBare && answers->refuses))
        return {Finding::Away, std::nullopt};
    const auto kept = m_volumes.find(root);
    const bool isOther =
        answers->volume && kept != m_volumes.end() && kept->second != *answers->volume;
    return {isBare || isOther ? Finding::OtherDisk : Finding::Here, answers->volume};
}

bool SongDrives::LeadsNowhere(const std::string& folder) {
    const std::string root = RootOfPath(folder);
    if (root.empty() || folder.size() <= root.size())
        return false;
    const auto [known, isNew] = m_leadsNowhere.try_emplace(folder, false);
    if (!isNew)
        return known->second;
    const std::string bare = folder.substr(0, folder.size() - 1);
    const std::string parent = FolderOfPath(bare);
    const std::string name = m_environment.text.ToLower(FileNameOfPath(bare));
    FolderListing listing;
    bool nowhere = false;
    if (!m_environment.disk.List(parent, listing).Ok())
        nowhere = LeadsNowhere(parent);
    else
        nowhere = std::ranges::any_of(listing.entries, [&](const FolderEntry& entry) {
            return entry.isLink && m_environment.text.ToLower(entry.name) == name;
        });
    return m_leadsNowhere[folder] = nowhere;
}

bool SongDrives::IsOnLocalDrive(const std::string& folder) {
    const std::string root = RootOfPath(folder);
    return !root.empty() && !IsOnNetwork(root) && DriveOf(folder) != Finding::Away;
}

bool SongDrives::IsOnNetwork(const std::string& root) const {
    return root.starts_with('\\') || m_environment.drives.Type(root) == kNetworkDrive;
}

DiskStatus SongDrives::List(const std::string& folder, FolderListing& listing) {
    if (!IsOnNetwork(RootOfPath(folder)))
        return m_environment.disk.List(folder, listing);
    struct Listed {
        DiskStatus status;
        FolderListing listing;
    };
    const auto answer = std::make_shared<Listed>();
    const auto list = [answer, folder, &disk = m_environment.disk] {
        answer->status = disk.List(folder, answer->listing);
    };
    if (!m_environment.events.RunAside(list, m_keepOn))
        return DiskStatus(DiskError::NotReady);
    listing = std::move(answer->listing);
    return answer->status;
}

void SongDrives::SongsSeen(const std::string& root, std::size_t found, std::size_t all) {
    const auto drive = m_drives.find(root);
    if (found == 0 || found * 2 < all || drive == m_drives.end() || !drive->second.volume)
        return;
    const auto [kept, isNew] = m_volumes.try_emplace(root, *drive->second.volume);
    m_changed = m_changed || isNew || kept->second != *drive->second.volume;
    kept->second = *drive->second.volume;
}

void SongDrives::EndPass(const std::vector<std::string>& knownFolders) {
    for (const std::string& folder : knownFolders) {
        const std::string root = RootOfPath(folder);
        if (root.empty() || m_volumes.contains(root))
            continue;
        if (const Drive& drive = Ask(root); drive.finding == Finding::Here && drive.volume)
            m_changed = m_volumes.try_emplace(root, *drive.volume).second;
    }
    if (!std::exchange(m_changed, false))
        return;
    std::string bytes;
    for (const auto& [root, volume] : m_volumes)
        bytes += EncodeDataText(m_environment.text, VolumeText(volume) + " " + root) + "\r\n";
    if (const DiskStatus status = SaveWholeFile(m_environment.disk, m_memoryPath, bytes);
        !status.Ok())
        m_environment.statusLine.Say("The list of drives \"" + m_memoryPath +
                                     "\" was not saved: " + status.Reason() + ".");
}

// A line that is none is passed over: the volume of that drive is then learned anew.
void SongDrives::ReadMemory() {
    m_volumes.clear();
    std::string bytes;
    if (!ReadWholeFile(m_environment.disk, m_memoryPath, kLargestDriveList, bytes).Ok())
        return;
    for (const std::string_view line : SplitLines(bytes)) {
        const std::string text = DecodeDataText(m_environment.text, TrimBlanks(line));
        const auto volume = MaybeVolumeFrom(std::string_view(text).substr(0, kVolumeDigits));
        const std::string root =
            text.size() > kVolumeDigits ? text.substr(kVolumeDigits + 1) : std::string();
        if (volume && !root.empty() && RootOfPath(root) == root)
            m_volumes[root] = *volume;
    }
}

}  // namespace tobbin
