#pragma once

#include <cstdint>
#include <map>

/// One stream of random numbers: the minimal standard generator (Park and Miller 1988) with the multiplier 48271.
/// The sequence is a contract: results of models depend on it to the last bit.
class cRandomGenerator {
public:
    /// A generator whose state is `seed` modulo 2^31 - 1, or 1 if that is 0.
    explicit cRandomGenerator(std::uint32_t seed);

    /// The next uniform number in [0, 1): a multiple of 2^-53 without bias, made of two steps of the generator. A pair
    /// of steps outside the range that divides evenly is used up and another pair is taken.
    double uniform();

    std::uint32_t getState() const { return state; }

private:
    std::uint32_t step();

    std::uint32_t state;  // 1 to 2^31 - 2
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
    cRandomGenerator& first() { return streams.at(0); }

private:
    std::uint32_t seed = 0;
    std::uint32_t seedOfStreams = 0;  // the base seed when setStreams was called: a stream is made at its first use
    std::int32_t streamCount = 0;
    std::map<std::int32_t, cRandomGenerator> streams;
};
