#include "language/rounding.h"

#include "support/roundingValues.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t smallestInt32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t smallestInt64 = std::numeric_limits<std::int64_t>::min();

struct cRounded {
    double value;
    double result;
};

void PrintTo(const cRounded& row, std::ostream* stream) { *stream << row.value; }

class cRoundThroughTextTest : public ::testing::TestWithParam<cRounded> {};

TEST_P(cRoundThroughTextTest, leavesSixDecimals) {
    EXPECT_EQ(roundThroughText(GetParam().value), GetParam().result);
    EXPECT_EQ(roundThroughText(-GetParam().value), -GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    values, cRoundThroughTextTest,
    ::testing::Values(cRounded{1.0 / 3.0, 0.333333}, cRounded{2.0 / 3.0, 0.666667}, cRounded{0.12345678, 0.123457},
                      cRounded{0.0000001, 0.0}, cRounded{0.0000006, 0.000001}, cRounded{1e15 + 0.125, 1e15 + 0.125},
                      cRounded{1e300, 1e300}, cRounded{5.0, 5.0},
                      cRounded{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()},
                      cRounded{std::numeric_limits<double>::denorm_min(), 0.0}, cRounded{infinity, infinity}));

INSTANTIATE_TEST_SUITE_P(exactHalves, cRoundThroughTextTest,
                         ::testing::Values(cRounded{0.0078125, 0.007812}, cRounded{0.0234375, 0.023438},
                                           cRounded{1.0078125, 1.007812}, cRounded{1.0234375, 1.023438}));

// Halves that no double is: the nearest one lies below (the first three) or above, and that decides.
INSTANTIATE_TEST_SUITE_P(nearlyHalves, cRoundThroughTextTest,
                         ::testing::Values(cRounded{0.0000005, 0.0}, cRounded{0.0000035, 0.000003},
                                           cRounded{0.0000185, 0.000018}, cRounded{0.0000015, 0.000002},
                                           cRounded{0.0000025, 0.000003}, cRounded{1.0000005, 1.000001}));

// ---- without a text and over the text

/// How many of `count` values have other bits over the text.
template <typename cNext>
int differences(int count, cNext next) {
    int different = 0;
    for (int i = 0; i < count; ++i) {
        const double value = next();
        const auto fast = std::bit_cast<std::uint64_t>(roundThroughText(value));
        if (fast != std::bit_cast<std::uint64_t>(roundByText(value)) && ++different < 10)
            ADD_FAILURE() << std::hexfloat << value;
    }
    return different;
}

struct cKind {
    const char* name;
    double (*next)(std::mt19937_64&);
    int count;
};

void PrintTo(const cKind& kind, std::ostream* stream) { *stream << kind.name; }

class cBothWaysTest : public ::testing::TestWithParam<cKind> {};

TEST_P(cBothWaysTest, giveTheSameBits) {
    std::mt19937_64 numbers(1);

    EXPECT_EQ(differences(GetParam().count, [&] { return GetParam().next(numbers); }), 0);
}

INSTANTIATE_TEST_SUITE_P(kinds, cBothWaysTest,
                         ::testing::Values(cKind{"anyBits", roundingValues::anyBits, 1000000},
                                           cKind{"ofModels", roundingValues::ofModels, 2000000},
                                           cKind{"nearExactHalf", roundingValues::nearExactHalf, 1000000},
                                           cKind{"nearDecimalHalf", roundingValues::nearDecimalHalf, 1000000},
                                           cKind{"nearBorder", roundingValues::nearBorder, 100000},
                                           cKind{"tiny", roundingValues::tiny, 200000}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(roundThroughTextTest, isTheTextsValueForZerosAndDenormals) {
    const std::array values{0.0, -0.0, 5e-324, -5e-324, 2.2250738585072014e-308, -1e-310, 4.9999999e-7, -5e-7};
    std::size_t i = 0;

    EXPECT_EQ(differences(values.size(), [&] { return values[i++]; }), 0);
}

TEST(roundThroughTextTest, aTinyNegativeBecomesNegativeZero) {
    const double rounded = roundThroughText(-0.0000001);

    EXPECT_EQ(rounded, 0.0);
    EXPECT_TRUE(std::signbit(rounded));
}

TEST(roundThroughTextTest, notANumberStays) { EXPECT_TRUE(std::isnan(roundThroughText(notANumber))); }

/// Values of a binary magnitude, each printed and read back by the C library.
class cMagnitudeTest : public ::testing::TestWithParam<int> {};

TEST_P(cMagnitudeTest, isWhatThePrintedTextReadsBackAs) {
    std::mt19937_64 random(static_cast<std::uint64_t>(GetParam() + 100));
    for (int i = 0; i < 5000; ++i) {
        const double mantissa = std::ldexp(static_cast<double>(random() >> 11), -53);
        const double value = std::ldexp(i % 2 == 0 ? mantissa : -mantissa, GetParam());
        std::array<char, 512> text{};
        std::snprintf(text.data(), text.size(), "%f", value);
        const double expected = std::strtod(text.data(), nullptr);

        ASSERT_EQ(std::bit_cast<std::uint64_t>(roundThroughText(value)), std::bit_cast<std::uint64_t>(expected))
            << text.data();
    }
}

INSTANTIATE_TEST_SUITE_P(binary, cMagnitudeTest,
                         ::testing::Values(-60, -22, -20, -10, -1, 0, 1, 8, 20, 33, 45, 60, 300));

TEST(roundThroughTextTest, exactTiesOfEveryMagnitudeAreWhatThePrintedTextReadsBackAs) {
    // An odd multiple of 2^-7 ends in a 5 at the seventh decimal, and so lies half between two texts.
    for (std::int64_t odd = 1; odd < 20000; odd += 2) {
        const double value = std::ldexp(static_cast<double>(odd), -7);
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%f", value);

        ASSERT_EQ(roundThroughText(value), std::strtod(text.data(), nullptr)) << text.data();
    }
}

struct cTruncated {
    double value;
    std::int64_t result;
};

void PrintTo(const cTruncated& row, std::ostream* stream) { *stream << row.value; }

class cTruncateToInt32Test : public ::testing::TestWithParam<cTruncated> {};

TEST_P(cTruncateToInt32Test, goesTowardZeroOrToTheMinimum) {
    EXPECT_EQ(truncateToInt32(GetParam().value), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(inRange, cTruncateToInt32Test,
                         ::testing::Values(cTruncated{2.9, 2}, cTruncated{-2.9, -2}, cTruncated{-0.5, 0},
                                           cTruncated{2147483647.0, 2147483647}, cTruncated{2147483647.9, 2147483647},
                                           cTruncated{-2147483648.0, smallestInt32},
                                           cTruncated{-2147483648.9, smallestInt32},
                                           cTruncated{-2147483647.5, -2147483647}));

INSTANTIATE_TEST_SUITE_P(outOfRange, cTruncateToInt32Test,
                         ::testing::Values(cTruncated{2147483648.0, smallestInt32},
                                           cTruncated{-2147483649.0, smallestInt32}, cTruncated{1e300, smallestInt32},
                                           cTruncated{-1e300, smallestInt32}, cTruncated{infinity, smallestInt32},
                                           cTruncated{-infinity, smallestInt32},
                                           cTruncated{notANumber, smallestInt32}));

class cTruncateToInt64Test : public ::testing::TestWithParam<cTruncated> {};

TEST_P(cTruncateToInt64Test, goesTowardZeroOrToTheMinimum) {
    EXPECT_EQ(truncateToInt64(GetParam().value), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(inRange, cTruncateToInt64Test,
                         ::testing::Values(cTruncated{2.9, 2}, cTruncated{-2.9, -2},
                                           cTruncated{4294967297.5, 4294967297},
                                           cTruncated{9223372036854774784.0, 9223372036854774784},
                                           cTruncated{-9223372036854775808.0, smallestInt64}));

INSTANTIATE_TEST_SUITE_P(outOfRange, cTruncateToInt64Test,
                         ::testing::Values(cTruncated{9223372036854775808.0, smallestInt64},
                                           cTruncated{-9223372036854777856.0, smallestInt64},
                                           cTruncated{infinity, smallestInt64}, cTruncated{-infinity, smallestInt64},
                                           cTruncated{notANumber, smallestInt64}));

}  // namespace
