#include "kernel/activity.h"

#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using cTexts = std::vector<std::string>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// An activity without links, in a run that is on; tests start and end its instances themselves.
class cActivityTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    /// Starts instances of length 1 at the times given.
    cNodeAct::cStatistics afterStarts(std::initializer_list<double> times) {
        for (const double time : times) work.startInstance({}, time, 1.0);
        return work.getStatistics();
    }
    /// Starts instances of the lengths given, all at time 0.
    cNodeAct::cStatistics afterDurations(std::initializer_list<double> durations) {
        for (const double duration : durations) work.startInstance({}, 0.0, duration);
        return work.getStatistics();
    }

    cWatchedNetwork network;
    cNodeActCombi& work = network.addCombi("Work");
};

// ---- durations

TEST_F(cActivityTest, statisticsBeginAtTheirStartingPoints) {
    const cNodeAct::cStatistics s = work.getStatistics();

    EXPECT_EQ(s.nextInstance, 0);
    EXPECT_EQ(s.curInst, 0);
    EXPECT_EQ(s.firstStart, 100000.0);
    EXPECT_EQ(s.lastStart, -1.0);
    EXPECT_EQ(s.firstEnd, 100000.0);
    EXPECT_EQ(s.lastEnd, -1.0);
    EXPECT_EQ(s.aveDur, 0.0);
    EXPECT_EQ(s.sdDur, 0.0);
    EXPECT_EQ(s.maxDur, -1.0);
    EXPECT_EQ(s.minDur, 1000000.0);
    EXPECT_EQ(s.aveInter, 0.0);
    EXPECT_EQ(s.sdInter, 0.0);
    EXPECT_EQ(s.maxInter, -1.0);
    EXPECT_EQ(s.minInter, 1000000.0);
}

TEST_F(cActivityTest, aSingleDurationHasNoDeviation) {
    const cNodeAct::cStatistics s = afterDurations({5.0});

    EXPECT_EQ(s.aveDur, 5.0);
    EXPECT_EQ(s.minDur, 5.0);
    EXPECT_EQ(s.maxDur, 5.0);
    EXPECT_TRUE(std::isnan(s.sdDur));
}

TEST_F(cActivityTest, theDeviationIsThatOfASample) {
    const cNodeAct::cStatistics s = afterDurations({4.0, 6.0});

    EXPECT_EQ(s.aveDur, 5.0);
    EXPECT_EQ(s.sdDur, std::sqrt(2.0));
    EXPECT_EQ(s.minDur, 4.0);
    EXPECT_EQ(s.maxDur, 6.0);
}

TEST_F(cActivityTest, meanAndDeviationFollowTheRecurrenceToTheLastBit) {
    const double mean2 = 1.0 + (2.5 - 1.0) / 2;
    const double mean3 = mean2 + (0.7 - mean2) / 3;
    const double spread2 = (2.5 - mean2) * (2.5 - 1.0);
    const double spread3 = spread2 + (0.7 - mean3) * (0.7 - mean2);

    const cNodeAct::cStatistics s = afterDurations({1.0, 2.5, 0.7});

    EXPECT_EQ(s.aveDur, mean3);
    EXPECT_EQ(s.sdDur, std::sqrt(spread3 / 2));
}

TEST_F(cActivityTest, aDurationThatIsNotANumberChangesNoMinimumAndNoMaximum) {
    const cNodeAct::cStatistics s = afterDurations({5.0, notANumber});

    EXPECT_EQ(s.minDur, 5.0);
    EXPECT_EQ(s.maxDur, 5.0);
    EXPECT_EQ(s.firstEnd, 5.0);
    EXPECT_EQ(s.lastEnd, 5.0);
    EXPECT_TRUE(std::isnan(s.aveDur));
    EXPECT_TRUE(std::isnan(s.sdDur));
}

