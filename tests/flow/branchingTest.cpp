#include "flow/branching.h"

#include "support/branchScene.h"

namespace {

constexpr const char* infinite = "GET(\"infinite\")";
constexpr const char* notANumber = "GET(\"notANumber\")";

/// A Fork or a Dynafork, F, whose branches the test draws: what both have in common.
class cBranchingTest : public cBranchScene, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        cBranchScene::SetUp();
        network.answers["infinite"] = std::numeric_limits<double>::infinity();
        network.answers["notANumber"] = std::numeric_limits<double>::quiet_NaN();
    }
    /// The node that a burst of one unit reaches.
    std::string chosen() {
        sendBurst(fork, {amountOf(soil, 1.0)});
        return reached();
    }
    cNodeBranching& makeFork() {
        if (GetParam() == std::string("FORK")) return network.addFork("F", soil);
        return network.addDynafork("F", soil);
    }

    cNodeBranching& fork = makeFork();
};

std::string kindOf(const ::testing::TestParamInfo<const char*>& info) { return info.param; }

INSTANTIATE_TEST_SUITE_P(both, cBranchingTest, ::testing::Values("FORK", "DYNAFORK"), kindOf);

TEST_P(cBranchingTest, theKindWordIsItsOwn) { EXPECT_EQ(fork.getKind(), GetParam()); }

TEST_P(cBranchingTest, noKeywordIsAnswered) {
    const cException failure = failureOf([&] { fork.getAttribute("InContext"); });

    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.message + failure.location + failure.expressionText, "");
}

// ---- the choice

TEST_P(cBranchingTest, ofEqualStrengthsANumberOfAtMostHalfTakesTheLesserName) {
    branch(fork, {"1", "1"});
    std::string taken;
    std::string expected;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        expected += choiceNumbers(seed, 1)[0] <= 0.5 ? 'A' : 'B';
        taken += chosen();
    }

    EXPECT_EQ(taken, expected);
    EXPECT_NE(taken.find('A'), std::string::npos);
    EXPECT_NE(taken.find('B'), std::string::npos);
}

TEST_P(cBranchingTest, strengthsShareTheNumbersInTheOrderOfTheLinks) {
    branch(fork, {"1", "2", "5"});
    std::string taken;
    std::string expected;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const double number = choiceNumbers(seed, 1)[0];
        expected += number <= 0.125 ? 'A' : number <= 0.375 ? 'B' : 'C';
        taken += chosen();
    }

    EXPECT_EQ(taken, expected);
}

TEST_P(cBranchingTest, aRunningSumThatEqualsTheNumberIsEnough) {
    const unsigned seed = 1;
    const auto number = static_cast<int>(choiceNumbers(seed, 1)[0] * 32767 + 0.5);
    branch(fork, {std::to_string(number), std::to_string(32767 - number)});
    const std::string atTheNumber = chosen();
    std::srand(seed);
    link("ToA").setRuleText(eLinkRule::strength, std::to_string(number - 1));
    link("ToB").setRuleText(eLinkRule::strength, std::to_string(32768 - number));
    const std::string belowIt = chosen();

    EXPECT_EQ(atTheNumber, "A");
    EXPECT_EQ(belowIt, "B");
}

TEST_P(cBranchingTest, theLargestNumberIs1AndTakesTheLastLink) {
    branch(fork, {"1", "1", "1"});
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] == 1.0; });

    EXPECT_EQ(chosen(), "C");  // the thirds add up to 1
}

TEST_P(cBranchingTest, aNumberOf0TakesTheFirstLinkAlsoOfStrength0) {
    branch(fork, {"0", "1"});
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] == 0.0; });

    EXPECT_EQ(chosen(), "A");
}

TEST_P(cBranchingTest, aLinkOfStrength0AmongOthersIsNotTaken) {
    branch(fork, {"1", "0", "1"});
    std::srand(1);
    std::string taken;
    for (int i = 0; i < 40; ++i) taken += chosen();

    EXPECT_EQ(taken.find('B'), std::string::npos);
    EXPECT_NE(taken.find('A'), std::string::npos);
    EXPECT_NE(taken.find('C'), std::string::npos);
}

