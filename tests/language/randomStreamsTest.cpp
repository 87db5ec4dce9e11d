#include "language/randomStreams.h"

#include "support/failureOf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

/// One step of the generator, worked out here on its own.
constexpr std::uint64_t stepOf(std::uint64_t state) { return state * 48271 % 2147483647; }

static_assert(stepOf(1) == 48271);
static_assert(stepOf(48271) == 182605794);

/// The uniform number of a pair of states, or below 0 if the pair is to be rejected.
double numberOf(std::uint64_t first, std::uint64_t second) {
    const std::uint64_t pair = (first - 1) + (second - 1) * 2147483646;
    return pair >= 511ULL << 53U ? -1.0 : std::ldexp(static_cast<double>(pair / 511), -53);
}

TEST(randomGeneratorTest, fromState1OneNumberTakesTheSteps48271And182605794) {
    cRandomGenerator generator(1);

    const double number = generator.uniform();

    EXPECT_EQ(generator.getState(), 182605794U);
    EXPECT_EQ(number, numberOf(48271, 182605794));
    EXPECT_EQ(number, 0.08519885256797011);
}

struct cSeed {
    std::uint32_t seed;
    std::uint32_t state;
};

void PrintTo(const cSeed& row, std::ostream* stream) { *stream << row.seed; }

class cSeedTest : public ::testing::TestWithParam<cSeed> {};

TEST_P(cSeedTest, givesTheStateOfStreamZero) {
    cRandomStreams streams(5);

    streams.setSeed(GetParam().seed);

    EXPECT_EQ(streams.first().getState(), GetParam().state);
    EXPECT_EQ(streams.getSeed(), GetParam().seed);
    EXPECT_EQ(cRandomStreams(GetParam().seed).first().getState(), GetParam().state);
}

INSTANTIATE_TEST_SUITE_P(moduloThePrime, cSeedTest,
                         ::testing::Values(cSeed{7, 7}, cSeed{2147483646, 2147483646}, cSeed{2147483648, 1},
                                           cSeed{2147483653, 6}, cSeed{4294967295, 1}));

INSTANTIATE_TEST_SUITE_P(zeroBecomesOne, cSeedTest,
                         ::testing::Values(cSeed{0, 1}, cSeed{2147483647, 1}, cSeed{4294967294, 1}));

TEST(randomGeneratorTest, thousandsOfNumbersAreMadeOfTwoStepsEachTheFirstLow) {
    cRandomGenerator generator(42);
    std::uint64_t state = 42;
    int rejected = 0;
    for (int i = 0; i < 20000; ++i) {
        double expected = -1.0;
        for (--rejected; expected < 0.0; ++rejected) {
            const std::uint64_t first = stepOf(state);
            state = stepOf(first);
            expected = numberOf(first, state);
        }

        ASSERT_EQ(generator.uniform(), expected);
        ASSERT_EQ(generator.getState(), state);
    }
    EXPECT_GT(rejected, 0);  // about 39 of 20000: the pairs above 511 times 2^53 are 0.195 % of all
}

TEST(randomGeneratorTest, aPairOutsideTheEvenRangeIsUsedUp) {
    cRandomGenerator generator(294);  // whose first pair, 14191674 and 2146495908, lies outside
    ASSERT_LT(numberOf(stepOf(294), stepOf(stepOf(294))), 0.0);

    const double number = generator.uniform();

    EXPECT_EQ(generator.getState(), 287151764U);
    EXPECT_EQ(number, numberOf(1712974612, 287151764));
    EXPECT_EQ(number, 0.13397713394791877);
}

TEST(randomGeneratorTest, numbersAreMultiplesOfTheSmallestStepBelowOne) {
    cRandomGenerator generator(9);
    for (int i = 0; i < 10000; ++i) {
        const double number = generator.uniform();
        const double steps = std::ldexp(number, 53);

        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
        ASSERT_EQ(steps, std::floor(steps));
    }
}

TEST(randomGeneratorTest, theMeanIsAHalf) {
    cRandomGenerator generator(11);
    double sum = 0.0;
    for (int i = 0; i < 100000; ++i) sum += generator.uniform();

    // The deviation of the mean of n uniforms is 1 / sqrt(12 n) = 0.00091; the bound is five of them.
    EXPECT_NEAR(sum / 100000, 0.5, 0.0046);
}

/// Streams with base seed 7.
class cRandomStreamsTest : public ::testing::Test {
protected:
    std::uint32_t stateOf(double number) { return streams.select(number).getState(); }

    cRandomStreams streams{7};
};

TEST_F(cRandomStreamsTest, atFirstThereIsStreamZeroAlone) {
    EXPECT_EQ(streams.getStreamCount(), 0);
    EXPECT_EQ(stateOf(0), 7U);
    EXPECT_EQ(&streams.select(1), &streams.first());
}

TEST_F(cRandomStreamsTest, streamsStandAHundredThousandApart) {
    streams.setStreams(2);

    EXPECT_EQ(streams.getStreamCount(), 2);
    EXPECT_EQ(stateOf(1), 100007U);
    EXPECT_EQ(stateOf(2), 200007U);
    EXPECT_EQ(stateOf(0), 7U);
}

TEST_F(cRandomStreamsTest, setStreamsStartsAllStreamsAnew) {
    streams.setStreams(1);
    streams.first().uniform();
    streams.select(1).uniform();
    ASSERT_NE(stateOf(0), 7U);
    ASSERT_NE(stateOf(1), 100007U);

    streams.setStreams(2);

    EXPECT_EQ(stateOf(0), 7U);
    EXPECT_EQ(stateOf(1), 100007U);
}

