#include "platform/DialogFont_win32.h"

#include <cstring>
#include <cwchar>

namespace tobbin {
namespace {

constexpr std::size_t kHeader = 26;   // bytes before the menu's name
constexpr std::size_t kFontHead = 6;  // the font's size, weight, slant and character set

std::size_t Aligned(std::size_t offset) {
    return (offset + 3) & ~std::size_t{3};
}

// Where the name, or the number behind FFFF, that begins at an offset ends.
std::size_t BehindName(const BYTE* bytes, std::size_t offset) {
    const auto* const name = reinterpret_cast<const wchar_t*>(bytes + offset);
    return offset + (*name == 0xFFFF ? 2 : std::wcslen(name) + 1) * sizeof(wchar_t);
}

}  // namespace

std::vector<DWORD> TemplateWithMessageFont(int resource) {
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC found = FindResourceW(program, MAKEINTRESOURCEW(resource), RT_DIALOG);
    if (found == nullptr)
        return {};
    const auto* const old = static_cast<const BYTE*>(LockResource(LoadResource(program, found)));
    const std::size_t size = SizeofResource(program, found);
    std::size_t font = kHeader;
    for (int name = 0; name < 3; ++name)  // menu, class, caption
        font = BehindName(old, font);
    const std::size_t controls = Aligned(BehindName(old, font + kFontHead));

    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, 96);
    const LOGFONTW& message = metrics.lfMessageFont;
    const std::size_t face = (std::wcslen(message.lfFaceName) + 1) * sizeof(wchar_t);
    const std::size_t newControls = Aligned(font + kFontHead + face);
    std::vector<DWORD> made(Aligned(newControls + size - controls) / sizeof(DWORD));
    auto* const bytes = reinterpret_cast<BYTE*>(made.data());
    std::memcpy(bytes, old, font);
    const WORD head[] = {static_cast<WORD>(MulDiv(std::abs(message.lfHeight), 72, 96)),
                         static_cast<WORD>(message.lfWeight),
                         MAKEWORD(message.lfItalic, message.lfCharSet)};
    std::memcpy(bytes + font, head, kFontHead);
    std::memcpy(bytes + font + kFontHead, message.lfFaceName, face);
    std::memcpy(bytes + newControls, old + controls, size - controls);
    return made;
}

}  // namespace tobbin
