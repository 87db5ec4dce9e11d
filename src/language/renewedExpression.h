#pragma once

#include "language/expression.h"

#include <memory>
#include <string>
#include <utility>

/// A text that is evaluated as an expression that is compiled anew each time, trial and all. Compiled it is but once,
/// when it is needed first; a text that fails then is compiled again the next time. Belongs to one model.
class cRenewedExpression {
public:
    explicit cRenewedExpression(std::string expressionText) : text(std::move(expressionText)) {}

    const std::string& getText() const { return text; }

    /// @throws cException as compiling and evaluating do.
    double evaluate(cEvaluationContext& model) {
        if (compiled != nullptr) return compiled->evaluateAnew();

        auto expression = std::make_unique<const cExpression>(model, text);
        const double value = expression->evaluate();
        compiled = std::move(expression);
        return value;
    }

private:
    std::string text;
    std::unique_ptr<const cExpression> compiled;
};
