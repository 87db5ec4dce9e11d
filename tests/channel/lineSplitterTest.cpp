#include "channel/lineSplitter.h"

#include <gtest/gtest.h>

namespace {

using cLine = std::optional<std::string>;

}  // namespace

TEST(lineSplitterTest, linesEndAtLineFeedsAlone) {
    cLineSplitter lines;
    lines.append("one;\ntwo\r\n\n");

    EXPECT_EQ(lines.next(), cLine("one;"));
    EXPECT_EQ(lines.next(), cLine("two\r"));
    EXPECT_EQ(lines.next(), cLine(""));
    EXPECT_EQ(lines.next(), std::nullopt);
    EXPECT_EQ(lines.rest(), std::nullopt);
}

TEST(lineSplitterTest, lineThatComesInPiecesIsWhole) {
    cLineSplitter lines;
    lines.append("first\nRUN");
    EXPECT_EQ(lines.next(), cLine("first"));
    EXPECT_EQ(lines.next(), std::nullopt);
    lines.append("MODEL");
    EXPECT_EQ(lines.next(), std::nullopt);
    lines.append(";\nnext");

    EXPECT_EQ(lines.next(), cLine("RUNMODEL;"));
    EXPECT_EQ(lines.next(), std::nullopt);
}

TEST(lineSplitterTest, whatStandsBehindTheLastLineFeedIsTheRest) {
    cLineSplitter lines;
    lines.append("one\nCLOSE;");
    EXPECT_EQ(lines.next(), cLine("one"));
    EXPECT_EQ(lines.next(), std::nullopt);

    EXPECT_EQ(lines.rest(), cLine("CLOSE;"));
    EXPECT_EQ(lines.rest(), std::nullopt);
    lines.append("later\n");
    EXPECT_EQ(lines.next(), cLine("later"));
}

TEST(lineSplitterTest, anyByteIsPartOfALine) {
    const std::string bytes("\0\xff\x1a", 3);
    cLineSplitter lines;
    lines.append(bytes + '\n');

    EXPECT_EQ(lines.next(), cLine(bytes));
}

TEST(lineSplitterTest, lineOfAMegabyteIsTakenWhole) {
    const std::string piece(1024, 'x');
    cLineSplitter lines;
    for (int i = 0; i < 1024; ++i) {
        lines.append(piece);
        EXPECT_EQ(lines.next(), std::nullopt);
    }
    lines.append("\n");

    EXPECT_EQ(lines.next().value_or("").size(), 1024U * 1024U);
}
