#include "flow/resource.h"

#include "support/holdings.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

// ---- amounts

class cResGenTest : public ::testing::Test {
protected:
    cResTypeGen soil{"Soil"};
    cResGen heap{&soil, 2.0};
};

TEST_F(cResGenTest, anAmountBelongsToItsType) {
    EXPECT_EQ(heap.getResType(), &soil);
    EXPECT_EQ(heap.getAmount(), 2.0);
    EXPECT_EQ(heap.quantity(), 2.0);
}

TEST_F(cResGenTest, amountsAddUp) {
    heap.add(0.5);

    EXPECT_EQ(heap.getAmount(), 2.5);
}

TEST_F(cResGenTest, addingAnotherLeavesItAsItWas) {
    const cResGen load(&soil, 3.0);

    heap.add(load);

    EXPECT_EQ(heap.getAmount(), 5.0);
    EXPECT_EQ(load.getAmount(), 3.0);
}

struct cSubtractCase {
    double decrease;
    double left;
};

class cSubtractTest : public cResGenTest, public ::testing::WithParamInterface<cSubtractCase> {};

TEST_P(cSubtractTest, neverLeavesLessThanNothing) {
    cResGen same(&soil, 2.0);
    const cResGen load(&soil, GetParam().decrease);

    heap.subtract(GetParam().decrease);
    same.subtract(load);

    EXPECT_EQ(heap.getAmount(), GetParam().left);
    EXPECT_EQ(same.getAmount(), GetParam().left);
    EXPECT_EQ(load.getAmount(), GetParam().decrease);
}

INSTANTIATE_TEST_SUITE_P(of2, cSubtractTest,
                         ::testing::Values(cSubtractCase{0.5, 1.5}, cSubtractCase{2.0, 0.0}, cSubtractCase{3.0, 0.0},
                                           cSubtractCase{0.0, 2.0}, cSubtractCase{-1.0, 3.0}));

TEST_F(cResGenTest, subtractingWhatIsNotANumberLeavesNothing) {
    heap.subtract(std::numeric_limits<double>::quiet_NaN());

    EXPECT_EQ(heap.getAmount(), 0.0);
}

// ---- instances

/// Trucks at time 7.
class cResCharTest : public ::testing::Test {
protected:
    void SetUp() override { network.simTime = 7.0; }

    /// What a truck says of `name`, or -1 if it doesn't know it.
    static double propertyOf(cResChar& resource, const std::string& name) {
        double value = -1.0;
        const bool found = resource.getProperty(name, value);
        EXPECT_EQ(found, value != -1.0);
        return value;
    }

    cWatchedNetwork network;
    cResTypeCompound& truck = network.addCompoundType("Truck");
};

TEST_F(cResCharTest, theFirstInstanceOfATypeIsNumber1) {
    const cResCompound first(&truck);

    EXPECT_EQ(first.getInstanceName(), "Truck_1");
    EXPECT_EQ(first.getResNum(), 1);
    EXPECT_TRUE(first.props.empty());
    EXPECT_EQ(first.getResType(), &truck);
    EXPECT_EQ(first.getCharType(), &truck);
    EXPECT_TRUE(first.contents.empty());
}

TEST_F(cResCharTest, instancesAreNumberedInARow) {
    const cResCompound first(&truck);
    const cResCompound second(&truck);

    EXPECT_EQ(second.getResNum(), 2);
    EXPECT_EQ(second.getInstanceName(), "Truck_2");
    EXPECT_EQ(truck.instanceCount, 2);
}

TEST_F(cResCharTest, numbersGoOnAlsoWhenEarlierInstancesAreGone) {
    std::make_unique<cResCompound>(&truck).reset();
    std::make_unique<cResCompound>(&truck).reset();

    EXPECT_EQ(cResCompound(&truck).getResNum(), 3);
}

TEST_F(cResCharTest, eachTypeNumbersItsOwn) {
    cResTypeCompound crane("Crane");
    const cResCompound first(&truck);

    EXPECT_EQ(cResCompound(&crane).getInstanceName(), "Crane_1");
}

TEST_F(cResCharTest, numbersBeginAgainAfterAReset) {
    const cResCompound first(&truck);

    network.resetRun();

    EXPECT_EQ(cResCompound(&truck).getInstanceName(), "Truck_1");
}

TEST_F(cResCharTest, anInstanceIsBornNowAndHasEnteredNoQueue) {
    const cResCompound made(&truck);

    EXPECT_EQ(made.getBirthTime(), 7.0);
    EXPECT_EQ(made.timeIn, 0.0);
}

TEST_F(cResCharTest, anInstanceCountsAsOneUnit) {
    const cResCompound made(&truck);

    EXPECT_EQ(made.getUnitCount(), 1.0);
    EXPECT_EQ(made.quantity(), 1.0);
}

