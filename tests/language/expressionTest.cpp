#include "language/expression.h"

#include "support/expressionScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class cExpressionTest : public cExpressionScene {};

struct cCase {
    const char* text;
    double value;
};

void PrintTo(const cCase& row, std::ostream* stream) { *stream << row.text; }

class cValueTest : public cExpressionTest, public ::testing::WithParamInterface<cCase> {};

TEST_P(cValueTest, is) { EXPECT_EQ(valueOf(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(precedence, cValueTest,
                         ::testing::Values(cCase{"2+3*4", 14}, cCase{"(2+3)*4", 20}, cCase{"[2+3]*4", 20},
                                           cCase{"2*3^2", 18}, cCase{"10-6/3", 8}, cCase{"1+2==3", 1},
                                           cCase{"2==1+1", 1}, cCase{"1<2&3<4", 1}, cCase{"1|0&0", 1},
                                           cCase{"(1|0)&0", 0}, cCase{"2==2&3==4", 0}, cCase{"[(1+1)*[2+1]]", 6}));

INSTANTIATE_TEST_SUITE_P(leftAssociation, cValueTest,
                         ::testing::Values(cCase{"2^3^2", 64}, cCase{"8/4/2", 1}, cCase{"2-3-4", -5}, cCase{"3>2>1", 0},
                                           cCase{"3<2<=0", 1}, cCase{"1<=2<3", 1}, cCase{"2-3+4", 3},
                                           cCase{"8/4*2", 4}));

INSTANTIATE_TEST_SUITE_P(remainderBindsAsLooselyAsPlus, cValueTest,
                         ::testing::Values(cCase{"7%3", 1}, cCase{"7.9%3.9", 1}, cCase{"1+7%3", 2}, cCase{"2*7%3", 2},
                                           cCase{"7%3*2", 1}, cCase{"10-7%4", 3}, cCase{"(0-7)%3", -1},
                                           cCase{"(0-2147483648)%(0-1)", 0}, cCase{"nan%7", -2},
                                           cCase{"3000000000%7", -2}));

INSTANTIATE_TEST_SUITE_P(comparison, cValueTest,
                         ::testing::Values(cCase{"1<=2", 1}, cCase{"2<=2", 1}, cCase{"3<=2", 0}, cCase{"2>=3", 0},
                                           cCase{"3>=3", 1}, cCase{"1<2", 1}, cCase{"2>1", 1}, cCase{"2==2", 1},
                                           cCase{"2==3", 0}, cCase{"(1<2)|(1>2)", 1}, cCase{"(2<2)|(2>2)", 0},
                                           cCase{"0.1+0.2==0.3", 1}, cCase{"1/3==0.333333", 1}, cCase{"1/3==2/6", 1},
                                           cCase{"nan==nan", 0}));

INSTANTIATE_TEST_SUITE_P(everyResultOfAnOperatorHasSixDecimals, cValueTest,
                         ::testing::Values(cCase{"1/3", 0.333333}, cCase{"1/3*3", 0.999999}, cCase{"2/3", 0.666667},
                                           cCase{"0.12345678+0", 0.123457}, cCase{"0.0000001+0", 0},
                                           cCase{"(0.0000001+0)*10000000", 0}, cCase{"0.0078125+0", 0.007812},
                                           cCase{"0.0234375+0", 0.023438}, cCase{"2^0.5", 1.414214},
                                           cCase{"1/3+1/3+1/3", 0.999999}, cCase{"0.0000004+0.0000004", 0.000001}));

INSTANTIATE_TEST_SUITE_P(whatNoOperatorMadeIsNotRounded, cValueTest,
                         ::testing::Values(cCase{"5", 5}, cCase{"0.12345678", 0.12345678},
                                           cCase{"(0.12345678)", 0.12345678}, cCase{"[(0.12345678)]", 0.12345678},
                                           cCase{"0.0000001*10000000", 1}, cCase{"1/0.0000001", 10000000},
                                           cCase{"0.00000001", 0.00000001}));

INSTANTIATE_TEST_SUITE_P(literals, cValueTest,
                         ::testing::Values(cCase{"1e5", 100000}, cCase{"1e5+1", 100001}, cCase{"0x10", 16},
                                           cCase{".5", 0.5}, cCase{"5.", 5}, cCase{"(0-5)", -5},
                                           cCase{"inf", std::numeric_limits<double>::infinity()}));

INSTANTIATE_TEST_SUITE_P(names, cValueTest,
                         ::testing::Values(cCase{"a", 10}, cCase{"a-b*c", -2}, cCase{"(a-b)*c", 18}, cCase{"nobody", 0},
                                           cCase{"gr\xc3\xb6\xc3\x9f"
                                                 "e+1",
                                                 1},
                                           cCase{"get+post", 0}, cCase{"a=b", 0}));

INSTANTIATE_TEST_SUITE_P(truth, cValueTest,
                         ::testing::Values(cCase{"5&7", 1}, cCase{"5&0", 0}, cCase{"0|0", 0}, cCase{"0|(0-1)", 1},
                                           cCase{"nan&1", 1}, cCase{"0|nan", 1}, cCase{"(0-8)^0.5&1", 1},
                                           cCase{"0.0000001&1", 1}, cCase{"0.0000001+0&1", 0}));

// Blanks are no separators: they stay in the operands, and "a " is another name than "a".
INSTANTIATE_TEST_SUITE_P(blanksBelongToTheOperands, cValueTest,
                         ::testing::Values(cCase{"a +b", 4}, cCase{"a+ b", 10}, cCase{" a", 0}, cCase{"2+ 3", 5},
                                           cCase{"( a)", 0}));

INSTANTIATE_TEST_SUITE_P(theTwoPairsOfBracketsAreMatchedApart, cValueTest,
                         ::testing::Values(cCase{"([1])", 1}, cCase{"[(1)]", 1}, cCase{"[1]+[2]", 3},
                                           cCase{"Uniform([3,3])", 3}));

// A list in brackets leaves its values standing, and the next operator takes them.
INSTANTIATE_TEST_SUITE_P(operatorsBehindAList, cValueTest, ::testing::Values(cCase{"(1,2)+", 3}, cCase{"(6,2)/", 3}));

TEST_F(cExpressionTest, aResultThatIsNotANumberStays) { EXPECT_TRUE(std::isnan(valueOf("(0-8)^0.5+1"))); }

TEST_F(cExpressionTest, aTinyNegativeResultDividesByZero) {
    const cException failure = failureOf([&] { valueOf("1/(0-0.0000001)"); });

    EXPECT_EQ(failure.message, "Division by 0.");
}

constexpr const char* divisionByZero = "Division by 0.";

struct cRefusal {
    const char* text;
    std::string message;
};

void PrintTo(const cRefusal& row, std::ostream* stream) { *stream << row.text; }

cRefusal shortOfOperands(const char* text) {
    return {text, std::string("Incorrect number of arguments for operator or function in:") + text};
}

class cConversionFailureTest : public cExpressionTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cConversionFailureTest, showsWhenTheTextIsSetAlsoWithoutATrial) {
    const cException failure = failureOf([&] { cExpression(context, GetParam(), eTrial::skip); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "");
    EXPECT_EQ(failure.expressionText, GetParam());
}

INSTANTIATE_TEST_SUITE_P(ofBrackets, cConversionFailureTest,
                         ::testing::Values("1+2)", ")", "]", "1]", "(1]", "[1)", "[(1])", "([1)]", ")(", "1)+(2",
                                           "Uniform(1,2))"));

INSTANTIATE_TEST_SUITE_P(ofCommas, cConversionFailureTest, ::testing::Values(",", "1,2", "(1),2", ",1", "1,"));

class cEvaluationFailureTest : public cExpressionTest, public ::testing::WithParamInterface<cRefusal> {};

TEST_P(cEvaluationFailureTest, showsInTheTrial) {
    const cException failure = failureOf([&] { cExpression(context, GetParam().text); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, GetParam().message);
    EXPECT_EQ(failure.expressionText, GetParam().text);
}

TEST_P(cEvaluationFailureTest, showsAtEvaluationAlone) {
    const cExpression expression(context, GetParam().text, eTrial::skip);

    const cException failure = failureOf([&] { expression.evaluate(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, GetParam().message);
    EXPECT_EQ(failure.expressionText, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(missingOperands, cEvaluationFailureTest,
                         ::testing::Values(shortOfOperands("-5"), shortOfOperands("+5"), shortOfOperands("1+"),
                                           shortOfOperands("*"), shortOfOperands("1<"), shortOfOperands("a&&b"),
                                           shortOfOperands("2*-3"), shortOfOperands("Uniform(1)"),
                                           shortOfOperands("Uniform()"), shortOfOperands("Normal"),
                                           shortOfOperands("sRnd()"), shortOfOperands("Beta(1)"), shortOfOperands("!"),
                                           shortOfOperands("1^(-2)")));

INSTANTIATE_TEST_SUITE_P(divisors, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"1/0", divisionByZero}, cRefusal{"1/(2-2)", divisionByZero},
                                           cRefusal{"1/nobody", divisionByZero}, cRefusal{"0/0", divisionByZero},
                                           cRefusal{"1/(0.0000001+0)", divisionByZero}, cRefusal{"5%0", divisionByZero},
                                           cRefusal{"5%0.9", divisionByZero}, cRefusal{"5%(0-0.9)", divisionByZero}));

INSTANTIATE_TEST_SUITE_P(exclamationMarks, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"1!=2", notRecognized}, cRefusal{"a!=b", notRecognized},
                                           cRefusal{"!5", notRecognized}, cRefusal{"!(1)", notRecognized}));

INSTANTIATE_TEST_SUITE_P(openBrackets, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"(1+2", notRecognized}, cRefusal{"[1+2", notRecognized},
                                           cRefusal{"(", notRecognized}, cRefusal{"([1)", notRecognized},
                                           cRefusal{"[(1]", notRecognized}, cRefusal{"Rnd(", notRecognized}));

INSTANTIATE_TEST_SUITE_P(getAndPostInsideAText, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"1+GET(\"x\")", notRecognized},
                                           cRefusal{"(GET(\"x\"))", notRecognized},
                                           cRefusal{" GET(\"x\")", notRecognized}, cRefusal{"BUDGET", notRecognized},
                                           cRefusal{"BUDGET+1", notRecognized}, cRefusal{"WIDGETS*2", notRecognized},
                                           cRefusal{"POST(1)", notRecognized}, cRefusal{"POSTURE", notRecognized},
                                           cRefusal{"OUTPOST", notRecognized}));

