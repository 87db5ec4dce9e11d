#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>

/// Values at which rounding with a text and rounding without one could part, one function per kind. Each draws from
/// the generator that it is given, so the same seed gives the same values everywhere.
namespace roundingValues {

/// Where millionths stop being exact: values from here on are rounded over the text in any case.
inline constexpr double border = 0x1p51 / 1e6;

/// The double that is `steps` doubles above `value`, or below it if `steps` is negative.
inline double neighbour(double value, int steps) {
    const double end = std::copysign(std::numeric_limits<double>::infinity(), steps);
    for (int i = 0; i < std::abs(steps); ++i) value = std::nextafter(value, end);
    return value;
}

/// Any double at all; NaNs, infinities and values beyond the border are about half of them.
inline double anyBits(std::mt19937_64& numbers) { return std::bit_cast<double>(numbers()); }

/// Of either sign, and of every magnitude from 2^-31 to a little above the border.
inline double ofModels(std::mt19937_64& numbers) {
    const int exponent = static_cast<int>(numbers() % 64) - 30;
    return std::ldexp(static_cast<double>(static_cast<std::int64_t>(numbers())), exponent - 63);
}

/// An exact half of a millionth or the double beside it, below the border. m / 2^7 is 15625 m / 2 millionths, so each
/// odd m gives a half, and there are no other halves among the doubles.
inline double nearExactHalf(std::mt19937_64& numbers) {
    const std::int64_t odd = (static_cast<std::int64_t>(numbers()) >> (numbers() % 38 + 25)) | 1;
    return neighbour(static_cast<double>(odd) / 128.0, static_cast<int>(numbers() % 3) - 1);
}

/// Within two doubles of a half of a millionth that is a half in decimal notation only.
inline double nearDecimalHalf(std::mt19937_64& numbers) {
    const auto millionths = static_cast<double>(static_cast<std::int64_t>(numbers()) >> (numbers() % 50 + 12));
    return neighbour((millionths + 0.5) / 1e6, static_cast<int>(numbers() % 5) - 2);
}

/// Within a thousand doubles of the border, of either sign.
inline double nearBorder(std::mt19937_64& numbers) {
    const double value = neighbour(border, static_cast<int>(numbers() % 2001) - 1000);
    return numbers() % 2 == 0 ? value : -value;
}

/// Below a millionth, of either sign: one in four each a zero or nearly, a denormal, and within a hundred doubles of
/// half a millionth; else any magnitude down to the denormals.
inline double tiny(std::mt19937_64& numbers) {
    const std::uint64_t bits = numbers();
    const bool isNegative = numbers() % 2 == 0;
    const auto value = [&] {
        switch (numbers() % 4) {
            case 0: return neighbour(0.0, static_cast<int>(bits % 4));
            case 1: return std::bit_cast<double>(bits >> 12);
            case 2: return neighbour(5e-7, static_cast<int>(bits % 201) - 100);
            default: return std::bit_cast<double>(bits % std::bit_cast<std::uint64_t>(1e-6));
        }
    }();
    return isNegative ? -value : value;
}

}  // namespace roundingValues
