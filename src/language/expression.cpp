#include "language/expression.h"

#include "language/exception.h"
#include "language/rounding.h"

#include <string_view>

namespace {

constexpr std::string_view getOpening = "GET(\"";
constexpr std::size_t getClosingLength = 2;  // the quote and the bracket, which nobody inspects
constexpr std::size_t shortestGet = 8;

std::string withoutQuotes(std::string text) {
    if (text.find('\'') == std::string::npos) return text;
    text.pop_back();
    if (!text.empty()) text.erase(0, 1);
    return text;
}

bool isOpening(const cOperator& row) { return row.name == "(" || row.name == "["; }

}  // namespace

/// A value on its way to an operator: an operand, which is resolved only when its operator takes it, or a result.
struct cExpression::cValue {
    const std::string* operand = nullptr;
    double number = 0.0;
};

cExpression::cExpression(cEvaluationContext& model, std::string newText, eTrial trial, const std::string& owner)
    : context(&model) {
    compile(withoutQuotes(std::move(newText)), trial, owner);
}

void cExpression::compile(std::string newText, eTrial trial, const std::string& owner) {
    text = std::move(newText);
    const cTokens tokens = tokenise(text);
    const bool isGet = !tokens.empty() && tokens.front().row != nullptr && tokens.front().text == "GET";
    cTokens output;
    const bool isBalanced = isGet || convertToPostfix(tokens, output);
    postfix = std::make_shared<const cTokens>(isBalanced ? std::move(output) : cTokens{});

    // A bad attribute shows when the text is set, though not in the last operand, which no operator follows.
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (tokens[i].row == nullptr) context->resolve(tokens[i].text, owner);
    if (!isBalanced) fail({});
    if (!isGet && trial == eTrial::run) evaluate(owner);
}

cExpression::cTokens cExpression::tokenise(const std::string& text) {
    cTokens tokens;
    std::size_t begin = 0;
    for (std::size_t position = 0; position < text.size();) {
        const cOperator* row = operatorAt(text, position, begin);
        if (row == nullptr) {
            ++position;
            continue;
        }
        if (position > begin) tokens.push_back({text.substr(begin, position - begin), nullptr});
        tokens.push_back({std::string(row->name), row});
        begin = position += row->name.size();
    }
    if (begin < text.size()) tokens.push_back({text.substr(begin), nullptr});
    return tokens;
}

/// The shunting-yard method (Dijkstra 1961). Brackets left open reach the output and fail at evaluation.
/// @return whether every closing bracket and every comma has an opening bracket before it.
bool cExpression::convertToPostfix(const cTokens& tokens, cTokens& output) {
    cTokens waiting;
    const auto popToOutput = [&] {
        output.push_back(std::move(waiting.back()));
        waiting.pop_back();
    };
    const auto popDownTo = [&](auto isEnd) {
        while (!waiting.empty() && !isEnd(*waiting.back().row)) popToOutput();
        return !waiting.empty();
    };

    for (const cToken& token : tokens) {
        const cOperator* row = token.row;
        if (row == nullptr) {
            output.push_back(token);
        } else if (row->kind == eOperatorKind::function || isOpening(*row)) {
            waiting.push_back(token);
        } else if (row->kind == eOperatorKind::separator) {
            if (!popDownTo(isOpening)) return false;
        } else if (row->name == ")" || row->name == "]") {
            const std::string_view opening = row->name == ")" ? "(" : "[";
            if (!popDownTo([&](const cOperator& top) { return top.name == opening; })) return false;
            waiting.pop_back();
            if (!waiting.empty() && waiting.back().row->kind == eOperatorKind::function) popToOutput();
        } else {
            popDownTo([&](const cOperator& top) { return isOpening(top) || top.precedence < row->precedence; });
            waiting.push_back(token);
        }
    }
    while (!waiting.empty()) popToOutput();
    return true;
}

double cExpression::evaluate(const std::string& owner) const {
    if (text.starts_with(getOpening) && text.size() >= shortestGet)
        return context->hostGet(text.substr(getOpening.size(), text.size() - getOpening.size() - getClosingLength));

    const std::shared_ptr<const cTokens> program = postfix;
    std::vector<cValue> values;
    for (const cToken& token : *program) {
        if (token.row == nullptr)
            values.push_back({&token.text, 0.0});
        else
            values.push_back({nullptr, apply(*token.row, values, owner)});
    }
    if (values.size() != 1) fail({});
    return resolveValue(values.back(), owner);
}

double cExpression::resolveValue(const cValue& value, const std::string& owner) const {
    return value.operand != nullptr ? context->resolve(*value.operand, owner) : value.number;
}

/// Takes the arguments of `row` off the values, the last written first, and gives the rounded result.
double cExpression::apply(const cOperator& row, std::vector<cValue>& values, const std::string& owner) const {
    std::vector<double> arguments(static_cast<std::size_t>(row.argCount));
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        if (values.empty()) fail("Incorrect number of arguments for operator or function in:" + text);
        *argument = resolveValue(values.back(), owner);
        values.pop_back();
    }
    try {
        return roundThroughText(applyOperator(row, arguments, context->randomStreams(), *context));
    } catch (cException& failure) {
        if (failure.code == failureCode::expression && failure.expressionText.empty()) failure.expressionText = text;
        throw;
    }
}

void cExpression::fail(std::string message) const {
    throw cException{failureCode::expression, std::move(message), {}, text};
}
