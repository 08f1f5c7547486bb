#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tobbin {

// Text to number as the settings, the catalogue and the sorting want it: blanks around the number
// are passed over, a sign, a fraction and an exponent are understood, a fraction is rounded half
// to even.

// A signed 32-bit whole number. Raises TypeMismatchError for a text that is no number (the empty
// text included) and OverflowError for one out of range.
std::int32_t ToLong(std::string_view text);

// The same for 16 bits; "True" is -1 and "False" is 0, in any case of letters.
std::int16_t ToInteger(std::string_view text);

// ToLong without the errors: nothing where it would raise one.
std::optional<std::int32_t> MaybeToLong(std::string_view text);

// Rounds to the nearest whole number, a half to the even one.
double RoundHalfToEven(double value);

}  // namespace tobbin