TEST_F(cActivityTest, aFirstDurationThatIsNotANumberLeavesTheStartingPoints) {
    const cNodeAct::cStatistics s = afterDurations({notANumber});

    EXPECT_EQ(s.minDur, 1000000.0);
    EXPECT_EQ(s.maxDur, -1.0);
    EXPECT_EQ(s.firstEnd, 100000.0);
    EXPECT_EQ(s.lastEnd, -1.0);
}

TEST_F(cActivityTest, theStartingPointsOfTheMinimaAreLimits) {
    work.startInstance({}, 200000.0, 5000000.0);
    work.startInstance({}, 9200000.0, 5000000.0);
    const cNodeAct::cStatistics s = work.getStatistics();

    EXPECT_EQ(s.firstStart, 100000.0);
    EXPECT_EQ(s.lastStart, 9200000.0);
    EXPECT_EQ(s.firstEnd, 100000.0);
    EXPECT_EQ(s.lastEnd, 14200000.0);
    EXPECT_EQ(s.minDur, 1000000.0);
    EXPECT_EQ(s.maxDur, 5000000.0);
    EXPECT_EQ(s.minInter, 1000000.0);
    EXPECT_EQ(s.maxInter, 9000000.0);
}

TEST_F(cActivityTest, theStartingPointsOfTheMaximaAreLimitsToo) {
    const cNodeAct::cStatistics s = afterDurations({-3.0});

    EXPECT_EQ(s.maxDur, -1.0);
    EXPECT_EQ(s.minDur, -3.0);
    EXPECT_EQ(s.lastEnd, -1.0);
    EXPECT_EQ(s.firstEnd, -3.0);
}

TEST_F(cActivityTest, durationsCountWhenTheInstanceStarts) {
    work.startInstance({}, 2.0, 5.0);

    EXPECT_EQ(work.getStatistics().aveDur, 5.0);
    EXPECT_EQ(work.getStatistics().lastEnd, 7.0);
}

// ---- intervals

TEST_F(cActivityTest, theFirstStartCountsNoInterval) {
    const cNodeAct::cStatistics s = afterStarts({0.0});

    EXPECT_EQ(s.firstStart, 0.0);
    EXPECT_EQ(s.lastStart, 0.0);
    EXPECT_EQ(s.minInter, 1000000.0);
    EXPECT_EQ(s.maxInter, -1.0);
    EXPECT_EQ(s.aveInter, 0.0);
    EXPECT_EQ(s.sdInter, 0.0);
}

TEST_F(cActivityTest, aStartAtTime0IsAStartLikeAnyOther) {
    const cNodeAct::cStatistics s = afterStarts({0.0, 3.0});

    EXPECT_EQ(s.minInter, 3.0);
    EXPECT_EQ(s.maxInter, 3.0);
}

TEST_F(cActivityTest, theMeanIntervalIsInfiniteFromTheSecondStartOn) {
    const cNodeAct::cStatistics s = afterStarts({0.0, 3.0});

    EXPECT_EQ(s.aveInter, infinity);
    EXPECT_EQ(s.sdInter, infinity);
}

TEST_F(cActivityTest, twoFirstStartsThatCoincideHaveNoMeanInterval) {
    const cNodeAct::cStatistics s = afterStarts({3.0, 3.0});

    EXPECT_TRUE(std::isnan(s.aveInter));
    EXPECT_TRUE(std::isnan(s.sdInter));
    EXPECT_EQ(s.minInter, 0.0);
    EXPECT_EQ(s.maxInter, 0.0);
}

TEST_F(cActivityTest, theMeanIntervalIsNotANumberFromTheThirdStartOn) {
    const cNodeAct::cStatistics s = afterStarts({0.0, 3.0, 7.0});

    EXPECT_EQ(s.minInter, 3.0);
    EXPECT_EQ(s.maxInter, 4.0);
    EXPECT_TRUE(std::isnan(s.aveInter));
    EXPECT_TRUE(std::isnan(s.sdInter));
}

TEST_F(cActivityTest, aStartAtANegativeTimeCountsNoIntervalAfterIt) {
    const cNodeAct::cStatistics s = afterStarts({-2.0, 3.0});

    EXPECT_EQ(s.firstStart, -2.0);
    EXPECT_EQ(s.lastStart, 3.0);
    EXPECT_EQ(s.maxInter, -1.0);
}

