#include "kernel/combi.h"

#include "kernel/trace.h"
#include "support/failureOf.h"
#include "support/holdings.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// A Combi behind two queues of soil, each with 2 in it, in a run that is on. It takes one from each, for 5.
class cCombiTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.simState = 1;
        dig.setDurationText("5");
        fill("Pile", 2);
        fill("Sand", 2);
        forgetTrace();
        dig.markQueueChanged();
    }

    void fill(const std::string& queue, double amount) {
        network.findElement<cNodeQueue>(queue)->receive(*makeCounted<cResGen>(&soil, amount));
    }
    void forgetTrace() { network.trace.restart(); }
    /// A second Combi, whose cycle of 3 keeps the clock going.
    void addClockwork() {
        cNodeActCombi& tick = network.addCombi("Tick");
        cNodeQueue& hand = network.addQueue("Hand", soil);
        network.addLink("T1", hand, tick);
        network.addLink("T2", tick, hand);
        tick.setDurationText("3");
        fill("Hand", 1);
    }
    /// The lines of the trace that tell of attempts of Dig.
    cTexts attempts() const {
        cTexts lines;
        for (const std::string& line : network.traceLines())
            if (line.find(",ATTEMPT,Dig,") != std::string::npos) lines.push_back(line);
        return lines;
    }

    cWatchedNetwork network;
    cResType& soil = network.addGenericType("Soil");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeQueue& sand = network.addQueue("Sand", soil);
    cNodeActCombi& dig = network.addCombi("Dig");
    cLink& fromPile = network.addLink("A", pile, dig);
    cLink& fromSand = network.addLink("B", sand, dig);
};

// ---- one attempt

TEST_F(cCombiTest, aSuccessDrawsFromEveryQueueAndStartsAnInstance) {
    network.simTime = 2.0;

    EXPECT_TRUE(dig.attempt());

    EXPECT_EQ(pile.getCurCount(), 1.0);
    EXPECT_EQ(sand.getCurCount(), 1.0);
    ASSERT_NE(dig.latestInstance(), nullptr);
    EXPECT_EQ(dig.latestInstance()->getStartTime(), 2.0);
    EXPECT_EQ(dig.latestInstance()->getEndTime(), 7.0);
    EXPECT_EQ(network.getCalendar().size(), 1U);
}

TEST_F(cCombiTest, theInstanceHoldsWhatWasDrawnAndTheCombiNothing) {
    dig.attempt();

    const cHoldings& held = dig.latestInstance()->getResources();
    ASSERT_EQ(held.size(), 1U);  // one type: the amounts have merged
    EXPECT_EQ(amountHeld(held, soil), 2.0);
    EXPECT_EQ(dig.countOf("Count", &soil), 0.0);
}

TEST_F(cCombiTest, theLineOfASuccessComesBeforeTheDraws) {
    dig.attempt();

    EXPECT_EQ(network.tracedLines(), (cTexts{"0.00,ATTEMPT,Dig,Success,,,,\n", "0.00,ONDRAWFROM,Pile,,,,1.00,2.00,\n",
                                             "0.00,ONDRAWFROM,Sand,,,,1.00,2.00,\n"}));
}

TEST_F(cCombiTest, drawsFollowTheNamesOfTheLinks) {
    cNodeActCombi& load = network.addCombi("Load");
    network.addLink("Y", pile, load);
    network.addLink("X", sand, load);

    load.attempt();

    EXPECT_EQ(network.tracedLines().at(1), "0.00,ONDRAWFROM,Sand,,,,1.00,2.00,\n");
}

TEST_F(cCombiTest, theFirstQueueKeepsItsContentWhenTheSecondDoesNotSupportTheCombi) {
    sand.drawAmount(2.0);
    forgetTrace();

    EXPECT_FALSE(dig.attempt());

    EXPECT_EQ(network.tracedLines(), cTexts{"0.00,ATTEMPT,Dig,Fail-QueueSupport,,,,\n"});
    EXPECT_EQ(pile.getCurCount(), 2.0);
    EXPECT_EQ(dig.getStatistics().nextInstance, 0);
}

