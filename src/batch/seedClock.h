#pragma once

#include "kernel/network.h"

#include <cstdint>
#include <optional>

/// A clock that always says `seed`, so that a run can be repeated; without one, the calendar's.
inline cNetwork::cClock clockFor(std::optional<std::uint32_t> seed) {
    if (!seed) return cNetwork::calendarSeconds;
    return [seconds = *seed] { return std::int64_t{seconds}; };
}
