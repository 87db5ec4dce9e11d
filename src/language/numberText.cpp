#include "language/numberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <locale.h>
#include <stdlib.h>

namespace {

/// strtod follows the locale of the process, which a desktop toolkit sets to the user's; models always use a point.
double parseInCLocale(const char* text, char** end) {
    static const locale_t pointLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, end, pointLocale);
}

}  // namespace

std::string fixedText(double value, int decimals) {
    if (std::isnan(value)) return "nan";

    std::array<char, 512> buffer{};  // the largest double has 309 digits before the point
    const auto printed =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    return {buffer.data(), printed.ptr};
}

std::optional<double> parseNumber(const std::string& text) {
    char* end = nullptr;
    const double value = parseInCLocale(text.c_str(), &end);
    if (end == text.c_str() || end != text.c_str() + text.size()) return std::nullopt;
    return value;
}

double leadingNumber(const std::string& text) { return parseInCLocale(text.c_str(), nullptr); }

std::int32_t leadingInteger(const std::string& text) {
    return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 10));
}