TEST_F(cCombiTest, theFirstLinkWithoutSupportEndsTheTest) {
    fromPile.setRuleText(eLinkRule::enough, "GET(\"A\")");
    fromSand.setRuleText(eLinkRule::enough, "GET(\"B\")");

    dig.attempt();

    EXPECT_EQ(network.askedKeys, cTexts{"A"});
}

TEST_F(cCombiTest, aDrawConditionThatIsNotANumberSupportsTheCombi) {
    fromPile.setRuleText(eLinkRule::enough, "(0-1)^0.5");

    EXPECT_TRUE(dig.attempt());
}

TEST_F(cCombiTest, aClosedSemaphoreFailsBeforeTheQueuesAreAsked) {
    dig.setSemaphoreText("0");
    fromPile.setRuleText(eLinkRule::enough, "GET(\"A\")");

    EXPECT_FALSE(dig.attempt());

    EXPECT_EQ(network.tracedLines(), cTexts{"0.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n"});
    EXPECT_TRUE(network.askedKeys.empty());
    EXPECT_EQ(pile.getCurCount(), 2.0);
}

TEST_F(cCombiTest, aSemaphoreThatIsNotANumberIsOpen) {
    dig.setSemaphoreText("(0-1)^0.5");

    EXPECT_TRUE(dig.attempt());
}

TEST_F(cCombiTest, aSemaphoreIsEvaluatedOncePerAttempt) {
    dig.setSemaphoreText("GET(\"open\")");
    network.answers["open"] = 1.0;

    dig.attempt();

    EXPECT_EQ(network.askedKeys, cTexts{"open"});
}

