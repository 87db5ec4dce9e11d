#include "batch/report.h"

#include "kernel/resultText.h"
#include "model/modelReader.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// Two trucks in a queue, each loaded once for 5, and then gone.
class cReportTest : public ::testing::Test {
protected:
    cReportTest() {
        trucks.setInitialContentText("2");
        load.setDurationText("5");
        network.addLink("L", trucks, load);
    }

    cTestNetwork network;
    cNodeQueue& trucks = network.addQueue("Trucks", network.addGenericType("Truck"));
    cNodeActCombi& load = network.addCombi("Load");
};

}  // namespace

TEST(alignedTableTest, textsStandLeftAndFiguresRightUnderTheirHeadings) {
    const cResultTable table{{"Queue\nName", "Total\nCount", "Wait"},
                             {{"Q", "1.00", "0.25"}, {"LongerName", "12345.00", "nan"}}};

    EXPECT_EQ(alignedTable(table, 1),
              "Queue          Total  Wait\n"
              "Name           Count\n"
              "Q               1.00  0.25\n"
              "LongerName  12345.00   nan\n");
}

TEST(alignedTableTest, widthIsCountedInCharactersNotInBytes) {
    const cResultTable table{{"Type", "N"}, {{"Größe", "1"}, {"Sand", "2"}}};

    EXPECT_EQ(alignedTable(table, 1),
              "Type   N\n"
              "Größe  1\n"
              "Sand   2\n");
}

TEST(alignedTableTest, noLineEndsInABlank) {
    const cResultTable table{{"Name", "Type"}, {{"Q", ""}, {"R", "Soil"}}};

    EXPECT_EQ(alignedTable(table, 2), "Name  Type\nQ\nR     Soil\n");
}

TEST(alignedTableTest, tableWithoutRowsIsEmpty) { EXPECT_EQ(alignedTable({{"Queue\nName"}, {}}, 1), ""); }

TEST_F(cReportTest, holdsLabelTablesAndPrints) {
    network.run("ADDTORESULTS Loads Load.TotInst;\nPRINT log \"ready\";\nPRINT list \"first\";\n");

    EXPECT_EQ(reportText(network, false),
              "Simulation has ended. \n"
              "SimTime = 5\n"
              "Loads : 2\n"
              "\n"
              "Queue   Resource  Current  Total  Average  Average  Minimum  Maximum\n"
              "Name    Type        Count  Count     Wait  Content  Content  Content\n"
              "Trucks  Truck        0.00   2.00     0.00     0.00     0.00     2.00\n"
              "\n"
              "Activity      Total    Current   Average  Std.Dev.   Minimum   Maximum   Average  Std. Dev.   Minimum"
              "  Maximumn\n"
              "Name      Instances  Instances  Duration  Duration  Duration  Duration  Interval   Interval  Interval"
              "  Interval\n"
              "Load              2          0         5         0         5         5       nan        nan         0"
              "         0\n"
              "\n"
              "list\n"
              "----\n"
              "first\n"
              "\n"
              "log\n"
              "---\n"
              "ready\n");
}

TEST_F(cReportTest, partialResultsAreMarked) {
    network.run("MULTISIM 3;\n");

    const std::string report = reportText(network, true);

    EXPECT_TRUE(
        report.starts_with("Partial results: 3 replications\n"
                           "The following results are the averages of multiple simulation runs. \n"
                           "Average SimTime = 5\n"))
        << report;
}

TEST_F(cReportTest, withoutAReplicationThereAreNoFigures) {
    network.execute("PRINT log \"compiled\";\n");

    EXPECT_EQ(reportText(network, true), "No results: no replication came to its end.\n\nlog\n---\ncompiled\n");
}

TEST(reportWithoutElementsTest, emptyTablesAreLeftOut) {
    cTestNetwork network;
    network.run();

    EXPECT_EQ(reportText(network, false), "Simulation has ended. \nSimTime = 0\n");
}

TEST(partialNoteTest, countsReplications) {
    EXPECT_EQ(partialNote(0), "No results: no replication came to its end.");
    EXPECT_EQ(partialNote(1), "Partial results: 1 replication");
    EXPECT_EQ(partialNote(12), "Partial results: 12 replications");
}

TEST(warningLinesTest, nameTheFileAndTheLineAndComeBehindAMissingModel) {
    cModelReading reading;
    reading.warnings = {{3, "first"}, {12, "second"}};
    EXPECT_EQ(warningLines("a/b.tbsmx", reading),
              "a/b.tbsmx: holds no model: there is no element and no code\na/b.tbsmx:3: first\na/b.tbsmx:12: second\n");

    reading.isRunnable = true;
    reading.warnings.clear();
    EXPECT_EQ(warningLines("a/b.tbsmx", reading), "");
}

struct cFailureCase {
    cException failure;
    const char* text;
};

void PrintTo(const cFailureCase& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.text); }

class cFailureTextTest : public ::testing::TestWithParam<cFailureCase> {};

TEST_P(cFailureTextTest, hasALineForEachThingKnown) { EXPECT_EQ(failureText(GetParam().failure), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    failures, cFailureTextTest,
    ::testing::Values(
        cFailureCase{{4, "Simulation failed to start.\nNo link.", "", ""}, "Simulation failed to start.\nNo link.\n"},
        cFailureCase{{0, "Invalid keyword X", "In queue Soil", ""}, "Invalid keyword X\nIn queue Soil\n"},
        cFailureCase{{2, "Division by 0.", "In queue Soil", "7%0"}, "Division by 0.\nIn queue Soil\nExpression: 7%0\n"},
        cFailureCase{{2, "", "", "(1"}, "The expression can't be evaluated.\nExpression: (1\n"},
        cFailureCase{{3, "", "", ""}, "An element was asked for an attribute, and has none.\n"},
        cFailureCase{{5, "Simulation was stopped by user.\n", "", ""}, "Simulation was stopped by user.\n"}));
