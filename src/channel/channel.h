#pragma once

#include <deque>
#include <string>

class cChannelHost;
class cNetwork;

/// Where a controlling program and the model meet: a message is a line of text, without its line feed.
///
/// The controller sends commands, code for the next run, and answers to what a running model asks; what it is sent are
/// replies, questions and messages of the model. Both are told by a table, in the source file and in the manual page.
///
/// Messages can arrive while another is being served, wherever the host lets them in. Answers and the end of the
/// program are served at once. What would change the model is held until nothing is at work, and so is all that comes
/// behind it: messages keep their order.
///
/// All on one thread. Network and host must live as long as this.
class cChannel {
public:
    cChannel(cNetwork& drivenNetwork, cChannelHost& drivenHost) : network(drivenNetwork), host(drivenHost) {}

    /// Serves a message, or holds it.
    void handle(const std::string& message);
    /// Serves what was held, if nothing is at work any more.
    void serveHeld();

    /// Asks the controller for a value, and waits for the answer without a limit. An answer that is no
    /// decimal number, or none that is finite, is 0.
    /// @throws cException (code 2) if nothing is at work that may ask, or something already asks; and what the host
    /// throws while it waits.
    double get(const std::string& key);
    /// Sends a text of the model.
    void post(const std::string& text) { reply("MESSAGE " + text); }

    /// Whether the controller has ended the program: nothing is served or sent any more.
    bool isClosed() const { return closed; }

private:
    struct cRow;
    static const cRow& rowFor(const std::string& message);
    bool mustWait(const cRow& row) const;
    void serve(const cRow& row, const std::string& message);
    bool isAtWork() const;
    void reply(std::string text);

    void takeAnswer(const std::string& message);
    void resetModel(const std::string& message);
    void loadModel(const std::string& message);
    void setAnimated(const std::string& message);
    void runModel(const std::string& message);
    void sendResults(const std::string& message);
    void sendTrace(const std::string& message);
    void close(const std::string& message);
    void keepStatement(const std::string& message);

    cNetwork& network;
    cChannelHost& host;
    std::deque<std::string> held;
    int depth = 0;  // of messages that are being served, one inside another
    bool waiting = false;
    bool closed = false;
    std::string response;  // of the latest answer
};
