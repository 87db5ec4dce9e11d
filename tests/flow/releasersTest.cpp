#include "flow/releasers.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// An empty store, two generic types and two characterized ones.
class cReleasersTest : public ::testing::Test {
protected:
    cShared<cResGen> amountOf(cResType& type, double amount) { return makeCounted<cResGen>(&type, amount); }
    cShared<cResCompound> instanceOf(cResTypeCompound& type) { return makeCounted<cResCompound>(&type); }
    double held(const cResType& type) const { return store.countOf("Count", &type); }

    cTestNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeGen& rock = network.addGenericType("Rock");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cResTypeCompound& crane = network.addCompoundType("Crane");
    cReleasers store;
};

// ---- taking in

TEST_F(cReleasersTest, anEmptyListChangesNothing) {
    store.addHoldings({});

    EXPECT_TRUE(store.getHoldings(&soil).empty());
}

TEST_F(cReleasersTest, amountsOfATypeMerge) {
    const auto first = amountOf(soil, 2.0);
    const auto second = amountOf(soil, 0.5);

    store.addHoldings({first});
    store.addHoldings({second});

    ASSERT_EQ(store.getHoldings(&soil).size(), 1U);
    EXPECT_EQ(store.getHoldings(&soil).front()->quantity(), 2.5);
    EXPECT_EQ(first->getAmount(), 2.0);
    EXPECT_EQ(second->getAmount(), 0.5);
}

TEST_F(cReleasersTest, amountsOfDifferentTypesStandSideBySide) {
    store.addHolding(*amountOf(soil, 2.0));
    store.addHolding(*amountOf(rock, 3.0));

    EXPECT_EQ(held(soil), 2.0);
    EXPECT_EQ(held(rock), 3.0);
}

TEST_F(cReleasersTest, ofAListOfAmountsOnlyTheFirstIsLookedAt) {
    store.addHoldings({amountOf(soil, 2.0), amountOf(soil, 3.0), amountOf(rock, 4.0), instanceOf(truck)});

    EXPECT_EQ(held(soil), 2.0);
    EXPECT_EQ(held(rock), 0.0);
    EXPECT_EQ(held(truck), 0.0);
}

TEST_F(cReleasersTest, amountsThatALinkLabelledWithACharacterizedTypeStandSideBySide) {
    store.addHoldings({amountOf(truck, 2.0), amountOf(truck, 3.0)});

    EXPECT_EQ(store.getHoldings(&truck).size(), 2U);
    EXPECT_EQ(held(truck), 2.0);
}

TEST_F(cReleasersTest, instancesStandSideBySideInTheOrderInWhichTheyCame) {
    const auto first = instanceOf(truck);
    const auto second = instanceOf(truck);
    const auto third = instanceOf(truck);

    store.addHoldings({second, third});
    store.addHolding(*first);

    EXPECT_EQ(store.getHoldings(&truck), (cResList{second, third, first}));
}

TEST_F(cReleasersTest, everyInstanceOfAListIsKeptUnderItsOwnType) {
    const auto aTruck = instanceOf(truck);
    const auto aCrane = instanceOf(crane);

    store.addHoldings({aTruck, aCrane});

    EXPECT_EQ(store.getHoldings(&truck), cResList{aTruck});
    EXPECT_EQ(store.getHoldings(&crane), cResList{aCrane});
}

TEST_F(cReleasersTest, anInstanceCanStandTwice) {
    const auto made = instanceOf(truck);

    store.addHoldings({made, made});

    EXPECT_EQ(store.getHoldings(&truck), (cResList{made, made}));
}

// ---- what is held

TEST_F(cReleasersTest, aTypeThatIsNotHeldHasNoHoldingsAndCounts0) {
    store.addHolding(*amountOf(soil, 2.0));

    EXPECT_TRUE(store.getHoldings(&rock).empty());
    EXPECT_TRUE(store.getHoldings(&truck).empty());
    EXPECT_TRUE(store.getHoldings(nullptr).empty());
    EXPECT_EQ(held(rock), 0.0);
    EXPECT_EQ(held(truck), 0.0);
}

