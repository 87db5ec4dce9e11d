#pragma once

#include <cstdint>

/// The states of a stream that began with state 1, by the uniforms drawn from it. The numbers themselves are, rounded,
/// 0.085199, 0.893356, 0.190061 and 0.398787.
namespace streamState {
inline constexpr std::uint32_t untouched = 1;
inline constexpr std::uint32_t afterOneDraw = 182605794;
inline constexpr std::uint32_t afterTwoDraws = 1914720637;
inline constexpr std::uint32_t afterThreeDraws = 407355683;
}  // namespace streamState