TEST_F(cActivityTest, aStartAtATimeThatIsNotANumberHasNoIntervalThatIsOne) {
    const cNodeAct::cStatistics s = afterStarts({notANumber, 3.0});

    EXPECT_EQ(s.firstStart, 3.0);
    EXPECT_EQ(s.lastStart, 3.0);
    EXPECT_TRUE(std::isnan(s.aveInter));
    EXPECT_EQ(s.minInter, 1000000.0);
    EXPECT_EQ(s.maxInter, -1.0);
}

// ---- a start

TEST_F(cActivityTest, theDurationExpressionDecidesWhereMinusOneIsGiven) {
    work.setDurationText("2+2");

    work.startInstance({}, 10.0, cNodeAct::durationByExpression);

    EXPECT_EQ(work.latestInstance()->getDuration(), 4.0);
    EXPECT_EQ(work.latestInstance()->getStartTime(), 10.0);
    EXPECT_EQ(work.latestInstance()->getEndTime(), 14.0);
}

TEST_F(cActivityTest, aDurationExpressionMayItselfBeMinusOne) {
    work.setDurationText("(0-1)");

    work.startInstance({}, 10.0, -1.0);

    EXPECT_EQ(work.latestInstance()->getEndTime(), 9.0);
}

TEST_F(cActivityTest, anyOtherDurationIsTakenAsItIs) {
    work.setDurationText("4");

    work.startInstance({}, 10.0, -1.5);

    EXPECT_EQ(work.latestInstance()->getEndTime(), 8.5);
}

TEST_F(cActivityTest, theDurationExpressionSeesNoCurrentInstance) {
    work.setDurationText("Work.Duration+5");

    work.startInstance({}, 0.0, -1.0);
    work.startInstance({}, 0.0, -1.0);

    EXPECT_EQ(work.latestInstance()->getDuration(), 5.0);
}

TEST_F(cActivityTest, instancesAreNumberedFrom0AndKnowTheirOwner) {
    afterStarts({1.0, 2.0});

    EXPECT_EQ(work.findInstance(0)->getStartTime(), 1.0);
    EXPECT_EQ(work.findInstance(1)->getInstanceId(), 1);
    EXPECT_EQ(work.findInstance(1)->getOwnerActivity(), &work);
    EXPECT_EQ(work.findInstance(2), nullptr);
    EXPECT_EQ(work.latestInstance(), work.findInstance(1).get());
}

TEST_F(cActivityTest, startCodeSeesTheCountsAsTheyWereAndItsOwnDuration) {
    network.execute("ONSTART Work POST \"%d %d %f\" Work.TotInst Work.CurInst Work.Duration;\n");

    afterDurations({5.0, 6.0});

    EXPECT_EQ(network.messages, (cTexts{"0 0 5.000000", "1 1 6.000000"}));
    EXPECT_EQ(work.getStatistics().nextInstance, 2);
    EXPECT_EQ(work.getStatistics().curInst, 2);
}

TEST_F(cActivityTest, startCodeRunsWhenTheInstanceIsOnTheCalendarAndTheDurationCounted) {
    network.execute("ONSTART Work POST \"%f\" Work.AveDur;\n");
    std::size_t scheduled = 0;
    network.onMessage = [&](const std::string&) { scheduled = network.getCalendar().size(); };

    afterDurations({5.0});

    EXPECT_EQ(network.messages, cTexts{"5.000000"});
    EXPECT_EQ(scheduled, 1U);
}

TEST_F(cActivityTest, thereIsNoCurrentInstanceOutsideEventCode) {
    afterDurations({5.0});

    EXPECT_EQ(network.symbols->currentInstance, nullptr);
    EXPECT_EQ(network.evaluate("Work.Duration"), 0.0);
}

