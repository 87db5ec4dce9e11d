#include "flow/holdings.h"

#include "support/burst.h"
#include "support/holdings.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>

namespace {

/// Empty holdings, a generic type and a characterized one.
class cHoldingsTest : public ::testing::Test {
protected:
    cResList trucks(int count) {
        cResList made;
        for (int i = 0; i < count; ++i) made.push_back(instanceOf(truck));
        return made;
    }
    void add(const cResList& resources) {
        for (const cResPtr& resource : resources) holdings.listOf(resource->getResType()).add(resource);
    }
    cHoldings::cList& truckList() { return holdings.listOf(&truck); }
    cResList held() const { return heldOf(holdings, truck); }

    cTestNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cHoldings holdings;
};

TEST_F(cHoldingsTest, newOnesHoldNothingOfAnyType) {
    EXPECT_TRUE(holdings.empty());
    EXPECT_EQ(holdings.size(), 0U);
    EXPECT_EQ(holdings.find(&truck), nullptr);
    EXPECT_EQ(holdings.find(nullptr), nullptr);
}

TEST_F(cHoldingsTest, aListIsMadeWhenItIsFirstAskedForAndHoldsNothing) {
    cHoldings::cList& list = holdings.listOf(&truck);

    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.getType(), &truck);
    EXPECT_EQ(holdings.find(&truck), &list);
    EXPECT_EQ(&holdings.listOf(&truck), &list);
    EXPECT_EQ(holdings.find(&soil), nullptr);
    EXPECT_TRUE(holdings.empty());
}

TEST_F(cHoldingsTest, resourcesOfATypeStandInTheOrderInWhichTheyCame) {
    const cResList made = trucks(3);

    add({made[2], made[0], made[1], made[0]});

    EXPECT_EQ(held(), (cResList{made[2], made[0], made[1], made[0]}));
    EXPECT_EQ(made[0].holderCount(), 3U);
}

TEST_F(cHoldingsTest, anAmountCountsAsOneAmongTheResources) {
    add(trucks(2));
    holdings.listOf(&soil).amount = 0.0;

    EXPECT_EQ(holdings.size(), 3U);
    EXPECT_FALSE(holdings.listOf(&soil).empty());
    EXPECT_EQ(amountHeld(holdings, soil), 0.0);
}

// ---- taking out

struct cRemoval {
    const char* name;
    std::vector<std::size_t> removed;
    std::vector<std::size_t> left;
};

void PrintTo(const cRemoval& row, std::ostream* stream) { *stream << row.name; }

class cHoldingsRemovalTest : public cHoldingsTest, public ::testing::WithParamInterface<cRemoval> {};

TEST_P(cHoldingsRemovalTest, theOthersKeepTheirOrderAndWhatLeavesIsLetGo) {
    const cResList made = trucks(4);
    add(made);

    for (const std::size_t place : GetParam().removed) truckList().remove(*made[place]);

    cResList left;
    for (const std::size_t place : GetParam().left) left.push_back(made[place]);
    EXPECT_EQ(held(), left);
    EXPECT_EQ(holdings.size(), left.size());
    EXPECT_EQ(truckList().empty(), left.empty());
    for (const std::size_t place : GetParam().removed) EXPECT_EQ(made[place].holderCount(), 1U);
}

INSTANTIATE_TEST_SUITE_P(ofFour, cHoldingsRemovalTest,
                         ::testing::Values(cRemoval{"first", {0}, {1, 2, 3}}, cRemoval{"middle", {1}, {0, 2, 3}},
                                           cRemoval{"last", {3}, {0, 1, 2}}, cRemoval{"twoFirst", {0, 1}, {2, 3}},
                                           cRemoval{"firstThenMiddle", {0, 2}, {1, 3}},
                                           cRemoval{"firstThenLast", {0, 3}, {1, 2}},
                                           cRemoval{"allForwards", {0, 1, 2, 3}, {}},
                                           cRemoval{"allBackwards", {3, 2, 1, 0}, {}}),
                         [](const auto& row) { return row.param.name; });

