#include "batch/commandLine.h"

#include "batch/exitStatus.h"

#include <gtest/gtest.h>

namespace {

using cWords = std::vector<std::string>;

std::variant<cRunOptions, cEarlyEnd> parse(cWords words) {
    words.insert(words.begin(), "timbersim-run");
    std::vector<const char*> arguments;
    for (const std::string& word : words) arguments.push_back(word.c_str());
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

/// The options that `words` give. Fails the test if they are refused.
cRunOptions optionsOf(const cWords& words) {
    const auto parsed = parse(words);
    if (const auto* end = std::get_if<cEarlyEnd>(&parsed)) {
        ADD_FAILURE() << end->text;
        return {};
    }
    return std::get<cRunOptions>(parsed);
}

/// What `words` are refused with, without the program's name and the hint behind it. Fails the test if they are taken.
std::string refusalOf(const cWords& words) {
    const auto parsed = parse(words);
    const auto* end = std::get_if<cEarlyEnd>(&parsed);
    if (end == nullptr || end->status != exitStatus::wrongUsage) {
        ADD_FAILURE() << "the command line was not refused as wrong usage";
        return {};
    }
    const std::string opening = "timbersim-run: ";
    EXPECT_TRUE(end->text.starts_with(opening));
    EXPECT_TRUE(end->text.ends_with("\nRun timbersim-run --help for the options.\n"));
    return end->text.substr(opening.size(), end->text.find("\nRun ") - opening.size());
}

}  // namespace

TEST(commandLineTest, modelAloneAsksForNothingElse) {
    const cRunOptions options = optionsOf({"site.tbsmx"});

    EXPECT_EQ(options.modelPath, "site.tbsmx");
    EXPECT_FALSE(options.replications || options.seed);
    EXPECT_TRUE(options.codePaths.empty() && options.statements.empty() && options.answers.empty());
    EXPECT_FALSE(options.jsonPath || options.csvPath || options.replicationsCsvPath);
    EXPECT_FALSE(options.printsPath || options.tracePath);
    EXPECT_FALSE(options.isQuiet || options.isServing);
    EXPECT_FALSE(options.usesStandardOutput());
}

TEST(commandLineTest, everyOptionIsTaken) {
    const cRunOptions options =
        optionsOf({"--replications", "12", "--seed", "7", "--json", "a", "--csv", "b", "--replications-csv", "c",
                   "--prints", "d", "--trace", "e", "--quiet", "site.tbsmx"});

    EXPECT_EQ(options.modelPath, "site.tbsmx");
    EXPECT_EQ(options.replications, 12);
    EXPECT_EQ(options.seed, 7U);
    EXPECT_EQ(options.jsonPath, "a");
    EXPECT_EQ(options.csvPath, "b");
    EXPECT_EQ(options.replicationsCsvPath, "c");
    EXPECT_EQ(options.printsPath, "d");
    EXPECT_EQ(options.tracePath, "e");
    EXPECT_TRUE(options.isQuiet);
}

TEST(commandLineTest, servingNeedsNoModel) {
    const cRunOptions options = optionsOf({"--serve"});

    EXPECT_TRUE(options.isServing);
    EXPECT_EQ(options.modelPath, "");
}

TEST(commandLineTest, servingTakesAModelAndASeed) {
    const cRunOptions options = optionsOf({"--serve", "site.tbsmx", "--seed", "7"});

    EXPECT_TRUE(options.isServing);
    EXPECT_EQ(options.modelPath, "site.tbsmx");
    EXPECT_EQ(options.seed, 7U);
}

TEST(commandLineTest, repeatedOptionsKeepTheirOrderAndTakeOneWordEach) {
    const cRunOptions options =
        optionsOf({"--code", "one", "-e", "SEED 1", "--code", "two", "-e", "SEED 2;", "site.tbsmx"});

    EXPECT_EQ(options.codePaths, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(options.statements, (std::vector<std::string>{"SEED 1", "SEED 2;"}));
    EXPECT_EQ(options.modelPath, "site.tbsmx");
}

TEST(commandLineTest, answersAreNumbersByKeyAndTheLaterOneHolds) {
    const cRunOptions options = optionsOf({"m", "--get", "Trucks=4", "--get", "rate=-1.5e-3", "--get", "Trucks=6"});

    EXPECT_EQ(options.answers, (std::map<std::string, double>{{"Trucks", 6.0}, {"rate", -0.0015}}));
}

struct cLimit {
    const char* option;
    const char* text;
};

void PrintTo(const cLimit& row, std::ostream* stream) { *stream << row.option << ' ' << row.text; }

class cLargestNumberTest : public ::testing::TestWithParam<cLimit> {};

TEST_P(cLargestNumberTest, isTaken) {
    const cRunOptions options = optionsOf({"m", GetParam().option, GetParam().text});

    const std::string taken = options.seed ? std::to_string(*options.seed) : std::to_string(*options.replications);
    EXPECT_EQ(taken, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(limits, cLargestNumberTest,
                         ::testing::Values(cLimit{"--replications", "1"}, cLimit{"--replications", "2147483647"},
                                           cLimit{"--seed", "0"}, cLimit{"--seed", "4294967295"}));

TEST(commandLineTest, standardOutputIsUsedByTheOptionThatNamesIt) {
    for (const char* option : {"--json", "--csv", "--replications-csv", "--trace"}) {
        SCOPED_TRACE(option);

        EXPECT_TRUE(optionsOf({"m", option, "-"}).usesStandardOutput());
    }
}

TEST(commandLineTest, devicesMayTakeSeveralOutputs) {
    const cRunOptions options = optionsOf({"m", "--json", "/dev/null", "--csv", "/dev/null"});

    EXPECT_EQ(options.jsonPath, options.csvPath);
}

TEST(commandLineTest, versionEndsTheProgramWell) {
    const auto parsed = parse({"--version"});

    const auto& end = std::get<cEarlyEnd>(parsed);
    EXPECT_EQ(end.status, exitStatus::done);
    EXPECT_EQ(end.text, std::string("timbersim-run ") + TIMBERSIM_VERSION + '\n');
}

TEST(commandLineTest, helpNamesEveryOption) {
    const auto parsed = parse({"--help"});

    const auto& end = std::get<cEarlyEnd>(parsed);
    EXPECT_EQ(end.status, exitStatus::done);
    for (const char* option :
         {"MODEL", "--replications N", "--seed N", "--code FILE", "-e STATEMENT", "--get KEY=VALUE", "--json FILE",
          "--csv FILE", "--replications-csv FILE", "--prints DIR", "--trace FILE", "--quiet", "--help", "--version"})
        EXPECT_NE(end.text.find(std::string("  ") + option), std::string::npos) << option;
}

struct cRefusal {
    cWords words;
    const char* reason;
};

void PrintTo(const cRefusal& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.words); }

class cRefusedUsageTest : public ::testing::TestWithParam<cRefusal> {};

TEST_P(cRefusedUsageTest, isRefusedWithItsReason) { EXPECT_EQ(refusalOf(GetParam().words), GetParam().reason); }

INSTANTIATE_TEST_SUITE_P(
    shape, cRefusedUsageTest,
    ::testing::Values(cRefusal{{}, "MODEL is required"}, cRefusal{{""}, "MODEL: the name of the file is empty"},
                      cRefusal{{"m", "--fast"}, "The following argument was not expected: --fast"},
                      cRefusal{{"m", "another"}, "The following argument was not expected: another"},
                      cRefusal{{"m", "--seed"}, "--seed: 1 required N missing"},
                      cRefusal{{"m", "--code", ""}, "--code: the name of the file is empty"}));

INSTANTIATE_TEST_SUITE_P(
    serving, cRefusedUsageTest,
    ::testing::Values(cRefusal{{"--serve", ""}, "MODEL: the name of the file is empty"},
                      cRefusal{{"--serve", "m", "--replications", "2"}, "--replications can't be given with --serve"},
                      cRefusal{{"--serve", "--code", "c"}, "--code can't be given with --serve"},
                      cRefusal{{"-e", "SEED 1", "--serve"}, "-e can't be given with --serve"},
                      cRefusal{{"--serve", "--get", "a=1"}, "--get can't be given with --serve"},
                      cRefusal{{"--serve", "m", "--json", "-"}, "--json can't be given with --serve"},
                      cRefusal{{"--serve", "m", "--csv", "f"}, "--csv can't be given with --serve"},
                      cRefusal{{"--serve", "--replications-csv", "f"},
                               "--replications-csv can't be given with --serve"},
                      cRefusal{{"--serve", "--prints", "d"}, "--prints can't be given with --serve"},
                      cRefusal{{"--serve", "--trace", "f"}, "--trace can't be given with --serve"},
                      cRefusal{{"--serve", "--quiet"}, "--quiet can't be given with --serve"}));

INSTANTIATE_TEST_SUITE_P(
    numbers, cRefusedUsageTest,
    ::testing::Values(
        cRefusal{{"m", "--replications", "0"}, "--replications: 0 is not a whole number from 1 to 2147483647"},
        cRefusal{{"m", "--replications", "-3"}, "--replications: -3 is not a whole number from 1 to 2147483647"},
        cRefusal{{"m", "--replications", "2147483648"},
                 "--replications: 2147483648 is not a whole number from 1 to 2147483647"},
        cRefusal{{"m", "--replications", "1e3"}, "--replications: 1e3 is not a whole number from 1 to 2147483647"},
        cRefusal{{"m", "--replications", ""}, "--replications:  is not a whole number from 1 to 2147483647"},
        cRefusal{{"m", "--seed", "-1"}, "--seed: -1 is not a whole number from 0 to 4294967295"},
        cRefusal{{"m", "--seed", "4294967296"}, "--seed: 4294967296 is not a whole number from 0 to 4294967295"},
        cRefusal{{"m", "--seed", "1.5"}, "--seed: 1.5 is not a whole number from 0 to 4294967295"},
        cRefusal{{"m", "--seed", " 1"}, "--seed:  1 is not a whole number from 0 to 4294967295"}));

INSTANTIATE_TEST_SUITE_P(
    answers, cRefusedUsageTest,
    ::testing::Values(cRefusal{{"m", "--get", "Trucks"}, "--get: Trucks is not of the form KEY=VALUE"},
                      cRefusal{{"m", "--get", "=4"}, "--get: =4 is not of the form KEY=VALUE"},
                      cRefusal{{"m", "--get", "Trucks="}, "--get: the value in Trucks= is not a number"},
                      cRefusal{{"m", "--get", "Trucks=4;"}, "--get: the value in Trucks=4; is not a number"},
                      cRefusal{{"m", "--get", "Trucks=four"}, "--get: the value in Trucks=four is not a number"}));

INSTANTIATE_TEST_SUITE_P(
    statements, cRefusedUsageTest,
    ::testing::Values(cRefusal{{"m", "-e", "SEED 1; SEED 2"},
                               "-e: give one statement at a time, with \";\" at its end only: SEED 1; SEED 2"},
                      cRefusal{{"m", "-e", "SEED 1;;"},
                               "-e: give one statement at a time, with \";\" at its end only: SEED 1;;"},
                      cRefusal{{"m", "-e", ""}, "-e: the statement is empty"},
                      cRefusal{{"m", "-e", " ;"}, "-e: the statement is empty"}));

INSTANTIATE_TEST_SUITE_P(
    places, cRefusedUsageTest,
    ::testing::Values(
        cRefusal{{"m", "--json", ""}, "--json: the name of the file is empty"},
        cRefusal{{"m", "--prints", ""}, "--prints: needs the name of a folder"},
        cRefusal{{"m", "--prints", "-"}, "--prints: needs the name of a folder"},
        cRefusal{{"m", "--csv", "-", "--json", "-"}, "--json and --csv can't both go to standard output"},
        cRefusal{{"m", "--json", "r", "--trace", "./r"}, "--trace would overwrite ./r, which is the file of --json"},
        cRefusal{{"m", "--csv", "./m"}, "--csv would overwrite ./m, which is the file of MODEL"},
        cRefusal{{"m", "--code", "c", "--csv", "c"}, "--csv would overwrite c, which is the file of --code"}));
