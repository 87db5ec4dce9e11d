// Messages of a controller to the yard, one a line, as a program without a window serves them. What stands behind a
// question of the model is read while it waits, and the end of the lines breaks it off.

#include "fuzzedYard.h"

#include "channel/channel.h"
#include "channel/channelHost.h"
#include "channel/lineSplitter.h"

#include <optional>
#include <string_view>

namespace {

class cFuzzedChannel : public cFuzzedYard, private cChannelHost {
public:
    /// @param bytes come in two pieces.
    explicit cFuzzedChannel(std::string_view bytes) {
        const std::size_t half = bytes.size() / 2;
        input.append(bytes.substr(0, half));
        rest = bytes.substr(half);
    }

    void serve() {
        while (const std::optional<std::string> message = nextMessage()) channel.handle(*message);
    }

    double hostGet(const std::string& key) override {
        cFuzzedYard::hostGet(key);
        return channel.get(key);
    }
    void hostMessage(const std::string& text) override {
        cFuzzedYard::hostMessage(text);
        channel.post(text);
    }

private:
    bool isRunning() const override { return false; }
    void load(const std::string&) override { statements.clear(); }
    void run() override {
        runAlso(further);
        further.clear();
    }
    void animate(bool) override {}
    void keepStatement(const std::string& line) override { further += line + '\n'; }
    void quit() override {}
    /// A reply is one line, and none comes behind the last.
    void send(const std::string& line) override {
        if (wasClosed || line.find('\n') != line.size() - 1) std::abort();
        wasClosed = line == "CLOSED_TIMBERSIM\n";
    }
    void awaitMessages() override {
        const std::optional<std::string> message = nextMessage();
        if (!message || channel.isClosed()) throw cException{failureCode::userStop, {}, {}, {}};
        channel.handle(*message);
    }

    std::optional<std::string> nextMessage() {
        if (std::optional<std::string> line = input.next()) return line;
        input.append(rest);
        rest = {};
        std::optional<std::string> line = input.next();
        return line ? line : input.rest();
    }

    cChannel channel{*this, *this};
    cLineSplitter input;
    std::string_view rest;
    std::string further;
    bool wasClosed = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    cFuzzedChannel(bytes).serve();
    return 0;
}
