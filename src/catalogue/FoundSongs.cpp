#include "catalogue/FoundSongs.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "util/Text.h"
#include "util/TextHash.h"

namespace tobbin {

FoundSongs::FoundSongs(Environment& environment, clsMain& catalogue)
    : m_environment(environment),
      m_catalogue(catalogue),
      m_seen(static_cast<std::size_t>(catalogue.UBoundOfMp3Array()) + 1) {}

void FoundSongs::Seen(const std::vector<MissingSongs::SeenSong>& songs) {
    for (const auto& [record, size] : songs)
        m_seen[static_cast<std::size_t>(record)] = true;
}

std::int32_t FoundSongs::OnSongFound(const std::string& folder, const std::string& name,
                                     std::uint64_t size) {
    m_files.push_back({folder, name, size});
    return m_catalogue.UBoundOfMp3Array() + static_cast<std::int32_t>(m_files.size());
}

FoundOutcome FoundSongs::Settle() {
    SongIdentity identity(m_catalogue);
    m_outcome.records.assign(m_files.size(), 0);
    TakeKnownPlaces(identity);
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < m_files.size(); ++i)
        if (m_outcome.records[i] == 0)
            others.push_back(i);
    // Those of one name together, in the order of each name's first file.
    std::unordered_map<std::string_view, std::size_t, TextHash> firstOfName;
    std::vector<std::size_t> firstOf(m_files.size());
    for (const std::size_t file : others)
        firstOf[file] = firstOfName.try_emplace(m_files[file].name, file).first->second;
    std::ranges::stable_sort(others, {}, [&](std::size_t file) { return firstOf[file]; });
    for (const std::size_t* first = others.data(); first != others.data() + others.size();) {
        const std::size_t* const last =
            std::find_if(first, std::as_const(others).data() + others.size(),
                         [&](std::size_t i) { return m_files[i].name != m_files[*first].name; });
        TakeNamesakes(identity, first, last);
        m_environment.events.PumpWithoutInput();
        first = last;
    }
    return std::move(m_outcome);
}

// A path that differs in case only is the same file, and the record takes over the new spelling.
void FoundSongs::TakeKnownPlaces(SongIdentity& identity) {
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const SongFile& file = m_files[i];
        const std::int32_t record = identity.AtPath(file.folder, file.name);
        if (record == 0)
            continue;
        m_outcome.records[i] = record;
        m_seen[static_cast<std::size_t>(record)] = true;
        m_catalogue.Mp3Info(clsMain::kFolder, record, file.folder);
        m_catalogue.Mp3Info(clsMain::kFileName, record, file.name);
        m_catalogue.Memory().TakeSize(record, file.size);
    }
}

void FoundSongs::TakeNamesakes(SongIdentity& identity, const std::size_t* first,
                               const std::size_t* last) {
    // The same file may have been handed over more than once.
    TextMap<std::size_t> places;  // in `files`, by lower-cased folder
    std::vector<SongFile> files;
    std::vector<std::size_t> placeOf;
    for (const std::size_t* i = first; i != last; ++i) {
        const std::string& folder = m_files[*i].folder;
        const auto [place, isNew] = places.try_emplace(
            last - first == 1 ? folder : m_environment.text.ToLower(folder), files.size());
        if (isNew)
            files.push_back(m_files[*i]);
        placeOf.push_back(place->second);
    }
    const std::vector<SongIdentity::Answer> answers =
        identity.Meet(files, [this](std::int32_t record) { return IsThere(record); });
    std::vector<std::int32_t> records;
    std::int32_t kept = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const auto [finding, record] = answers[i];
        if (finding == SongIdentity::Finding::Back)
            MoveTo(record, files[i]);
        if (finding != SongIdentity::Finding::LeftOut)
            kept = finding == SongIdentity::Finding::Back ? record : Append(files[i]);
        records.push_back(finding == SongIdentity::Finding::LeftOut ? record : kept);
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (answers[i].finding != SongIdentity::Finding::LeftOut)
            continue;
        records[i] = records[i] != 0 ? records[i] : kept;
        m_outcome.leftOut.push_back({files[i], records[i]});
    }
    for (const std::size_t place : placeOf)
        m_outcome.records[*first++] = records[place];
}

std::int32_t FoundSongs::Append(const SongFile& file) {
    const std::int32_t record = m_catalogue.OnSongFound(file.folder, file.name);
    m_catalogue.Memory().TakeSize(record, file.size);
    ++m_outcome.added;
    return record;
}

void FoundSongs::MoveTo(std::int32_t record, const SongFile& file) {
    m_catalogue.Mp3Info(clsMain::kFolder, record, file.folder);
    m_catalogue.Mp3Info(clsMain::kFileName, record, file.name);
    m_catalogue.Mp3Info(clsMain::kPresence, record, "1");
    m_catalogue.Memory().BringBack(record);
    m_catalogue.Memory().TakeSize(record, file.size);
    m_seen[static_cast<std::size_t>(record)] = true;
    ++m_outcome.cameBack;
}

bool FoundSongs::IsThere(std::int32_t record) {
    const auto at = static_cast<std::size_t>(record);
    if (at >= m_seen.size() || m_seen[at])
        return true;
    const std::string path = m_catalogue.SongPath(record);
    return !RootOfPath(path).empty() &&
           m_catalogue.Drives().DriveOf(path) != SongDrives::Finding::Away &&
           FileExists(m_environment.disk, path);
}

}  // namespace tobbin
