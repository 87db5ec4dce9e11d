#include "model/modelWriter.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/queue.h"
#include "model/modelReader.h"
#include "support/keptModel.h"
#include "support/smallModel.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

class cModelWriterTest : public ::testing::Test {
protected:
    cModelReading read(const std::string& text) {
        cNetworkElement::setElementCounter(0);
        std::istringstream stream(text);
        return readModel(stream, model);
    }
    std::string write() { return writeModel(model).text; }
    /// The written lines that begin with `word`.
    std::vector<std::string> lines(const std::string& word) {
        std::istringstream text(write());
        std::vector<std::string> found;
        for (std::string line; std::getline(text, line);)
            if (line.starts_with(word)) found.push_back(line);
        return found;
    }
    /// Shows nothing in the fields that are empty in the text above, though the engine has something there.
    void emptyFields() {
        for (const char* keyword : {"PRIORITY", "SEMAPHORE"}) model.typed[{"C1", keyword}] = "";
        for (const char* keyword : {"ENOUGH", "DRAWORDER", "DRAWWHERE", "RELEASEAMT", "RELEASEUNTIL", "RELEASEORDER",
                                    "RELEASEWHERE", "STRENGTH"})
            model.typed[{"L1", keyword}] = "";
    }

    cTestNetwork network;
    cKeptModel model{network};
};

using cTexts = std::vector<std::string>;

TEST_F(cModelWriterTest, writesTheSmallModelByteForByte) {
    read(smallModel);
    emptyFields();
    network.findElement<cLink>("L1")->setRuleText(eLinkRule::drawUntil, "");

    EXPECT_EQ(write(), smallModel);
}

TEST_F(cModelWriterTest, savingTwiceWithoutAChangeGivesTheSameBytes) {
    read(smallModel);

    const std::string first = write();

    EXPECT_EQ(write(), first);
    EXPECT_NE(first, smallModel);  // an empty value leaves what a new element has, and that is written
}

TEST_F(cModelWriterTest, anEmptyModelHasItsSections) {
    cNetworkElement::setElementCounter(0);

    EXPECT_EQ(write(), "\n\n\n\n/<CODE>\n\n/<CODE>\nRANKCOUNT 0;\n");
}

TEST_F(cModelWriterTest, valuesOfNodesAreTrimmed) {
    read(smallModel);
    model.typed[{"C1", "DURATION"}] = " \t4 + 1 ";
    model.typed[{"Q1", "TBINITIALCONTENT"}] = "  2";

    EXPECT_EQ(lines("DURATION"), (cTexts{"DURATION C1 4 + 1;"}));
    EXPECT_EQ(lines("TBINIT"), (cTexts{"TBINITIALCONTENT Q1 2;"}));
}

TEST_F(cModelWriterTest, valuesOfLinksAreAsTyped) {
    read(smallModel);
    model.typed[{"L1", "DRAWORDER"}] = " a b ";

    EXPECT_EQ(lines("DRAWORDER"), (cTexts{"DRAWORDER L1  a b ;"}));
}

TEST_F(cModelWriterTest, drawConditionIsTheEnginesUnlessItsFieldIsEmpty) {
    read(smallModel);

    model.typed[{"L1", "ENOUGH"}] = "typed";
    EXPECT_EQ(lines("ENOUGH"), (cTexts{"ENOUGH L1 PredNode.CurCount;"}));
    model.typed[{"L1", "ENOUGH"}] = "";
    EXPECT_EQ(lines("ENOUGH"), (cTexts{"ENOUGH L1 ;"}));
}

TEST_F(cModelWriterTest, drawUntilIsTheFirstOfFieldAndEngineThatIsNotEmpty) {
    read(smallModel);

    model.typed[{"L1", "DRAWUNTIL"}] = "nDraws==2";
    EXPECT_EQ(lines("DRAWUNTIL"), (cTexts{"DRAWUNTIL L1 nDraws==2;"}));
    model.typed[{"L1", "DRAWUNTIL"}] = "";
    EXPECT_EQ(lines("DRAWUNTIL"), (cTexts{"DRAWUNTIL L1 nDraws;"}));
}

