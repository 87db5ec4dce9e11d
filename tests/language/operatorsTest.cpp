#include "language/operators.h"

#include "language/exception.h"
#include "language/rounding.h"
#include "support/failureOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <set>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class cCountedBreath : public cBreath {
public:
    void breathe() override {
        if (++breaths == 1000) throw cException{failureCode::userStop, "endless", {}, {}};
    }

    int breaths = 0;
};

/// Streams 0 and 1; stream 1 begins with state 1, where the figures of the distributions' tests begin too.
class cOperatorTest : public ::testing::Test {
protected:
    static constexpr std::uint32_t baseSeed = 2147483648 - 100000;

    cOperatorTest() { streams.setStreams(1); }

    double apply(std::string_view name, std::span<const double> arguments) {
        return applyOperator(*findOperator(name), arguments, streams, host);
    }

    cRandomStreams streams{baseSeed};
    cCountedBreath host;
};

struct cRow {
    const char* name;
    std::int32_t argCount;
    double precedence;
    eOperatorKind kind;
};

void PrintTo(const cRow& row, std::ostream* stream) { *stream << row.name; }

class cTableTest : public ::testing::TestWithParam<cRow> {};

TEST_P(cTableTest, hasTheRow) {
    const cOperator* row = findOperator(GetParam().name);

    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->name, GetParam().name);
    EXPECT_EQ(row->argCount, GetParam().argCount);
    EXPECT_EQ(row->precedence, GetParam().precedence);
    EXPECT_EQ(row->kind, GetParam().kind);
}

constexpr cRow operatorRow(const char* name, std::int32_t argCount, double precedence) {
    return {name, argCount, precedence, eOperatorKind::operatorOrBracket};
}

constexpr cRow functionRow(const char* name, std::int32_t argCount) {
    return {name, argCount, 120.0, eOperatorKind::function};
}

// "%" binds as loosely as "+"; that is settled.
constexpr std::array rows{
    operatorRow("GET", 1, 100),    operatorRow("POST", 1, 100),
    operatorRow("(", 0, 100),      operatorRow(")", 0, 100),
    operatorRow("[", 0, 100),      operatorRow("]", 0, 100),
    operatorRow("!", 1, 90),       operatorRow("^", 2, 80),
    operatorRow("/", 2, 70),       operatorRow("*", 2, 70),
    operatorRow("+", 2, 60),       operatorRow("-", 2, 60),
    operatorRow("%", 2, 60),       operatorRow("==", 2, 50),
    operatorRow("!=", 2, 50),      operatorRow(">=", 2, 50),
    operatorRow("<=", 2, 50),      operatorRow(">", 2, 50),
    operatorRow("<", 2, 50),       operatorRow("&", 2, 45),
    operatorRow("|", 2, 40),       cRow{",", 0, 0, eOperatorKind::separator},
    functionRow("Rnd", 0),         functionRow("sRnd", 1),
    functionRow("Uniform", 2),     functionRow("sUniform", 3),
    functionRow("Triangular", 3),  functionRow("sTriangular", 4),
    functionRow("Pert", 3),        functionRow("sPert", 4),
    functionRow("Pertpg", 3),      functionRow("sPertpg", 4),
    functionRow("Gamma", 2),       functionRow("sGamma", 3),
    functionRow("Exponential", 1), functionRow("sExponential", 2),
    functionRow("Normal", 2),      functionRow("sNormal", 3),
    functionRow("Beta", 2),        functionRow("sBeta", 3),
    functionRow("Erlang", 2),      functionRow("sErlang", 3),
    functionRow("ScaledBeta", 4),  functionRow("sScaledBeta", 5),
    functionRow("NormalInv", 3),   functionRow("StdNormalInv", 1),
};

INSTANTIATE_TEST_SUITE_P(all, cTableTest, ::testing::ValuesIn(rows));

TEST(operatorTableTest, hasNoOtherRow) {
    std::set<std::string_view> expected;
    for (const cRow& row : rows) expected.insert(row.name);

    std::set<std::string_view> present;
    for (const cOperator& row : operatorTable()) present.insert(row.name);

    EXPECT_EQ(present, expected);
    EXPECT_EQ(operatorTable().size(), rows.size());
}

TEST(operatorTableTest, standsInByteOrderOfTheNames) {
    EXPECT_TRUE(std::ranges::is_sorted(operatorTable(), {}, &cOperator::name));
    EXPECT_LT(findOperator("!"), findOperator("!="));
    EXPECT_LT(findOperator("Normal"), findOperator("NormalInv"));
}

