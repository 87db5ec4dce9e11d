#include "kernel/activity.h"

#include "support/holdings.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cTexts = std::vector<std::string>;

/// An activity that tells when it would be drawn anew.
class cDrawnActivity : public cNodeAct {
public:
    explicit cDrawnActivity(std::vector<std::string>& callLog) : log(callLog) { setName("Drawn"); }

    std::string getKind() const override { return "NORMAL"; }
    void refreshElement() override { log.push_back("refresh"); }

private:
    std::vector<std::string>& log;
};

/// An activity that holds 4 of soil and ends, with what links the test draws. Everybody writes into `network.messages`.
class cInstanceEndTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    void connect(cLink& link, cNodeReceiver& to, cResType& type) {
        link.setPredNode(&work);
        link.setSuccNode(&to);
        link.setResType(&type);
    }
    /// Starts an instance that holds `amount` of soil and ends it.
    void fire(double amount) {
        work.startInstance(holdingsOf({makeCounted<cResGen>(&soil, amount)}), 0.0, 5.0);
        work.endInstance(work.findInstance(work.getStatistics().nextInstance - 1));
    }

    cWatchedNetwork network;
    cResType& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeActCombi& work = network.addCombi("Work");
    cRecordingReceiver first{"First", network.messages};
    cRecordingReceiver second{"Second", network.messages};
    cLink& a = addLink("A");
    cLink& b = addLink("B");

private:
    cLink& addLink(const std::string& name) {
        const auto link = std::make_shared<cLink>(name);
        network.elements[name] = link;
        return *link;
    }
};

TEST_F(cInstanceEndTest, eachWalkOverTheLinksIsCompleteBeforeTheNextBegins) {
    connect(a, first, soil);
    connect(b, second, soil);
    network.execute("BEFOREEND Work POST beforeEnd;\nONEND Work POST onEnd;\n");

    fire(4.0);

    const cTexts expected{"beforeEnd ",       "flowBegin First",  "flowBegin Second", "receive First",
                          "receive Second",   "flowEnd First",    "flowEnd Second",   "onEnd ",
                          "flowSettle First", "flowSettle Second"};
    EXPECT_EQ(network.messages, expected);
}

TEST_F(cInstanceEndTest, theWalksFollowTheNamesOfTheLinks) {
    connect(b, first, soil);
    connect(a, second, soil);

    fire(4.0);

    EXPECT_EQ(network.messages.front(), "flowBegin Second");
}

TEST_F(cInstanceEndTest, traceLineThenEventPointThenCode) {
    network.execute("ONSTART Work POST start;\nBEFOREEND Work POST beforeEnd;\nONEND Work POST onEnd;\n");
    network.onEventPoint = [&] { network.messages.push_back("event behind " + network.traceLines().back()); };
    network.addTraceLine("earlier line");

    fire(4.0);

    const cTexts expected{"event behind earlier line",  // a start has no line
                          "start ",
                          "event behind 0.00,BEFOREEND,Work(0),,,,\n",
                          "beforeEnd ",
                          "event behind 0.00,ONEND,Work(0),,,,\n",
                          "onEnd "};
    EXPECT_EQ(network.messages, expected);
}

TEST_F(cInstanceEndTest, theCountOfRunningInstancesIsLowerAlreadyInTheCodeOfTheEnd) {
    network.execute("BEFOREEND Work POST \"%d %d\" Work.CurInst Work.TotInst;\n");

    fire(4.0);

    EXPECT_EQ(network.messages, cTexts{"0 1"});
}

TEST_F(cInstanceEndTest, endCodeHasTheInstanceThatEnds) {
    network.execute("BEFOREEND Work POST \"%f\" Work.Duration;\nONEND Work POST \"%f\" Work.Duration;\n");

    fire(4.0);

    EXPECT_EQ(network.messages, (cTexts{"5.000000", "5.000000"}));
    EXPECT_EQ(network.symbols->currentInstance, nullptr);
}