TEST_F(cModelWriterTest, drawAmountIsTheEnginesWhateverTheFieldShows) {
    read(smallModel);
    model.typed[{"L1", "DRAWAMT"}] = "7";

    EXPECT_EQ(lines("DRAWAMT"), (cTexts{"DRAWAMT L1 1;"}));
}

TEST_F(cModelWriterTest, severalLinesOfConsolidateWhenAreWrittenAsTheyStandAndTheFirstIsRead) {
    read("CONSOLIDATOR Batch;\n");
    model.typed[{"Batch", "CONSOLIDATEWHEN"}] = " 1 +\n2 ";
    const cModelWriting writing = writeModel(model);

    EXPECT_NE(writing.text.find("CONSOLIDATEWHEN Batch  1 +\n2 ;\n"), std::string::npos);
    EXPECT_EQ(writing.warnings, (cTexts{"CONSOLIDATEWHEN of Batch has several lines; only the first will be read."}));
}

TEST_F(cModelWriterTest, aConsolidatorHasNoDurationInAFile) {
    read("CONSOLIDATOR Batch;\nDURATION Batch 5;\n");

    EXPECT_EQ(lines("DURATION"), cTexts{});
    EXPECT_EQ(lines("CONSOLIDATEWHEN").size(), 1U);
}

TEST_F(cModelWriterTest, elementsStandByNameAndFusionQueuesAndLinksBehindThem) {
    read("GENTYPE T;\nQUEUE b T;\nCOMBI a;\nNORMAL C;\nFUSIONQUEUE A b;\nDRAWLINK D A a;\nRELEASELINK B a b;\n");

    const std::string text = write();
    EXPECT_TRUE(
        text.starts_with("GENTYPE T;\nNORMAL C;\nCOMBI a;\nQUEUE b T;\n\nFUSIONQUEUE A b;\n\n"
                         "RELEASELINK B a b;\nDRAWLINK D A a;\n\n"))
        << text;
    EXPECT_EQ(lines("POSLINK"), (cTexts{"POSLINK B 0 0 0 0;", "POSLINK D 0 0 A 0;"}));
}

TEST_F(cModelWriterTest, aLinkNamesItsTypeWhereNoEndTellsIt) {
    read(
        "GENTYPE Default;\nGENTYPE Rock;\nCOMPTYPE Frame;\nQUEUE Pit Rock;\nNORMAL Dig;\nNORMAL Haul;\n"
        "ASSEMBLER Build Frame;\nDISASSEMBLER Split Frame;\nFORK Way Rock;\n"
        "RELEASELINK L1 Dig Haul Rock;\nRELEASELINK L2 Dig Pit;\nRELEASELINK L3 Dig Build Rock;\n"
        "RELEASELINK L4 Build Haul;\nRELEASELINK L5 Dig Split Frame;\nRELEASELINK L6 Split Pit Rock;\n"
        "FLOWLINK L7 Way Pit;\n");

    EXPECT_EQ(lines("RELEASELINK"), (cTexts{"RELEASELINK L1 Dig Haul Rock;", "RELEASELINK L2 Dig Pit;",
                                            "RELEASELINK L3 Dig Build Rock;", "RELEASELINK L4 Build Haul;",
                                            "RELEASELINK L5 Dig Split Frame;", "RELEASELINK L6 Split Pit Rock;"}));
    EXPECT_EQ(lines("FLOWLINK"), (cTexts{"FLOWLINK L7 Way Pit;"}));
}

TEST_F(cModelWriterTest, typesOfAnyOtherKindAreNotWritten) {
    read("CHARTYPE Truck;\nCOMPTYPE Frame;\nGENTYPE Soil;\n");
    const cModelWriting writing = writeModel(model);

    EXPECT_TRUE(writing.text.starts_with("COMPTYPE Frame;\nGENTYPE Soil;\n\n")) << writing.text;
    EXPECT_EQ(writing.warnings,
              (cTexts{"The resource type Truck is not in the file: CHARTYPE can be read, but not written."}));
}

