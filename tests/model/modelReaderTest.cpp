#include "model/modelReader.h"

#include "support/readerTest.h"

namespace {

class cModelReaderTest : public cReaderTest {};

// ---- a whole file

TEST_F(cModelReaderTest, tellsTheBuilderAboutAWholeModelInTheOrderOfTheFile) {
    const cModelReading reading = readText(R"(GENTYPE Default;
COMBI C1;
QUEUE Q1 Default;


DRAWLINK L1 Q1 C1;

DURATION C1 5;
PRIORITY C1 ;
SEMAPHORE C1 ;
TBINITIALCONTENT Q1 3;

ENOUGH L1 ;
DRAWUNTIL L1 ;
DRAWAMT L1 1;
DRAWORDER L1 ;
DRAWWHERE L1 ;
RELEASEAMT L1 ;
RELEASEUNTIL L1 ;
RELEASEORDER L1 ;
RELEASEWHERE L1 ;
STRENGTH L1 ;

/<CODE>
VARIABLE Cycles 0;
/<CODE>
POSLINK L1 3 11 0 0;
POSNODE C1 320 140;
POSNODE Q1 120 140;
RANKCOUNT 40;
)");

    const cTexts expected{"type Default GENTYPE", "node COMBI -",
                          "place C1 200 200",     "node QUEUE Default",
                          "place Q1 200 200",     "link L1",
                          "start L1 Q1",          "end L1 C1",
                          "place L1 200 200",     "code [VARIABLE Cycles 0;\n]",
                          "points L1 3 11",       "place C1 320 140",
                          "place Q1 120 140",     "finish"};
    EXPECT_EQ(builder.calls, expected);
    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_TRUE(reading.isRunnable);
    EXPECT_EQ(reading.globalCode, "VARIABLE Cycles 0;\n");
    EXPECT_EQ(combi("C1").getDurationText(), "5");
    EXPECT_EQ(combi("C1").getPriorityText(), "0");
    EXPECT_EQ(combi("C1").getSemaphoreText(), "1");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "3");
    EXPECT_EQ(rule("L1", eLinkRule::enough), "PredNode.CurCount");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 40);
}

TEST_F(cModelReaderTest, aModelThatWasReadRuns) {
    const cModelReading reading =
        readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "DURATION C1 Length;",
                   "TBINITIALCONTENT Q1 3;", "/<CODE>", "VARIABLE Length 2;", "/<CODE>"});

    network.run(reading.globalCode);

    EXPECT_EQ(network.runStatistics->columnNames().front(), "SimTime");
    EXPECT_EQ(network.runStatistics->getMeans().front(), 2.0);
}

TEST_F(cModelReaderTest, whatIsReadIsAddedToWhatIsThere) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;"});

    readLines({"QUEUE Q2 Soil;"});

    EXPECT_EQ(queue("Q1").getResType(), queue("Q2").getResType());
    EXPECT_EQ(network.elements.size(), 2U);
}

struct cRunnableCase {
    const char* text;
    bool isRunnable;
};

class cRunnableTest : public cReaderTest, public ::testing::WithParamInterface<cRunnableCase> {};

