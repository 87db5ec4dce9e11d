// How the reader takes the Global Code out of a file, and what it declares.

#include "support/readerTest.h"

namespace {

class cModelReaderCodeTest : public cReaderTest {};

// ---- where the code ends

struct cBlockCase {
    const char* text;
    const char* code;
    cTexts warnings;
};

const char* const unclosed = "1: the code has no closing <CODE>; the last line of the file is lost";

class cCodeBlockTest : public cReaderTest, public ::testing::WithParamInterface<cBlockCase> {};

TEST_P(cCodeBlockTest, isEveryLineUpToTheNextMark) {
    const cModelReading reading = readText(GetParam().text);

    EXPECT_EQ(reading.globalCode, GetParam().code);
    EXPECT_EQ(calls({"code"}), cTexts{"code [" + std::string(GetParam().code) + ']'});
    EXPECT_EQ(warningTexts(reading), GetParam().warnings);
}

INSTANTIATE_TEST_SUITE_P(closed, cCodeBlockTest,
                         ::testing::Values(cBlockCase{"/<CODE>\nPOST a;\nPOST b;\n/<CODE>\n", "POST a;\nPOST b;\n", {}},
                                           cBlockCase{"/<CODE>\nPOST a;\n/<CODE>", "POST a;\n", {}},
                                           cBlockCase{"/<CODE>\n\n  POST a;\n\n/<CODE>\n", "\n  POST a;\n\n", {}},
                                           cBlockCase{"/<CODE>\n/<CODE>\n", "", {}},
                                           cBlockCase{"a<CODE>b\nPOST a;\nc <CODE> d;\n", "POST a;\n", {}},
                                           cBlockCase{"<CODE><CODE>\nPOST a;\n<CODE>\n", "POST a;\n", {}},
                                           cBlockCase{"/<CODE>\r\nPOST a;\r\n/<CODE>\r\n", "POST a;\n", {}},
                                           cBlockCase{"/<CODE>\nCOMBI C1;\nMYQUEUE x;\nRANKCOUNT 9;\n/<CODE>\n",
                                                      "COMBI C1;\nMYQUEUE x;\nRANKCOUNT 9;\n",
                                                      {}}));

INSTANTIATE_TEST_SUITE_P(cutByTheEndOfTheFile, cCodeBlockTest,
                         ::testing::Values(cBlockCase{"/<CODE>\nPOST a;\nPOST b;\n", "POST a;\n", {unclosed}},
                                           cBlockCase{"/<CODE>\nPOST a;\nPOST b;", "POST a;\n", {unclosed}},
                                           cBlockCase{"/<CODE>\nPOST a;\n\n", "POST a;\n", {unclosed}},
                                           cBlockCase{"/<CODE>\nPOST a;\n", "", {unclosed}},
                                           cBlockCase{"/<CODE>\n", "", {unclosed}},
                                           cBlockCase{"/<CODE>", "", {unclosed}}));

TEST_F(cModelReaderCodeTest, linesOfCodeAreNoStatementsOfTheFile) {
    readLines({"<CODE>", "COMBI C1;", "a QUEUE in front", "RANKCOUNT 40;", "<CODE>", "COMBI C2;"});

    EXPECT_EQ(network.findElement("C1"), nullptr);
    EXPECT_NE(network.findElement("C2"), nullptr);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 1);
}

TEST_F(cModelReaderCodeTest, ofSeveralBlocksTheLastIsTheCodeAndAllDeclare) {
    const cModelReading reading =
        readLines({"<CODE>", "SAVEVALUE First 1;", "<CODE>", "COMBI C1;", "<CODE>", "SAVEVALUE Second 2;", "<CODE>"});

    EXPECT_EQ(reading.globalCode, "SAVEVALUE Second 2;\n");
    EXPECT_EQ(calls({"code"}), (cTexts{"code [SAVEVALUE First 1;\n]", "code [SAVEVALUE Second 2;\n]"}));
    EXPECT_EQ(network.evaluate("First+Second"), 3.0);
    EXPECT_NE(network.findElement("C1"), nullptr);
}

TEST_F(cModelReaderCodeTest, aThirdMarkOpensTheCodeAgain) {
    readLines({"<CODE>", "POST a;", "<CODE>", "<CODE>", "COMBI C1;", "<CODE>"});

    EXPECT_EQ(calls({"code"}), (cTexts{"code [POST a;\n]", "code [COMBI C1;\n]"}));
    EXPECT_EQ(network.findElement("C1"), nullptr);
}

// ---- what it declares

TEST_F(cModelReaderCodeTest, namesAreDeclaredAsSoonAsTheBlockIsRead) {
    const cModelReading reading = readLines(
        {"<CODE>", "SAVEVALUE Half 2;", "VARIABLE Third Half+1;", "<CODE>", "COMBI C1;", "DURATION C1 6/Third;"});

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(combi("C1").getDurationText(), "6/Third");
    EXPECT_EQ(network.evaluate("Half"), 2.0);
    EXPECT_EQ(network.evaluate("Third"), 3.0);
}

