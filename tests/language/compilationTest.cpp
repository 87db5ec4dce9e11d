#include "language/compilation.h"

#include "support/soilScene.h"

#include <gtest/gtest.h>

namespace {

using cLines = std::vector<std::string>;

struct cCode {
    cLines lines;
    cLines texts;
};

void PrintTo(const cCode& row, std::ostream* stream) {
    for (const std::string& line : row.lines) *stream << line << '|';
}

class cStatementTextsTest : public ::testing::TestWithParam<cCode> {};

TEST_P(cStatementTextsTest, are) { EXPECT_EQ(statementTexts(GetParam().lines), GetParam().texts); }

INSTANTIATE_TEST_SUITE_P(
    oneStatementIsTakenPerLine, cStatementTextsTest,
    ::testing::Values(cCode{{"a;"}, {"a"}}, cCode{{"a;", "b;"}, {"a", "b"}},
                      cCode{{"SAVEVALUE x 1; SAVEVALUE y 2;"}, {"SAVEVALUE x 1"}},
                      cCode{{"SAVEVALUE x 1; SAVEVALUE y 2;", ""}, {"SAVEVALUE x 1", " SAVEVALUE y 2"}},
                      cCode{{"a;b;c;", "", ""}, {"a", "b", "c"}}, cCode{{"a;b;c;", ""}, {"a", "b"}},
                      cCode{{"a;b;c;"}, {"a"}}, cCode{{"a;b;", "c;"}, {"a", "b"}},
                      cCode{{"a;b;", "c;", ""}, {"a", "b", "c"}}));

INSTANTIATE_TEST_SUITE_P(theLastLineNeedsNoSemicolon, cStatementTextsTest,
                         ::testing::Values(cCode{{"a"}, {"a"}}, cCode{{"a", ""}, {"a"}}, cCode{{"a;b"}, {"a"}},
                                           cCode{{"a;b", ""}, {"a", "b"}}, cCode{{"a;", "b"}, {"a", "b"}},
                                           cCode{{"a;b", "c"}, {"a", "bc"}}, cCode{{"a;b;", "c"}, {"a", "b"}},
                                           cCode{{" "}, {" "}}));

INSTANTIATE_TEST_SUITE_P(linesOfOneStatementAreJoinedDirectly, cStatementTextsTest,
                         ::testing::Values(cCode{{"SE", "ED 5;"}, {"SEED 5"}}, cCode{{"SEED", "5;"}, {"SEED5"}},
                                           cCode{{"SEED ", "5;"}, {"SEED 5"}},
                                           cCode{{"SEED", " ", "5", ";"}, {"SEED 5"}}, cCode{{"", "", "a;"}, {"a"}}));

INSTANTIATE_TEST_SUITE_P(aBackslashBeginsAComment, cStatementTextsTest,
                         ::testing::Values(cCode{{"\\ only a comment;"}, {}}, cCode{{"a; \\ why; b;"}, {"a"}},
                                           cCode{{"a \\ why; b;", "c;"}, {"a c"}},
                                           cCode{{"a; \\ why", " b;"}, {"a", "  b"}},
                                           cCode{{"a\\", "b\\", "c;"}, {"abc"}}, cCode{{"a;b;\\c;", ""}, {"a", "b"}},
                                           cCode{{"PRINT log \"a\\b\";", "x;"}, {"PRINT log \"ax"}},
                                           cCode{{"a", "\\b;"}, {"a"}}, cCode{{"\\\\a;", "b;"}, {"b"}}));

INSTANTIATE_TEST_SUITE_P(nothingGivesNothingAndAnEmptyStatementAnEmptyText, cStatementTextsTest,
                         ::testing::Values(cCode{{}, {}}, cCode{{""}, {}}, cCode{{"", ""}, {}}, cCode{{";"}, {""}},
                                           cCode{{"a;;b;", "", ""}, {"a", "", "b"}}));

TEST(statementTextsTest, aHundredThousandStatementsOnOneLineAreTakenOneByOne) {
    std::string line;
    for (int i = 0; i < 100000; ++i) line += "SEED 5;";
    cLines lines(100000);
    lines[0] = line;

    const cLines texts = statementTexts(lines);

    ASSERT_EQ(texts.size(), 100000U);
    EXPECT_EQ(texts.back(), "SEED 5");
}

TEST(statementTextsTest, aStatementCanRunOverAHundredThousandLines) {
    const cLines texts = statementTexts(cLines(100000, "x"));

    EXPECT_EQ(texts, cLines{std::string(100000, 'x')});
}

/// A host that notes which resource's entry code posts.
class cSpyNetwork : public cTestNetwork {
public:
    void hostMessage(const std::string& text) override {
        cTestNetwork::hostMessage(text);
        entered = symbols->currentResource;
    }
    const cRes* entered = nullptr;
};

TEST(entryCodeTest, knowsTheResourceThatEntered) {
    cSpyNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cNodeQueue& soil1 = network.addQueue("Soil1", soil);
    network.execute("ONENTRY Soil1 POST here;");
    const auto resource = makeCounted<cResGen>(&soil, 1.0);

    soil1.receive(*resource);

    EXPECT_EQ(network.entered, resource.get());
    EXPECT_EQ(network.symbols->currentResource, nullptr);
}

/// The scene, in which Haul lasts 2 time units.
class cCompilationTest : public cSoilScene {
protected:
    cCompilationTest() { haul.setDurationText("2"); }

