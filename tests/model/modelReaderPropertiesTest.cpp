// How the reader takes the values of property statements, and which statements a line can be at once.

#include "support/readerTest.h"

namespace {

class cModelReaderPropertiesTest : public cReaderTest {
protected:
    /// A queue of soil, a Combi behind it and the draw link between them; then `lines`.
    cModelReading readBehindModel(const cTexts& lines) {
        cTexts all{"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;"};
        all.insert(all.end(), lines.begin(), lines.end());
        return readLines(all);
    }
};

// ---- values

struct cValueCase {
    const char* statement;
    const char* duration;
};

class cValueTest : public cModelReaderPropertiesTest, public ::testing::WithParamInterface<cValueCase> {};

TEST_P(cValueTest, isWhatStandsBehindTheNameJoinedWithoutBlanksAndSemicolons) {
    readBehindModel({GetParam().statement});

    EXPECT_EQ(combi("C1").getDurationText(), GetParam().duration);
}

INSTANTIATE_TEST_SUITE_P(
    durations, cValueTest,
    ::testing::Values(cValueCase{"DURATION C1 5;", "5"}, cValueCase{"DURATION C1 1 + 2 * 3;", "1+2*3"},
                      cValueCase{"DURATION C1  1   +  2 ;", "1+2"}, cValueCase{"DURATION C1 1;+;2;", "1+2"},
                      cValueCase{"DURATION C1 Uniform ( 1 , 2 );", "Uniform(1,2)"},
                      cValueCase{"DURATION C1 12 34;", "1234"}, cValueCase{"DURATION;C1;5", "5"},
                      cValueCase{" DURATION C1 5", "5"}, cValueCase{"DURATION C1 1\t;", "1\t"},
                      cValueCase{"DURATION C1 '1 + 2';", "'1+2'"}));  // quotes are taken off elsewhere

TEST_F(cModelReaderPropertiesTest, everyPropertyReachesItsElement) {
    readBehindModel({"DURATION C1 1;", "PRIORITY C1 2;", "SEMAPHORE C1 3;", "TBINITIALCONTENT Q1 4;", "ENOUGH L1 5;",
                     "DRAWUNTIL L1 6;", "DRAWAMT L1 7;", "DRAWORDER L1 8;", "DRAWWHERE L1 9;", "RELEASEAMT L1 10;",
                     "RELEASEUNTIL L1 11;", "RELEASEORDER L1 12;", "RELEASEWHERE L1 13;", "STRENGTH L1 14;"});

    EXPECT_EQ(combi("C1").getDurationText(), "1");
    EXPECT_EQ(combi("C1").getPriorityText(), "2");
    EXPECT_EQ(combi("C1").getSemaphoreText(), "3");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "4");
    EXPECT_EQ(rule("L1", eLinkRule::enough), "5");
    EXPECT_EQ(rule("L1", eLinkRule::drawUntil), "6");
    EXPECT_EQ(rule("L1", eLinkRule::drawAmt), "7");
    EXPECT_EQ(rule("L1", eLinkRule::drawOrder), "8");
    EXPECT_EQ(rule("L1", eLinkRule::drawWhere), "9");
    EXPECT_EQ(rule("L1", eLinkRule::releaseAmt), "10");
    EXPECT_EQ(rule("L1", eLinkRule::releaseUntil), "11");
    EXPECT_EQ(rule("L1", eLinkRule::releaseOrder), "12");
    EXPECT_EQ(rule("L1", eLinkRule::releaseWhere), "13");
    EXPECT_EQ(rule("L1", eLinkRule::strength), "14");
}

TEST_F(cModelReaderPropertiesTest, aLaterValueReplacesAnEarlierOne) {
    readBehindModel({"DURATION C1 5;", "DURATION C1 6;"});

    EXPECT_EQ(combi("C1").getDurationText(), "6");
}

TEST_F(cModelReaderPropertiesTest, anEmptyValueLeavesWhatTheElementHas) {
    const cModelReading reading =
        readBehindModel({"DURATION C1 5;", "DURATION C1 ;", "PRIORITY C1;", "SEMAPHORE C1 ;;", "TBINITIALCONTENT Q1 ;",
                         "ENOUGH L1 ;", "DRAWUNTIL L1", "RELEASEUNTIL L1 ;"});

    EXPECT_EQ(combi("C1").getDurationText(), "5");
    EXPECT_EQ(combi("C1").getPriorityText(), "0");
    EXPECT_EQ(combi("C1").getSemaphoreText(), "1");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "0");
    EXPECT_EQ(rule("L1", eLinkRule::enough), "PredNode.CurCount");
    EXPECT_EQ(rule("L1", eLinkRule::drawUntil), "nDraws");
    EXPECT_EQ(rule("L1", eLinkRule::releaseUntil), "0");
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

// ---- the order of the tests on one line

TEST_F(cModelReaderPropertiesTest, aValueThatIsItselfALinkStatementIsReadAsThatToo) {
    readBehindModel({"DURATION C1 ENOUGH L1 7;"});

    EXPECT_EQ(combi("C1").getDurationText(), "ENOUGHL17");
    EXPECT_EQ(rule("L1", eLinkRule::enough), "7");
}