TEST_F(cHoldingsTest, whatStandsTwiceLeavesAtItsFirstPlace) {
    const cResList made = trucks(3);
    add({made[0], made[1], made[2], made[1]});

    truckList().remove(*made[1]);

    EXPECT_EQ(held(), (cResList{made[0], made[2], made[1]}));
}

TEST_F(cHoldingsTest, whatIsNotThereLeavesNothingBehind) {
    const cResList made = trucks(3);
    add({made[0], made[1]});
    truckList().remove(*made[0]);

    truckList().remove(*made[2]);
    truckList().remove(*made[0]);  // no longer there

    EXPECT_EQ(held(), cResList{made[1]});
}

TEST_F(cHoldingsTest, whatComesBehindOnesThatLeftStandsBehindTheRest) {
    const cResList made = trucks(5);
    add({made[0], made[1], made[2]});
    truckList().remove(*made[0]);
    truckList().remove(*made[1]);

    add({made[3], made[0], made[4]});

    EXPECT_EQ(held(), (cResList{made[2], made[3], made[0], made[4]}));
}

// ---- emptying

TEST_F(cHoldingsTest, clearLetsGoOfEverything) {
    const cResList made = trucks(2);
    add(made);
    holdings.listOf(&soil).amount = 4.0;

    holdings.clear();

    EXPECT_TRUE(holdings.empty());
    EXPECT_EQ(holdings.size(), 0U);
    EXPECT_EQ(made[0].holderCount(), 1U);
    EXPECT_EQ(amountHeld(holdings, soil), std::nullopt);
    EXPECT_TRUE(held().empty());
}

TEST_F(cHoldingsTest, aListThatIsEmptiedLeavesTheOthers) {
    const cResList made = trucks(2);
    add(made);
    holdings.listOf(&soil).amount = 4.0;

    truckList().clear();

    EXPECT_EQ(holdings.size(), 1U);
    EXPECT_EQ(amountHeld(holdings, soil), 4.0);
    EXPECT_EQ(made[1].holderCount(), 1U);
}

TEST_F(cHoldingsTest, whatIsEmptiedTakesInAgainFromTheStart) {
    const cResList made = trucks(3);
    add(made);
    truckList().remove(*made[0]);
    holdings.clear();

    add({made[2], made[1]});

    EXPECT_EQ(held(), (cResList{made[2], made[1]}));
}

// ---- memory

TEST_F(cHoldingsTest, theMemoryOfWhatWasEmptiedIsUsedAgain) {
    const cResList made = trucks(3);
    add(made);
    const cHoldings::cList* list = holdings.find(&truck);
    const cResPtr* memory = list->held().data();
    holdings.clear();

    add(made);
    EXPECT_EQ(list->held().data(), memory);
    for (const cResPtr& one : made) truckList().remove(*one);
    add(made);

    EXPECT_EQ(holdings.find(&truck), list);
    EXPECT_EQ(list->held().data(), memory);
}

TEST_F(cHoldingsTest, aRowInWhichAsManyComeAsLeaveStaysInItsMemory) {
    const cResList made = trucks(3);
    add({made[0], made[1]});
    std::set<const cResPtr*> places;

    for (std::size_t i = 0; i < 10000; ++i) {
        truckList().add(made[(i + 2) % 3]);
        truckList().remove(*made[i % 3]);
        places.insert(holdings.find(&truck)->held().data());
    }

    EXPECT_LT(places.size(), 32U);
    EXPECT_EQ(held().size(), 2U);
}

// ---- copies

TEST_F(cHoldingsTest, aCopyHoldsTheSameResourcesAndAnAmountOfItsOwn) {
    const cResList made = trucks(2);
    add(made);
    holdings.listOf(&soil).amount = 4.0;

    cHoldings copy = holdings;
    copy.listOf(&soil).amount = 1.0;
    copy.listOf(&truck).remove(*made[0]);

    EXPECT_EQ(amountHeld(holdings, soil), 4.0);
    EXPECT_EQ(held(), made);
    EXPECT_EQ(heldOf(copy, truck), cResList{made[1]});
    EXPECT_EQ(made[1].holderCount(), 3U);
}

