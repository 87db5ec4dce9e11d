#include "model/modelStatement.h"

#include <gtest/gtest.h>

namespace {

using cWords = std::vector<std::string>;

cWords wordsOf(const cModelStatement& statement) {
    cWords words;
    for (std::size_t i = 0; i < statement.size(); ++i) words.push_back(statement.word(i));
    return words;
}

// ---- words

struct cSplit {
    std::string line;
    cWords words;
};

class cStatementWordsTest : public ::testing::TestWithParam<cSplit> {};

TEST_P(cStatementWordsTest, arePartedByBlanksAndSemicolons) {
    EXPECT_EQ(wordsOf(cModelStatement(GetParam().line)), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(lines, cStatementWordsTest,
                         ::testing::Values(cSplit{"QUEUE Q1 Soil;", {"QUEUE", "Q1", "Soil"}},
                                           cSplit{"QUEUE Q1 Soil", {"QUEUE", "Q1", "Soil"}},
                                           cSplit{"  QUEUE   Q1;;Soil ; ", {"QUEUE", "Q1", "Soil"}},
                                           cSplit{"QUEUE;Q1;Soil", {"QUEUE", "Q1", "Soil"}}, cSplit{"", {}},
                                           cSplit{" ; ;; ", {}}, cSplit{"PRIORITY C1 ;", {"PRIORITY", "C1"}},
                                           cSplit{"QUEUE\tQ1\tSoil;", {"QUEUE\tQ1\tSoil"}},  // a tab parts nothing
                                           cSplit{"a,b (c)\r;", {"a,b", "(c)\r"}},
                                           cSplit{std::string("a\0b c", 5), {std::string("a\0b", 3), "c"}}));

TEST(modelStatementTest, aWordThatIsNotThereIsEmpty) {
    const cModelStatement statement("COMBI C1;");

    EXPECT_EQ(statement.word(2), "");
    EXPECT_EQ(statement.word(1000), "");
    EXPECT_EQ(cModelStatement("").word(0), "");
}

// ---- values

struct cValueCase {
    const char* line;
    const char* value;
    cWords left;
};

class cTakenValueTest : public ::testing::TestWithParam<cValueCase> {};

TEST_P(cTakenValueTest, isTheRestWithoutBlanksAndLeavesThatRestAsWords) {
    cModelStatement statement(GetParam().line);

    const std::string value = statement.takeValue();

    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(wordsOf(statement), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(statements, cTakenValueTest,
                         ::testing::Values(cValueCase{"DURATION C1 5;", "5", {"5"}},
                                           cValueCase{"DURATION C1 1 + 2;", "1+2", {"1", "+", "2"}},
                                           cValueCase{"DURATION C1 1;2;", "12", {"1", "2"}},
                                           cValueCase{"DURATION C1 ;", "", {}}, cValueCase{"DURATION C1", "", {}},
                                           cValueCase{"DURATION", "", {}}, cValueCase{"", "", {}},
                                           cValueCase{"DURATION C1 ENOUGH L1 3;", "ENOUGHL13", {"ENOUGH", "L1", "3"}}));

TEST(modelStatementTest, theRestOfTheWordsHasABlankBehindEach) {
    const cModelStatement statement("SAVEPROPS Truck Load   Age;Trips;");

    EXPECT_EQ(statement.rest(2), "Load Age Trips ");
    EXPECT_EQ(statement.rest(4), "Trips ");
    EXPECT_EQ(statement.rest(5), "");
    EXPECT_EQ(statement.rest(9), "");
}

// ---- element keywords

struct cKeywordCase {
    const char* line;
    bool found;
};

class cElementKeywordTest : public ::testing::TestWithParam<cKeywordCase> {};

TEST_P(cElementKeywordTest, isFoundAnywhereWithABlankBehindIt) {
    EXPECT_EQ(holdsElementKeyword(GetParam().line), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(atTheBeginning, cElementKeywordTest,
                         ::testing::Values(cKeywordCase{"COMBI a", true}, cKeywordCase{"NORMAL a", true},
                                           cKeywordCase{"CONSOLIDATOR a", true}, cKeywordCase{"QUEUE a", true},
                                           cKeywordCase{"ASSEMBLER a", true}, cKeywordCase{"DISASSEMBLER a", true},
                                           cKeywordCase{"FORK a", true}, cKeywordCase{"DYNAFORK a", true},
                                           cKeywordCase{"FUSIONQUEUE a", true}, cKeywordCase{"RELEASELINK a", true},
                                           cKeywordCase{"DRAWLINK a", true}, cKeywordCase{"FLOWLINK a", true}));

INSTANTIATE_TEST_SUITE_P(inTheMiddle, cElementKeywordTest,
                         ::testing::Values(cKeywordCase{"POSNODE MYQUEUE 1 2;", true},
                                           cKeywordCase{"DURATION XCOMBI 5;", true},
                                           cKeywordCase{"DURATION C1 NORMAL [1,2];", true},
                                           cKeywordCase{"a;FORK ", true}));

INSTANTIATE_TEST_SUITE_P(notThere, cElementKeywordTest,
                         ::testing::Values(cKeywordCase{"", false}, cKeywordCase{"COMBI", false},
                                           cKeywordCase{"COMBI;", false}, cKeywordCase{"COMBI\tC1;", false},
                                           cKeywordCase{"POSNODE QUEUE1 1 2;", false},
                                           cKeywordCase{"DURATION C1 Normal (1,2);", false},
                                           cKeywordCase{"DURATION Queue 5;", false},
                                           cKeywordCase{"POSLINK L1 3 11 0 MYQUEUE;", false},
                                           cKeywordCase{"LINK a", false}, cKeywordCase{"GENTYPE Soil;", false}));

}  // namespace
