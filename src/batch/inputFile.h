#pragma once

#include <string>

/// The whole content of a file.
/// @throws cFileError if it can't be read, and cException (code 5) if the user's stop came while it kept us waiting.
std::string readFile(const std::string& path);

/// The same, of a plain file alone: a pipe or a device could keep a controller waiting for ever, or take its messages.
std::string readPlainFile(const std::string& path);