    void compile(const std::string& code, eCompiled compiled = eCompiled::everything) {
        compileCode(network, splitLines(code), compiled);
    }
    std::vector<std::string> textsOf(const cStatementList& list) {
        std::vector<std::string> texts;
        for (const auto& statement : list) texts.push_back(statement->getText());
        return texts;
    }
    std::string printed(const std::string& key) { return network.runStatistics->printTexts[key]; }
};

// ---- places

TEST_F(cCompilationTest, plainStatementsGoToTheStatementsOfTheNetwork) {
    compile("SEED 5;\nBADWORD 1;\nSIMULATE;");

    EXPECT_EQ(textsOf(network.statements), (cLines{"SEED 5", "BADWORD 1", "SIMULATE"}));
}

TEST_F(cCompilationTest, declarationsStandTwice) {
    compile("SAVEVALUE x 1;\nSEED 5;\nVARIABLE v x;");

    EXPECT_EQ(textsOf(network.statements),
              (cLines{"SAVEVALUE x 1", "SAVEVALUE x 1", "SEED 5", "VARIABLE v x", "VARIABLE v x"}));
}

TEST_F(cCompilationTest, ofDeclarationsOnlyEachStandsOnceAndNothingElseIsTaken) {
    compile("SAVEVALUE x 1;\nSEED 5;\nVARIABLE v x;\nIF 1/0 SEED 5;\nONSTART Nope SEED 5;\nAFTERTIMEADVANCE SEED 5;",
            eCompiled::declarations);

    EXPECT_EQ(textsOf(network.statements), (cLines{"SAVEVALUE x 1", "VARIABLE v x"}));
    EXPECT_TRUE(network.afterTimeAdvance.empty());
    EXPECT_TRUE(network.conditionalStatements.empty());
    EXPECT_FALSE(network.elements.contains("Nope"));
}

TEST_F(cCompilationTest, aDeclarationThatIsRandomDrawsFourTimes) {
    network.execute("SAVEVALUE x Rnd();");

    EXPECT_EQ(network.saveValues.at("x"), 0.398787);  // the fourth number
}

TEST_F(cCompilationTest, emptyStatementsAreSkipped) {
    compile(";;\n \n;\nSEED 5;");

    EXPECT_EQ(textsOf(network.statements), cLines{"SEED 5"});
}

TEST_F(cCompilationTest, theLastOfTwoStatementsOnTheLastLineIsLost) {
    network.execute("SAVEVALUE x 1; SAVEVALUE y 2;");

    EXPECT_TRUE(network.saveValues.contains("x"));
    EXPECT_FALSE(network.saveValues.contains("y"));
}

TEST_F(cCompilationTest, aLineFeedBehindTheLastLineKeepsIt) {
    network.execute("SAVEVALUE x 1; SAVEVALUE y 2;\n");

    EXPECT_EQ(network.saveValues, (std::map<std::string, double>{{"x", 1.0}, {"y", 2.0}}));
}

TEST_F(cCompilationTest, timeAdvanceCodeGoesToItsLists) {
    compile("AFTERTIMEADVANCE SEED   5;\nBEFORETIMEADVANCE PRINT log \"a  b\";\nAFTERTIMEADVANCE SEED 6;");

    EXPECT_EQ(textsOf(network.afterTimeAdvance), (cLines{"SEED 5 ", "SEED 6 "}));  // each word with a blank behind it
    EXPECT_EQ(textsOf(network.beforeTimeAdvance), cLines{"PRINT log \"a b\" "});
    EXPECT_TRUE(network.statements.empty());
}

class cDroppedTest : public cCompilationTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cDroppedTest, isSilentAndLeavesAnEntryWithoutAnElement) {
    compile(std::string(GetParam()) + " Nope PRINT log \"%f\" 1/0;");

