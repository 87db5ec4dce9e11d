#pragma once

#include "language/expression.h"

#include <memory>
#include <string>
#include <vector>

class cNetwork;

/// One command of the model language. Built from its text once; every execution interprets the keyword and its
/// arguments as if they were new: names are tried, and each expression runs twice, its trial and its value. Compiled it
/// is but once. A statement belongs to one model.
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

    /// The value of an argument, as of an expression compiled now.
    /// @throws cException as compiling and evaluating do.
    double argumentValue(std::size_t index, cEvaluationContext& model) const;

    /// Runs the statement. A keyword that no statement has does nothing.
    /// @throws cException of code 1 for a statement that can't be carried out, and what its expressions throw. What had
    /// been done before stays done.
    void execute(cNetwork& network) const;

private:
    std::string text;
    std::string keyword;                                               // the first word
    std::vector<std::string> args;                                     // the words behind it
    mutable std::vector<std::unique_ptr<const cExpression>> compiled;  // the arguments that were evaluated, by index
};
