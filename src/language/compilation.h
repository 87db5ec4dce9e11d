#pragma once

#include <string>
#include <vector>

class cNetwork;

/// What of a code text is compiled.
enum class eCompiled {
    everything,
    declarations,  ///< SAVEVALUE and VARIABLE alone, so that elements can be checked against the names
};

/// The statement texts in lines of code. A statement ends at ";" and can run over several lines, which are joined
/// directly. A backslash makes a comment of itself and all behind it. Each line yields one statement at most; what is
/// behind it waits for the next line, and what is left when the lines run out is dropped, unless the last line holds
/// no ";" at all.
std::vector<std::string> statementTexts(const std::vector<std::string>& lines);

/// Turns code into statements and puts each where it belongs: onto the elements and lists that fire them, all others
/// into the network's `statements`. A SAVEVALUE or VARIABLE stands there twice. Event code for an element that doesn't
/// exist, or is of another class, is dropped without a message; its name stays in the registry, without an element.
/// @throws cException if the trial of an IF condition fails.
void compileCode(cNetwork& network, const std::vector<std::string>& lines, eCompiled compiled);

/// Appends what each replication executes: an INIT for each queue, by name, whose initial content is not 0 now, and
/// SIMULATE. The content is evaluated once a run, here.
/// @throws cException if an initial content fails.
void addInitialContent(cNetwork& network);