TEST_P(cRunnableTest, thereIsSomethingToRunWithAnElementOrSomeCode) {
    const cModelReading reading = readText(GetParam().text);

    EXPECT_EQ(reading.isRunnable, GetParam().isRunnable);
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

INSTANTIATE_TEST_SUITE_P(texts, cRunnableTest,
                         ::testing::Values(cRunnableCase{"", false}, cRunnableCase{"\n\n", false},
                                           cRunnableCase{"GENTYPE Soil;\n", false},
                                           cRunnableCase{"RANKCOUNT 5;\n", false}, cRunnableCase{"COMBI C1;\n", true},
                                           cRunnableCase{"<CODE>\nPOST x;\n<CODE>\n", true},
                                           cRunnableCase{"<CODE>\n \t\n\n<CODE>\n", false}));

TEST_F(cModelReaderTest, linesThatAreNotUtf8AreToldAndReadAsTheyStand) {
    const cModelReading reading =
        readLines({"GENTYPE S\xFC;", "QUEUE Q1 S\xFC;", "<CODE>", "POST \"\xC3\xBC\";", "POST \"\xFC\";", "<CODE>"});

    EXPECT_EQ(warningTexts(reading), (cTexts{"1: is not UTF-8", "2: is not UTF-8", "5: is not UTF-8"}));
    EXPECT_EQ(queue("Q1").getResType(), network.findResourceType("S\xFC"));
    EXPECT_EQ(reading.globalCode, "POST \"\xC3\xBC\";\nPOST \"\xFC\";\n");
}

TEST_F(cModelReaderTest, aNameWithoutAnElementIsNothingToRun) {
    const cModelReading reading = readLines({"DURATION C1 5;"});

    EXPECT_EQ(network.elements.size(), 1U);
    EXPECT_FALSE(reading.isRunnable);
}

TEST_F(cModelReaderTest, finishIsToldOnceBehindEverythingElse) {
    readLines({"COMBI C1;", "DURATION C1 Later;", "<CODE>", "SAVEVALUE Later 2;", "<CODE>", "POSNODE C1 1 2;"});

    EXPECT_EQ(calls({"finish"}), cTexts{"finish"});
    EXPECT_EQ(builder.calls.back(), "finish");
}

// ---- lines

TEST_F(cModelReaderTest, linesThatMatchNothingAreSkippedWithoutAWord) {
    const cModelReading reading = readLines({"// a remark", "VERSION 3;", "gentype soil;", "LINK L1 Q1 C1;", "   ", ";",
                                             "COMBI", "COMBI;", "COMBI\tC2;", "combi C2;", "COMBI C1;"});

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(network.elements.size(), 1U);
    EXPECT_NE(network.findElement("C1"), nullptr);
}

TEST_F(cModelReaderTest, onlyTheFirstStatementOfALineCounts) {
    readLines({"COMBI C1; COMBI C2;", "DURATION C1 5; PRIORITY C1 7;"});

    EXPECT_EQ(network.elements.size(), 1U);
    EXPECT_EQ(combi("C1").getDurationText(), "5PRIORITYC17");
    EXPECT_EQ(combi("C1").getPriorityText(), "0");
}

TEST_F(cModelReaderTest, theSemicolonAtTheEndMayBeMissing) {
    readText("GENTYPE Soil\nQUEUE Q1 Soil\nTBINITIALCONTENT Q1 3");

    EXPECT_EQ(queue("Q1").getResType(), network.findResourceType("Soil"));
    EXPECT_EQ(queue("Q1").getInitialContentText(), "3");
}

TEST_F(cModelReaderTest, blanksInFrontAndBetweenDontCount) {
    readLines({"  GENTYPE   Soil ;", " QUEUE  Q1  Soil;"});

    EXPECT_EQ(queue("Q1").getResType(), network.findResourceType("Soil"));
}

TEST_F(cModelReaderTest, theLastLineNeedsNoLineFeed) {
    readText("COMBI C1;\nCOMBI C2;");

    EXPECT_NE(network.findElement("C2"), nullptr);
}

// ---- where reading stops

TEST_F(cModelReaderTest, aPositionOfAnElementWhoseNameEndsInAKeywordStopsTheReading) {
    const cModelReading reading =
        readLines({"GENTYPE Soil;", "QUEUE MYQUEUE Soil;", "POSNODE MYQUEUE 1 2;", "COMBI C1;", "RANKCOUNT 40;"});

    EXPECT_NE(network.findElement("MYQUEUE"), nullptr);
    EXPECT_EQ(network.findElement("C1"), nullptr);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 1);
    EXPECT_EQ(calls({"place", "finish"}), (cTexts{"place MYQUEUE 200 200", "finish"}));
    EXPECT_EQ(warningTexts(reading),
              cTexts{"3: reading stopped here: the line holds an element keyword but begins with \"POSNODE\""});
    EXPECT_TRUE(reading.isRunnable);
}

TEST_F(cModelReaderTest, suchANameStopsTheReadingAtItsFirstPropertyAlready) {
    readLines({"GENTYPE Soil;", "QUEUE MYQUEUE Soil;", "QUEUE Q1 Soil;", "TBINITIALCONTENT MYQUEUE 3;",
               "TBINITIALCONTENT Q1 3;", "<CODE>", "SAVEVALUE x 1;", "<CODE>"});

    EXPECT_EQ(queue("MYQUEUE").getInitialContentText(), "0");
    EXPECT_EQ(queue("Q1").getInitialContentText(), "0");
    EXPECT_EQ(calls({"code"}), cTexts{});
    EXPECT_TRUE(network.saveValues.empty());
}

struct cStopCase {
    const char* line;
    bool stops;
};

class cStopTest : public cReaderTest, public ::testing::WithParamInterface<cStopCase> {};

