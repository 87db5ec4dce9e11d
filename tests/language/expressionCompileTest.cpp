// What happens when the text of an expression is set: quotes, tokens, trial, and whom it asks for what.

#include "support/expressionScene.h"

#include <gtest/gtest.h>

namespace {

class cExpressionCompileTest : public cExpressionScene {};

TEST_F(cExpressionCompileTest, theTrialDrawsFromTheStream) {
    const cExpression expression(context, "Rnd()");
    EXPECT_EQ(state(), streamState::afterOneDraw);

    EXPECT_EQ(expression.evaluate(), 0.893356);
    EXPECT_EQ(state(), streamState::afterTwoDraws);
}

TEST_F(cExpressionCompileTest, withoutATrialNothingIsEvaluated) {
    const cExpression expression(context, "Rnd()+1/0", eTrial::skip);

    EXPECT_EQ(state(), streamState::untouched);
}

TEST_F(cExpressionCompileTest, theTrialRunsForTheOwner) {
    cExpression expression(context, "a", eTrial::run, "Link3");
    EXPECT_EQ(context.askedFor, std::set<std::string>{"Link3"});

    expression.compile("a", eTrial::run, "Link4");

    EXPECT_EQ(context.askedFor, (std::set<std::string>{"Link3", "Link4"}));
}

TEST_F(cExpressionCompileTest, evaluationRunsForTheOwnerGivenThen) {
    const cExpression expression(context, "a", eTrial::skip, "Link3");

    expression.evaluate();
    expression.evaluate("Link4");

    EXPECT_EQ(context.askedFor, (std::set<std::string>{"", "Link4"}));
}

TEST_F(cExpressionCompileTest, theRightOperandIsResolvedFirst) {
    const cExpression expression(context, "a-b", eTrial::skip);
    context.askedNames.clear();

    expression.evaluate();

    EXPECT_EQ(context.askedNames, (cStrings{"b", "a"}));
}

TEST_F(cExpressionCompileTest, argumentsAreResolvedFromTheLast) {
    const cExpression expression(context, "Triangular(c,b,a)", eTrial::skip);
    context.askedNames.clear();

    expression.evaluate();

    EXPECT_EQ(context.askedNames, (cStrings{"a", "b", "c"}));
}

TEST_F(cExpressionCompileTest, namesAreResolvedWhenTheirOperatorTakesThem) {
    const cExpression expression(context, "a-b*c", eTrial::skip);
    context.askedNames.clear();

    expression.evaluate();

    EXPECT_EQ(context.askedNames, (cStrings{"c", "b", "a"}));
}

TEST_F(cExpressionCompileTest, bothSidesOfAndAndOrAreResolved) {
    for (const char* text : {"x&a", "a|b"}) {
        const cExpression expression(context, text, eTrial::skip);
        context.askedNames.clear();

        expression.evaluate();

        EXPECT_EQ(context.askedNames.size(), 2U) << text;
    }
}

TEST_F(cExpressionCompileTest, anOperandWithAnOperatorBehindItIsResolvedWhenTheTextIsSet) {
    const cExpression expression(context, "a+b*(c-d)", eTrial::skip);

    EXPECT_EQ(context.askedNames, (cStrings{"a", "b", "c", "d"}));  // a bracket is an operator too
}

TEST_F(cExpressionCompileTest, theLastOperandEscapesThatCheck) {
    const cExpression expression(context, "a+b", eTrial::skip);

    EXPECT_EQ(context.askedNames, cStrings{"a"});
}

TEST_F(cExpressionCompileTest, aBadNameInFrontFailsWhenTheTextIsSet) {
    context.badNames = {"bad"};

    const cException failure = failureOf([&] { cExpression(context, "bad+1", eTrial::skip); });

    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.message, "bad bad");
}

TEST_F(cExpressionCompileTest, aBadNameAtTheEndFailsInTheTrialOrAtEvaluation) {
    context.badNames = {"bad"};
    const cExpression expression(context, "1+bad", eTrial::skip);

    EXPECT_EQ(failureOf([&] { expression.evaluate(); }).message, "bad bad");
    EXPECT_EQ(failureOf([&] { cExpression(context, "1+bad"); }).message, "bad bad");
}

TEST_F(cExpressionCompileTest, nothingBehindABadNameIsResolvedWhenTheTextIsSet) {
    context.badNames = {"bad"};

    failureOf([&] { cExpression(context, "bad+a+b+1"); });

    EXPECT_EQ(context.askedNames, cStrings{"bad"});
}

TEST_F(cExpressionCompileTest, aBadNameTellsBeforeUnbalancedBracketsDo) {
    context.badNames = {"bad"};

    const cException failure = failureOf([&] { cExpression(context, "bad+1)"); });

    EXPECT_EQ(failure.message, "bad bad");
}

TEST_F(cExpressionCompileTest, anExpressionWhoseTrialFailedCanBeEvaluatedWhenItsNamesAreThere) {
    context.badNames = {"bad"};
    cExpression expression(context, "0");
    failureOf([&] { expression.compile("bad+a", eTrial::run, {}); });
    context.badNames.clear();
    context.names["bad"] = 5.0;

    EXPECT_EQ(expression.getText(), "bad+a");
    EXPECT_EQ(expression.evaluate(), 15.0);
}

