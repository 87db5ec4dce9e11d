#include "kernel/figures.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double tiniest = std::numeric_limits<double>::denorm_min();

struct cFigureCase {
    double value;
    const char* text;
};

// ---- two decimals

class cFixedFigureTest : public ::testing::TestWithParam<cFigureCase> {};

TEST_P(cFixedFigureTest, hasTwoDecimals) { EXPECT_EQ(fixedFigure(GetParam().value), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(plain, cFixedFigureTest,
                         ::testing::Values(cFigureCase{0.0, "0.00"}, cFigureCase{1.0, "1.00"},
                                           cFigureCase{-1.0, "-1.00"}, cFigureCase{12.3456, "12.35"},
                                           cFigureCase{-12.3456, "-12.35"}, cFigureCase{0.1, "0.10"},
                                           cFigureCase{0.01, "0.01"}, cFigureCase{0.099, "0.10"},
                                           cFigureCase{99.999, "100.00"}, cFigureCase{9.994, "9.99"},
                                           cFigureCase{1e6, "1000000.00"}, cFigureCase{1e-9, "0.00"}));

INSTANTIATE_TEST_SUITE_P(exactTies, cFixedFigureTest,
                         ::testing::Values(cFigureCase{0.125, "0.13"}, cFigureCase{0.375, "0.38"},
                                           cFigureCase{0.625, "0.63"}, cFigureCase{0.875, "0.88"},
                                           cFigureCase{-0.125, "-0.13"}, cFigureCase{-0.375, "-0.38"},
                                           cFigureCase{1.125, "1.13"}, cFigureCase{9.875, "9.88"},
                                           cFigureCase{99.875, "99.88"}, cFigureCase{4194304.125, "4194304.13"}));

// What looks like a tie in decimals lies on one side of it as a double.
INSTANTIATE_TEST_SUITE_P(nearTies, cFixedFigureTest,
                         ::testing::Values(cFigureCase{0.005, "0.01"}, cFigureCase{0.015, "0.01"},
                                           cFigureCase{1.005, "1.00"}, cFigureCase{2.675, "2.67"},
                                           cFigureCase{std::nextafter(0.125, 0.0), "0.12"},
                                           cFigureCase{std::nextafter(0.125, 1.0), "0.13"},
                                           cFigureCase{0.0049999, "0.00"}, cFigureCase{0.995, "0.99"},
                                           cFigureCase{0.9951, "1.00"}));

INSTANTIATE_TEST_SUITE_P(signs, cFixedFigureTest,
                         ::testing::Values(cFigureCase{-0.0, "0.00"},     // zero has no sign
                                           cFigureCase{-0.001, "-0.00"},  // this isn't zero
                                           cFigureCase{notANumber, "nan"}, cFigureCase{-notANumber, "nan"},
                                           cFigureCase{infinity, "inf"}, cFigureCase{-infinity, "-inf"}));

INSTANTIATE_TEST_SUITE_P(extremes, cFixedFigureTest,
                         ::testing::Values(cFigureCase{1e22, "10000000000000000000000.00"},
                                           cFigureCase{tiniest, "0.00"}, cFigureCase{-tiniest, "-0.00"},
                                           cFigureCase{std::numeric_limits<double>::min(), "0.00"}));

TEST(cFixedFigureExtremeTest, theLargestDoubleHasAllItsDigits) {
    const std::string text = fixedFigure(largest);

    EXPECT_EQ(text.size(), 309U + 3U);
    EXPECT_TRUE(text.starts_with("179769313486231570814527423731704356798070567525844996598917476803157260780028"));
    EXPECT_TRUE(text.ends_with("58368.00"));
}

// ---- six significant digits

class cGeneralFigureTest : public ::testing::TestWithParam<cFigureCase> {};

TEST_P(cGeneralFigureTest, hasSixSignificantDigits) { EXPECT_EQ(generalFigure(GetParam().value), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(plain, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{0.0, "0"}, cFigureCase{1.0, "1"}, cFigureCase{-1.0, "-1"},
                                           cFigureCase{10.0, "10"}, cFigureCase{12.5, "12.5"},
                                           cFigureCase{-12.5, "-12.5"}, cFigureCase{0.1, "0.1"},
                                           cFigureCase{100000.0, "100000"}, cFigureCase{123456.0, "123456"},
                                           cFigureCase{120000.0, "120000"}, cFigureCase{3.14159265, "3.14159"},
                                           cFigureCase{2.0 / 3.0, "0.666667"}, cFigureCase{100.5, "100.5"},
                                           cFigureCase{1.0 / 7.0, "0.142857"}));

INSTANTIATE_TEST_SUITE_P(exponents, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{1e6, "1e+06"}, cFigureCase{1234567.0, "1.23457e+06"},
                                           cFigureCase{-1e6, "-1e+06"}, cFigureCase{1.5e10, "1.5e+10"},
                                           cFigureCase{1e99, "1e+99"}, cFigureCase{1e100, "1e+100"},
                                           cFigureCase{0.0001, "0.0001"}, cFigureCase{0.00012345678, "0.000123457"},
                                           cFigureCase{0.00001, "1e-05"}, cFigureCase{2.5e-5, "2.5e-05"},
                                           cFigureCase{-2.5e-5, "-2.5e-05"}, cFigureCase{1.23456789e-7, "1.23457e-07"},
                                           cFigureCase{1e-100, "1e-100"}));

// Rounding can carry a figure over the border between the two notations.
INSTANTIATE_TEST_SUITE_P(borders, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{999999.0, "999999"}, cFigureCase{999999.4, "999999"},
                                           cFigureCase{999999.6, "1e+06"}, cFigureCase{99999.96, "100000"},
                                           cFigureCase{0.00009999996, "0.0001"},
                                           cFigureCase{0.0000999999, "9.99999e-05"}, cFigureCase{0.9999996, "1"},
                                           cFigureCase{9.999996, "10"}));

INSTANTIATE_TEST_SUITE_P(exactTies, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{100000.5, "100001"}, cFigureCase{100001.5, "100002"},
                                           cFigureCase{-100000.5, "-100001"}, cFigureCase{999999.5, "1e+06"},
                                           cFigureCase{1000005.0, "1.00001e+06"}, cFigureCase{1234565.0, "1.23457e+06"},
                                           cFigureCase{1234575.0, "1.23458e+06"}, cFigureCase{10000.25, "10000.3"},
                                           cFigureCase{1000.125, "1000.13"}, cFigureCase{0.001953125, "0.00195313"},
                                           cFigureCase{0.0009765625, "0.000976563"},
                                           cFigureCase{0.005859375, "0.00585938"}));

