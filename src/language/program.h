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
    /// The value now. The program must live until it is known.
    /// @param text the formula as written, for the messages of failures.
    /// @throws cException (code 2, with the text) if the formula is none or an operation fails; what resolving throws.
    double run(cEvaluationContext& context, const std::string& owner, const std::string& text) const;

    /// Whether a run or a trial of names waits for something that may reach the host: a look-up, a VARIABLE or a
    /// sample. The host may change the formula there.
    bool isWaiting() const { return waits > 0; }

    /// The value, if it is the same at each run and nothing else happens in one.
    const std::optional<double>& constant() const { return fixedValue; }

    /// Whether the formula is one operand and nothing else; then its value. The program may be gone when that is known:
    /// a VARIABLE may ask the host, which may change the formula.
    bool isOperand() const { return isOneOperand; }
    double operandValue(cEvaluationContext& context, const std::string& owner) const {
        return operands.front().value(context, owner);
    }

    /// Whether a run is known to do nothing but read figures and combine them. A trial of names does nothing then: they
    /// are among the operands, and nobody has changed what they mean.
    bool isQuiet(const cEvaluationContext& context, const std::string& owner) const {
        if (quietVersion == context.namesVersion) return true;
        return canBeQuiet && areFiguresAtHand(context, owner, quietVersion);
    }

    /// Whether a run is known to read figures, to draw and to combine, and to do nothing else.
    bool isSelfContained(const cEvaluationContext& context, const std::string& owner) const {
        if (selfContainedVersion == context.namesVersion) return true;
        return canBeSelfContained && areFiguresAtHand(context, owner, selfContainedVersion);
    }

private:
    struct cOperand {
        std::string text;
        std::optional<double> number;
        // What the name meant when it was last looked up, for whom, and how many changes of names ago.
        mutable cMeaning meaning;
        mutable std::string owner;
        mutable std::uint64_t version = 0;
        mutable std::uint64_t figureVersion = 0;  // the same for a figure that all owners share

        bool isKnown(const cEvaluationContext& context, const std::string& newOwner) const {
            return version == context.namesVersion && (!meaning.isOfOwner || owner == newOwner);
        }
        /// Whether the value is a number, or a figure that is known where to read.
        bool isAtHand(const cEvaluationContext& context, const std::string& newOwner) const {
            return number || (isKnown(context, newOwner) && !meaning.isFormula);
        }
        double value(cEvaluationContext& context, const std::string& newOwner) const {
            if (number) return *number;
            return isKnown(context, newOwner) ? meaning.value() : lookUp(context, newOwner);
        }
        double lookUp(cEvaluationContext& context, const std::string& newOwner) const;
    };

    /// Where a step takes an argument from: an operand, by its index, or the result of an earlier step, by the
    /// complement of its place among the results.
    using cSource = std::int32_t;
    static bool isResult(cSource source) { return source < 0; }

    struct cStep {
        const cOperator* row = nullptr;
        double (*combineRounded)(double left, double right) = nullptr;  // if that is all it does
        std::uint32_t target = 0;                                       // the place of its result
        std::uint32_t given = 0;                       // arguments that are there; fewer than needed is a failure
        std::array<cSource, mostArguments> sources{};  // in the order of resolving: the last written first
        std::array<double, mostArguments> numbers{};   // the arguments, if all are numbers
        bool hasNumbers = false;
    };

    /// Counts a wait for the length of a scope.
    class cWait {
    public:
        explicit cWait(const cProgram& program) : waits(program.waits) { ++waits; }
        ~cWait() { --waits; }
        cWait(const cWait&) = delete;
        cWait& operator=(const cWait&) = delete;

    private:
        std::uint32_t& waits;
    };

    cSource addOperand(const std::string& text, std::optional<double> number);
    void addStep(const cOperator& row, std::vector<cSource>& sources, std::uint32_t& results);
    std::optional<double> numberAt(cSource source) const;
    bool findNumbers(cStep& step) const;
    static std::optional<double> foldedValue(const cStep& step);
    bool areFiguresAtHand(const cEvaluationContext& context, const std::string& owner,
                          std::uint64_t& knownVersion) const;

    double runAtLength(cEvaluationContext& context, const std::string& owner, const std::string& text) const;
    double compute(double* results, cEvaluationContext& context, const std::string& owner,
                   const std::string& text) const;
    double valueOf(cSource source, const double* results, cEvaluationContext& context, const std::string& owner) const;
    double waitFor(const cOperand& operand, cEvaluationContext& context, const std::string& owner) const;
    double sample(const cStep& step, const double* arguments, cEvaluationContext& context,
                  const std::string& text) const;
    double apply(const cStep& step, const double* results, cEvaluationContext& context, const std::string& owner,
                 const std::string& text) const;

    std::vector<cOperand> tried;  // names alone: a number does nothing when it is looked up
    std::vector<cOperand> operands;
    std::vector<cStep> steps;
    std::uint32_t deepest = 0;  // results that wait at the same time
    bool leavesOneValue = false;
    bool isOneOperand = false;
    bool canBeQuiet = false;
    bool canBeSelfContained = false;
    std::optional<double> fixedValue;
    mutable std::uint32_t waits = 0;
    // Of the names with which a run is known to be so for all owners.
    mutable std::uint64_t quietVersion = 0;
    mutable std::uint64_t selfContainedVersion = 0;
};