TEST_F(cModelWriterTest, savePropertiesReadAreNeverWritten) {
    read("COMPTYPE Frame;\nSAVEPROPS Frame Weight Length;\n");

    EXPECT_EQ(write().find("SAVEPROPS"), std::string::npos);
}

TEST_F(cModelWriterTest, savePropertiesOfARecordStandBehindItsType) {
    class cWithProps : public cKeptModel {
    public:
        using cKeptModel::cKeptModel;
        std::vector<cSavedType> resourceTypes() override { return {{"Frame", "COMPTYPE", "Weight"}}; }
    };
    cWithProps props{network};

    EXPECT_TRUE(writeModel(props).text.starts_with("COMPTYPE Frame;\nSAVEPROPS Frame Weight;\n\n"));
}

TEST_F(cModelWriterTest, aNodeWithoutATypeIsWrittenWithoutItAndComesBack) {
    read("ASSEMBLER Build ;\nQUEUE Pit;\n");

    const std::string text = write();
    EXPECT_TRUE(text.starts_with("ASSEMBLER Build;\nQUEUE Pit;\n")) << text;
    EXPECT_NE(network.findElement<cNodeQueue>("Pit"), nullptr);
}

TEST_F(cModelWriterTest, incompleteLinksAreLeftOutOfEverySection) {
    read(smallModel + "DRAWLINK Loose Q1 Nowhere;\n");
    const cModelWriting writing = writeModel(model);

    EXPECT_TRUE(writing.hasIncompleteLink);
    EXPECT_EQ(writing.text.find("Loose"), std::string::npos);
}

TEST_F(cModelWriterTest, aLinkMovedToANodeOfAnotherTypeIsIncomplete) {
    read("GENTYPE A;\nGENTYPE B;\nFORK F A;\nQUEUE QA A;\nQUEUE QB B;\nFLOWLINK L F QA;\n");
    ASSERT_EQ(lines("FLOWLINK"), cTexts{"FLOWLINK L F QA;"});

    ASSERT_EQ(network.findElement<cLink>("L")->setSuccNode(network.findElement<cNodeQueue>("QB")), kindTypeMismatch);

    const cModelWriting writing = writeModel(model);
    EXPECT_TRUE(writing.hasIncompleteLink);
    EXPECT_EQ(writing.text.find(" L "), std::string::npos);
}

TEST_F(cModelWriterTest, completeLinksAloneAreNoIncompleteOnes) {
    read(smallModel);

    EXPECT_FALSE(writeModel(model).hasIncompleteLink);
    EXPECT_EQ(writeModel(model).warnings, cTexts{});
}

TEST_F(cModelWriterTest, positionsHaveSixSignificantDigits) {
    read("COMBI A;\nCOMBI B;\nCOMBI C;\nPOSNODE A 1234.5678 -0.00001234567;\nPOSNODE B 1000000 0.1;\n");

    EXPECT_EQ(lines("POSNODE"),
              (cTexts{"POSNODE A 1234.57 -1.23457e-05;", "POSNODE B 1e+06 0.1;", "POSNODE C 200 200;"}));
}

TEST_F(cModelWriterTest, theGlobalCodeIsTrimmedAsAWhole) {
    model.code = "\n\n  VARIABLE A 1;\n\n  VARIABLE B 2;  \n\n";

    EXPECT_NE(write().find("\n/<CODE>\nVARIABLE A 1;\n\n  VARIABLE B 2;\n/<CODE>\n"), std::string::npos);
}

