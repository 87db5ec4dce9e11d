#include "batch/runCode.h"

#include "language/compilation.h"

#include <gtest/gtest.h>

namespace {

using cLines = std::vector<std::string>;

struct cCodeCase {
    cLines codeTexts;
    cLines statements;
    cLines leading;
};

void PrintTo(const cCodeCase& row, std::ostream* stream) {
    *stream << ::testing::PrintToString(row.codeTexts) << ::testing::PrintToString(row.statements);
}

class cLeadingLinesTest : public ::testing::TestWithParam<cCodeCase> {};

}  // namespace

TEST_P(cLeadingLinesTest, holdOneWholeStatementEach) {
    EXPECT_EQ(leadingLines(GetParam().codeTexts, GetParam().statements), GetParam().leading);
}

INSTANTIATE_TEST_SUITE_P(
    code, cLeadingLinesTest,
    ::testing::Values(cCodeCase{{}, {}, {}}, cCodeCase{{"SEED 1;\nSEED 2;\n"}, {}, {"SEED 1;", "SEED 2;"}},
                      cCodeCase{{"SEED 1;\r\nSEED 2;\r\n"}, {}, {"SEED 1;", "SEED 2;"}},
                      cCodeCase{{"SAVEVALUE\n a 1; \\ a comment; with a semicolon\n"}, {}, {"SAVEVALUE a 1;", " ;"}},
                      cCodeCase{{}, {"SEED 1", "SEED 2;"}, {"SEED 1;", "SEED 2;"}},
                      cCodeCase{{}, {"SEED 1 \\ as always"}, {"SEED 1 ;"}},
                      cCodeCase{{"SEED 1;", "SEED 2;"}, {"SEED 3"}, {"SEED 1;", "SEED 2;", "SEED 3;"}}));

INSTANTIATE_TEST_SUITE_P(
    textsKeptApart, cLeadingLinesTest,
    ::testing::Values(cCodeCase{{"SEED 1", "SEED 2"}, {"SEED 3"}, {"SEED 1;", "SEED 2;", "SEED 3;"}},
                      cCodeCase{{"SEED 1; SEED 2; SEED 3;", "SEED 4;"},
                                {"SEED 5"},
                                {"SEED 1;", " SEED 2;", " SEED 3;", "SEED 4;", "SEED 5;"}},
                      cCodeCase{{"SEED 1; SEED 2"}, {"SEED 3"}, {"SEED 1;", " SEED 2;", "SEED 3;"}}));

TEST(leadingLinesTest, compileToTheSameStatementsAgain) {
    const cLines leading = leadingLines({"SEED 1; SEED 2;\nSEED\n 3"}, {"SEED 4"});

    EXPECT_EQ(statementTexts(leading), (cLines{"SEED 1", " SEED 2", "SEED 3", "SEED 4"}));
}
