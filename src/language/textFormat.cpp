#include "language/textFormat.h"

#include "language/numberText.h"
#include "language/rounding.h"
#include "language/words.h"

namespace {

struct cParts {
    std::string format;
    std::vector<std::string> expressions;
};

cParts partsOf(const std::string& text) {
    const std::size_t opening = text.find('"');
    if (opening == std::string::npos) return {text, {}};

    const std::size_t closing = text.find('"', opening + 1);
    if (closing == std::string::npos) return {text.substr(opening + 1), {}};
    return {text.substr(opening + 1, closing - opening - 1), tokeniseStatement(text.substr(closing + 1))};
}

[[noreturn]] void fail(const std::string& reason, const std::string& statementText) {
    throw cException{failureCode::statement, reason + " in statement:\n" + statementText, {}, {}};
}

}  // namespace

cTextFormat::cTextFormat(const std::string& text) {
    const auto [format, expressions] = partsOf(text);
    std::size_t begin = 0;
    for (std::size_t percent = format.find('%'); percent != std::string::npos; percent = format.find('%', begin)) {
        cConversion conversion{format.substr(begin, percent - begin), format.substr(percent + 1, 1), std::nullopt};
        begin = percent + 1 + conversion.letter.size();
        if (conversions.size() < expressions.size()) conversion.expression.emplace(expressions[conversions.size()]);
        conversions.push_back(std::move(conversion));
    }
    textBehind = format.substr(begin);
}

std::string cTextFormat::fill(cEvaluationContext& model, const std::string& statementText) {
    std::string filled;
    for (cConversion& conversion : conversions) {
        const std::string& letter = conversion.letter;
        if (letter != "d" && letter != "f") fail("Unknown conversion \"%" + letter + "\"", statementText);
        if (!conversion.expression) fail("Format with more conversions than expressions", statementText);

        const double value = conversion.expression->evaluate(model);
        filled += conversion.textBefore;
        filled += letter == "d" ? std::to_string(truncateToInt32(value)) : fixedText(value);
    }
    return filled += textBehind;
}