    EXPECT_TRUE(network.statements.empty());
    ASSERT_TRUE(network.elements.contains("Nope"));
    EXPECT_EQ(network.elements.at("Nope"), nullptr);
}

TEST_P(cDroppedTest, isSilentAlsoWithoutAnyWordBehindIt) {
    compile(std::string(GetParam()) + ";");

    EXPECT_TRUE(network.statements.empty());
}

INSTANTIATE_TEST_SUITE_P(eventCodeOfAnElementThatIsNotThere, cDroppedTest,
                         ::testing::Values("ONSTART", "BEFOREEND", "ONEND", "BEFOREDRAWS", "ONENTRY", "ONFLOW"));

TEST_F(cCompilationTest, eventCodeOfAnElementOfAnotherClassIsDropped) {
    network.run(
        "ONSTART Soil1 PRINT log s;\nBEFOREEND Draw1 PRINT log b;\nONEND Soil2 PRINT log e;\nBEFOREDRAWS Soil1 PRINT "
        "log "
        "d;\nONENTRY Haul PRINT log q;\nONFLOW Haul PRINT log f;\nINIT Soil1 1;\nSIMULATE;");

    EXPECT_EQ(soil2.getContents().size(), 1U);
    EXPECT_EQ(printed("log"), "");
}

TEST_F(cCompilationTest, eachBlockFiresAtItsPlace) {
    soil1.setInitialContentText("1");

    network.run(
        "ONSTART Haul PRINT log \"start\";\nBEFOREEND Haul PRINT log \"before end\";\nONEND Haul PRINT log \"end\";\n"
        "BEFOREDRAWS Haul PRINT log \"before draws\";\nONENTRY Soil1 PRINT log \"entry 1\";\n"
        "ONENTRY Soil2 PRINT log \"entry 2\";\nONFLOW Draw1 PRINT log \"flow 1\";\nONFLOW Release1 PRINT log \"flow "
        "2\";\n"
        "BEFORETIMEADVANCE PRINT log \"before advance\";\nAFTERTIMEADVANCE PRINT log \"after advance\";\n"
        "IF SimTime==2 PRINT log \"if\";\n");

    EXPECT_EQ(printed("log"),
              "entry 1\n"
              "before advance\nafter advance\n"
              "before draws\nflow 1\nstart\n"
              "before advance\nafter advance\nif\n"
              "before end\nflow 2\nentry 2\nend\n");
}

TEST_F(cCompilationTest, eventCodeIsInterpretedAnewAtEachFiring) {
    soil1.setInitialContentText("3");

    network.run("ONSTART Haul SAVEVALUE n n+1;");

    EXPECT_EQ(network.saveValues.at("n"), 3.0);
}

TEST_F(cCompilationTest, startCodeReadsTheDurationOfItsInstance) {
    soil1.setInitialContentText("1");

    network.run("ONSTART Haul PRINT log \"%f\" Haul.Duration;\nONENTRY Soil2 PRINT log \"%f\" Haul.Duration;\n");

    EXPECT_EQ(printed("log"), "2.000000\n0.000000\n");  // while a queue is entered no instance is current
}

TEST_F(cCompilationTest, aFailureOfEventCodeNamesItsWordsEachWithABlankBehindIt) {
    compile("ONSTART Haul SEED   5 6;");

    const cException failure = failureOf([&] { haul.startInstance({}, 0.0, 1.0); });

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, "Syntax error in statement:\nSEED 5 6 ");
}

// ---- IF

TEST_F(cCompilationTest, ifKeepsAConditionAndAStatement) {
    compile("IF SimTime>5 PRINT log x;\nIF 'SimTime > 6' SEED 5;");

    ASSERT_EQ(network.conditionalStatements.size(), 2U);
    EXPECT_EQ(network.conditionalStatements[0].condition->getText(), "SimTime>5");
    EXPECT_EQ(network.conditionalStatements[0].statement->getText(), "PRINT log x ");
    EXPECT_EQ(network.conditionalStatements[1].condition->getText(), "SimTime > 6");
    EXPECT_TRUE(network.statements.empty());
}

TEST_F(cCompilationTest, theTrialOfAConditionDraws) {
    compile("IF Rnd() SEED 5;");

    EXPECT_EQ(state(), streamState::afterOneDraw);
}

