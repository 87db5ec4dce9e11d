#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Turns the pieces in which bytes arrive into lines. A line ends at a line feed and at nothing else; a carriage return
/// is part of it.
class cLineSplitter {
public:
    void append(std::string_view bytes) { waiting += bytes; }
    /// The next whole line, without its line feed.
    std::optional<std::string> next();
    /// At the end of input: what stands behind the last line feed, if there is something.
    std::optional<std::string> rest();

private:
    std::string waiting;
    std::size_t start = 0;     // of the next line; what lies before it is taken away now and then
    std::size_t searched = 0;  // there is no line feed between `start` and this
};
