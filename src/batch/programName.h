#pragma once

#include <ostream>
#include <string>

inline constexpr const char* programName = "timbersim-run";

/// Writes a message of the program's own, under its name, as one line.
inline void tell(std::ostream& stream, const std::string& message) { stream << programName << ": " << message << '\n'; }
