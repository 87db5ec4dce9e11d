#include "kernel/node.h"

#include "support/recordingReceiver.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::vector<std::string> namesOf(const std::map<std::string, cLink*>& links) {
    std::vector<std::string> names;
    for (const auto& [name, link] : links) names.push_back(name);
    return names;
}

/// A queue of soil in front of a Combi, and no link yet.
class cNodeTest : public ::testing::Test {
protected:
    cTestNetwork network;
    cNodeQueue& queue = network.addQueue("Pile", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("Dig");
};

TEST_F(cNodeTest, linksStandInByteOrderOfTheirNamesWhateverTheOrderOfCreation) {
    for (const char* name : {"b", "a_", "a", "B", "a1"}) network.addLink(name, queue, combi);

    const std::vector<std::string> byteOrder{"B", "a", "a1", "a_", "b"};
    EXPECT_EQ(namesOf(queue.getOutLinks()), byteOrder);
    EXPECT_EQ(namesOf(combi.getInLinks()), byteOrder);
}

TEST_F(cNodeTest, inLinksAndOutLinksAreKeptApart) {
    network.addLink("In", queue, combi);
    network.addLink("Out", combi, queue);

    EXPECT_EQ(namesOf(combi.getInLinks()), std::vector<std::string>{"In"});
    EXPECT_EQ(namesOf(combi.getOutLinks()), std::vector<std::string>{"Out"});
}

TEST_F(cNodeTest, takingOutALinkThatIsNotThereDoesNothing) {
    network.addLink("L", queue, combi);
    cLink stranger("S");

    queue.removeOutLink(&stranger);
    queue.removeInLink(&stranger);

    EXPECT_EQ(namesOf(queue.getOutLinks()), std::vector<std::string>{"L"});
}

TEST_F(cNodeTest, aDestroyedNodeLeavesItsLinksWithoutThatEnd) {
    cLink& in = network.addLink("In", queue, combi);
    cLink& out = network.addLink("Out", combi, queue);

    network.elements.erase("Dig");

    EXPECT_EQ(in.getPredNode(), &queue);
    EXPECT_EQ(in.getSuccNode(), nullptr);
    EXPECT_EQ(in.getLinkKind(), kindIncomplete);
    EXPECT_EQ(out.getPredNode(), nullptr);
    EXPECT_EQ(out.getSuccNode(), &queue);
    EXPECT_EQ(out.getLinkKind(), kindIncomplete);
}

TEST_F(cNodeTest, aDestroyedLinkLeavesBothNodes) {
    network.addLink("L", queue, combi);

    network.elements.erase("L");

    EXPECT_TRUE(queue.getOutLinks().empty());
    EXPECT_TRUE(combi.getInLinks().empty());
}

TEST_F(cNodeTest, aRenamedLinkStandsUnderItsOldNameAndLeavesTheNodesAllTheSame) {
    cLink& link = network.addLink("Old", queue, combi);

    link.setName("New");

    EXPECT_EQ(namesOf(queue.getOutLinks()), std::vector<std::string>{"Old"});
    network.elements.erase("New");
    EXPECT_TRUE(queue.getOutLinks().empty());
    EXPECT_TRUE(combi.getInLinks().empty());
}

TEST_F(cNodeTest, aNodeWhoseLinkWasRenamedDetachesIt) {
    cLink& link = network.addLink("Old", queue, combi);
    link.setName("New");

    network.elements.erase("Pile");
    network.elements.erase("Dig");

    EXPECT_EQ(link.getPredNode(), nullptr);
    EXPECT_EQ(link.getSuccNode(), nullptr);
}

/// Two links that are both called "L": one stands in the model, the other doesn't, so the name was free for it.
class cNamesakeTest : public cNodeTest {
protected:
    void SetUp() override {
        later->setName("L");
        earlier = &network.addLink("L", queue, combi);
    }

