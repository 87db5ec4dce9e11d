// How the reader joins links: ends, type, kind, and in which order.

#include "support/readerTest.h"

#include <algorithm>

namespace {

class cModelReaderLinksTest : public cReaderTest {
protected:
    /// Queues of soil and of trucks, Combis, nodes of other kinds; then `lines`.
    cModelReading readBehindNodes(const cTexts& lines) {
        cTexts all{"GENTYPE Soil;", "GENTYPE Truck;",     "QUEUE Q1 Soil;", "QUEUE Q2 Truck;", "COMBI C1;",
                   "NORMAL N1;",    "NORMAL N2;",         "FORK F1 Soil;",  "FORK F2 Truck;",  "DISASSEMBLER D1 Soil;",
                   "COMBI C2;",     "ASSEMBLER A1 Truck;"};
        all.insert(all.end(), lines.begin(), lines.end());
        return readLines(all);
    }
    std::string typeName(const std::string& linkName) {
        const cResType* type = link(linkName).getResType();
        return type == nullptr ? "-" : type->getTypeName();
    }
};

TEST_F(cModelReaderLinksTest, theStartIsConnectedBeforeTheEnd) {
    readBehindNodes({"DRAWLINK L1 Q1 C1;"});

    EXPECT_EQ(calls({"link", "start", "end"}), (cTexts{"link L1", "start L1 Q1", "end L1 C1"}));
    EXPECT_EQ(link("L1").getPredNode(), &queue("Q1"));
    EXPECT_EQ(link("L1").getSuccNode(), &combi("C1"));
}

// ---- kind

TEST_F(cModelReaderLinksTest, theKindIsThatOfTheKeyword) {
    readBehindNodes({"DRAWLINK L1 Q1 C1;", "RELEASELINK L2 C1 Q1;", "FLOWLINK L3 F1 Q1;"});

    EXPECT_EQ(link("L1").getLinkKind(), kindDraw);
    EXPECT_EQ(link("L2").getLinkKind(), kindRelease);
    EXPECT_EQ(link("L3").getLinkKind(), kindFlow);
}

TEST_F(cModelReaderLinksTest, theKindOfTheKeywordHoldsAgainstThatOfThePair) {
    readBehindNodes({"RELEASELINK L1 Q1 C1;", "FLOWLINK L2 C1 Q1;", "DRAWLINK L3 F1 Q1;"});

    EXPECT_EQ(link("L1").getLinkKind(), kindRelease);
    EXPECT_EQ(link("L2").getLinkKind(), kindFlow);
    EXPECT_EQ(link("L3").getLinkKind(), kindDraw);
}

TEST_F(cModelReaderLinksTest, settingTheKindGivesTheTextsOfThatKind) {
    readBehindNodes({"DRAWLINK L1 Q1 C1;", "RELEASELINK L2 C1 Q1;", "DRAWLINK L3 F1 Q1;"});

    EXPECT_EQ(rule("L1", eLinkRule::enough), "PredNode.CurCount");
    EXPECT_EQ(rule("L2", eLinkRule::enough), "1");
    EXPECT_EQ(rule("L2", eLinkRule::releaseAmt), "1");
    EXPECT_EQ(rule("L3", eLinkRule::enough), "PredNode.CurCount");
}

TEST_F(cModelReaderLinksTest, valuesBehindTheLinkHoldAgainstTheTextsOfItsKind) {
    readBehindNodes({"DRAWLINK L1 Q1 C1;", "ENOUGH L1 PredNode.CurCount>=2;"});

    EXPECT_EQ(rule("L1", eLinkRule::enough), "PredNode.CurCount>=2");
}

// ---- type

struct cTypeCase {
    const char* statement;
    const char* type;
};

class cLinkTypeTest : public cModelReaderLinksTest, public ::testing::WithParamInterface<cTypeCase> {};

TEST_P(cLinkTypeTest, isThatOfTheFifthWordOrOfAnEnd) {
    readBehindNodes({GetParam().statement});

    EXPECT_EQ(typeName("L1"), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(fourWords, cLinkTypeTest,
                         ::testing::Values(cTypeCase{"DRAWLINK L1 Q2 C1;", "Truck"},     // of the start
                                           cTypeCase{"RELEASELINK L1 C1 Q2;", "Truck"},  // of the end
                                           cTypeCase{"RELEASELINK L1 D1 Q2;", "Soil"},   // of the start before the end
                                           cTypeCase{"RELEASELINK L1 D1 N1;", "Soil"},   // of the start
                                           cTypeCase{"RELEASELINK L1 C1 A1;", "Truck"},  // of the end
                                           cTypeCase{"RELEASELINK L1 C1 N1;", "-"}));    // of none

INSTANTIATE_TEST_SUITE_P(fiveWords, cLinkTypeTest,
                         ::testing::Values(cTypeCase{"RELEASELINK L1 C1 N1 Truck;", "Truck"},
                                           cTypeCase{"RELEASELINK L1 C1 A1 Soil;", "Soil"},
                                           cTypeCase{"DRAWLINK L1 Q1 C1 Truck;", "Truck"},
                                           cTypeCase{"RELEASELINK L1 D1 Q2 Truck ;", "Truck"}));

INSTANTIATE_TEST_SUITE_P(moreWords, cLinkTypeTest,
                         ::testing::Values(cTypeCase{"DRAWLINK L1 Q1 C1 Truck Truck;",
                                                     "Soil"},  // that of the pair stays
                                           cTypeCase{"RELEASELINK L1 C1 N1 Truck Truck;", "-"}));

TEST_F(cModelReaderLinksTest, aLinkBetweenActivitiesThatHasNoTypeTakesTheOneItsStatementNamesWithoutWaiting) {
    const cModelReading reading = readBehindNodes({"RELEASELINK L1 C1 N1 Truck;", "RELEASELINK L2 N1 N2 Soil;"});

    EXPECT_EQ(typeName("L1"), "Truck");
    EXPECT_EQ(link("L1").getPredNode(), &combi("C1"));
    EXPECT_EQ(link("L1").getSuccNode(), network.findElement<cNode>("N1"));
    EXPECT_EQ(link("L1").getLinkKind(), kindRelease);
    EXPECT_EQ(typeName("L2"), "Soil");
    EXPECT_EQ(network.hostEvents, 0);
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

TEST_F(cModelReaderLinksTest, aLinkBetweenActivitiesThatNamesNoTypeIsJoinedAndToldOf) {
    const cModelReading reading = readBehindNodes({"RELEASELINK L1 C1 N1;", "RELEASELINK L2 C1 N1 Nope;"});

    EXPECT_EQ(typeName("L1"), "-");
    EXPECT_NE(link("L1").getSuccNode(), nullptr);
    EXPECT_EQ(warningTexts(reading), (cTexts{"13: link \"L1\" has no resource type: it carries nothing",
                                             "14: there is no resource type \"Nope\"",
                                             "14: link \"L2\" has no resource type: it carries nothing"}));
}

TEST_F(cModelReaderLinksTest, aLinkThatNamesNoTypeHasTheOneCalledDefaultUnlessAnEndGivesAnother) {
    const cModelReading reading = readLines({"GENTYPE Default;", "GENTYPE Soil;", "QUEUE Q1 Soil;", "NORMAL N1;",
                                             "NORMAL N2;", "RELEASELINK L1 N1 N2;", "RELEASELINK L2 N2 Q1;"});

    EXPECT_EQ(typeName("L1"), "Default");
    EXPECT_EQ(typeName("L2"), "Soil");
    EXPECT_EQ(warningTexts(reading), cTexts{});
}

TEST_F(cModelReaderLinksTest, theTypeIsSetBeforeTheKindSoThatAKindWithATypeStaysOne) {
    readBehindNodes({"DRAWLINK L1 Q1 C1 Truck;"});

    EXPECT_EQ(typeName("L1"), "Truck");
    EXPECT_EQ(link("L1").getLinkKind(), kindDraw);
    EXPECT_EQ(rule("L1", eLinkRule::enough), "PredNode.CurCount");
}

TEST_F(cModelReaderLinksTest, aLinkStandsOnceInTheListOfItsType) {
    readBehindNodes({"DRAWLINK L1 Q1 C1;"});

    const auto& holders = network.findResourceType("Soil")->getHolders();
    EXPECT_EQ(std::ranges::count(holders, static_cast<cHomogHolder*>(&link("L1"))), 1);
}

// ---- ends that can't be joined

TEST_F(cModelReaderLinksTest, aLinkToAMissingNodeKeepsTheEndThatIsThere) {
    const cModelReading reading =
        readBehindNodes({"DRAWLINK L1 Q1 Nope;", "DRAWLINK L2 Never C1;", "RELEASELINK L3 Nowhere Nothing;"});

    EXPECT_EQ(link("L1").getPredNode(), &queue("Q1"));
    EXPECT_EQ(link("L1").getSuccNode(), nullptr);
    EXPECT_EQ(typeName("L1"), "Soil");
    EXPECT_EQ(link("L2").getPredNode(), nullptr);
    EXPECT_EQ(link("L2").getSuccNode(), &combi("C1"));
    EXPECT_EQ(link("L3").getLinkKind(), kindRelease);
    EXPECT_EQ(
        warningTexts(reading),
        (cTexts{"13: there is no element \"Nope\"", "14: there is no element \"Never\"",
                "14: link \"L2\" has no resource type: it carries nothing", "15: there is no element \"Nowhere\"",
                "15: there is no element \"Nothing\"", "15: link \"L3\" has no resource type: it carries nothing"}));
    for (const char* name : {"Nope", "Never", "Nowhere", "Nothing"}) {
        ASSERT_TRUE(network.elements.contains(name)) << name;
        EXPECT_EQ(network.elements.at(name), nullptr) << name;
    }
}

TEST_F(cModelReaderLinksTest, aPairThatIsNotAllowedLosesItsEnd) {
    const cModelReading reading =
        readBehindNodes({"DRAWLINK L1 Q1 Q2;", "RELEASELINK L2 C1 C2;", "FLOWLINK L3 F1 Q2;"});

    EXPECT_EQ(link("L1").getSuccNode(), nullptr);
    EXPECT_EQ(link("L1").getLinkKind(), kindDraw);
    EXPECT_EQ(link("L2").getSuccNode(), nullptr);
    EXPECT_EQ(link("L3").getSuccNode(), nullptr);
    EXPECT_EQ(warningTexts(reading),
              (cTexts{"13: link \"L1\" can't join \"Q1\" to \"Q2\"", "14: link \"L2\" can't join \"C1\" to \"C2\"",
                      "14: link \"L2\" has no resource type: it carries nothing",
                      "15: link \"L3\" can't join \"F1\" to \"Q2\""}));
}

TEST_F(cModelReaderLinksTest, aModelWithAnUnjoinedLinkIsNotFitToRun) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "DRAWLINK L1 Q1 C1;", "DRAWLINK L2 Nope C1;"});

    const cException failure = failureOf([&] { network.run(); });

    EXPECT_EQ(failure.code, failureCode::startUp);
    EXPECT_EQ(failure.message, "Simulation failed to start.\nOne or more links not connected properly.");
}

TEST_F(cModelReaderLinksTest, aSecondLinkOfANameTakesThePlaceOfTheFirst) {
    const cModelReading reading = readBehindNodes({"DRAWLINK L1 Q1 C1;", "DRAWLINK L1 Q2 C2;"});

    EXPECT_EQ(link("L1").getPredNode(), &queue("Q2"));
    EXPECT_EQ(link("L1").getName(), "Element12");  // the first had the name while this one asked
    EXPECT_TRUE(queue("Q1").getOutLinks().empty());
    EXPECT_TRUE(combi("C1").getInLinks().empty());
    EXPECT_EQ(warningTexts(reading),
              cTexts{"14: the name \"L1\" is taken or not a name; the element is called \"Element12\""});
}

// ---- fusion queues

TEST_F(cModelReaderLinksTest, aFusionQueueIsMadeWithItsNameAndThatOfItsQueue) {
    readBehindNodes({"FUSIONQUEUE Q3 Q1;"});

    EXPECT_EQ(calls({"fusion"}), cTexts{"fusion Q3 Q1"});
}

TEST_F(cModelReaderLinksTest, aLinkOnAFusionQueueIsAttachedByTheFusionQueuesName) {
    readBehindNodes({"FUSIONQUEUE Q3 Q1;", "DRAWLINK L1 Q3 C1;", "RELEASELINK L2 C1 Q3;", "POSLINK L1 3 11 Q3 0;"});

    EXPECT_EQ(calls({"start", "end", "points"}),
              (cTexts{"start L1 Q3", "end L1 C1", "start L2 C1", "end L2 Q3", "points L1 3 11"}));
    EXPECT_EQ(link("L1").getPredNode(), &queue("Q1"));
    EXPECT_EQ(link("L2").getSuccNode(), &queue("Q1"));
    EXPECT_EQ(typeName("L1"), "Soil");
    EXPECT_EQ(typeName("L2"), "Soil");
}

TEST_F(cModelReaderLinksTest, aModelWithFusionQueuesRunsAsOneWithoutThem) {
    readLines({"GENTYPE Soil;", "QUEUE Q1 Soil;", "COMBI C1;", "FUSIONQUEUE Q2 Q1;", "DRAWLINK L1 Q2 C1;",
               "RELEASELINK L2 C1 Q2;", "DURATION C1 2;", "TBINITIALCONTENT Q1 1;"});

    network.run("SIMULATECONDITION SimTime>9;\n");

    EXPECT_EQ(network.runStatistics->getMeans().front(), 10.0);
    EXPECT_EQ(network.runStatistics->getMeans().size(), 1U + 9U + 6U);
}

}  // namespace