TEST_F(cActivityTest, thereIsNoCurrentInstanceAfterEventCodeThatFailed) {
    network.execute("ONSTART Work INIT Nope 1;\n");

    EXPECT_THROW(afterDurations({5.0}), cException);

    EXPECT_EQ(network.symbols->currentInstance, nullptr);
}

// ---- keywords

TEST_F(cActivityTest, keywordsAnswerWithTheStatisticsOfNow) {
    afterDurations({4.0, 6.0});
    work.endInstance(work.findInstance(0));

    EXPECT_EQ(work.getAttribute("CurInst"), 1.0);
    EXPECT_EQ(work.getAttribute("TotInst"), 2.0);
    EXPECT_EQ(work.getAttribute("AveDur"), 5.0);
    EXPECT_EQ(work.getAttribute("InContext"), 0.0);
    EXPECT_EQ(work.getAttribute("Duration"), 0.0);
}

TEST_F(cActivityTest, inContextTellsTheMark) {
    work.activeMark = true;

    EXPECT_EQ(work.getAttribute("InContext"), 1.0);
}

TEST_F(cActivityTest, durationIsThatOfTheCurrentInstanceWhicheverActivityIsAsked) {
    network.addCombi("Rest");
    network.execute("ONSTART Work POST \"%f\" Rest.Duration;\n");

    afterDurations({5.0});

    EXPECT_EQ(network.messages, cTexts{"5.000000"});
}

TEST_F(cActivityTest, otherKeywordsAreAnsweredWith0) {
    afterDurations({5.0});

    for (const char* keyword : {"SDDur", "MaxDur", "FirstStart", "curInst", "Nope", ""})
        EXPECT_EQ(work.getAttribute(keyword), 0.0) << keyword;
}

// ---- reset

TEST_F(cActivityTest, resetForgetsStatisticsInstancesAndEventCode) {
    network.execute("ONSTART Work POST x;\nBEFOREEND Work POST x;\nONEND Work POST x;\n");
    afterStarts({0.0, 3.0, 7.0});
    network.messages.clear();

    work.resetElement();

    const cNodeAct::cStatistics s = work.getStatistics();
    EXPECT_EQ(s.nextInstance, 0);
    EXPECT_EQ(s.curInst, 0);
    EXPECT_EQ(s.firstStart, 100000.0);
    EXPECT_EQ(s.lastStart, -1.0);
    EXPECT_EQ(s.aveInter, 0.0);
    EXPECT_EQ(s.minDur, 1000000.0);
    EXPECT_EQ(work.findInstance(0), nullptr);
    work.startInstance({}, 0.0, 1.0);
    work.endInstance(work.findInstance(0));
    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cActivityTest, statisticsAfterAResetAreThoseOfTheNewReplicationAlone) {
    afterDurations({100.0, 200.0});
    work.resetElement();

    const cNodeAct::cStatistics s = afterDurations({4.0, 6.0});

    EXPECT_EQ(s.aveDur, 5.0);
    EXPECT_EQ(s.sdDur, std::sqrt(2.0));
    EXPECT_EQ(s.maxDur, 6.0);
}

TEST_F(cActivityTest, intervalsAfterAResetBeginAnew) {
    afterStarts({0.0, 3.0, 7.0});
    work.resetElement();

    const cNodeAct::cStatistics s = afterStarts({0.0, 5.0});

    EXPECT_EQ(s.aveInter, infinity);
    EXPECT_EQ(s.sdInter, infinity);
    EXPECT_EQ(s.minInter, 5.0);
}

TEST_F(cActivityTest, resetKeepsTheDurationTextAndTheMark) {
    work.setDurationText("7");
    work.activeMark = true;

    work.resetElement();

    EXPECT_EQ(work.getDurationText(), "7");
    EXPECT_TRUE(work.activeMark);
}

TEST_F(cActivityTest, theDurationTextIs0AtFirst) { EXPECT_EQ(work.getDurationText(), "0"); }

TEST_F(cActivityTest, aDurationTextThatFailsStays) {
    EXPECT_THROW(work.setDurationText("1/0"), cException);

    EXPECT_EQ(work.getDurationText(), "1/0");
}

}  // namespace