TEST_F(cRandomStreamsTest, setSeedStartsStreamZeroAlone) {
    streams.setStreams(2);
    streams.select(1).uniform();
    const std::uint32_t movedOn = stateOf(1);

    streams.setSeed(9);

    EXPECT_EQ(stateOf(0), 9U);
    EXPECT_EQ(stateOf(1), movedOn);
    EXPECT_EQ(stateOf(2), 200007U);  // nobody had drawn from it
}

TEST_F(cRandomStreamsTest, theSeedsOfStreamsWrapAroundIn32Bits) {
    streams.setSeed(4294967295);

    streams.setStreams(1);

    EXPECT_EQ(stateOf(1), 99999U);
}

TEST_F(cRandomStreamsTest, aStreamSeedThatIsTheModulusBecomesOne) {
    streams.setSeed(2147383647);

    streams.setStreams(2);

    EXPECT_EQ(stateOf(1), 1U);
    EXPECT_EQ(stateOf(2), 100000U);
}

TEST_F(cRandomStreamsTest, streamsDrawIndependently) {
    streams.setStreams(2);

    const double number = streams.select(1).uniform();

    EXPECT_EQ(number, 0.8417856038049093);
    EXPECT_EQ(stateOf(0), 7U);
    EXPECT_EQ(stateOf(2), 200007U);
}

TEST_F(cRandomStreamsTest, belowOneOnlyStreamZeroStays) {
    for (const std::int32_t count : {0, -5, std::numeric_limits<std::int32_t>::min()}) {
        streams.setStreams(3);
        streams.setStreams(count);

        EXPECT_EQ(streams.getStreamCount(), count);
        EXPECT_EQ(&streams.select(1), &streams.first()) << count;
        EXPECT_EQ(&streams.select(0), &streams.first()) << count;
    }
}

TEST_F(cRandomStreamsTest, theLargestNumberOfStreamsIsThereAtOnce) {
    streams.setStreams(std::numeric_limits<std::int32_t>::max());

    const std::uint32_t number = 2147483647;
    EXPECT_EQ(stateOf(2147483647.5), (number * 100000U + 7U) % 2147483647U);
    EXPECT_EQ(stateOf(2147483648.0), 7U);
}

struct cSelection {
    double number;
    std::uint32_t state;
};

void PrintTo(const cSelection& row, std::ostream* stream) { *stream << row.number; }

/// Of base seed 7 with three extra streams.
class cSelectTest : public ::testing::TestWithParam<cSelection> {};

TEST_P(cSelectTest, choosesTheStream) {
    cRandomStreams streams(7);
    streams.setStreams(3);

    EXPECT_EQ(streams.select(GetParam().number).getState(), GetParam().state);
}

INSTANTIATE_TEST_SUITE_P(numbersAreTruncated, cSelectTest,
                         ::testing::Values(cSelection{0.0, 7}, cSelection{-0.0, 7}, cSelection{0.9, 7},
                                           cSelection{1.0, 100007}, cSelection{1.999, 100007}, cSelection{3.0, 300007},
                                           cSelection{3.999, 300007}));

INSTANTIATE_TEST_SUITE_P(numbersWithoutAStreamMeanStreamZero, cSelectTest,
                         ::testing::Values(cSelection{4.0, 7}, cSelection{99.0, 7}, cSelection{1e300, 7},
                                           cSelection{std::numeric_limits<double>::infinity(), 7}));

class cNoStreamTest : public ::testing::TestWithParam<double> {};

TEST_P(cNoStreamTest, isRefused) {
    cRandomStreams streams(7);
    streams.setStreams(3);

    const cException failure = failureOf([&] { streams.select(GetParam()); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_NE(failure.message.find("Stream number"), std::string::npos) << failure.message;
}

INSTANTIATE_TEST_SUITE_P(belowZeroOrNotANumber, cNoStreamTest,
                         ::testing::Values(-1.0, -0.5, -0.000001, -1e300, -std::numeric_limits<double>::infinity(),
                                           std::numeric_limits<double>::quiet_NaN()));

/// Of base seed 7 with a hundred extra streams: numbers at which streams begin to be kept in another way.
class cHighStreamTest : public ::testing::TestWithParam<std::uint32_t> {
protected:
    cHighStreamTest() { streams.setStreams(100); }

    std::uint32_t state() { return streams.select(GetParam()).getState(); }
    std::uint32_t firstState() const { return GetParam() * 100000 + 7; }

    cRandomStreams streams{7};
};

TEST_P(cHighStreamTest, goesOnFromWhereItWasLeft) {
    EXPECT_EQ(state(), firstState());
    cRandomGenerator twin(firstState());

    for (int i = 0; i < 3; ++i) EXPECT_EQ(streams.select(GetParam()).uniform(), twin.uniform());

    EXPECT_EQ(state(), twin.getState());
    streams.setSeed(9);
    EXPECT_EQ(state(), twin.getState());
}

TEST_P(cHighStreamTest, startsAnewWithAllStreams) {
    streams.select(GetParam()).uniform();

    streams.setStreams(100);

    EXPECT_EQ(state(), firstState());
}

TEST_P(cHighStreamTest, isStreamZeroWhenThereAreFewer) {
    streams.setStreams(static_cast<std::int32_t>(GetParam()) - 1);

    EXPECT_EQ(&streams.select(GetParam()), &streams.first());
}

INSTANTIATE_TEST_SUITE_P(numbers, cHighStreamTest, ::testing::Values(1, 2, 62, 63, 64, 65, 100));

}  // namespace