// ---- many types, and the plain twin

/// Twenty types, whose addresses stand in no order, and a few resources of each.
class cManyTypesTest : public cHoldingsTest {
protected:
    static constexpr std::size_t typeCount = 20;

    cManyTypesTest() {
        for (std::size_t i = 0; i < typeCount; ++i) {
            types[i] = &network.addCompoundType("T" + std::to_string(i));
            for (int k = 0; k < 4; ++k) resources[i].push_back(instanceOf(*types[i]));
        }
    }

    std::array<cResTypeCompound*, typeCount> types{};
    std::array<cResList, typeCount> resources;
};

TEST_F(cManyTypesTest, moreThanEightTypesAreFoundEachWithItsOwn) {
    for (const std::size_t i : {11U, 3U, 7U, 0U, 9U, 1U, 8U, 2U, 10U, 4U, 6U, 5U})
        holdings.listOf(types[i]).add(resources[i][0]);
    holdings.listOf(&soil).amount = 2.0;

    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(heldOf(holdings, *types[i]), cResList{resources[i][0]}) << i;
    for (std::size_t i = 12; i < typeCount; ++i) EXPECT_EQ(holdings.find(types[i]), nullptr) << i;
    EXPECT_EQ(holdings.find(nullptr), nullptr);
    EXPECT_EQ(amountHeld(holdings, soil), 2.0);
    EXPECT_EQ(holdings.size(), 13U);
}

/// The same changes made to a multimap.
class cHoldingsTwinTest : public cManyTypesTest, public ::testing::WithParamInterface<unsigned> {
protected:
    void removeFromTwin(const cResPtr& resource) {
        const auto [first, end] = twin.equal_range(resource->getResType());
        const auto found = std::find_if(first, end, [&](const auto& entry) { return entry.second == resource; });
        if (found != end) twin.erase(found);
    }
    cResList twinsOf(const cResType& type) const {
        cResList found;
        const auto [first, end] = twin.equal_range(&type);
        for (auto entry = first; entry != end; ++entry) found.push_back(entry->second);
        return found;
    }
    void expectTheSame() const {
        ASSERT_EQ(holdings.size(), twin.size());
        ASSERT_EQ(holdings.empty(), twin.empty());
        for (const cResTypeCompound* type : types) ASSERT_EQ(heldOf(holdings, *type), twinsOf(*type));
    }

    std::multimap<const cResType*, cResPtr> twin;
};

TEST_P(cHoldingsTwinTest, anyMixtureOfChangesGivesWhatAMultimapGives) {
    std::mt19937 numbers(GetParam());
    const std::size_t used = 1 + GetParam() % typeCount;  // few types and many
    const unsigned additions = 35 + GetParam() % 30;      // lists that stay short and lists that grow
    for (int i = 0; i < 1500; ++i) {
        const std::size_t of = numbers() % used;
        const auto what = numbers() % 100;
        const cResPtr& one = resources[of][numbers() % resources[of].size()];
        if (what < additions) {
            holdings.listOf(types[of]).add(one);
            twin.emplace(types[of], one);
        } else if (what < 80 || twinsOf(*types[of]).empty()) {
            holdings.listOf(types[of]).remove(*one);
            removeFromTwin(one);
        } else if (what < 98) {  // the one that came first, as mostly
            const cResPtr first = twinsOf(*types[of]).front();
            holdings.listOf(types[of]).remove(*first);
            removeFromTwin(first);
        } else if (what == 98) {
            holdings.listOf(types[of]).clear();
            twin.erase(types[of]);
        } else if (numbers() % 10 == 0) {
            holdings.clear();
            twin.clear();
        }
        ASSERT_NO_FATAL_FAILURE(expectTheSame());
    }

    holdings.clear();
    twin.clear();
    for (const cResList& ofType : resources)
        for (const cResPtr& one : ofType) EXPECT_EQ(one.holderCount(), 1U);
}

INSTANTIATE_TEST_SUITE_P(seeds, cHoldingsTwinTest, ::testing::Range(1U, 41U));

}  // namespace