TEST(findOperatorTest, knowsNothingElse) {
    for (const char* name : {"", "=", "rnd", "RND", "Rnd(", "Rnd ", "get", "**", "&&", "'", ".", "~"})
        EXPECT_EQ(findOperator(name), nullptr) << name;
}

struct cPlace {
    const char* text;
    std::size_t position;
    std::size_t begin;
    const char* found;  // empty for none
};

void PrintTo(const cPlace& place, std::ostream* stream) { *stream << "\"" << place.text << "\" at " << place.position; }

class cOperatorAtTest : public ::testing::TestWithParam<cPlace> {};

TEST_P(cOperatorAtTest, isFoundAsAKey) {
    const cOperator* row = operatorAt(GetParam().text, GetParam().position, GetParam().begin);

    EXPECT_EQ(row == nullptr ? std::string_view{} : row->name, GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(comparisons, cOperatorAtTest,
                         ::testing::Values(cPlace{"a<=b", 1, 0, "<="}, cPlace{"a>=b", 1, 0, ">="},
                                           cPlace{"a<b", 1, 0, "<"}, cPlace{"a<", 1, 0, "<"}, cPlace{"a>", 1, 0, ">"},
                                           cPlace{"a==b", 1, 0, "=="}, cPlace{"a=b", 1, 0, ""},
                                           cPlace{"a!=b", 1, 0, "!"}, cPlace{"a<=b", 2, 2, ""}));

INSTANTIATE_TEST_SUITE_P(functionsStandAtTheBeginWithABracketOrNothingBehind, cOperatorAtTest,
                         ::testing::Values(cPlace{"Rnd()", 0, 0, "Rnd"}, cPlace{"Rnd", 0, 0, "Rnd"},
                                           cPlace{"1+Rnd", 2, 2, "Rnd"}, cPlace{"xRnd()", 1, 0, ""},
                                           cPlace{"Rnd+1", 0, 0, ""}, cPlace{"Rnd ()", 0, 0, ""},
                                           cPlace{"Normal[2,1]", 0, 0, ""}, cPlace{"sRnd(1)", 0, 0, "sRnd"},
                                           cPlace{"sRnd(1)", 1, 0, ""}, cPlace{"NormalInv(1)", 0, 0, "NormalInv"},
                                           cPlace{"Normal(1)", 0, 0, "Normal"}, cPlace{"Pertpg(1)", 0, 0, "Pertpg"},
                                           cPlace{"Pertp(1)", 0, 0, ""}));

INSTANTIATE_TEST_SUITE_P(getAndPostStandAnywhere, cOperatorAtTest,
                         ::testing::Values(cPlace{"BUDGET", 3, 0, "GET"}, cPlace{"POSTURE", 0, 0, "POST"},
                                           cPlace{"GET", 0, 0, "GET"}, cPlace{"BUDget", 3, 0, ""},
                                           cPlace{"GE", 0, 0, ""}));

struct cBinary {
    const char* name;
    double left;
    double right;
    double value;
};

void PrintTo(const cBinary& call, std::ostream* stream) {
    *stream << call.left << ' ' << call.name << ' ' << call.right;
}

class cBinaryTest : public cOperatorTest, public ::testing::WithParamInterface<cBinary> {};

TEST_P(cBinaryTest, gives) {
    EXPECT_EQ(apply(GetParam().name, std::array{GetParam().left, GetParam().right}), GetParam().value);
}

// Not yet rounded: that is for the expression to do.
INSTANTIATE_TEST_SUITE_P(arithmetic, cBinaryTest,
                         ::testing::Values(cBinary{"+", 1, 2, 3}, cBinary{"-", 1, 2, -1}, cBinary{"*", 3, 4, 12},
                                           cBinary{"/", 1, 3, 1.0 / 3.0}, cBinary{"/", 0, 5, 0},
                                           cBinary{"^", 2, 10, 1024}, cBinary{"^", 0, 0, 1}, cBinary{"^", 2, -1, 0.5},
                                           cBinary{"/", 1, infinity, 0}));

INSTANTIATE_TEST_SUITE_P(remainderTruncatesBothAndHasTheSignOfTheLeft, cBinaryTest,
                         ::testing::Values(cBinary{"%", 7, 3, 1}, cBinary{"%", 7.9, 3.9, 1}, cBinary{"%", -7, 3, -1},
                                           cBinary{"%", 7, -3, 1}, cBinary{"%", -7, -3, -1}, cBinary{"%", 7, -1.9, 0},
                                           cBinary{"%", -2147483648.0, 10, -8}));

INSTANTIATE_TEST_SUITE_P(theSmallestIntegerHasNoRemainderByMinusOne, cBinaryTest,
                         ::testing::Values(cBinary{"%", -2147483648.0, -1, 0}));

INSTANTIATE_TEST_SUITE_P(remainderOfWhatFitsNoIntegerTakesTheSmallest, cBinaryTest,
                         ::testing::Values(cBinary{"%", 3e9, 7, -2}, cBinary{"%", -3e9, 7, -2},
                                           cBinary{"%", notANumber, 7, -2}, cBinary{"%", infinity, 7, -2},
                                           cBinary{"%", 5, 3e9, 5}, cBinary{"%", 5, notANumber, 5},
                                           cBinary{"%", 3e9, 3e9, 0}, cBinary{"%", 3e9, -1, 0}));

INSTANTIATE_TEST_SUITE_P(comparison, cBinaryTest,
                         ::testing::Values(cBinary{"==", 1, 1, 1}, cBinary{"==", 1, 1.0000001, 0},
                                           cBinary{"!=", 1, 2, 1}, cBinary{"!=", 1, 1, 0}, cBinary{"<", 1, 2, 1},
                                           cBinary{"<", 2, 2, 0}, cBinary{">", 2, 1, 1}, cBinary{">", 2, 2, 0},
                                           cBinary{"<=", 2, 2, 1}, cBinary{"<=", 3, 2, 0}, cBinary{">=", 2, 2, 1},
                                           cBinary{">=", 1, 2, 0}));

INSTANTIATE_TEST_SUITE_P(truth, cBinaryTest,
                         ::testing::Values(cBinary{"&", 1, 2, 1}, cBinary{"&", 1, 0, 0}, cBinary{"&", 0, 1, 0},
                                           cBinary{"&", -0.5, 0.1, 1}, cBinary{"|", 0, 0, 0}, cBinary{"|", 0, 3, 1},
                                           cBinary{"|", 3, 0, 1}, cBinary{"|", -0.0, -0.0, 0}));

INSTANTIATE_TEST_SUITE_P(notANumberIsTrueAndEqualsNothing, cBinaryTest,
                         ::testing::Values(cBinary{"&", notANumber, 1, 1}, cBinary{"|", 0, notANumber, 1},
                                           cBinary{"==", notANumber, notANumber, 0}, cBinary{"<", notANumber, 1, 0},
                                           cBinary{">=", notANumber, 1, 0}));

TEST_F(cOperatorTest, aRootOfANegativeIsNotANumber) { EXPECT_TRUE(std::isnan(apply("^", std::array{-8.0, 0.5}))); }

class cDivisorTest : public cOperatorTest, public ::testing::WithParamInterface<cBinary> {};

TEST_P(cDivisorTest, isRefused) {
    const cException failure = failureOf([&] {
        apply(GetParam().name, std::array{GetParam().left, GetParam().right});
    });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
}

INSTANTIATE_TEST_SUITE_P(ofExactlyZero, cDivisorTest,
                         ::testing::Values(cBinary{"/", 1, 0.0, 0}, cBinary{"/", 1, -0.0, 0}, cBinary{"/", 0, 0, 0}));

INSTANTIATE_TEST_SUITE_P(thatTruncatesToZero, cDivisorTest,
                         ::testing::Values(cBinary{"%", 5, 0, 0}, cBinary{"%", 5, 0.9, 0}, cBinary{"%", 5, -0.9, 0},
                                           cBinary{"%", 0, 0, 0}));

class cUnservedTest : public cOperatorTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cUnservedTest, isNotRecognized) {
    const cOperator& row = *findOperator(GetParam());
    const std::vector<double> arguments(static_cast<std::size_t>(row.argCount), 0.5);

    const cException failure = failureOf([&] { applyOperator(row, arguments, streams, host); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Operator or Function not recognized.");
    EXPECT_EQ(streams.first().getState(), baseSeed);
}

INSTANTIATE_TEST_SUITE_P(namesAndBrackets, cUnservedTest,
                         ::testing::Values("GET", "POST", "!", "(", ")", "[", "]", "Beta", "sBeta", "Erlang", "sErlang",
                                           "ScaledBeta", "sScaledBeta", "NormalInv", "StdNormalInv"));

struct cDraw {
    const char* name;
    std::vector<double> arguments;  // without the stream
    double value;                   // of a stream that begins with state 1
};

void PrintTo(const cDraw& draw, std::ostream* stream) { *stream << draw.name; }

class cFunctionTest : public cOperatorTest, public ::testing::WithParamInterface<cDraw> {};

TEST_P(cFunctionTest, drawsFromStreamZero) {
    streams.setSeed(1);

    EXPECT_EQ(apply(GetParam().name, GetParam().arguments), GetParam().value);
    EXPECT_EQ(streams.select(1).getState(), 1U);
}

TEST_P(cFunctionTest, withAnSInFrontDrawsFromTheStreamOfItsLastArgument) {
    std::vector<double> arguments = GetParam().arguments;
    arguments.push_back(1.9);

    EXPECT_EQ(apply('s' + std::string(GetParam().name), arguments), GetParam().value);
    EXPECT_EQ(streams.first().getState(), baseSeed);
}

INSTANTIATE_TEST_SUITE_P(
    served, cFunctionTest,
    ::testing::Values(cDraw{"Rnd", {}, 0.08519885256797011}, cDraw{"Uniform", {2, 5}, 2.2555965577039103},
                      cDraw{"Triangular", {0, 5, 10}, 2.06396284569236}, cDraw{"Pert", {2, 5, 11}, 4.682143533217827},
                      cDraw{"Pertpg", {0, 5, 3}, 2.6034459040879105}, cDraw{"Gamma", {2.5, 2}, 4.0969625012115545},
                      cDraw{"Exponential", {4}, 0.022262140634014417}, cDraw{"Normal", {10, 3}, 6.270495923027174}));

TEST_F(cOperatorTest, aStreamNumberBelowZeroIsRefused) {
    const cException failure = failureOf([&] { apply("sRnd", std::array{-1.0}); });

    EXPECT_EQ(failure.code, 2);
}

// ---- what a row promises beyond its values

/// The bits of what `operation` gives, or nothing where it fails.
template <typename cOperation>
std::optional<std::uint64_t> bitsOf(cOperation operation) {
    try {
        return std::bit_cast<std::uint64_t>(operation());
    } catch (const cException&) {
        return std::nullopt;
    }
}

TEST(operatorTableTest, theRoundedValueIsTheValueRoundedToTheLastBit) {
    constexpr std::array values{0.0,    -0.0,         1.0,           -1.0,      0.3333335,    1e-7,
                                -4e-7,  0.0078125,    2.5,           -7.9,      123456.78912, 1e15,
                                -1e15,  2147483647.0, -2147483648.0, 4e9 + 1,   1e300,        -1e300,
                                5e-324, infinity,     -infinity,     notANumber};
    int compared = 0;
    for (const cOperator& row : operatorTable()) {
        EXPECT_EQ(row.combine == nullptr, row.combineRounded == nullptr) << row.name;
        if (row.combine == nullptr) continue;
        for (const double left : values)
            for (const double right : values) {
                const auto expected = bitsOf([&] { return roundThroughText(row.combine(left, right)); });
                EXPECT_EQ(bitsOf([&] { return row.combineRounded(left, right); }), expected)
                    << left << row.name << right;
                ++compared;
            }
    }
    EXPECT_EQ(compared, 14 * 22 * 22);
}

TEST_F(cOperatorTest, onlyFunctionsThatSaySoLetTheHostBreathe) {
    constexpr std::array values{notANumber, infinity, -infinity, 0.0, -1.0, 1.0, 3.0, 1e300};
    int functions = 0;
    for (const cOperator& row : operatorTable()) {
        if (row.sample == nullptr || row.mayBreathe) continue;
        ++functions;
        std::array<double, mostArguments> arguments{};
        const auto argCount = static_cast<std::size_t>(row.argCount);
        const auto ways = static_cast<std::size_t>(std::pow(values.size(), argCount));
        for (std::size_t way = 0; way < ways; ++way) {
            for (std::size_t i = 0, rest = way; i < argCount; ++i, rest /= values.size())
                arguments[i] = values[rest % values.size()];
            bitsOf([&] { return apply(row.name, std::span(arguments).first(argCount)); });
        }
    }
    EXPECT_EQ(functions, 10);
    EXPECT_EQ(host.breaths, 0);
}

}  // namespace
