#pragma once

#include "language/renewedExpression.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class cNetwork;
class cTextFormat;
struct cStatementKeyword;

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
    ~cStatement();
    cStatement(const cStatement&) = delete;
    cStatement& operator=(const cStatement&) = delete;

    const std::string& getText() const { return text; }
    const std::string& getKeyword() const { return keyword; }
    const std::vector<std::string>& getArguments() const { return args; }

    /// The value of an argument, as of an expression compiled now.
    /// @throws cException as compiling and evaluating do.
    double argumentValue(std::size_t index, cEvaluationContext& model) const;
    /// The arguments from `first` on, which is the same at each call, as one text that is filled as a format.
    /// @throws cException as `cTextFormat::fill` does.
    std::string filledText(std::size_t first, cEvaluationContext& model) const;

    /// A place of a value that the statement writes to, kept until the names of the model change.
    struct cTarget {
        double* place = nullptr;
        std::uint64_t version = 0;
    };
    cTarget& target() const { return boundTarget; }

    /// Runs the statement. A keyword that no statement has does nothing.
    /// @throws cException of code 1 for a statement that can't be carried out, and what its expressions throw. What had
    /// been done before stays done.
    void execute(cNetwork& network) const;

private:
    std::string text;
    std::string keyword;            // the first word
    std::vector<std::string> args;  // the words behind it

    // What was found out about them when it was needed first.
    mutable bool isBound = false;
    mutable const cStatementKeyword* row = nullptr;  // null for a keyword that no statement has
    mutable std::vector<cRenewedExpression> values;  // of the arguments
    mutable std::unique_ptr<cTextFormat> format;
    mutable cTarget boundTarget;
};
