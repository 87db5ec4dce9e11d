#include "support/expressionScene.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace {

std::string repeated(const std::string& piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

/// Texts of a size that nobody writes by hand. They may not take a stack as deep as they are long, nor a time that
/// grows with the square of their length: minutes for these.
class cHugeExpressionTest : public cExpressionScene {
protected:
    void TearDown() override {
        const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        EXPECT_LT(seconds, 10.0);
    }

    static constexpr std::size_t many = 100000;

private:
    std::clock_t begin = std::clock();
};

TEST_F(cHugeExpressionTest, balancedBracketsAreAnswered) {
    EXPECT_EQ(valueOf(repeated("(", many) + "5" + repeated(")", many)), 5.0);
    EXPECT_EQ(valueOf(repeated("[", many) + "5" + repeated("]", many)), 5.0);
    EXPECT_EQ(valueOf(repeated("([", many) + "5" + repeated("])", many)), 5.0);
}

TEST_F(cHugeExpressionTest, bracketsLeftOpenAreRefused) {
    EXPECT_EQ(failureOf([&] { valueOf(repeated("(", many)); }).message, notRecognized);
    EXPECT_EQ(failureOf([&] { valueOf(repeated("[", many) + "1"); }).message, notRecognized);
    EXPECT_EQ(failureOf([&] { valueOf(repeated(")", many)); }).message, "");
    EXPECT_EQ(failureOf([&] { valueOf(repeated("(", many) + repeated("]", many)); }).message, "");
    EXPECT_EQ(failureOf([&] { valueOf(repeated("(1,", many)); }).message, notRecognized);
}

TEST_F(cHugeExpressionTest, longChainsAreAnswered) {
    EXPECT_EQ(valueOf(repeated("1+", many) + "1"), 100001.0);
    EXPECT_EQ(valueOf(repeated("(1+", many) + "1" + repeated(")", many)), 100001.0);
    EXPECT_EQ(failureOf([&] { valueOf(repeated("!", many)); }).code, 2);
    EXPECT_EQ(failureOf([&] { valueOf(repeated("-", many) + "1"); }).code, 2);
}

TEST_F(cHugeExpressionTest, aNameOfAMegabyteIsUnknown) {
    EXPECT_EQ(valueOf(std::string(1 << 20, 'x')), 0.0);
    EXPECT_EQ(valueOf(std::string(1 << 20, 'R') + "+1"), 1.0);
    EXPECT_EQ(valueOf(std::string(1 << 20, ' ')), 0.0);
}

TEST_F(cHugeExpressionTest, aLiteralOfAMegabyteIsANumber) {
    EXPECT_EQ(valueOf(std::string(1 << 20, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(valueOf("0." + std::string(1 << 20, '3')), 1.0 / 3.0);
}

TEST_F(cHugeExpressionTest, manyNamesThatFallApartAreRefused) {
    EXPECT_EQ(failureOf([&] { valueOf(repeated("BUDGET", many)); }).message, notRecognized);
}

}  // namespace
