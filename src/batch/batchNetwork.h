#pragma once

#include "kernel/network.h"

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>

class cProgressLine;

/// The model of a batch run, with a host that stands in for user and controller: GET is answered from a list given
/// beforehand, POST goes to a stream, and Ctrl-C is the user's Stop.
class cBatchNetwork : public cNetwork {
public:
    using cAnswers = std::map<std::string, double>;

    /// @param seed stands in for the clock; without one, the calendar's seconds do.
    /// @param getAnswers what GET("KEY") is answered, by key.
    /// @param postStream takes the texts of POST. It and the line must live as long as this.
    cBatchNetwork(std::optional<std::uint32_t> seed, cAnswers getAnswers, std::ostream& postStream,
                  cProgressLine& progressLine);

    /// @throws cException (code 2) for a key without an answer.
    double hostGet(const std::string& key) override;
    /// Writes a line of its own: "MESSAGE " and the text.
    void hostMessage(const std::string& text) override;
    void processHostEvents() override;

private:
    const cAnswers answers;
    std::ostream& messages;
    cProgressLine& progress;
};
