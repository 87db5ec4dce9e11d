#include "kernel/runStatistics.h"

#include "language/rounding.h"
#include "support/failureOf.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace {

using cTexts = std::vector<std::string>;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// A model without elements; its results are SimTime and what a test adds to them.
class cRunStatisticsTest : public ::testing::Test {
protected:
    /// Takes in a replication that ended at `time`.
    void gatherAt(double time) {
        network.simTime = time;
        statistics.gatherReplication();
    }
    std::string fileContent() const { return contentOf(statistics.getTemporaryPath()); }

    cTestNetwork network;
    cRunStatistics& statistics = *network.runStatistics;
};

// ---- columns

TEST_F(cRunStatisticsTest, linesGoToTheSystemsTemporaryDirectoryByDefault) {
    const cRunStatistics untouched(network);

    EXPECT_EQ(untouched.getTemporaryPath(), std::filesystem::temp_directory_path() / "my_temp_file.txt");
}

TEST_F(cRunStatisticsTest, aModelWithoutElementsHasOneColumn) {
    statistics.prepare();

    EXPECT_EQ(statistics.columnNames(), cTexts{"SimTime"});
    EXPECT_EQ(statistics.getMeans(), std::vector<double>{0.0});
    EXPECT_EQ(fileContent(), "Num,SimTime");
}

TEST_F(cRunStatisticsTest, columnsAreTimeThenEntriesByNameThenElementsByName) {
    network.execute("ADDTORESULTS b 1;\nADDTORESULTS a 1;\n");
    network.addQueue("Q", network.addGenericType("Soil"));
    network.addCombi("C");
    cLink link("L");

    statistics.prepare();

    const cTexts expected{"SimTime",    "a",          "b",         "C.TotInst", "C.AveDur",  "C.SDDur",
                          "C.MinDur",   "C.MaxDur",   "C.AveInt",  "C.SDInt",   "C.MinInt",  "C.MaxInt",
                          "Q.CurCount", "Q.TotCount", "Q.AveWait", "Q.AveCont", "Q.MinCont", "Q.MaxCont"};
    EXPECT_EQ(statistics.columnNames(), expected);
    EXPECT_EQ(statistics.getMeans(), std::vector<double>(18, 0.0));
    EXPECT_EQ(statistics.getLabels(), (cTexts{"a", "b"}));
}

TEST_F(cRunStatisticsTest, theHeaderHasNoLineEndAndEscapesNothing) {
    network.resultExpressions["a,b"] = "1";
    network.resultExpressions[".TotInst"] = "1";

    statistics.prepare();

    EXPECT_EQ(fileContent(), "Num,SimTime,.TotInst,a,b");
}

TEST_F(cRunStatisticsTest, entriesWithoutAnElementHaveNoColumns) {
    network.elements["Ghost"];

    statistics.prepare();

    EXPECT_EQ(statistics.columnNames(), cTexts{"SimTime"});
}

TEST_F(cRunStatisticsTest, theColumnsAreSizedAnewWithEachPreparation) {
    network.execute("ADDTORESULTS a 1;\nADDTORESULTS b 1;\n");
    statistics.prepare();
    ASSERT_EQ(statistics.getMeans().size(), 3U);
    network.resultExpressions.erase("a");

    statistics.prepare();

    EXPECT_EQ(statistics.getMeans().size(), 2U);
    EXPECT_EQ(fileContent(), "Num,SimTime,b");
}

TEST_F(cRunStatisticsTest, preparationZeroesTheMeans) {
    gatherAt(5.0);

    statistics.prepare();

    EXPECT_EQ(statistics.getMeans(), std::vector<double>{0.0});
}

// ---- gathering

TEST_F(cRunStatisticsTest, theMeanOfOneReplicationIsItsValue) {
    gatherAt(0.1);

    EXPECT_EQ(statistics.getMeans(), std::vector<double>{0.1});
    EXPECT_EQ(statistics.getReplicationCount(), 1);
}