TEST_F(cCompilationTest, aConditionWhoseTrialFailsEndsTheCompilation) {
    const cException failure = failureOf([&] { compile("SEED 5;\nIF 1/0 SEED 6;\nSEED 7;"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(textsOf(network.statements), cLines{"SEED 5"});
    EXPECT_TRUE(network.conditionalStatements.empty());
}

TEST_F(cCompilationTest, anIfWithoutAConditionFails) {
    EXPECT_EQ(failureOf([&] { compile("IF;"); }).code, 2);
}

TEST_F(cCompilationTest, conditionsAreEvaluatedAndTheirStatementsRunInTheOrderOfTheSource) {
    network.answers = {{"c", 1.0}, {"a", 0.0}, {"b", -1.0}, {"d", 2.0}};
    compile("IF GET(\"c\") POST c;\nIF GET(\"a\") POST a;\nIF GET(\"b\") POST b;\nIF GET(\"d\") POST d;");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.askedKeys, (cLines{"c", "a", "b", "d"}));
    EXPECT_EQ(network.messages, (cLines{"c ", "b ", "d "}));
}

TEST_F(cCompilationTest, manyRandomConditionsDrawInTheOrderOfTheSource) {
    std::string code;
    for (int i = 0; i < 100; ++i) code += "IF Rnd()<0.5 POST " + std::to_string(i) + ";\n";
    compile(code);
    network.symbols->randomStreams().setSeed(1);

    network.runAfterTimeAdvance();

    cRandomGenerator generator(1);
    cLines expected;
    for (int i = 0; i < 100; ++i)
        if (generator.uniform() < 0.5) expected.push_back(std::to_string(i) + ' ');
    EXPECT_EQ(network.messages, expected);
    EXPECT_EQ(state(), generator.getState());
}

TEST_F(cCompilationTest, noStatementRunsBeforeAllConditionsAreDone) {
    network.execute("SAVEVALUE x 0;\nIF x==0 ASSIGN x 1;\nIF x==1 POST one;");

    network.runAfterTimeAdvance();
    EXPECT_EQ(network.messages, cLines{});
    EXPECT_EQ(network.saveValues.at("x"), 1.0);

    network.runAfterTimeAdvance();
    EXPECT_EQ(network.messages, cLines{"one "});
}

TEST_F(cCompilationTest, conditionsAreTestedBehindTheAfterTimeAdvanceCode) {
    network.execute("SAVEVALUE x 0;\nIF x POST late;\nAFTERTIMEADVANCE ASSIGN x 1;");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, cLines{"late "});
}

TEST_F(cCompilationTest, aConditionThatIsNotANumberIsTrue) {
    compile("IF nan POST nan;\nIF (0-8)^0.5 POST root;\nIF 0-0.0000001 POST tiny;");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, (cLines{"nan ", "root "}));
}

TEST_F(cCompilationTest, anIfHasNoEndOfEffect) {
    soil1.setInitialContentText("4");

    network.run(
        "IF SimTime>=2 PRINT log \"%f\" SimTime;\nSIMULATECONDITION SimTime>=6;\n"
        "BEFOREDRAWS Haul SETATTRIBUTE Haul Duration 2*(Haul.TotInst+1);\n");

    // Haul starts four instances at 0, which end at 2, 4, 6 and 8; the condition holds at 6.
    EXPECT_EQ(printed("log"), "2.000000\n4.000000\n6.000000\n");
}

// ---- initial content

TEST_F(cCompilationTest, everyQueueWithContentGetsAnInitByName) {
    network.addQueue("Alpha", soil).setInitialContentText("2.5");
    soil2.setInitialContentText("5");
    network.elements["Nobody"];  // as a look-up leaves it

    addInitialContent(network);

    EXPECT_EQ(textsOf(network.statements), (cLines{"INIT Alpha 2.500000", "INIT Soil2 5.000000", "SIMULATE"}));
}

TEST_F(cCompilationTest, withoutContentThereIsSimulateAlone) {
    addInitialContent(network);

    EXPECT_EQ(textsOf(network.statements), cLines{"SIMULATE"});
}

struct cContent {
    const char* text;
    const char* statement;
};

void PrintTo(const cContent& row, std::ostream* stream) { *stream << row.text; }

class cContentTest : public cCompilationTest, public ::testing::WithParamInterface<cContent> {};

TEST_P(cContentTest, isFixedInTheStatement) {
    soil1.setInitialContentText(GetParam().text);

    addInitialContent(network);

    EXPECT_EQ(textsOf(network.statements), (cLines{GetParam().statement, "SIMULATE"}));
}

