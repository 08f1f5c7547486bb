#include "util/Convert.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "util/Errors.h"
#include "util/Text.h"

namespace tobbin {
namespace {

enum class Outcome { Number, NotANumber, OutOfRange };

template <typename Whole>
Outcome Parse(std::string_view text, Whole& result) {
    text = TrimBlanks(text);
    if (text.starts_with('+'))
        text.remove_prefix(text.size() > 1 && text[1] != '-' ? 1 : 0);
    if (text.empty())
        return Outcome::NotANumber;
    const char* const end = text.data() + text.size();

    // Nearly every number is plain digits; the slower reading is for fractions and exponents.
    if (auto [stop, error] = std::from_chars(text.data(), end, result);
        error == std::errc() && stop == end)
        return Outcome::Number;

    const std::size_t firstDigit = text.front() == '-' ? 1 : 0;
    if (firstDigit == text.size() ||
        text.find_first_not_of("0123456789.", firstDigit) == firstDigit)
        return Outcome::NotANumber;  // Shuts out "inf" and "nan".
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument)
        return Outcome::NotANumber;
    value = RoundHalfToEven(value);
    if (error == std::errc::result_out_of_range ||
        value < static_cast<double>(std::numeric_limits<Whole>::min()) ||
        value > static_cast<double>(std::numeric_limits<Whole>::max()))
        return Outcome::OutOfRange;
    result = static_cast<Whole>(value);
    return Outcome::Number;
}

template <typename Whole>
Whole ParseOrRaise(std::string_view text) {
    Whole result = 0;
    switch (Parse(text, result)) {
        case Outcome::Number:
            break;
        case Outcome::NotANumber:
            throw TypeMismatchError();
        case Outcome::OutOfRange:
            throw OverflowError();
    }
    return result;
}

}  // namespace

std::int32_t ToLong(std::string_view text) {
    return ParseOrRaise<std::int32_t>(text);
}

std::int16_t ToInteger(std::string_view text) {
    if (EqualsIgnoringAsciiCase(TrimBlanks(text), "True"))
        return -1;
    if (EqualsIgnoringAsciiCase(TrimBlanks(text), "False"))
        return 0;
    return ParseOrRaise<std::int16_t>(text);
}

std::optional<std::int32_t> MaybeToLong(std::string_view text) {
    std::int32_t result = 0;
    if (Parse(text, result) != Outcome::Number)
        return std::nullopt;
    return result;
}

double RoundHalfToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0))
        return below + 1;
    return below;
}

}  // namespace tobbin
