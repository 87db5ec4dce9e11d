#include "kernel/trace.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cTexts = std::vector<std::string>;

/// A queue of soil in front of a Combi, and a run that is on. What POST says is in `network.messages`.
class cEventLoopTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    /// How many lines of the trace end in `tail`.
    std::size_t linesWith(const std::string& tail) const {
        return static_cast<std::size_t>(std::ranges::count_if(
            network.traceLines(), [&](const std::string& line) { return line.ends_with(tail + ",,,,\n"); }));
    }

    cWatchedNetwork network;
    cResType& soil = network.addGenericType("Soil");
    cNodeQueue& queue = network.addQueue("Pile", soil);
    cNodeActCombi& combi = network.addCombi("Dig");
    cLink& link = network.addLink("L", queue, combi);
};

// ---- SIMULATE

TEST_F(cEventLoopTest, timeAdvanceCodeRunsOnceBeforeTheFirstEventAroundTheSettingOfTheClock) {
    network.simTime = 7.0;
    network.execute("BEFORETIMEADVANCE POST \"before %f\" SimTime;\nAFTERTIMEADVANCE POST \"after %f\" SimTime;\n");

    network.execute("SIMULATE;\n");

    EXPECT_EQ(network.messages, (cTexts{"before 7.000000", "after 0.000000"}));
}