TEST_F(cRunStatisticsTest, meansFollowTheRecurrenceToTheLastBit) {
    const double mean2 = 1.0 + (2.0 - 1.0) / 2;
    const double mean3 = mean2 + (4.0 - mean2) / 3;

    for (const double time : {1.0, 2.0, 4.0}) gatherAt(time);

    EXPECT_EQ(statistics.getMeans(), std::vector<double>{mean3});
    EXPECT_EQ(statistics.getReplicationCount(), 3);
}

TEST_F(cRunStatisticsTest, everyColumnHasItsMean) {
    network.execute("SAVEVALUE x 10;\nADDTORESULTS r x;\n");
    statistics.prepare();

    gatherAt(1.0);
    network.saveValues["x"] = 20.0;
    gatherAt(2.0);

    EXPECT_EQ(statistics.getMeans(), (std::vector<double>{1.5, 15.0}));
}

TEST_F(cRunStatisticsTest, aValueThatIsNotANumberStaysInItsMean) {
    gatherAt(std::nan(""));
    gatherAt(2.0);

    EXPECT_TRUE(std::isnan(statistics.getMeans().at(0)));
}

TEST_F(cRunStatisticsTest, rowsTakeTheFiguresOfTheElements) {
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
    network.addCombi("C").startInstance({}, 3.0, 5.0);
    network.execute("INIT Q 4;\n");
    queue.drawAmount(1.0);
    statistics.prepare();

    gatherAt(8.0);

    const std::vector<double>& means = statistics.getMeans();
    const std::vector<double> ofCombi(means.begin() + 1, means.begin() + 10);
    EXPECT_EQ(ofCombi.at(0), 1.0);
    EXPECT_EQ(ofCombi.at(1), 5.0);
    EXPECT_TRUE(std::isnan(ofCombi.at(2)));
    EXPECT_EQ(std::vector<double>(ofCombi.begin() + 3, ofCombi.end()),
              (std::vector<double>{5.0, 5.0, 0.0, 0.0, 1000000.0, -1.0}));
    EXPECT_EQ(std::vector<double>(means.begin() + 10, means.end()),
              (std::vector<double>{3.0, 4.0, 0.0, 0.0, 0.0, 4.0}));
}

TEST_F(cRunStatisticsTest, anEntryIsCompiledAtEachReplicationWithItsTrial) {
    network.execute("ADDTORESULTS r Rnd();\n");
    statistics.prepare();
    cRandomGenerator twin = network.symbols->randomStreams().first();

    gatherAt(1.0);

    twin.uniform();
    EXPECT_EQ(statistics.getMeans().at(1), roundThroughText(twin.uniform()));
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
}

TEST_F(cRunStatisticsTest, everyReplicationDrawsForTheTrialAndForTheValue) {
    network.execute("ADDTORESULTS r Rnd()*2;\n");
    statistics.prepare();
    cRandomGenerator twin = network.symbols->randomStreams().first();
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        twin.uniform();
        sum += roundThroughText(roundThroughText(twin.uniform()) * 2.0);
    }

    for (int i = 0; i < 3; ++i) gatherAt(1.0);

    EXPECT_NEAR(statistics.getMeans().at(1), sum / 3.0, 1e-12);  // the mean is gathered in another order
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
}

TEST_F(cRunStatisticsTest, anEntryMeansWhatItsTextAndItsNamesMeanThen) {
    network.execute("ADDTORESULTS r x+1;\n");
    statistics.prepare();
    gatherAt(1.0);
    EXPECT_EQ(statistics.getMeans().at(1), 1.0);

    network.execute("SAVEVALUE x 2;\n");
    gatherAt(1.0);
    EXPECT_EQ(statistics.getMeans().at(1), 2.0);

    network.execute("ADDTORESULTS r x+9;\n");
    gatherAt(1.0);
    EXPECT_EQ(statistics.getMeans().at(1), 5.0);
}