    std::unique_ptr<cLink> later = std::make_unique<cLink>("Temporary");
    cLink* earlier = nullptr;
};

TEST_F(cNamesakeTest, theLaterTakesThePlaceAndTheEarlierLosesThisEnd) {
    later->setPredNode(&queue);

    EXPECT_EQ(queue.getOutLinks().at("L"), later.get());
    EXPECT_EQ(earlier->getPredNode(), nullptr);
    EXPECT_EQ(earlier->getLinkKind(), kindIncomplete);
    EXPECT_EQ(combi.getInLinks().at("L"), earlier);
}

TEST_F(cNamesakeTest, nothingDanglesWhenTheLaterIsDestroyedFirst) {
    later->setPredNode(&queue);
    later->setSuccNode(&combi);

    later.reset();

    EXPECT_TRUE(queue.getOutLinks().empty());
    EXPECT_TRUE(combi.getInLinks().empty());
    network.elements.erase("L");
    network.elements.erase("Pile");
    network.elements.erase("Dig");
    EXPECT_TRUE(network.elements.empty());
}

TEST_F(cNamesakeTest, nothingDanglesWhenTheEarlierIsDestroyedFirst) {
    later->setPredNode(&queue);
    later->setSuccNode(&combi);

    network.elements.erase("L");

    EXPECT_EQ(queue.getOutLinks().at("L"), later.get());
    EXPECT_EQ(combi.getInLinks().at("L"), later.get());
}

TEST_F(cNamesakeTest, nothingDanglesWhenTheNodesAreDestroyedFirst) {
    later->setPredNode(&queue);

    network.elements.erase("Pile");
    network.elements.erase("Dig");

    EXPECT_EQ(later->getPredNode(), nullptr);
    EXPECT_EQ(earlier->getPredNode(), nullptr);
    EXPECT_EQ(earlier->getSuccNode(), nullptr);
}

TEST_F(cNodeTest, aNodeThatIsLinkedToItselfIsDestroyedCleanly) {
    std::vector<std::string> log;
    auto node = std::make_unique<cRecordingReceiver>("Loop", log);
    cLink link("L");
    link.setPredNode(node.get());
    link.setSuccNode(node.get());
    ASSERT_EQ(link.getLinkKind(), kindRelease);

    node.reset();

    EXPECT_EQ(link.getPredNode(), nullptr);
    EXPECT_EQ(link.getSuccNode(), nullptr);
}

/// A ring of queue, Combi and two links, destroyed in the order given.
class cDestructionOrderTest : public cNodeTest, public ::testing::WithParamInterface<std::vector<std::string>> {
protected:
    void SetUp() override {
        network.addLink("In", queue, combi);
        network.addLink("Out", combi, queue);
    }

    void expectEnds(const char* linkName, const char* from, const char* to) const {
        const auto* link = network.findElement<cLink>(linkName);
        if (link == nullptr) return;
        EXPECT_EQ(link->getPredNode(), network.findElement<cNode>(from));
        EXPECT_EQ(link->getSuccNode(), network.findElement<cNode>(to));
    }

    void expectLinks(const char* nodeName, const char* in, const char* out) const {
        const auto* node = network.findElement<cNode>(nodeName);
        if (node == nullptr) return;
        EXPECT_EQ(node->getInLinks().size(), network.elements.contains(in) ? 1U : 0U);
        EXPECT_EQ(node->getOutLinks().size(), network.elements.contains(out) ? 1U : 0U);
    }
};

TEST_P(cDestructionOrderTest, leavesNoNodeWithALinkAndNoLinkWithANodeThatIsGone) {
    for (const std::string& gone : GetParam()) {
        network.elements.erase(gone);

        expectEnds("In", "Pile", "Dig");
        expectEnds("Out", "Dig", "Pile");
        expectLinks("Pile", "Out", "In");
        expectLinks("Dig", "In", "Out");
    }
    EXPECT_TRUE(network.combis.empty());
}

/// All 24 orders of the four elements.
std::vector<std::vector<std::string>> allOrders() {
    std::vector<std::string> order{"Dig", "In", "Out", "Pile"};
    std::vector<std::vector<std::string>> orders;
    do orders.push_back(order);
    while (std::ranges::next_permutation(order).found);
    return orders;
}

INSTANTIATE_TEST_SUITE_P(orders, cDestructionOrderTest, ::testing::ValuesIn(allOrders()));

}  // namespace
