#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// Combis that are numbered in the order in which the test adds them, and entered in the order of their names.
class cCombiOrderTest : public ::testing::Test {
protected:
    void addCombi(const std::string& name, const std::string& priority) {
        network.addCombi(name).setPriorityText(priority);
    }

    cTexts order() {
        network.orderCombis();
        cTexts names;
        for (const cNodeActCombi* combi : network.getCombiOrder()) names.push_back(combi->getName());
        return names;
    }

    cWatchedNetwork network;
};

TEST_F(cCombiOrderTest, aModelWithoutCombisHasNoOrder) { EXPECT_EQ(order(), cTexts{}); }

TEST_F(cCombiOrderTest, higherPrioritiesComeFirst) {
    addCombi("A", "1");
    addCombi("B", "3");
    addCombi("C", "2");

    EXPECT_EQ(order(), (cTexts{"B", "C", "A"}));
}

TEST_F(cCombiOrderTest, ofEqualPrioritiesTheOneCreatedFirstComesFirstWhateverTheNames) {
    addCombi("Z", "0");
    addCombi("M", "0");
    addCombi("A", "0");

    EXPECT_EQ(order(), (cTexts{"Z", "M", "A"}));
}

TEST_F(cCombiOrderTest, prioritiesAreCutToWholeNumbersTowardZero) {
    addCombi("D", "1.2");
    addCombi("C", "1.9");
    addCombi("B", "(0-0.9)");
    addCombi("A", "0.9");

    EXPECT_EQ(order(), (cTexts{"D", "C", "B", "A"}));
}

TEST_F(cCombiOrderTest, aNegativePriorityComesBehindZero) {
    addCombi("B", "(0-1)");
    addCombi("A", "0");

    EXPECT_EQ(order(), (cTexts{"A", "B"}));
}

TEST_F(cCombiOrderTest, aPriorityThatIsNotANumberIsTheLowest) {
    addCombi("A", "(0-1)^0.5");
    addCombi("B", "(0-999999)");

    EXPECT_EQ(order(), (cTexts{"B", "A"}));
}

TEST_F(cCombiOrderTest, aHighNumberRunsPastItsEqualsAndLandsBehindLowerPriorities) {
    addCombi("B", "3");  // number 0
    addCombi("A", "5");  // number 1
    addCombi("C", "5");  // number 2: greater than A's, and than B's, whose priority isn't looked at again

    EXPECT_EQ(order(), (cTexts{"A", "B", "C"}));
}

TEST_F(cCombiOrderTest, theRunPastTheEqualsEndsAtTheFirstHigherNumber) {
    addCombi("A", "5");  // number 0
    addCombi("D", "5");  // number 1: stands behind A, and before B, whose number is higher
    addCombi("B", "3");  // number 2

    EXPECT_EQ(order(), (cTexts{"A", "D", "B"}));
}

TEST_F(cCombiOrderTest, anUnequalEntryIsNotPassedWhateverItsNumber) {
    addCombi("A", "3");  // number 0
    addCombi("B", "5");  // number 1

    EXPECT_EQ(order(), (cTexts{"B", "A"}));
}

TEST_F(cCombiOrderTest, theOrderIsBuiltAnewEachTime) {
    addCombi("A", "SimTime");
    addCombi("B", "1");
    ASSERT_EQ(order(), (cTexts{"B", "A"}));

    network.simTime = 2.0;

    EXPECT_EQ(order(), (cTexts{"A", "B"}));
}

/// Priorities are the host's answers, so that each evaluation can be seen.
TEST_F(cCombiOrderTest, aPriorityIsEvaluatedOnceForItsCombiAndOnceForEachComparison) {
    for (const char* name : {"A", "B", "C"}) addCombi(name, "GET(\"" + std::string(name) + "\")");
    network.answers = {{"A", 1.0}, {"B", 1.0}, {"C", 0.0}};

    const cTexts ordered = order();

    EXPECT_EQ(ordered, (cTexts{"A", "B", "C"}));
    EXPECT_EQ(network.askedKeys, (cTexts{"A",               // into the empty list
                                         "B", "A",          // stops at A; the step by numbers evaluates nothing
                                         "C", "A", "B"}));  // walks to the end
}

TEST_F(cCombiOrderTest, theEqualityTestUsesTheValueAtWhichTheWalkStopped) {
    addCombi("Z", "GET(\"Z\")");  // number 0; entered last
    addCombi("A", "GET(\"A\")");  // number 1
    std::map<std::string, std::vector<double>> answers{{"A", {0.0, 4.0, 9.0}}, {"Z", {4.0}}};
    network.onGet = [&](const std::string& key) {
        const double answer = answers[key].front();
        answers[key].erase(answers[key].begin());
        return answer;
    };

    const cTexts ordered = order();

    // At the comparison A answers 4, equal to Z's: Z goes by its number, before A. Asked once more, A would answer 9.
    EXPECT_EQ(ordered, (cTexts{"Z", "A"}));
    EXPECT_EQ(network.askedKeys, (cTexts{"A", "Z", "A"}));
}

TEST_F(cCombiOrderTest, aRandomPriorityDrawsOncePerComparison) {
    for (const char* name : {"A", "B", "C"}) addCombi(name, "Rnd()");  // all cut to 0, so each walk stops at the front
    const cRandomGenerator before = network.symbols->randomStreams().first();

    order();

    cRandomGenerator twin = before;
    for (int draw = 0; draw < 1 + 2 + 2; ++draw) twin.uniform();
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
}

TEST_F(cCombiOrderTest, anOrderOfVeryManyCanBeStopped) {
    for (int i = 100; i < 300; ++i) addCombi("C" + std::to_string(i), std::to_string(1000 - i));
    network.stopAtHostEvent = 1;

    const cException failure = failureOf([&] { network.orderCombis(); });

    EXPECT_EQ(failure.code, failureCode::userStop);
}

TEST_F(cCombiOrderTest, aRenamedCombiIsEnteredUnderItsFirstName) {
    addCombi("B", "GET(\"B\")");
    addCombi("C", "GET(\"C\")");
    network.findElement("B")->setName("X");

    order();

    EXPECT_EQ(network.askedKeys.front(), "B");
}

}  // namespace
