#include "batch/progressLine.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

struct cTextCase {
    cProgress progress;
    const char* text;
};

void PrintTo(const cTextCase& row, std::ostream* stream) { *stream << row.text; }

class cProgressTextTest : public ::testing::TestWithParam<cTextCase> {};

/// A terminal that keeps all that is written, and a clock that stands until it is set.
class cProgressLineTest : public ::testing::Test {
protected:
    /// What was written since the last call.
    std::string written() {
        const std::string text = terminal.str();
        terminal.str("");
        return text;
    }

    std::ostringstream terminal;
    double now = 100.0;
    cProgressLine line{terminal, true, [this] { return now; }};
};

}  // namespace

TEST_P(cProgressTextTest, tellsCountRateAndTimeLeft) { EXPECT_EQ(progressText(GetParam().progress), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    figures, cProgressTextTest,
    ::testing::Values(cTextCase{{0, 1000, 0.0, 0.0}, "0 of 1000 replications"},
                      cTextCase{{0, 1000, 0.0, 90.0}, "0 of 1000 replications"},
                      cTextCase{{5, 10, 0.0, 0.0}, "5 of 10 replications"},
                      cTextCase{{456, 1000, 10.0, 0.0}, "456 of 1000 replications, 45.6 per second, 0:00:12 left"},
                      cTextCase{{456, 1000, 10.0, 2.0}, "456 of 1000 replications, 45.6 per second, 0:00:10 left"},
                      cTextCase{{10, 10, 10.0, 0.0}, "10 of 10 replications, 1.0 per second, 0:00:00 left"},
                      cTextCase{{10, 20, 20.0, 0.0}, "10 of 20 replications, 30.0 per minute, 0:00:20 left"},
                      cTextCase{{1, 3, 60.0, 0.0}, "1 of 3 replications, 1.0 per minute, 0:02:00 left"},
                      cTextCase{{1, 3, 61.0, 0.0}, "1 of 3 replications, 59.0 per hour, 0:02:02 left"},
                      cTextCase{{1, 100, 3661.0, 0.0}, "1 of 100 replications, 1.0 per hour, 100:40:39 left"},
                      cTextCase{{1, 2, 10.0, 25.0}, "1 of 2 replications, 6.0 per minute, 0:00:00 left"},
                      cTextCase{{2000000, 2147483647, 1.0, 0.0},
                                "2000000 of 2147483647 replications, 2000000.0 per second, 0:17:53 left"}));

TEST_F(cProgressLineTest, showsItselfWhenTheFirstReplicationBegins) {
    line.begin();
    line.advance(0, 4);

    EXPECT_EQ(written(), "\r\033[K0 of 4 replications");
}

TEST_F(cProgressLineTest, isRewrittenTenTimesASecondAtMost) {
    line.begin();
    line.advance(0, 4);
    written();

    now = 100.09;
    line.advance(1, 4);
    const std::string tooEarly = written();
    now = 100.125;
    line.refresh();

    EXPECT_EQ(tooEarly, "");
    EXPECT_EQ(written(), "\r\033[K1 of 4 replications, 11.1 per second, 0:00:00 left");
}

TEST_F(cProgressLineTest, timeLeftRunsDownInsideAReplication) {
    line.begin();
    line.advance(0, 3);
    now = 110.0;
    line.advance(1, 3);
    written();

    now = 115.0;
    line.refresh();

    EXPECT_EQ(written(), "\r\033[K1 of 3 replications, 6.0 per minute, 0:00:15 left");
}

TEST_F(cProgressLineTest, erasingLeavesAnEmptyLineAndComesOnceOnly) {
    line.begin();
    line.advance(0, 4);
    written();

    line.erase();
    line.erase();

    EXPECT_EQ(written(), "\r\033[K");
}

TEST_F(cProgressLineTest, isErasedAtTheEndOfItsLife) {
    {
        cProgressLine shortLived(terminal, true, [] { return 1.0; });
        shortLived.begin();
        shortLived.advance(0, 4);
        written();
    }

    EXPECT_EQ(written(), "\r\033[K");
}

TEST_F(cProgressLineTest, showsNothingBeforeARunOfManyBegins) {
    line.refresh();
    line.advance(0, 1);
    line.erase();

    EXPECT_EQ(written(), "");
}

TEST_F(cProgressLineTest, showsNothingWhereItIsNotWanted) {
    cProgressLine silent(terminal, false, [] { return 1.0; });

    silent.begin();
    silent.advance(3, 4);
    silent.refresh();
    silent.erase();

    EXPECT_EQ(written(), "");
}
