#pragma once

#include "language/evaluationContext.h"
#include "language/operators.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A formula in the form in which it is computed: a flat list of steps, one for each operator that isn't worked out
/// already, over a list of operands.
///
/// An operand is resolved when its operator takes it, not before, and the last written argument comes first: names can
/// draw random numbers, so this order decides the results of models. Numbers are read once, and operators of numbers
/// alone are worked out once, with their rounding. A name is bound to what it means until the names of the model
/// change.
class cProgram {
public:
    /// A piece of a formula. In a program the pieces stand in postfix order.
    struct cToken {
        std::string text;
        const cOperator* row = nullptr;  // null for an operand, also for one that spells a function's name
    };

    /// @param namesToTry what `tryNames` looks up.
    cProgram(const std::vector<cToken>& postfix, const std::vector<std::string>& namesToTry);

    /// Resolves names, with all that this does, and drops the values.
    void tryNames(cEvaluationContext& context, const std::string& owner) const;
    /// The value now.
    /// @param text the formula as written, for the messages of failures.
    /// @throws cException (code 2, with the text) if the formula is none or an operation fails; what resolving throws.
    double run(cEvaluationContext& context, const std::string& owner, const std::string& text) const;

    /// The value, if it is the same at each run and nothing else happens in one.
    const std::optional<double>& constant() const { return fixedValue; }

    /// Whether the formula is one operand and nothing else; then its value. The program may be gone when that is known:
    /// a VARIABLE may ask the host, which may change the formula.
    bool isOperand() const { return steps.empty() && last != result; }
    double operandValue(cEvaluationContext& context, const std::string& owner) const {
        return operands[static_cast<std::size_t>(last)].value(context, owner);
    }

    /// Whether a run is known to do nothing but read figures and combine them.
    bool isQuiet(const cEvaluationContext& context, const std::string& owner) const;

private:
    static constexpr std::int32_t result = -1;  // in place of an operand's index: what an earlier step has left

    struct cOperand {
        std::string text;
        std::optional<double> number;
        // What the name meant when it was last looked up, for whom, and how many changes of names ago.
        mutable cMeaning meaning;
        mutable std::string owner;
        mutable std::uint64_t version = 0;

        bool isKnown(const cEvaluationContext& context, const std::string& newOwner) const {
            return version == context.namesVersion && (!meaning.isOfOwner || owner == newOwner);
        }
        double value(cEvaluationContext& context, const std::string& newOwner) const {
            if (number) return *number;
            return isKnown(context, newOwner) ? meaning.value() : lookUp(context, newOwner);
        }
        double lookUp(cEvaluationContext& context, const std::string& newOwner) const;
    };
    struct cStep {
        const cOperator* row = nullptr;
        std::size_t given = 0;                              // arguments that are there; fewer than needed is a failure
        std::array<std::int32_t, mostArguments> sources{};  // in the order of resolving: the last written first
    };

    std::int32_t addOperand(const std::string& text, std::optional<double> number);
    std::optional<double> foldedValue(const cStep& step) const;
    double execute(const cStep& step, double*& top, cEvaluationContext& context, const std::string& owner,
                   const std::string& text) const;

    std::vector<cOperand> tried;
    std::vector<cOperand> operands;
    std::vector<cStep> steps;
    std::size_t deepest = 0;  // results that wait at the same time
    bool leavesOneValue = false;
    std::int32_t last = result;  // the source of the value
    std::optional<double> fixedValue;
};
