#include "batch/runCode.h"

#include "language/compilation.h"
#include "model/lineSource.h"

#include <algorithm>
#include <sstream>

namespace {

/// The lines of a text, and as many empty ones as it has statements: a line gives up one statement only, and what
/// stands behind it waits for the next line.
std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    cLineSource source(stream);
    std::vector<std::string> lines;
    for (std::string line; source.next(line);) lines.push_back(line);
    lines.resize(lines.size() + static_cast<std::size_t>(std::ranges::count(text, ';')));
    return lines;
}

}  // namespace

std::vector<std::string> leadingLines(const std::vector<std::string>& codeTexts,
                                      const std::vector<std::string>& statements) {
    std::vector<std::string> texts = codeTexts;
    texts.insert(texts.end(), statements.begin(), statements.end());

    std::vector<std::string> leading;
    for (const std::string& text : texts)
        for (const std::string& statement : statementTexts(linesOf(text))) leading.push_back(statement + ';');
    return leading;
}
