// The files of tests/models/malformed, each read and, where there is something to run, run for a while.

#include "support/failureOf.h"
#include "support/testNetwork.h"

#include "model/engineBuilder.h"
#include "model/modelReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

using cTexts = std::vector<std::string>;

const std::filesystem::path folder = std::filesystem::path(TIMBERSIM_SOURCE) / "tests/models/malformed";

constexpr const char* done = "";
constexpr const char* nothing = "nothing to run";
constexpr const char* unjoined = "Simulation failed to start.\nOne or more links not connected properly.";

/// What reading a file tells, each with its line, and how the run ends: with the message of a failure, or `done`.
/// A file that can't be read on tells why in its last text, and has nothing to run.
struct cFileCase {
    const char* file;
    cTexts told;
    const char* run;
};

std::ostream& operator<<(std::ostream& stream, const cFileCase& row) { return stream << row.file; }

// Most files are one model with one thing spoilt: a queue Pit of three, a Combi Dig that takes them out one by one in a
// time of two, and a queue Pile. Lines 7 and 8 are the links, 21 to 24 the code.
const std::vector<cFileCase> files{
    // ---- cut short
    {"empty", {}, nothing},
    {"onlyBlanks", {}, nothing},
    {"cutInKeyword", {}, done},
    {"cutInStatement", {"8: RELEASELINK has too few words behind it: 2 of 3"}, done},
    {"cutInValue", {"10: DURATION of \"Dig\", \"Uniform(1,\": Operator or Function not recognized."}, done},
    {"cutInCode", {"21: the code has no closing <CODE>; the last line of the file is lost"}, done},
    {"cutBehindCodeMark", {"21: the code has no closing <CODE>; the last line of the file is lost"}, done},
    {"nodesWithoutType",
     {"1: QUEUE \"Pit\" has no resource type", "2: ASSEMBLER \"Truss\" has no resource type",
      "3: DISASSEMBLER \"Yard\" has no resource type", "4: FORK \"Way\" has no resource type",
      "5: DYNAFORK \"Gate\" has no resource type"},
     "Simulation failed to start.\nAssembler \"Truss\" does not have any outlinks which causes a logical error in the "
     "model."},
    {"tooFewWords",
     {"1: GENTYPE has too few words behind it: 0 of 1",
      "2: GENTYPE has too few words behind it: 0 of 1",
      "3: CHARTYPE has too few words behind it: 0 of 1",
      "4: COMPTYPE has too few words behind it: 0 of 1",
      "5: COMBI has too few words behind it: 0 of 1",
      "6: NORMAL has too few words behind it: 0 of 1",
      "7: CONSOLIDATOR has too few words behind it: 0 of 1",
      "8: QUEUE has too few words behind it: 0 of 1",
      "9: QUEUE has too few words behind it: 0 of 1",
      "10: QUEUE has too few words behind it: 0 of 1",
      "11: ASSEMBLER has too few words behind it: 0 of 1",
      "12: DISASSEMBLER has too few words behind it: 0 of 1",
      "13: FORK has too few words behind it: 0 of 1",
      "14: DYNAFORK has too few words behind it: 0 of 1",
      "15: FUSIONQUEUE has too few words behind it: 1 of 2",
      "16: DRAWLINK has too few words behind it: 0 of 3",
      "17: DRAWLINK has too few words behind it: 1 of 3",
      "18: DRAWLINK has too few words behind it: 2 of 3",
      "19: RELEASELINK has too few words behind it: 2 of 3",
      "20: FLOWLINK has too few words behind it: 2 of 3",
      "21: SAVEPROPS has too few words behind it: 0 of 1",
      "22: DURATION has too few words behind it: 0 of 1",
      "23: PRIORITY has too few words behind it: 0 of 1",
      "24: SEMAPHORE has too few words behind it: 0 of 1",
      "25: CONSOLIDATEWHEN has too few words behind it: 0 of 1",
      "26: TBINITIALCONTENT has too few words behind it: 0 of 1",
      "27: ENOUGH has too few words behind it: 0 of 1",
      "28: DRAWUNTIL has too few words behind it: 0 of 1",
      "29: DRAWAMT has too few words behind it: 0 of 1",
      "30: DRAWORDER has too few words behind it: 0 of 1",
      "31: DRAWWHERE has too few words behind it: 0 of 1",
      "32: RELEASEAMT has too few words behind it: 0 of 1",
      "33: RELEASEUNTIL has too few words behind it: 0 of 1",
      "34: RELEASEORDER has too few words behind it: 0 of 1",
      "35: RELEASEWHERE has too few words behind it: 0 of 1",
      "36: STRENGTH has too few words behind it: 0 of 1",
      "37: POSNODE has too few words behind it: 0 of 3",
      "38: POSNODE has too few words behind it: 2 of 3",
      "39: POSLINK has too few words behind it: 0 of 3",
      "40: POSLINK has too few words behind it: 2 of 3"},
     nothing},

    // ---- bytes that aren't the text of a model
    {"binary",
     {"1: is not UTF-8", "2: is not UTF-8", "3: is not UTF-8", "4: is not UTF-8", "5: is not UTF-8", "6: is not UTF-8",
      "7: is not UTF-8"},
     nothing},
    {"utf16", {"1: is not UTF-8"}, nothing},
    {"oldLineEnds",  // carriage returns alone: one line, which holds the mark of the code
     {"1: the code has no closing <CODE>; the last line of the file is lost"},
     nothing},
    {"carriageReturns", {}, done},
    {"byteOrderMark", {}, done},
    {"zeroBytes",
     {"2: the name \"D?g\" is taken or not a name; the element is called \"Combi1\"", "7: there is no element \"Dig\"",
      "8: there is no element \"Dig\"", "8: there is no element \"Pile\"",
      "8: link \"ToPile\" has no resource type: it carries nothing", "10: there is no element \"Dig\"",
      "11: there is no element \"Dig\"", "12: there is no element \"Dig\"", "13: there is no element \"Pile\"",
      "27: there is no element \"Dig\"", "28: there is no element \"Pile\""},
     "Simulation failed to start.\nCombi \"Combi1\" does not have any inlinks and will be started infinitely."},

    // ---- words
    {"unknownKeywords", {}, done},
    {"tooManyWords", {"8: RELEASELINK has more words than it takes"}, done},
    {"emptyNames", {"10: there is no element \"5\"", "16: there is no element \"PredNode.CurCount\""}, done},
    {"keywordInName",
     {"14: reading stopped here: the line holds an element keyword but begins with \"TBINITIALCONTENT\""},
     done},
    {"keywordInValue",
     {"11: reading stopped here: the line holds an element keyword but begins with \"PRIORITY\""},
     done},
    {"positionsNoNumbers", {}, done},
    {"counterTooLarge", {"30: RANKCOUNT \"99999999999999999999\" is no counter"}, done},
    {"counterAtTheLimit", {"30: RANKCOUNT \"2147483647\" is no counter"}, done},
    {"counterNoNumber", {"30: RANKCOUNT \"five\" is no counter"}, done},
    {"counterFirst", {}, done},

    // ---- names
    {"refusedNames",
     {"2: the name \"2nd-Dig\" is taken or not a name; the element is called \"Combi1\"",
      "3: the name \"AVeryLongNameForAPile\" is taken or not a name; the element is called \"Queue2\"",
      "7: the name \"From.Pit\" is taken or not a name; the element is called \"Element4\"",
      "8: the name \"ToAVeryLongNameForAPile\" is taken or not a name; the element is called \"Element5\""},
     done},
    {"duplicateNames",
     {"6: the name \"Pit\" is taken or not a name; the element is called \"Queue4\"",
      "7: the name \"Dig\" is taken or not a name; the element is called \"Combi5\"",
      "12: the name \"ToPile\" is taken or not a name; the element is called \"Element8\""},
     "Incorrect queue name in statement:\nINIT Queue4 3.000000"},
    {"elementReplacedByAnother",
     {"10: the name \"Dig\" is taken or not a name; the element is called \"Queue6\"", "11: \"Dig\" has no DURATION"},
     unjoined},

    // ---- elements that don't go together
    {"missingNodes",
     {"7: there is no element \"Nope\"", "7: link \"FromPit\" has no resource type: it carries nothing",
      "8: there is no element \"Nowhere\"", "8: link \"ToPile\" has no resource type: it carries nothing",
      "26: there is no element \"ToHeap\"", "28: there is no element \"Heap\""},
     unjoined},
    {"linkToLink",
     {"8: link \"ToPile\" can't join \"Dig\" to \"FromPit\"",
      "8: link \"ToPile\" has no resource type: it carries nothing"},
     unjoined},
    {"refusedPairs",
     {"7: link \"FromPit\" can't join \"Pit\" to \"Pile\"", "8: link \"ToPile\" can't join \"Dig\" to \"Dig\"",
      "8: link \"ToPile\" has no resource type: it carries nothing"},
     "Simulation failed to start.\nCombi \"Dig\" does not have any inlinks and will be started infinitely."},
    {"fusionOfNothing",
     {"10: link \"FromPit\" can't join \"Pit2\" to \"Dig\"",
      "10: link \"FromPit\" has no resource type: it carries nothing",
      "11: link \"ToPile\" can't join \"Dig\" to \"Pit3\"",
      "11: link \"ToPile\" has no resource type: it carries nothing"},
     unjoined},
    {"propertiesFirst",
     {"1: there is no element \"Dig\"", "2: there is no element \"FromPit\"", "3: there is no element \"Pit\"",
      "4: there is no element \"Pile\"", "5: there is no element \"ToPile\"",
      "7: the name \"Dig\" is taken or not a name; the element is called \"Combi1\"",
      "8: the name \"Pile\" is taken or not a name; the element is called \"Queue2\"",
      "9: the name \"Pit\" is taken or not a name; the element is called \"Queue3\"",
      "12: the name \"FromPit\" is taken or not a name; the element is called \"Element4\"",
      "13: the name \"ToPile\" is taken or not a name; the element is called \"Element5\""},
     "Incorrect queue name in statement:\nINIT Queue3 3.000000"},
    {"linksFirst",
     {"1: there is no element \"Pit\"", "1: there is no element \"Dig\"",
      "1: link \"FromPit\" has no resource type: it carries nothing", "2: there is no element \"Dig\"",
      "2: there is no element \"Pile\"", "2: link \"ToPile\" has no resource type: it carries nothing",
      "4: the name \"Dig\" is taken or not a name; the element is called \"Combi3\"",
      "5: the name \"Pile\" is taken or not a name; the element is called \"Queue4\"",
      "6: the name \"Pit\" is taken or not a name; the element is called \"Queue5\"",
      "9: the name \"FromPit\" is taken or not a name; the element is called \"Element6\"",
      "10: the name \"ToPile\" is taken or not a name; the element is called \"Element7\""},
     "Incorrect queue name in statement:\nINIT Queue5 3.000000"},
    {"wrongClasses",
     {"10: \"Pit\" has no DURATION", "11: \"FromPit\" has no DURATION", "15: \"Dig\" has no TBINITIALCONTENT",
      "17: \"Pit\" has no ENOUGH", "27: \"Dig\" is no link"},
     done},
    {"wrongLinkKinds", {}, done},

    // ---- types
    {"noTypes",
     {"2: there is no resource type \"Soil\"", "3: there is no resource type \"Soil\"",
      "6: link \"FromPit\" has no resource type: it carries nothing",
      "7: link \"ToPile\" has no resource type: it carries nothing"},
     "Incorrect resource name in statement:\nINIT Pit 3.000000"},
    {"unknownTypes",
     {"4: there is no resource type \"Rock\"", "7: link \"FromPit\" has no resource type: it carries nothing",
      "8: there is no resource type \"Sand\""},
     "Incorrect resource name in statement:\nINIT Pit 3.000000"},
    {"typeOfAnotherFamily", {}, "Queue \"Pile\" of type \"Truck\" can't hold a resource of type \"Soil\"."},

    // ---- expressions and code
    {"brokenExpressions",
     {"10: DURATION of \"Dig\", \"Cycle)\": not an expression", "11: PRIORITY of \"Dig\", \"1/0\": Division by 0.",
      "12: SEMAPHORE of \"Dig\", \"Beta(1,2)\": Operator or Function not recognized.",
      "13: TBINITIALCONTENT of \"Pile\", \"(0\": Operator or Function not recognized.",
      "17: DRAWAMT of \"FromPit\", \"PredNode.Weight+1\": Invalid keyword Weight (In queue Pit)"},
     "Operator or Function not recognized."},
    {"brokenDeclarations",
     {"21: declaration \"SAVEVALUE Cycle\": Syntax error in statement: SAVEVALUE Cycle",
      "21: declaration \"SAVEVALUE Loop Endless\": Endless recursion in Endless+1",
      "21: declaration \"SAVEVALUE Cycle 2,3\": not an expression"},
     "Syntax error in statement:\nSAVEVALUE Cycle"},
    {"brokenCode", {}, "Format with more conversions than expressions in statement:\nPRINT log \"%d%d%d\" 1"},
    {"severalCodes", {"34: the code has no closing <CODE>; the last line of the file is lost"}, done},

    // ---- nodes that can't do their work
    {"forkWithoutOutLinks",
     {},
     "Simulation failed to start.\nFork \"Choice\" does not have any outlinks which causes a logical error in the "
     "model."},
    {"assemblerWithoutOutLinks",
     {},
     "Simulation failed to start.\nAssembler \"Join\" does not have any outlinks which causes a logical error in the "
     "model."},
    {"assemblerOfAmounts", {}, "Assembler \"Join\" has no compound resource type."},
    {"disassemblerOfAmounts", {}, done},
    {"circleOfForks", {}, "Endless flow through link \"ToFirst\"."},
    {"circleOfDynaforks", {}, "Endless flow through link \"ToFirst\"."},
};