TEST_F(cModelWriterTest, aNameLookedUpInVainIsNotWritten) {
    read("DURATION PredNode 5;\nDURATION Nobody 5;\n");
    ASSERT_TRUE(network.elements.contains("PredNode"));

    EXPECT_EQ(write().find("Nobody"), std::string::npos);
    EXPECT_FALSE(network.elements.contains("PredNode"));
    EXPECT_TRUE(network.elements.contains("Nobody"));
}

TEST_F(cModelWriterTest, anElementOfTheNamePredNodeStays) {
    read("COMBI PredNode;\n");

    EXPECT_EQ(lines("COMBI"), (cTexts{"COMBI PredNode;"}));
    EXPECT_NE(network.findElement<cNodeActCombi>("PredNode"), nullptr);
}

TEST_F(cModelWriterTest, tellsWhereReadingTheFileWillEnd) {
    read("GENTYPE T;\nQUEUE MYQUEUE T;\nCOMBI C1;\n");
    model.typed[{"C1", "PRIORITY"}] = "1 + THEFORK - 1";
    const cModelWriting writing = writeModel(model);

    const std::string reason =
        ": no name may hold <CODE> or SAVEPROPS, or end in a word such as QUEUE or COMBI in capitals.";
    EXPECT_EQ(writing.warnings, (cTexts{
                                    "Reading the file will go wrong at \"PRIORITY C1 1 + THEFORK - 1;\"" + reason,
                                    "Reading the file will go wrong at \"TBINITIALCONTENT MYQUEUE 0;\"" + reason,
                                    "Reading the file will go wrong at \"POSNODE MYQUEUE 200 200;\"" + reason,
                                }));
}

TEST_F(cModelWriterTest, tellsOfNamesThatMakeAStatementAnother) {
    read("GENTYPE <CODE>;\n/<CODE>\nCOMBI SAVEPROPS1;\n");
    const cModelWriting writing = writeModel(model);

    ASSERT_EQ(writing.warnings.size(), 4U);
    EXPECT_NE(writing.warnings[0].find("\"GENTYPE <CODE>;\""), std::string::npos);
    EXPECT_NE(writing.warnings[1].find("\"DURATION SAVEPROPS1 0;\""), std::string::npos);
    EXPECT_NE(writing.warnings[2].find("\"PRIORITY SAVEPROPS1 0;\""), std::string::npos);
    EXPECT_NE(writing.warnings[3].find("\"SEMAPHORE SAVEPROPS1 1;\""), std::string::npos);
}

TEST_F(cModelWriterTest, tellsOfATypeWhoseNameIsCutShort) {
    model.addResourceType("Oak;Ash", "GENTYPE");

    EXPECT_EQ(writeModel(model).warnings, (cTexts{"The name of the resource type Oak;Ash will end at its first ;"}));
}

/// An element that can't take its name keeps the one it was made with, which another one may then be given.
TEST_F(cModelWriterTest, tellsOfElementsThatShareAName) {
    read("COMBI 1st;\nCOMBI Combi1;\n");
    EXPECT_EQ(lines("COMBI"), (cTexts{"COMBI Combi1;", "COMBI Combi1;"}));

    EXPECT_EQ(writeModel(model).warnings, (cTexts{"Several elements are called Combi1; only the last will be read."}));
}

TEST_F(cModelWriterTest, tellsOfCodeThatEndsEarly) {
    model.code = "PRINT \"<CODE>\";";

    EXPECT_EQ(writeModel(model).warnings,
              (cTexts{"The Global Code holds <CODE>, which ends it when the file is read."}));
}

TEST_F(cModelWriterTest, tellsOfACounterThatNoReaderTakes) {
    read("COMBI C1;\nRANKCOUNT 900000000;\n");
    EXPECT_EQ(lines("RANKCOUNT"), (cTexts{"RANKCOUNT 900000000;"}));

    cNetworkElement::setElementCounter(900000001);
    EXPECT_EQ(writeModel(model).warnings,
              (cTexts{"The counter behind element numbers is larger than a reader takes."}));
    cNetworkElement::setElementCounter(0);
}

}  // namespace
