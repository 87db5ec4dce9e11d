#include "support/recordingReceiver.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace {

// ---- the tables

/// A node that only has a kind word, and a type.
class cKindNode : public cNode, public cHomogHolder {
public:
    explicit cKindNode(std::string word) : kindWord(std::move(word)) {}

    std::string getKind() const override { return kindWord; }
    void resetElement() override {}

private:
    std::string kindWord;
};

constexpr std::array rowNames{"QUEUE", "COMBI",    "NORMAL",    "CONSOLIDATOR",
                              "FORK",  "DYNAFORK", "ASSEMBLER", "DISASSEMBLER"};

/// What a pair makes: kind, whose type the link takes, "=" where the nodes' types must be equal. One column for each
/// class of successor: Combi; queue; Normal, Consolidator; Fork, Dynafork; Assembler; Disassembler.
using cExpectedRow = std::array<std::string_view, 6>;
using cExpectedTable = std::array<cExpectedRow, 5>;

constexpr cExpectedTable successorLast{{
    {"draw pred", "refused", "refused", "refused", "refused", "refused"},                             // queue
    {"refused", "release succ", "release keep", "release succ", "release keep", "release succ"},      // activities
    {"refused", "flow pred =", "flow pred", "flow pred =", "flow pred", "flow pred ="},               // forks
    {"refused", "release pred =", "release pred", "release pred =", "release pred", "release pred"},  // Assembler
    {"refused", "release succ", "release keep", "release succ", "release keep", "release pred"},      // Disassembler
}};

constexpr cExpectedTable predecessorLast{{
    {"draw pred", "refused", "refused", "refused", "refused", "refused"},                         // queue
    {"refused", "release succ", "release keep", "release succ", "release keep", "release succ"},  // activities
    {"refused", "flow succ =", "flow pred", "flow succ =", "flow pred", "flow succ ="},           // forks
    {"refused", "flow succ =", "flow pred", "flow succ =", "flow pred", "flow succ"},             // Assembler
    {"refused", "release succ", "release keep", "release succ", "release pred", "release succ"},  // Disassembler
}};

constexpr std::array<std::size_t, 8> rowOf{0, 1, 1, 1, 2, 2, 3, 4};
constexpr std::array<std::size_t, 8> columnOf{1, 0, 2, 2, 3, 3, 4, 5};

enum class eLast { predecessor, successor };

struct cPair {
    std::size_t from;
    std::size_t to;
    eLast last;
    bool sameType;

    std::string_view expected() const {
        return (last == eLast::successor ? successorLast : predecessorLast)[rowOf[from]][columnOf[to]];
    }
};

void PrintTo(const cPair& pair, std::ostream* out) {
    *out << rowNames[pair.from] << " to " << rowNames[pair.to]
         << (pair.last == eLast::successor ? ", successor" : ", predecessor") << " last, "
         << (pair.sameType ? "equal" : "different") << " types: " << pair.expected();
}

/// Every pair of node kinds, both ends last, with equal and with different types of the nodes.
std::vector<cPair> allPairs() {
    std::vector<cPair> pairs;
    for (std::size_t from = 0; from < rowNames.size(); ++from)
        for (std::size_t to = 0; to < rowNames.size(); ++to)
            for (const eLast last : {eLast::predecessor, eLast::successor})
                for (const bool sameType : {true, false}) pairs.push_back({from, to, last, sameType});
    return pairs;
}

/// Nodes of the pair's kinds, each with a type, and a link with a type of its own. Queues and Combis are the real ones.
class cConnectionTableTest : public ::testing::TestWithParam<cPair> {
protected:
    void SetUp() override {
        if (auto* holder = dynamic_cast<cHomogHolder*>(from.get())) holder->setResType(&typeOfPred);
        if (auto* holder = dynamic_cast<cHomogHolder*>(to.get())) holder->setResType(typeOfSucc);
        link.setResType(&typeOfLink);
    }

