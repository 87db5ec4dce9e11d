#pragma once

#include <array>
#include <cstdint>
#include <map>

/// One stream of random numbers: the minimal standard generator (Park and Miller 1988) with the multiplier 48271.
/// The sequence is a contract: results of models depend on it to the last bit.
class cRandomGenerator {
public:
    /// A generator whose state is 1.
    cRandomGenerator() = default;
    /// A generator whose state is `seed` modulo 2^31 - 1, or 1 if that is 0.
    explicit cRandomGenerator(std::uint32_t seed)
        : state(static_cast<std::uint32_t>(seed % modulus == 0 ? 1U : seed % modulus)) {}

    /// The next uniform number in [0, 1): a multiple of 2^-53 without bias, made of two steps of the generator. A pair
    /// of steps outside the range that divides evenly is used up and another pair is taken.
    double uniform() {
        constexpr std::uint64_t statesPerStep = modulus - 1;
        constexpr std::uint64_t divisor = 511;
        constexpr std::uint64_t evenRange = 0x3FE0000000000000;  // 511 times 2^53
        constexpr double smallestStep = 0x1p-53;
        for (;;) {
            const std::uint64_t low = stepped(multiplier) - 1;
            state = static_cast<std::uint32_t>(stepped(multiplierOfTwoSteps));
            const std::uint64_t pair = low + (state - 1) * statesPerStep;
            if (pair < evenRange) return static_cast<double>(static_cast<std::int64_t>(pair / divisor)) * smallestStep;
        }
    }

    std::uint32_t getState() const { return state; }

private:
    static constexpr std::uint64_t modulus = 2147483647;  // 2^31 - 1
    static constexpr std::uint64_t multiplier = 48271;
    static constexpr std::uint64_t multiplierOfTwoSteps = multiplier * multiplier % modulus;

    /// The state times `factor`, which is below 2^31, modulo the modulus. As 2^31 leaves 1, the bits above the lowest
    /// 31 are added to those, and the sum is below twice the modulus.
    std::uint64_t stepped(std::uint64_t factor) const {
        const std::uint64_t product = factor * state;
        const std::uint64_t sum = (product & modulus) + (product >> 31);
        return sum >= modulus ? sum - modulus : sum;
    }

    std::uint32_t state = 1;  // 1 to 2^31 - 2
};

/// The numbered random streams of a model. Stream 0 always exists.
class cRandomStreams {
public:
    explicit cRandomStreams(std::uint32_t firstSeed) { setSeed(firstSeed); }

    /// Takes `newSeed` as base seed and starts stream 0 with it. The other streams go on as they are.
    void setSeed(std::uint32_t newSeed);
    std::uint32_t getSeed() const { return seed; }

    /// Starts all streams anew from the base seed: stream 0, and the streams 1 to `extraStreams`, stream i with
    /// i times 100000 plus the base seed, in 32 bits with wrap-around. Below 1 only stream 0 stays.
    void setStreams(std::int32_t extraStreams);
    std::int32_t getStreamCount() const { return streamCount; }

    /// The generator for the stream number that an expression gives: the number truncated, or stream 0 when there is no
    /// stream of that number.
    /// @throws cException (code 2) for a number below 0 and for a NaN.
    cRandomGenerator& select(double streamNumber);
    cRandomGenerator& first() { return nearStreams.front(); }

private:
    static constexpr std::size_t nearCount = 64;

    cRandomGenerator newStream(std::int32_t number) const;

    std::uint32_t seed = 0;
    std::uint32_t seedOfStreams = 0;  // the base seed when setStreams was called
    std::int32_t streamCount = 0;
    std::array<cRandomGenerator, nearCount> nearStreams;  // by number; those beyond the count are not used
    std::map<std::int32_t, cRandomGenerator> farStreams;  // the higher numbers, each made at its first use
};