TEST_P(cStopTest, anElementKeywordBehindAnotherWordEndsTheReading) {
    readLines({"GENTYPE Soil;", "COMBI C1;", GetParam().line, "QUEUE Q9 Soil;"});

    EXPECT_EQ(network.findElement("Q9") == nullptr, GetParam().stops);
}

INSTANTIATE_TEST_SUITE_P(lines, cStopTest,
                         ::testing::Values(cStopCase{"DURATION C1 NORMAL [1,2];", true},
                                           cStopCase{"A remark on the QUEUE in front;", true},
                                           cStopCase{"SAVEPROPS FORK ;", true}, cStopCase{"RANKCOUNT COMBI 5;", true},
                                           cStopCase{"MYQUEUE Q2 Soil;", true},  // no keyword, though it ends in one
                                           cStopCase{"XCOMBI C2;", true}, cStopCase{"POSNODE QUEUE1 1 2;", false},
                                           cStopCase{"POSNODE QUEUE;", false},
                                           cStopCase{"GENTYPE MYQUEUE ;", false},  // the test for types comes first
                                           cStopCase{"COMPTYPE FORK FORK ;", false}));

TEST_F(cModelReaderTest, expressionsAreTriedOnceMoreAlsoWhenReadingStopped) {
    const cModelReading reading = readLines({"COMBI C1;", "DURATION C1 5);", "a QUEUE ;", "DURATION C1 6;"});

    EXPECT_EQ(warningTexts(reading),
              (cTexts{"2: DURATION of \"C1\", \"5)\": not an expression",
                      "3: reading stopped here: the line holds an element keyword but begins with \"a\""}));
    EXPECT_EQ(combi("C1").getDurationText(), "5)");
}

// ---- types

TEST_F(cModelReaderTest, everyKindOfTypeIsRead) {
    readLines({"GENTYPE Soil;", "CHARTYPE Truck;", "COMPTYPE Train;"});

    EXPECT_EQ(calls({"type"}), (cTexts{"type Soil GENTYPE", "type Truck CHARTYPE", "type Train COMPTYPE"}));
    EXPECT_EQ(network.findResourceType("Truck")->getTypeKind(), "CHARTYPE");
}

TEST_F(cModelReaderTest, aTypeThatExistsIsKeptAndANewStatementForItIgnored) {
    const cModelReading reading = readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMPTYPE Soil;"});

    EXPECT_EQ(calls({"type"}), cTexts{"type Soil GENTYPE"});
    EXPECT_EQ(network.findResourceType("Soil")->getTypeKind(), "GENTYPE");
    EXPECT_EQ(queue("Q1").getResType(), network.findResourceType("Soil"));
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

TEST_F(cModelReaderTest, aLineOfATypeCreatesNoElementButMeetsTheTestsBehind) {
    readLines({"GENTYPE SAVEPROPS COMBI QUEUE Q1;"});

    EXPECT_EQ(builder.calls, (cTexts{"type SAVEPROPS GENTYPE", "saveProps SAVEPROPS [COMBI QUEUE Q1 ]", "finish"}));
}

// ---- elements

TEST_F(cModelReaderTest, nodesWithoutATypeAreMadeWithoutOne) {
    readLines({"GENTYPE Soil;", "COMBI C1 Soil;", "NORMAL N1 Soil;", "CONSOLIDATOR K1 Soil;"});

    EXPECT_EQ(calls({"node"}), (cTexts{"node COMBI -", "node NORMAL -", "node CONSOLIDATOR -"}));
}

TEST_F(cModelReaderTest, nodesOfATypeAreMadeWithTheTypeOfTheThirdWord) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "ASSEMBLER A1 Soil;", "DISASSEMBLER D1 Soil;", "FORK F1 Soil;",
               "DYNAFORK F2 Soil;"});

    EXPECT_EQ(calls({"node"}), (cTexts{"node QUEUE Soil", "node ASSEMBLER Soil", "node DISASSEMBLER Soil",
                                       "node FORK Soil", "node DYNAFORK Soil"}));
}

TEST_F(cModelReaderTest, everyElementHasItsNameIsRegisteredAndLiesAtTwoHundred) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "NORMAL N1;", "FORK F1 Soil;", "FUSIONQUEUE Q2 Q1;",
               "DRAWLINK L1 Q1 C1;"});

    EXPECT_EQ(calls({"place"}), (cTexts{"place Q1 200 200", "place C1 200 200", "place N1 200 200", "place F1 200 200",
                                        "place Q2 200 200", "place L1 200 200"}));
    for (const auto& [name, element] : network.elements) EXPECT_EQ(element->getName(), name);
    EXPECT_EQ(network.elements.size(), 6U);
}

