#pragma once

#include "language/renewedExpression.h"

#include <optional>
#include <string>
#include <vector>

/// The text of PRINT and POST, which is filled anew at each execution. The format is what stands between the first and
/// the second double quote of the text, or all of it if there is none; behind the second quote stands an expression for
/// each "%d" (truncated to an integer) and "%f" of the format, parted by blanks.
class cTextFormat {
public:
    explicit cTextFormat(const std::string& text);

    /// The filled text. Each expression runs as if it were compiled now, with its trial, and is evaluated; it is
    /// compiled but once, when it is needed first. A format belongs to one model.
    /// @param statementText what a failure names.
    /// @throws cException (code 1) for a conversion without an expression or of another letter, when all before it have
    /// been filled; what the expressions throw.
    std::string fill(cEvaluationContext& model, const std::string& statementText);

private:
    struct cConversion {
        std::string textBefore;
        std::string letter;  // empty at the end of the format
        std::optional<cRenewedExpression> expression;
    };

    std::vector<cConversion> conversions;
    std::string textBehind;
};
