#include "language/statement.h"

#include "support/soilScene.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using cWords = std::vector<std::string>;

TEST(statementTextTest, theFirstWordIsTheKeyword) {
    const cStatement statement("  SAVEVALUE\tx 'a + b' ");

    EXPECT_EQ(statement.getText(), "  SAVEVALUE\tx 'a + b' ");
    EXPECT_EQ(statement.getKeyword(), "SAVEVALUE");
    EXPECT_EQ(statement.getArguments(), (cWords{"x", "'a + b'"}));
}

TEST(statementTextTest, anEmptyTextHasNoWords) {
    const cStatement statement(" ");

    EXPECT_EQ(statement.getKeyword(), "");
    EXPECT_EQ(statement.getArguments(), cWords{});
}

class cStatementTest : public cSoilScene {};

class cIgnoredStatementTest : public cStatementTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cIgnoredStatementTest, doesNothing) {
    execute(GetParam());

    EXPECT_EQ(state(), streamState::untouched);
    EXPECT_EQ(network.replications, 1);
    EXPECT_TRUE(network.saveValues.empty());
    EXPECT_TRUE(network.runStatistics->printTexts.empty());
    EXPECT_TRUE(network.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(unknownKeywords, cIgnoredStatementTest,
                         ::testing::Values("BADWORD 1 2 3", "BADWORD", "", "  ", "seed 5", "SEEDS 5", "Savevalue x 1",
                                           "multisim 3", "print log x", "SEED' 5", "ONSTART Haul SEED 5",
                                           "IF 1 SEED 5"));

struct cMiscount {
    const char* text;
    const char* message;
};

void PrintTo(const cMiscount& row, std::ostream* stream) { *stream << row.text; }

class cMiscountTest : public cStatementTest, public ::testing::WithParamInterface<cMiscount> {};

TEST_P(cMiscountTest, failsBeforeAnythingIsDone) {
    const cException failure = failureOfStatement(GetParam().text);

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, GetParam().message + std::string(GetParam().text));
    EXPECT_EQ(state(), streamState::untouched);
    EXPECT_TRUE(network.symbols->getDeclaredNames().empty());
}

constexpr const char* syntaxError = "Syntax error in statement:\n";
constexpr const char* wrongNumber = "Incorrect number of arguments in statement:\n";

INSTANTIATE_TEST_SUITE_P(
    syntaxErrors, cMiscountTest,
    ::testing::Values(cMiscount{"SEED", syntaxError}, cMiscount{"SEED 5 6", syntaxError},
                      cMiscount{"SEED Rnd() 6", syntaxError}, cMiscount{"STREAMS", syntaxError},
                      cMiscount{"STREAMS 1 2", syntaxError}, cMiscount{"MULTISIM", syntaxError},
                      cMiscount{"MULTISIM 2 3", syntaxError}, cMiscount{"SAVEVALUE", syntaxError},
                      cMiscount{"SAVEVALUE x", syntaxError}, cMiscount{"SAVEVALUE x 1 2", syntaxError},
                      cMiscount{"SAVEVALUE x 1 + 2", syntaxError}, cMiscount{"VARIABLE v", syntaxError},
                      cMiscount{"VARIABLE v 1 2", syntaxError}, cMiscount{"ADDTORESULTS", syntaxError},
                      cMiscount{"ADDTORESULTS n", syntaxError}, cMiscount{"ADDTORESULTS n 1 2", syntaxError},
                      cMiscount{"SETATTRIBUTE Haul Duration", syntaxError}, cMiscount{"SETATTRIBUTE", syntaxError},
                      cMiscount{"INIT", syntaxError}, cMiscount{"INIT Soil1", syntaxError}));

INSTANTIATE_TEST_SUITE_P(wrongNumbers, cMiscountTest,
                         ::testing::Values(cMiscount{"SIMULATECONDITION", wrongNumber},
                                           cMiscount{"SIMULATE x", wrongNumber}, cMiscount{"PRINT", wrongNumber},
                                           cMiscount{"PRINT log", wrongNumber}, cMiscount{"ASSIGN", wrongNumber},
                                           cMiscount{"ASSIGN x", wrongNumber}, cMiscount{"ASSIGN x 1 2", wrongNumber}));

// ---- SEED, STREAMS, MULTISIM

struct cSeed {
    const char* text;
    std::uint32_t seed;
};

void PrintTo(const cSeed& row, std::ostream* stream) { *stream << row.text; }

class cSeedStatementTest : public cStatementTest, public ::testing::WithParamInterface<cSeed> {};

TEST_P(cSeedStatementTest, setsTheBaseSeed) {
    execute(GetParam().text);

    EXPECT_EQ(network.symbols->randomStreams().getSeed(), GetParam().seed);
}

INSTANTIATE_TEST_SUITE_P(valuesAreTruncatedAndCutTo32Bits, cSeedStatementTest,
                         ::testing::Values(cSeed{"SEED 5", 5}, cSeed{"SEED 7.9", 7}, cSeed{"SEED 2*4", 8},
                                           cSeed{"SEED 4294967303", 7}, cSeed{"SEED 0-1", 4294967295},
                                           cSeed{"SEED (0-1.9)", 4294967295}, cSeed{"SEED 0", 0}));

// The smallest 64-bit integer has only zeros in its low 32 bits.
INSTANTIATE_TEST_SUITE_P(valuesOutOfRangeAreTheSmallestInteger, cSeedStatementTest,
                         ::testing::Values(cSeed{"SEED nan", 0}, cSeed{"SEED inf", 0}, cSeed{"SEED 1e19", 0}));

TEST_F(cStatementTest, theExpressionOfAStatementRunsTwice) {
    execute("SEED 1000*Rnd()");

    EXPECT_EQ(network.symbols->randomStreams().getSeed(), 893U);  // of the second number; the first was the trial's
}

TEST_F(cStatementTest, streamsStartsExtraStreamsFromTheSeed) {
    execute("SEED 7");
    execute("STREAMS 2.9");

    cRandomStreams& streams = network.symbols->randomStreams();
    EXPECT_EQ(streams.getStreamCount(), 2);
    EXPECT_EQ(streams.select(2).getState(), 200007U);
}

TEST_F(cStatementTest, streamsOutOfRangeLeaveStreamZeroAlone) {
    execute("STREAMS nan");

    cRandomStreams& streams = network.symbols->randomStreams();
    EXPECT_EQ(&streams.select(1), &streams.first());
}

TEST_F(cStatementTest, multiSimIsTruncated) {
    execute("MULTISIM 2.9");
    EXPECT_EQ(network.replications, 2);

    execute("MULTISIM 2*500");
    EXPECT_EQ(network.replications, 1000);
}

class cMultiSimTest : public cStatementTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cMultiSimTest, refusesWhatIsNoPositiveInteger) {
    const cException failure = failureOfStatement(GetParam());

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, std::string("Expression does not evaluate to positive integer in:\n") + GetParam());
    EXPECT_EQ(network.replications, 1);
}