TEST_F(cModelReaderTest, onlyCombisStandInTheMapOfCombisUnderTheSecondWord) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C2;", "COMBI C1;", "NORMAL N1;"});

    ASSERT_EQ(network.combis.size(), 2U);
    EXPECT_EQ(network.combis.at("C1"), &combi("C1"));
    EXPECT_EQ(network.combis.at("C2"), &combi("C2"));
}

TEST_F(cModelReaderTest, elementsAreNumberedInTheOrderOfTheFile) {
    readLines({"GENTYPE Soil;", "COMBI Z;", "QUEUE M Soil;", "COMBI A;", "DRAWLINK L M A;"});

    EXPECT_EQ(combi("Z").getElementId(), 0);
    EXPECT_EQ(queue("M").getElementId(), 1);
    EXPECT_EQ(combi("A").getElementId(), 2);
    EXPECT_EQ(link("L").getElementId(), 3);
}

TEST_F(cModelReaderTest, aNameThatIsRefusedLeavesTheDefaultNameUnderTheWordOfTheFile) {
    const cModelReading reading = readLines({"COMBI 1st;", "DURATION 1st 7;"});

    EXPECT_EQ(combi("1st").getName(), "Combi1");
    EXPECT_EQ(combi("1st").getDurationText(), "7");
    EXPECT_EQ(network.combis.at("1st"), &combi("1st"));
    EXPECT_EQ(warningTexts(reading),
              cTexts{"1: the name \"1st\" is taken or not a name; the element is called \"Combi1\""});
}

TEST_F(cModelReaderTest, aSecondElementOfANameTakesThePlaceOfTheFirst) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "QUEUE C1 Soil;"});

    EXPECT_EQ(queue("C1").getName(), "Queue4");
    EXPECT_TRUE(network.combis.empty());
    EXPECT_EQ(link("L1").getSuccNode(), nullptr);  // the first took its links' ends with it
}

TEST_F(cModelReaderTest, aNameThatAPropertyHasLookedUpIsTakenThough) {
    readLines({"DURATION C1 7;", "COMBI C1;"});

    EXPECT_EQ(combi("C1").getName(), "Combi1");
    EXPECT_EQ(combi("C1").getDurationText(), "0");
}

// ---- save properties

TEST_F(cModelReaderTest, savePropertiesAreHandedOnWithABlankBehindEach) {
    readLines({"COMPTYPE Truck;", "SAVEPROPS Truck Load   Age;"});

    EXPECT_EQ(calls({"saveProps"}), cTexts{"saveProps Truck [Load Age ]"});
}

TEST_F(cModelReaderTest, aStatementOfSavePropertiesHasNoLastingEffect) {
    readLines({"COMPTYPE Truck;", "SAVEPROPS Truck Load Age;"});

    const auto& truck = dynamic_cast<cResTypeCompound&>(*network.findResourceType("Truck"));
    EXPECT_TRUE(truck.getSaveProps().empty());
}

TEST_F(cModelReaderTest, anElementCalledSaveprops1IsCreatedAndItsLineThenReadAsSaveProperties) {
    const cModelReading reading = readLines({"COMBI SAVEPROPS1;", "COMBI C1;"});

    EXPECT_EQ(builder.calls, (cTexts{"node COMBI -", "place SAVEPROPS1 200 200", "saveProps SAVEPROPS1 []",
                                     "node COMBI -", "place C1 200 200", "finish"}));
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

TEST_F(cModelReaderTest, anElementCalledSaveprops1NeverGetsItsActivityProperties) {
    readLines({"COMBI SAVEPROPS1;", "DURATION SAVEPROPS1 7;"});

    EXPECT_EQ(combi("SAVEPROPS1").getDurationText(), "0");
    EXPECT_EQ(calls({"saveProps"}), (cTexts{"saveProps SAVEPROPS1 []", "saveProps SAVEPROPS1 [7 ]"}));
}

TEST_F(cModelReaderTest, aQueueCalledSaveprops1GetsItsInitialContentAllTheSame) {
    readLines({"GENTYPE Soil;", "QUEUE SAVEPROPS1 Soil;", "TBINITIALCONTENT SAVEPROPS1 7;"});

    EXPECT_EQ(queue("SAVEPROPS1").getInitialContentText(), "7");
}

// ---- positions

TEST_F(cModelReaderTest, aPositionPlacesANodeALinkOrAFusionQueue) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "FUSIONQUEUE Q2 Q1;", "DRAWLINK L1 Q1 C1;", "POSNODE Q1 -12 1e+06;",
               "POSNODE Q2 1234.57 .5;", "POSNODE L1 3 4;"});

    EXPECT_EQ(calls({"place"}), (cTexts{"place Q1 200 200", "place Q2 200 200", "place L1 200 200",
                                        "place Q1 -12 1000000", "place Q2 1234.57 0.5", "place L1 3 4"}));
}