    static std::unique_ptr<cNode> makeNode(std::size_t kind) {
        if (kind == 0) return std::make_unique<cNodeQueue>();
        if (kind == 1) return std::make_unique<cNodeActCombi>();
        return std::make_unique<cKindNode>(rowNames.at(kind));
    }
    eLinkKind connect() {
        if (GetParam().last == eLast::successor) {
            link.setPredNode(from.get());
            return link.setSuccNode(to.get());
        }
        link.setSuccNode(to.get());
        return link.setPredNode(from.get());
    }
    bool expects(std::string_view word) const { return GetParam().expected().find(word) != std::string_view::npos; }
    /// Whether the pair is allowed as far as the types go.
    bool mismatches() const { return expects("=") && !GetParam().sameType; }
    eLinkKind expectedKind() const {
        if (expects("refused")) return kindRefused;
        if (mismatches()) return kindTypeMismatch;
        return expects("draw") ? kindDraw : expects("release") ? kindRelease : kindFlow;
    }
    const cResType* expectedType() const {
        if (expects("refused") || mismatches() || expects("keep")) return &typeOfLink;
        return expects("pred") ? &typeOfPred : typeOfSucc;
    }

    cTestNetwork network;
    cResTypeGen typeOfPred{"Pred"};
    cResTypeGen otherType{"Succ"};
    cResTypeGen typeOfLink{"Link"};
    cResType* typeOfSucc = GetParam().sameType ? &typeOfPred : &otherType;
    std::unique_ptr<cNode> from = makeNode(GetParam().from);
    std::unique_ptr<cNode> to = makeNode(GetParam().to);
    cLink link{"L"};
};

TEST_P(cConnectionTableTest, decidesKindAndType) {
    const eLinkKind kind = connect();

    EXPECT_EQ(kind, expectedKind());
    EXPECT_EQ(link.getResType(), expectedType());
}

TEST_P(cConnectionTableTest, storesTheKindUnlessThePairIsRefused) {
    connect();

    EXPECT_EQ(link.getLinkKind(), expects("refused") ? kindIncomplete : expectedKind());
}

TEST_P(cConnectionTableTest, attachesTheLastEndOnlyWhereThePairIsAllowed) {
    const bool attached = !expects("refused") && !mismatches();
    const bool successorLastAsked = GetParam().last == eLast::successor;

    connect();

    EXPECT_EQ(link.getPredNode(), attached || successorLastAsked ? from.get() : nullptr);
    EXPECT_EQ(link.getSuccNode(), attached || !successorLastAsked ? to.get() : nullptr);
    EXPECT_EQ(from->getOutLinks().contains("L"), attached || successorLastAsked);
    EXPECT_EQ(to->getInLinks().contains("L"), attached || !successorLastAsked);
}

INSTANTIATE_TEST_SUITE_P(pairs, cConnectionTableTest, ::testing::ValuesIn(allPairs()));

// ---- ends

/// Two queues of soil, one of rock, two Combis, two nodes that activities may release to, and a Fork of soil.
class cLinkConnectionTest : public ::testing::Test {
protected:
    void SetUp() override { fork.setResType(&soil); }

    cTestNetwork network;
    cResType& soil = network.addGenericType("Soil");
    cResType& rock = network.addGenericType("Rock");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeQueue& heap = network.addQueue("Heap", soil);
    cNodeQueue& quarry = network.addQueue("Quarry", rock);
    cNodeActCombi& dig = network.addCombi("Dig");
    cNodeActCombi& load = network.addCombi("Load");
    std::vector<std::string> log;
    cRecordingReceiver haul{"Haul", log};
    cRecordingReceiver dump{"Dump", log};
    cKindNode fork{"FORK"};
    cLink link{"L"};
};

TEST_F(cLinkConnectionTest, theFirstEndIsTakenAsItIs) {
    EXPECT_EQ(link.setSuccNode(&pile), kindIncomplete);

    EXPECT_EQ(link.getSuccNode(), &pile);
    EXPECT_EQ(link.getLinkKind(), kindIncomplete);
    EXPECT_EQ(link.getResType(), nullptr);
    EXPECT_EQ(pile.getInLinks().at("L"), &link);
}