INSTANTIATE_TEST_SUITE_P(values, cMultiSimTest,
                         ::testing::Values("MULTISIM 0", "MULTISIM 0.5", "MULTISIM 0-1", "MULTISIM nan",
                                           "MULTISIM 3000000000", "MULTISIM nobody"));

// ---- SIMULATECONDITION, SIMULATE

TEST_F(cStatementTest, simulateConditionCompilesItsFirstArgument) {
    execute("SIMULATECONDITION SimTime>10+0*Rnd() ignored");

    EXPECT_EQ(network.endCondition.getText(), "SimTime>10+0*Rnd()");
    EXPECT_EQ(state(), streamState::afterOneDraw);  // the trial
    network.simTime = 11.0;
    EXPECT_EQ(network.endCondition.evaluate(), 1.0);
}

TEST_F(cStatementTest, aQuotedSimulateConditionKeepsItsQuotesAndIsNeverTrue) {
    execute("SIMULATECONDITION 'SimTime > 5'");
    network.simTime = 100.0;

    EXPECT_EQ(network.endCondition.getText(), "'SimTime > 5'");
    EXPECT_EQ(network.endCondition.evaluate(), 0.0);  // "'SimTime " is unknown, and " 5'" is 5
}

TEST_F(cStatementTest, aFailingSimulateConditionPasses) {
    EXPECT_EQ(failureOfStatement("SIMULATECONDITION 1+").code, 2);
}

