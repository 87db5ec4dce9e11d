#pragma once

#include <ostream>

struct cRunOptions;

/// The program as a controller drives it: reads the model, if one is given, then serves messages on standard input and
/// output until there are no more.
/// @param failures takes failures of models, a line each, and warnings.
/// @return the exit status. A failure of a model is none of the program's; a given model that can't be read is.
int serveController(const cRunOptions& options, std::ostream& failures);
