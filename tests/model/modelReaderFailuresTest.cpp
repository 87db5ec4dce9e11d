// Input of a size or a shape that nobody means: the reader comes back, tells where it was, and leaves a network that
// can be run until it fails. What takes forever or runs out of stack fails by the time limit of the test or by its
// signal.

#include "support/readerTest.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

using namespace std::string_literals;

constexpr std::size_t megabyte = 1000000;
constexpr std::size_t large = 10 * megabyte;

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

/// `text` over and over, to the length of a large file.
std::string toLargeSize(const std::string& text) { return repeated(text, large / text.size()); }

/// A queue of soil that holds three, a Combi behind it, and the draw link between them.
const std::string model =
    "GENTYPE Soil;\nQUEUE Q1 Soil;\nCOMBI C1;\nDRAWLINK L1 Q1 C1;\nTBINITIALCONTENT Q1 3;\nDURATION C1 2;\n";

class cModelReaderFailuresTest : public cReaderTest {
protected:
    /// Runs for a while. @return the message of the failure that ended the run, or nothing.
    std::string runShortly(const std::string& globalCode) {
        network.stopAtHostEvent = network.hostEvents + 20;
        try {
            network.run(globalCode);
        } catch (const cException& failure) {
            return failure.message.empty() ? "failed" : failure.message;
        }
        return {};
    }
    /// The time of the end of a run of `model` with what was read behind it.
    double endOfRun(const std::string& globalCode = {}) {
        EXPECT_EQ(runShortly(globalCode), "");
        return network.runStatistics->getMeans().front();
    }
};

// ---- large lines