TEST_F(cInstanceEndTest, thereIsNoCurrentInstanceWhileTheFlowsRun) {
    connect(a, first, soil);
    a.setRuleText(eLinkRule::releaseAmt, "Work.Duration+1");

    fire(4.0);

    EXPECT_EQ(first.received.at(0)->quantity(), 1.0);
}

TEST_F(cInstanceEndTest, beforeEndCodeRunsAheadOfTheFlowsAndEndCodeBehindThem) {
    cNodeQueue& queue = network.addQueue("Dump", soil);
    connect(a, queue, soil);
    network.execute("BEFOREEND Work POST \"%f\" Dump.CurCount;\nONEND Work POST \"%f\" Dump.CurCount;\n");

    fire(4.0);

    EXPECT_EQ(network.messages, (cTexts{"0.000000", "1.000000"}));
}

TEST_F(cInstanceEndTest, theActivityIsMarkedActiveForTheLengthOfTheEnd) {
    connect(a, first, soil);
    a.setRuleText(eLinkRule::releaseAmt, "PredNode.InContext+6");
    ASSERT_FALSE(work.activeMark);

    fire(4.0);

    EXPECT_EQ(first.received.at(0)->quantity(), 7.0);
    EXPECT_FALSE(work.activeMark);
}

TEST_F(cInstanceEndTest, theMarkStillStandsInTheEndCodeAndAtTheSettling) {
    bool marked = false;
    network.execute("ONEND Work POST end;\n");
    network.onMessage = [&](const std::string&) { marked = work.activeMark; };

    fire(4.0);

    EXPECT_TRUE(marked);
}

TEST_F(cInstanceEndTest, withoutOutLinksTheResourcesCeaseToExist) {
    const cResPtr dumper = makeCounted<cResCompound>(&truck);
    work.startInstance(holdingsOf({dumper}), 0.0, 5.0);
    const std::uint32_t during = dumper.holderCount();

    network.advanceClock();

    EXPECT_EQ(during, 2U);
    EXPECT_EQ(dumper.holderCount(), 1U);
    EXPECT_EQ(work.countOf("Count", &truck), 0.0);
}

TEST_F(cInstanceEndTest, whatNoLinkTookCeasesToExist) {
    const cResPtr taken = makeCounted<cResCompound>(&truck);
    const cResPtr left = makeCounted<cResCompound>(&truck);
    connect(a, first, truck);
    a.setRuleText(eLinkRule::releaseUntil, "GET(\"stop\")");
    network.onGet = [&](const std::string&) { return first.received.empty() ? 0.0 : 1.0; };
    work.startInstance(holdingsOf({taken, left}), 0.0, 5.0);

    network.advanceClock();

    EXPECT_EQ(first.received, cResList{taken});
    EXPECT_EQ(left.holderCount(), 1U);
    EXPECT_EQ(work.countOf("Count", &truck), 0.0);
}

TEST_F(cInstanceEndTest, beforeEndCodeSeesTheResourcesHeld) {
    connect(a, first, truck);
    network.execute("BEFOREEND Work POST \"%d\" Work.Truck.ResNum;\n");
    work.startInstance(holdingsOf({makeCounted<cResCompound>(&truck)}), 0.0, 5.0);

    work.endInstance(work.findInstance(0));

    EXPECT_EQ(network.messages.front(), "1");
}

TEST_F(cInstanceEndTest, eachInstanceReleasesItsOwnResources) {
    auto firstTruck = makeCounted<cResCompound>(&truck);
    auto secondTruck = makeCounted<cResCompound>(&truck);
    connect(a, first, truck);
    work.startInstance(holdingsOf({firstTruck}), 0.0, 5.0);
    work.startInstance(holdingsOf({secondTruck}), 0.0, 5.0);

    work.endInstance(work.findInstance(1));

    EXPECT_EQ(first.received, cResList{secondTruck});
    EXPECT_EQ(work.findInstance(1), nullptr);
    EXPECT_NE(work.findInstance(0), nullptr);
    EXPECT_EQ(work.getStatistics().curInst, 1);
}

