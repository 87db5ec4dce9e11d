#include "channel/errorLine.h"

#include <algorithm>

std::string errorLine(std::int32_t code, std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return "ERROR " + std::to_string(code) + ' ' + text + '\n';
}
