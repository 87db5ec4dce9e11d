#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class cNetwork;

/// The trace of a replication: one comma-separated line for each decision of the kernel, kept in the network.
///
/// The header names a serial number that no line has, so each line stands one column to the left of it. The lines are
/// laid out like this for good: readers rely on it.

inline constexpr std::string_view traceHeader =
    "*SNo*,*SimTime*,*Action*,*NodeName*,*AttemptResult*,*ActStartTime*,*ActEndTime*,*QCurCount*,*QTotCount*,"
    "*FStrength*,*FSucc*\n";

/// The largest number of lines that a replication keeps, the header among them; further ones are dropped.
inline constexpr std::size_t traceCapacity = 50000;

namespace attemptResult {
inline constexpr std::string_view semaphore = "Fail-Semaphore";
inline constexpr std::string_view queueSupport = "Fail-QueueSupport";
inline constexpr std::string_view success = "Success";
}  // namespace attemptResult

/// A Combi was tried. `result` is one of those above.
void traceAttempt(cNetwork& network, const std::string& combi, std::string_view result);
/// The code of an activity before or after its end is about to run: `action` is "BEFOREEND" or "ONEND".
void traceEnd(cNetwork& network, std::string_view action, const std::string& activity, std::int32_t instanceId);
/// Something was drawn from a queue, which now holds `curCount` of the `totCount` that it has ever received.
void traceDraw(cNetwork& network, const std::string& queue, double curCount, double totCount);
/// A Fork has drawn a branch: a line for each of its out-links. `runningSum` is the share of the strengths up to it.
void traceBranch(cNetwork& network, const std::string& fork, bool isChosen, double runningSum,
                 const std::string& successor);
/// Something entered a queue: a line without a text.
void traceEntry(cNetwork& network);
