#include "jukebox/GroupPlaces.h"

#include <string_view>
#include <utility>

#include "jukebox/SpecialFolders.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

// Whether the number that a text begins with is other than 0; a text without one counts as 0.
bool BeginsWithNumberOtherThanZero(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    bool seenPoint = false;
    for (const char c : text) {
        if (c >= '1' && c <= '9')
            return true;
        if (c == '.' && !std::exchange(seenPoint, true))
            continue;
        if (c != '0')
            break;
    }
    return false;
}

// The decade folder for a year: its third character alone decides. Nothing for "1" and for what is
// no digit.
std::optional<std::string> MaybeDecadeText(std::string_view year) {
    char32_t third = 0;
    for (int i = 0; i < 3; ++i) {
        if (year.empty())
            return std::nullopt;
        TakeCodePoint(year, third);
    }
    if (third < U'0' || third > U'9' || third == U'1')
        return std::nullopt;
    return std::string(1, static_cast<char>(third)) + "0's";
}

}  // namespace

GroupPlaces::GroupPlaces(const Jukebox& jukebox, const SystemText& text,
                         const GroupFiling::AddChild& addChild) {
    const auto find = [&](std::optional<GroupFiling>& filing, const char* name,
                          GroupFiling::Match match) {
        Folder* const group = jukebox.MaybeFind(name);
        if (group == nullptr)
            return;
        m_groups.push_back(group);
        filing.emplace(*group, match, text, addChild);
    };
    find(m_artists, kArtist, GroupFiling::Match::BeginsWith);
    find(m_years, kYear, GroupFiling::Match::BeginsWith);
    find(m_genres, kGenre, GroupFiling::Match::Equal);
    const Folder* const decades = m_years ? jukebox.MaybeFind(kDecades) : nullptr;
    if (decades == nullptr)
        return;
    // A decade folder that was moved from under "Decades" still is one.
    for (const std::string& name : DecadeTexts()) {
        Folder* const child = decades->MaybeChild(name);
        m_decades[name] = child != nullptr ? child : jukebox.MaybeFind(name);
    }
}

std::vector<Folder*> GroupPlaces::For(const TagsRead& tags, const FilingTag& tag) {
    std::vector<Folder*> folders;
    const std::string artist(tags.texts.Text(tag.artist));
    if (m_artists && !artist.empty())
        folders.push_back(&m_artists->FolderFor(artist));
    const std::string year(tags.texts.Text(tag.year));
    if (m_years && BeginsWithNumberOtherThanZero(year)) {
        folders.push_back(&m_years->FolderFor(year));
        const auto text = MaybeDecadeText(year);
        const auto decade = text ? m_decades.find(*text) : m_decades.end();
        if (decade != m_decades.end() && decade->second != nullptr)
            folders.push_back(decade->second);
    }
    const std::string genre(tags.texts.Text(tag.genre));
    if (m_genres && !genre.empty() && genre != "None")
        folders.push_back(&m_genres->FolderFor(genre));
    return folders;
}

std::vector<Folder*> GroupPlaces::All() const {
    std::vector<Folder*> folders;
    for (const Folder* const group : m_groups)
        for (std::size_t i = 0; i < group->ChildCount(); ++i)
            folders.push_back(&group->Child(i));
    for (const auto& [text, decade] : m_decades)
        if (decade != nullptr)
            folders.push_back(decade);
    return folders;
}

}  // namespace tobbin
