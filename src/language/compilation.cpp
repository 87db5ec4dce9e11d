#include "language/compilation.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "language/numberText.h"
#include "language/symbols.h"
#include "language/words.h"

#include <array>

namespace {

/// Adds `text` to the event code of an element, if that is of the right class.
template <typename cKind>
void attach(cNetworkElement* element, const std::string& text, void (cKind::*add)(const std::string&)) {
    if (auto* holder = dynamic_cast<cKind*>(element)) (holder->*add)(text);
}

struct cEventKeyword {
    std::string_view keyword;
    void (*attachTo)(cNetworkElement* element, const std::string& text);
};

constexpr std::array eventKeywords{
    cEventKeyword{"ONSTART",
                  [](cNetworkElement* e, const std::string& t) { attach(e, t, &cNodeAct::addOnStartStatement); }},
    cEventKeyword{"BEFOREEND",
                  [](cNetworkElement* e, const std::string& t) { attach(e, t, &cNodeAct::addBeforeEndStatement); }},
    cEventKeyword{"ONEND",
                  [](cNetworkElement* e, const std::string& t) { attach(e, t, &cNodeAct::addOnEndStatement); }},
    cEventKeyword{"BEFOREDRAWS", [](cNetworkElement* e,
                                    const std::string& t) { attach(e, t, &cNodeActCombi::addBeforeDrawsStatement); }},
    cEventKeyword{"ONENTRY",
                  [](cNetworkElement* e, const std::string& t) { attach(e, t, &cNodeQueue::addOnEntryStatement); }},
    cEventKeyword{"ONFLOW", [](cNetworkElement* e, const std::string& t) { attach(e, t, &cLink::addOnFlowStatement); }},
};

std::string wordAt(const std::vector<std::string>& words, std::size_t index) {
    return index < words.size() ? words[index] : std::string{};
}

std::unique_ptr<cStatement> restAsStatement(const std::vector<std::string>& words, std::size_t first) {
    return std::make_unique<cStatement>(joinWords(words, first));
}

bool placeAsEventCode(cNetwork& network, const std::vector<std::string>& words) {
    for (const cEventKeyword& row : eventKeywords) {
        if (row.keyword != words[0]) continue;
        row.attachTo(network.elements[wordAt(words, 1)].get(), joinWords(words, 2));
        return true;
    }
    return false;
}

bool placeAsNetworkCode(cNetwork& network, const std::vector<std::string>& words) {
    if (words[0] == "AFTERTIMEADVANCE") {
        network.afterTimeAdvance.push_back(restAsStatement(words, 1));
    } else if (words[0] == "BEFORETIMEADVANCE") {
        network.beforeTimeAdvance.push_back(restAsStatement(words, 1));
    } else if (words[0] == "IF") {
        auto condition = std::make_unique<cExpression>(*network.symbols, wordAt(words, 1));
        network.conditionalStatements.push_back({std::move(condition), restAsStatement(words, 2)});
    } else {
        return false;
    }
    return true;
}

void placeStatement(cNetwork& network, const std::string& text, eCompiled compiled) {
    const std::vector<std::string> words = tokeniseStatement(text);
    if (words.empty()) return;

    const bool declares = words[0] == "SAVEVALUE" || words[0] == "VARIABLE";
    if (declares) network.statements.push_back(std::make_unique<cStatement>(text));
    if (compiled == eCompiled::declarations) return;
    if (placeAsEventCode(network, words) || placeAsNetworkCode(network, words)) return;
    network.statements.push_back(std::make_unique<cStatement>(text));
}

}  // namespace

std::vector<std::string> statementTexts(const std::vector<std::string>& lines) {
    std::vector<std::string> texts;
    std::string buffer;
    std::size_t begin = 0;     // what stands before it has been taken
    std::size_t searched = 0;  // there is no ";" from begin up to here
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t lineBegin = buffer.size();
        buffer += lines[i];
        if (const std::size_t comment = buffer.find('\\', lineBegin); comment != std::string::npos)
            buffer.resize(comment);

        const std::size_t end = buffer.find(';', searched);
        searched = end == std::string::npos ? buffer.size() : end;
        const bool isLastLine = i + 1 == lines.size();
        if (begin == buffer.size() || (end == std::string::npos && !isLastLine)) continue;
        texts.push_back(buffer.substr(begin, searched - begin));
        if (end == std::string::npos) break;
        begin = searched = end + 1;
    }
    return texts;
}

void compileCode(cNetwork& network, const std::vector<std::string>& lines, eCompiled compiled) {
    for (const std::string& text : statementTexts(lines)) placeStatement(network, text, compiled);
}

void addInitialContent(cNetwork& network) {
    network.forEachElement([&](cNetworkElement& element) {
        const auto* queue = dynamic_cast<const cNodeQueue*>(&element);
        if (queue == nullptr) return;
        const double content = queue->evaluateInitialContent();
        if (content == 0.0) return;
        const std::string text = "INIT " + queue->getName() + ' ' + fixedText(content);
        network.statements.push_back(std::make_unique<cStatement>(text));
    });
    network.statements.push_back(std::make_unique<cStatement>("SIMULATE"));
}