TEST_F(cLinkConnectionTest, aFirstEndThatMovesLeavesItsOldNode) {
    link.setPredNode(&pile);

    EXPECT_EQ(link.setPredNode(&heap), kindIncomplete);

    EXPECT_TRUE(pile.getOutLinks().empty());
    EXPECT_EQ(heap.getOutLinks().at("L"), &link);
}

TEST_F(cLinkConnectionTest, anEndThatIsTakenOffLeavesALinkThatIsIncomplete) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);

    EXPECT_EQ(link.setSuccNode(nullptr), kindIncomplete);

    EXPECT_EQ(link.getSuccNode(), nullptr);
    EXPECT_EQ(link.getPredNode(), &pile);
    EXPECT_TRUE(dig.getInLinks().empty());
    EXPECT_EQ(link.setPredNode(nullptr), kindIncomplete);
    EXPECT_TRUE(pile.getOutLinks().empty());
}

TEST_F(cLinkConnectionTest, takingOffAnEndThatIsNotThereChangesNothing) {
    EXPECT_EQ(link.setSuccNode(nullptr), kindIncomplete);
    EXPECT_EQ(link.setPredNode(nullptr), kindIncomplete);
}

TEST_F(cLinkConnectionTest, anEndThatMovesLeavesItsOldNode) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);

    EXPECT_EQ(link.setSuccNode(&load), kindDraw);
    EXPECT_EQ(link.setPredNode(&heap), kindDraw);

    EXPECT_TRUE(dig.getInLinks().empty());
    EXPECT_TRUE(pile.getOutLinks().empty());
    EXPECT_EQ(load.getInLinks().at("L"), &link);
    EXPECT_EQ(heap.getOutLinks().at("L"), &link);
}

TEST_F(cLinkConnectionTest, aRefusedSuccessorLeavesAllAsItWas) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    link.setRuleText(eLinkRule::enough, "7");

    EXPECT_EQ(link.setSuccNode(&heap), kindRefused);
    EXPECT_EQ(link.setSuccNode(&haul), kindRefused);

    EXPECT_EQ(link.getSuccNode(), &dig);
    EXPECT_EQ(link.getLinkKind(), kindDraw);
    EXPECT_EQ(link.getResType(), &soil);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "7");
    EXPECT_EQ(dig.getInLinks().at("L"), &link);
    EXPECT_TRUE(heap.getInLinks().empty());
    EXPECT_TRUE(haul.getInLinks().empty());
}

TEST_F(cLinkConnectionTest, aRefusedPredecessorLeavesAllAsItWas) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    link.setRuleText(eLinkRule::enough, "7");

    for (cNode* other : std::initializer_list<cNode*>{&load, &haul, &fork})
        EXPECT_EQ(link.setPredNode(other), kindRefused);

    EXPECT_EQ(link.getPredNode(), &pile);
    EXPECT_EQ(link.getLinkKind(), kindDraw);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "7");
    EXPECT_EQ(pile.getOutLinks().at("L"), &link);
    EXPECT_TRUE(load.getOutLinks().empty());
}

TEST_F(cLinkConnectionTest, aMismatchIsStoredAndTheOldEndStays) {
    link.setPredNode(&fork);
    link.setSuccNode(&pile);
    ASSERT_EQ(link.getLinkKind(), kindFlow);

    EXPECT_EQ(link.setSuccNode(&quarry), kindTypeMismatch);

    EXPECT_EQ(link.getLinkKind(), kindTypeMismatch);
    EXPECT_EQ(link.getSuccNode(), &pile);
    EXPECT_EQ(pile.getInLinks().at("L"), &link);
    EXPECT_TRUE(quarry.getInLinks().empty());
    EXPECT_EQ(link.getResType(), &soil);
}

TEST_F(cLinkConnectionTest, aMismatchOfTheFirstPairLeavesThatEndUnattached) {
    link.setPredNode(&fork);

    EXPECT_EQ(link.setSuccNode(&quarry), kindTypeMismatch);

    EXPECT_EQ(link.getSuccNode(), nullptr);
    EXPECT_EQ(link.getPredNode(), &fork);
    EXPECT_EQ(link.getLinkKind(), kindTypeMismatch);
}