TEST_F(cModelReaderFailuresTest, aLineOfTenMegabytesWithoutABlankIsSkipped) {
    const cModelReading reading = readText(model + std::string(large, 'x') + "\nDURATION C1 7;\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(endOfRun(), 7.0);
}

TEST_F(cModelReaderFailuresTest, aLineOfTenMegabytesOfWordsIsOneValue) {
    const cModelReading reading = readText(model + "DRAWORDER L1 " + toLargeSize("1 ") + ";\nDURATION C1 7;\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(rule("L1", eLinkRule::drawOrder), std::string(large / 2, '1'));
    EXPECT_EQ(endOfRun(), 7.0);
}

TEST_F(cModelReaderFailuresTest, aListOfStatementsOfTenMegabytesOnOneLineIsItsFirstStatement) {
    const cModelReading reading = readText(model + toLargeSize("COMBI C2;") + "\nDURATION C1 7;\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(network.elements.size(), 4U);
    EXPECT_EQ(combi("C1").getDurationText(), "7");
}

TEST_F(cModelReaderFailuresTest, aListOfPropertiesOfTenMegabytesOnOneLineIsOneExpression) {
    const cModelReading reading = readText(model + toLargeSize("DURATION C1 5;") + "\nPRIORITY C1 7;\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(combi("C1").getDurationText().substr(0, 14), "5DURATIONC15DU");
    EXPECT_EQ(endOfRun(), 5.0);  // a number with rubbish behind it
}

TEST_F(cModelReaderFailuresTest, messagesStayShortWhateverTheLine) {
    const std::string word(megabyte, 'x');
    const cModelReading reading =
        readText(model + "DURATION " + word + " 5;\nCOMBI " + word + "2;\nSAVEPROPS" + word + ";\nQUEUE Q2 " + word +
                 ";\nDURATION C1 " + word + ");\nRANKCOUNT " + word + ";\nDRAWLINK " + word + ' ' + word + ' ' + word +
                 "3 " + word + ";\n" + word + " FORK ;\n");

    EXPECT_EQ(reading.warnings.size(), 12U);
    for (const cModelWarning& warning : reading.warnings) EXPECT_LT(warning.message.size(), 300U) << warning.line;
}

TEST_F(cModelReaderFailuresTest, messagesHoldNoControlCharacters) {
    const cModelReading reading = readText("COMBI a\x1B[2Jb;\nDURATION c\rd\x7F 5;\nPRIORITY e\0f 5;\n"s);

    EXPECT_EQ(warningTexts(reading),
              (cTexts{"1: the name \"a?[2Jb\" is taken or not a name; the element is called \"Combi1\"",
                      "2: there is no element \"c?d?\"", "3: there is no element \"e?f\""}));
}

// ---- large expressions

struct cExpressionCase {
    const char* name;
    std::string text;
    const char* warning;  // behind line, property and text; empty if there is none
    double duration;      // of the Combi
};

std::ostream& operator<<(std::ostream& stream, const cExpressionCase& row) { return stream << row.name; }

constexpr std::size_t many = 100000;

const cExpressionCase expressions[]{
    {"brackets", std::string(many, '(') + '7' + std::string(many, ')'), "", 7.0},
    {"squareBrackets", std::string(many, '[') + '7' + std::string(many, ']'), "", 7.0},
    {"openingBrackets", std::string(many, '(') + '7', "Operator or Function not recognized.", 0.0},
    {"closingBrackets", '7' + std::string(many, ')'), "not an expression", 0.0},
    {"crossedBrackets", repeated("([", many) + '7' + repeated(")]", many), "not an expression", 0.0},
    {"sums", repeated("1+", many) + '1', "", 100001.0},
    {"sumsInBrackets", repeated("(1+", many) + '1' + std::string(many, ')'), "", 100001.0},
    {"signs", std::string(many, '-') + '1', "Incorrect number of arguments for operator or function in:----", 0.0},
    {"commas", std::string(many, ',') + '1', "not an expression", 0.0},
    {"functions", repeated("Uniform(", many) + '7' + repeated(",7)", many), "", 7.0},
    {"openFunctions", repeated("Uniform(", many), "Operator or Function not recognized.", 0.0},
    {"pathOfManyParts", "7+" + repeated("a.", many), "", 7.0},
    {"longNames", std::string(many, 'n') + '+' + std::string(many, 'N') + "+7", "", 7.0},
    {"manyDigits", "7+0." + std::string(many, '0') + '1', "", 7.0},
    {"quotes", std::string(many, '\''), "", 0.0},
};

class cLargeExpressionTest : public cModelReaderFailuresTest, public ::testing::WithParamInterface<cExpressionCase> {};

TEST_P(cLargeExpressionTest, isCompiledWithoutRecursionAndToldOfIfItFails) {
    const cModelReading reading = readText(model + "DURATION C1 " + GetParam().text + ";\nPRIORITY C1 7;\n");

    const std::string warning = GetParam().warning;
    const std::string text = GetParam().text.substr(0, 60) + "...";
    const cTexts told = warningTexts(reading);
    ASSERT_EQ(told.size(), warning.empty() ? 0U : 1U);
    EXPECT_TRUE(told.empty() || told[0].starts_with("7: DURATION of \"C1\", \"" + text + "\": " + warning)) << told[0];
    EXPECT_EQ(combi("C1").getDurationText(), GetParam().text);
    EXPECT_EQ(combi("C1").getPriorityText(), "7");
    EXPECT_EQ(runShortly({}).empty(), warning.empty());
    EXPECT_EQ(network.simTime, 0.0);  // a failed run stands at its beginning, a finished one is reset
    if (warning.empty()) {
        EXPECT_EQ(network.runStatistics->getMeans().front(), GetParam().duration);
    }
}

INSTANTIATE_TEST_SUITE_P(expressions, cLargeExpressionTest, ::testing::ValuesIn(expressions),
                         [](const auto& row) { return std::string(row.param.name); });

// ---- large names

TEST_F(cModelReaderFailuresTest, aNameOfAMegabyteIsRefusedAndFoundAllTheSame) {
    const std::string name(megabyte, 'n');

    const cModelReading reading =
        readText(model + "COMBI " + name + ";\nDURATION " + name + " 7;\nDRAWLINK L2 Q1 " + name + ";\n");

    EXPECT_EQ(warningTexts(reading), cTexts{"7: the name \"" + name.substr(0, 60) +
                                            "...\" is taken or not a name; the element is called \"Combi4\""});
    EXPECT_EQ(combi(name).getDurationText(), "7");
    EXPECT_EQ(link("L2").getSuccNode(), &combi(name));
    EXPECT_EQ(runShortly({}), "");
}

TEST_F(cModelReaderFailuresTest, typesLinksAndFusionQueuesOfAMegabyteAreRead) {
    const std::string name(megabyte, 'n');

    readText(model + "GENTYPE " + name + ";\nQUEUE Q2 " + name + ";\nFUSIONQUEUE " + name + " Q2;\nDRAWLINK " + name +
             "L " + name + " C1;\nPOSLINK " + name + "L 1 2 0 0;\nPOSNODE " + name + " 1 2;\n");

    EXPECT_EQ(queue("Q2").getResType()->getTypeName(), name);
    EXPECT_EQ(link(name + 'L').getPredNode(), &queue("Q2"));
    EXPECT_EQ(runShortly({}), "");
}

// ---- many lines

TEST_F(cModelReaderFailuresTest, aMillionEmptyLinesAreCounted) {
    const cModelReading reading = readText(std::string(megabyte, '\n') + "DURATION Nope 5;\n" + model);

    EXPECT_EQ(warningTexts(reading), cTexts{"1000001: there is no element \"Nope\""});
    EXPECT_EQ(endOfRun(), 2.0);
}

TEST_F(cModelReaderFailuresTest, aMillionLinesOfBlanksAreCounted) {
    const cModelReading reading = readText(repeated(" ;\r\n", megabyte) + "DURATION Nope 5;\n" + model);

    EXPECT_EQ(warningTexts(reading), cTexts{"1000001: there is no element \"Nope\""});
}

TEST_F(cModelReaderFailuresTest, everyOneOfManyFaultsIsTold) {
    const cModelReading reading = readText(model + repeated("DURATION Nope 5;\n", many));

    EXPECT_EQ(reading.warnings.size(), many);
    EXPECT_EQ(reading.warnings.back().line, many + 6);
}

TEST_F(cModelReaderFailuresTest, manyElementsOfOneNameLeaveTheLast) {
    readText(model + repeated("QUEUE Q1 Soil;\n", many) + "TBINITIALCONTENT Q1 5;\n");

    EXPECT_EQ(network.elements.size(), 3U);
    EXPECT_EQ(queue("Q1").getName(), "Queue" + std::to_string(many + 3));
    EXPECT_EQ(queue("Q1").getInitialContentText(), "5");
    EXPECT_EQ(network.findResourceType("Soil")->getHolders().size(), 2U);  // the last one and the link
}

// ---- large code

TEST_F(cModelReaderFailuresTest, tenMegabytesOfCodeWithoutASemicolonAreOneStatementThatDoesNothing) {
    const cModelReading reading = readText(model + "<CODE>\n" + toLargeSize("words without an end \n") + "<CODE>\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_GT(reading.globalCode.size(), large - 100);
    EXPECT_EQ(endOfRun(reading.globalCode), 2.0);
}

TEST_F(cModelReaderFailuresTest, tenMegabytesOfDeclarationWithoutASemicolonAreOneThatFails) {
    const cModelReading reading = readText(model + "<CODE>\nSAVEVALUE x \n" + toLargeSize("1 \n") + "<CODE>\n");

    ASSERT_EQ(reading.warnings.size(), 1U);
    EXPECT_EQ(reading.warnings[0].line, 7U);
    EXPECT_TRUE(reading.warnings[0].message.starts_with("declaration \"SAVEVALUE x 1 1 1 "));
    EXPECT_TRUE(runShortly(reading.globalCode).starts_with("Syntax error in statement:\nSAVEVALUE x 1 1 1 "));
}

TEST_F(cModelReaderFailuresTest, tenMegabytesOfCodeOnOneLineGiveAStatementForEachLineBehindThem) {
    const cModelReading reading =
        readText(model + "<CODE>\n" + toLargeSize("SAVEVALUE x 1;") + "\n\n\nSAVEVALUE y 2;\n<CODE>\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(network.saveValues.size(), 1U);
    EXPECT_EQ(endOfRun(reading.globalCode), 2.0);
}

TEST_F(cModelReaderFailuresTest, tenMegabytesOfCodeOnManyLinesAreAllDeclared) {
    const cModelReading reading =
        readText(model + "<CODE>\nSAVEVALUE x 0;\n" + toLargeSize("SAVEVALUE x x+1;\n") + "<CODE>\n");

    EXPECT_EQ(warningTexts(reading), cTexts{});
    EXPECT_EQ(network.evaluate("x"), static_cast<double>(large / 17));
}

TEST_F(cModelReaderFailuresTest, tenMegabytesOfCommentAreNoCode) {
    const cModelReading reading = readText(model + "<CODE>\n" + toLargeSize("\\ SAVEVALUE x 1;\n") + "<CODE>\n");

    EXPECT_TRUE(network.saveValues.empty());
    EXPECT_EQ(endOfRun(reading.globalCode), 2.0);
}

TEST_F(cModelReaderFailuresTest, tenMegabytesOfCodeThatIsNeverClosedAreCode) {
    const cModelReading reading = readText(model + "<CODE>\n" + toLargeSize("POST x;\n"));

    EXPECT_EQ(warningTexts(reading), cTexts{"7: the code has no closing <CODE>; the last line of the file is lost"});
    EXPECT_EQ(reading.globalCode.size(), large - 8);
}

TEST_F(cModelReaderFailuresTest, manyBlocksOfCodeAreTakenOneAfterAnother) {
    const cModelReading reading = readText(model + repeated("<CODE>\nSAVEVALUE x 1;\n<CODE>\n", many));

    EXPECT_EQ(calls({"code"}).size(), many);
    EXPECT_EQ(reading.globalCode, "SAVEVALUE x 1;\n");
}

// ---- spoilt models

/// Spoils a text in one of many ways, the same ones in every run: the generator's numbers are fixed by its standard.
class cSpoiler {
public:
    std::string spoil(std::string text) {
        for (std::size_t i = 0; i <= below(3); ++i) spoilOnce(text);
        return text;
    }

private:
    std::size_t below(std::size_t end) { return end == 0 ? 0 : numbers() % end; }

    void spoilOnce(std::string& text) {
        switch (below(8)) {
            case 0: return flipBit(text);
            case 1: return text.resize(below(text.size()));
            case 2: return cutOutLines(text);
            case 3: return swapWords(text);
            case 4: return replaceWord(text, strangeWord());
            case 5: return replaceWord(text, wordAt(text, below(text.size())));
            case 6: return repeatLines(text);
            default: text.insert(below(text.size()), strangeWord());
        }
    }
    void flipBit(std::string& text) {
        if (text.empty()) return;
        char& spoilt = text[below(text.size())];
        spoilt = static_cast<char>(static_cast<unsigned char>(spoilt) ^ (1U << below(8)));
    }
    void cutOutLines(std::string& text) {
        const std::size_t begin = text.find('\n', below(text.size()));
        if (begin != std::string::npos) text.erase(begin, below(200));
    }
    void repeatLines(std::string& text) {
        const std::string piece = text.substr(below(text.size()), below(500));
        text.insert(below(text.size()), piece);
    }
    void swapWords(std::string& text) {
        const std::string one = wordAt(text, below(text.size()));
        replaceWord(text, one);
    }
    void replaceWord(std::string& text, const std::string& word) {
        const std::size_t place = below(text.size());
        const std::string replaced = wordAt(text, place);
        const std::size_t begin = text.find(replaced, place < replaced.size() ? 0 : place - replaced.size());
        if (begin != std::string::npos) text.replace(begin, replaced.size(), word);
    }
    /// The word around a place, or what separates words there.
    static std::string wordAt(const std::string& text, std::size_t place) {
        constexpr const char* separators = " ;,()\n";
        std::size_t begin = text.find_last_of(separators, place);
        begin = begin == std::string::npos ? 0 : begin + 1;
        return text.substr(begin, text.find_first_of(separators, begin) - begin);
    }
    std::string strangeWord() {
        static const cTexts words{"-1",
                                  "0",
                                  "1e308",
                                  "nan",
                                  "inf",
                                  "99999999999",
                                  "(",
                                  ")",
                                  ";",
                                  " ",
                                  "\\",
                                  "'",
                                  "\n",
                                  std::string(1, '\0'),
                                  "1/0",
                                  "Rnd()",
                                  "Pert(0,0,0)",
                                  "GET(\"x\")",
                                  "PredNode.Count",
                                  "<CODE>",
                                  "SAVEPROPS",
                                  "QUEUE ",
                                  "COMBI",
                                  "FUSIONQUEUE",
                                  "MULTISIM 3;",
                                  "SIMULATE;",
                                  "PRINT log \"%99d%s%f\" 1;",
                                  "ONENTRY",
                                  "IF 1",
                                  "SAVEVALUE a a+1;",
                                  "VARIABLE v v;",
                                  "RANKCOUNT 899999999;",
                                  "COMPTYPE",
                                  "TBINITIALCONTENT",
                                  "nDraws",
                                  "\xFF\xFE"};
        return words[below(words.size())];
    }

    std::mt19937 numbers{20240229};
};

std::string fileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What became of spoilt models.
struct cTally {
    int warned = 0;
    int failed = 0;  // in the run
    int finished = 0;
};

/// Reads a spoilt text as a program would, and runs what there is for a while.
void readAndRun(const std::string& text, cTally& tally) {
    cTestNetwork network;
    cEngineBuilder builder(network);
    std::istringstream stream(text);
    const auto lineCount = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    network.stopAtHostEvent = 5;
    try {
        const cModelReading reading = readModel(stream, builder);
        if (!reading.warnings.empty()) ++tally.warned;
        for (const cModelWarning& warning : reading.warnings) {
            EXPECT_LE(warning.line, lineCount);
            EXPECT_FALSE(warning.message.empty());
        }
        network.run(reading.globalCode);
        ++tally.finished;
    } catch (const cException& failure) {
        EXPECT_GE(failure.code, 0);
        EXPECT_LE(failure.code, failureCode::userStop);
        ++tally.failed;
    }
}

TEST(spoiltModelsTest, areReadAndRunAndNeverEndTheProgram) {
    cTexts models{model};
    const std::filesystem::path examples = std::filesystem::path(TIMBERSIM_SOURCE) / "examples";
    for (const char* name : {"concrete-pour", "earthmoving", "paving", "precast-yard", "quarry", "tunnel-mucking"})
        models.push_back(fileText(examples / (std::string(name) + ".tbsmx")));
    cSpoiler spoiler;
    cTally tally;

    for (int i = 0; i < 100; ++i)
        for (const std::string& whole : models) readAndRun(spoiler.spoil(whole), tally);

    EXPECT_EQ(tally.failed + tally.finished, 700);
    EXPECT_GT(tally.warned, 50);
    EXPECT_GT(tally.failed, 50);
    EXPECT_GT(tally.finished, 20);
}

}  // namespace
