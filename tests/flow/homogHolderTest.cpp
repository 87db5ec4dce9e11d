#include "flow/homogHolder.h"

#include "flow/resourceType.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

using cHolders = std::vector<cHomogHolder*>;

class cHomogHolderTest : public ::testing::Test {
protected:
    std::unique_ptr<cResTypeGen> soil = std::make_unique<cResTypeGen>("Soil");
    std::unique_ptr<cResTypeGen> rock = std::make_unique<cResTypeGen>("Rock");
    std::unique_ptr<cHomogHolder> holder = std::make_unique<cHomogHolder>();
};

TEST_F(cHomogHolderTest, aNewHolderHasNoType) { EXPECT_EQ(holder->getResType(), nullptr); }

TEST_F(cHomogHolderTest, aHolderIsNeverReserved) {
    const cTestNetwork network;

    EXPECT_FALSE(holder->isReserved());
    EXPECT_FALSE(cNodeQueue().isReserved());
    EXPECT_FALSE(cLink().isReserved());
}

TEST_F(cHomogHolderTest, takingATypeEntersTheHolderInItsList) {
    holder->setResType(soil.get());

    EXPECT_EQ(holder->getResType(), soil.get());
    EXPECT_EQ(soil->getHolders(), cHolders{holder.get()});
}

TEST_F(cHomogHolderTest, takingAnotherTypeLeavesTheEntryInTheFirst) {
    holder->setResType(soil.get());
    holder->setResType(rock.get());

    EXPECT_EQ(holder->getResType(), rock.get());
    EXPECT_EQ(soil->getHolders(), cHolders{holder.get()});
    EXPECT_EQ(rock->getHolders(), cHolders{holder.get()});
}

TEST_F(cHomogHolderTest, takingNoTypeEntersItNowhere) {
    holder->setResType(soil.get());
    holder->setResType(nullptr);

    EXPECT_EQ(holder->getResType(), nullptr);
    EXPECT_EQ(soil->getHolders(), cHolders{holder.get()});
}

TEST_F(cHomogHolderTest, aHolderThatIsDestroyedLeavesEveryList) {
    holder->setResType(soil.get());
    holder->setResType(rock.get());
    holder->setResType(soil.get());

    holder.reset();

    EXPECT_TRUE(soil->getHolders().empty());
    EXPECT_TRUE(rock->getHolders().empty());
}

TEST_F(cHomogHolderTest, aTypeThatIsDestroyedLeavesItsHolderWithoutOne) {
    holder->setResType(soil.get());
    holder->setResType(soil.get());

    soil.reset();

    EXPECT_EQ(holder->getResType(), nullptr);
    holder.reset();  // nothing is asked of the type any more
}

TEST_F(cHomogHolderTest, aTypeThatIsDestroyedLeavesAHolderTheTypeThatItTookSince) {
    holder->setResType(soil.get());
    holder->setResType(rock.get());

    soil.reset();

    EXPECT_EQ(holder->getResType(), rock.get());
}

TEST_F(cHomogHolderTest, aHolderThatHasMovedAsksNothingOfItsFormerType) {
    holder->setResType(soil.get());
    soil->moveHoldersTo(rock.get());
    soil.reset();

    holder.reset();

    EXPECT_TRUE(rock->getHolders().empty());
}

}  // namespace
