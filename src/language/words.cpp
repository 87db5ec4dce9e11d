#include "language/words.h"

#include <sstream>

namespace {

constexpr char quote = '\'';

bool holdsQuote(const std::string& word) { return word.find(quote) != std::string::npos; }

/// The pieces between the separators, empty ones too: one more than there are separators.
std::vector<std::string> splitAt(char separator, std::string_view text) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator, begin)) {
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

}  // namespace

std::vector<std::string> tokeniseStatement(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    std::vector<std::string> words;
    std::string word;
    while (stream >> word) {
        if (holdsQuote(word)) {
            std::string next;
            while (stream >> next) {
                word += ' ' + next;
                if (holdsQuote(next)) break;
            }
        }
        words.push_back(word);
    }
    return words;
}

std::vector<std::string> splitName(std::string_view name) {
    std::vector<std::string> parts = splitAt('.', name);
    if (parts.back().empty()) parts.pop_back();
    return parts;
}

std::string joinWords(const std::vector<std::string>& words, std::size_t first) {
    std::string joined;
    for (std::size_t i = first; i < words.size(); ++i) joined += words[i] + ' ';
    return joined;
}

std::vector<std::string> splitLines(std::string_view text) { return splitAt('\n', text); }
