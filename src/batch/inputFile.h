#pragma once

#include <string>

/// The whole content of a file.
/// @throws cFileError if it can't be read, and cException (code 5) if the user's stop came while it kept us waiting.
std::string readFile(const std::string& path);
