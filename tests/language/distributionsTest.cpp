#include "language/distributions.h"

#include "support/failureOf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A host that counts the turns of loops, and stops them at a turn given.
class cCountingBreath : public cBreath {
public:
    void breathe() override {
        if (++turns == stopAt) throw cException{failureCode::userStop, "stopped", {}, {}};
    }
    int turns = 0;
    int stopAt = 0;  // 0 never
};

/// What is left behind it tells how many uniforms a sample took: the state of the generator is part of the contract.
struct cSample {
    const char* call;
    double (*draw)(cSampler& sampler);
    std::uint32_t seed;
    double value;
    std::uint32_t stateAfter;
};

void PrintTo(const cSample& sample, std::ostream* stream) { *stream << sample.call << " from " << sample.seed; }

class cSampleTest : public ::testing::TestWithParam<cSample> {};

TEST_P(cSampleTest, isExactAndTakesItsDraws) {
    cRandomGenerator generator(GetParam().seed);
    cCountingBreath host;
    cSampler sampler(generator, host);

    EXPECT_EQ(GetParam().draw(sampler), GetParam().value);
    EXPECT_EQ(generator.getState(), GetParam().stateAfter);
}

#define SAMPLE(call, seed, value, stateAfter)                               \
    cSample {                                                               \
#call, [](cSampler & s) { return s.call; }, seed, value, stateAfter \
    }

INSTANTIATE_TEST_SUITE_P(uniform, cSampleTest,
                         ::testing::Values(SAMPLE(uniform(), 1, 0.08519885256797011, 182605794),
                                           SAMPLE(uniform(2, 5), 1, 2.2555965577039103, 182605794),
                                           SAMPLE(uniform(2, 5), 42, 3.7174429690882906, 1226992407),
                                           SAMPLE(uniform(3, 3), 1, 3.0, 182605794)));

// With a range of 10 the first branch holds up to U = 0.2: seed 755 begins with 0.19989, seed 461 with 0.20035. A
// textbook triangle would change at 0.5, where the mode lies.
INSTANTIATE_TEST_SUITE_P(triangular, cSampleTest,
                         ::testing::Values(SAMPLE(triangular(0, 5, 10), 1, 2.06396284569236, 182605794),
                                           SAMPLE(triangular(0, 5, 10), 755, 3.1614040535800396, 428421062),
                                           SAMPLE(triangular(0, 5, 10), 461, 3.6768297655052624, 429408801),
                                           SAMPLE(triangular(0, 5, 10), 3, 3.8991662808967478, 547817382),
                                           SAMPLE(triangular(1, 2, 4), 5, 2.1304790109145872, 913028970),
                                           SAMPLE(triangular(3, 3, 3), 42, 3.0, 1226992407)));

// Up to a range of 2 the second branch is never taken: at U = 0.572 and mode 1 the textbook would take it.
INSTANTIATE_TEST_SUITE_P(narrowTriangular, cSampleTest,
                         ::testing::Values(SAMPLE(triangular(0, 1, 2), 1, 0.412792569138472, 182605794),
                                           SAMPLE(triangular(0, 1, 2), 42, 1.070028961940841, 1226992407)));

INSTANTIATE_TEST_SUITE_P(pert, cSampleTest,
                         ::testing::Values(SAMPLE(pert(1, 2, 3), 1, 2.405690451089429, 1203428207),
                                           SAMPLE(pert(1, 2, 3), 42, 1.7279123325775136, 1151860813),
                                           SAMPLE(pert(2, 5, 11), 1, 4.682143533217827, 854716505),
                                           SAMPLE(pert(2, 5, 11), 42, 6.752677737382924, 1056405651),
                                           SAMPLE(pert(0, 0, 4), 1, 0.09750363539785524, 1203428207),
                                           SAMPLE(pert(0, 4, 4), 42, 3.2236681785662578, 1151860813)));