TEST_F(cStatementTest, simulateFiresBothHooksOnceAroundSettingTheClockToZero) {
    network.execute(
        "BEFORETIMEADVANCE PRINT log \"before %f\" SimTime;\nAFTERTIMEADVANCE PRINT log \"after %f\" SimTime;");
    network.simTime = 7.0;

    execute("SIMULATE");

    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "before 7.000000\nafter 0.000000\n");
    EXPECT_EQ(network.simTime, 0.0);
}

TEST_F(cStatementTest, simulateChecksTheNetworkFirst) {
    network.addCombi("Alone");
    network.execute("BEFORETIMEADVANCE PRINT log before;");

    const cException failure = failureOfStatement("SIMULATE");

    EXPECT_EQ(failure.code, 4);
    EXPECT_TRUE(network.runStatistics->printTexts.empty());
}

TEST_F(cStatementTest, simulateInsideASimulationFails) {
    network.execute("AFTERTIMEADVANCE SIMULATE;");

    EXPECT_EQ(failureOfStatement("SIMULATE").code, 1);
}

// ---- PRINT, POST

TEST_F(cStatementTest, printAppendsTheFilledTextAndALineFeedUnderItsKey) {
    execute("INIT Soil1 3");
    network.simTime = 2.0;

    execute("PRINT log \"t=%f n=%d\" SimTime Soil1.CurCount");

    EXPECT_EQ(network.runStatistics->printTexts, (std::map<std::string, std::string>{{"log", "t=2.000000 n=3\n"}}));
}

TEST_F(cStatementTest, printKeepsATextForEachKey) {
    execute("PRINT b \"one\"");
    execute("PRINT a \"two\"");
    execute("PRINT b \"three\"");

    EXPECT_EQ(network.runStatistics->printTexts,
              (std::map<std::string, std::string>{{"a", "two\n"}, {"b", "one\nthree\n"}}));
}

TEST_F(cStatementTest, printJoinsItsWordsWithOneBlankEach) {
    execute("PRINT log \"a    b\tc\"");
    execute("PRINT log without   quotes");

    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "a b c\nwithout quotes \n");
}

TEST_F(cStatementTest, printWithASingleQuoteInItsFormatStillPrints) {
    execute("PRINT log \"it's  %d o'clock\" 5");

    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "it's 5 o'clock\n");
}

TEST_F(cStatementTest, aFailingPrintMakesNoEntry) {
    EXPECT_EQ(failureOfStatement("PRINT log \"%f\" 1/0").code, 2);

    EXPECT_TRUE(network.runStatistics->printTexts.empty());
}

TEST_F(cStatementTest, postHandsTheFilledTextToTheHost) {
    execute("POST \"n=%d\" 2+3");
    execute("POST plain words");
    execute("POST");

    EXPECT_EQ(network.messages, (cWords{"n=5", "plain words ", ""}));
}

// ---- lists

TEST_F(cStatementTest, whatWasDoneBeforeAFailureStaysDoneAndTheRestDoesNotRun) {
    network.statements.push_back(std::make_unique<cStatement>("SAVEVALUE x 1"));
    network.statements.push_back(std::make_unique<cStatement>("SAVEVALUE y 1/0"));
    network.statements.push_back(std::make_unique<cStatement>("SAVEVALUE x 2"));

    failureOf([&] { network.runStatements(); });

    EXPECT_EQ(network.saveValues, (std::map<std::string, double>{{"x", 1.0}}));
    EXPECT_EQ(network.statements.size(), 3U);
}

TEST_F(cStatementTest, aStatementIsInterpretedAnewAtEachExecution) {
    const cStatement statement("SAVEVALUE n n+1");

    for (int i = 0; i < 3; ++i) statement.execute(network);

    EXPECT_EQ(network.saveValues.at("n"), 3.0);
}

// ---- executed again

class cExecutedAgainTest : public ::testing::TestWithParam<const char*> {};

