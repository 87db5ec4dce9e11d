#include "model/propertyTable.h"

#include "support/failureOf.h"
#include "support/testNetwork.h"

namespace {

/// A queue of soil, a Combi behind it and the link between them; a Consolidator without links.
struct cSmallModel {
    cTestNetwork network;
    cNodeQueue& queue = network.addQueue("Q1", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("C1");
    cLink& link = network.addLink("L1", queue, combi);
    cNodeConsolidator& consolidator = network.addConsolidator("K1");

    cNetworkElement& element(const std::string& name) { return *network.findElement(name); }
};

constexpr std::array everyTest{ePropertyTest::activity, ePropertyTest::consolidator, ePropertyTest::initialContent,
                               ePropertyTest::link};

struct cRow {
    ePropertyTest test;
    const char* keyword;
    const char* owner;
    std::string (*text)(const cSmallModel& model);
};

const cRow rows[]{
    {ePropertyTest::activity, "DURATION", "C1", [](const cSmallModel& m) { return m.combi.getDurationText(); }},
    {ePropertyTest::activity, "PRIORITY", "C1", [](const cSmallModel& m) { return m.combi.getPriorityText(); }},
    {ePropertyTest::activity, "SEMAPHORE", "C1", [](const cSmallModel& m) { return m.combi.getSemaphoreText(); }},
    {ePropertyTest::consolidator, "CONSOLIDATEWHEN", "K1",
     [](const cSmallModel& m) { return m.consolidator.getFiringConditionText(); }},
    {ePropertyTest::initialContent, "TBINITIALCONTENT", "Q1",
     [](const cSmallModel& m) { return m.queue.getInitialContentText(); }},
    {ePropertyTest::link, "ENOUGH", "L1", [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::enough); }},
    {ePropertyTest::link, "DRAWUNTIL", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::drawUntil); }},
    {ePropertyTest::link, "DRAWAMT", "L1", [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::drawAmt); }},
    {ePropertyTest::link, "DRAWORDER", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::drawOrder); }},
    {ePropertyTest::link, "DRAWWHERE", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::drawWhere); }},
    {ePropertyTest::link, "RELEASEAMT", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::releaseAmt); }},
    {ePropertyTest::link, "RELEASEUNTIL", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::releaseUntil); }},
    {ePropertyTest::link, "RELEASEORDER", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::releaseOrder); }},
    {ePropertyTest::link, "RELEASEWHERE", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::releaseWhere); }},
    {ePropertyTest::link, "STRENGTH", "L1",
     [](const cSmallModel& m) { return m.link.getRuleText(eLinkRule::strength); }},
};

std::ostream& operator<<(std::ostream& stream, const cRow& row) { return stream << row.keyword; }

class cPropertyRowTest : public ::testing::TestWithParam<cRow> {
protected:
    bool set(const std::string& owner, const std::string& value) {
        const cProperty* property = findProperty(GetParam().test, GetParam().keyword);
        return property->set(model.element(owner), property->keyword, value);
    }
    std::vector<std::string> allTexts() const {
        std::vector<std::string> texts;
        for (const cRow& row : rows) texts.push_back(row.text(model));
        return texts;
    }

    cSmallModel model;
};

TEST_P(cPropertyRowTest, isFoundByItsKeywordInItsOwnTestAlone) {
    for (const ePropertyTest test : everyTest) {
        const cProperty* found = findProperty(test, GetParam().keyword);

        ASSERT_EQ(found != nullptr, test == GetParam().test);
        if (found != nullptr) {
            EXPECT_EQ(found->keyword, GetParam().keyword);
        }
    }
}

TEST_P(cPropertyRowTest, setsItsOwnTextAndNoOther) {
    std::vector<std::string> expected = allTexts();
    for (std::size_t i = 0; i < expected.size(); ++i)
        if (rows[i].keyword == std::string(GetParam().keyword)) expected[i] = "7+1";

    EXPECT_TRUE(set(GetParam().owner, "7+1"));
    EXPECT_EQ(allTexts(), expected);
}

TEST_P(cPropertyRowTest, isRefusedByElementsOfOtherClasses) {
    const std::vector<std::string> before = allTexts();

    for (const std::string name : {"Q1", "C1", "L1", "K1"}) {
        const bool isActivity = name == "C1" || name == "K1";
        if (name == GetParam().owner || (isActivity && GetParam().keyword == std::string("DURATION"))) continue;
        EXPECT_FALSE(set(name, "7+1")) << name;
    }

    EXPECT_EQ(allTexts(), before);
}

TEST_P(cPropertyRowTest, keepsATextThatIsNoExpression) {
    const cException failure = failureOf([&] { set(GetParam().owner, "7)"); });

    EXPECT_EQ(failure.code, failureCode::expression);
    EXPECT_EQ(failure.expressionText, "7)");
    EXPECT_EQ(GetParam().text(model), "7)");
}

INSTANTIATE_TEST_SUITE_P(properties, cPropertyRowTest, ::testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.keyword); });

TEST(propertyTableTest, aKeywordIsMatchedToTheLetterAndAsAWhole) {
    for (const char* word : {"", "DURATIO", "DURATIONS", "duration", "Duration", "TBENOUGHCOND", "ENOUGH ", "POSNODE"})
        for (const ePropertyTest test : everyTest) EXPECT_EQ(findProperty(test, word), nullptr) << word;
}

TEST(propertyTableTest, everyKindOfActivityTakesADuration) {
    cSmallModel model;
    const cProperty* duration = findProperty(ePropertyTest::activity, "DURATION");

    EXPECT_TRUE(duration->set(model.consolidator, "DURATION", "7"));
    EXPECT_TRUE(duration->set(model.network.addNormal("N1"), "DURATION", "8"));

    EXPECT_EQ(model.consolidator.getDurationText(), "7");
    EXPECT_EQ(model.network.findElement<cNodeAct>("N1")->getDurationText(), "8");
}

TEST(propertyTableTest, anElementsExpressionIsTriedAndALinksIsNot) {
    cSmallModel model;
    const std::string broken = "1/0";
    const auto set = [&](ePropertyTest test, const char* keyword, const char* name) {
        const cProperty* property = findProperty(test, keyword);
        property->set(model.element(name), property->keyword, broken);
    };

    const cException failure = failureOf([&] { set(ePropertyTest::activity, "DURATION", "C1"); });
    set(ePropertyTest::link, "DRAWAMT", "L1");

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(model.combi.getDurationText(), broken);
    EXPECT_EQ(model.link.getRuleText(eLinkRule::drawAmt), broken);
}

}  // namespace