TEST_P(cBranchingTest, namesOfLinksDecideTheOrderAndNotTheirAge) {
    network.addLink("Link9", fork, a);
    network.addLink("Link10", fork, b);
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] < 0.5; });

    EXPECT_EQ(chosen(), "B");  // "Link10" comes before "Link9"
}

TEST_P(cBranchingTest, aChoiceTakesOneNumberOfTheCLibraryAndNoneOfTheStreams) {
    branch(fork, {"1", "1", "1"});
    std::srand(1);
    std::rand();
    const int second = std::rand();
    std::srand(1);
    const std::uint32_t before = streamState();

    chosen();

    EXPECT_EQ(std::rand(), second);
    EXPECT_EQ(streamState(), before);
}

TEST_P(cBranchingTest, strengthsAreEvaluatedAnewForEachBurstOncePerLinkInOrder) {
    branch(fork, {"GET(\"first\")", "GET(\"second\")"});
    network.answers = {{"first", 0.0}, {"second", 1.0}};
    seedWhere(2, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });

    const std::string before = chosen();
    network.answers = {{"first", 1.0}, {"second", 0.0}};
    const std::string after = chosen();

    EXPECT_EQ(before + after, "BA");
    EXPECT_EQ(network.askedKeys, (cTexts{"first", "second", "first", "second"}));
}

TEST_P(cBranchingTest, strengthsRunOnBehalfOfNobody) {
    branch(fork, {"PredNode.InContext", "1"});  // a fork answers no keyword, and asking it would fail
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });

    EXPECT_EQ(chosen(), "B");
}

TEST_P(cBranchingTest, aStrengthCannotReadAPropertyOfTheResource) {
    truck.setSaveProps({"weight"});
    const auto heavy = instanceOf(truck);
    heavy->props["weight"] = 5.0;
    branch(fork, {"weight", "1", "ResNum"});
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });

    sendBurst(fork, {heavy});

    EXPECT_EQ(reached(), "B");
}

/// Strengths, and the node that is taken by every number above 0.
struct cOddCase {
    std::vector<std::string> strengths;
    const char* taken;
};

class cOddStrengthsTest : public cBranchingTest {};

INSTANTIATE_TEST_SUITE_P(both, cOddStrengthsTest, ::testing::Values("FORK", "DYNAFORK"), kindOf);

TEST_P(cOddStrengthsTest, areSharedOutAsTheyAre) {
    const std::vector<cOddCase> cases{
        {{"3", "(0-1)"}, "A"},              // running sums 1.5, 1
        {{"(0-1)", "3"}, "B"},              // -0.5, 1
        {{"2", "(0-1)", "1"}, "A"},         // 1, 0.5, 1
        {{"(0-1)", "1", "1"}, "C"},         // -1, 0, 1
        {{"0", "(0-2)"}, "B"},              // 0, 1
        {{"(0-3)", "1"}, "A"},              // 1.5, 1: the sum is negative too
        {{"0.000001", "0"}, "A"},           // only a sum of exactly 0 is none
        {{notANumber, "1"}, "B"},           // a sum that is no number: the last link
        {{"1", "1", notANumber}, "C"},      //
        {{notANumber}, "A"},                //
        {{infinite, "1"}, "B"},             // infinite over infinite is no number
        {{"1", infinite, "1"}, "C"},        //
        {{infinite, "(0-1)*2", "0"}, "C"},  //
    };
    std::string taken;
    std::string expected;
    for (const cOddCase& row : cases) {
        for (const char* name : {"ToA", "ToB", "ToC"}) network.elements.erase(name);
        branch(fork, row.strengths);
        seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });
        taken += chosen();
        expected += row.taken;
    }

    EXPECT_EQ(taken, expected);
}

// ---- what goes on

