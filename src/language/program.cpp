#include "language/program.h"

#include "language/exception.h"
#include "language/numberText.h"
#include "language/rounding.h"

#include <algorithm>
#include <span>

namespace {

[[noreturn]] void failIn(const std::string& text, std::string message) {
    throw cException{failureCode::expression, std::move(message), {}, text};
}

void nameExpression(cException& failure, const std::string& text) {
    if (failure.code == failureCode::expression && failure.expressionText.empty()) failure.expressionText = text;
}

}  // namespace

cProgram::cProgram(const std::vector<cToken>& postfix, const std::vector<std::string>& namesToTry) {
    for (const std::string& name : namesToTry)
        if (!parseNumber(name)) tried.push_back({name, {}, {}, {}, 0, 0});
    std::vector<cSource> sources;  // what stands on the stack of values
    std::uint32_t results = 0;     // how many of them are results
    for (const cToken& token : postfix) {
        if (token.row == nullptr)
            sources.push_back(addOperand(token.text, parseNumber(token.text)));
        else
            addStep(*token.row, sources, results);
    }
    leavesOneValue = sources.size() == 1;
    if (!leavesOneValue) return;
    canBeQuiet = std::ranges::all_of(steps, [](const cStep& step) { return step.row->combine != nullptr; });
    canBeSelfContained = std::ranges::none_of(steps, [](const cStep& step) { return step.row->mayBreathe; });
    if (!steps.empty()) return;  // the last one leaves the value
    std::swap(operands.front(), operands[static_cast<std::size_t>(sources.back())]);
    operands.resize(1);  // the others have been worked out
    isOneOperand = true;
    fixedValue = operands.front().number;
}

void cProgram::addStep(const cOperator& row, std::vector<cSource>& sources, std::uint32_t& results) {
    cStep step;
    step.row = &row;
    step.given = static_cast<std::uint32_t>(std::min(static_cast<std::size_t>(row.argCount), sources.size()));
    for (std::size_t i = 0; i < step.given; ++i) {
        step.sources[i] = sources.back();
        if (isResult(sources.back())) --results;
        sources.pop_back();
    }
    step.hasNumbers = findNumbers(step);
    if (const auto value = foldedValue(step)) {
        sources.push_back(addOperand({}, value));
        return;
    }
    if (step.given == 2) step.combineRounded = row.combineRounded;
    step.target = results++;
    deepest = std::max(deepest, results);
    sources.push_back(~static_cast<cSource>(step.target));
    steps.push_back(step);
}

void cProgram::tryNames(cEvaluationContext& context, const std::string& owner) const {
    if (tried.empty()) return;
    const cWait waiting(*this);
    for (const cOperand& operand : tried) operand.value(context, owner);
}

cProgram::cSource cProgram::addOperand(const std::string& text, std::optional<double> number) {
    operands.push_back({text, number, {}, {}, 0, 0});
    return static_cast<cSource>(operands.size()) - 1;
}

std::optional<double> cProgram::numberAt(cSource source) const {
    return isResult(source) ? std::nullopt : operands[static_cast<std::size_t>(source)].number;
}

/// Whether a step takes nothing but numbers, and all that it needs.
bool cProgram::findNumbers(cStep& step) const {
    const auto argCount = static_cast<std::size_t>(step.row->argCount);
    for (std::size_t i = 0; i < step.given; ++i) {
        const auto number = numberAt(step.sources[i]);
        if (!number) return false;
        step.numbers[argCount - 1 - i] = *number;
    }
    return step.given == argCount;
}

/// The value of an operator of numbers, unless it fails: it is to fail at each run.
std::optional<double> cProgram::foldedValue(const cStep& step) {
    if (step.row->combine == nullptr || !step.hasNumbers) return std::nullopt;
    try {
        return step.row->combineRounded(step.numbers[0], step.numbers[1]);
    } catch (const cException&) {
        return std::nullopt;
    }
}

