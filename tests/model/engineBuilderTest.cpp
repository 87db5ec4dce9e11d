#include "model/engineBuilder.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

class cEngineBuilderTest : public ::testing::Test {
protected:
    cTestNetwork network;
    cEngineBuilder builder{network};

    /// Makes a node and enters it, as the reader does.
    std::shared_ptr<cNetworkElement> enterNode(const std::string& kind, const std::string& name, cResType* type) {
        auto node = builder.makeNode(kind, type);
        node->setName(name);
        network.elements[name] = node;
        return node;
    }
};

TEST_F(cEngineBuilderTest, fillsTheNetworkItWasGiven) { EXPECT_EQ(&builder.network(), &network); }

// ---- types

struct cTypeCase {
    const char* kind;
    bool generic;
    bool characterized;
    bool compound;
};

class cBuiltTypeTest : public cEngineBuilderTest, public ::testing::WithParamInterface<cTypeCase> {};

TEST_P(cBuiltTypeTest, isOfTheClassOfItsKindWord) {
    builder.addResourceType("Soil", GetParam().kind);

    cResType* type = network.findResourceType("Soil");
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->getTypeName(), "Soil");
    EXPECT_EQ(type->getTypeKind(), GetParam().kind);
    EXPECT_EQ(dynamic_cast<cResTypeGen*>(type) != nullptr, GetParam().generic);
    EXPECT_EQ(dynamic_cast<cResTypeChar*>(type) != nullptr, GetParam().characterized);
    EXPECT_EQ(dynamic_cast<cResTypeCompound*>(type) != nullptr, GetParam().compound);
}

INSTANTIATE_TEST_SUITE_P(kinds, cBuiltTypeTest,
                         ::testing::Values(cTypeCase{"GENTYPE", true, false, false},
                                           cTypeCase{"CHARTYPE", false, true, false},
                                           cTypeCase{"COMPTYPE", false, true, true}));

TEST_F(cEngineBuilderTest, savePropertiesHaveNoLastingEffect) {
    builder.addResourceType("Truck", "COMPTYPE");

    builder.setSaveProps("Truck", "Load Age ");
    builder.setSaveProps("Nobody", "Load ");

    EXPECT_TRUE(dynamic_cast<cResTypeCompound&>(*network.findResourceType("Truck")).getSaveProps().empty());
    EXPECT_EQ(network.resourceTypes.size(), 1U);
}

// ---- nodes

TEST_F(cEngineBuilderTest, makesCombisWithADefaultName) {
    const auto node = builder.makeNode("COMBI", nullptr);

    EXPECT_EQ(node->getKind(), "COMBI");
    EXPECT_EQ(node->getName(), "Combi1");
    EXPECT_TRUE(network.elements.empty());  // to enter it is for the reader
}

TEST_F(cEngineBuilderTest, makesQueuesOfAType) {
    cResType& soil = network.addGenericType("Soil");

    const auto node = builder.makeNode("QUEUE", &soil);

    EXPECT_EQ(node->getKind(), "QUEUE");
    EXPECT_EQ(dynamic_cast<cNodeQueue&>(*node).getResType(), &soil);
}

TEST_F(cEngineBuilderTest, makesAQueueWithoutATypeWhereThereIsNone) {
    const auto node = builder.makeNode("QUEUE", nullptr);

    EXPECT_EQ(dynamic_cast<cNodeQueue&>(*node).getResType(), nullptr);
}

TEST_F(cEngineBuilderTest, makesEveryKindOfNodeWithATypeWhereTheKindHasOne) {
    cResType& panel = network.addCompoundType("Panel");

    for (const std::string kind :
         {"COMBI", "NORMAL", "CONSOLIDATOR", "QUEUE", "ASSEMBLER", "DISASSEMBLER", "FORK", "DYNAFORK"}) {
        const auto node = builder.makeNode(kind, &panel);

        ASSERT_NE(node, nullptr) << kind;
        EXPECT_EQ(node->getKind(), kind);
        const auto* holder = dynamic_cast<cHomogHolder*>(node.get());
        const bool isActivity = dynamic_cast<cNodeAct*>(node.get()) != nullptr;
        EXPECT_EQ(holder == nullptr, isActivity) << kind;
        if (holder != nullptr) {
            EXPECT_EQ(holder->getResType(), &panel) << kind;
        }
    }
}

TEST_F(cEngineBuilderTest, makesNothingOfAWordThatIsNoNodeKind) {
    for (const char* kind : {"", "combi", "COMBI ", "DRAWLINK", "GENTYPE", "FUSIONQUEUE"})
        EXPECT_EQ(builder.makeNode(kind, nullptr), nullptr) << kind;
}

// ---- links

