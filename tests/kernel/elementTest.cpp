#include "kernel/element.h"

#include "support/failureOf.h"
#include "support/recordingReceiver.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// An empty model with a generic type.
class cElementTest : public ::testing::Test {
protected:
    cTestNetwork network;
    cResType& soil = network.addGenericType("Soil");
};

/// An element of no kind, which answers nothing.
class cPlainElement : public cNetworkElement {
public:
    void resetElement() override {}
};

// ---- names

struct cNameCase {
    const char* name;
    bool accepted;
};

class cNameRuleTest : public cElementTest, public ::testing::WithParamInterface<cNameCase> {};

TEST_P(cNameRuleTest, tellsNamesFromOtherTexts) {
    cPlainElement element;

    const bool accepted = element.setName(GetParam().name);

    EXPECT_EQ(accepted, GetParam().accepted);
    EXPECT_EQ(element.getName(), GetParam().accepted ? GetParam().name : "");
}

INSTANTIATE_TEST_SUITE_P(names, cNameRuleTest,
                         ::testing::Values(cNameCase{"abcdefghijklmno", true},    // 15 characters
                                           cNameCase{"abcdefghijklmnop", false},  // 16
                                           cNameCase{"a", true}, cNameCase{"z", true}, cNameCase{"A", true},
                                           cNameCase{"Z", true}, cNameCase{"a_1", true}, cNameCase{"Z_9", true},
                                           cNameCase{"1a", false}, cNameCase{"_a", false}, cNameCase{"9", false},
                                           cNameCase{"_", false}, cNameCase{"a b", false}, cNameCase{" a", false},
                                           cNameCase{"a ", false}, cNameCase{"", false}, cNameCase{"a.b", false},
                                           cNameCase{"a-b", false}, cNameCase{"a\n", false},
                                           cNameCase{"\xC3\xA4", false}, cNameCase{"a\xC3\xA4", false}));

TEST_F(cElementTest, aNameWithAZeroByteInItIsRefused) {
    cPlainElement element;

    EXPECT_FALSE(element.setName(std::string("a\0b", 3)));
}

TEST_F(cElementTest, aRefusedNameLeavesTheOldOne) {
    cNodeQueue& queue = network.addQueue("Soil1", soil);

    EXPECT_FALSE(queue.setName("1Soil"));

    EXPECT_EQ(queue.getName(), "Soil1");
    EXPECT_EQ(network.findElement("Soil1"), &queue);
}

TEST_F(cElementTest, renamingToItsOwnNameSucceedsAndLeavesTheElementsAsTheyWere) {
    cNodeQueue& queue = network.addQueue("Soil1", soil);

    EXPECT_TRUE(queue.setName("Soil1"));

    EXPECT_EQ(network.elements.size(), 1U);
    EXPECT_EQ(network.findElement("Soil1"), &queue);
}

TEST_F(cElementTest, aNameThatAnotherElementHoldsIsRefusedAndNothingChanges) {
    cNodeQueue& first = network.addQueue("Queue1", soil);
    cNodeQueue& second = network.addQueue("Queue2", soil);

    EXPECT_FALSE(first.setName("Queue2"));

    EXPECT_EQ(first.getName(), "Queue1");
    EXPECT_EQ(network.elements.size(), 2U);
    EXPECT_EQ(network.findElement("Queue1"), &first);
    EXPECT_EQ(network.findElement("Queue2"), &second);
}

TEST_F(cElementTest, namesAreCaseSensitive) {
    network.addQueue("soil", soil);
    cNodeQueue& queue = network.addQueue("Queue2", soil);

    EXPECT_TRUE(queue.setName("Soil"));
}

TEST_F(cElementTest, renamingEntersTheElementUnderItsNewNameAlone) {
    cNodeQueue& queue = network.addQueue("Old", soil);

    EXPECT_TRUE(queue.setName("New"));

    EXPECT_FALSE(network.elements.contains("Old"));
    EXPECT_EQ(network.findElement("New"), &queue);
}

TEST_F(cElementTest, anElementThatIsNotRegisteredTakesAFreeNameAndStaysUnregistered) {
    cPlainElement element;

    EXPECT_TRUE(element.setName("Free"));

    EXPECT_EQ(element.getName(), "Free");
    EXPECT_TRUE(network.elements.empty());
}

TEST_F(cElementTest, aNameThatALookUpLeftWithoutAnElementIsTaken) {
    network.elements["Ghost"];
    cPlainElement element;

    EXPECT_FALSE(element.setName("Ghost"));
}