INSTANTIATE_TEST_SUITE_P(
    reservedFunctions, cEvaluationFailureTest,
    ::testing::Values(cRefusal{"Beta(1,2)", notRecognized}, cRefusal{"sBeta(1,2,0)", notRecognized},
                      cRefusal{"Erlang(1,2)", notRecognized}, cRefusal{"sErlang(1,2,0)", notRecognized},
                      cRefusal{"ScaledBeta(1,2,3,4)", notRecognized}, cRefusal{"sScaledBeta(1,2,3,4,0)", notRecognized},
                      cRefusal{"NormalInv(0.5,0,1)", notRecognized}, cRefusal{"StdNormalInv(0.5)", notRecognized}));

// More than one value is left, or none.
INSTANTIATE_TEST_SUITE_P(leftOverValues, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"(1,2)", ""}, cRefusal{"(1)(2)", ""}, cRefusal{"()", ""},
                                           cRefusal{"Uniform(1,2,3)", ""}, cRefusal{"Rnd(5)", ""}, cRefusal{"5(6)", ""},
                                           cRefusal{"Normal[2,1]", ""}, cRefusal{"(2+3) *4", ""},
                                           cRefusal{"(2+3)* 4 (1)", ""}, cRefusal{"", ""}));

INSTANTIATE_TEST_SUITE_P(parametersOfDistributions, cEvaluationFailureTest,
                         ::testing::Values(cRefusal{"Uniform(4,3)", "Max>Min in Uniform distribution."},
                                           cRefusal{"Triangular(1,3,2)",
                                                    "Triangular distribution parameters need to be in ascending order"},
                                           cRefusal{"Pert(1,3,2)", "Pert parameters need to be in ascending order"},
                                           cRefusal{"Pertpg(1,2,3)", "Pert parameters need to be in ascending order"}));

