#include "jukebox/AutomaticGroups.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "jukebox/GroupPlaces.h"
#include "jukebox/SpecialFolders.h"
#include "util/Convert.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

constexpr std::int16_t kLeaveNewAlone = 1;
constexpr std::size_t kSongsForAText = 100;  // of the progress

// Gathers songs by folder, so that each folder is changed once.
class SongsToAdd {
 public:
    void Add(Folder& folder, const SongItem& song) {
        const auto [place, isNew] = m_places.try_emplace(&folder, m_folders.size());
        if (isNew)
            m_folders.push_back({&folder, {}});
        m_folders[place->second].second.push_back(song);
    }
    void AppendTo(Jukebox& jukebox, EventPump& events) const {
        for (const auto& [folder, songs] : m_folders) {
            jukebox.AppendSongs(*folder, songs);
            events.PumpWithoutInput();
        }
    }

 private:
    std::vector<std::pair<Folder*, std::vector<SongItem>>> m_folders;
    std::unordered_map<const Folder*, std::size_t> m_places;
};

// A tag's text as a folder's text: brackets are not part of it.
std::string FolderTextOf(std::string tagText) {
    AutomaticGroups::CleanBrackets(tagText);
    return tagText;
}

}  // namespace

AutomaticGroups::AutomaticGroups(Environment& environment, clsMain& catalogue,
                                 OpenJukeboxes& jukeboxes)
    : m_environment(environment), m_catalogue(catalogue), m_jukeboxes(jukeboxes) {}

void AutomaticGroups::CleanBrackets(std::string& text) {
    std::ranges::replace_if(
        text, [](char c) { return c == ']' || c == '['; }, ' ');
    text = std::string(TrimBlanks(text));
}

void AutomaticGroups::SelectSongsNotInFolder(const Folder& folder,
                                             std::vector<bool>& selection) const {
    const std::int32_t last = m_catalogue.UBoundOfMp3Array();
    selection.assign(static_cast<std::size_t>(last) + 1, false);
    for (std::int32_t record = 1; record <= last; ++record)
        selection[static_cast<std::size_t>(record)] = m_catalogue.IsPresent(record);
    for (const SongItem& song : folder.Songs()) {
        if (song.recordNumber >= 1 && song.recordNumber <= last)
            selection[static_cast<std::size_t>(song.recordNumber)] = false;
    }
}

AutomaticGroups::Range AutomaticGroups::NewRecordRange(const Jukebox& jukebox) const {
    const Folder* const allSongs = jukebox.MaybeFind(kAllSongs);
    if (allSongs == nullptr || allSongs->Level() != 0)
        return {};
    std::int32_t highest = 0;
    for (const SongItem& song : allSongs->Songs())
        highest = std::max(highest, song.recordNumber);
    return {highest + 1, m_catalogue.UBoundOfMp3Array()};
}

void AutomaticGroups::BuildAutomaticGroups(std::int16_t mode, bool catalogueLoaded,
                                           const std::string& caption) {
    if (!catalogueLoaded)
        m_catalogue.Reload();
    std::vector<Jukebox*> picked;
    for (std::size_t i = m_jukeboxes.Count(); i-- > 0;) {
        if (caption.empty() || m_jukeboxes.At(i).DaCaption() == caption)
            picked.push_back(&m_jukeboxes.At(i));
    }
    const bool wasBuilding = std::exchange(m_building, true);
    TagsRead tags;
    for (Jukebox* const jukebox : picked) {
        if (!IsOpen(*jukebox))
            continue;
        jukebox->MarkAsFilled();
        const auto topLevelAllSongs = [&] {
            Folder* const folder = jukebox->MaybeFind(kAllSongs);
            return folder != nullptr && folder->Level() == 0 ? folder : nullptr;
        };
        if (topLevelAllSongs() == nullptr)
            continue;
        std::vector<bool> selection;
        SelectSongsNotInFolder(*topLevelAllSongs(), selection);
        AddUnfiled(*topLevelAllSongs(), selection);
        const bool stopped = !ReadTags(selection, tags);
        // Events went through: nothing that was found before may be trusted.
        if (Folder* const allSongs = IsOpen(*jukebox) ? topLevelAllSongs() : nullptr)
            Fill(*jukebox, *allSongs, mode != kLeaveNewAlone, tags);
        if (stopped)  // What was read is filed; the next run goes on with the others.
            break;
    }
    m_building = wasBuilding;
}

std::optional<FillingAnew> AutomaticGroups::FillAnew(Jukebox& jukebox) {
    m_building = true;
    std::vector<bool> selection;
    SelectSongsNotInFolder(Folder(), selection);
    TagsRead tags;
    ReadTags(selection, tags);
    m_building = false;
    return IsOpen(jukebox)
               ? std::make_optional<FillingAnew>(m_environment, m_catalogue, jukebox, tags)
               : std::nullopt;
}

std::string AutomaticGroups::StoppedText(const std::string& command) const {
    if (m_lastRead.done == m_lastRead.all)
        return {};
    return "Stopped after the tags of " + GroupedNumber(m_lastRead.done) + " of " +
           Counted(m_lastRead.all, "song") + "; " + command + " reads the rest.";
}

void AutomaticGroups::FileNewSongs() {
    if (m_building)
        return;
    m_takesInput = false;
    BuildAutomaticGroups(0, true, "");
    m_takesInput = true;
}

void AutomaticGroups::ShowProgressIn(Progress& progress, const std::function<void()>& work) {
    Progress* const other = std::exchange(m_progress, &progress);
    work();
    m_progress = other;
}

