#pragma once

#include <cstdint>
#include <string>

/// What tells a controlling program, on standard error, of a failure that a user would read in a box: "ERROR ", the
/// code of the failure (0 where there is none), the text with each line feed as a blank, and a line feed.
std::string errorLine(std::int32_t code, std::string text);
