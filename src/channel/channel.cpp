#include "channel/channel.h"

#include "channel/channelHost.h"
#include "channel/resultJson.h"
#include "kernel/network.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"
#include "language/numberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace {

char upperCase(char letter) { return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter; }

/// Whether `text` in upper case is `word`.
bool isWord(std::string_view text, std::string_view word) {
    return std::ranges::equal(text, word, [](char one, char other) { return upperCase(one) == other; });
}

/// A part of a message between single blanks: two in a row have an empty field between them.
std::string_view field(std::string_view message, std::size_t number) {
    for (; number > 0; --number) {
        const std::size_t blank = message.find(' ');
        if (blank == std::string_view::npos) return {};
        message.remove_prefix(blank + 1);
    }
    return message.substr(0, message.find(' '));
}

/// All behind the first blank, blanks included, less one ";" at its end.
std::string argumentOf(std::string_view message) {
    const std::size_t blank = message.find(' ');
    if (blank == std::string_view::npos) return {};
    message.remove_prefix(blank + 1);
    if (message.ends_with(';')) message.remove_suffix(1);
    return std::string(message);
}

/// What an answer says: digits with a point and an exponent at most, white space around them. All else is 0, and so is
/// what no model can count with: an infinity, what is too large for a number, or what is none by its name.
double valueOf(const std::string& answer) {
    static constexpr const char* whiteSpace = " \t\r\v\f";
    const std::size_t begin = answer.find_first_not_of(whiteSpace);
    if (begin == std::string::npos) return 0.0;
    const std::string number = answer.substr(begin, answer.find_last_not_of(whiteSpace) + 1 - begin);
    if (number.find_first_not_of("0123456789.eE+-") != std::string::npos) return 0.0;
    const double value = parseNumber(number).value_or(0.0);
    return std::isfinite(value) ? value : 0.0;
}

bool opensWith(std::string_view message, std::string_view word) { return message.starts_with(word); }
bool isWhole(std::string_view message, std::string_view word) { return isWord(message, word); }
bool hasCommand(std::string_view message, std::string_view word) { return isWord(field(message, 0), word); }
bool isAnything(std::string_view, std::string_view) { return true; }

/// When a message is served that arrives while another is, or during a run.
enum class eTurn {
    atOnce,    // always
    inOrder,   // unless others before it are held
    whenIdle,  // once nothing is at work
};

/// Counts a scope in.
class cInside {
public:
    explicit cInside(int& counted) : depth(counted) { ++depth; }
    ~cInside() { --depth; }
    cInside(const cInside&) = delete;
    cInside& operator=(const cInside&) = delete;

private:
    int& depth;
};

}  // namespace

struct cChannel::cRow {
    bool (*test)(std::string_view message, std::string_view word);
    std::string_view word;
    eTurn turn;
    void (cChannel::*handler)(const std::string& message);
};

/// What a controller can send, in the order of the tests.
const cChannel::cRow& cChannel::rowFor(const std::string& message) {
    static constexpr std::array rows{
        cRow{opensWith, "RESPONSE_TO_GET", eTurn::atOnce, &cChannel::takeAnswer},
        cRow{isWhole, "RESETMODEL;", eTurn::whenIdle, &cChannel::resetModel},
        cRow{hasCommand, "LOAD", eTurn::whenIdle, &cChannel::loadModel},
        cRow{hasCommand, "SETANIMATE", eTurn::inOrder, &cChannel::setAnimated},
        cRow{isWhole, "RUNMODEL;", eTurn::whenIdle, &cChannel::runModel},
        cRow{isWhole, "GETRESULTS;", eTurn::inOrder, &cChannel::sendResults},
        cRow{hasCommand, "GETTRACE", eTurn::inOrder, &cChannel::sendTrace},
        cRow{isWhole, "CLOSE;", eTurn::atOnce, &cChannel::close},
        cRow{isAnything, "", eTurn::inOrder, &cChannel::keepStatement},
    };
    return *std::ranges::find_if(rows, [&](const cRow& row) { return row.test(message, row.word); });
}

void cChannel::handle(const std::string& message) {
    if (closed) return;
    const cRow& row = rowFor(message);
    if (mustWait(row)) {
        held.push_back(message);
        return;
    }
    serve(row, message);
    serveHeld();
}

void cChannel::serveHeld() {
    while (!closed && !held.empty() && !isAtWork()) {
        const std::string message = std::move(held.front());
        held.pop_front();
        serve(rowFor(message), message);
    }
}

bool cChannel::mustWait(const cRow& row) const {
    if (row.turn == eTurn::atOnce) return false;
    return !held.empty() || (row.turn == eTurn::whenIdle && isAtWork());
}

void cChannel::serve(const cRow& row, const std::string& message) {
    const cInside serving(depth);
    (this->*row.handler)(message);
}

bool cChannel::isAtWork() const { return depth > 0 || host.isRunning(); }

/// The one way out. A line feed inside a text would end the line.
void cChannel::reply(std::string text) {
    if (closed) return;
    std::ranges::replace(text, '\n', '|');
    host.send(text + '\n');
}

double cChannel::get(const std::string& key) {
    const auto refuse = [&key](const std::string& reason) {
        throw cException{failureCode::expression, "No answer to GET(\"" + key + "\"): " + reason, {}, {}};
    };
    if (!isAtWork()) refuse("the controller is asked during a run alone.");
    if (waiting) refuse("the controller is being asked for another value.");

    waiting = true;
    reply("GET " + key);
    try {
        while (waiting) host.awaitMessages();
    } catch (...) {
        waiting = false;
        throw;
    }
    return valueOf(response);
}

void cChannel::takeAnswer(const std::string& message) {
    response = field(message, 1);
    waiting = false;
}

void cChannel::resetModel(const std::string&) { network.clearNetwork(); }

/// Results and traces stay those of the last run, whatever model is there by now.
void cChannel::loadModel(const std::string& message) { host.load(argumentOf(message)); }

void cChannel::setAnimated(const std::string& message) {
    if (message.find(' ') == std::string::npos) return;
    host.animate(field(message, 1) == "true;");
}

void cChannel::runModel(const std::string&) {
    host.run();
    reply("FINISHED_RUN");
}

void cChannel::sendResults(const std::string&) { reply("RESULTS " + buildResultsJson(network)); }

void cChannel::sendTrace(const std::string& message) {
    const std::string name = argumentOf(message);
    const auto trace = network.runStatistics->printTexts.find(name);
    if (trace == network.runStatistics->printTexts.end()) {
        host.log("TRACE not found for: " + name);
        return;
    }
    host.log("Sending TRACE response to Python for: " + name + ' ' + trace->second);
    reply("TRACE " + trace->second);
    host.log("Flushed TRACE response to Python");
}

void cChannel::close(const std::string&) {
    reply("CLOSED_TIMBERSIM");
    closed = true;
    held.clear();
    host.quit();
}

void cChannel::keepStatement(const std::string& message) { host.keepStatement(message); }
