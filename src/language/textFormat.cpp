#include "language/textFormat.h"

#include "kernel/network.h"
#include "language/numberText.h"
#include "language/rounding.h"
#include "language/symbols.h"
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

std::string formatText(cNetwork& network, const std::string& text, const std::string& statementText) {
    const auto [format, expressions] = partsOf(text);
    std::string filled;
    std::size_t begin = 0;
    std::size_t used = 0;
    for (std::size_t percent = format.find('%'); percent != std::string::npos; percent = format.find('%', begin)) {
        filled.append(format, begin, percent - begin);
        const std::string conversion = format.substr(percent + 1, 1);
        begin = percent + 1 + conversion.size();
        if (conversion != "d" && conversion != "f") fail("Unknown conversion \"%" + conversion + "\"", statementText);
        if (used == expressions.size()) fail("Format with more conversions than expressions", statementText);

        const cExpression expression(*network.symbols, expressions[used++]);
        const double value = expression.evaluate();
        filled += conversion == "d" ? std::to_string(truncateToInt32(value)) : fixedText(value);
    }
    return filled.append(format, begin);
}