TEST_F(cModelReaderPropertiesTest, aValueThatIsItselfAnInitialContentIsReadAsThatTooAndThenAsALinkStatement) {
    readBehindModel({"PRIORITY C1 TBINITIALCONTENT Q1 DRAWAMT L1 7;"});

    EXPECT_EQ(combi("C1").getPriorityText(), "TBINITIALCONTENTQ1DRAWAMTL17");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "DRAWAMTL17");
    EXPECT_EQ(rule("L1", eLinkRule::drawAmt), "7");
}

TEST_F(cModelReaderPropertiesTest, theTestsGoForwardOnly) {
    readBehindModel({"DURATION C1 PRIORITY C1 7;", "TBINITIALCONTENT Q1 DURATION C1 8;",
                     "ENOUGH L1 TBINITIALCONTENT Q1 9;", "STRENGTH L1 DRAWAMT L1 10;"});

    EXPECT_EQ(combi("C1").getDurationText(), "PRIORITYC17");
    EXPECT_EQ(combi("C1").getPriorityText(), "0");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "DURATIONC18");
    EXPECT_EQ(rule("L1", eLinkRule::enough), "TBINITIALCONTENTQ19");
    EXPECT_EQ(rule("L1", eLinkRule::strength), "DRAWAMTL110");
    EXPECT_EQ(rule("L1", eLinkRule::drawAmt), "1");
}

TEST_F(cModelReaderPropertiesTest, aValueCanNotBringAPositionOrACounter) {
    cNetworkElement::setElementCounter(0);

    readBehindModel({"DURATION C1 POSNODE C1 3 4;", "DURATION C1 RANKCOUNT 40;"});

    EXPECT_EQ(calls({"place"}).back(), "place L1 200 200");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 3);
}

TEST_F(cModelReaderPropertiesTest, aPropertyWithoutAnElementIsTakenOffTheLineAllTheSame) {
    readBehindModel({"DURATION Nope ENOUGH L1 7;"});

    EXPECT_EQ(rule("L1", eLinkRule::enough), "7");
}

TEST_F(cModelReaderPropertiesTest, aConsolidatorTakesItsCondition) {
    readBehindModel({"CONSOLIDATOR K1;", "CONSOLIDATEWHEN K1 SimTime > 10;"});

    EXPECT_EQ(network.findElement<cNodeConsolidator>("K1")->getFiringConditionText(), "SimTime>10");
}

TEST_F(cModelReaderPropertiesTest, aLineCanGiveAConditionAndBehindItAnInitialContent) {
    readBehindModel({"CONSOLIDATOR K1;", "CONSOLIDATEWHEN K1 TBINITIALCONTENT Q1 7;"});

    EXPECT_EQ(network.findElement<cNodeConsolidator>("K1")->getFiringConditionText(), "TBINITIALCONTENTQ17");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "7");
}

TEST_F(cModelReaderPropertiesTest, onlyTheFirstLineOfALongTextBelongsToItsStatement) {
    readBehindModel({"CONSOLIDATEWHEN K1 Q1.CurCount", "DURATION C1 7;", ">5;", "TBINITIALCONTENT Q1 3;"});

    EXPECT_EQ(combi("C1").getDurationText(), "7");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "3");
}

TEST_F(cModelReaderPropertiesTest, aLongTextWhoseSecondLineBeginsWithoutAKeywordCanStopTheReading) {
    readBehindModel({"CONSOLIDATEWHEN K1 Q1.CurCount", "+ MYQUEUE .CurCount;", "DURATION C1 7;"});

    EXPECT_EQ(combi("C1").getDurationText(), "0");
}

// ---- whose property it is

TEST_F(cModelReaderPropertiesTest, aNameThatIsLookedUpStaysInTheRegistryWithoutAnElement) {
    const cModelReading reading =
        readBehindModel({"DURATION Nope 5;", "ENOUGH Never 5;", "POSNODE Nowhere 1 2;", "POSLINK Nolink 3 4 0 0;"});

    EXPECT_EQ(warningTexts(reading),
              (cTexts{"5: there is no element \"Nope\"", "6: there is no element \"Never\"",
                      "7: there is no element \"Nowhere\"", "8: there is no element \"Nolink\""}));
    for (const char* name : {"Nope", "Never", "Nowhere", "Nolink"}) {
        ASSERT_TRUE(network.elements.contains(name)) << name;
        EXPECT_EQ(network.elements.at(name), nullptr) << name;
    }
}

