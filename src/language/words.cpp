#include "language/words.h"

#include <sstream>

namespace {

constexpr char quote = '\'';

bool holdsQuote(const std::string& word) { return word.find(quote) != std::string::npos; }

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
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.', begin)) {
        parts.emplace_back(name.substr(begin, dot - begin));
        begin = dot + 1;
    }
    if (begin < name.size()) parts.emplace_back(name.substr(begin));
    return parts;
}

std::string joinWords(const std::vector<std::string>& words, std::size_t first) {
    std::string joined;
    for (std::size_t i = first; i < words.size(); ++i) joined += words[i] + ' ';
    return joined;
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', begin)) {
        lines.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    lines.emplace_back(text.substr(begin));
    return lines;
}