TEST_F(cExpressionCompileTest, theTextStaysWhenItIsNoFormula) {
    cExpression expression(context, "5");

    failureOf([&] { expression.compile("1+2)", eTrial::run, {}); });

    EXPECT_EQ(expression.getText(), "1+2)");
    EXPECT_EQ(failureOf([&] { expression.evaluate(); }).message, "");
}

TEST_F(cExpressionCompileTest, compileReplacesTextAndTokens) {
    cExpression expression(context, "1+1");

    expression.compile("2*5", eTrial::run, {});

    EXPECT_EQ(expression.getText(), "2*5");
    EXPECT_EQ(expression.evaluate(), 10.0);
}

TEST_F(cExpressionCompileTest, namesAreLookedUpAtEachEvaluation) {
    const cExpression expression(context, "a+1");
    EXPECT_EQ(expression.evaluate(), 11.0);

    context.names["a"] = 20.0;

    EXPECT_EQ(expression.evaluate(), 21.0);
}

struct cStripped {
    const char* text;
    const char* stripped;
};

void PrintTo(const cStripped& row, std::ostream* stream) { *stream << row.text; }

class cQuoteTest : public cExpressionCompileTest, public ::testing::WithParamInterface<cStripped> {};

TEST_P(cQuoteTest, takesTheFirstAndTheLastCharacterAwayWhateverTheyAre) {
    EXPECT_EQ(cExpression(context, GetParam().text, eTrial::skip).getText(), GetParam().stripped);
}

INSTANTIATE_TEST_SUITE_P(texts, cQuoteTest,
                         ::testing::Values(cStripped{"'a + b'", "a + b"}, cStripped{"a+b", "a+b"},
                                           cStripped{"''1''", "'1'"}, cStripped{"a'b", "'"}, cStripped{"1+2'", "+2"},
                                           cStripped{"'1+2", "1+"}, cStripped{"''", ""}, cStripped{"'", ""},
                                           cStripped{"x'y", "'"}, cStripped{"'a+b' 'c'", "a+b' 'c"}));

TEST_F(cExpressionCompileTest, theBlanksInsideQuotesStayInTheOperands) {
    context.names["a "] = 7.0;
    context.names[" b"] = 2.0;

    EXPECT_EQ(valueOf("'a + b'"), 9.0);
}

TEST_F(cExpressionCompileTest, aLoneQuoteIsAnEmptyText) {
    const cException failure = failureOf([&] { cExpression(context, "'"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "");
}

TEST_F(cExpressionCompileTest, compileKeepsTheQuotes) {
    cExpression expression(context, "0");

    expression.compile("'2 + 3'", eTrial::run, {});

    EXPECT_EQ(expression.getText(), "'2 + 3'");
    EXPECT_EQ(context.askedNames, (cStrings{"'2 ", " 3'", "'2 "}));
}

struct cGet {
    const char* text;
    const char* key;
};

void PrintTo(const cGet& row, std::ostream* stream) { *stream << row.text; }

class cGetTest : public cExpressionCompileTest, public ::testing::WithParamInterface<cGet> {};

TEST_P(cGetTest, asksTheHostForTheKey) {
    EXPECT_EQ(valueOf(GetParam().text), 12.3456789);  // as it came: no operator rounded it
    EXPECT_EQ(context.askedKeys, cStrings{GetParam().key});
}

INSTANTIATE_TEST_SUITE_P(wholeTexts, cGetTest,
                         ::testing::Values(cGet{"GET(\"x\")", "x"}, cGet{"GET(\"two words\")", "two words"},
                                           cGet{"'GET(\"x\")'", "x"}, cGet{"GET(\"BUDGET\")", "BUDGET"}));

INSTANTIATE_TEST_SUITE_P(theLastTwoCharactersAreNotInspected, cGetTest,
                         ::testing::Values(cGet{"GET(\"xyz", "x"}, cGet{"GET(\"a\")+1", "a\")"},
                                           cGet{"GET(\"a\",\"b\")", "a\",\"b"}, cGet{"GET(\"x)\"", "x"}));

TEST_F(cExpressionCompileTest, getHasNoTrial) {
    const cExpression expression(context, "GET(\"x\")");
    EXPECT_EQ(context.askedKeys, cStrings{});

    expression.evaluate();
    expression.evaluate();

    EXPECT_EQ(context.askedKeys, (cStrings{"x", "x"}));
}

TEST_F(cExpressionCompileTest, aShortOrOddGetIsTakenQuietlyAndFailsAtEvaluation) {
    for (const char* text : {"GET(\"\")", "GET(x)", "GET", "GETAWAY", "GET+1", "GET(\"x"}) {
        const cExpression expression(context, text);

        const cException failure = failureOf([&] { expression.evaluate(); });

        EXPECT_EQ(failure.code, 2) << text;
        EXPECT_EQ(failure.message, "") << text;
        EXPECT_EQ(failure.expressionText, text);
    }
    EXPECT_EQ(context.askedKeys, cStrings{});
}

}  // namespace
