#include "language/textFormat.h"

#include "support/failureOf.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// A model without elements. Stream 0 begins with state 1: its first uniforms are 0.085199, 0.893356, 0.190061 and
/// 0.398787, rounded.
class cTextFormatTest : public ::testing::Test {
protected:
    std::string fill(const std::string& text) { return cTextFormat(text).fill(*network.symbols, "PRINT log this"); }

    cTestNetwork network{1};
};

struct cFilled {
    const char* text;
    const char* filled;
};

void PrintTo(const cFilled& row, std::ostream* stream) { *stream << row.text; }

class cFilledTest : public cTextFormatTest, public ::testing::WithParamInterface<cFilled> {};

TEST_P(cFilledTest, isFilled) { EXPECT_EQ(fill(GetParam().text), GetParam().filled); }

INSTANTIATE_TEST_SUITE_P(formats, cFilledTest,
                         ::testing::Values(cFilled{"\"t=%f n=%d\" 2 3 ", "t=2.000000 n=3"},
                                           cFilled{"\"%f%d%f\" 1 2 3 ",
                                                   "1.0000002"
                                                   "3.000000"},
                                           cFilled{"\"%d items\" 2*3 ", "6 items"}, cFilled{"\"none\" ", "none"},
                                           cFilled{"\"\" ", ""}, cFilled{"\"\"", ""}, cFilled{"", ""},
                                           cFilled{"\"a b \" ", "a b "}));

INSTANTIATE_TEST_SUITE_P(theFormatStandsBetweenTheFirstTwoQuotes, cFilledTest,
                         ::testing::Values(cFilled{"before \"inside\" behind ", "inside"},
                                           cFilled{"\"one\" \"two\" ", "one"}, cFilled{"\"%d\"5 ", "5"},
                                           cFilled{"\"it's %d\" 5 ", "it's 5"}));

INSTANTIATE_TEST_SUITE_P(withoutQuotesTheWholeTextIsTheFormat, cFilledTest,
                         ::testing::Values(cFilled{"plain words ", "plain words "}, cFilled{"it's ", "it's "}));

INSTANTIATE_TEST_SUITE_P(integersAreTruncated, cFilledTest,
                         ::testing::Values(cFilled{"\"%d\" 2.9", "2"}, cFilled{"\"%d\" 0-2.9", "-2"},
                                           cFilled{"\"%d\" 0-0.5", "0"}, cFilled{"\"%d\" 2147483647", "2147483647"},
                                           cFilled{"\"%d\" 3000000000", "-2147483648"},
                                           cFilled{"\"%d\" nan", "-2147483648"}, cFilled{"\"%d\" inf", "-2147483648"}));

INSTANTIATE_TEST_SUITE_P(floatsHaveSixDecimals, cFilledTest,
                         ::testing::Values(cFilled{"\"%f\" 1/3", "0.333333"}, cFilled{"\"%f\" 0.12345678", "0.123457"},
                                           cFilled{"\"%f\" 1e21", "1000000000000000000000.000000"},
                                           cFilled{"\"%f\" 0-1.5", "-1.500000"},
                                           cFilled{"\"%f\" 0.0078125", "0.007812"}, cFilled{"\"%f\" inf", "inf"},
                                           cFilled{"\"%f\" nan", "nan"}));

INSTANTIATE_TEST_SUITE_P(quotedExpressionsHoldBlanks, cFilledTest,
                         ::testing::Values(cFilled{"\"%d %d\" '1 + 2' 4 ", "3 4"}, cFilled{"\"%d\" '1+2' 4 ", "3"}));

// Nobody looks at an expression that no conversion asks for.
INSTANTIATE_TEST_SUITE_P(furtherExpressionsAreIgnored, cFilledTest,
                         ::testing::Values(cFilled{"\"%d\" 1 1/0 ) ", "1"}, cFilled{"\"none\" 1/0 ", "none"}));

TEST_F(cTextFormatTest, eachExpressionIsDrawnTwiceInTheOrderOfTheFormat) {
    EXPECT_EQ(fill("\"%f %f\" Rnd() Rnd()"), "0.893356 0.398787");
}

TEST_F(cTextFormatTest, aTextOfAMegabyteIsFilled) {
    std::string format;
    std::string expressions;
    for (int i = 0; i < 100000; ++i) {
        format += "x%d";
        expressions += " 7";
    }

    const std::string filled = fill('"' + format + '"' + expressions);

    EXPECT_EQ(filled.size(), 200000U);
    EXPECT_EQ(filled.substr(0, 6), "x7x7x7");
}

class cMissingExpressionTest : public cTextFormatTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cMissingExpressionTest, failsWithTheTroubleAndTheStatementNamed) {
    const cException failure = failureOf([&] { fill(GetParam()); });

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, "Format with more conversions than expressions in statement:\nPRINT log this");
}

INSTANTIATE_TEST_SUITE_P(formats, cMissingExpressionTest,
                         ::testing::Values("\"%f\" ", "\"%d %d\" 1 ", "\"%d %f %d\" 1 2", "%f 1 ", "\"%d 5 ",
                                           "\"%d%d\" '1 2' "));

class cUnknownConversionTest : public cTextFormatTest, public ::testing::WithParamInterface<cFilled> {};

TEST_P(cUnknownConversionTest, failsWithTheTroubleAndTheStatementNamed) {
    const cException failure = failureOf([&] { fill(GetParam().text); });

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message,
              std::string("Unknown conversion \"") + GetParam().filled + "\" in statement:\nPRINT log this");
}

INSTANTIATE_TEST_SUITE_P(letters, cUnknownConversionTest,
                         ::testing::Values(cFilled{"\"%s\" 1 ", "%s"}, cFilled{"\"%5.2f\" 1 ", "%5"},
                                           cFilled{"\"%i\" 1 ", "%i"}, cFilled{"\"%D\" 1 ", "%D"},
                                           cFilled{"\"%.1f\" 1 ", "%."}));

// There is no escape for a literal percent sign.
INSTANTIATE_TEST_SUITE_P(percentSigns, cUnknownConversionTest,
                         ::testing::Values(cFilled{"\"%%\" 1 ", "%%"}, cFilled{"\"100%\" 1 ", "%"},
                                           cFilled{"50% done ", "% "}));

TEST_F(cTextFormatTest, aFailingExpressionPasses) {
    const cException failure = failureOf([&] { fill("\"%f\" 1/0"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
}

}  // namespace