bool AutomaticGroups::IsOpen(const Jukebox& jukebox) const {
    for (std::size_t i = 0; i < m_jukeboxes.Count(); ++i)
        if (&m_jukeboxes.At(i) == &jukebox)
            return true;
    return false;
}

// Selects the songs of "All Songs" that still want their groups as well.
void AutomaticGroups::AddUnfiled(const Folder& allSongs, std::vector<bool>& selection) const {
    for (const SongItem& song : allSongs.Songs())
        if (song.IsUnfiled() && song.recordNumber >= 1 &&
            song.recordNumber <= m_catalogue.UBoundOfMp3Array() &&
            m_catalogue.IsPresent(song.recordNumber))
            selection[static_cast<std::size_t>(song.recordNumber)] = true;
}

// Returns whether all were asked for.
bool AutomaticGroups::ReadTags(const std::vector<bool>& selection, TagsRead& tags) {
    std::vector<std::int32_t> records;
    for (std::int32_t record = 1; record < static_cast<std::int32_t>(selection.size()); ++record)
        if (selection[static_cast<std::size_t>(record)] && !tags.byRecord.contains(record))
            records.push_back(record);
    m_lastRead = {0, records.size()};
    std::size_t named = 0;
    const auto nextPath = [&](std::string& path) {
        if (named == records.size())
            return false;
        const std::int32_t record = records[named++];
        path = record <= m_catalogue.UBoundOfMp3Array() ? m_catalogue.SongPath(record) : "";
        if (m_catalogue.Drives().MaybeDriveOf(path) == SongDrives::Finding::Away)
            path.clear();
        return true;
    };
    const auto threads =
        static_cast<unsigned>(std::min<std::size_t>(m_environment.diskReaders, records.size()));
    auto readers = std::make_unique<TagReaders>(m_environment.disk, m_environment.text,
                                                TagFields::ForFiling(), threads, nextPath);
    const auto isToStop = [&] {
        if (m_takesInput)
            m_environment.events.LetEventsThrough();
        else
            m_environment.events.PumpWithoutInput();
        if (m_progress == nullptr || !m_progress->StopRequested())
            return false;
        // A thread may wait for its disk much longer than the person should for the windows.
        readers->Stop();
        m_stopped.push_back(std::move(readers));
        return true;
    };
    TagTexts texts;
    for (std::size_t taken = 0; taken < records.size(); ++taken) {
        if (m_progress != nullptr && taken % kSongsForAText == 0)
            m_progress->ShowSteps("Reading the tags of new songs: " + GroupedNumber(taken + 1) +
                                      " of " + GroupedNumber(records.size()),
                                  {taken + 1, records.size()});
        while (!readers->WaitForNext())
            if (isToStop())
                return false;
        m_lastRead.done = taken + 1;
        FilingTag& tag = tags.byRecord[records[taken]];
        tag.unread = !readers->Take(texts);
        if (!tag.unread) {
            tag.artist = tags.texts.Add(FolderTextOf(texts[TagField::Artist]));
            tag.year = tags.texts.Add(FolderTextOf(texts[TagField::Year]));
            tag.genre = tags.texts.Add(texts[TagField::Genre]);
        }
        if (isToStop())
            return false;
    }
    return true;
}

void AutomaticGroups::Fill(Jukebox& jukebox, Folder& allSongs, bool fillNew, const TagsRead& tags) {
    jukebox.TellFillingBegins();
    Folder* const maybeNew = fillNew ? jukebox.MaybeFind(kNew) : nullptr;
    const bool newIsTopLevel = maybeNew != nullptr && maybeNew->Level() == 0;
    GroupPlaces places(jukebox, m_environment.text, [&](Folder& group, const std::string& text) {
        return &jukebox.AddChild(&group, text);
    });
    SongsToAdd additions;
    const auto file = [&](const SongItem& song, const FilingTag& tag) {
        for (Folder* const folder : places.For(tags, tag))
            additions.Add(*folder, song);
    };
    std::vector<bool> selection;
    SelectSongsNotInFolder(allSongs, selection);

    // Songs that came in earlier, and can be read only now.
    std::vector<SongItem> known = allSongs.Songs();
    bool filedLater = false;
    for (SongItem& song : known) {
        const auto tag = tags.byRecord.find(song.recordNumber);
        if (!song.IsUnfiled() || tag == tags.byRecord.end() || tag->second.unread)
            continue;
        song.selectedImage = song.image;
        file(song, tag->second);
        filedLater = true;
    }
    if (filedLater)
        jukebox.SetSongs(allSongs, std::move(known));

    for (std::int32_t record = 1; record < static_cast<std::int32_t>(selection.size()); ++record) {
        const auto tag = tags.byRecord.find(record);
        if (!selection[static_cast<std::size_t>(record)] || tag == tags.byRecord.end())
            continue;
        m_environment.events.PumpWithoutInput();
        const std::int32_t number =
            MaybeToLong(m_catalogue.Mp3Info(clsMain::kNumber, record)).value_or(0);
        const SongItem song =
            jukebox.MakeItem(m_catalogue.Mp3Info(clsMain::kFileName, record),
                             number >= 1 ? number : record, m_catalogue.Rank(record));
        SongItem inAllSongs = song;
        if (tag->second.unread)
            inAllSongs.selectedImage = SongItem::kUnfiled;
        additions.Add(allSongs, inAllSongs);
        if (newIsTopLevel)
            additions.Add(*maybeNew, song);
        file(song, tag->second);
    }
    additions.AppendTo(jukebox, m_environment.events);
    jukebox.TellFillingEnds();
}

}  // namespace tobbin
