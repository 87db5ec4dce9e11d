#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

class cModelBuilder;

/// Something in a model file that was not taken as it stands. Reading went on, or stopped where the message says so.
struct cModelWarning {
    std::size_t line = 0;  ///< from 1
    std::string message;
};

/// What a file was found to hold, besides the elements.
struct cModelReading {
    std::string globalCode;  ///< the text of the Global Code, lines parted by line feeds
    std::vector<cModelWarning> warnings;
    bool isRunnable = false;  ///< there is an element or some code
};

/// Reads the text of a `.tbsmx` file into the builder's network.
///
/// The format is a line for each statement: a keyword, names, a value, and ";". A value loses its blanks and any ";".
/// The tests for the kinds of statement run one after another on each line, and some lines meet several of them; a line
/// that meets none is skipped. A line that holds an element keyword with a blank behind it but doesn't begin with one
/// ends the reading, as the end of the file would.
///
/// An expression that fails keeps its text, since the names that it needs may stand further down: it is compiled once
/// more after the last line. What then still fails is a warning here, and fails at the run with its own message.
/// @throws cException (code 5) if the user stopped the reading. What was read until then stays in the network.
cModelReading readModel(std::istream& text, cModelBuilder& builder);
