#pragma once

#include <string>

class cNetwork;

/// The filled text of PRINT and POST. The format is what stands between the first and the second double quote of
/// `text`, or all of it if there is none; behind the second quote stands an expression for each "%d" (truncated to an
/// integer) and "%f" of the format, parted by blanks. Each expression is compiled, with its trial, and evaluated.
/// @param statementText what a failure names.
/// @throws cException (code 1) for a conversion without an expression or of another letter; what the expressions throw.
std::string formatText(cNetwork& network, const std::string& text, const std::string& statementText);
