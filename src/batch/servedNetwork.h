#pragma once

#include "channel/channel.h"
#include "channel/channelHost.h"
#include "channel/messageInput.h"
#include "kernel/network.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// The model of a program that a controller drives over standard input and output, without a window. Failures of models
/// and files are told on a stream, a line each.
class cServedNetwork : public cNetwork, private cChannelHost {
public:
    /// @param seed stands in for the clock; without one, the calendar's seconds do.
    /// @param failureStream takes failures, and warnings of models that are read. Must live as long as this.
    cServedNetwork(std::optional<std::uint32_t> seed, std::ostream& failureStream);

    /// Reads a model, as the controller's LOAD does, from a pipe too. @return whether there was one.
    bool open(const std::string& path);
    /// Serves messages until the controller closes the program, its input ends, or nobody reads the replies any more.
    /// @throws cException (code 5) at Ctrl-C.
    void serve();

    // ---- the model's hooks

    void clearNetwork() override;
    double hostGet(const std::string& key) override { return channel.get(key); }
    void hostMessage(const std::string& text) override { channel.post(text); }
    void processHostEvents() override;

private:
    // ---- what the channel asks

    bool isRunning() const override { return false; }
    void load(const std::string& path) override;
    void run() override;
    void animate(bool) override {}
    void keepStatement(const std::string& line) override { waitingStatements.push_back(line); }
    void quit() override { ending = true; }
    void send(const std::string& line) override;
    void awaitMessages() override;

    /// @return whether `work` came to its end; if not, that has been told.
    bool attempt(const std::function<void()>& work);
    void clearModel();
    void readModelFile(const std::string& path);
    void throwIfEnding() const;
    std::optional<std::string> nextMessage();
    void tellFailure(const cException& failure);

    std::ostream& failures;
    cChannel channel;
    cMessageInput input;
    std::vector<std::string> waitingStatements;
    std::string globalCode;
    bool isOpening = false;  // the next load is of the given model
    bool isLoaded = false;
    bool ending = false;  // the controller closed the program, or is gone
    int turnsSinceLook = 0;
};
