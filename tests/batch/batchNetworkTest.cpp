#include "batch/batchNetwork.h"

#include "batch/progressLine.h"
#include "language/exception.h"
#include "support/failureOf.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

/// A network with two answers for GET, whose host writes to a stream that nobody shows progress on.
class cBatchNetworkTest : public ::testing::Test {
protected:
    std::ostringstream messages;
    cProgressLine progress{messages, false};
    cBatchNetwork network{5, {{"Trucks", 4.0}, {"nothing", 0.0}}, messages, progress};
};

}  // namespace

TEST_F(cBatchNetworkTest, getIsAnsweredByKey) {
    EXPECT_EQ(network.hostGet("Trucks"), 4.0);
    EXPECT_EQ(network.hostGet("nothing"), 0.0);
}

TEST_F(cBatchNetworkTest, getWithoutAnAnswerTellsHowToGiveOne) {
    const cException failure = failureOf([&] { network.hostGet("Rate"); });

    EXPECT_EQ(failure.code, failureCode::expression);
    EXPECT_EQ(failure.message, "No answer to GET(\"Rate\"): give one with --get Rate=VALUE.");
}

TEST_F(cBatchNetworkTest, postedTextIsALineOfItsOwn) {
    network.hostMessage("half done ");

    EXPECT_EQ(messages.str(), "MESSAGE half done \n");
}

TEST_F(cBatchNetworkTest, seedStandsInForTheClock) { EXPECT_EQ(network.clock(), 5); }

TEST_F(cBatchNetworkTest, largestSeedIsTakenAsItIs) {
    const cBatchNetwork other(4294967295U, {}, messages, progress);

    EXPECT_EQ(other.clock(), 4294967295);
}

TEST_F(cBatchNetworkTest, withoutASeedTheClockIsTheCalendar) {
    const std::int64_t before = cNetwork::calendarSeconds();
    const cBatchNetwork other(std::nullopt, {}, messages, progress);

    const std::int64_t seconds = other.clock();

    EXPECT_GE(seconds, before);
    EXPECT_LE(seconds, cNetwork::calendarSeconds());
}

TEST_F(cBatchNetworkTest, eventsPassWithoutAStop) {
    EXPECT_NO_THROW(network.processHostEvents());
    EXPECT_EQ(messages.str(), "");
}

TEST_F(cBatchNetworkTest, postedTextTakesTheProgressLineAway) {
    std::ostringstream terminal;
    cProgressLine line(terminal, true, [] { return 1.0; });
    cBatchNetwork watched(5, {}, terminal, line);
    line.begin();
    line.advance(0, 3);

    watched.hostMessage("dug");

    EXPECT_EQ(terminal.str(), "\r\033[K0 of 3 replications\r\033[KMESSAGE dug\n");
}
