#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// Small text helpers. They look at bytes below 128 only, so they are safe on UTF-8 and on ANSI.

// Without the blanks (U+0020 only) at both ends.
std::string_view TrimBlanks(std::string_view text);

// Whether two texts are equal when the letters A to Z count as a to z.
bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b);

bool EndsWithIgnoringAsciiCase(std::string_view text, std::string_view ending);

// Whether every byte is below 128.
bool IsAscii(std::string_view text);

// The lines of a text; CR LF, LF and CR end a line. A text that ends with a line end has no empty
// line behind it.
std::vector<std::string_view> SplitLines(std::string_view text);

// Whether a text matches a pattern in which "*" stands for any run of characters and "?" for any
// one character (one code point). Case counts.
bool MatchesPattern(std::string_view text, std::string_view pattern);

// A whole number with a comma between each three digits: "12,345".
std::string GroupedNumber(std::size_t number);

// A number of things: "1 song", "12,345 songs".
std::string Counted(std::size_t number, std::string_view noun);

// The sentences that are not empty, with two blanks between them.
std::string Sentences(std::initializer_list<std::string_view> sentences);

// Minutes and seconds: "03:05"; "--:--" for a negative time.
std::string TimeText(std::int64_t milliseconds);

// The folder of a path, trimmed of blanks, up to and including its last "\"; empty when there is
// none.
std::string FolderOfPath(std::string_view path);

// The part of a path behind its last "\".
std::string FileNameOfPath(std::string_view path);

// The drive or network share that a full path begins with: "C:\" (the letter as a capital) or
// "\\server\share\". Empty for a text that begins with neither and so is no full path.
std::string RootOfPath(std::string_view path);

// The folder with a "\" appended when it does not end in one.
std::string FolderWithSeparator(std::string_view folder);

}  // namespace tobbin
