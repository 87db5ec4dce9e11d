#include "language/numberText.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct cFixed {
    double value;
    int decimals;
    const char* text;
};

void PrintTo(const cFixed& row, std::ostream* stream) { *stream << row.text; }

class cFixedTextTest : public ::testing::TestWithParam<cFixed> {};

TEST_P(cFixedTextTest, isWrittenAs) { EXPECT_EQ(fixedText(GetParam().value, GetParam().decimals), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(sixDecimals, cFixedTextTest,
                         ::testing::Values(cFixed{0.0, 6, "0.000000"}, cFixed{-0.0, 6, "-0.000000"},
                                           cFixed{5.0, 6, "5.000000"}, cFixed{1.0 / 3.0, 6, "0.333333"},
                                           cFixed{2.0 / 3.0, 6, "0.666667"}, cFixed{-2.0 / 3.0, 6, "-0.666667"},
                                           cFixed{0.0000001, 6, "0.000000"}, cFixed{-0.0000001, 6, "-0.000000"},
                                           cFixed{1e6, 6, "1000000.000000"},
                                           cFixed{1e21, 6, "1000000000000000000000.000000"}));

INSTANTIATE_TEST_SUITE_P(exactHalvesGoToTheEvenDigit, cFixedTextTest,
                         ::testing::Values(cFixed{0.0078125, 6, "0.007812"}, cFixed{0.0234375, 6, "0.023438"},
                                           cFixed{-0.0078125, 6, "-0.007812"}, cFixed{0.5, 0, "0"}, cFixed{1.5, 0, "2"},
                                           cFixed{2.5, 0, "2"}, cFixed{0.125, 2, "0.12"}, cFixed{0.375, 2, "0.38"}));

INSTANTIATE_TEST_SUITE_P(whatIsNoNumberHasNoSignAndInfinityHas, cFixedTextTest,
                         ::testing::Values(cFixed{notANumber, 6, "nan"}, cFixed{-notANumber, 6, "nan"},
                                           cFixed{infinity, 6, "inf"}, cFixed{-infinity, 6, "-inf"}));

TEST(fixedTextTest, holdsTheLargestDouble) {
    const std::string text = fixedText(-std::numeric_limits<double>::max());

    EXPECT_EQ(text.size(), 1U + 309U + 1U + 6U);
    EXPECT_EQ(text.substr(0, 18), "-17976931348623157");
    EXPECT_EQ(text.substr(text.size() - 7), ".000000");
}

TEST(fixedTextTest, isWhatTheCLibraryPrints) {
    std::mt19937_64 bits(20);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::ldexp(static_cast<double>(bits() >> 11), static_cast<int>(bits() % 140) - 110);
        std::array<char, 512> printed{};
        std::snprintf(printed.data(), printed.size(), "%f", value);

        ASSERT_EQ(fixedText(value), printed.data());
    }
}

struct cNumber {
    const char* text;
    double value;
};

void PrintTo(const cNumber& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.text); }

class cNumberTest : public ::testing::TestWithParam<cNumber> {};