TEST_F(cInstanceEndTest, anInstanceThatDoesNotRunEndsWithoutEffect) {
    work.startInstance({}, 0.0, 5.0);
    const cActInstancePtr ended = work.findInstance(0);
    work.endInstance(ended);

    work.endInstance(ended);
    work.endInstance(work.findInstance(7));  // there is none

    EXPECT_FALSE(ended->isRunning());
    EXPECT_EQ(work.getStatistics().curInst, 0);
    EXPECT_EQ(network.trace.size(), 3U);  // the header and the two lines of the first end
}

TEST_F(cInstanceEndTest, anInstanceThatIsUsedAgainIsInEveryRespectTheLaterOne) {
    const cResPtr dumper = makeCounted<cResCompound>(&truck);
    work.startInstance(holdingsOf({makeCounted<cResGen>(&soil, 4.0)}), 0.0, 5.0);
    const cActInstance* used = work.latestInstance();
    network.advanceClock();

    work.startInstance(holdingsOf({dumper}), 9.0, 2.0);

    const cActInstancePtr later = work.findInstance(1);
    ASSERT_NE(later, nullptr);
    ASSERT_EQ(later.get(), used);
    EXPECT_EQ(later->getStartTime(), 9.0);
    EXPECT_EQ(later->getDuration(), 2.0);
    EXPECT_EQ(later->getEndTime(), 11.0);
    EXPECT_EQ(later->getResources().size(), 1U);
    EXPECT_EQ(heldOf(later->getResources(), truck), cResList{dumper});
    EXPECT_EQ(work.findInstance(0), nullptr);
}

TEST_F(cInstanceEndTest, instancesEndInAnyOrderAndTheOthersAreStillFound) {
    for (int i = 0; i < 4; ++i) work.startInstance({}, 0.0, 5.0);

    for (const std::int32_t id : {1, 3, 0}) work.endInstance(work.findInstance(id));

    for (const std::int32_t id : {0, 1, 3}) EXPECT_EQ(work.findInstance(id), nullptr) << id;
    ASSERT_NE(work.findInstance(2), nullptr);
    EXPECT_EQ(work.findInstance(2)->getInstanceId(), 2);
    EXPECT_EQ(work.latestInstance(), nullptr);  // it has ended
    EXPECT_EQ(work.getStatistics().curInst, 1);
}

TEST_F(cInstanceEndTest, aDrawnActivityIsRefreshedAtTheEndAndNotByAStartAlone) {
    const auto drawn = std::make_shared<cDrawnActivity>(network.messages);
    network.elements["Drawn"] = drawn;
    network.execute("ONEND Drawn POST end;\n");
    drawn->startInstance({}, 0.0, 5.0);
    ASSERT_TRUE(network.messages.empty());

    drawn->endInstance(drawn->findInstance(0));

    EXPECT_EQ(network.messages, (cTexts{"end ", "refresh"}));
}

TEST_F(cInstanceEndTest, anInstanceOfLength0EndsAtTheTimeItStarts) {
    network.simTime = 3.0;
    work.setDurationText("0");
    work.startInstance({}, 3.0, cNodeAct::durationByExpression);

    network.advanceClock();

    EXPECT_EQ(network.simTime, 3.0);
    EXPECT_EQ(work.getStatistics().curInst, 0);
}

TEST_F(cInstanceEndTest, aNegativeLengthEndsInThePast) {
    network.simTime = 10.0;
    work.startInstance({}, 10.0, -3.0);

    network.advanceClock();

    EXPECT_EQ(network.simTime, 7.0);
    EXPECT_EQ(network.traceLines().back(), "7.00,ONEND,Work(0),,,,\n");
}

