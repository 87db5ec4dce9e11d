// The statements that reach into elements: SETATTRIBUTE and INIT.

#include "support/soilScene.h"

#include <gtest/gtest.h>

namespace {

class cStatementInitTest : public cSoilScene {
protected:
    cResChar& resourceAt(std::size_t index) { return dynamic_cast<cResChar&>(*yard.getContents().at(index)); }
};

TEST_F(cStatementInitTest, setAttributeSetsTheDurationOfAnActivity) {
    execute("SETATTRIBUTE Haul Duration 2+Rnd() ignored too");

    EXPECT_EQ(haul.getDurationText(), "2+Rnd()");
    EXPECT_EQ(state(), streamState::afterOneDraw);  // the trial
}

TEST_F(cStatementInitTest, setAttributeSetsTheInitialContentOfAQueue) {
    execute("SETATTRIBUTE Soil1 InitialContent 3*4");

    EXPECT_EQ(soil1.getInitialContentText(), "3*4");
    EXPECT_EQ(soil1.evaluateInitialContent(), 12.0);
}

TEST_F(cStatementInitTest, setAttributeKeepsTheQuotesOfAnExpression) {
    execute("SETATTRIBUTE Soil1 InitialContent '2 + 3'");

    EXPECT_EQ(soil1.getInitialContentText(), "'2 + 3'");
    EXPECT_EQ(soil1.evaluateInitialContent(), 3.0);  // "'2 " is no number, and " 3'" is a 3 with rubbish behind it
}

TEST_F(cStatementInitTest, aFailingTrialOfSetAttributePasses) {
    const cException failure = failureOfStatement("SETATTRIBUTE Haul Duration 1/0");

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
}

class cQuietSetAttributeTest : public cStatementInitTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cQuietSetAttributeTest, doesNothing) {
    execute(GetParam());

    EXPECT_EQ(haul.getDurationText(), "0");
    EXPECT_EQ(soil1.getInitialContentText(), "0");
    EXPECT_EQ(state(), streamState::untouched);
}

INSTANTIATE_TEST_SUITE_P(ofOtherElementsAndAttributes, cQuietSetAttributeTest,
                         ::testing::Values("SETATTRIBUTE Nope Duration Rnd()", "SETATTRIBUTE Haul InitialContent Rnd()",
                                           "SETATTRIBUTE Soil1 Duration Rnd()", "SETATTRIBUTE Haul duration Rnd()",
                                           "SETATTRIBUTE Haul Priority 1/0", "SETATTRIBUTE Draw1 Duration 1/0"));

TEST_F(cStatementInitTest, initOfAGenericQueueAddsOneAmount) {
    execute("INIT Soil1 3");

    ASSERT_EQ(soil1.getContents().size(), 1U);
    EXPECT_EQ(soil1.getContents().front()->quantity(), 3.0);
    EXPECT_EQ(soil1.getAttribute("TotCount"), 3.0);
}

TEST_F(cStatementInitTest, initOfAGenericQueueTakesAnExpression) {
    execute("INIT Soil1 1/4+Rnd() ignored");

    EXPECT_EQ(soil1.getCurCount(), 1.143356);
    EXPECT_EQ(state(), streamState::afterTwoDraws);
}

struct cCount {
    const char* text;
    std::size_t made;
};

void PrintTo(const cCount& row, std::ostream* stream) { *stream << row.text; }

class cInitCompoundTest : public cStatementInitTest, public ::testing::WithParamInterface<cCount> {};

TEST_P(cInitCompoundTest, makesResources) {
    execute(GetParam().text);

    EXPECT_EQ(yard.getContents().size(), GetParam().made);
    EXPECT_EQ(truck.instanceCount, static_cast<std::int32_t>(GetParam().made));
}

// The count is a plain number, not an expression, and a started one counts whole.
INSTANTIATE_TEST_SUITE_P(counts, cInitCompoundTest,
                         ::testing::Values(cCount{"INIT Yard 3", 3}, cCount{"INIT Yard 2.5", 3},
                                           cCount{"INIT Yard 0", 0}, cCount{"INIT Yard 0-2", 0},
                                           cCount{"INIT Yard -2", 0}, cCount{"INIT Yard 1+1", 1},
                                           cCount{"INIT Yard 2*9", 2}, cCount{"INIT Yard abc", 0},
                                           cCount{"INIT Yard nan", 0}, cCount{"INIT Yard 3.000000", 3},
                                           cCount{"INIT Yard 2 ignored", 2}));

TEST_F(cStatementInitTest, initNumbersTheResourcesAndNamesThemAfterThat) {
    execute("INIT Yard 2");

    EXPECT_EQ(resourceAt(0).getResNum(), 1);
    EXPECT_EQ(resourceAt(1).getResNum(), 2);
    EXPECT_EQ(resourceAt(0).getInstanceName(), "Truck_1");
    EXPECT_EQ(resourceAt(1).getInstanceName(), "Truck_2");
}

TEST_F(cStatementInitTest, entryCodeRunsForEachResourceOfAnInit) {
    network.execute("ONENTRY Yard PRINT log \"%d\" Yard.CurCount;");

    execute("INIT Yard 3");

    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "1\n2\n3\n");
}

TEST_F(cStatementInitTest, anInitThatCanNotEndLetsTheHostStopTheRun) {
    for (int i = 0; i < 4000; ++i) network.breathe();  // so that the host's turn isn't far
    network.stopAtHostEvent = network.hostEvents + 1;

    EXPECT_EQ(failureOfStatement("INIT Yard inf").code, 5);
}

struct cRefusedInit {
    const char* text;
    const char* message;
};

void PrintTo(const cRefusedInit& row, std::ostream* stream) { *stream << row.text; }

class cInitFailureTest : public cStatementInitTest, public ::testing::WithParamInterface<cRefusedInit> {};

TEST_P(cInitFailureTest, names) {
    network.addQueue("Plain", soil).setResType(nullptr);
    cResTypeChar plainType("Car");
    cNodeQueue& cars = network.addQueue("Cars", soil);
    cars.setResType(&plainType);

    const cException failure = failureOfStatement(GetParam().text);

    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.message, GetParam().message + std::string(GetParam().text));
    cars.setResType(&soil);
}

INSTANTIATE_TEST_SUITE_P(queues, cInitFailureTest,
                         ::testing::Values(cRefusedInit{"INIT Nope 1", "Incorrect queue name in statement:\n"},
                                           cRefusedInit{"INIT Haul 1", "Incorrect queue name in statement:\n"},
                                           cRefusedInit{"INIT Draw1 1", "Incorrect queue name in statement:\n"}));

// A queue without a type, and one of plain characterized resources.
INSTANTIATE_TEST_SUITE_P(resources, cInitFailureTest,
                         ::testing::Values(cRefusedInit{"INIT Plain 1", "Incorrect resource name in statement:\n"},
                                           cRefusedInit{"INIT Cars 1", "Incorrect resource name in statement:\n"},
                                           cRefusedInit{"INIT Cars 1 2", "Incorrect resource name in statement:\n"}));

TEST_F(cStatementInitTest, entryCodeThatFillsItsOwnQueueFails) {
    network.execute("ONENTRY Soil1 INIT Soil1 1;");

    EXPECT_EQ(failureOfStatement("INIT Soil1 1").code, 1);
}

}  // namespace
