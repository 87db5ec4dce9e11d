#include "flow/resourceType.h"

#include "flow/homogHolder.h"
#include "flow/resource.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

using cHolders = std::vector<cHomogHolder*>;

/// A network, which instances need to be born in.
class cResourceTypeTest : public ::testing::Test {
protected:
    cTestNetwork network;
    cResTypeCompound truck{"Truck"};
};

TEST_F(cResourceTypeTest, everyTypeHasItsNameAndKindWord) {
    const cResTypeGen soil("Soil");
    const cResTypeChar crane("Crane");

    EXPECT_EQ(soil.getTypeName(), "Soil");
    EXPECT_EQ(soil.getTypeKind(), "GENTYPE");
    EXPECT_EQ(crane.getTypeName(), "Crane");
    EXPECT_EQ(crane.getTypeKind(), "CHARTYPE");
    EXPECT_EQ(truck.getTypeName(), "Truck");
    EXPECT_EQ(truck.getTypeKind(), "COMPTYPE");
}

TEST_F(cResourceTypeTest, aNewTypeHasNothing) {
    EXPECT_TRUE(truck.getHolders().empty());
    EXPECT_TRUE(truck.getSaveProps().empty());
    EXPECT_TRUE(truck.computedProps.empty());
    EXPECT_EQ(truck.instanceCount, 0);
}

TEST_F(cResourceTypeTest, savePropertiesKeepTheirOrderAndReplaceTheEarlierOnes) {
    truck.setSaveProps({"weight", "age"});
    truck.setSaveProps({"speed", "age", "speed"});

    EXPECT_EQ(truck.getSaveProps(), (std::vector<std::string>{"speed", "age", "speed"}));
}

TEST_F(cResourceTypeTest, newSavePropertiesHoldForInstancesMadeFromThenOn) {
    truck.setSaveProps({"age"});
    const cResCompound old(&truck);

    truck.setSaveProps({"weight"});
    const cResCompound young(&truck);

    EXPECT_TRUE(old.props.contains("age"));
    EXPECT_FALSE(old.props.contains("weight"));
    EXPECT_TRUE(young.props.contains("weight"));
}

// ---- who has taken the type

/// Two holders; one stands in the list of trucks twice.
class cHoldersTest : public cResourceTypeTest {
protected:
    void SetUp() override {
        twice.setResType(&truck);
        once.setResType(&truck);
        twice.setResType(&truck);
    }

    cResTypeCompound lorry{"Truck"};
    cHomogHolder once;
    cHomogHolder twice;
};

TEST_F(cHoldersTest, aHolderStandsInTheListOnceForEachTimeItTookTheType) {
    EXPECT_EQ(truck.getHolders(), (cHolders{&twice, &once, &twice}));
}

TEST_F(cHoldersTest, aHolderMovesAsOftenAsItStandsInTheList) {
    truck.moveHoldersTo(&lorry);

    EXPECT_EQ(lorry.getHolders(), (cHolders{&twice, &once, &twice}));
    EXPECT_TRUE(truck.getHolders().empty());
    EXPECT_EQ(once.getResType(), &lorry);
    EXPECT_EQ(twice.getResType(), &lorry);
}

TEST_F(cHoldersTest, aTypeThatReplacesItselfKeepsItsHolders) {
    truck.moveHoldersTo(&truck);

    EXPECT_EQ(truck.getHolders(), (cHolders{&twice, &once, &twice}));
    EXPECT_EQ(once.getResType(), &truck);
}

TEST_F(cHoldersTest, holdersThatMoveToNothingHaveNoType) {
    truck.moveHoldersTo(nullptr);

    EXPECT_EQ(once.getResType(), nullptr);
    EXPECT_TRUE(truck.getHolders().empty());
}

TEST_F(cHoldersTest, aHolderThatTookAnotherTypeSinceIsMovedAllTheSame) {
    cResTypeGen soil("Soil");
    once.setResType(&soil);

    truck.moveHoldersTo(&lorry);

    EXPECT_EQ(once.getResType(), &lorry);
    EXPECT_EQ(soil.getHolders(), cHolders{&once});
}

TEST_F(cHoldersTest, aHolderThatIsAddedOrRemovedByHandCounts) {
    truck.addHolder(&once);
    EXPECT_EQ(truck.getHolders(), (cHolders{&twice, &once, &twice, &once}));

    truck.removeHolder(&once);

    EXPECT_EQ(truck.getHolders(), (cHolders{&twice, &twice}));
}

TEST_F(cResourceTypeTest, aKindWordMakesATypeOfItsClass) {
    const auto soil = makeResType("Soil", "GENTYPE");
    EXPECT_NE(dynamic_cast<const cResTypeGen*>(soil.get()), nullptr);
    EXPECT_EQ(soil->getTypeName(), "Soil");
    EXPECT_NE(dynamic_cast<const cResTypeCompound*>(makeResType("Frame", "COMPTYPE").get()), nullptr);
    for (const char* kind : {"CHARTYPE", "no kind", ""}) {
        const auto crane = makeResType("Crane", kind);
        EXPECT_TRUE(isCharacterized(crane.get())) << kind;
        EXPECT_EQ(crane->getTypeKind(), "CHARTYPE") << kind;
    }
}

TEST_F(cResourceTypeTest, replacingATypeOfTheModelMovesItsQueuesAndLinks) {
    cResType& soil = network.addGenericType("Soil");
    cNodeQueue& queue = network.addQueue("Pile", soil);
    cNodeActCombi& combi = network.addCombi("Dig");
    cLink& link = network.addLink("L", queue, combi);
    auto replacement = std::make_unique<cResTypeGen>("Soil");

    soil.moveHoldersTo(replacement.get());
    network.resourceTypes["Soil"] = std::move(replacement);

    EXPECT_EQ(queue.getResType(), network.findResourceType("Soil"));
    EXPECT_EQ(link.getResType(), network.findResourceType("Soil"));
}

}  // namespace