TEST_F(cExpressionTest, aStreamNumberBelowZeroOrNotANumberFailsWithTheTextNamed) {
    for (const char* text : {"sRnd(0-1)", "sRnd(nan)", "sUniform(1,2,0-0.5)"}) {
        const cException failure = failureOf([&] { valueOf(text); });

        EXPECT_EQ(failure.code, 2) << text;
        EXPECT_NE(failure.message.find("Stream number"), std::string::npos) << failure.message;
        EXPECT_EQ(failure.expressionText, text);
    }
}

TEST_F(cExpressionTest, uniformOfEqualEndsIsThatEnd) { EXPECT_EQ(valueOf("Uniform(3,3)"), 3.0); }

/// Functions of a stream whose state is 1, the sample rounded like any result.
class cFunctionValueTest : public cValueTest {};

TEST_P(cFunctionValueTest, isTheRoundedSample) { EXPECT_EQ(valueOf(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(ofStreamZero, cFunctionValueTest,
                         ::testing::Values(cCase{"Rnd()", 0.085199}, cCase{"Rnd", 0.085199}, cCase{"1+Rnd", 1.085199},
                                           cCase{"(Rnd())", 0.085199}, cCase{"Uniform(2,5)", 2.255597},
                                           cCase{"Uniform(1+1,2*2+1)", 2.255597}, cCase{"Triangular(0,5,10)", 2.063963},
                                           cCase{"Pert(1,2,3)", 2.40569}, cCase{"Pertpg(0,5,3)", 2.603446},
                                           cCase{"Gamma(3,2)", 8.471895}, cCase{"Exponential(4)", 0.022262},
                                           cCase{"Normal(10,3)", 6.270496}, cCase{"Normal(10,0-3)", 13.729504}));

INSTANTIATE_TEST_SUITE_P(ofAStreamThatIsNotThere, cFunctionValueTest,
                         ::testing::Values(cCase{"sRnd(99)", 0.085199}, cCase{"sRnd(0.9)", 0.085199},
                                           cCase{"sRnd(0)", 0.085199}, cCase{"sUniform(2,5,1)", 2.255597},
                                           cCase{"sTriangular(0,5,10,7)", 2.063963}, cCase{"sPert(1,2,3,1)", 2.40569},
                                           cCase{"sPertpg(0,5,3,1)", 2.603446}, cCase{"sGamma(3,2,1)", 8.471895},
                                           cCase{"sExponential(4,1)", 0.022262}, cCase{"sNormal(10,3,1)", 6.270496}));

TEST_F(cExpressionTest, functionsWithAnSDrawFromTheirStream) {
    context.streams.setSeed(7);
    context.streams.setStreams(2);

    EXPECT_EQ(valueOf("sRnd(1)"), 0.841786);  // of state 100007
    EXPECT_EQ(valueOf("sRnd(1.9)"), 0.369709);
    EXPECT_EQ(state(), 7U);
    EXPECT_EQ(context.streams.select(2).getState(), 200007U);
}

TEST_F(cExpressionTest, twoFunctionsDrawInTheOrderInWhichTheyAreWritten) {
    EXPECT_EQ(valueOf("Rnd()-Rnd()"), -0.808157);  // 0.085199 - 0.893356
}

TEST_F(cExpressionTest, aPertThatCanNotEndBreathes) {
    const cException failure = failureOf([&] { valueOf("Pert(1,1,1)"); });

    EXPECT_EQ(failure.code, 5);
    EXPECT_EQ(context.breaths, 1000);
}

class cNoCallTest : public cValueTest {};

TEST_P(cNoCallTest, drawsNothing) {
    EXPECT_EQ(valueOf(GetParam().text), GetParam().value);
    EXPECT_EQ(state(), streamState::untouched);
}

INSTANTIATE_TEST_SUITE_P(functionNamesThatAreOperands, cNoCallTest,
                         ::testing::Values(cCase{"Rnd+1", 1}, cCase{"Rnd*1", 0}, cCase{"(Rnd)", 0}, cCase{"Rnd ", 0},
                                           cCase{"Rnd ()", 0}, cCase{" Rnd()", 0}, cCase{"xRnd()", 0},
                                           cCase{"Rnds()", 0}, cCase{"Normal-Uniform+2", 2}, cCase{"rnd()", 0}));

TEST_F(cExpressionTest, aFunctionNameWithSquareBracketsCallsNothing) {
    failureOf([&] { valueOf("Normal[2,1]"); });

    EXPECT_EQ(state(), streamState::untouched);
    EXPECT_EQ(context.askedNames, cStrings{"Normal"});  // an operand: asked for once, when the text was set
}

TEST_F(cExpressionTest, aNameOfAFunctionMeansWhatTheModelSays) {
    context.names["Rnd"] = 41.0;

    EXPECT_EQ(valueOf("Rnd+1"), 42.0);
    EXPECT_EQ(valueOf("(Rnd)"), 41.0);
}

TEST_F(cExpressionTest, aTriangularOutOfOrderHasDrawnByThen) {
    failureOf([&] { valueOf("Triangular(1,3,2)"); });

    EXPECT_EQ(state(), streamState::afterOneDraw);
}

TEST(isTrueTest, isAnyValueButZero) {
    EXPECT_TRUE(isTrue(1.0));
    EXPECT_TRUE(isTrue(-0.000001));
    EXPECT_TRUE(isTrue(std::numeric_limits<double>::denorm_min()));
    EXPECT_TRUE(isTrue(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(isTrue(0.0));
    EXPECT_FALSE(isTrue(-0.0));
}

}  // namespace
