// The statements that declare and set global names: SAVEVALUE, VARIABLE, ADDTORESULTS, ASSIGN.

#include "support/soilScene.h"

#include <gtest/gtest.h>

namespace {

class cStatementNamesTest : public cSoilScene {
protected:
    cResChar& resourceAt(std::size_t index) { return dynamic_cast<cResChar&>(*yard.getContents().at(index)); }
};

TEST_F(cStatementNamesTest, saveValueTakesTwoNumbersAndKeepsTheSecond) {
    execute("SAVEVALUE x Rnd()");

    EXPECT_EQ(network.saveValues.at("x"), 0.893356);
    EXPECT_EQ(state(), streamState::afterTwoDraws);
}

TEST_F(cStatementNamesTest, aRandomNameInFrontOfAnOperatorIsDrawnAThirdTime) {
    execute("VARIABLE v Rnd()");
    execute("SEED 1");

    execute("SAVEVALUE x v+0");

    EXPECT_EQ(network.saveValues.at("x"), 0.190061);
    EXPECT_EQ(state(), streamState::afterThreeDraws);
}

TEST_F(cStatementNamesTest, aSecondSaveValueReplacesTheFirst) {
    execute("SAVEVALUE a 1");
    execute("SAVEVALUE a 2");

    EXPECT_EQ(network.saveValues.at("a"), 2.0);
}

TEST_F(cStatementNamesTest, aSaveValueCanReadItself) {
    execute("SAVEVALUE n n+1");
    execute("SAVEVALUE n n+1");

    EXPECT_EQ(network.saveValues.at("n"), 2.0);
}

TEST_F(cStatementNamesTest, aLiteralIsStoredUnrounded) {
    execute("SAVEVALUE x 0.12345678");
    execute("SAVEVALUE y 0.12345678+0");

    EXPECT_EQ(network.saveValues.at("x"), 0.12345678);
    EXPECT_EQ(network.saveValues.at("y"), 0.123457);
}

TEST_F(cStatementNamesTest, aFailingSaveValueHasDeclaredItsNameAndStoredNothing) {
    const cException failure = failureOfStatement("SAVEVALUE x 1/0");

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
    EXPECT_TRUE(network.symbols->getDeclaredNames().contains("x"));
    EXPECT_FALSE(network.saveValues.contains("x"));
}

TEST_F(cStatementNamesTest, quotesCarryAnExpressionWithBlanks) {
    execute("SAVEVALUE x '1 + 2'");
    execute("SAVEVALUE y '1 +2'");

    EXPECT_EQ(network.saveValues.at("x"), 3.0);
    EXPECT_EQ(network.saveValues.at("y"), 3.0);
}

TEST_F(cStatementNamesTest, aQuotedWordWithoutABlankSwallowsWhatFollows) {
    const cException failure = failureOfStatement("SAVEVALUE '1+2' x");

    EXPECT_EQ(failure.message, "Syntax error in statement:\nSAVEVALUE '1+2' x");  // one argument: "'1+2' x"
}

TEST_F(cStatementNamesTest, aVariableKeepsItsFormula) {
    execute("SAVEVALUE x 1");
    execute("VARIABLE v x+1");

    execute("SAVEVALUE x 10");

    EXPECT_EQ(network.variables.at("v")->getText(), "x+1");
    EXPECT_EQ(network.evaluate("v"), 11.0);
}

TEST_F(cStatementNamesTest, aVariableIsEvaluatedOnceByItsTrial) {
    execute("VARIABLE v Rnd()");

    EXPECT_EQ(state(), streamState::afterOneDraw);
}

TEST_F(cStatementNamesTest, aSecondVariableReplacesTheFirst) {
    execute("VARIABLE v 1");
    execute("VARIABLE v 2");

    EXPECT_EQ(network.evaluate("v"), 2.0);
}

TEST_F(cStatementNamesTest, aVariableWhoseTrialFailsIsNotStored) {
    EXPECT_EQ(failureOfStatement("VARIABLE v 1/0").code, 2);

    EXPECT_FALSE(network.variables.contains("v"));
}

TEST_F(cStatementNamesTest, addToResultsStoresTheTextAsItIs) {
    execute("ADDTORESULTS n 1/0");
    execute("ADDTORESULTS m 'a + b'");
    execute("ADDTORESULTS n Rnd()");

    EXPECT_EQ(network.resultExpressions, (std::map<std::string, std::string>{{"m", "'a + b'"}, {"n", "Rnd()"}}));
    EXPECT_EQ(state(), streamState::untouched);
}

TEST_F(cStatementNamesTest, assignReplacesASaveValue) {
    execute("SAVEVALUE x 1");

    execute("ASSIGN x x+Rnd()");

    EXPECT_EQ(network.saveValues.at("x"), 1.893356);
}

struct cRefusedAssign {
    const char* text;
    const char* message;
};

void PrintTo(const cRefusedAssign& row, std::ostream* stream) { *stream << row.text; }

constexpr const char* noContainer = "First part of SAVEPROP variable is not a container.";
constexpr const char* noResource = "Second part of SAVEPROP variable is not a Characterized Resource.";

class cAssignFailureTest : public cStatementNamesTest, public ::testing::WithParamInterface<cRefusedAssign> {};

TEST_P(cAssignFailureTest, showsBeforeTheExpressionRuns) {
    execute("VARIABLE v 1");
    execute("INIT Soil1 3");

    const cException failure = failureOfStatement(GetParam().text);

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, GetParam().message + std::string(GetParam().text));
    EXPECT_EQ(state(), streamState::untouched);
    EXPECT_TRUE(network.saveValues.empty());
}

