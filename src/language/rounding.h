#pragma once

#include <cmath>
#include <cstdint>

/// The rounding contracts of the language: results of models depend on them to the last bit.

/// What is left of `value` after it was printed with "%f" and read back: six decimal places. NaN and infinities stay.
/// The plain way, over the text itself.
double roundByText(double value);

/// The same value as `roundByText`, to the last bit, worked out without a text wherever millionths are exact.
///
/// Let p be `value` times a million, rounded to a double, and n the whole number next to it, exact halves to even.
/// Below 2^51 every half is a double, so p lies on the same side of it as the exact product, and n is right. Only where
/// p is a half itself can the exact product lie beside it; the residue of the product decides. The decimal text of n
/// millionths reads back as the double nearest to them, and so does the division.
inline double roundThroughText(double value) {
    constexpr double million = 1e6;
    constexpr double border = 0x1p51 / million;
    constexpr double toWhole = 0x1.8p52;  // adding it leaves no digits behind the point
    if (!(std::fabs(value) < border)) return roundByText(value);

    const double scaled = value * million;
    double whole = (scaled + toWhole) - toWhole;
    if (std::fabs(scaled - whole) == 0.5) {
        const double residue = std::fma(value, million, -scaled);
        if (residue != 0.0) whole = residue > 0.0 ? std::ceil(scaled) : std::floor(scaled);
    }
    return std::copysign(whole / million, value);
}

/// `value` truncated toward zero; the type's minimum if that is out of range or `value` is not a number.
std::int32_t truncateToInt32(double value);

/// `value` truncated toward zero; the type's minimum if that is out of range or `value` is not a number.
std::int64_t truncateToInt64(double value);
