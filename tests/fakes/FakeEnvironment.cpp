#include "fakes/FakeEnvironment.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "util/PlayerMessages.h"
#include "util/SingleBytePage.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

// Code page 1252 from 80 to 9F; every other byte is the character of its own number.
const SingleBytePage& WesternPage() {
    static constexpr std::array<char16_t, 32> kFrom80 = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    static const SingleBytePage page = [] {
        SingleBytePage::Table characters = {};
        std::iota(characters.begin(), characters.end(), char16_t{0});
        std::copy(kFrom80.begin(), kFrom80.end(), characters.begin() + 0x80);
        return SingleBytePage(characters);
    }();
    return page;
}

template <typename Map>
std::string MapCharacters(std::string_view text, Map map) {
    std::string result;
    while (!text.empty()) {
        char32_t c = 0;
        if (!TakeCodePoint(text, c))
            c = 0xFFFD;
        AppendUtf8(result, map(c));
    }
    return result;
}

// Letter case beyond ASCII as far as the tests need it: Latin-1, Greek and Cyrillic, whose small
// letters lie 32 above the capital ones.
bool IsCapital(char32_t c) {
    return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
           (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F);
}

}  // namespace

std::string FakeText::FromAnsi(std::string_view bytes) const {
    return WesternPage().ToText(bytes);
}

std::optional<std::string> FakeText::MaybeToAnsi(std::string_view text) const {
    return WesternPage().MaybeToBytes(text);
}

std::string FakeText::ToLower(std::string_view text) const {
    return MapCharacters(text, [](char32_t c) { return IsCapital(c) ? c + 32 : c; });
}

std::string FakeText::ToUpper(std::string_view text) const {
    return MapCharacters(text,
                         [](char32_t c) { return c >= 32 && IsCapital(c - 32) ? c - 32 : c; });
}

std::uint32_t FakePlayerWindow::Registered(const wchar_t* name) {
    return name == std::wstring(kTrackNumberMessage) ? kTrackMessage : kPathMessage;
}

PlayerWindow::Handle FakePlayerWindow::Find() {
    if (findsBeforeItOpens > 0) {
        --findsBeforeItOpens;
        return 0;
    }
    return isOpen ? kHandle : 0;
}

PlayerReply FakePlayerWindow::Take(Handle window, std::string line, std::int32_t value, int limit) {
    limits.push_back(limit);
    onMessage(limit);
    if (!isOpen || window != kHandle)
        return {PlayerReply::Outcome::NoWindow, 0};
    if (hasMoreRights)
        return {PlayerReply::Outcome::Denied, 0};
    if (hangsAfter == static_cast<int>(log.size())) {
        hangs = true;
        hangsAfter = -1;
    }
    if (hangs)
        return {PlayerReply::Outcome::TimedOut, 0};
    if (isOurs || !line.starts_with(std::to_string(kTrackMessage)))
        log.push_back(std::move(line));
    return {PlayerReply::Outcome::Replied, value};
}

PlayerReply FakePlayerWindow::Send(Handle window, std::uint32_t message, std::int32_t wParam,
                                   std::int32_t lParam, int limitMilliseconds) {
    const auto number = [](auto value) { return std::to_string(value); };
    std::int32_t value = 0;
    if (message == 1024 && lParam == 0)
        value = version;
    else if (message == 1024 && lParam == 104)
        value = status;
    else if (message == 1024 && lParam == 105)
        value = wParam == 1 ? lengthSeconds : positionMilliseconds;
    else if (message == kTrackMessage && isOurs)
        value = wParam == 0 ? track : wParam == 1 ? tracks : 1;
    return Take(window, number(message) + " " + number(wParam) + " " + number(lParam), value,
                limitMilliseconds);
}

PlayerReply FakePlayerWindow::SendData(Handle window, std::uint32_t identifier,
                                       std::string_view bytes, int limitMilliseconds) {
    std::string line = "copy " + std::to_string(identifier) + " " + std::string(bytes);
    std::replace(line.begin(), line.end(), '\0', '|');
    return Take(window, std::move(line), 1, limitMilliseconds);
}

}  // namespace tobbin
