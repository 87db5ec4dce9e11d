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

cExpression::cExpression(cEvaluationContext& model, std::string newText, eTrial trial, const std::string& owner)
    : context(&model) {
    compile(withoutQuotes(std::move(newText)), trial, owner);
}

void cExpression::compile(std::string newText, eTrial trial, const std::string& owner) {
    text = std::move(newText);
    const cTokens tokens = tokenise(text);
    beginsWithGet = !tokens.empty() && tokens.front().row != nullptr && tokens.front().text == "GET";
    cTokens postfix;
    const bool isBalanced = beginsWithGet || convertToPostfix(tokens, postfix);
    // A bad attribute shows when the text is set, though not in the last operand, which no operator follows.
    std::vector<std::string> names;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (tokens[i].row == nullptr) names.push_back(tokens[i].text);
    std::erase_if(formerPrograms, [](const auto& former) { return !former->isWaiting(); });
    if (program != nullptr && program->isWaiting()) formerPrograms.push_back(program);
    const auto compiled = std::make_shared<const cProgram>(isBalanced ? postfix : cTokens{}, names);
    program = compiled;
    isGet = text.size() >= shortestGet && text.starts_with(getOpening);

    compiled->tryNames(*context, owner);
    if (!isBalanced) throw cException{failureCode::expression, {}, {}, text};
    if (!beginsWithGet && trial == eTrial::run) evaluate(owner);
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

    for (const cProgram::cToken& token : tokens) {
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

double cExpression::evaluateProgram(const std::string& owner) const {
    return isGet ? askHost() : program->run(*context, owner, text);
}

double cExpression::askHost() const {
    return context->hostGet(text.substr(getOpening.size(), text.size() - getOpening.size() - getClosingLength));
}

double cExpression::evaluateAnew(const std::string& owner) const {
    if (isQuiet(owner)) return evaluate(owner);  // the second time it would give the same

    program->tryNames(*context, owner);
    if (!beginsWithGet) evaluate(owner);
    return evaluate(owner);
}