TEST_F(cEngineBuilderTest, makesLinksOfTheirNameWithoutEnds) {
    const auto link = builder.makeLink("L1");

    EXPECT_EQ(link->getName(), "L1");
    EXPECT_EQ(link->getPredNode(), nullptr);
    EXPECT_EQ(link->getSuccNode(), nullptr);
}

TEST_F(cEngineBuilderTest, attachesBothEndsOfAPairThatIsAllowed) {
    const auto queue = enterNode("QUEUE", "Q1", &network.addGenericType("Soil"));
    const auto combi = enterNode("COMBI", "C1", nullptr);
    const auto link = builder.makeLink("L1");

    EXPECT_TRUE(builder.attachStart(*link, *queue));
    EXPECT_TRUE(builder.attachEnd(*link, *combi));

    EXPECT_EQ(link->getPredNode(), queue.get());
    EXPECT_EQ(link->getSuccNode(), combi.get());
    EXPECT_EQ(link->getLinkKind(), kindDraw);
}

TEST_F(cEngineBuilderTest, anEndThatThePairForbidsIsNotAttached) {
    cResType& soil = network.addGenericType("Soil");
    const auto first = enterNode("QUEUE", "Q1", &soil);
    const auto second = enterNode("QUEUE", "Q2", &soil);
    const auto link = builder.makeLink("L1");
    builder.attachStart(*link, *first);

    EXPECT_FALSE(builder.attachEnd(*link, *second));

    EXPECT_EQ(link->getPredNode(), first.get());
    EXPECT_EQ(link->getSuccNode(), nullptr);
}

TEST_F(cEngineBuilderTest, aLinkIsNoEndOfALink) {
    const auto other = builder.makeLink("L2");
    const auto link = builder.makeLink("L1");

    EXPECT_FALSE(builder.attachStart(*link, *other));
    EXPECT_FALSE(builder.attachEnd(*link, *other));
    EXPECT_EQ(link->getPredNode(), nullptr);
    EXPECT_EQ(link->getSuccNode(), nullptr);
}

// ---- fusion queues

/// A queue that is drawn in a second place, and a Combi.
class cFusionQueueTest : public cEngineBuilderTest {
protected:
    cFusionQueueTest() {
        fusion->setName("F1");
        network.elements["F1"] = fusion;
    }

    std::shared_ptr<cNetworkElement> queue = enterNode("QUEUE", "Q1", &network.addGenericType("Soil"));
    std::shared_ptr<cNetworkElement> combi = enterNode("COMBI", "C1", nullptr);
    std::shared_ptr<cNetworkElement> fusion = builder.makeFusionQueue("F1", "Q1");
    std::shared_ptr<cLink> link = builder.makeLink("L1");
};

TEST_F(cFusionQueueTest, isAnElementButNoNodeAndHoldsNothing) {
    EXPECT_EQ(fusion->getKind(), "FUSIONQUEUE");
    EXPECT_EQ(fusion->getElementId(), 2);  // it takes a number like any element
    EXPECT_EQ(dynamic_cast<cNode*>(fusion.get()), nullptr);
    EXPECT_EQ(dynamic_cast<cHomogHolder*>(fusion.get()), nullptr);
}

TEST_F(cFusionQueueTest, aLinkThatStartsThereDrawsFromTheQueueBehindIt) {
    EXPECT_TRUE(builder.attachStart(*link, *fusion));
    EXPECT_TRUE(builder.attachEnd(*link, *combi));

    EXPECT_EQ(link->getPredNode(), queue.get());
    EXPECT_EQ(link->getLinkKind(), kindDraw);
}

TEST_F(cFusionQueueTest, aLinkThatEndsThereReleasesToTheQueueBehindIt) {
    EXPECT_TRUE(builder.attachStart(*link, *combi));
    EXPECT_TRUE(builder.attachEnd(*link, *fusion));

    EXPECT_EQ(link->getSuccNode(), queue.get());
    EXPECT_EQ(link->getLinkKind(), kindRelease);
}

TEST_F(cFusionQueueTest, withoutAQueueBehindItNoLinkIsAttached) {
    const auto ofNothing = builder.makeFusionQueue("F2", "Nope");
    const auto ofACombi = builder.makeFusionQueue("F3", "C1");

    EXPECT_FALSE(builder.attachStart(*link, *ofNothing));
    EXPECT_FALSE(builder.attachEnd(*link, *ofACombi));
    EXPECT_FALSE(network.elements.contains("Nope"));
}

TEST_F(cFusionQueueTest, standsInNoRunAndNoResult) {
    network.addLink("L2", dynamic_cast<cNode&>(*queue), dynamic_cast<cNode&>(*combi));

    network.run();

    EXPECT_EQ(network.runStatistics->columnNames().size(), 1U + 6U + 9U);  // SimTime, the queue, the Combi
}

}  // namespace
