#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class cNetwork;

/// The trace of a replication: one comma-separated line for each decision of the kernel.
///
/// The header names a serial number that no line has, so each line stands one column to the left of it. The lines are
/// laid out like this for good: readers rely on it.

inline constexpr std::string_view traceHeader =
    "*SNo*,*SimTime*,*Action*,*NodeName*,*AttemptResult*,*ActStartTime*,*ActEndTime*,*QCurCount*,*QTotCount*,"
    "*FStrength*,*FSucc*\n";

/// The largest number of lines that a replication keeps, the header among them; further ones are dropped.
inline constexpr std::size_t traceCapacity = 50000;

namespace attemptResult {
inline constexpr std::string_view semaphore = "Fail-Semaphore";
inline constexpr std::string_view queueSupport = "Fail-QueueSupport";
inline constexpr std::string_view success = "Success";
}  // namespace attemptResult

/// Keeps what happened, and makes lines of it when somebody asks: most runs are never read.
class cTrace {
public:
    enum class eForm : std::uint8_t { text, attempt, end, draw, branch, entry };

    /// The name of an element in a record, in place: it has at most 15 characters.
    class cName {
    public:
        cName() = default;
        explicit cName(const std::string& name)
            : length(static_cast<std::uint8_t>(std::min(name.size(), characters.size()))) {
            name.copy(characters.data(), length);
        }
        std::string text() const { return {characters.data(), length}; }

    private:
        std::array<char, 15> characters{};
        std::uint8_t length = 0;
    };

    /// What a line is made of. `word` points to a text that lasts; of a line that is a text, `number` is its index.
    struct cRecord {
        eForm form = eForm::entry;
        std::int32_t number = 0;
        double time = 0.0;
        std::string_view word = {};
        double first = 0.0;
        double second = 0.0;
        cName name = {};
        cName successor = {};
    };

    /// Back to the header alone.
    void restart() {
        records.clear();
        texts.clear();
        full = false;
    }
    bool isFull() const { return full; }
    /// A Combi was tried. `result` is one of those above.
    void attempt(double time, const std::string& combi, std::string_view result) {
        if (!full) add({.form = eForm::attempt, .time = time, .word = result, .name = cName(combi)});
    }
    /// The code of an activity before or after its end is about to run: `action` is "BEFOREEND" or "ONEND".
    void end(double time, std::string_view action, const std::string& activity, std::int32_t instanceId) {
        if (!full)
            add({.form = eForm::end, .number = instanceId, .time = time, .word = action, .name = cName(activity)});
    }
    /// Something was drawn from a queue, which now holds `curCount` of the `totCount` that it has ever received.
    void draw(double time, const std::string& queue, double curCount, double totCount) {
        if (!full)
            add({.form = eForm::draw, .time = time, .first = curCount, .second = totCount, .name = cName(queue)});
    }
    /// A Fork has drawn a branch: a line for each of its out-links. `runningSum` is the share of the strengths up to
    /// it.
    void branch(double time, const std::string& fork, bool isChosen, double runningSum, const std::string& successor);
    /// Something entered a queue: a line without a text.
    void entry() { add({}); }
    /// Takes a line in as it is.
    void addText(std::string line);
    /// How many lines there are, the header among them.
    std::size_t size() const { return records.size() + 1; }
    /// The lines, headed by the header, each cut to 255 characters.
    std::vector<std::string> lines() const;

private:
    /// Takes a record in; does nothing while the trace is full.
    void add(const cRecord& record) {
        if (full) return;
        records.push_back(record);
        full = size() >= traceCapacity;
    }
    std::string lineOf(const cRecord& record) const;

    std::vector<cRecord> records;
    bool full = false;
    std::vector<std::string> texts;
};
