#pragma once

#include <string>
#include <string_view>

namespace tobbin {

// UTF-16 and UTF-8 in their generalized forms (as in the WTF-8 encoding): a lone surrogate, which
// a Windows file name may hold, is kept as its own three bytes, so both directions lose nothing.

// UTF-8 of UTF-16 code units.
std::string Utf16ToUtf8(std::u16string_view units);

// UTF-16 code units of UTF-8. A byte that cannot stand where it does becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view text);

// Whether the bytes are well-formed UTF-8, lone surrogates allowed.
bool IsGeneralisedUtf8(std::string_view bytes);

// Appends the UTF-8 bytes of one code point (0 to 10FFFF, surrogates allowed).
void AppendUtf8(std::string& text, char32_t codePoint);

// Takes one code point off the front of the text. Returns false, and takes one byte off, when the
// front is not well-formed. The text must not be empty.
bool TakeCodePoint(std::string_view& text, char32_t& codePoint);

}  // namespace tobbin
