#include "language/randomStreams.h"

#include "language/exception.h"

namespace {

constexpr std::uint32_t modulus = 2147483647;  // 2^31 - 1
constexpr std::uint64_t multiplier = 48271;
constexpr std::uint32_t seedDistance = 100000;

}  // namespace

cRandomGenerator::cRandomGenerator(std::uint32_t seed) : state(seed % modulus) {
    if (state == 0) state = 1;
}

std::uint32_t cRandomGenerator::step() {
    state = static_cast<std::uint32_t>(multiplier * state % modulus);
    return state;
}

double cRandomGenerator::uniform() {
    constexpr std::uint64_t statesPerStep = modulus - 1;
    constexpr std::uint64_t divisor = 511;
    constexpr std::uint64_t evenRange = 0x3FE0000000000000;  // 511 times 2^53
    constexpr double smallestStep = 0x1p-53;
    for (;;) {
        const std::uint64_t low = step() - 1;
        const std::uint64_t high = step() - 1;
        const std::uint64_t pair = low + high * statesPerStep;
        const std::uint64_t steps = pair / divisor;
        if (pair < evenRange) return static_cast<double>(steps) * smallestStep;
    }
}

void cRandomStreams::setSeed(std::uint32_t newSeed) {
    seed = newSeed;
    streams.insert_or_assign(0, cRandomGenerator(seed));
}

void cRandomStreams::setStreams(std::int32_t extraStreams) {
    streams.clear();
    setSeed(seed);
    streamCount = extraStreams;
    seedOfStreams = seed;
}

cRandomGenerator& cRandomStreams::select(double streamNumber) {
    if (!(streamNumber >= 0.0))
        throw cException{failureCode::expression, "Stream number is below 0 or not a number.", {}, {}};

    const double entries = streamCount < 1 ? 1.0 : streamCount + 1.0;
    if (streamNumber >= entries) return first();

    const auto number = static_cast<std::int32_t>(streamNumber);
    const std::uint32_t ownSeed = static_cast<std::uint32_t>(number) * seedDistance + seedOfStreams;
    return streams.try_emplace(number, ownSeed).first->second;
}
