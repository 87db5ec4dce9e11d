#pragma once

/// Ctrl-C. The first only raises a flag, which the run meets at the next return from processHostEvents; the second
/// finds the system's own behaviour again and ends the program at once.

/// From here on the first interrupt raises the flag. A system call that waits is interrupted by it (EINTR).
void installStopSignal();

bool isStopRaised();

/// @throws cException (code 5) if the flag is raised.
void throwIfStopped();