INSTANTIATE_TEST_SUITE_P(
    firstParts, cAssignFailureTest,
    ::testing::Values(cRefusedAssign{"ASSIGN y 1", noContainer}, cRefusedAssign{"ASSIGN y Rnd()", noContainer},
                      cRefusedAssign{"ASSIGN v 1", noContainer}, cRefusedAssign{"ASSIGN Nope.x 1", noContainer},
                      cRefusedAssign{"ASSIGN Haul.x 1", noContainer}, cRefusedAssign{"ASSIGN . 1", noContainer},
                      cRefusedAssign{"ASSIGN .weight 1", noContainer}));

// An empty queue has no first resource either.
INSTANTIATE_TEST_SUITE_P(secondParts, cAssignFailureTest,
                         ::testing::Values(cRefusedAssign{"ASSIGN Soil1.weight Rnd()", noResource},
                                           cRefusedAssign{"ASSIGN Yard.weight Rnd()", noResource},
                                           cRefusedAssign{"ASSIGN Soil1 1", noResource}));

TEST_F(cStatementNamesTest, assignStoresAPropertyOfTheFirstResourceInAQueue) {
    execute("INIT Yard 2");

    execute("ASSIGN Yard.weight 12/7");

    EXPECT_EQ(resourceAt(0).props.at("weight"), 1.714286);
    EXPECT_EQ(resourceAt(1).props.at("weight"), 0.0);
}

TEST_F(cStatementNamesTest, assignToAPropertyThatIsNotStoredIsQuietButDraws) {
    execute("INIT Yard 1");

    execute("ASSIGN Yard.colour Rnd()");
    execute("ASSIGN Yard 5");

    EXPECT_EQ(resourceAt(0).props, (std::map<std::string, double>{{"weight", 0.0}}));
    EXPECT_EQ(state(), streamState::afterTwoDraws);
}

TEST_F(cStatementNamesTest, aSaveValueWithAPointIsAssignedByItsName) {
    execute("SAVEVALUE Yard.weight 1");

    execute("ASSIGN Yard.weight 2");

    EXPECT_EQ(network.saveValues.at("Yard.weight"), 2.0);
}

}  // namespace