double cProgram::cOperand::lookUp(cEvaluationContext& context, const std::string& newOwner) const {
    const cMeaning found = context.meaningOf(text, newOwner);
    if (found.isLasting) {
        meaning = found;
        version = context.namesVersion;  // looking up may have changed it
        if (meaning.isOfOwner) owner = newOwner;
        figureVersion = meaning.isOfOwner || meaning.isFormula ? 0 : version;
    }
    return found.value();
}

/// @param knownVersion gets the version of the names, if the answer is yes for every owner.
bool cProgram::areFiguresAtHand(const cEvaluationContext& context, const std::string& owner,
                                std::uint64_t& knownVersion) const {
    const auto isAtHand = [&](const cOperand& operand) { return operand.isAtHand(context, owner); };
    if (!std::ranges::all_of(operands, isAtHand)) return false;

    const auto isOfOwner = [](const cOperand& operand) { return !operand.number && operand.meaning.isOfOwner; };
    if (std::ranges::none_of(operands, isOfOwner)) knownVersion = context.namesVersion;
    return true;
}

inline double cProgram::valueOf(cSource source, const double* results, cEvaluationContext& context,
                                const std::string& owner) const {
    if (isResult(source)) return results[~source];
    const cOperand& operand = operands[static_cast<std::size_t>(source)];
    if (operand.figureVersion == context.namesVersion) return operand.meaning.value();
    if (operand.number) return *operand.number;
    const bool isFigure = operand.isKnown(context, owner) && !operand.meaning.isFormula;
    return isFigure ? operand.meaning.value() : waitFor(operand, context, owner);
}

double cProgram::waitFor(const cOperand& operand, cEvaluationContext& context, const std::string& owner) const {
    const cWait waiting(*this);
    return operand.value(context, owner);
}

/// What a function, or a row without an implementation, makes of its arguments.
double cProgram::sample(const cStep& step, const double* arguments, cEvaluationContext& context,
                        const std::string& text) const {
    const cWait waiting(*this);
    try {
        const std::span<const double> given(arguments, step.given);
        return roundThroughText(applyOperator(*step.row, given, context.randomStreams(), context));
    } catch (cException& failure) {
        nameExpression(failure, text);
        throw;
    }
}

/// A step of any kind.
double cProgram::apply(const cStep& step, const double* results, cEvaluationContext& context, const std::string& owner,
                       const std::string& text) const {
    if (step.hasNumbers) return sample(step, step.numbers.data(), context, text);

    std::array<double, mostArguments> arguments;  // NOLINT: each is written before it is read
    const auto argCount = static_cast<std::size_t>(step.row->argCount);
    for (std::size_t i = 0; i < step.given; ++i)
        arguments[argCount - 1 - i] = valueOf(step.sources[i], results, context, owner);
    if (step.given < argCount) failIn(text, "Incorrect number of arguments for operator or function in:" + text);
    return sample(step, arguments.data(), context, text);
}

/// Each step takes its arguments, the last written first, and leaves the rounded result; the last one leaves the value.
[[gnu::always_inline]] inline double cProgram::compute(double* results, cEvaluationContext& context,
                                                       const std::string& owner, const std::string& text) const {
    double value = 0.0;
    for (const cStep& step : steps) {
        if (step.combineRounded == nullptr) {
            value = apply(step, results, context, owner, text);
        } else {
            const double right = valueOf(step.sources[0], results, context, owner);
            const double left = valueOf(step.sources[1], results, context, owner);
            try {
                value = step.combineRounded(left, right);
            } catch (cException& failure) {
                nameExpression(failure, text);
                throw;
            }
        }
        results[step.target] = value;
    }
    return value;
}

double cProgram::run(cEvaluationContext& context, const std::string& owner, const std::string& text) const {
    constexpr std::size_t few = 16;
    if (!leavesOneValue || deepest > few) return runAtLength(context, owner, text);
    std::array<double, few> results;  // NOLINT: each is written before it is read
    return compute(results.data(), context, owner, text);
}

/// The way of formulas that need much room, or fail when all is worked out.
double cProgram::runAtLength(cEvaluationContext& context, const std::string& owner, const std::string& text) const {
    std::vector<double> results(deepest);
    const double value = compute(results.data(), context, owner, text);
    if (!leavesOneValue) failIn(text, {});
    return value;
}