TEST_F(cModelReaderPropertiesTest, aRunPassesOverNamesWithoutAnElement) {
    readBehindModel({"TBINITIALCONTENT Q1 3;", "DURATION C1 2;", "DURATION Aardvark 5;", "DURATION Zebra 5;"});

    network.run("MULTISIM 2;\nONSTART Nope POST x;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 2);
    EXPECT_EQ(network.runStatistics->getMeans().front(), 2.0);
}

TEST_F(cModelReaderPropertiesTest, anElementOfAnotherClassKeepsWhatItHas) {
    const cModelReading reading =
        readBehindModel({"DURATION Q1 5;", "TBINITIALCONTENT C1 5;", "ENOUGH C1 5;", "PRIORITY L1 5;"});

    EXPECT_EQ(warningTexts(reading), (cTexts{"5: \"Q1\" has no DURATION", "6: \"C1\" has no TBINITIALCONTENT",
                                             "7: \"C1\" has no ENOUGH", "8: \"L1\" has no PRIORITY"}));
    EXPECT_EQ(queue("Q1").getInitialContentText(), "0");
    EXPECT_EQ(combi("C1").getDurationText(), "0");
}

// ---- expressions that fail

TEST_F(cModelReaderPropertiesTest, anExpressionThatNeedsALaterNameIsCompiledOnceMoreBehindTheLastLine) {
    const cModelReading reading =
        readBehindModel({"DURATION C1 6/Half;", "<CODE>", "SAVEVALUE Half 2;", "<CODE>", "POSNODE C1 1 2;"});

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(combi("C1").getDurationText(), "6/Half");
}

TEST_F(cModelReaderPropertiesTest, anExpressionThatStillFailsKeepsItsTextAndIsAWarning) {
    const cModelReading reading =
        readBehindModel({"DURATION C1 6/Half;", "TBINITIALCONTENT Q1 (5;", "DRAWAMT L1 5);", "PRIORITY C1 7;"});

    EXPECT_EQ(warningTexts(reading),
              (cTexts{"5: DURATION of \"C1\", \"6/Half\": Division by 0.",
                      "6: TBINITIALCONTENT of \"Q1\", \"(5\": Operator or Function not recognized.",
                      "7: DRAWAMT of \"L1\", \"5)\": not an expression"}));
    EXPECT_EQ(combi("C1").getDurationText(), "6/Half");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "(5");
    EXPECT_EQ(rule("L1", eLinkRule::drawAmt), "5)");
    EXPECT_EQ(combi("C1").getPriorityText(), "7");  // reading went on
}

TEST_F(cModelReaderPropertiesTest, suchAnExpressionFailsAtTheRunWithItsOwnMessage) {
    readBehindModel({"DURATION C1 6/Half;", "TBINITIALCONTENT Q1 3;"});

    const cException failure = failureOf([&] { network.run(); });

    EXPECT_EQ(failure.code, failureCode::expression);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "6/Half");
}

TEST_F(cModelReaderPropertiesTest, aNameThatTheCodeOfTheRunGivesMendsTheExpression) {
    const cModelReading reading = readBehindModel({"DURATION C1 6/Half;", "TBINITIALCONTENT Q1 3;", "<CODE>",
                                                   "SETATTRIBUTE Q1 InitialContent 1;", "SAVEVALUE Half 2;", "<CODE>"});
    EXPECT_EQ(warningTexts(reading), cTexts{});

    network.run(reading.globalCode);

    EXPECT_EQ(network.runStatistics->getMeans().front(), 3.0);
}

TEST_F(cModelReaderPropertiesTest, onlyTheLastValueOfAPropertyIsTriedAgain) {
    const cModelReading reading = readBehindModel({"DURATION C1 5);", "DURATION C1 7;", "PRIORITY C1 1/0;",
                                                   "PRIORITY C1 2/0;", "SEMAPHORE C1 8);", "SEMAPHORE C1 ;"});

    EXPECT_EQ(combi("C1").getDurationText(), "7");
    EXPECT_EQ(combi("C1").getPriorityText(), "2/0");
    EXPECT_EQ(combi("C1").getSemaphoreText(), "8)");
    EXPECT_EQ(warningTexts(reading), (cTexts{"8: PRIORITY of \"C1\", \"2/0\": Division by 0.",
                                             "9: SEMAPHORE of \"C1\", \"8)\": not an expression"}));
}

TEST_F(cModelReaderPropertiesTest, whatFailedOnAnElementIsNotTriedOnOneThatTookItsPlace) {
    const cModelReading reading = readBehindModel({"DURATION C1 5);", "COMBI C1;"});

    EXPECT_EQ(combi("C1").getDurationText(), "0");
    EXPECT_EQ(warningTexts(reading),
              cTexts{"6: the name \"C1\" is taken or not a name; the element is called \"Combi4\""});
}

TEST_F(cModelReaderPropertiesTest, aTrialThatAsksTheHostIsPutOff) {
    readBehindModel({"DURATION C1 GET(\"length\");"});

    EXPECT_EQ(network.askedKeys, cTexts{});
    EXPECT_EQ(combi("C1").getDurationText(), "GET(\"length\")");
}

TEST_F(cModelReaderPropertiesTest, theUsersStopEndsTheReading) {
    network.stopAtHostEvent = 1;

    // The sampling of shapes that are no numbers never ends, but lets the host process its events.
    const cException failure = failureOf([&] { readBehindModel({"DURATION C1 Pert(0,0,0);", "COMBI C2;"}); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(combi("C1").getDurationText(), "Pert(0,0,0)");
    EXPECT_EQ(network.findElement("C2"), nullptr);
    EXPECT_EQ(calls({"finish"}), cTexts{});
}

}  // namespace