TEST_F(cRunStatisticsTest, anEntryThatFailedIsTriedAgain) {
    network.execute("ADDTORESULTS r 6/(1-SimTime);\n");
    statistics.prepare();
    failureOf([&] { gatherAt(1.0); });

    gatherAt(2.0);

    EXPECT_EQ(statistics.getMeans().at(1), -6.0);
    EXPECT_EQ(failureOf([&] { gatherAt(1.0); }).message, "Division by 0.");
}

TEST_F(cRunStatisticsTest, aReplicationWhoseEntryFailsIsNotCounted) {
    network.execute("ADDTORESULTS r 1/(1-SimTime);\n");
    statistics.prepare();

    const cException failure = failureOf([&] { gatherAt(1.0); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(statistics.getReplicationCount(), 0);
    EXPECT_EQ(statistics.getMeans(), (std::vector<double>{0.0, 0.0}));
}

TEST_F(cRunStatisticsTest, theRowKeepsItsLengthWhenAnElementIsGone) {
    network.addQueue("Q", network.addGenericType("Soil"));
    statistics.prepare();
    network.elements.erase("Q");

    gatherAt(1.0);

    EXPECT_EQ(statistics.getMeans().size(), 7U);
    EXPECT_EQ(statistics.getMeans().at(0), 1.0);
    EXPECT_TRUE(std::isnan(statistics.getMeans().at(6)));
}

TEST_F(cRunStatisticsTest, theRowKeepsItsLengthWhenAnElementHasCome) {
    statistics.prepare();
    network.addQueue("Q", network.addGenericType("Soil"));

    gatherAt(1.0);

    EXPECT_EQ(statistics.getMeans(), std::vector<double>{1.0});
}

TEST_F(cRunStatisticsTest, theNamesAreThoseOfThePreparation) {
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
    statistics.prepare();
    const cTexts names = statistics.columnNames();

    queue.setName("Renamed");
    network.addCombi("C");

    EXPECT_EQ(statistics.columnNames(), names);
}

TEST_F(cRunStatisticsTest, anEntryAddedBehindThePreparationHasNoColumn) {
    statistics.prepare();
    network.execute("ADDTORESULTS late 1;\n");

    gatherAt(1.0);

    EXPECT_EQ(statistics.getMeans(), std::vector<double>{1.0});
    EXPECT_TRUE(statistics.getLabels().empty());
}

// ---- lines

TEST_F(cRunStatisticsTest, theFirstLineContinuesTheHeader) {
    statistics.prepare();
    gatherAt(1.0);
    gatherAt(2.5);

    statistics.flushLines();

    EXPECT_EQ(fileContent(), "Num,SimTime1,1.000000,\n2,2.500000,\n");
}

TEST_F(cRunStatisticsTest, everyValueHasSixDecimalsAndAComma) {
    network.execute("SAVEVALUE x 0;\nADDTORESULTS r x;\n");
    statistics.prepare();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {1.0 / 3.0, 1e20, -0.0000004, std::nan(""), infinity, -infinity}) {
        network.saveValues["x"] = value;
        gatherAt(0.0);
    }

    statistics.flushLines();

    EXPECT_EQ(fileContent(),
              "Num,SimTime,r1,0.000000,0.333333,\n2,0.000000,100000000000000000000.000000,\n3,0.000000,-0.000000,\n"
              "4,0.000000,nan,\n5,0.000000,inf,\n6,0.000000,-inf,\n");
}

TEST_F(cRunStatisticsTest, linesWaitUntilTheyAreFlushedAndAreWrittenOnce) {
    statistics.prepare();
    gatherAt(1.0);
    EXPECT_EQ(fileContent(), "Num,SimTime");

    statistics.flushLines();
    statistics.flushLines();

    EXPECT_EQ(fileContent(), "Num,SimTime1,1.000000,\n");
}

TEST_F(cRunStatisticsTest, theThousandthLineFlushesThem) {
    statistics.prepare();
    for (int i = 0; i < 999; ++i) gatherAt(1.0);
    EXPECT_EQ(fileContent(), "Num,SimTime");

    gatherAt(2.0);
    EXPECT_TRUE(fileContent().ends_with("\n1000,2.000000,\n"));

    gatherAt(3.0);
    EXPECT_TRUE(fileContent().ends_with("\n1000,2.000000,\n"));
}

TEST_F(cRunStatisticsTest, linesStayWaitingWhileTheFileCannotBeOpened) {
    const std::filesystem::path usable = statistics.getTemporaryPath();
    statistics.prepare();
    gatherAt(1.0);
    statistics.setTemporaryPath(usable / "is no directory");
    statistics.flushLines();
    EXPECT_FALSE(statistics.isFileComplete());

    statistics.setTemporaryPath(usable);
    statistics.flushLines();

    EXPECT_EQ(fileContent(), "Num,SimTime1,1.000000,\n");
}

TEST_F(cRunStatisticsTest, linesGoNowhereWithoutAPath) {
    const std::filesystem::path usable = statistics.getTemporaryPath();
    std::filesystem::remove(usable);
    statistics.setTemporaryPath({});
    statistics.prepare();
    gatherAt(1.0);
    gatherAt(3.0);
    statistics.setTemporaryPath(usable);
    statistics.flushLines();

    EXPECT_EQ(fileContent(), "");
    EXPECT_EQ(statistics.getMeans(), std::vector<double>{2.0});
}

TEST_F(cRunStatisticsTest, aHeaderThatCannotBeWrittenIsNoFailureOfTheModel) {
    statistics.setTemporaryPath(statistics.getTemporaryPath() / "nowhere");

    statistics.resetResults();

    EXPECT_FALSE(statistics.isFileComplete());
}

// ---- reset

/// A link at the place of the temporary file that leads to a file of somebody else.
class cForeignLinkTest : public cRunStatisticsTest {
protected:
    void SetUp() override {
        std::filesystem::create_directory(folder);
        std::ofstream(foreign) << "not ours";
        statistics.setTemporaryPath(folder / "lines.txt");
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
    void leaveLink() {
        std::filesystem::remove(statistics.getTemporaryPath());
        std::filesystem::create_symlink(foreign, statistics.getTemporaryPath());
    }

    const std::filesystem::path folder{std::filesystem::path(::testing::TempDir()) / "foreignLinkTest"};
    const std::filesystem::path foreign{folder / "foreign.txt"};
};

TEST_F(cForeignLinkTest, theFileIsMadeInPlaceOfTheLink) {
    leaveLink();

    statistics.prepare();

    EXPECT_FALSE(std::filesystem::is_symlink(statistics.getTemporaryPath()));
    EXPECT_EQ(fileContent(), "Num,SimTime");
    EXPECT_EQ(contentOf(foreign), "not ours");
}

TEST_F(cForeignLinkTest, linesAreNotWrittenThroughALinkThatCameLater) {
    statistics.prepare();
    gatherAt(1.0);
    leaveLink();

    statistics.flushLines();

    EXPECT_FALSE(statistics.isFileComplete());
    EXPECT_EQ(contentOf(foreign), "not ours");
}

TEST_F(cRunStatisticsTest, resetEmptiesTheStore) {
    gatherAt(5.0);
    statistics.flushLines();
    statistics.printTexts["log"] = "text";
    gatherAt(6.0);

    statistics.resetResults();

    EXPECT_EQ(statistics.getReplicationCount(), 0);
    EXPECT_EQ(statistics.getMeans(), std::vector<double>{0.0});
    EXPECT_TRUE(statistics.printTexts.empty());
    EXPECT_EQ(fileContent(), "Num,SimTime");
    EXPECT_TRUE(statistics.isFileComplete());
    statistics.flushLines();
    EXPECT_EQ(fileContent(), "Num,SimTime");  // the line that waited is gone
}

TEST_F(cRunStatisticsTest, aResetBringsBackAFileThatWasTakenAway) {
    statistics.resetResults();
    std::filesystem::remove(statistics.getTemporaryPath());

    statistics.resetResults();

    EXPECT_EQ(fileContent(), "Num,SimTime");
}

}  // namespace
