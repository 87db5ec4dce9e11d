#pragma once

/// Ctrl-C. The first only raises a flag, which the run meets at the next return from processHostEvents; the second
/// finds the system's own behaviour again and ends the program at once.

/// From here on the first interrupt raises the flag. A system call that waits is interrupted by it (EINTR).
void installStopSignal();

bool isStopRaised();

/// Waits until `descriptor` has something to read or is at its end.
/// @throws cException (code 5) as soon as the flag is raised, also between the look at it and the wait.
void awaitInput(int descriptor);

/// @throws cException (code 5) if the flag is raised.
void throwIfStopped();
