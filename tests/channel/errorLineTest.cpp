#include "channel/errorLine.h"

#include <gtest/gtest.h>

TEST(errorLineTest, codeAndTextAreOneLine) {
    EXPECT_EQ(errorLine(4, "Simulation failed to start.\nOne link."),
              "ERROR 4 Simulation failed to start. One link.\n");
}

TEST(errorLineTest, everyLineFeedIsABlank) { EXPECT_EQ(errorLine(5, "Stopped.\n\n"), "ERROR 5 Stopped.  \n"); }

TEST(errorLineTest, emptyTextLeavesTheCode) { EXPECT_EQ(errorLine(0, ""), "ERROR 0 \n"); }
