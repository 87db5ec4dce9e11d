#pragma once

#include <cstdint>
#include <string>

/// The text of a legal model that is made from a seed: every kind of element, resources of both families, random
/// expressions and rules, code at every event. The same seed gives the same text everywhere.
///
/// Flows run from an activity to nodes that were made later, so that none goes in a circle; what an activity holds
/// comes back to the queues through Combis alone. Every run ends: by its end condition, which bounds time and starts.
std::string randomModel(std::uint32_t seed);
