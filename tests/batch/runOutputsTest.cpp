#include "batch/runOutputs.h"

#include "batch/commandLine.h"
#include "batch/fileError.h"
#include "kernel/trace.h"
#include "support/scratchFolder.h"
#include "support/testNetwork.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

/// A network without elements, whose run asks for files in a folder that holds older ones. Standard output leads
/// nowhere while a test runs.
class cRunOutputsTest : public ::testing::Test {
protected:
    cRunOutputsTest() {
        folder.write("results.csv", "old");
        folder.write("lines.csv", "old");
        folder.write("trace.csv", "old");
        options.csvPath = folder / "results.csv";
        options.replicationsCsvPath = folder / "lines.csv";
        options.tracePath = folder / "trace.csv";
        options.printsPath = folder / "prints";
        options.jsonPath = "-";
        standardOutputKept = cFileDescriptor(dup(STDOUT_FILENO));
        const cFileDescriptor nowhere(open("/dev/null", O_WRONLY));
        dup2(nowhere.number(), STDOUT_FILENO);
    }
    ~cRunOutputsTest() override { dup2(standardOutputKept.number(), STDOUT_FILENO); }

    cScratchFolder folder;
    cRunOptions options;
    cTestNetwork network;
    std::ostringstream notes;

private:
    cFileDescriptor standardOutputKept;
};

}  // namespace

TEST_F(cRunOutputsTest, finishedRunWritesAll) {
    cRunOutputs outputs(options, notes);
    network.run("MULTISIM 2;\nPRINT log \"text\";\n");
    outputs.appendTrace(network);
    outputs.appendTrace(network);

    const bool allWritten = outputs.write(network, false);

    const std::string header(traceHeader);
    EXPECT_TRUE(allWritten);
    EXPECT_TRUE(folder.read("results.csv").starts_with("The following results are"));
    EXPECT_EQ(folder.read("lines.csv"), "Num,SimTime1,0.000000,\n2,0.000000,\n");
    EXPECT_EQ(folder.read("trace.csv"), header + header);
    EXPECT_EQ(folder.read("prints/log.txt"), "text\n");
    EXPECT_EQ(notes.str(), "");
}

TEST_F(cRunOutputsTest, partialRunThatGatheredNothingLeavesOldFilesAlone) {
    cRunOutputs outputs(options, notes);
    network.execute("PRINT log \"text\";\n");

    const bool allWritten = outputs.write(network, true);

    EXPECT_TRUE(allWritten);
    EXPECT_EQ(folder.read("results.csv"), "old");
    EXPECT_EQ(folder.read("lines.csv"), "old");
    EXPECT_EQ(folder.read("trace.csv"), "old");
    EXPECT_EQ(folder.read("prints/log.txt"), "text\n");
}

TEST_F(cRunOutputsTest, traceOfAReplicationThatFailedIsKept) {
    cRunOutputs outputs(options, notes);
    network.addTraceLine("1.00,ATTEMPT,C,Success,,,,\n");

    outputs.write(network, true);

    EXPECT_EQ(folder.read("trace.csv"), std::string(traceHeader) + "1.00,ATTEMPT,C,Success,,,,\n");
    EXPECT_EQ(folder.read("results.csv"), "old");
}

TEST_F(cRunOutputsTest, finishedRunWithoutReplicationsHasNoFiguresToWrite) {
    cRunOutputs outputs(options, notes);

    outputs.write(network, false);

    EXPECT_EQ(folder.read("results.csv"), "");
}

TEST_F(cRunOutputsTest, headerAloneOfASingleRunIsNoted) {
    cRunOutputs outputs(options, notes);
    network.run();

    outputs.write(network, false);

    EXPECT_EQ(folder.read("lines.csv"), "Num,SimTime");
    EXPECT_EQ(notes.str(),
              "timbersim-run: a single run has no replication lines: --replications-csv wrote the header alone\n");
}

TEST_F(cRunOutputsTest, quietRunHasNoNotes) {
    options.isQuiet = true;
    cRunOutputs outputs(options, notes);
    network.run();

    outputs.write(network, false);

    EXPECT_EQ(notes.str(), "");
}

TEST_F(cRunOutputsTest, fullDiskKeepsBackNoOtherOutput) {
    options.csvPath = "/dev/full";
    cRunOutputs outputs(options, notes);
    network.run("MULTISIM 2;\nPRINT log \"text\";\n");

    const bool allWritten = outputs.write(network, false);

    EXPECT_FALSE(allWritten);
    EXPECT_EQ(notes.str(), "timbersim-run: can't write /dev/full: No space left on device\n");
    EXPECT_EQ(folder.read("lines.csv"), "Num,SimTime1,0.000000,\n2,0.000000,\n");
    EXPECT_EQ(folder.read("prints/log.txt"), "text\n");
}

TEST_F(cRunOutputsTest, linesThatTheStoreLostAreTold) {
    network.runStatistics->setTemporaryPath(folder / "nowhere/lines");
    cRunOutputs outputs(options, notes);
    network.run("MULTISIM 2;\n");

    const bool allWritten = outputs.write(network, false);

    EXPECT_FALSE(allWritten);
    EXPECT_EQ(folder.read("lines.csv"), "old");
    EXPECT_EQ(notes.str(),
              "timbersim-run: can't keep all replication lines in " + (folder / "nowhere/lines").string() + "\n");
}

TEST_F(cRunOutputsTest, placeThatCanNotBeWrittenLeavesAllAsItWas) {
    const std::set<std::string> before = folder.names();
    options.tracePath = folder / "nowhere/trace.csv";

    EXPECT_THROW(cRunOutputs(options, notes), cFileError);

    EXPECT_EQ(folder.names(), before);
    EXPECT_EQ(folder.read("results.csv"), "old");
}
