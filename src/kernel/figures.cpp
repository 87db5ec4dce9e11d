#include "kernel/figures.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace {

constexpr int significantDigits = 6;
constexpr int lowestFixedExponent = -4;  // below it, exponent notation is the shorter
constexpr int mostDigitsOfADouble = 1100;

/// A positive number as decimal digits without a point: 0.d1d2d3... times 10 to the power `pointAt`.
struct cDecimal {
    std::string digits;
    int pointAt = 0;
};

/// All digits of `value`: every double has a finite decimal expansion.
cDecimal exactDecimal(double value) {
    std::string text(mostDigitsOfADouble + std::size_t{16}, '\0');  // point, exponent
    const auto printed = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific,
                                       mostDigitsOfADouble);
    const std::string_view view(text.data(), printed.ptr);
    const std::size_t exponentAt = view.find('e');
    cDecimal decimal{std::string(view.substr(0, exponentAt)), std::stoi(std::string(view.substr(exponentAt + 1))) + 1};
    decimal.digits.erase(1, 1);  // the point
    return decimal;
}

/// Keeps the first `count` digits, halves rounded up. A negative `count` leaves nothing.
void roundTo(cDecimal& decimal, int count) {
    if (count < 0) {
        decimal.digits = "0";
        return;
    }
    const auto kept = static_cast<std::size_t>(count);
    if (kept >= decimal.digits.size()) return;

    const bool up = decimal.digits[kept] >= '5';
    decimal.digits.resize(kept);
    if (!up) return;
    std::size_t place = kept;
    while (place > 0 && decimal.digits[place - 1] == '9') decimal.digits[--place] = '0';
    if (place > 0) {
        ++decimal.digits[place - 1];
    } else {
        decimal.digits.insert(0, 1, '1');
        ++decimal.pointAt;
    }
}

/// Fixed notation with as many decimals as asked for, from digits that may end before or behind the point.
std::string inFixed(const cDecimal& decimal, int decimals) {
    std::string digits = decimal.digits;
    int pointAt = decimal.pointAt;
    if (pointAt <= 0) {
        digits.insert(0, static_cast<std::size_t>(1 - pointAt), '0');
        pointAt = 1;
    }
    digits.resize(static_cast<std::size_t>(pointAt) + static_cast<std::size_t>(decimals), '0');
    if (decimals > 0) digits.insert(static_cast<std::size_t>(pointAt), 1, '.');
    return digits;
}

void dropTrailingZeros(std::string& digits) { digits.erase(digits.find_last_not_of('0') + 1); }

std::string inExponentForm(const cDecimal& decimal) {
    std::string text = decimal.digits.substr(0, 1);
    if (decimal.digits.size() > 1) text += '.' + decimal.digits.substr(1);
    const int exponent = decimal.pointAt - 1;
    const std::string size = std::to_string(std::abs(exponent));
    return text + (exponent < 0 ? "e-" : "e+") + (size.size() < 2 ? "0" : "") + size;
}

/// The forms that need no digits, and the sign: `print` gets the magnitude of all others.
template <typename cPrint>
std::string withSign(double value, cPrint print) {
    if (std::isnan(value)) return "nan";
    if (value == 0.0) return print(0.0);
    const std::string sign = value < 0.0 ? "-" : "";
    return sign + (std::isinf(value) ? "inf" : print(std::fabs(value)));
}

std::string fixedMagnitude(double value) {
    constexpr int decimals = 2;
    cDecimal decimal = exactDecimal(value);
    roundTo(decimal, decimal.pointAt + decimals);
    return inFixed(decimal, decimals);
}

std::string generalMagnitude(double value) {
    if (value == 0.0) return "0";
    cDecimal decimal = exactDecimal(value);
    roundTo(decimal, significantDigits);
    dropTrailingZeros(decimal.digits);
    const int exponent = decimal.pointAt - 1;
    if (exponent < lowestFixedExponent || exponent >= significantDigits) return inExponentForm(decimal);
    const int decimals = static_cast<int>(decimal.digits.size()) - decimal.pointAt;
    return inFixed(decimal, decimals > 0 ? decimals : 0);
}

}  // namespace

std::string fixedFigure(double value) { return withSign(value, fixedMagnitude); }

std::string generalFigure(double value) { return withSign(value, generalMagnitude); }
