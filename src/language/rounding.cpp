#include "language/rounding.h"

#include "language/numberText.h"

#include <charconv>
#include <cmath>
#include <limits>

double roundByText(double value) {
    if (!std::isfinite(value)) return value;

    const std::string text = fixedText(value);
    double result = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

std::int32_t truncateToInt32(double value) {
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<std::int32_t>(value) : std::numeric_limits<std::int32_t>::min();
}

std::int64_t truncateToInt64(double value) {
    constexpr double bound = 9223372036854775808.0;  // 2^63
    const bool fits = value >= -bound && value < bound;
    return fits ? static_cast<std::int64_t>(value) : std::numeric_limits<std::int64_t>::min();
}
