#include "kernel/calendar.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <list>
#include <random>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using cInstances = std::vector<cActInstancePtr>;

/// The plain way: a list, and a walk from its front to the first instance that doesn't end earlier or at the same time.
class cPlainCalendar {
public:
    void insert(const cActInstancePtr& instance) {
        const auto endsLater = [&](const auto& scheduled) {
            return !(scheduled->getEndTime() <= instance->getEndTime());
        };
        ends.insert(std::find_if(ends.begin(), ends.end(), endsLater), instance);
    }
    cActInstancePtr takeFront() {
        const auto first = ends.front();
        ends.pop_front();
        return first;
    }
    bool empty() const { return ends.empty(); }
    cInstances inOrder() const { return {ends.begin(), ends.end()}; }

private:
    std::list<cActInstancePtr> ends;
};

/// An empty calendar and its plain twin, and instances of any end.
class cCalendarTest : public ::testing::Test {
protected:
    cActInstancePtr instanceWithEnd(double end) {
        auto instance = makeCounted<cActInstance>(work);
        instance->begin(nextId++, 0.0, {});
        instance->setDuration(end);
        return instance;
    }
    void insert(double end) {
        const auto instance = instanceWithEnd(end);
        calendar.insert(instance);
        plain.insert(instance);
    }
    /// The ends in the order in which they are taken.
    std::vector<double> takeAll() {
        std::vector<double> taken;
        while (!calendar.empty()) taken.push_back(calendar.takeFront()->getEndTime());
        return taken;
    }

    cTestNetwork network;
    cNodeActCombi& work = network.addCombi("Work");
    std::int32_t nextId = 0;
    cCalendar calendar;
    cPlainCalendar plain;
};

TEST_F(cCalendarTest, earlierEndsComeFirst) {
    for (const double end : {5.0, -2.0, 3.0, infinity, 0.0, 4.0, -infinity}) insert(end);

    EXPECT_EQ(takeAll(), (std::vector<double>{-infinity, -2.0, 0.0, 3.0, 4.0, 5.0, infinity}));
}

TEST_F(cCalendarTest, endsOfOneTimeComeInTheOrderOfScheduling) {
    cInstances made;
    for (int i = 0; i < 5; ++i) {
        made.push_back(instanceWithEnd(i % 2 == 0 ? 0.0 : -0.0));  // one time, whatever the sign
        calendar.insert(made.back());
    }

    for (const auto& instance : made) EXPECT_EQ(calendar.takeFront(), instance);
}

TEST_F(cCalendarTest, anEndThatIsNotANumberGoesToTheFrontAndHoldsUpWhatWasThere) {
    for (const double end : {1.0, 3.0, notANumber, 2.0, 4.0}) insert(end);

    EXPECT_EQ(calendar.inOrder(), plain.inOrder());
    EXPECT_EQ(calendar.takeFront()->getEndTime(), 2.0);
    EXPECT_EQ(calendar.takeFront()->getEndTime(), 4.0);
    EXPECT_NE(calendar.front().getEndTime(), calendar.front().getEndTime());
    calendar.takeFront();
    EXPECT_EQ(takeAll(), (std::vector<double>{1.0, 3.0}));
}

TEST_F(cCalendarTest, aClearedCalendarIsEmptyAndTakesInstancesAgain) {
    for (const double end : {1.0, notANumber, 2.0}) insert(end);

    calendar.clear();

    EXPECT_TRUE(calendar.empty());
    EXPECT_EQ(calendar.size(), 0U);
    insert(7.0);
    EXPECT_EQ(takeAll(), std::vector<double>{7.0});
}

TEST_F(cCalendarTest, anInstanceThatWasTakenIsLetGo) {
    const auto instance = instanceWithEnd(1.0);
    calendar.insert(instance);
    const std::uint32_t whileScheduled = instance.holderCount();

    calendar.takeFront();

    EXPECT_EQ(whileScheduled, 2U);
    EXPECT_EQ(instance.holderCount(), 1U);
}

TEST_F(cCalendarTest, aListOfTheInstancesLeavesThemOnTheCalendar) {
    const auto instance = instanceWithEnd(notANumber);
    calendar.insert(instance);
    calendar.inOrder();

    EXPECT_EQ(instance.holderCount(), 2U);
    EXPECT_EQ(calendar.takeFront(), instance);
}

/// Instances before, at and behind ends that are not numbers, all of which a calendar holds.
class cFilledCalendarTest : public cCalendarTest {
protected:
    void fill(cCalendar& filled) {
        for (const double end : {1.0, 2.0, notANumber, 3.0, notANumber, 0.0, 4.0}) {
            made.push_back(instanceWithEnd(end));
            filled.insert(made.back());
        }
    }
    /// How many hold each instance.
    std::vector<std::uint32_t> holders() const {
        std::vector<std::uint32_t> counts;
        for (const auto& instance : made) counts.push_back(instance.holderCount());
        return counts;
    }

    cInstances made;
};

TEST_F(cFilledCalendarTest, aClearedCalendarLetsGoOfEveryInstance) {
    fill(calendar);
    const std::vector<std::uint32_t> before = holders();

    calendar.clear();

    EXPECT_EQ(before, std::vector<std::uint32_t>(made.size(), 2));
    EXPECT_EQ(holders(), std::vector<std::uint32_t>(made.size(), 1));
}

TEST_F(cFilledCalendarTest, aCalendarThatIsDestroyedLetsGoOfEveryInstance) {
    {
        cCalendar shortLived;
        fill(shortLived);
    }

    EXPECT_EQ(holders(), std::vector<std::uint32_t>(made.size(), 1));
}

/// Any mixture of insertions and takings gives the order of the plain walk.
class cCalendarTwinTest : public cCalendarTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(cCalendarTwinTest, hasTheOrderOfThePlainWalk) {
    std::mt19937 numbers(GetParam());
    const std::array ends{0.0, -0.0, 1.0, 1.5, 2.0, -1.0, -3.5, infinity, -infinity, notANumber, 5e-324};
    const unsigned takings = 30 + GetParam() % 40;
    const bool hasAnyTime = GetParam() % 2 == 0;
    for (int i = 0; i < 2000; ++i) {
        if (numbers() % 100 < takings) {
            ASSERT_EQ(calendar.empty(), plain.empty());
            if (!plain.empty()) {
                ASSERT_EQ(&calendar.front(), plain.inOrder().front().get());
                ASSERT_EQ(calendar.takeFront(), plain.takeFront());
            }
        } else {
            const double any = static_cast<double>(numbers() % 1000) / 8.0;
            insert(hasAnyTime && numbers() % 4 != 0 ? any : ends[numbers() % ends.size()]);
        }
        ASSERT_EQ(calendar.size(), plain.inOrder().size());
    }

    EXPECT_EQ(calendar.inOrder(), plain.inOrder());
}

INSTANTIATE_TEST_SUITE_P(seeds, cCalendarTwinTest, ::testing::Range(1U, 41U));

}  // namespace