TEST_P(cBranchingTest, aResourceGoesOnAsItIsAndNothingStays) {
    branch(fork, {"1"});
    const cResPtr passenger = instanceOf(truck);

    sendBurst(fork, {passenger});

    EXPECT_EQ(a.received, cResList{passenger});
    a.received.clear();
    EXPECT_EQ(passenger.holderCount(), 1U);
}

TEST_P(cBranchingTest, anAmountOf0GoesOnToo) {
    branch(fork, {"1"});

    sendBurst(fork, {amountOf(soil, 0.0)});

    ASSERT_EQ(a.received.size(), 1U);
    EXPECT_EQ(a.received[0]->quantity(), 0.0);
}

TEST_P(cBranchingTest, theFlowCodeOfTheBranchAloneRunsAheadOfTheArrival) {
    branch(fork, {"0", "1"});
    network.execute("ONFLOW ToA POST a;\nONFLOW ToB POST b;\n");
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });
    fork.flowBegin();
    network.messages.clear();

    fork.receive(*amountOf(soil, 1.0));

    EXPECT_EQ(network.messages, (cTexts{"b ", "receive B"}));
}

TEST_P(cBranchingTest, flowCodeHasAnInstanceInHandAndNoAmount) {
    branch(fork, {"1"});
    network.execute("ONFLOW ToA POST flow;\n");
    std::vector<const cRes*> inHand;
    network.onMessage = [&](const std::string&) { inHand.push_back(network.resourceInHand()); };
    const auto passenger = instanceOf(truck);

    sendBurst(fork, {amountOf(soil, 1.0), passenger});

    EXPECT_EQ(inHand, (std::vector<const cRes*>{nullptr, passenger.get()}));
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_P(cBranchingTest, theReceiverHasNothingInHand) {
    cNodeQueue& yard = network.addQueue("Yard", truck);
    fork.setResType(&truck);
    network.addLink("ToYard", fork, yard);
    network.execute("ONENTRY Yard POST in;\n");
    std::size_t onStack = 9;
    network.onMessage = [&](const std::string&) { onStack = network.symbols->getResourceStack().size(); };

    sendBurst(fork, {instanceOf(truck)});

    EXPECT_EQ(onStack, 1U);  // the queue's own
}

TEST_P(cBranchingTest, failingFlowCodePassesUnchangedAndTheStackIsInStep) {
    branch(fork, {"1"});
    network.execute("ONFLOW ToA POST \"%f\" 1/0;\n");
    fork.flowBegin();

    const cException failure = failureOf([&] { fork.receive(*instanceOf(truck)); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
    EXPECT_TRUE(a.received.empty());
}

TEST_P(cBranchingTest, aBranchToAQueueOfAnotherTypeIsNotAttached) {
    const cLink& mismatched = network.addLink("ToYard", fork, network.addQueue("Yard", truck));

    EXPECT_EQ(mismatched.getLinkKind(), kindTypeMismatch);
    EXPECT_EQ(mismatched.getSuccNode(), nullptr);
}

TEST_P(cBranchingTest, aResourceOfTheWrongFamilyEndsInAFailureOfTheQueue) {
    network.addLink("ToPile", fork, network.addQueue("Pile", soil));

    const cException failure = failureOf([&] { sendBurst(fork, {instanceOf(truck)}); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.location, "In queue Pile");
}

TEST_P(cBranchingTest, aBranchThatIsTakenAwayInTheMidstOfABurstGivesWayToAnother) {
    branch(fork, {"1"});
    fork.flowBegin();
    fork.receive(*amountOf(soil, 1.0));
    network.elements.erase("ToA");
    network.addLink("ToB", fork, b);

    fork.receive(*amountOf(soil, 1.0));
    fork.flowEnd();
    fork.flowSettle();

    EXPECT_EQ(reached(), "AB");
}

TEST_P(cBranchingTest, aBranchWithoutASuccessorIsAFailure) {
    branch(fork, {"1"});
    link("ToA").setSuccNode(nullptr);

    const cException failure = failureOf([&] { sendBurst(fork, {amountOf(soil, 1.0)}); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Link \"ToA\" leads to no node that can receive.");
}

}  // namespace
