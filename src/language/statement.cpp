#include "language/statement.h"

#include "language/textFormat.h"
#include "language/words.h"

cStatement::cStatement(std::string statementText) : text(std::move(statementText)), args(tokeniseStatement(text)) {
    if (args.empty()) return;
    keyword = std::move(args.front());
    args.erase(args.begin());
}

cStatement::~cStatement() = default;

double cStatement::argumentValue(std::size_t index, cEvaluationContext& model) const {
    compiled.resize(args.size());
    if (compiled[index] != nullptr) return compiled[index]->evaluateAnew();

    auto expression = std::make_unique<const cExpression>(model, args[index]);
    const double value = expression->evaluate();
    compiled[index] = std::move(expression);
    return value;
}

std::string cStatement::filledText(std::size_t first, cEvaluationContext& model) const {
    if (format == nullptr) format = std::make_unique<cTextFormat>(joinWords(args, first));
    return format->fill(model, text);
}