// With (0, mode, 3) the widened range is 0, clipped, to 3.1667; with (2, 10, 6) it is 1.7778 to 6.2222.
INSTANTIATE_TEST_SUITE_P(pertFromPercentiles, cSampleTest,
                         ::testing::Values(SAMPLE(pertFromPercentiles(0, 5, 3), 1, 2.6034459040879105, 201068705),
                                           SAMPLE(pertFromPercentiles(0, 5, 3), 42, 2.388342207605593, 76167468),
                                           SAMPLE(pertFromPercentiles(0, 7.5, 3), 7, 2.948280563103331, 1226194021),
                                           SAMPLE(pertFromPercentiles(2, 10, 6), 42, 5.4799501162782285, 76167468)));

// Seeds 11 and 35 begin with a U above px = 0.9006 and take the second candidate; the last needs five rounds.
INSTANTIATE_TEST_SUITE_P(gammaOfShapeBelowOne, cSampleTest,
                         ::testing::Values(SAMPLE(gamma(0.3, 2), 1, 1.3733420108731835, 407355683),
                                           SAMPLE(gamma(0.3, 2), 42, 0.014474747089521383, 1151860813),
                                           SAMPLE(gamma(0.3, 2), 11, 2.423159541084221, 185945219),
                                           SAMPLE(gamma(0.3, 2), 35, 1.607144336745938e-05, 624735675),
                                           SAMPLE(gamma(0.9, 2), 42, 0.38686281876794154, 1151860813)));

INSTANTIATE_TEST_SUITE_P(gammaOfShapeOne, cSampleTest,
                         ::testing::Values(SAMPLE(gamma(1, 2), 1, 0.17809712507211534, 182605794),
                                           SAMPLE(gamma(1, 2), 42, 1.6995130460937535, 1226992407)));

// As many uniforms as the shape says, multiplied.
INSTANTIATE_TEST_SUITE_P(gammaOfWholeShapeBelowTwenty, cSampleTest,
                         ::testing::Values(SAMPLE(gamma(2, 2), 1, 5.151074617873047, 1914720637),
                                           SAMPLE(gamma(3, 2), 1, 8.471895193395483, 407355683),
                                           SAMPLE(gamma(3, 2), 42, 2.7822877226346336, 2076553157),
                                           SAMPLE(gamma(19, 2), 1, 24.01172286966997, 1168816941)));

INSTANTIATE_TEST_SUITE_P(gammaByTheTangentLoop, cSampleTest,
                         ::testing::Values(SAMPLE(gamma(2.5, 2), 1, 4.0969625012115545, 1914720637),
                                           SAMPLE(gamma(2.5, 2), 42, 6.48135059018321, 1151860813),
                                           SAMPLE(gamma(19.5, 2), 42, 21.88107375451954, 488601845),
                                           SAMPLE(gamma(20, 2), 1, 41.42526431219213, 1914720637),
                                           SAMPLE(gamma(20, 2), 42, 22.68343234320668, 488601845),
                                           SAMPLE(gamma(100, 2), 42, 195.23130354882832, 1538354858)));

INSTANTIATE_TEST_SUITE_P(exponentialTakesARate, cSampleTest,
                         ::testing::Values(SAMPLE(exponential(4), 1, 0.022262140634014417, 182605794),
                                           SAMPLE(exponential(4), 42, 0.2124391307617192, 1226992407),
                                           SAMPLE(exponential(0), 1, std::numeric_limits<double>::infinity(),
                                                  182605794)));

// Seeds 1 and 10 reject pairs. The last two give a p and q so small that they are scaled up; of the very last the
// sample without scaling would end in ...189.
INSTANTIATE_TEST_SUITE_P(normal, cSampleTest,
                         ::testing::Values(SAMPLE(normal(10, 3), 1, 6.270495923027174, 854716505),
                                           SAMPLE(normal(10, 3), 42, 16.43018392586285, 961371815),
                                           SAMPLE(normal(0, 1), 10, -1.2321726381484446, 1296863835),
                                           SAMPLE(normal(10, 3), 3040, 3.1046870037584346, 1070053110),
                                           SAMPLE(normal(0, 1), 430077, 1.5553932277550186, 1080636782)));

