#pragma once

/// Whether and how slowly a run is shown: two values of the process, set by the window and read by whatever is drawn.
namespace animation {

inline bool isOn = false;
inline int delay = 0;  ///< milliseconds that each visible step lasts

/// Lets the window live for the length of one step.
/// @throws cException (code 5) if the user stopped the run meanwhile.
void waitStep();

}  // namespace animation
