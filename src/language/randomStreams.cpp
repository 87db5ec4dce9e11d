#include "language/randomStreams.h"

#include "language/exception.h"

void cRandomStreams::setSeed(std::uint32_t newSeed) {
    seed = newSeed;
    first() = cRandomGenerator(seed);
}

void cRandomStreams::setStreams(std::int32_t extraStreams) {
    setSeed(seed);
    streamCount = extraStreams;
    seedOfStreams = seed;
    for (std::size_t number = 1; number < nearCount; ++number)
        nearStreams[number] = newStream(static_cast<std::int32_t>(number));
    farStreams.clear();
}

cRandomGenerator cRandomStreams::newStream(std::int32_t number) const {
    constexpr std::uint32_t seedDistance = 100000;
    return cRandomGenerator(static_cast<std::uint32_t>(number) * seedDistance + seedOfStreams);
}

cRandomGenerator& cRandomStreams::select(double streamNumber) {
    if (!(streamNumber >= 0.0))
        throw cException{failureCode::expression, "Stream number is below 0 or not a number.", {}, {}};

    const double entries = streamCount < 1 ? 1.0 : streamCount + 1.0;
    if (streamNumber >= entries) return first();

    const auto number = static_cast<std::int32_t>(streamNumber);
    if (static_cast<std::size_t>(number) < nearCount) return nearStreams[static_cast<std::size_t>(number)];
    return farStreams.try_emplace(number, newStream(number)).first->second;
}
