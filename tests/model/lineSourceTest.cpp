#include "model/lineSource.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

using cLines = std::vector<std::string>;

struct cCase {
    std::string text;
    cLines lines;
};

class cLinesOfTextTest : public ::testing::TestWithParam<cCase> {};

TEST_P(cLinesOfTextTest, areReadInOrder) {
    std::istringstream stream(GetParam().text);
    cLineSource source(stream);

    cLines lines;
    for (std::string line; source.next(line);) lines.push_back(line);

    EXPECT_EQ(lines, GetParam().lines);
    EXPECT_EQ(source.lineNumber(), lines.size());
}

INSTANTIATE_TEST_SUITE_P(lineFeeds, cLinesOfTextTest,
                         ::testing::Values(cCase{"", {}}, cCase{"\n", {""}}, cCase{"\n\n", {"", ""}},
                                           cCase{"one", {"one"}}, cCase{"one\n", {"one"}},
                                           cCase{"one\ntwo", {"one", "two"}}, cCase{"one\n\ntwo\n", {"one", "", "two"}},
                                           cCase{" one \n\ttwo", {" one ", "\ttwo"}}));

INSTANTIATE_TEST_SUITE_P(carriageReturns, cLinesOfTextTest,
                         ::testing::Values(cCase{"one\r\ntwo\r\n", {"one", "two"}}, cCase{"\r\n\r\n", {"", ""}},
                                           cCase{"one\r\r\n", {"one\r"}},      // one belongs to the line end, no more
                                           cCase{"one\rtwo\n", {"one\rtwo"}},  // alone it ends no line
                                           cCase{"one\n\rtwo\n", {"one", "\rtwo"}}));

INSTANTIATE_TEST_SUITE_P(byteOrderMarks, cLinesOfTextTest,
                         ::testing::Values(cCase{"\xEF\xBB\xBFone\ntwo", {"one", "two"}}, cCase{"\xEF\xBB\xBF", {""}},
                                           cCase{"\xEF\xBB\xBF\n", {""}},
                                           cCase{"\xEF\xBB\xBF\xEF\xBB\xBFone", {"\xEF\xBB\xBFone"}},
                                           cCase{"one\n\xEF\xBB\xBFtwo", {"one", "\xEF\xBB\xBFtwo"}},
                                           cCase{"\xEF\xBBone", {"\xEF\xBBone"}}));

INSTANTIATE_TEST_SUITE_P(zeroBytes, cLinesOfTextTest,
                         ::testing::Values(cCase{std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}},
                                           cCase{std::string("\0\n", 2), {std::string("\0", 1)}}));

TEST(lineSourceTest, numbersLinesFromOneAndBeginsBeforeTheFirst) {
    std::istringstream stream("one\n\nthree");
    cLineSource source(stream);
    std::string line;

    std::vector<std::size_t> numbers{source.lineNumber()};
    while (source.next(line)) numbers.push_back(source.lineNumber());

    EXPECT_EQ(numbers, (std::vector<std::size_t>{0, 1, 2, 3}));
}

TEST(lineSourceTest, theNumberStaysAtTheLastLineWhenThereIsNoMore) {
    std::istringstream stream("one");
    cLineSource source(stream);
    std::string line;
    source.next(line);

    EXPECT_FALSE(source.next(line));
    EXPECT_FALSE(source.next(line));
    EXPECT_EQ(source.lineNumber(), 1U);
}

struct cEndCase {
    std::string text;
    std::vector<bool> ends;  // before the first line, then behind each
};

class cEndOfTextTest : public ::testing::TestWithParam<cEndCase> {};

TEST_P(cEndOfTextTest, isSeenBehindTheLastLine) {
    std::istringstream stream(GetParam().text);
    cLineSource source(stream);

    std::vector<bool> ends{source.atEnd()};
    for (std::string line; source.next(line);) ends.push_back(source.atEnd());

    EXPECT_EQ(ends, GetParam().ends);
}

INSTANTIATE_TEST_SUITE_P(texts, cEndOfTextTest,
                         ::testing::Values(cEndCase{"", {true}}, cEndCase{"one", {false, true}},
                                           cEndCase{"one\n", {false, true}}, cEndCase{"one\ntwo", {false, false, true}},
                                           cEndCase{"one\n\n", {false, false, true}}));

TEST(lineSourceTest, askingForTheEndTakesNothing) {
    std::istringstream stream("one\ntwo");
    cLineSource source(stream);
    std::string line;

    const bool ended = source.atEnd() || source.atEnd();
    source.next(line);

    EXPECT_FALSE(ended);
    EXPECT_EQ(line, "one");
}

// ---- what is UTF-8

struct cBytesCase {
    std::string_view bytes;
    bool isUtf8;
};

class cUtf8Test : public ::testing::TestWithParam<cBytesCase> {};

TEST_P(cUtf8Test, isKnown) {
    const std::string bytes(GetParam().bytes);
    for (const std::string& text : {bytes, "a" + bytes, bytes + "z", bytes + "\xC3\xBC"})
        EXPECT_EQ(isUtf8(text), GetParam().isUtf8) << text;
}

INSTANTIATE_TEST_SUITE_P(texts, cUtf8Test,
                         ::testing::Values(cBytesCase{"", true}, cBytesCase{{"\0", 1}, true}, cBytesCase{"\x7F", true},
                                           cBytesCase{"\xC2\x80", true}, cBytesCase{"\xDF\xBF", true},
                                           cBytesCase{"\xE0\xA0\x80", true}, cBytesCase{"\xED\x9F\xBF", true},
                                           cBytesCase{"\xEE\x80\x80", true}, cBytesCase{"\xEF\xBF\xBF", true},
                                           cBytesCase{"\xF0\x90\x80\x80", true}, cBytesCase{"\xF4\x8F\xBF\xBF", true}));

INSTANTIATE_TEST_SUITE_P(otherBytes, cUtf8Test,
                         ::testing::Values(cBytesCase{"\x80", false}, cBytesCase{"\xBF", false},
                                           cBytesCase{"\xFC", false}, cBytesCase{"\xFF", false},
                                           cBytesCase{"\xC3", false}, cBytesCase{"\xE2\x82", false},
                                           cBytesCase{"\xF0\x9F\x98", false}, cBytesCase{"\xE2\x28\xA1", false},
                                           cBytesCase{"\xE2\x82\x28", false}, cBytesCase{"\xC0\x80", false},
                                           cBytesCase{"\xC1\xBF", false}, cBytesCase{"\xE0\x9F\xBF", false},
                                           cBytesCase{"\xF0\x8F\xBF\xBF", false}, cBytesCase{"\xED\xA0\x80", false},
                                           cBytesCase{"\xF4\x90\x80\x80", false},
                                           cBytesCase{"\xF5\x80\x80\x80", false}));

}  // namespace