TEST(malformedFilesTest, everyFileOfTheFolderIsInTheTable) {
    cTexts inFolder;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) inFolder.push_back(entry.path().filename());
    std::ranges::sort(inFolder);

    cTexts inTable;
    for (const cFileCase& row : files) inTable.push_back(std::string(row.file) + ".tbsmx");
    std::ranges::sort(inTable);

    EXPECT_EQ(inFolder, inTable);
}

class cMalformedFileTest : public ::testing::TestWithParam<cFileCase> {
protected:
    /// Reads the file. What it holds wrongly is in `told`.
    cModelReading readFile() {
        std::ifstream file(folder / (std::string(GetParam().file) + ".tbsmx"), std::ios::binary);
        EXPECT_TRUE(file.is_open());
        cEngineBuilder builder(network);
        const cModelReading reading = readModel(file, builder);
        for (const cModelWarning& warning : reading.warnings)
            told.push_back(std::to_string(warning.line) + ": " + warning.message);
        return reading;
    }
    /// How a run of the network ends; it is stopped when it goes on for too long.
    std::string runOf(const cModelReading& reading) {
        if (!reading.isRunnable) return nothing;
        network.stopAtHostEvent = 1000;
        try {
            network.run(reading.globalCode);
        } catch (const cException& failure) {
            return failure.message;
        }
        return done;
    }

    cTestNetwork network;
    cTexts told;
};

TEST_P(cMalformedFileTest, tellsWhatIsWrongAndWhereAndRunsAsFarAsItCan) {
    const cModelReading reading = readFile();

    EXPECT_EQ(told, GetParam().told);
    EXPECT_EQ(runOf(reading), GetParam().run);
}

INSTANTIATE_TEST_SUITE_P(files, cMalformedFileTest, ::testing::ValuesIn(files),
                         [](const auto& row) { return std::string(row.param.file); });

}  // namespace
