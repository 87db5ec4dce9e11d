#include "language/words.h"

#include <gtest/gtest.h>

#include <locale>

namespace {

using cWords = std::vector<std::string>;

struct cSplit {
    std::string text;
    cWords words;
};

void PrintTo(const cSplit& row, std::ostream* stream) { *stream << ::testing::PrintToString(row.text); }

class cTokeniseStatementTest : public ::testing::TestWithParam<cSplit> {};

TEST_P(cTokeniseStatementTest, splitsInto) { EXPECT_EQ(tokeniseStatement(GetParam().text), GetParam().words); }

INSTANTIATE_TEST_SUITE_P(whiteSpace, cTokeniseStatementTest,
                         ::testing::Values(cSplit{"", {}}, cSplit{" \t\n ", {}}, cSplit{"SEED 5", {"SEED", "5"}},
                                           cSplit{"  SEED   5  ", {"SEED", "5"}},
                                           cSplit{"SEED\t5\n6", {"SEED", "5", "6"}},
                                           cSplit{"a\r\vb\fc", {"a", "b", "c"}}));

INSTANTIATE_TEST_SUITE_P(
    singleQuotes, cTokeniseStatementTest,
    ::testing::Values(cSplit{"SAVEVALUE x 'a + b'", {"SAVEVALUE", "x", "'a + b'"}},
                      cSplit{"'a   +\tb' c", {"'a + b'", "c"}},       // one blank between, whatever stood there
                      cSplit{"x '1+2' y", {"x", "'1+2' y"}},          // closed in itself, it goes on all the same
                      cSplit{"'1+2' y z' w", {"'1+2' y z'", "w"}},    // up to the next word with a quote
                      cSplit{"'1+2' '3+4' w", {"'1+2' '3+4'", "w"}},  // which closes, and opens nothing
                      cSplit{"it's here and there", {"it's here and there"}},  // a quote inside a word opens too
                      cSplit{"a b'", {"a", "b'"}},                             // nothing left to swallow
                      cSplit{"' a ' b", {"' a '", "b"}}, cSplit{"'", {"'"}}, cSplit{"' '", {"' '"}},
                      cSplit{"'a b'c d", {"'a b'c", "d"}}, cSplit{"''a b''c d", {"''a b''c", "d"}}));

INSTANTIATE_TEST_SUITE_P(doubleQuotesMeanNothing, cTokeniseStatementTest,
                         ::testing::Values(cSplit{"PRINT log \"t = %f\" x",
                                                  {"PRINT", "log", "\"t", "=", "%f\"", "x"}}));

TEST(tokeniseStatementTest, takesAMillionBlanksAndAMillionLetters) {
    const std::string letters(1000000, 'x');

    const cWords words = tokeniseStatement(letters + std::string(1000000, ' ') + letters);

    EXPECT_EQ(words, (cWords{letters, letters}));
}

/// A C++ locale to which the letter x is white space.
class cOddSpaces : public std::ctype<char> {
public:
    cOddSpaces() : std::ctype<char>(oddTable()) {}

private:
    static const mask* oddTable() {
        static const std::vector<mask> table = [] {
            std::vector<mask> masks(classic_table(), classic_table() + table_size);
            masks['x'] = space;
            return masks;
        }();
        return table.data();
    }
};

TEST(tokeniseStatementTest, splitsTheSameUnderAnyLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new cOddSpaces));

    const cWords words = tokeniseStatement("SAVEVALUE axb 1");

    std::locale::global(before);
    EXPECT_EQ(words, (cWords{"SAVEVALUE", "axb", "1"}));
}

class cSplitNameTest : public ::testing::TestWithParam<cSplit> {};

TEST_P(cSplitNameTest, splitsInto) { EXPECT_EQ(splitName(GetParam().text), GetParam().words); }

INSTANTIATE_TEST_SUITE_P(names, cSplitNameTest,
                         ::testing::Values(cSplit{"", {}}, cSplit{"A", {"A"}}, cSplit{"A.", {"A"}},
                                           cSplit{"A.B", {"A", "B"}}, cSplit{"A.B.C", {"A", "B", "C"}},
                                           cSplit{".", {""}}, cSplit{"..", {"", ""}}, cSplit{".A", {"", "A"}},
                                           cSplit{"A..B", {"A", "", "B"}}, cSplit{"A.B.", {"A", "B"}},
                                           cSplit{" ", {" "}}, cSplit{"A. ", {"A", " "}}));

TEST(joinWordsTest, eachWordIsFollowedByOneBlank) { EXPECT_EQ(joinWords({"a", "b", "c"}, 0), "a b c "); }

TEST(joinWordsTest, beginsAtTheIndexGiven) { EXPECT_EQ(joinWords({"a", "b", "c"}, 2), "c "); }

TEST(joinWordsTest, isEmptyBehindTheLastWord) {
    EXPECT_EQ(joinWords({"a", "b"}, 2), "");
    EXPECT_EQ(joinWords({"a", "b"}, 7), "");
    EXPECT_EQ(joinWords({}, 0), "");
}

class cSplitLinesTest : public ::testing::TestWithParam<cSplit> {};

TEST_P(cSplitLinesTest, splitsInto) { EXPECT_EQ(splitLines(GetParam().text), GetParam().words); }

INSTANTIATE_TEST_SUITE_P(texts, cSplitLinesTest,
                         ::testing::Values(cSplit{"", {""}}, cSplit{"a", {"a"}}, cSplit{"a\n", {"a", ""}},
                                           cSplit{"a\nb", {"a", "b"}}, cSplit{"\n\n", {"", "", ""}},
                                           cSplit{"a\r\nb", {"a\r", "b"}}));

}  // namespace
