#pragma once

#include "language/evaluationContext.h"
#include "language/program.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A formula of a model: a text, compiled once to a program, evaluated to one double as often as needed.
///
/// The text goes one way: tokens, postfix, program, value. Tokens are found by searching for the operators' names, so
/// an operand is any text between two of them, blanks included, and means what the context says at each evaluation.
/// Every result of an operator is rounded to six decimal places; results of models depend on that. 0 is false and any
/// other value, a NaN included, is true. There is no unary minus: a negative number is written (0-5).
class cExpression {
public:
    /// Whether a compiled expression is evaluated once and the value dropped: this reports errors when the text is set,
    /// and it consumes random numbers like any evaluation.
    enum class eTrial { run, skip };

    /// Takes quotes off the text and compiles it. A text with a single quote in it loses its first and last character.
    /// @throws cException as `compile` does.
    cExpression(cEvaluationContext& model, std::string newText, eTrial trial = eTrial::run,
                const std::string& owner = {});

    /// Replaces the text, quotes and all. The text stays also when compiling or the trial fails.
    /// @throws cException (code 2, with the text) on unbalanced brackets or commas, and as `evaluate` does.
    void compile(std::string newText, eTrial trial, const std::string& owner);

    const std::string& getText() const { return text; }

    /// The value now. Doesn't change the expression.
    /// @param owner the name of the element on whose behalf it runs; empty for global code.
    /// @throws cException (code 2, with the text) if the text is no formula or an operation fails; what resolving
    /// throws.
    double evaluate(const std::string& owner = nobody) const {
        if (const std::optional<double>& fixed = program->constant()) return *fixed;
        if (program->isOperand()) return program->operandValue(*context, owner);
        return evaluateProgram(owner);
    }

    /// The value of an expression that would be compiled now from the same text, with its trial: names are tried, and
    /// the formula runs twice. @throws cException as `evaluate`.
    double evaluateAnew(const std::string& owner = nobody) const;

    /// The value, if it is the same at each evaluation and nothing else happens in one.
    const std::optional<double>& constant() const { return program->constant(); }

    /// Whether an evaluation for `owner` is known to draw no random number, to ask no host and to run no VARIABLE: then
    /// another one gives the same until the model moves. Names must have been looked up before to be known.
    bool isQuiet(const std::string& owner = nobody) const { return !isGet && program->isQuiet(*context, owner); }

    /// Whether an evaluation for `owner` is known to ask no host and to run no VARIABLE: then nothing but the value and
    /// the random numbers that it drew can tell that there was one. Names must have been looked up before to be known.
    bool isSelfContained(const std::string& owner = nobody) const {
        return !isGet && program->isSelfContained(*context, owner);
    }

private:
    static inline const std::string nobody;

    using cTokens = std::vector<cProgram::cToken>;

    static cTokens tokenise(const std::string& text);
    static bool convertToPostfix(const cTokens& tokens, cTokens& output);
    double evaluateProgram(const std::string& owner) const;
    double askHost() const;

    cEvaluationContext* context;
    std::string text;
    bool beginsWithGet = false;  // nothing is tried then
    bool isGet = false;  // the text is nothing but GET("key"), and what is between the quotes is asked of the host
    std::shared_ptr<const cProgram> program;                      // never null
    std::vector<std::shared_ptr<const cProgram>> formerPrograms;  // of former texts, that waited when it changed
};

/// The one test for truth of the language: any value but 0.0, a NaN included.
inline bool isTrue(double value) { return value != 0.0; }