// A literal isn't rounded, and a very small one isn't 0. What is no number isn't 0 either.
INSTANTIATE_TEST_SUITE_P(values, cContentTest,
                         ::testing::Values(cContent{"1/3", "INIT Soil1 0.333333"},
                                           cContent{"0-2", "INIT Soil1 -2.000000"},
                                           cContent{"0.0000001", "INIT Soil1 0.000000"},
                                           cContent{"nan", "INIT Soil1 nan"},
                                           cContent{"1e6", "INIT Soil1 1000000.000000"}));

TEST_F(cCompilationTest, aResultThatIsRoundedToZeroGetsNoInit) {
    soil1.setInitialContentText("0.0000001+0");

    addInitialContent(network);

    EXPECT_EQ(textsOf(network.statements), cLines{"SIMULATE"});
}

TEST_F(cCompilationTest, aFailingInitialContentPasses) {
    failureOf([&] { soil1.setInitialContentText("1/0"); });

    EXPECT_EQ(failureOf([&] { addInitialContent(network); }).message, "Division by 0.");
}

// ---- a run

TEST_F(cCompilationTest, simulateNeedNotBeWritten) {
    soil1.setInitialContentText("1");

    network.run();

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 1);
    EXPECT_EQ(network.runStatistics->getMeans().at(0), 2.0);  // SimTime
}

TEST_F(cCompilationTest, afterTimeAdvanceCodeRunsOnceAtTimeZeroAndAfterEachAdvance) {
    soil1.setInitialContentText("1");

    network.run("AFTERTIMEADVANCE PRINT log \"%f\" SimTime;");

    EXPECT_EQ(printed("log"), "0.000000\n2.000000\n");
}

TEST_F(cCompilationTest, waitingLinesComeBeforeTheGlobalCode) {
    cRunCode code{{"SAVEVALUE x 5;"}, "SAVEVALUE x x*2;\n", {}};
    cRunObserver nobody;

    runReplications(network, code, nobody);

    EXPECT_EQ(network.saveValues.at("x"), 20.0);  // doubled twice: declarations run twice
    EXPECT_TRUE(code.waitingLines.empty());
}

TEST_F(cCompilationTest, globalCodeRunsOnceAndInitAndSimulateRunAtEachReplication) {
    soil1.setInitialContentText("1");

    network.run("MULTISIM 3;\nPRINT log \"code\";\nAFTERTIMEADVANCE PRINT log \"%f %f\" SimTime Soil1.TotCount;\n");

    const std::string replication = "0.000000 1.000000\n2.000000 1.000000\n";
    EXPECT_EQ(printed("log"), "code\n" + replication + replication + replication);
}

TEST_F(cCompilationTest, eventCodeOfElementsRunsInTheFirstReplicationOnly) {
    soil1.setInitialContentText("1");

    network.run(
        "MULTISIM 3;\nONSTART Haul PRINT log \"start\";\nONENTRY Soil2 PRINT log \"entry\";\nBEFOREDRAWS Haul PRINT "
        "log "
        "\"draws\";\nONFLOW Release1 PRINT log \"flow\";\nIF SimTime==2 PRINT log \"if\";\n");

    EXPECT_EQ(printed("log"), "draws\nstart\nif\nflow\nentry\nif\nif\n");
}

TEST_F(cCompilationTest, aRandomInitialContentIsDrawnOncePerRun) {
    soil1.setInitialContentText("Rnd()");

    network.run("MULTISIM 3;\nBEFORETIMEADVANCE PRINT log \"%f\" Soil1.TotCount;\nSIMULATECONDITION 1;\n");

    // Drawn by the trial when the text was set, and by the run; further ones would be other numbers.
    EXPECT_EQ(printed("log"), "0.893356\n0.893356\n0.893356\n");
}

TEST_F(cCompilationTest, aSimulateInTheGlobalCodeIsARunOfItsOwn) {
    soil1.setInitialContentText("1");

    network.run("AFTERTIMEADVANCE PRINT log \"%f %f\" SimTime Soil1.TotCount;\nSIMULATE;\n");

    EXPECT_EQ(printed("log"), "0.000000 0.000000\n0.000000 1.000000\n2.000000 1.000000\n");
}

TEST_F(cCompilationTest, aStatementThatFailsInTheCodeEndsTheRun) {
    soil1.setInitialContentText("1");

    const cException failure = failureOf([&] { network.run("SEED 5 6;\nPRINT log x;\n"); });

    EXPECT_EQ(failure.message, "Syntax error in statement:\nSEED 5 6");
    EXPECT_EQ(printed("log"), "");
    EXPECT_EQ(network.runStatistics->getReplicationCount(), 0);
}

}  // namespace