TEST_F(cModelReaderCodeTest, onlyDeclarationsRunWhileAFileIsRead) {
    readLines({"COMBI C1;", "<CODE>", "POST hello;", "PRINT log x;", "MULTISIM 5;", "SEED 7;", "ADDTORESULTS r 1;",
               "SIMULATECONDITION 1;", "ONSTART C1 POST hello;", "IF 1 POST hello;", "AFTERTIMEADVANCE POST hello;",
               "SIMULATE;", "SAVEVALUE x 1;", "<CODE>"});

    EXPECT_EQ(network.messages, cTexts{});
    EXPECT_EQ(network.replications, 1);
    EXPECT_TRUE(network.resultExpressions.empty());
    EXPECT_TRUE(network.afterTimeAdvance.empty());
    EXPECT_TRUE(network.conditionalStatements.empty());
    EXPECT_TRUE(network.statements.empty());
    EXPECT_EQ(network.saveValues.size(), 1U);
}

TEST_F(cModelReaderCodeTest, declarationsRunOnceWhileReadingAndTwiceInTheRun) {
    readLines({"COMBI C1;", "<CODE>", "SAVEVALUE n 1;", "SAVEVALUE n n+1;", "<CODE>"});

    EXPECT_EQ(network.evaluate("n"), 2.0);
}

TEST_F(cModelReaderCodeTest, aDeclarationThatFailsIsAWarningAndTheOthersAreMade) {
    const cModelReading reading = readLines({"COMBI C1;", "/<CODE>", "SAVEVALUE a 1/0;", "SAVEVALUE b;",
                                             "VARIABLE c 1);", "SAVEVALUE d 4;", "/<CODE>", "DURATION C1 d;"});

    EXPECT_EQ(warningTexts(reading), (cTexts{"2: declaration \"SAVEVALUE a 1/0\": Division by 0.",
                                             "2: declaration \"SAVEVALUE b\": Syntax error in statement: SAVEVALUE b",
                                             "2: declaration \"VARIABLE c 1)\": not an expression"}));
    EXPECT_EQ(network.evaluate("d"), 4.0);
    EXPECT_EQ(reading.globalCode, "SAVEVALUE a 1/0;\nSAVEVALUE b;\nVARIABLE c 1);\nSAVEVALUE d 4;\n");
    EXPECT_TRUE(network.statements.empty());
}

TEST_F(cModelReaderCodeTest, twoDeclarationsOnTheLastLineOfCodeAreBothMadeForALineFeedStandsBehindThem) {
    readLines({"<CODE>", "SAVEVALUE x 1; SAVEVALUE y 2;", "<CODE>"});

    EXPECT_TRUE(network.saveValues.contains("x"));
    EXPECT_TRUE(network.saveValues.contains("y"));
}

TEST_F(cModelReaderCodeTest, eventCodeWaitsForTheRun) {
    const cModelReading reading =
        readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "TBINITIALCONTENT Q1 2;",
                   "<CODE>", "SAVEVALUE n 0;", "ONSTART C1 ASSIGN n n+1;", "<CODE>"});
    EXPECT_EQ(network.evaluate("n"), 0.0);

    network.run(reading.globalCode);

    EXPECT_EQ(network.evaluate("n"), 2.0);
}

// ---- the line of the opening mark

TEST_F(cModelReaderCodeTest, theLineOfTheMarkIsNoActivityPropertyButAllThatIsTestedLater) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;",  //
               "DURATION C1 7<CODE>;", "<CODE>",                                      //
               "TBINITIALCONTENT Q1 8<CODE>;", "<CODE>",                              //
               "DRAWAMT L1 9<CODE>;", "<CODE>",                                       //
               "POSNODE C1 3 4 <CODE>;", "<CODE>",                                    //
               "SAVEPROPS Soil <CODE>;", "<CODE>"});

    EXPECT_EQ(combi("C1").getDurationText(), "0");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "8<CODE>");
    EXPECT_EQ(rule("L1", eLinkRule::drawAmt), "9<CODE>");
    EXPECT_EQ(calls({"place"}).back(), "place C1 3 4");
    EXPECT_EQ(calls({"saveProps"}), cTexts{});
    EXPECT_EQ(calls({"code"}).size(), 5U);
}

TEST_F(cModelReaderCodeTest, aTypeOrAnElementOnTheLineOfTheMarkIsMadeFirst) {
    readLines({"GENTYPE Soil <CODE>;", "POST a;", "<CODE>", "COMBI C1 <CODE>;", "POST b;", "<CODE>"});

    EXPECT_EQ(builder.calls, (cTexts{"type Soil GENTYPE", "code [POST a;\n]", "node COMBI -", "place C1 200 200",
                                     "code [POST b;\n]", "finish"}));
}

TEST_F(cModelReaderCodeTest, anElementKeywordOnTheLineOfTheMarkStopsTheReadingBeforeTheCode) {
    readLines({"code of MYQUEUE <CODE>", "POST a;", "<CODE>"});

    EXPECT_EQ(calls({"code"}), cTexts{});
}

TEST_F(cModelReaderCodeTest, aWarningOfTheLineOfTheMarkHasThatLine) {
    const cModelReading reading = readLines({"COMBI C1;", "TBINITIALCONTENT C1 <CODE>", "POST a;", "<CODE>"});

    EXPECT_EQ(warningTexts(reading), cTexts{"2: \"C1\" has no TBINITIALCONTENT"});
}

}  // namespace