TEST_F(cElementTest, aRenamedCombiStaysAmongTheCombisUnderItsFirstName) {
    cNodeActCombi& combi = network.addCombi("Dig");

    combi.setName("Load");

    EXPECT_EQ(network.combis.size(), 1U);
    EXPECT_EQ(network.combis.at("Dig"), &combi);
}

TEST_F(cElementTest, aDestroyedCombiLeavesTheCombisAlsoAfterARenaming) {
    network.addCombi("Dig").setName("Load");

    network.elements.erase("Load");

    EXPECT_TRUE(network.combis.empty());
}

// ---- numbers and default names

TEST_F(cElementTest, theFirstElementIsNumber0AndItsNameEndsIn1) {
    const cNodeActCombi combi;

    EXPECT_EQ(combi.getElementId(), 0);
    EXPECT_EQ(combi.getName(), "Combi1");
}

TEST_F(cElementTest, everyElementCountsWhateverItsKind) {
    const cNodeQueue queue;
    const cNodeActCombi combi;
    const cLink link;

    EXPECT_EQ(queue.getName(), "Queue1");
    EXPECT_EQ(combi.getName(), "Combi2");
    EXPECT_EQ(link.getName(), "Link3");
    EXPECT_EQ(link.getElementId(), 2);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 3);
}

TEST_F(cElementTest, aDefaultNameThatIsTakenGivesWayToTheNextNumber) {
    network.addQueue("Combi2", soil);  // number 0

    const cNodeActCombi combi;

    EXPECT_EQ(combi.getName(), "Combi3");
    EXPECT_EQ(combi.getElementId(), 2);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 3);
}

TEST_F(cElementTest, aDefaultNameTriesOnUntilANumberIsFree) {
    network.addCombi("Queue2");  // number 0
    network.elements["Queue3"];
    network.elements["Queue4"];

    const cNodeQueue queue;

    EXPECT_EQ(queue.getName(), "Queue5");
    EXPECT_EQ(queue.getElementId(), 4);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 5);
}

TEST_F(cElementTest, anElementWithoutANameIsGivenAFreeOne) {
    cPlainElement element;
    const std::int32_t number = cNetworkElement::getElementCounter();
    network.elements["Element" + std::to_string(number)] = nullptr;

    element.ensureName();

    EXPECT_EQ(element.getName(), "Element" + std::to_string(number + 1));
    EXPECT_EQ(cNetworkElement::getElementCounter(), number);
}

TEST_F(cElementTest, aNameThatIsThereStays) {
    cPlainElement element;
    element.setName("Own");

    element.ensureName();

    EXPECT_EQ(element.getName(), "Own");
}

TEST_F(cElementTest, aNameIsFoundForTheLargestCounterToo) {
    cPlainElement element;
    cNetworkElement::setElementCounter(2147483647);

    element.ensureName();

    EXPECT_EQ(element.getName(), "Element47483647");
    cNetworkElement::setElementCounter(0);
}

TEST_F(cElementTest, aRaisedCounterNumbersTheNextElement) {
    cNetworkElement::setElementCounter(40);

    const cNodeActCombi combi;

    EXPECT_EQ(combi.getElementId(), 40);
    EXPECT_EQ(combi.getName(), "Combi41");
}

TEST_F(cElementTest, clearingTheNetworkLeavesTheCounter) {
    network.addQueue("Soil1", soil);

    network.clearNetwork();

    EXPECT_EQ(cNetworkElement::getElementCounter(), 1);
}

// ---- what every element has

TEST_F(cElementTest, anElementThatAnswersNoKeywordFailsWithoutAMessage) {
    cPlainElement element;

    const cException failure = failureOf([&] { element.getAttribute("CurCount"); });

    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.message, "");
    EXPECT_EQ(failure.location, "");
    EXPECT_EQ(failure.expressionText, "");
}

TEST_F(cElementTest, theBaseHasNoKindWord) { EXPECT_EQ(cPlainElement().getKind(), ""); }

TEST_F(cElementTest, nodesHaveTheirKindWords) {
    EXPECT_EQ(cNodeQueue().getKind(), "QUEUE");
    EXPECT_EQ(cNodeActCombi().getKind(), "COMBI");
}

TEST_F(cElementTest, aNewElementIsNotActive) { EXPECT_FALSE(cPlainElement().activeMark); }

}  // namespace
