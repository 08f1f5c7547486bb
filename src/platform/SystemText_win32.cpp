#include "platform/SystemText_win32.h"

#include <windows.h>

#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr UINT kWestern = 1252;

std::wstring Decode(UINT codePage, std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0');  // never more code units than bytes
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), size)));
    return wide;
}

// A byte that the page leaves undefined is the character of its own number. The system gives some
// of them characters for private use instead.
char16_t CharacterOf(UINT codePage, unsigned byte) {
    const char narrow = static_cast<char>(byte);
    wchar_t wide = 0;
    const bool isPrivate =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) != 1 ||
        (wide >= 0xE000 && wide <= 0xF8FF);
    return static_cast<char16_t>(isPrivate ? byte : wide);
}

std::optional<SingleBytePage> MaybeTable(UINT codePage) {
    CPINFO info = {};
    if (!GetCPInfo(codePage, &info) || info.MaxCharSize != 1)
        return std::nullopt;
    SingleBytePage::Table characters = {};
    for (unsigned byte = 0; byte < characters.size(); ++byte)
        characters[byte] = CharacterOf(codePage, byte);
    return SingleBytePage(characters);
}

std::optional<std::string> MaybeEncode(UINT codePage, const std::wstring& wide) {
    if (wide.empty())
        return std::string();
    const int units = static_cast<int>(wide.size());
    std::string bytes(wide.size() * 4, '\0');
    BOOL replaced = FALSE;
    const int size =
        WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(), units, bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, &replaced);
    bytes.resize(static_cast<std::size_t>(size));
    if (size == 0 || replaced || Decode(codePage, bytes) != wide)
        return std::nullopt;
    return bytes;
}

std::string MapCase(std::string_view text, DWORD map) {
    const std::wstring wide = Wide(text);
    std::wstring mapped(wide.size(), L'\0');
    const int units = static_cast<int>(wide.size());
    if (LCMapStringEx(LOCALE_NAME_USER_DEFAULT, map, wide.data(), units, mapped.data(), units,
                      nullptr, nullptr, 0) != units)
        return std::string(text);
    return Utf8(mapped);
}

}  // namespace

unsigned WindowsText::SystemPage() {
    const UINT page = GetACP();
    return page == CP_UTF8 ? kWestern : page;
}

WindowsText::WindowsText(unsigned codePage) : m_codePage(codePage), m_table(MaybeTable(codePage)) {}

std::string WindowsText::FromAnsi(std::string_view bytes) const {
    return m_table ? m_table->ToText(bytes) : Utf8(Decode(m_codePage, bytes));
}

std::optional<std::string> WindowsText::MaybeToAnsi(std::string_view text) const {
    return m_table ? m_table->MaybeToBytes(text) : MaybeEncode(m_codePage, Wide(text));
}

std::optional<std::string> WindowsText::MaybeToSystemPage(std::string_view text) const {
    return GetACP() == CP_UTF8 ? std::optional(std::string(text)) : MaybeToAnsi(text);
}

std::string WindowsText::ToLower(std::string_view text) const {
    if (!IsAscii(text))
        return MapCase(text, LCMAP_LOWERCASE);
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

std::string WindowsText::ToUpper(std::string_view text) const {
    if (!IsAscii(text))
        return MapCase(text, LCMAP_UPPERCASE);
    std::string upper(text);
    for (char& c : upper)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    return upper;
}

}  // namespace tobbin