TEST_F(cEventLoopTest, theChecksComeBeforeAllElse) {
    network.addCombi("Lonely");
    network.execute("BEFORETIMEADVANCE POST before;\n");

    const cException failure = failureOf([&] { network.execute("SIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::startUp);
    EXPECT_TRUE(network.messages.empty());
}

class cNestedSimulationTest : public cEventLoopTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cNestedSimulationTest, failsInsideASimulation) {
    network.execute(std::string(GetParam()) + "\nINIT Pile 1;\n");

    const cException failure = failureOf([&] { network.execute("SIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::statement);
    EXPECT_TRUE(failure.message.starts_with("SIMULATE can't run inside a simulation")) << failure.message;
}

INSTANTIATE_TEST_SUITE_P(code, cNestedSimulationTest,
                         ::testing::Values("ONSTART Dig SIMULATE;", "ONEND Dig SIMULATE;", "ONFLOW L SIMULATE;",
                                           "BEFOREDRAWS Dig SIMULATE;", "BEFORETIMEADVANCE SIMULATE;",
                                           "AFTERTIMEADVANCE SIMULATE;", "IF 1 SIMULATE;"));

TEST_F(cEventLoopTest, aSimulationCanFollowOneThatFailed) {
    network.execute("ONSTART Dig SIMULATE;\nINIT Pile 1;\n");
    failureOf([&] { network.execute("SIMULATE;\n"); });
    network.statements.clear();
    network.resetRun();

    network.execute("INIT Pile 2;\nSIMULATE;\n");

    EXPECT_EQ(combi.getStatistics().nextInstance, 2);
}

// ---- how the main loop ends

TEST(cEmptyEventLoopTest, aModelWithoutCombisEndsAtTheFirstTimeAdvance) {
    cTestNetwork network;
    network.addQueue("Pile", network.addGenericType("Soil"));
    network.simState = 1;

    network.execute("INIT Pile 3;\nSIMULATE;\n");

    EXPECT_TRUE(network.getCombiOrder().empty());
    EXPECT_TRUE(network.getCalendar().empty());
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.hostEvents, 1);
}

TEST_F(cEventLoopTest, aConditionThatIsTrueAtTime0EndsTheRunBeforeAnyAttempt) {
    network.execute("INIT Pile 3;\nSIMULATECONDITION 1;\nSIMULATE;\n");

    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(combi.getStatistics().nextInstance, 0);
    EXPECT_EQ(linesWith("Success"), 0U);
    EXPECT_EQ(network.hostEvents, 0);
}

TEST_F(cEventLoopTest, aConditionThatIsNotANumberEndsTheRun) {
    network.execute("INIT Pile 3;\nSIMULATECONDITION (0-1)^0.5;\nSIMULATE;\n");

    EXPECT_EQ(combi.getStatistics().nextInstance, 0);
}

TEST_F(cEventLoopTest, aConditionThatAStartMakesTrueEndsTheRunBeforeTheClockAdvances) {
    combi.setDurationText("5");

    network.execute("INIT Pile 3;\nSIMULATECONDITION Dig.TotInst;\nSIMULATE;\n");

    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(combi.getStatistics().nextInstance, 3);
    EXPECT_EQ(network.getCalendar().size(), 3U);
}

TEST_F(cEventLoopTest, aConditionThatAnEndMakesTrueEndsTheRunBeforeTheNextAttempt) {
    network.addLink("Back", combi, queue);
    combi.setDurationText("5");

    network.execute("INIT Pile 1;\nSIMULATECONDITION SimTime>=15;\nSIMULATE;\n");

    EXPECT_EQ(network.simTime, 15.0);
    EXPECT_EQ(combi.getStatistics().nextInstance, 3);
    EXPECT_EQ(network.hostEvents, 3);
}

TEST_F(cEventLoopTest, withAStopAskedForATrueConditionLetsOneMoreActivationPhaseThrough) {
    network.stopRequested = true;
    combi.setDurationText("5");

    network.execute("INIT Pile 2;\nSIMULATECONDITION 1;\nSIMULATE;\n");

    EXPECT_EQ(network.hostEvents, 1);
    EXPECT_EQ(combi.getStatistics().nextInstance, 2);
    EXPECT_EQ(network.simTime, 0.0);
}

TEST_F(cEventLoopTest, aStopAskedForEndsTheRunAfterOneActivationPhase) {
    network.stopRequested = true;
    combi.setDurationText("5");

    network.execute("INIT Pile 2;\nSIMULATE;\n");

    EXPECT_EQ(network.hostEvents, 1);
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.getCalendar().size(), 2U);
    EXPECT_TRUE(network.stopRequested);
}

TEST_F(cEventLoopTest, theHostProcessesItsEventsOncePerTimeAdvance) {
    combi.setDurationText("5");

    network.execute("INIT Pile 3;\nSIMULATE;\n");

    EXPECT_EQ(network.simTime, 5.0);
    EXPECT_EQ(network.hostEvents, 2);  // at time 0 and at time 5, whatever the number of instances
}

TEST_F(cEventLoopTest, theUsersStopEndsTheRunWhereItStands) {
    network.addLink("Back", combi, queue);
    combi.setDurationText("5");
    network.stopAtHostEvent = 3;

    const cException failure = failureOf([&] { network.execute("INIT Pile 1;\nSIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(network.simTime, 10.0);
}

TEST_F(cEventLoopTest, instancesThatRunAtTheEndAreNotEnded) {
    network.addLink("Back", combi, queue);
    combi.setDurationText("5");
    const auto code = "ONEND Dig POST end;\nBEFOREEND Dig POST end;\nINIT Pile 1;\nSIMULATECONDITION Dig.TotInst;\n";

    network.execute(std::string(code) + "SIMULATE;\n");
    network.resetRun();

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(queue.getCurCount(), 0.0);
}

// ---- the activation phase

TEST_F(cEventLoopTest, aCombiStartsAsManyInstancesInARowAsItCan) {
    combi.setDurationText("5");

    network.execute("INIT Pile 3;\nSIMULATECONDITION Dig.TotInst;\nSIMULATE;\n");

    EXPECT_EQ(linesWith("Dig,Success"), 3U);
    EXPECT_EQ(linesWith("Dig,Fail-QueueSupport"), 1U);
    EXPECT_EQ(combi.getStatistics().nextInstance, 3);
}

TEST_F(cEventLoopTest, allAreTriedAgainAsLongAsAPassStartedAnything) {
    cNodeActCombi& second = network.addCombi("Load");
    network.addLink("L2", network.addQueue("Trucks", soil), second);
    combi.setSemaphoreText("Load.TotInst>0");
    combi.setDurationText("5");
    second.setDurationText("5");

    network.execute("INIT Pile 1;\nINIT Trucks 1;\nSIMULATECONDITION SimTime>=5;\nSIMULATE;\n");

    EXPECT_EQ(combi.getStatistics().firstStart, 0.0);
    EXPECT_EQ(linesWith("Dig,Fail-Semaphore"), 1U);  // in the first pass, before Load had started
}

TEST_F(cEventLoopTest, instancesOfZeroLengthAreStartedOnePerRound) {
    network.execute("BEFORETIMEADVANCE POST advance;\nINIT Pile 5;\nSIMULATE;\n");

    EXPECT_EQ(combi.getStatistics().nextInstance, 5);
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.messages.size(), 1U + 5U);  // at the start of the run, then once per instance
    EXPECT_EQ(network.hostEvents, 1 + 5);
}

TEST_F(cEventLoopTest, anInstanceOfZeroLengthEndsBeforeItsCombiIsTriedAgain) {
    network.execute("INIT Pile 2;\nSIMULATE;\n");

    const cTexts expected{"0.00,ATTEMPT,Dig,Success,,,,\n",
                          "0.00,ONDRAWFROM,Pile,,,,1.00,2.00,\n",
                          "0.00,BEFOREEND,Dig(0),,,,\n",
                          "0.00,ONEND,Dig(0),,,,\n",
                          "0.00,ATTEMPT,Dig,Success,,,,\n",
                          "0.00,ONDRAWFROM,Pile,,,,0.00,2.00,\n",
                          "0.00,BEFOREEND,Dig(1),,,,\n",
                          "0.00,ONEND,Dig(1),,,,\n",
                          "0.00,ATTEMPT,Dig,Fail-QueueSupport,,,,\n"};
    const cTexts lines = network.tracedLines();
    EXPECT_EQ(cTexts(lines.begin() + 1, lines.end()), expected);
}

TEST_F(cEventLoopTest, aZeroLengthYieldsToTheOtherCombisOfThePassAndAllowsNoFurtherPass) {
    cNodeActCombi& second = network.addCombi("Load");
    cLink& secondLink = network.addLink("L2", network.addQueue("Trucks", soil), second);
    secondLink.setRuleText(eLinkRule::enough, "PredNode.CurCount&(Dig.TotInst<2)");
    second.setDurationText("5");

    network.execute("INIT Pile 3;\nINIT Trucks 9;\nSIMULATE;\n");

    EXPECT_EQ(second.getStatistics().nextInstance, 9);  // all in the first round, behind one start of Dig
    EXPECT_EQ(network.hostEvents, 5);                   // a start of Dig in each of three rounds, then times 0 and 5
}

TEST_F(cEventLoopTest, aZeroLengthBreaksNothingWhileNoRunIsOn) {
    network.simState = 0;

    network.execute("INIT Pile 5;\nSIMULATE;\n");

    EXPECT_EQ(combi.getStatistics().nextInstance, 5);
    EXPECT_EQ(network.hostEvents, 1);
    EXPECT_TRUE(network.getCalendar().empty());
}

TEST_F(cEventLoopTest, aCombiThatFailedLongAgoIsTriedAtTheStartOfEachSimulation) {
    network.execute("SIMULATE;\n");
    network.execute("SIMULATE;\n");

    EXPECT_EQ(linesWith("Dig,Fail-QueueSupport"), 2U);
}

// ---- loops that a model keeps from ending

TEST_F(cEventLoopTest, aCombiThatStartsWithoutEndCanBeStopped) {
    link.setRuleText(eLinkRule::enough, "1");
    link.setRuleText(eLinkRule::drawUntil, "1");
    combi.setDurationText("5");
    network.stopAtHostEvent = 2;

    const cException failure = failureOf([&] { network.execute("SIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(network.simTime, 0.0);
}

TEST_F(cEventLoopTest, zeroLengthsWithoutEndCanBeStopped) {
    link.setRuleText(eLinkRule::enough, "1");
    network.stopAtHostEvent = 50;

    const cException failure = failureOf([&] { network.execute("SIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(network.simTime, 0.0);
}

TEST_F(cEventLoopTest, aDurationThatIsNotANumberCanBeStopped) {
    combi.setDurationText("(0-1)^0.5");
    network.stopAtHostEvent = 50;

    const cException failure = failureOf([&] { network.execute("INIT Pile 1;\nSIMULATE;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(combi.getStatistics().curInst, 1);
}

}  // namespace
