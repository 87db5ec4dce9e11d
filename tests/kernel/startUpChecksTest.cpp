#include "support/failureOf.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* looseLink = "Simulation failed to start.\nOne or more links not connected properly.";

/// A queue of soil and a Combi behind it: a model that may run.
class cStartUpChecksTest : public ::testing::Test {
protected:
    void SetUp() override { network.addLink("M", queue, combi); }

    std::shared_ptr<cLink> addLooseLink(const std::string& name) {
        auto link = std::make_shared<cLink>(name);
        network.elements[name] = link;
        return link;
    }

    cTestNetwork network;
    cNodeQueue& queue = network.addQueue("Pile", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("Dig");
};

TEST_F(cStartUpChecksTest, aConnectedModelPasses) { EXPECT_NO_THROW(network.startUpChecks()); }

TEST_F(cStartUpChecksTest, anEmptyModelPasses) {
    network.elements.clear();

    EXPECT_NO_THROW(network.startUpChecks());
}

TEST_F(cStartUpChecksTest, entriesWithoutAnElementAreSkipped) {
    network.elements["Ghost"];
    network.elements[""];

    EXPECT_NO_THROW(network.startUpChecks());
}

TEST_F(cStartUpChecksTest, aQueueNeedsNoLinks) {
    network.addQueue("Alone", *network.findResourceType("Soil"));

    EXPECT_NO_THROW(network.startUpChecks());
}

TEST_F(cStartUpChecksTest, aLinkWithoutAnEndFails) {
    addLooseLink("Loose");

    const cException failure = failureOf([&] { network.startUpChecks(); });

    EXPECT_EQ(failure.code, 4);
    EXPECT_EQ(failure.message, looseLink);
}

TEST_F(cStartUpChecksTest, aLinkWithoutASuccessorFails) {
    addLooseLink("Loose")->setPredNode(&queue);

    EXPECT_EQ(failureOf([&] { network.startUpChecks(); }).message, looseLink);
}

TEST_F(cStartUpChecksTest, aLinkWithoutAPredecessorFails) {
    addLooseLink("Loose")->setSuccNode(&combi);

    EXPECT_EQ(failureOf([&] { network.startUpChecks(); }).message, looseLink);
}

TEST_F(cStartUpChecksTest, aCombiWithoutInLinksFails) {
    network.addCombi("Lonely");

    const cException failure = failureOf([&] { network.startUpChecks(); });

    EXPECT_EQ(failure.code, 4);
    EXPECT_EQ(
        failure.message,
        "Simulation failed to start.\nCombi \"Lonely\" does not have any inlinks and will be started infinitely.");
}

TEST_F(cStartUpChecksTest, aForkWithoutOutLinksFails) {
    network.addLink("In", combi, network.addFork("Choice", *network.findResourceType("Soil")));

    const cException failure = failureOf([&] { network.startUpChecks(); });

    EXPECT_EQ(failure.code, 4);
    EXPECT_EQ(failure.message,
              "Simulation failed to start.\n"
              "Fork \"Choice\" does not have any outlinks which causes a logical error in the model.");
}

TEST_F(cStartUpChecksTest, anAssemblerWithoutOutLinksFails) {
    network.addAssembler("Frame", network.addCompoundType("House"));

    const cException failure = failureOf([&] { network.startUpChecks(); });

    EXPECT_EQ(failure.code, 4);
    EXPECT_EQ(failure.message,
              "Simulation failed to start.\n"
              "Assembler \"Frame\" does not have any outlinks which causes a logical error in the model.");
}

TEST_F(cStartUpChecksTest, aForkAndAnAssemblerWithAnOutLinkPass) {
    cResType& soil = *network.findResourceType("Soil");
    cResType& house = network.addCompoundType("House");
    network.addLink("Out1", network.addFork("Choice", soil), queue);
    network.addLink("Out2", network.addAssembler("Frame", house), network.addQueue("Yard", house));

    EXPECT_NO_THROW(network.startUpChecks());
}

TEST_F(cStartUpChecksTest, theOtherKindsNeedNoLinks) {
    cResType& soil = *network.findResourceType("Soil");
    network.addDynafork("Dyna", soil);
    network.addDisassembler("Apart", soil);
    network.addNormal("Haul");
    network.addConsolidator("Gather");

    EXPECT_NO_THROW(network.startUpChecks());
}

TEST_F(cStartUpChecksTest, aRunOfANetworkThatFailsDoesNotBegin) {
    network.addFork("Choice", *network.findResourceType("Soil"));

    const cException failure = failureOf([&] { network.run("POST before;\nBEFORETIMEADVANCE POST begun;\n"); });

    EXPECT_EQ(failure.code, 4);
    EXPECT_EQ(network.messages, std::vector<std::string>{"before "});
}

TEST_F(cStartUpChecksTest, theFirstElementByNameThatFailsIsTheOneTold) {
    network.addCombi("Lonely");
    addLooseLink("A");

    EXPECT_EQ(failureOf([&] { network.startUpChecks(); }).message, looseLink);
}

TEST_F(cStartUpChecksTest, theOrderIsThatOfTheNamesAndNotOfTheKinds) {
    network.addCombi("Lonely");
    addLooseLink("Z");

    EXPECT_NE(failureOf([&] { network.startUpChecks(); }).message, looseLink);
}

}  // namespace
