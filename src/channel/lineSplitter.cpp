#include "channel/lineSplitter.h"

#include <utility>

std::optional<std::string> cLineSplitter::next() {
    const std::size_t end = waiting.find('\n', searched);
    if (end == std::string::npos) {
        waiting.erase(0, start);
        start = 0;
        searched = waiting.size();
        return std::nullopt;
    }
    std::string line = waiting.substr(start, end - start);
    start = searched = end + 1;
    return line;
}

std::optional<std::string> cLineSplitter::rest() {
    std::string line = waiting.substr(start);
    waiting.clear();
    start = searched = 0;
    return line.empty() ? std::nullopt : std::optional(std::move(line));
}
