#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tobbin {

// What the program asks of the system about text: its ANSI code page and its rules for capital and
// small letters. All texts are UTF-8 unless they are called bytes. A file name that is not valid
// UTF-16 on disk travels as generalized UTF-8 (each lone surrogate as its three bytes), so that no
// name is ever damaged.
class SystemText {
 public:
    virtual ~SystemText() = default;

    // The text that bytes of the ANSI code page stand for. In a single-byte page every byte value
    // is one character, the undefined bytes of code page 1252 included.
    virtual std::string FromAnsi(std::string_view bytes) const = 0;

    // The bytes of the ANSI code page for a text; nothing when the page lacks one of its
    // characters (no best fit, no replacement).
    virtual std::optional<std::string> MaybeToAnsi(std::string_view text) const = 0;

    // The same in the page by which other programs take texts; it may be UTF-8.
    virtual std::optional<std::string> MaybeToSystemPage(std::string_view text) const {
        return MaybeToAnsi(text);
    }

    // Lower or upper case by the system's own rules, one character for one character.
    virtual std::string ToLower(std::string_view text) const = 0;
    virtual std::string ToUpper(std::string_view text) const = 0;
};

}  // namespace tobbin