TEST_F(cReleasersTest, countIsTheAmountOrTheNumberOfInstances) {
    store.addHolding(*amountOf(soil, 2.5));
    store.addHoldings({instanceOf(truck), instanceOf(truck)});

    EXPECT_EQ(held(soil), 2.5);
    EXPECT_EQ(held(truck), 2.0);
}

TEST_F(cReleasersTest, otherKeywordsCountNothing) {
    store.addHolding(*amountOf(soil, 2.5));

    EXPECT_EQ(store.countOf("count", &soil), 0.0);
    EXPECT_EQ(store.countOf("", &soil), 0.0);
}

// ---- giving up

struct cReleaseCase {
    double released;
    double left;
};

class cReleaseAmountTest : public cReleasersTest, public ::testing::WithParamInterface<cReleaseCase> {};

TEST_P(cReleaseAmountTest, lowersTheHoldingOrRemovesIt) {
    store.addHolding(*amountOf(soil, 4.0));
    store.addHolding(*amountOf(rock, 9.0));
    const cResGen released(&soil, GetParam().released);

    EXPECT_TRUE(store.release(released));

    EXPECT_EQ(held(soil), GetParam().left);
    EXPECT_EQ(store.getHoldings(&soil).empty(), GetParam().left == 0.0);
    EXPECT_EQ(held(rock), 9.0);
    EXPECT_EQ(released.getAmount(), GetParam().released);
}

INSTANTIATE_TEST_SUITE_P(of4, cReleaseAmountTest,
                         ::testing::Values(cReleaseCase{1.5, 2.5}, cReleaseCase{4.0, 0.0}, cReleaseCase{10.0, 0.0},
                                           cReleaseCase{0.0, 4.0}, cReleaseCase{-1.0, 5.0}));

TEST_F(cReleasersTest, anAmountOfATypeThatIsNotHeldIsNotGivenUp) { EXPECT_FALSE(store.release(cResGen(&soil, 1.0))); }

TEST_F(cReleasersTest, theSecondReleaseOfAHoldingFindsNothing) {
    store.addHolding(*amountOf(soil, 4.0));
    ASSERT_TRUE(store.release(cResGen(&soil, 4.0)));

    EXPECT_FALSE(store.release(cResGen(&soil, 1.0)));
}

TEST_F(cReleasersTest, anInstanceIsTakenOutAndTheOthersKeepTheirOrder) {
    const auto first = instanceOf(truck);
    const auto second = instanceOf(truck);
    const auto third = instanceOf(truck);
    store.addHoldings({first, second, third});

    EXPECT_TRUE(store.release(*second));

    EXPECT_EQ(store.getHoldings(&truck), (cResList{first, third}));
}

TEST_F(cReleasersTest, anInstanceThatStandsTwiceLosesOnePlace) {
    const auto made = instanceOf(truck);
    store.addHoldings({made, made});

    EXPECT_TRUE(store.release(*made));

    EXPECT_EQ(store.getHoldings(&truck), cResList{made});
}

TEST_F(cReleasersTest, anInstanceThatIsNotHeldChangesNothingAndItsTypeIsHeldAllTheSame) {
    const auto made = instanceOf(truck);
    store.addHolding(*made);

    EXPECT_TRUE(store.release(*instanceOf(truck)));

    EXPECT_EQ(store.getHoldings(&truck), cResList{made});
}

TEST_F(cReleasersTest, anInstanceOfATypeThatIsNotHeldIsNotGivenUp) {
    store.addHolding(*instanceOf(crane));

    EXPECT_FALSE(store.release(*instanceOf(truck)));
}

TEST_F(cReleasersTest, aResourceThatTravelsOnOutlivesItsPlaceHere) {
    const auto made = instanceOf(truck);
    store.addHolding(*made);

    store.release(*made);

    EXPECT_EQ(made.holderCount(), 1);
    EXPECT_EQ(made->getInstanceName(), "Truck_1");
}

}  // namespace