TEST_F(cInstanceEndTest, eventCodeOfAnActivityRunsInTheFirstReplicationOnly) {
    cNodeQueue& queue = network.addQueue("Pile", soil);
    network.addLink("In", queue, work);
    network.elements.erase("A");
    network.elements.erase("B");
    queue.setInitialContentText("2");
    const auto code =
        "SAVEVALUE s 0;\nSAVEVALUE b 0;\nSAVEVALUE e 0;\nADDTORESULTS starts s;\nMULTISIM 3;\n"
        "ONSTART Work ASSIGN s s+1;\nBEFOREEND Work ASSIGN b b+1;\nONEND Work ASSIGN e e+1;\n"
        "AFTERTIMEADVANCE POST \"%d %d %d\" s b e;\n";

    network.run(code);

    EXPECT_EQ(network.messages.back(), "2 2 2");              // after the third replication
    EXPECT_EQ(network.runStatistics->getMeans().at(1), 2.0);  // 2 from the first on, and no more from the others
    EXPECT_EQ(network.runStatistics->getReplicationCount(), 3);
}

// ---- the objects of instances

TEST_F(cInstanceEndTest, anInstanceThatTheCalendarStillHoldsIsNotUsedAgain) {
    work.startInstance({}, 0.0, 10.0);
    work.endInstance(work.findInstance(0));  // ahead of its time: its entry stays on the calendar

    work.startInstance({}, 0.0, 5.0);

    ASSERT_EQ(network.getCalendar().size(), 2U);
    EXPECT_EQ(network.getCalendar().inOrder()[0]->getEndTime(), 5.0);
    EXPECT_EQ(network.getCalendar().inOrder()[1]->getEndTime(), 10.0);
}

TEST_F(cInstanceEndTest, anEndedInstanceThatNobodyHoldsIsUsedAgain) {
    network.simState = 0;  // so that none goes on the calendar
    work.startInstance({}, 0.0, 5.0);
    const cActInstance* ended = work.latestInstance();
    work.endInstance(work.findInstance(0));

    work.startInstance({}, 0.0, 5.0);

    EXPECT_EQ(work.latestInstance(), ended);
    EXPECT_EQ(ended->getInstanceId(), 1);
}

TEST_F(cInstanceEndTest, anActivityThatIsResetInTheMidstOfAnEndStartsAnew) {
    connect(a, first, soil);
    work.startInstance(holdingsOf({makeCounted<cResGen>(&soil, 4.0)}), 0.0, 5.0);
    network.onEventPoint = [&] { work.resetElement(); };
    work.endInstance(work.findInstance(0));
    network.onEventPoint = nullptr;

    work.startInstance({}, 0.0, 5.0);

    EXPECT_EQ(work.getCurInst(), 1);
    EXPECT_TRUE(work.latestInstance()->isRunning());
}

TEST_F(cInstanceEndTest, theInstanceHoldsItsResourcesUntilTheEndCodeIsOver) {
    connect(a, first, truck);
    auto dumper = makeCounted<cResCompound>(&truck);
    work.startInstance(holdingsOf({dumper}), 0.0, 5.0);
    std::vector<double> numbers;
    network.onEventPoint = [&] { numbers.push_back(network.evaluate("Work.Truck.ResNum")); };

    work.endInstance(work.findInstance(0));

    EXPECT_EQ(numbers, (std::vector<double>{1.0, 1.0}));
}

TEST_F(cInstanceEndTest, aLinkThatIsGoneIsToldOfNoBurst) {
    connect(a, first, soil);
    auto lost = std::make_shared<cLink>("C");
    connect(*lost, second, soil);
    fire(4.0);
    network.messages.clear();

    lost = nullptr;
    fire(4.0);

    EXPECT_EQ(std::ranges::count(network.messages, "flowBegin First"), 1);
    EXPECT_EQ(std::ranges::count(network.messages, "flowBegin Second"), 0);
}

}  // namespace
