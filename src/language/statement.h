#pragma once

#include <string>
#include <vector>

class cNetwork;

/// One command of the model language. Built from its text once; every execution interprets the keyword and its
/// arguments anew, and compiles the expressions in them anew, each of which so runs twice: its trial and its value.
///
/// What a statement knows of the model stands in another source file (statementExecution.cpp), so that elements can
/// hold and run statements without knowing what they do.
class cStatement {
public:
    /// @param statementText the statement as written, without its closing ";".
    explicit cStatement(std::string statementText);

    const std::string& getText() const { return text; }
    const std::string& getKeyword() const { return keyword; }
    const std::vector<std::string>& getArguments() const { return args; }

    /// Runs the statement. A keyword that no statement has does nothing.
    /// @throws cException of code 1 for a statement that can't be carried out, and what its expressions throw. What had
    /// been done before stays done.
    void execute(cNetwork& network) const;

private:
    std::string text;
    std::string keyword;            // the first word
    std::vector<std::string> args;  // the words behind it
};
