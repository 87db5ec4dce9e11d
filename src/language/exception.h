#pragma once

#include <cstdint>
#include <string>

/// The one failure of a model: thrown by checks, expressions and statements, shown by whoever started the run.
struct cException {
    std::int32_t code = 0;       ///< one of the codes below; a code below `failureCode::userStop` is an error
    std::string message;         ///< what the user reads
    std::string location;        ///< the element concerned, or empty
    std::string expressionText;  ///< the text of the failing expression, or empty
};

/// What `cException::code` tells. The unknown keyword of a queue carries 0.
namespace failureCode {
inline constexpr std::int32_t statement = 1;   ///< a statement is written wrongly or can't be carried out
inline constexpr std::int32_t expression = 2;  ///< expressions, distributions, links and queues
inline constexpr std::int32_t noKeywords = 3;  ///< an element that answers no keyword at all
inline constexpr std::int32_t startUp = 4;     ///< the network is not fit to run
inline constexpr std::int32_t userStop = 5;    ///< no error: the user stopped the run
}  // namespace failureCode