TEST_F(cCombiTest, aFailingSemaphoreEndsTheAttempt) {
    dig.setSemaphoreText("1/(1-SimTime)");
    network.simTime = 1.0;

    const cException failure = failureOf([&] { dig.attempt(); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(pile.getCurCount(), 2.0);
}

TEST_F(cCombiTest, aFailingDrawConditionEndsTheAttempt) {
    fromSand.setRuleText(eLinkRule::enough, "PredNode.Nope");

    const cException failure = failureOf([&] { dig.attempt(); });

    EXPECT_EQ(failure.message, "Invalid keyword Nope");
    EXPECT_EQ(failure.location, "In queue Sand");
    EXPECT_EQ(pile.getCurCount(), 2.0);
}

TEST_F(cCombiTest, theMarkOfASuccessStandsUntilAnInstanceEnds) {
    dig.attempt();
    EXPECT_EQ(dig.getAttribute("InContext"), 1.0);

    network.advanceClock();

    EXPECT_EQ(dig.getAttribute("InContext"), 0.0);
}

TEST_F(cCombiTest, aFailureRaisesNoMark) {
    dig.setSemaphoreText("0");

    dig.attempt();

    EXPECT_FALSE(dig.activeMark);
}

// ---- BEFOREDRAWS

TEST_F(cCombiTest, codeBeforeTheDrawsRunsBehindTheTestAndAheadOfTheDraws) {
    network.execute("BEFOREDRAWS Dig POST \"%f\" Pile.CurCount;\n");

    dig.attempt();

    EXPECT_EQ(network.messages, cTexts{"2.000000"});
}

TEST_F(cCombiTest, theDrawsSeeWhatTheCodeChanged) {
    fromPile.setRuleText(eLinkRule::drawAmt, "PredNode.CurCount");
    network.execute("BEFOREDRAWS Dig INIT Pile 5;\n");

    dig.attempt();

    EXPECT_EQ(amountHeld(dig.latestInstance()->getResources(), soil), 8.0);
}

TEST_F(cCombiTest, codeBeforeTheDrawsDoesNotRunForAFailure) {
    network.execute("BEFOREDRAWS Dig POST x;\n");
    dig.setSemaphoreText("0");
    dig.attempt();
    dig.setSemaphoreText("1");
    pile.drawAmount(2.0);
    dig.attempt();

    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cCombiTest, codeBeforeTheDrawsHasNoLineNoEventPointAndNoCurrentInstance) {
    network.execute("BEFOREDRAWS Dig POST \"%f\" Dig.Duration;\n");
    int eventsBefore = -1;
    std::size_t linesBefore = 0;
    network.onMessage = [&](const std::string&) {
        eventsBefore = network.eventPoints;
        linesBefore = network.tracedLines().size();
    };
    network.eventPoints = 0;

    dig.attempt();

    EXPECT_EQ(network.messages, cTexts{"0.000000"});
    EXPECT_EQ(eventsBefore, 0);
    EXPECT_EQ(linesBefore, 1U);  // that of the success
}

// ---- when an attempt is worth while

TEST_F(cCombiTest, theDefaultSemaphoreLeavesItToTheQueues) {
    EXPECT_EQ(dig.getSemaphoreText(), "1");
    EXPECT_TRUE(dig.mayAttempt());

    pile.drawAmount(2.0);
    dig.attempt();

    EXPECT_FALSE(dig.mayAttempt());
}

TEST_F(cCombiTest, aNewCombiWaitsForAQueue) { EXPECT_FALSE(cNodeActCombi().mayAttempt()); }

class cOtherSemaphoreTest : public cCombiTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cOtherSemaphoreTest, isAlwaysWorthAnAttempt) {
    dig.setSemaphoreText(GetParam());
    pile.drawAmount(2.0);

    dig.attempt();

    EXPECT_TRUE(dig.mayAttempt());
}

INSTANTIATE_TEST_SUITE_P(texts, cOtherSemaphoreTest, ::testing::Values("1.0", " 1", "1 ", "01", "0", "SimTime>5"));

TEST_F(cCombiTest, aSuccessLeavesTheCombiWorthAnAttempt) {
    dig.attempt();

    EXPECT_TRUE(dig.mayAttempt());
}

TEST_F(cCombiTest, aFailedSemaphoreLeavesTheMarkOfTheQueuesAsItWas) {
    dig.setSemaphoreText("0");

    dig.attempt();

    dig.setSemaphoreText("1");
    EXPECT_TRUE(dig.mayAttempt());
}

TEST_F(cCombiTest, resetLeavesTheMarkOfTheQueuesAsItWas) {
    dig.resetElement();
    EXPECT_TRUE(dig.mayAttempt());

    pile.drawAmount(2.0);
    dig.attempt();
    dig.resetElement();

    EXPECT_FALSE(dig.mayAttempt());
}

// ---- in a simulation

TEST_F(cCombiTest, aClosedSemaphoreFailsOnceInEachRoundAndNothingStarts) {
    addClockwork();
    dig.setSemaphoreText("0");

    network.execute("SIMULATECONDITION SimTime>=6;\nSIMULATE;\n");

    // Tick starts something in the first pass of each round, so there is a second.
    EXPECT_EQ(attempts(), (cTexts{"0.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n", "0.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n",
                                  "3.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n", "3.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n"}));
    EXPECT_EQ(dig.getStatistics().nextInstance, 0);
}

TEST_F(cCombiTest, aClosedSemaphoreFailsOnceInTheOnlyPassOfARound) {
    dig.setSemaphoreText("0");

    network.execute("SIMULATE;\n");

    EXPECT_EQ(attempts().size(), 1U);
}

TEST_F(cCombiTest, aSemaphoreThatWaitsForATimeOpensThen) {
    addClockwork();
    dig.setSemaphoreText("SimTime>5");
    dig.setDurationText("100");
    pile.drawAmount(1.0);

    network.execute("SIMULATECONDITION SimTime>=9;\nSIMULATE;\n");

    EXPECT_EQ(dig.getStatistics().firstStart, 6.0);
    EXPECT_EQ(attempts().at(3), "3.00,ATTEMPT,Dig,Fail-Semaphore,,,,\n");
    EXPECT_EQ(attempts().at(4), "6.00,ATTEMPT,Dig,Success,,,,\n");
}

TEST_F(cCombiTest, threeSuccessesAndAFailureLeaveTheirLinesInThatOrder) {
    fill("Pile", 1);
    fill("Sand", 1);

    network.execute("SIMULATECONDITION Dig.TotInst;\nSIMULATE;\n");

    const std::string success = "0.00,ATTEMPT,Dig,Success,,,,\n";
    EXPECT_EQ(attempts(), (cTexts{success, success, success, "0.00,ATTEMPT,Dig,Fail-QueueSupport,,,,\n"}));
    EXPECT_EQ(dig.getStatistics().nextInstance, 3);
}

TEST_F(cCombiTest, aStarvedCombiFailsOnceAndIsThenLeftAloneUntilAQueueChanges) {
    addClockwork();
    pile.drawAmount(2.0);
    network.addLink("T3", *network.findElement<cNodeActCombi>("Tick"), sand);

    network.execute("SIMULATECONDITION SimTime>=9;\nSIMULATE;\n");

    const std::string failed = ",ATTEMPT,Dig,Fail-QueueSupport,,,,\n";
    EXPECT_EQ(attempts(), (cTexts{"0.00" + failed, "3.00" + failed, "6.00" + failed}));  // a change each, at 3 and 6
}

TEST_F(cCombiTest, aStarvedCombiLeavesNoFurtherLineWhileItsQueuesRest) {
    addClockwork();
    pile.drawAmount(2.0);

    network.execute("SIMULATECONDITION SimTime>=30;\nSIMULATE;\n");

    EXPECT_EQ(attempts(), cTexts{"0.00,ATTEMPT,Dig,Fail-QueueSupport,,,,\n"});
}

TEST_F(cCombiTest, aStarvedCombiStartsAsSoonAsAResourceReachesItsQueue) {
    addClockwork();
    pile.drawAmount(2.0);
    network.addLink("T3", *network.findElement<cNodeActCombi>("Tick"), pile);

    network.execute("SIMULATECONDITION Dig.TotInst;\nSIMULATE;\n");

    EXPECT_EQ(dig.getStatistics().firstStart, 3.0);
}

TEST_F(cCombiTest, aStarvedCombiWithASemaphoreInOtherWordsFailsAtEveryPass) {
    addClockwork();
    dig.setSemaphoreText("1.0");
    pile.drawAmount(2.0);

    network.execute("SIMULATECONDITION SimTime>=6;\nSIMULATE;\n");

    const std::string failed = ",ATTEMPT,Dig,Fail-QueueSupport,,,,\n";
    EXPECT_EQ(attempts(), (cTexts{"0.00" + failed, "0.00" + failed, "3.00" + failed, "3.00" + failed}));
}

// ---- texts and reset

TEST_F(cCombiTest, aNewCombiHasPriority0AndAnOpenSemaphore) {
    const cNodeActCombi combi;

    EXPECT_EQ(combi.getPriorityText(), "0");
    EXPECT_EQ(combi.getSemaphoreText(), "1");
    EXPECT_EQ(combi.currentPriority(), 0);
}

TEST_F(cCombiTest, resetForgetsTheCodeAndKeepsTheTexts) {
    network.execute("BEFOREDRAWS Dig POST x;\nONSTART Dig POST x;\n");
    dig.setPriorityText("3");
    dig.setSemaphoreText("1.0");

    dig.resetElement();
    dig.attempt();

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(dig.getPriorityText(), "3");
    EXPECT_EQ(dig.getSemaphoreText(), "1.0");
    EXPECT_EQ(dig.getDurationText(), "5");
}

TEST_F(cCombiTest, codeBeforeTheDrawsRunsInTheFirstReplicationOnly) {
    pile.setInitialContentText("2");
    sand.setInitialContentText("2");
    network.resetRun();

    network.run("MULTISIM 3;\nBEFOREDRAWS Dig POST x;\n");

    EXPECT_EQ(network.messages.size(), 2U);
}

}  // namespace
