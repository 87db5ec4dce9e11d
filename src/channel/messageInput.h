#pragma once

#include "channel/lineSplitter.h"

#include <optional>
#include <string>

/// The messages that come in through an open file of the system, a line each.
class cMessageInput {
public:
    explicit cMessageInput(int readFrom) : descriptor(readFrom) {}

    /// The next of the messages that are here.
    std::optional<std::string> next() { return lines.next(); }
    /// Takes the bytes that are here. Waits for some if there are none, unless whoever shares the file made it one that
    /// doesn't wait; so callers wait first, for what else they wait for too. An interrupt ends the wait.
    /// @return false at the end of input, which may be no end for ever: a pipe or a file can go on later.
    bool receive();
    /// At the end of input: a last message without a line feed, if there is one.
    std::optional<std::string> rest() { return lines.rest(); }

private:
    const int descriptor;
    cLineSplitter lines;
};
