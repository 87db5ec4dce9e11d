#include "model/modelStatement.h"

#include "language/words.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view wordSeparators = " ;";

constexpr std::array elementForms{
    cElementForm{"COMBI", 2, false},       cElementForm{"NORMAL", 2, false},   cElementForm{"CONSOLIDATOR", 2, false},
    cElementForm{"QUEUE", 2, true},        cElementForm{"ASSEMBLER", 2, true}, cElementForm{"DISASSEMBLER", 2, true},
    cElementForm{"FORK", 2, true},         cElementForm{"DYNAFORK", 2, true},  cElementForm{fusionQueueWord, 3, false},
    cElementForm{"RELEASELINK", 4, false}, cElementForm{"DRAWLINK", 4, false}, cElementForm{"FLOWLINK", 4, false},
};

// The keywords FUSIONQUEUE, DISASSEMBLER and DYNAFORK end in one of these.
constexpr std::array<std::string_view, 9> elementKeywords{
    "COMBI ", "NORMAL ", "QUEUE ", "CONSOLIDATOR ", "ASSEMBLER ", "FORK ", "RELEASELINK ", "DRAWLINK ", "FLOWLINK "};

}  // namespace

cModelStatement::cModelStatement(const std::string& line) {
    std::size_t begin = line.find_first_not_of(wordSeparators);
    while (begin != std::string::npos) {
        const std::size_t end = std::min(line.find_first_of(wordSeparators, begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(wordSeparators, end);
    }
}

const std::string& cModelStatement::word(std::size_t index) const {
    static const std::string none;
    return index < words.size() ? words[index] : none;
}

std::string cModelStatement::takeValue() {
    words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(2, words.size())));
    std::string value;
    for (const std::string& word : words) value += word;
    return value;
}

std::string cModelStatement::rest(std::size_t first) const { return joinWords(words, first); }

bool holdsElementKeyword(std::string_view line) {
    return std::ranges::any_of(elementKeywords,
                               [&](std::string_view keyword) { return line.find(keyword) != std::string_view::npos; });
}

const cElementForm* findElementForm(std::string_view keyword) {
    const auto* form = std::ranges::find(elementForms, keyword, &cElementForm::keyword);
    return form == elementForms.end() ? nullptr : form;
}

bool endsReading(const std::string& line) {
    return holdsElementKeyword(line) && findElementForm(cModelStatement(line).word(0)) == nullptr;
}
