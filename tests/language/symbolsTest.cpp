#include "language/symbols.h"

#include "support/soilScene.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class cSymbolsTest : public cSoilScene {
protected:
    double resolve(const std::string& operand, const std::string& owner = {}) {
        return network.symbols->resolve(operand, owner);
    }
    void declareVariable(const std::string& name, const std::string& formula) {
        network.symbols->declareName(name, eNameKind::variable);
        network.variables[name] = std::make_unique<cExpression>(*network.symbols, formula, cExpression::eTrial::skip);
    }
};

struct cOperand {
    const char* text;
    double value;
};

void PrintTo(const cOperand& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.text); }

class cOperandTest : public cSymbolsTest, public ::testing::WithParamInterface<cOperand> {};

TEST_P(cOperandTest, reads) { EXPECT_EQ(resolve(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(numbers, cOperandTest,
                         ::testing::Values(cOperand{"5", 5}, cOperand{"1.5", 1.5}, cOperand{"1e5", 1e5},
                                           cOperand{"0x10", 16}, cOperand{" 5", 5}, cOperand{"-5", -5},
                                           cOperand{"12.", 12}, cOperand{".5", 0.5}, cOperand{"0", 0},
                                           cOperand{"inf", std::numeric_limits<double>::infinity()}));

INSTANTIATE_TEST_SUITE_P(numbersFollowedByRubbishAreTheirIntegerPart, cOperandTest,
                         ::testing::Values(cOperand{"12abc", 12}, cOperand{"5 ", 5}, cOperand{"  7 x", 7},
                                           cOperand{"1e", 1}, cOperand{"-3x", -3}, cOperand{"1=2", 1},
                                           cOperand{"12abc.", 12}, cOperand{"5'", 5}, cOperand{"1,5", 1}));

// "1.5x" has two parts, and no element is named 1.
INSTANTIATE_TEST_SUITE_P(unlessAPointPartsThem, cOperandTest,
                         ::testing::Values(cOperand{"1.5x", 0}, cOperand{"1.5 ", 0}, cOperand{"7.x", 0}));

INSTANTIATE_TEST_SUITE_P(unknownNamesAreZero, cOperandTest,
                         ::testing::Values(cOperand{"", 0}, cOperand{" ", 0}, cOperand{".", 0}, cOperand{"..", 0},
                                           cOperand{"nobody", 0}, cOperand{"Nobody.CurInst", 0}, cOperand{"simtime", 0},
                                           cOperand{"SimTime ", 0}, cOperand{".CurCount", 0}, cOperand{"Truck", 0},
                                           cOperand{"Truck.Count", 0}));

INSTANTIATE_TEST_SUITE_P(bareElementNamesAreZero, cOperandTest,
                         ::testing::Values(cOperand{"Soil1", 0}, cOperand{"Soil1.", 0}, cOperand{"Haul", 0},
                                           cOperand{"Haul.", 0}, cOperand{"Draw1", 0}));

// Statistics that results show and no expression reads, and elements that no path reaches.
INSTANTIATE_TEST_SUITE_P(otherAttributesAreZero, cOperandTest,
                         ::testing::Values(cOperand{"Haul.SDDur", 0}, cOperand{"Haul.MaxDur", 0},
                                           cOperand{"Haul.FirstStart", 0}, cOperand{"Haul.Nonsense", 0},
                                           cOperand{"Soil1.AveCount", 0}, cOperand{"Soil1.Nonsense", 0},
                                           cOperand{"Draw1.nDraws", 0}, cOperand{"SumVal", 0}));

TEST_F(cSymbolsTest, anExponentWithASignFallsApartAtIt) {
    EXPECT_EQ(network.evaluate("1e-5"), -4.0);
    EXPECT_EQ(network.evaluate("1e+5"), 6.0);
}

TEST_F(cSymbolsTest, blanksInAQuotedExpressionStayInItsOperands) {
    network.execute("SAVEVALUE a 3;\nSAVEVALUE b 4;");

    EXPECT_EQ(network.evaluate("'a + b'"), 0.0);    // nobody is called "a "
    EXPECT_EQ(network.evaluate("'2 + 3'"), 5.0);    // "2 " is a 2 with rubbish behind it
    EXPECT_EQ(network.evaluate("'1.5 + 1'"), 1.0);  // "1.5 " is a path
    EXPECT_EQ(network.evaluate("'1 + 1.5'"), 2.5);
}

TEST_F(cSymbolsTest, simTimeIsTheClock) {
    network.simTime = 12.25;

    EXPECT_EQ(resolve("SimTime"), 12.25);
    EXPECT_EQ(resolve("SimTime."), 12.25);
    EXPECT_EQ(resolve("SimTime.x"), 0.0);
}

TEST_F(cSymbolsTest, aSaveValueIsItsStoredValue) {
    network.execute("SAVEVALUE x 0.12345678;");

    EXPECT_EQ(resolve("x"), 0.12345678);
    EXPECT_EQ(resolve("x."), 0.12345678);
    EXPECT_EQ(resolve("X"), 0.0);
}

TEST_F(cSymbolsTest, aSaveValueNamedSimTimeShadowsTheClock) {
    network.simTime = 12.0;

    network.execute("SAVEVALUE SimTime 3;");

    EXPECT_EQ(network.evaluate("SimTime"), 3.0);
}

TEST_F(cSymbolsTest, aSaveValueWithoutAStoredValueShadowsNothing) {
    network.simTime = 12.0;
    network.symbols->declareName("SimTime", eNameKind::saveValue);
    network.symbols->declareName("x", eNameKind::saveValue);

    EXPECT_EQ(resolve("SimTime"), 12.0);
    EXPECT_EQ(resolve("x"), 0.0);
}

TEST_F(cSymbolsTest, aStoredValueThatIsNotDeclaredIsUnknown) {
    network.saveValues["x"] = 5.0;

    EXPECT_EQ(resolve("x"), 0.0);
}

TEST_F(cSymbolsTest, aGlobalNameThatBeginsWithDigitsCanNotBeRead) {
    network.execute("SAVEVALUE 1x 7;\nSAVEVALUE 0x_ 8;");

    EXPECT_EQ(resolve("1x"), 1.0);
    EXPECT_EQ(resolve("0x_"), 8.0);  // whose integer part is 0, and that decides nothing
}

TEST_F(cSymbolsTest, aGlobalNameWithAPointCanNotBeRead) {
    network.execute("SAVEVALUE a.b 7;");

    EXPECT_EQ(resolve("a.b"), 0.0);
}

TEST_F(cSymbolsTest, aGlobalNameWinsOverAnElement) {
    network.execute("SAVEVALUE Soil1 7;");
    execute("INIT Soil1 5");

    EXPECT_EQ(resolve("Soil1"), 7.0);
    EXPECT_EQ(resolve("Soil1.CurCount"), 5.0);
}

TEST_F(cSymbolsTest, theFirstDeclarationOfANameKeepsItsKind) {
    network.execute("SAVEVALUE x 1;\nVARIABLE x 2;\nVARIABLE y 2;\nSAVEVALUE y 1;");

    EXPECT_EQ(resolve("x"), 1.0);
    EXPECT_EQ(resolve("y"), 2.0);
}

TEST_F(cSymbolsTest, aVariableUnderANameDeclaredAsSaveValueIsNotRead) {
    failureOfStatement("SAVEVALUE x 1/0");  // which declares x and stores nothing

    execute("VARIABLE x 2");

    EXPECT_EQ(resolve("x"), 0.0);
}

TEST_F(cSymbolsTest, forgottenNamesAreUnknown) {
    network.execute("SAVEVALUE x 1;");

    network.symbols->forgetNames();

    EXPECT_EQ(resolve("x"), 0.0);
}

TEST_F(cSymbolsTest, aVariableIsALiveFormula) {
    network.execute("SAVEVALUE x 1;\nVARIABLE v x+1;");
    EXPECT_EQ(resolve("v"), 2.0);

    network.execute("ASSIGN x 10;");

    EXPECT_EQ(resolve("v"), 11.0);
}

TEST_F(cSymbolsTest, aVariableDrawsANewNumberAtEachReference) {
    declareVariable("v", "Rnd()");

    EXPECT_EQ(resolve("v"), 0.085199);
    EXPECT_EQ(resolve("v"), 0.893356);
}

TEST_F(cSymbolsTest, variablesAreResolvedRightOperandFirst) {
    declareVariable("v", "Rnd()");
    declareVariable("w", "Rnd()");
    const cExpression difference(*network.symbols, "v-w", cExpression::eTrial::skip);
    ASSERT_EQ(state(), streamState::afterOneDraw);  // v, in front of an operator, was resolved when the text was set

    const double value = difference.evaluate();

    EXPECT_EQ(value, -0.703295);  // 0.190061, the third number, less the second, 0.893356
}

TEST_F(cSymbolsTest, aVariableHasNoOwner) {
    execute("INIT Soil1 5");
    declareVariable("v", "PredNode.CurCount");

    EXPECT_EQ(resolve("PredNode.CurCount", "Draw1"), 5.0);
    EXPECT_EQ(resolve("v", "Draw1"), 0.0);
}

TEST_F(cSymbolsTest, theFailureOfAVariableNamesItsOwnFormula) {
    declareVariable("v", "1/0");

    const cException failure = failureOf([&] { network.evaluate("2+v"); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
}

TEST_F(cSymbolsTest, variablesCanBeNestedTwoHundredDeep) {
    declareVariable("v1", "5");
    for (int i = 2; i <= 200; ++i) declareVariable("v" + std::to_string(i), "v" + std::to_string(i - 1));

    EXPECT_EQ(resolve("v200"), 5.0);
}

TEST_F(cSymbolsTest, variablesNestedDeeperFailWithTheFormulaNamed) {
    declareVariable("v1", "5*1");
    for (int i = 2; i <= 201; ++i) declareVariable("v" + std::to_string(i), "v" + std::to_string(i - 1));

    const cException failure = failureOf([&] { resolve("v201"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless recursion in 5*1");
    EXPECT_EQ(resolve("v200"), 5.0);  // the depth of the failed one is forgotten
}

TEST_F(cSymbolsTest, aVariableThatRefersToItselfFails) {
    declareVariable("v", "0+v");

    const cException failure = failureOf([&] { resolve("v"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless recursion in 0+v");
    EXPECT_EQ(failure.expressionText, "0+v");
}

TEST_F(cSymbolsTest, variablesThatReferToEachOtherFail) {
    declareVariable("v", "w");
    declareVariable("w", "v");

    EXPECT_EQ(failureOf([&] { resolve("v"); }).code, 2);
    EXPECT_EQ(failureOf([&] { resolve("w"); }).code, 2);
}

TEST_F(cSymbolsTest, variablesThatBranchWithoutEndLetTheHostStopTheRun) {
    network.stopAtHostEvent = 1;
    declareVariable("v0", "1");

    const cException failure = failureOf([&] {  // each doubles the evaluations of the one before it
        for (int i = 1; i <= 100; ++i) {
            const std::string before = "v" + std::to_string(i - 1);
            declareVariable("v" + std::to_string(i), before + "+" + before);
        }
    });

    EXPECT_EQ(failure.code, 5);
}

TEST_F(cSymbolsTest, theResourceInHandHasNoNames) {
    network.simTime = 3.0;
    const auto resource = makeCounted<cResCompound>(&truck);
    const cSymbols::cResourceInHand inHand(*network.symbols, resource.get());
    network.symbols->currentResource = resource.get();

    for (const char* name : {"TimeIn", "ResNum", "BirthTime", "Value"}) EXPECT_EQ(resolve(name), 0.0) << name;
    network.symbols->currentResource = nullptr;
}

TEST_F(cSymbolsTest, aResourceIsInHandForTheLengthOfAScope) {
    cResGen first(&soil, 1.0);
    cResGen second(&soil, 2.0);
    {
        const cSymbols::cResourceInHand outer(*network.symbols, &first);
        const cSymbols::cResourceInHand inner(*network.symbols, &second);
        EXPECT_EQ(network.symbols->getResourceStack(), (std::deque<cRes*>{&first, &second}));
    }

    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cSymbolsTest, takingAResourceOffAnEmptyStackDoesNothing) {
    network.symbols->popResource();

    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cSymbolsTest, getAsksTheHost) {
    network.answers["key"] = 2.5;

    EXPECT_EQ(network.evaluate("GET(\"key\")"), 2.5);
    EXPECT_EQ(network.askedKeys, std::vector<std::string>{"key"});
}

TEST_F(cSymbolsTest, aPertThatCanNotEndLetsTheHostStopTheRun) {
    network.stopAtHostEvent = 3;

    const cException failure = failureOf([&] { network.evaluate("Pert(1,1,1)"); });

    EXPECT_EQ(failure.code, 5);
    EXPECT_EQ(network.hostEvents, 3);
}

TEST_F(cSymbolsTest, namesOfAMegabyteAreUnknown) {
    EXPECT_EQ(network.evaluate(std::string(1 << 20, 'x') + "+1"), 1.0);
    EXPECT_EQ(network.evaluate(std::string(1 << 20, '.') + "+1"), 1.0);
    EXPECT_EQ(resolve("PredNode.CurCount", std::string(1 << 20, 'x')), 0.0);
}

TEST(symbolsTest, streamZeroBeginsWithTheLowBitsOfTheClock) {
    cTestNetwork network(0x100000005);

    EXPECT_EQ(network.symbols->randomStreams().getSeed(), 5U);
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), 5U);
}

TEST(symbolsTest, theVocabularyListsEveryAttributeWithItsClass) {
    std::map<std::string_view, std::int32_t> vocabulary;
    for (const cSymbols::cAttribute& attribute : cSymbols::attributeClasses())
        vocabulary[attribute.name] = attribute.attributeClass;

    const std::map<std::string_view, std::int32_t> expected{
        {"SimTime", 0}, {"InContext", 1}, {"CurInst", 1},  {"TotInst", 1},         {"Duration", 1},  {"AveDur", 1},
        {"SDDur", 1},   {"MaxDur", 1},    {"MinDur", 1},   {"FirstStart", 1},      {"LastStart", 1}, {"AveInter", 1},
        {"SDInter", 1}, {"MaxInter", 1},  {"MinInter", 1}, {"LastAmtReceived", 3}, {"CurCount", 3},  {"AveCount", 3},
        {"AveWait", 3}, {"MaxCount", 3},  {"MinCount", 3}, {"TotCount", 3},        {"Count", 4},     {"nDraws", 5},
        {"AveVal", 7},  {"MaxVal", 7},    {"MinVal", 7},   {"SDVal", 7},           {"SumVal", 7},    {"Value", 7},
        {"TimeIn", 7},  {"ResNum", 7},    {"BirthTime", 7}};
    EXPECT_EQ(vocabulary, expected);
    EXPECT_EQ(cSymbols::attributeClasses().size(), expected.size());
}

}  // namespace