TEST_F(cResCharTest, aLongNameIsCutAt63Characters) {
    cResTypeCompound longest(std::string(61, 't'));
    cResTypeCompound tooLong(std::string(62, 'u'));
    cResTypeCompound muchTooLong(std::string(500, 'v'));

    EXPECT_EQ(cResCompound(&longest).getInstanceName(), std::string(61, 't') + "_1");
    EXPECT_EQ(cResCompound(&tooLong).getInstanceName(), std::string(62, 'u') + "_");
    EXPECT_EQ(cResCompound(&muchTooLong).getInstanceName(), std::string(63, 'v'));
}

TEST_F(cResCharTest, savePropertiesBeginWith0) {
    truck.setSaveProps({"weight", "age", "weight"});

    const cResCompound made(&truck);

    EXPECT_EQ(made.props, (std::map<std::string, double>{{"age", 0.0}, {"weight", 0.0}}));
}

// ---- properties

TEST_F(cResCharTest, everyInstanceKnowsItsTimesAndItsNumber) {
    cResCompound made(&truck);
    made.timeIn = 9.0;

    EXPECT_EQ(propertyOf(made, "TimeIn"), 9.0);
    EXPECT_EQ(propertyOf(made, "BirthTime"), 7.0);
    EXPECT_EQ(propertyOf(made, "ResNum"), 1.0);
}

TEST_F(cResCharTest, storedPropertiesAreFoundByTheirExactName) {
    truck.setSaveProps({"weight"});
    cResCompound made(&truck);
    made.props["weight"] = 12.5;

    EXPECT_EQ(propertyOf(made, "weight"), 12.5);
    EXPECT_EQ(propertyOf(made, "Weight"), -1.0);
    EXPECT_EQ(propertyOf(made, "timeIn"), -1.0);
}

TEST_F(cResCharTest, anUnknownPropertyLeavesTheValueAlone) {
    cResCompound made(&truck);
    double value = 42.0;

    EXPECT_FALSE(made.getProperty("nope", value));

    EXPECT_EQ(value, 42.0);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cResCharTest, theTimesAndTheNumberWinOverStoredPropertiesOfTheSameName) {
    truck.setSaveProps({"TimeIn", "ResNum", "BirthTime"});
    cResCompound made(&truck);
    for (auto& [name, value] : made.props) value = 99.0;

    EXPECT_EQ(propertyOf(made, "TimeIn"), 0.0);
    EXPECT_EQ(propertyOf(made, "ResNum"), 1.0);
    EXPECT_EQ(propertyOf(made, "BirthTime"), 7.0);
}

TEST_F(cResCharTest, aComputedPropertyIsWorkedOutForTheInstanceInHand) {
    cResCompound made(&truck);
    truck.computedProps["speed"] = std::make_unique<cExpression>(*network.symbols, "GET(\"speed\")");
    const cResChar* inHand = nullptr;
    network.onGet = [&](const std::string&) {
        inHand = network.resourceInHand();
        return 3.5;
    };

    EXPECT_EQ(propertyOf(made, "speed"), 3.5);

    EXPECT_EQ(inHand, &made);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cResCharTest, aStoredPropertyWinsOverAComputedOne) {
    truck.setSaveProps({"speed"});
    truck.computedProps["speed"] = std::make_unique<cExpression>(*network.symbols, "80");
    cResCompound made(&truck);
    made.props["speed"] = 50.0;

    EXPECT_EQ(propertyOf(made, "speed"), 50.0);
}

// ---- parts

TEST_F(cResCharTest, aPartLivesUntilTheLastPlaceLetsGoOfIt) {
    const cResPtr part = makeCounted<cResCompound>(&truck);
    auto carrier = makeCounted<cResCompound>(&truck);
    carrier->contents = holdingsOf({part});
    cHoldings elsewhere = carrier->contents;
    const std::uint32_t inBoth = part.holderCount();

    carrier = nullptr;
    EXPECT_EQ(part.holderCount(), 2U);
    elsewhere.clear();

    EXPECT_EQ(inBoth, 3U);
    EXPECT_EQ(part.holderCount(), 1U);
}

TEST_F(cResCharTest, partsOfOneTypeKeepTheirOrder) {
    cResCompound carrier(&truck);
    for (int i = 0; i < 3; ++i) carrier.contents.listOf(&truck).add(makeCounted<cResCompound>(&truck));

    std::vector<int> numbers;
    for (const cResPtr& part : heldOf(carrier.contents, truck))
        numbers.push_back(dynamic_cast<const cResChar&>(*part).getResNum());

    EXPECT_EQ(numbers, (std::vector<int>{2, 3, 4}));
}

}  // namespace
