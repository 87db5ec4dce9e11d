#include "kernel/trace.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using cTexts = std::vector<std::string>;

/// An activity whose end starts a successor instance of its own, of length 0, as often as told.
class cChainActivity : public cNodeAct {
public:
    explicit cChainActivity(int starts) : startsLeft(starts) { setName("Chain"); }

    void onEnd() override {
        cNodeAct::onEnd();
        if (startsLeft-- > 0) startInstance({}, network().simTime, 0.0);
    }

private:
    int startsLeft;
};

/// A run that is on, and two activities, Work and Rest, whose instances the tests start themselves.
class cAdvanceClockTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    /// What ended, in order: "Work(0)".
    cTexts ends() const {
        cTexts names;
        for (const std::string& line : network.traceLines()) {
            const std::size_t at = line.find(",ONEND,");
            if (at != std::string::npos) names.push_back(line.substr(at + 7, line.find(')') - at - 6));
        }
        return names;
    }

    std::vector<double> calendarTimes() const {
        std::vector<double> times;
        for (const auto& instance : network.getCalendar().inOrder()) times.push_back(instance->getEndTime());
        return times;
    }

    cWatchedNetwork network;
    cNodeActCombi& work = network.addCombi("Work");
    cNodeActCombi& rest = network.addCombi("Rest");
};

// ---- the calendar

TEST_F(cAdvanceClockTest, theCalendarIsInTheOrderOfEnds) {
    for (const double duration : {5.0, 2.0, 9.0, 2.5}) work.startInstance({}, 0.0, duration);

    EXPECT_EQ(calendarTimes(), (std::vector<double>{2.0, 2.5, 5.0, 9.0}));
}

TEST_F(cAdvanceClockTest, instancesOfOneTimeEndInTheOrderInWhichTheyWereScheduled) {
    work.startInstance({}, 0.0, 10.0);
    rest.startInstance({}, 2.0, 8.0);
    work.startInstance({}, 4.0, 6.0);
    network.execute("BEFORETIMEADVANCE POST before;\nAFTERTIMEADVANCE POST after;\n");

    const bool advanced = network.advanceClock();

    EXPECT_TRUE(advanced);
    EXPECT_EQ(ends(), (cTexts{"Work(0)", "Rest(0)", "Work(1)"}));
    EXPECT_EQ(network.messages, (cTexts{"before ", "after "}));
    EXPECT_EQ(network.simTime, 10.0);
    EXPECT_TRUE(network.getCalendar().empty());
}

TEST_F(cAdvanceClockTest, endsThatDifferByLessThanTheTraceShowsAreTwoTimeAdvances) {
    work.startInstance({}, 0.0, 10.000000001);
    rest.startInstance({}, 0.0, 10.0);

    network.advanceClock();
    EXPECT_EQ(network.simTime, 10.0);
    EXPECT_EQ(network.getCalendar().size(), 1U);
    network.advanceClock();

    EXPECT_EQ(network.simTime, 10.000000001);
    const cTexts expected{std::string(traceHeader), "10.00,BEFOREEND,Rest(0),,,,\n", "10.00,ONEND,Rest(0),,,,\n",
                          "10.00,BEFOREEND,Work(0),,,,\n", "10.00,ONEND,Work(0),,,,\n"};
    EXPECT_EQ(network.traceLines(), expected);
}

TEST_F(cAdvanceClockTest, aNegativeDurationGoesInFrontAndTheClockRunsBackwards) {
    network.simTime = 10.0;
    rest.startInstance({}, 10.0, 1.0);
    work.startInstance({}, 10.0, -3.0);

    network.advanceClock();

    EXPECT_EQ(network.simTime, 7.0);
    EXPECT_EQ(ends(), cTexts{"Work(0)"});
}

TEST_F(cAdvanceClockTest, anEndThatIsNotANumberGoesInFrontOfAllOthers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    rest.startInstance({}, 0.0, -5.0);
    work.startInstance({}, 0.0, nan);
    rest.startInstance({}, 0.0, 1.0);  // 1 isn't behind what is not a number, so this goes in front in its turn

    const std::vector<double> times = calendarTimes();
    ASSERT_EQ(times.size(), 3U);
    EXPECT_EQ(times.at(0), 1.0);
    EXPECT_NE(times.at(1), times.at(1));
    EXPECT_EQ(times.at(2), -5.0);
}