TEST_P(cNumberTest, isReadWhole) { EXPECT_EQ(parseNumber(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(decimal, cNumberTest,
                         ::testing::Values(cNumber{"5", 5.0}, cNumber{"0", 0.0}, cNumber{"0.12345678", 0.12345678},
                                           cNumber{".5", 0.5}, cNumber{"5.", 5.0}, cNumber{"007", 7.0},
                                           cNumber{"+5", 5.0}, cNumber{"-5", -5.0}, cNumber{"  5", 5.0},
                                           cNumber{"\t\n5", 5.0}));

INSTANTIATE_TEST_SUITE_P(withExponent, cNumberTest,
                         ::testing::Values(cNumber{"1e5", 1e5}, cNumber{"1E5", 1e5}, cNumber{"1e-5", 1e-5},
                                           cNumber{"2.5e+3", 2500.0}, cNumber{"1e999", infinity},
                                           cNumber{"1e-999", 0.0}));

INSTANTIATE_TEST_SUITE_P(hexadecimal, cNumberTest,
                         ::testing::Values(cNumber{"0x1F", 31.0}, cNumber{"0X1f", 31.0}, cNumber{"0x1p4", 16.0},
                                           cNumber{"0x.8", 0.5}));

INSTANTIATE_TEST_SUITE_P(infinite, cNumberTest,
                         ::testing::Values(cNumber{"inf", infinity}, cNumber{"-inf", -infinity},
                                           cNumber{"INFINITY", infinity}, cNumber{"Infinity", infinity}));

TEST(parseNumberTest, nanInAnySpellingIsANumberText) {
    for (const char* text : {"nan", "NaN", "-nan", "nan(7)"}) {
        const std::optional<double> value = parseNumber(text);

        ASSERT_TRUE(value.has_value()) << text;
        EXPECT_TRUE(std::isnan(*value)) << text;
    }
}

class cNoNumberTest : public ::testing::TestWithParam<std::string> {};

TEST_P(cNoNumberTest, isRefused) { EXPECT_FALSE(parseNumber(GetParam()).has_value()); }

INSTANTIATE_TEST_SUITE_P(texts, cNoNumberTest,
                         ::testing::Values("", " ", "5 ", "12abc", "1.5x", "1,5", "x", "e5", "1e", "0x", "--5", "5 6",
                                           "1.2.3", "infinit", ".", std::string("5\0", 2), std::string("5\0x", 3)));

class cLeadingNumberTest : public ::testing::TestWithParam<cNumber> {};

TEST_P(cLeadingNumberTest, isTakenFromTheFront) { EXPECT_EQ(leadingNumber(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(texts, cLeadingNumberTest,
                         ::testing::Values(cNumber{"2.5", 2.5}, cNumber{"2.5abc", 2.5}, cNumber{" 3", 3.0},
                                           cNumber{"1+1", 1.0}, cNumber{"1,5", 1.0}, cNumber{"-4x", -4.0},
                                           cNumber{"0x10", 16.0}, cNumber{"1e3rd", 1000.0}, cNumber{"abc", 0.0},
                                           cNumber{"", 0.0}, cNumber{"1e400", infinity}));

struct cInteger {
    const char* text;
    std::int32_t value;
};

void PrintTo(const cInteger& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.text); }

class cLeadingIntegerTest : public ::testing::TestWithParam<cInteger> {};

TEST_P(cLeadingIntegerTest, isTakenFromTheFront) { EXPECT_EQ(leadingInteger(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(texts, cLeadingIntegerTest,
                         ::testing::Values(cInteger{"12abc", 12}, cInteger{"5 ", 5}, cInteger{"  4", 4},
                                           cInteger{"-7x", -7}, cInteger{"+8", 8}, cInteger{"007", 7},
                                           cInteger{"1.9", 1}, cInteger{"0x1F", 0}, cInteger{"abc", 0}, cInteger{"", 0},
                                           cInteger{"- 3", 0}, cInteger{"2147483647", 2147483647},
                                           cInteger{"-2147483648", std::numeric_limits<std::int32_t>::min()}));

/// A process whose C++ locale writes a decimal comma and groups thousands.
class cCommaLocaleTest : public ::testing::Test {
protected:
    cCommaLocaleTest() : before(std::locale::global(std::locale(std::locale::classic(), new cComma))) {}
    ~cCommaLocaleTest() override {
        std::locale::global(before);
        std::setlocale(LC_ALL, "C");
    }

private:
    class cComma : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale before;
};

TEST_F(cCommaLocaleTest, numbersAreWrittenAndReadWithAPoint) {
    EXPECT_EQ(fixedText(1234567.5), "1234567.500000");
    EXPECT_EQ(parseNumber("1.5"), 1.5);
    EXPECT_FALSE(parseNumber("1,5").has_value());
    EXPECT_EQ(leadingNumber("2.5x"), 2.5);
    EXPECT_EQ(leadingInteger("1.234"), 1);
}

/// Locales that desktops set; of those with a comma a machine may have none, and the plain one is always there.
class cLocaleTest : public cCommaLocaleTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cLocaleTest, changesNoNumber) {
    std::setlocale(LC_ALL, GetParam());

    EXPECT_EQ(fixedText(0.5), "0.500000");
    EXPECT_EQ(parseNumber("0.5"), 0.5);
    EXPECT_FALSE(parseNumber("0,5").has_value());
    EXPECT_EQ(leadingNumber("0.5,"), 0.5);
    EXPECT_EQ(leadingInteger("12,5"), 12);
}

INSTANTIATE_TEST_SUITE_P(ofDesktops, cLocaleTest,
                         ::testing::Values("C", "C.UTF-8", "", "de_DE.UTF-8", "fr_FR.UTF-8", "pt_BR.UTF-8", "de_DE"));

}  // namespace