INSTANTIATE_TEST_SUITE_P(signs, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{-0.0, "0"}, cFigureCase{notANumber, "nan"},
                                           cFigureCase{-notANumber, "nan"}, cFigureCase{infinity, "inf"},
                                           cFigureCase{-infinity, "-inf"}));

INSTANTIATE_TEST_SUITE_P(extremes, cGeneralFigureTest,
                         ::testing::Values(cFigureCase{largest, "1.79769e+308"}, cFigureCase{-largest, "-1.79769e+308"},
                                           cFigureCase{std::numeric_limits<double>::min(), "2.22507e-308"},
                                           cFigureCase{tiniest, "4.94066e-324"}));

// ---- against the C library, which differs in ties alone

std::string printed(const char* format, double value) {
    std::array<char, 400> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, value);
    return buffer.data();
}

/// Numbers of every magnitude whose last bit is set: none of them is a tie, as that would need zeros there. But from
/// 2^49 on to 2^50 that bit is an eighth, and each number a tie of two decimals.
class cFigureSweepTest : public ::testing::Test {
protected:
    double nextOfAnyMagnitude() {
        const double value = std::bit_cast<double>(generator() | 1U);
        return std::isfinite(value) && std::ilogb(value) != 49 ? value : nextOfAnyMagnitude();
    }
    double nextAroundOne() {
        const auto exponent = static_cast<int>(generator() % 61) - 30;
        const double value = std::ldexp(1.0 + static_cast<double>((generator() >> 12) | 1U) * 0x1p-52, exponent);
        return generator() % 2 == 0 ? value : -value;
    }

    std::mt19937_64 generator{20240229};
};

TEST_F(cFigureSweepTest, generalFiguresAreThoseOfTheCLibrary) {
    for (int i = 0; i < 20000; ++i) {
        const double value = i % 2 == 0 ? nextOfAnyMagnitude() : nextAroundOne();
        ASSERT_EQ(generalFigure(value), printed("%g", value)) << printed("%a", value);
    }
}

TEST_F(cFigureSweepTest, fixedFiguresAreThoseOfTheCLibrary) {
    for (int i = 0; i < 20000; ++i) {
        const double value = i % 2 == 0 ? nextOfAnyMagnitude() : nextAroundOne();
        ASSERT_EQ(fixedFigure(value), printed("%.2f", value)) << printed("%a", value);
    }
}

TEST_F(cFigureSweepTest, exactTiesAreRoundedAwayFromZero) {
    for (int i = 0; i < 2000; ++i) {
        const auto eighths = static_cast<std::int64_t>(generator() % 1000000) * 8 + 1;  // ends in .125
        const double tie = static_cast<double>(eighths) / 8.0;
        const std::string whole = std::to_string(eighths / 8);

        ASSERT_EQ(fixedFigure(tie), whole + ".13");
        ASSERT_EQ(fixedFigure(-tie), "-" + whole + ".13");
    }
}

}  // namespace
