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
    if (values.empty()) values = std::vector<cRenewedExpression>(args.begin(), args.end());
    return values[index].evaluate(model);
}

std::string cStatement::filledText(std::size_t first, cEvaluationContext& model) const {
    if (format == nullptr) format = std::make_unique<cTextFormat>(joinWords(args, first));
    return format->fill(model, text);
}
