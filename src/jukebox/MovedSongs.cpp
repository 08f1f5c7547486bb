#include "jukebox/MovedSongs.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalogue/Ranks.h"
#include "jukebox/SpecialFolders.h"

namespace tobbin {
namespace {

bool IsFilledByTheProgram(const Folder& folder) {
    const Folder* const parent = folder.Parent();
    return IsSpecialFolder(folder) || (parent != nullptr && IsSpecialFolder(*parent) &&
                                       parent->Text() != kAllSongs && parent->Text() != kNew);
}

}  // namespace

SongItem ItemOf(Jukebox& jukebox, const clsMain& catalogue, std::int32_t record,
                std::string_view text, int image) {
    const RecordTable& table = catalogue.Records();
    std::array<char, 10> digits{};
    const std::string_view name = table.ViewOf(table.Id(clsMain::kFileName, record), digits);
    const bool isRenamed =
        text != name && catalogue.Text().ToLower(text) == catalogue.Text().ToLower(name);
    return jukebox.MakeItem(isRenamed ? name : text, record, image);
}

void KeepMovedSongsOnce(Jukebox& jukebox) {
    if (jukebox.SongMoves().empty())
        return;
    std::unordered_map<std::int32_t, const Folder*> lastSeenIn;  // by record
    for (const Jukebox::SongMove& move : jukebox.SongMoves())
        lastSeenIn.try_emplace(move.now, nullptr);
    for (Folder* folder = jukebox.Next(nullptr); folder != nullptr; folder = jukebox.Next(folder)) {
        if (!IsFilledByTheProgram(*folder))
            continue;
        std::vector<SongItem> songs = folder->Songs();
        const auto isRepeat = [&](const SongItem& song) {
            const auto seen = lastSeenIn.find(song.recordNumber);
            return seen != lastSeenIn.end() && std::exchange(seen->second, folder) == folder;
        };
        if (std::erase_if(songs, isRepeat) > 0)
            jukebox.SetSongs(*folder, std::move(songs));
    }
}

bool FindMissingSongsAgain(Jukebox& jukebox, const clsMain& catalogue, SongIdentity& identity) {
    bool anyFound = false;
    for (Folder* folder = jukebox.Next(nullptr); folder != nullptr; folder = jukebox.Next(folder)) {
        if (std::ranges::none_of(folder->Songs(), &SongItem::IsMissing))
            continue;
        std::vector<SongItem> songs = folder->Songs();
        bool isFound = false;
        for (SongItem& song : songs) {
            if (!song.IsMissing())
                continue;
            const MissingSong was = jukebox.MissingSongOf(song);
            const std::int32_t record =
                identity.RecordOf(was.recordNumber, was.folder, was.fileName);
            if (record == 0)
                continue;
            if (record != was.recordNumber)
                jukebox.AddSongMove({was.recordNumber, record});
            const std::int8_t selectedImage = song.selectedImage;
            song = ItemOf(jukebox, catalogue, record, jukebox.TextOf(song), song.image);
            song.selectedImage = selectedImage;
            isFound = true;
        }
        if (isFound)
            jukebox.SetSongs(*folder, std::move(songs));
        anyFound = anyFound || isFound;
    }
    KeepMovedSongsOnce(jukebox);
    return anyFound;
}

bool TellOfClearedSongs(const Jukebox& jukebox, clsMain& catalogue) {
    const RecordTable& table = catalogue.Records();
    bool isNews = false;
    for (const auto& [before, now] : jukebox.SongMoves()) {
        if (before > table.Size() || !IsCleared(table, before))
            continue;
        const SongMemory::Cleared* const known = catalogue.Memory().MaybeCleared(before);
        if (known != nullptr && known->name != catalogue.Mp3Info(clsMain::kFileName, now))
            continue;  // The number has become another song's.
        const std::string rank = catalogue.Mp3Info(clsMain::kRank, before);
        if (catalogue.Rank(now) == kWorstRank.shown && catalogue.Rank(before) != kWorstRank.shown) {
            catalogue.Mp3Info(clsMain::kRank, now, rank);
            catalogue.Mp3Info(clsMain::kRank, before, std::to_string(kWorstRank.shown));
            isNews = true;
        }
        isNews = isNews || known != nullptr;
        catalogue.Memory().BringBack(before);
    }
    for (const Folder* folder = jukebox.Next(nullptr); folder != nullptr;
         folder = jukebox.Next(folder))
        for (const SongItem& song : folder->Songs()) {
            if (!song.IsMissing())
                continue;
            const MissingSong was = jukebox.MissingSongOf(song);
            if (was.fileName.empty() || was.recordNumber < 1 || was.recordNumber > table.Size() ||
                !IsCleared(table, was.recordNumber) ||
                catalogue.Memory().MaybeCleared(was.recordNumber) != nullptr)
                continue;
            catalogue.Memory().Clear(was.recordNumber, was.folder, was.fileName);
            isNews = true;
        }
    return isNews;
}

}  // namespace tobbin
