#pragma once

#include <ostream>

struct cRunOptions;

/// The whole job of the program: opens the outputs, reads the model, runs it, writes the results.
/// @param messages takes what the user is to know beside the results.
/// @param isTerminal whether somebody watches `messages`: a progress line is shown then.
/// @return the exit status.
int runJob(const cRunOptions& options, std::ostream& messages, bool isTerminal);
