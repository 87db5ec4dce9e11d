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

}  // namespace

cProgram::cProgram(const std::vector<cToken>& postfix, const std::vector<std::string>& namesToTry) {
    for (const std::string& name : namesToTry) tried.push_back({name, parseNumber(name), {}, {}, 0});
    std::vector<std::int32_t> sources;  // what stands on the stack of values
    std::size_t results = 0;
    for (const cToken& token : postfix) {
        if (token.row == nullptr) {
            sources.push_back(addOperand(token.text, parseNumber(token.text)));
            continue;
        }
        cStep step{token.row, std::min(static_cast<std::size_t>(token.row->argCount), sources.size())};
        for (std::size_t i = 0; i < step.given; ++i) {
            step.sources[i] = sources.back();
            if (sources.back() == result) --results;
            sources.pop_back();
        }
        if (const auto value = foldedValue(step)) {
            sources.push_back(addOperand({}, value));
            continue;
        }
        steps.push_back(step);
        sources.push_back(result);
        deepest = std::max(deepest, ++results);
    }
    leavesOneValue = sources.size() == 1;
    if (!leavesOneValue) return;
    last = sources.back();
    if (last != result && steps.empty()) fixedValue = operands[static_cast<std::size_t>(last)].number;
}

void cProgram::tryNames(cEvaluationContext& context, const std::string& owner) const {
    for (const cOperand& operand : tried) operand.value(context, owner);
}

std::int32_t cProgram::addOperand(const std::string& text, std::optional<double> number) {
    operands.push_back({text, number, {}, {}, 0});
    return static_cast<std::int32_t>(operands.size()) - 1;
}

/// The value of an operator of numbers, unless it fails: it is to fail at each run.
std::optional<double> cProgram::foldedValue(const cStep& step) const {
    if (step.row->combine == nullptr || step.given != 2) return std::nullopt;
    if (step.sources[0] == result || step.sources[1] == result) return std::nullopt;

    const auto& right = operands[static_cast<std::size_t>(step.sources[0])].number;
    const auto& left = operands[static_cast<std::size_t>(step.sources[1])].number;
    if (!left || !right) return std::nullopt;
    try {
        return roundThroughText(step.row->combine(*left, *right));
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
    }
    return found.value();
}

bool cProgram::isQuiet(const cEvaluationContext& context, const std::string& owner) const {
    const auto combines = [](const cStep& step) { return step.row->combine != nullptr; };
    const auto onlyReads = [&](const cOperand& operand) {
        return operand.number || (operand.isKnown(context, owner) && !operand.meaning.isFormula);
    };
    return leavesOneValue && std::ranges::all_of(steps, combines) && std::ranges::all_of(operands, onlyReads);
}

double cProgram::run(cEvaluationContext& context, const std::string& owner, const std::string& text) const {
    constexpr std::size_t few = 16;
    std::array<double, few> nearby;  // NOLINT: each is written before it is read
    std::vector<double> many;
    if (deepest > few) many.resize(deepest);
    double* top = deepest > few ? many.data() : nearby.data();

    for (const cStep& step : steps) {
        const double value = execute(step, top, context, owner, text);
        *top++ = value;
    }
    if (!leavesOneValue) failIn(text, {});
    return last == result ? *--top : operands[static_cast<std::size_t>(last)].value(context, owner);
}

/// Takes the arguments of a step, the last written first, and gives the rounded result.
double cProgram::execute(const cStep& step, double*& top, cEvaluationContext& context, const std::string& owner,
                         const std::string& text) const {
    const cOperator& row = *step.row;
    std::array<double, mostArguments> arguments;  // NOLINT: each is written before it is read
    const auto argCount = static_cast<std::size_t>(row.argCount);
    for (std::size_t i = 0; i < step.given; ++i) {
        const std::int32_t source = step.sources[i];
        arguments[argCount - 1 - i] =
            source == result ? *--top : operands[static_cast<std::size_t>(source)].value(context, owner);
    }
    if (step.given < argCount) failIn(text, "Incorrect number of arguments for operator or function in:" + text);
    try {
        if (row.combine != nullptr) return roundThroughText(row.combine(arguments[0], arguments[1]));
        const std::span<const double> given(arguments.data(), argCount);
        return roundThroughText(applyOperator(row, given, context.randomStreams(), context));
    } catch (cException& failure) {
        if (failure.code == failureCode::expression && failure.expressionText.empty()) failure.expressionText = text;
        throw;
    }
}