TEST_F(cModelReaderTest, connectionPointsAreNumbersCutToWholeOnes) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "POSLINK L1 3 11 0 0;",
               "POSLINK L1 3.9 -1.5 0 0;", "POSLINK L1 1e1 x 0 0;"});

    EXPECT_EQ(calls({"points"}), (cTexts{"points L1 3 11", "points L1 3 -1", "points L1 10 0"}));
}

TEST_F(cModelReaderTest, theFusionNamesOfConnectionPointsAreNotLookedAt) {
    const cModelReading reading = readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;",
                                             "POSLINK L1 3 11 Nope Nope;", "POSLINK L1 4 12;"});

    EXPECT_EQ(calls({"points"}), (cTexts{"points L1 3 11", "points L1 4 12"}));
    EXPECT_FALSE(network.elements.contains("Nope"));
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

TEST_F(cModelReaderTest, aPositionKeywordFurtherAlongALineDoesNothing) {
    const cModelReading reading = readLines({"COMBI C1;", "POSNODE1 C1 3 4;", "XPOSNODE C1 3 4;", "a POSNODE C1 3 4;"});

    EXPECT_EQ(calls({"place"}), cTexts{"place C1 200 200"});
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

// ---- the counter

struct cCounterCase {
    const char* line;
    std::int32_t counter;
};

class cCounterTest : public cReaderTest, public ::testing::WithParamInterface<cCounterCase> {};

TEST_P(cCounterTest, isRaisedByExactlyTwoWordsAndNeverLowered) {
    cNetworkElement::setElementCounter(10);

    readLines({GetParam().line});

    EXPECT_EQ(cNetworkElement::getElementCounter(), GetParam().counter);
}

INSTANTIATE_TEST_SUITE_P(statements, cCounterTest,
                         ::testing::Values(cCounterCase{"RANKCOUNT 40;", 40}, cCounterCase{"RANKCOUNT 11;", 11},
                                           cCounterCase{"RANKCOUNT 10;", 10}, cCounterCase{"RANKCOUNT 9;", 10},
                                           cCounterCase{"RANKCOUNT 0;", 10}, cCounterCase{"RANKCOUNT -40;", 10},
                                           cCounterCase{"RANKCOUNT 040;", 40}, cCounterCase{"RANKCOUNT 40 0;", 10},
                                           cCounterCase{"RANKCOUNT 40 ;", 40}, cCounterCase{"RANKCOUNT;", 10},
                                           cCounterCase{"XRANKCOUNT 40;", 10}, cCounterCase{"40 RANKCOUNT;", 10},
                                           cCounterCase{"RANKCOUNT 0x40;", 10}, cCounterCase{"RANKCOUNT 40.5;", 10}));

TEST_F(cModelReaderTest, elementsMadeLaterAreNumberedBehindTheCounter) {
    readLines({"COMBI C1;", "RANKCOUNT 40;"});

    const auto next = std::make_shared<cNodeActCombi>();

    EXPECT_EQ(next->getElementId(), 40);
    EXPECT_EQ(next->getName(), "Combi41");
}

TEST_F(cModelReaderTest, aFileCutShortBehindThePositionsKeepsTheCounterAtTheNumberOfElements) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "POSNODE C1 1 2;"});

    EXPECT_EQ(cNetworkElement::getElementCounter(), 3);
}

// ---- what is left of older files

TEST_F(cModelReaderTest, runSettingsInAFileAreMatchedAndDoNothing) {
    const cModelReading reading =
        readLines({"COMBI C1;", "TBSEED 5;", "TBNREPS 20;", "TBSTREAMS 3;", "TBTIMELIMIT 480;", "TBACTLIMIT C1 7;",
                   "TBQLIMIT Q1 7;", "TBENOUGHCOND L1 1;", "TBENOUGHVALUE L1 2;", "DURATION C1 5;"});

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(network.replications, 1);
    EXPECT_EQ(network.elements.size(), 1U);
    EXPECT_EQ(combi("C1").getDurationText(), "5");
}

}  // namespace
