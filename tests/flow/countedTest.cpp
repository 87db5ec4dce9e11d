#include "flow/counted.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

/// An object that tells how many of its kind are alive.
class cProbe : public cCounted {
public:
    explicit cProbe(int& counter, int start = 0) : number(start), alive(counter) { ++alive; }
    ~cProbe() override { --alive; }

    int number;

private:
    int& alive;
};

class cDerivedProbe : public cProbe {
public:
    using cProbe::cProbe;
    ~cDerivedProbe() override { destroyed.push_back(number); }

    static inline std::vector<int> destroyed;
};

using cProbePtr = cShared<cProbe>;

class cCountedTest : public ::testing::Test {
protected:
    int alive = 0;
};

TEST_F(cCountedTest, aNewObjectIsHeldByItsPointerAloneAndHasItsArguments) {
    const cProbePtr probe = makeCounted<cProbe>(alive, 7);

    EXPECT_EQ(probe.holderCount(), 1U);
    EXPECT_GT(probe->holderCount(), 0U);
    EXPECT_EQ((*probe).number, 7);
    EXPECT_EQ(alive, 1);
}

TEST_F(cCountedTest, anObjectGoesWithItsLastHolderAndNoSooner) {
    cProbePtr first = makeCounted<cProbe>(alive);
    {
        const cProbePtr second = first;
        EXPECT_EQ(first.holderCount(), 2U);
        first = nullptr;
        EXPECT_EQ(second.holderCount(), 1U);
        EXPECT_EQ(alive, 1);
    }

    EXPECT_EQ(alive, 0);
}

TEST_F(cCountedTest, aMoveLeavesTheCountAndEmptiesTheSource) {
    cProbePtr first = makeCounted<cProbe>(alive);
    const cProbe* object = first.get();

    const cProbePtr second = std::move(first);

    EXPECT_EQ(first, nullptr);  // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(second.get(), object);
    EXPECT_EQ(second.holderCount(), 1U);
}

TEST_F(cCountedTest, anAssignmentLetsGoOfWhatWasHeld) {
    cProbePtr first = makeCounted<cProbe>(alive, 1);
    const cProbePtr second = makeCounted<cProbe>(alive, 2);

    first = second;

    EXPECT_EQ(alive, 1);
    EXPECT_EQ(first->number, 2);
    EXPECT_EQ(second.holderCount(), 2U);
}

TEST_F(cCountedTest, anAssignmentToItselfChangesNothing) {
    cProbePtr probe = makeCounted<cProbe>(alive, 3);
    cProbePtr& same = probe;

    probe = same;
    EXPECT_EQ(probe.holderCount(), 1U);
    probe = std::move(same);

    ASSERT_NE(probe, nullptr);
    EXPECT_EQ(probe->number, 3);
    EXPECT_EQ(probe.holderCount(), 1U);
    EXPECT_EQ(alive, 1);
}

TEST_F(cCountedTest, anObjectThatWasReleasedStaysHeldUntilSomebodyAdoptsIt) {
    cProbePtr first = makeCounted<cProbe>(alive);

    cProbe* released = first.release();

    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(alive, 1);
    EXPECT_GT(released->holderCount(), 0U);
    {
        const cProbePtr adopted = cProbePtr::adopt(released);
        EXPECT_EQ(adopted.get(), released);
        EXPECT_EQ(adopted.holderCount(), 1U);
    }
    EXPECT_EQ(alive, 0);
}

TEST_F(cCountedTest, anotherPointerToAnObjectInHandIsOneMoreHolder) {
    const cProbePtr first = makeCounted<cProbe>(alive);

    const cProbePtr second(first.get());

    EXPECT_EQ(first.holderCount(), 2U);
    EXPECT_EQ(first, second);
}

TEST_F(cCountedTest, aPointerToTheDerivedClassConvertsAndIsCounted) {
    cDerivedProbe::destroyed.clear();
    cShared<cDerivedProbe> derived = makeCounted<cDerivedProbe>(alive, 5);
    cProbePtr base = derived;
    EXPECT_EQ(derived.holderCount(), 2U);

    derived = nullptr;
    EXPECT_EQ(base.holderCount(), 1U);
    base = nullptr;

    EXPECT_EQ(cDerivedProbe::destroyed, std::vector<int>{5});
    EXPECT_EQ(alive, 0);
}

TEST_F(cCountedTest, aTemporaryThatConvertsLetsGo) {
    const cProbePtr base = makeCounted<cDerivedProbe>(alive);

    EXPECT_EQ(base.holderCount(), 1U);
}

TEST_F(cCountedTest, pointersAreEqualWhenTheyHoldTheSameObject) {
    const cProbePtr first = makeCounted<cProbe>(alive, 1);
    const cProbePtr other = makeCounted<cProbe>(alive, 1);

    EXPECT_EQ(first, cProbePtr(first));
    EXPECT_NE(first, other);
    EXPECT_TRUE(first);
}

TEST_F(cCountedTest, aPointerToNothingHasNoHolders) {
    const cProbePtr nothing;

    EXPECT_EQ(nothing, nullptr);
    EXPECT_FALSE(nothing);
    EXPECT_EQ(nothing.get(), nullptr);
    EXPECT_EQ(nothing.holderCount(), 0U);
    EXPECT_EQ(cProbePtr(nothing), cProbePtr(nullptr));
}

TEST_F(cCountedTest, aPlainVariableIsHeldByNobody) {
    const cProbe probe(alive);

    EXPECT_EQ(probe.holderCount(), 0U);
}

}  // namespace