TEST_F(cLinkConnectionTest, aMismatchStaysUntilTheNextConnection) {
    link.setPredNode(&fork);
    link.setSuccNode(&quarry);

    EXPECT_EQ(link.setSuccNode(&dig), kindRefused);
    EXPECT_EQ(link.getLinkKind(), kindTypeMismatch);

    EXPECT_EQ(link.setSuccNode(&pile), kindFlow);
    EXPECT_EQ(link.getLinkKind(), kindFlow);
}

TEST_F(cLinkConnectionTest, aNodeOfAnUnknownKindLeavesAllAsItWas) {
    cKindNode stranger("CRANE");
    link.setPredNode(&pile);
    link.setSuccNode(&dig);

    EXPECT_EQ(link.setPredNode(&stranger), kindDraw);
    EXPECT_EQ(link.setSuccNode(&stranger), kindDraw);

    EXPECT_EQ(link.getPredNode(), &pile);
    EXPECT_EQ(link.getSuccNode(), &dig);
    EXPECT_TRUE(stranger.getInLinks().empty());
    EXPECT_TRUE(stranger.getOutLinks().empty());
}

TEST_F(cLinkConnectionTest, aPredecessorOfAnUnknownKindGivesThePresentKind) {
    cKindNode stranger("CRANE");
    link.setPredNode(&stranger);

    EXPECT_EQ(link.setSuccNode(&dig), kindIncomplete);

    EXPECT_EQ(link.getSuccNode(), nullptr);
}

// ---- texts and types

TEST_F(cLinkConnectionTest, aConnectionRenewsTheTextsOfItsKind) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "PredNode.CurCount");
    link.setRuleText(eLinkRule::enough, "7");

    link.setSuccNode(&load);

    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "PredNode.CurCount");
}

TEST_F(cLinkConnectionTest, theDrawConditionReads1OnlyOnALinkThatNeverDrew) {
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "1");
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    link.setSuccNode(nullptr);

    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "PredNode.CurCount");
}

TEST_F(cLinkConnectionTest, aDrawLinkTakesTheTypeOfItsQueue) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    EXPECT_EQ(link.getResType(), &soil);

    link.setPredNode(&quarry);

    EXPECT_EQ(link.getResType(), &rock);
}

TEST_F(cLinkConnectionTest, aLinkBetweenActivitiesKeepsItsType) {
    link.setResType(&rock);
    link.setPredNode(&dig);

    EXPECT_EQ(link.setSuccNode(&haul), kindRelease);

    EXPECT_EQ(link.getResType(), &rock);
}

TEST_F(cLinkConnectionTest, aLinkBetweenActivitiesDoesNotWaitForAType) {
    link.setPredNode(&dig);

    EXPECT_EQ(link.setSuccNode(&haul), kindRelease);

    EXPECT_EQ(link.getResType(), nullptr);
    EXPECT_EQ(network.hostEvents, 0);
}

TEST_F(cLinkConnectionTest, aConnectionEntersTheLinkInTheListOfItsType) {
    const std::size_t holders = soil.getHolders().size();
    link.setPredNode(&pile);
    link.setSuccNode(&dig);

    EXPECT_EQ(soil.getHolders().size(), holders + 1);
    EXPECT_EQ(soil.getHolders().back(), &link);
}

TEST_F(cLinkConnectionTest, aConnectionAnewEntersItOnceMore) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);
    const std::size_t holders = soil.getHolders().size();

    link.setSuccNode(&load);

    EXPECT_EQ(soil.getHolders().size(), holders + 1);
}

TEST_F(cLinkConnectionTest, aPredecessorThatTookAnotherTypeLeavesTheLinkItsOwn) {
    link.setPredNode(&pile);
    link.setSuccNode(&dig);

    pile.setResType(&rock);

    EXPECT_EQ(link.getResType(), &soil);
}

}  // namespace