INSTANTIATE_TEST_SUITE_P(normalOfNegativeDeviationIsMirrored, cSampleTest,
                         ::testing::Values(SAMPLE(normal(10, -3), 1, 13.729504076972827, 854716505),
                                           SAMPLE(normal(10, -3), 42, 3.5698160741371527, 961371815)));

/// A sampler on a stream that begins with state 1.
class cSamplerTest : public ::testing::Test {
protected:
    static constexpr std::uint32_t untouched = 1;
    static constexpr std::uint32_t afterOneDraw = 182605794;

    double meanOf(int count, const std::function<double()>& draw) {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += draw();
        return sum / count;
    }

    cRandomGenerator generator{1};
    cCountingBreath host;
    cSampler sampler{generator, host};
};

TEST_F(cSamplerTest, theSecondNormalOfAPairIsThrownAway) {
    sampler.normal(0, 1);
    const std::uint32_t seedOfSecond = generator.getState();
    const double second = sampler.normal(0, 1);

    cRandomGenerator fresh(seedOfSecond);
    EXPECT_EQ(second, cSampler(fresh, host).normal(0, 1));
}

TEST_F(cSamplerTest, uniformRefusesALowEndAboveTheHighOneWithoutADraw) {
    const cException failure = failureOf([&] { sampler.uniform(4, 3); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Max>Min in Uniform distribution.");
    EXPECT_EQ(generator.getState(), untouched);
}

struct cTriple {
    double low;
    double mode;
    double high;
};

void PrintTo(const cTriple& row, std::ostream* stream) { *stream << row.low << ' ' << row.mode << ' ' << row.high; }

class cTriangularOrderTest : public cSamplerTest, public ::testing::WithParamInterface<cTriple> {};

TEST_P(cTriangularOrderTest, isRefusedAfterTheDraw) {
    const auto [low, mode, high] = GetParam();

    const cException failure = failureOf([&, a = low, m = mode, b = high] { sampler.triangular(a, m, b); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Triangular distribution parameters need to be in ascending order");
    EXPECT_EQ(generator.getState(), afterOneDraw);
}

INSTANTIATE_TEST_SUITE_P(orders, cTriangularOrderTest,
                         ::testing::Values(cTriple{1, 3, 2}, cTriple{2, 1, 3}, cTriple{3, 2, 1}, cTriple{2, 3, 1},
                                           cTriple{3, 1, 2}));

class cPertOrderTest : public cSamplerTest, public ::testing::WithParamInterface<cTriple> {};

TEST_P(cPertOrderTest, isRefusedWithoutADraw) {
    const auto [low, mode, high] = GetParam();

    const cException failure = failureOf([&, a = low, m = mode, b = high] { sampler.pert(a, m, b); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Pert parameters need to be in ascending order");
    EXPECT_EQ(generator.getState(), untouched);
}

INSTANTIATE_TEST_SUITE_P(orders, cPertOrderTest,
                         ::testing::Values(cTriple{1, 3, 2}, cTriple{2, 1, 3}, cTriple{3, 2, 1}, cTriple{2, 3, 1},
                                           cTriple{3, 1, 2}));

class cPercentileOrderTest : public cSamplerTest, public ::testing::WithParamInterface<cTriple> {};

TEST_P(cPercentileOrderTest, isRefusedWithoutADraw) {
    const auto [low, mode, high] = GetParam();

    const cException failure = failureOf([&, a = low, m = mode, b = high] { sampler.pertFromPercentiles(a, m, b); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Pert parameters need to be in ascending order");
    EXPECT_EQ(generator.getState(), untouched);
}

// (1, 2, 3) is widened to 0.8889 and 3.1111; a mode just below that end is refused too. (9, 8, 1) turns the ends over.
INSTANTIATE_TEST_SUITE_P(everyModeBelowTheWidenedEnd, cPercentileOrderTest,
                         ::testing::Values(cTriple{1, 2, 3}, cTriple{1, 3.11, 3}, cTriple{0, 3, 3}, cTriple{9, 8, 1}));

TEST_F(cSamplerTest, aModeAboveTheWidenedPercentilesPasses) {
    const double sample = sampler.pertFromPercentiles(1, 3.12, 3);

    EXPECT_GE(sample, 1 - 2 / 0.9 * 0.05);
    EXPECT_LE(sample, 3 + 2 / 0.9 * 0.05);
}

TEST_F(cSamplerTest, pertStaysInsideItsRange) {
    for (int i = 0; i < 10000; ++i) {
        const double sample = sampler.pert(1, 2, 3);

        ASSERT_GE(sample, 1.0);
        ASSERT_LE(sample, 3.0);
    }
}

/// Calls whose parameters keep a loop from ending.
class cEndlessTest : public cSamplerTest, public ::testing::WithParamInterface<double (*)(cSampler&)> {};

TEST_P(cEndlessTest, breathesAtEachTurnSoThatTheHostCanEndIt) {
    host.stopAt = 1000;

    const cException failure = failureOf([&] { GetParam()(sampler); });

    EXPECT_EQ(failure.code, 5);
    EXPECT_EQ(host.turns, 1000);
}

INSTANTIATE_TEST_SUITE_P(
    loops, cEndlessTest,
    ::testing::Values([](cSampler& s) { return s.pert(1, 1, 1); }, [](cSampler& s) { return s.gamma(notANumber, 1); },
                      [](cSampler& s) { return s.gamma(std::numeric_limits<double>::infinity(), 1); },
                      [](cSampler& s) { return s.gamma(-std::numeric_limits<double>::infinity(), 1); },
                      [](cSampler& s) { return s.pertFromPercentiles(0, 0, 0); }));

// The deviation of the mean of n samples is that of one over the root of n; each bound is five of them, n = 100000.
TEST_F(cSamplerTest, theMeanOfExponentialIsOneOverTheRate) {
    // deviation 0.25: five times 0.25 / 316 is 0.004
    EXPECT_NEAR(meanOf(100000, [&] { return sampler.exponential(4); }), 0.25, 0.004);
}

TEST_F(cSamplerTest, theMeanOfNormalIsItsFirstArgument) {
    EXPECT_NEAR(meanOf(100000, [&] { return sampler.normal(10, 3); }), 10.0, 0.048);
}

TEST_F(cSamplerTest, theVarianceOfNormalIsTheSquareOfItsDeviation) {
    const auto square = [&] {
        const double deviation = sampler.normal(0, 3);
        return deviation * deviation;
    };
    // The squares have variance 2 * 3^4, deviation 12.73: five times 12.73 / 316 is 0.202.
    EXPECT_NEAR(meanOf(100000, square), 9.0, 0.202);
}

TEST_F(cSamplerTest, theMeanOfGammaIsShapeTimesScaleInEveryBranch) {
    for (const double alpha : {0.3, 1.0, 2.5, 3.0, 20.0}) {
        const double bound = 5.0 * 2.0 * std::sqrt(alpha / 100000);  // variance alpha * scale^2
        EXPECT_NEAR(meanOf(100000, [&] { return sampler.gamma(alpha, 2.0); }), 2.0 * alpha, bound) << alpha;
    }
}

TEST_F(cSamplerTest, theMeanOfPertWeighsTheModeFourfold) {
    // mean (2 + 4 * 5 + 11) / 6 = 5.5, variance (5.5 - 2) * (11 - 5.5) / 7 = 2.75: five times 1.66 / 316 is 0.0263
    EXPECT_NEAR(meanOf(100000, [&] { return sampler.pert(2, 5, 11); }), 5.5, 0.0263);
}

}  // namespace