TEST_F(cAdvanceClockTest, anEndlessDurationGoesBehindAllOthers) {
    work.startInstance({}, 0.0, std::numeric_limits<double>::infinity());
    rest.startInstance({}, 0.0, 1e300);

    network.advanceClock();

    EXPECT_EQ(network.simTime, 1e300);
}

TEST_F(cAdvanceClockTest, nothingIsScheduledWhileNoRunIsOn) {
    network.simState = 0;

    work.startInstance({}, 0.0, 10.0);

    EXPECT_TRUE(network.getCalendar().empty());
}

// ---- a time advance

TEST_F(cAdvanceClockTest, anEmptyCalendarEndsTheSimulationWithoutATimeAdvance) {
    network.simTime = 3.0;
    network.execute("BEFORETIMEADVANCE POST before;\nAFTERTIMEADVANCE POST after;\n");

    EXPECT_FALSE(network.advanceClock());

    EXPECT_EQ(network.simTime, 3.0);
    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cAdvanceClockTest, nothingHappensWhileNoRunIsOn) {
    work.startInstance({}, 0.0, 10.0);
    network.simState = 0;

    network.advanceClock();

    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.getCalendar().size(), 1U);
}

TEST_F(cAdvanceClockTest, timeAdvanceCodeSeesTheClockBeforeAndAfterTheJumpAndNoEndYet) {
    work.startInstance({}, 0.0, 10.0);
    network.execute(
        "BEFORETIMEADVANCE POST \"%f %d\" SimTime Work.CurInst;\n"
        "AFTERTIMEADVANCE POST \"%f %d\" SimTime Work.CurInst;\n");

    network.advanceClock();

    EXPECT_EQ(network.messages, (cTexts{"0.000000 1", "10.000000 1"}));
    EXPECT_EQ(work.getStatistics().curInst, 0);
}

TEST_F(cAdvanceClockTest, endsOfTheSameTimeThatAnEndSchedulesArePickedUpByTheSameTimeAdvance) {
    const auto chain = std::make_shared<cChainActivity>(3);
    network.elements["Chain"] = chain;
    chain->startInstance({}, 0.0, 10.0);
    rest.startInstance({}, 0.0, 10.0);
    network.execute("BEFORETIMEADVANCE POST before;\n");

    network.advanceClock();

    EXPECT_EQ(ends(), (cTexts{"Chain(0)", "Rest(0)", "Chain(1)", "Chain(2)", "Chain(3)"}));
    EXPECT_EQ(network.messages, cTexts{"before "});
}

TEST_F(cAdvanceClockTest, endsThatGoOnWithoutEndCanBeStopped) {
    const auto chain = std::make_shared<cChainActivity>(1000000);
    network.elements["Chain"] = chain;
    chain->startInstance({}, 0.0, 10.0);
    network.stopAtHostEvent = 2;

    const cException failure = failureOf([&] { network.advanceClock(); });

    EXPECT_EQ(failure.code, failureCode::userStop);
}

TEST_F(cAdvanceClockTest, aStopAskedForDropsTheFirstEndWithoutEndingTheInstance) {
    work.startInstance({}, 0.0, 10.0);
    rest.startInstance({}, 0.0, 10.0);
    network.execute("AFTERTIMEADVANCE POST now;\n");
    network.onMessage = [&](const std::string&) { network.stopRequested = true; };

    EXPECT_TRUE(network.advanceClock());

    EXPECT_EQ(ends(), cTexts{});
    EXPECT_EQ(work.getStatistics().curInst, 1);
    EXPECT_EQ(rest.getStatistics().curInst, 1);
    EXPECT_EQ(network.getCalendar().size(), 1U);
    EXPECT_EQ(network.simTime, 10.0);
}

TEST_F(cAdvanceClockTest, anActivityThatWasRenamedSinceTheStartEndsItsInstance) {
    work.startInstance({}, 0.0, 10.0);
    work.setName("Dig");
    rest.setName("Work");  // the old name now belongs to another

    network.advanceClock();

    EXPECT_EQ(ends(), cTexts{"Dig(0)"});
}

TEST_F(cAdvanceClockTest, anInstanceWhoseActivityIsGoneEndsWithoutEffect) {
    work.startInstance({}, 0.0, 10.0);
    network.elements.erase("Work");

    EXPECT_TRUE(network.advanceClock());

    EXPECT_EQ(ends(), cTexts{});
    EXPECT_TRUE(network.getCalendar().empty());
}

}  // namespace