TEST_P(cExecutedAgainTest, aStatementDoesWhatANewOneDoes) {
    const auto drawsOf = [](auto statementAt) {
        cTestNetwork network;
        network.execute("SAVEVALUE level 1");
        network.execute("VARIABLE pace Rnd()+1");
        network.addCombi("Dig");
        for (int i = 0; i < 4; ++i) statementAt(i).execute(network);
        return std::tuple(network.symbols->randomStreams().first().getState(), *network.saveValues.valueOf("level"),
                          network.runStatistics->printTexts, network.messages);
    };

    const cStatement one(GetParam());
    std::vector<std::unique_ptr<cStatement>> fresh;
    for (int i = 0; i < 4; ++i) fresh.push_back(std::make_unique<cStatement>(GetParam()));

    EXPECT_EQ(drawsOf([&](int) -> const cStatement& { return one; }),
              drawsOf([&](int i) -> const cStatement& { return *fresh[static_cast<std::size_t>(i)]; }));
}

INSTANTIATE_TEST_SUITE_P(texts, cExecutedAgainTest,
                         ::testing::Values("ASSIGN level Rnd()", "ASSIGN level pace", "ASSIGN level pace+level",
                                           "ASSIGN level pace+pace*2", "ASSIGN level level+1",
                                           "SAVEVALUE level pace*level", "ASSIGN level '1 + pace'",
                                           "ASSIGN level Uniform(pace,9)", "SEED pace*1000",
                                           "ASSIGN level Dig.TotInst+pace", "PRINT log \"%f %d\" pace level*10",
                                           "PRINT log \"%f|\" Rnd() 'pace + 1'", "POST \"%d %f\" pace*100 Rnd()",
                                           "POST Rnd()"));

TEST(executedAgainTest, aFailureDoesNotKeepTheStatementFromSucceedingLater) {
    cTestNetwork network;
    network.execute("SAVEVALUE level 0");
    const cStatement statement("ASSIGN level 6/level");
    EXPECT_EQ(failureOf([&] { statement.execute(network); }).message, "Division by 0.");
    network.execute("ASSIGN level 2");

    statement.execute(network);

    EXPECT_EQ(*network.saveValues.valueOf("level"), 3.0);
}

TEST(executedAgainTest, aStatementThatSucceededFailsWhenItsFormulaDoes) {
    cTestNetwork network;
    network.execute("SAVEVALUE level 2");
    const cStatement statement("ASSIGN level 6/level-3");
    statement.execute(network);  // 0

    EXPECT_EQ(failureOf([&] { statement.execute(network); }).message, "Division by 0.");
}

TEST(executedAgainTest, aTextIsFilledWithWhatItsExpressionsGiveThen) {
    cTestNetwork network;
    network.execute("SAVEVALUE level 2");
    const cStatement statement("PRINT log \"%d %f;\" level 1/level");
    statement.execute(network);
    network.execute("ASSIGN level 4");

    statement.execute(network);

    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "2 0.500000;\n4 0.250000;\n");
}

TEST(executedAgainTest, aTargetThatWasForgottenIsNotWrittenTo) {
    cTestNetwork network;
    network.execute("SAVEVALUE level 2");
    const cStatement statement("ASSIGN level 5");
    statement.execute(network);
    network.clearNetwork();

    EXPECT_EQ(failureOf([&] { statement.execute(network); }).message,
              "First part of SAVEPROP variable is not a container.ASSIGN level 5");

    network.execute("SAVEVALUE level 2");
    statement.execute(network);
    EXPECT_EQ(*network.saveValues.valueOf("level"), 5.0);
}

TEST(executedAgainTest, aTargetThatIsForgottenWhileItsValueIsWorkedOutComesBack) {
    cWatchedNetwork network;
    network.execute("SAVEVALUE level 2");
    network.execute("VARIABLE ask GET(\"x\")");
    const cStatement statement("ASSIGN level ask");
    statement.execute(network);
    network.onGet = [&](const std::string&) {
        network.saveValues.erase("level");
        return 7.0;
    };

    statement.execute(network);

    EXPECT_EQ(*network.saveValues.valueOf("level"), 7.0);
}

TEST(executedAgainTest, anUnknownKeywordDoesNothingTheSecondTimeEither) {
    cTestNetwork network;
    const cStatement statement("BADWORD 1/0");

    for (int i = 0; i < 2; ++i) statement.execute(network);

    EXPECT_TRUE(network.saveValues.empty());
}

}  // namespace
