// What each statement of the language does: one table of keywords, a function for each.

#include "flow/compound.h"
#include "kernel/activity.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/runStatistics.h"
#include "language/numberText.h"
#include "language/rounding.h"
#include "language/statement.h"
#include "language/symbols.h"
#include "language/words.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

/// A statement that is being carried out.
struct cExecution {
    cNetwork& network;
    const cStatement& statement;

    const std::string& argument(std::size_t index) const { return statement.getArguments()[index]; }

    double value(std::size_t index) const { return statement.argumentValue(index, *network.symbols); }

    std::string filledText(std::size_t first) const { return statement.filledText(first, *network.symbols); }

    [[noreturn]] void fail(const std::string& message) const {
        throw cException{failureCode::statement, message + statement.getText(), {}, {}};
    }
};

void seed(const cExecution& run) {
    run.network.symbols->randomStreams().setSeed(static_cast<std::uint32_t>(truncateToInt64(run.value(0))));
}

void streams(const cExecution& run) { run.network.symbols->randomStreams().setStreams(truncateToInt32(run.value(0))); }

void multiSim(const cExecution& run) {
    const std::int32_t replications = truncateToInt32(run.value(0));
    if (replications <= 0) run.fail("Expression does not evaluate to positive integer in:\n");
    run.network.replications = replications;
}

void saveValue(const cExecution& run) {
    run.network.symbols->declareName(run.argument(0), eNameKind::saveValue);
    const double value = run.value(1);
    run.network.saveValues.valueWithInsertion(run.argument(0)) = value;
}

void variable(const cExecution& run) {
    run.network.symbols->declareName(run.argument(0), eNameKind::variable);
    run.network.variables[run.argument(0)] = std::make_shared<const cExpression>(*run.network.symbols, run.argument(1));
}

void addToResults(const cExecution& run) { run.network.resultExpressions[run.argument(0)] = run.argument(1); }

void setAttribute(const cExecution& run) {
    const std::string& attribute = run.argument(1);
    if (auto* activity = run.network.findElement<cNodeAct>(run.argument(0)); activity && attribute == "Duration")
        activity->setDurationText(run.argument(2));
    if (auto* queue = run.network.findElement<cNodeQueue>(run.argument(0)); queue && attribute == "InitialContent")
        queue->setInitialContentText(run.argument(2));
}

/// The count is a plain number, not an expression: 2.5 makes three.
void initCompounds(const cExecution& run, cNodeQueue& queue, cResTypeCompound& type) {
    const double count = leadingNumber(run.argument(1));
    for (double i = 0.0; i < count; i += 1.0) {
        const auto resource = makeCounted<cResCompound>(&type);
        queue.receive(*resource);
        run.network.breathe();
    }
}

void initAmount(cNodeQueue& queue, cResType& type, double value) {
    cResGen amount(&type, value);
    queue.receive(amount);
}

void init(const cExecution& run) {
    auto* queue = run.network.findElement<cNodeQueue>(run.argument(0));
    if (queue == nullptr) run.fail("Incorrect queue name in statement:\n");

    cResType* type = queue->getResType();
    if (auto* compound = dynamic_cast<cResTypeCompound*>(type))
        initCompounds(run, *queue, *compound);
    else if (dynamic_cast<const cResTypeGen*>(type) != nullptr)
        initAmount(*queue, *type, run.value(1));
    else
        run.fail("Incorrect resource name in statement:\n");
}

/// Further arguments are ignored.
void simulateCondition(const cExecution& run) {
    run.network.endCondition.compile(run.argument(0), cExpression::eTrial::run, {});
}

void simulate(const cExecution& run) { run.network.runSimulation(); }

void print(const cExecution& run) {
    const std::string text = run.filledText(1) + '\n';
    run.network.runStatistics->printTexts[run.argument(0)] += text;
}

void post(const cExecution& run) { run.network.hostMessage(run.filledText(0)); }

/// Assigns to a path "queue.property": a stored property of the first resource in the queue.
void assignToProperty(const cExecution& run) {
    const std::vector<std::string> parts = splitName(run.argument(0));
    const auto* queue = parts.empty() ? nullptr : run.network.findElement<cNodeQueue>(parts[0]);
    if (queue == nullptr) run.fail("First part of SAVEPROP variable is not a container.");

    const cResPtr first = queue->getContents().empty() ? nullptr : queue->getContents().front();
    auto* resource = dynamic_cast<cResChar*>(first.get());
    if (resource == nullptr) run.fail("Second part of SAVEPROP variable is not a Characterized Resource.");

    const double value = run.value(1);
    const auto property = parts.size() < 2 ? resource->props.end() : resource->props.find(parts[1]);
    if (property != resource->props.end()) property->second = value;
}

/// A place that is known holds as long as no name has changed, also while the value is worked out.
void assign(const cExecution& run) {
    cStatement::cTarget& target = run.statement.target();
    const std::uint64_t& version = run.network.symbols->namesVersion;
    if (target.version != version) {
        if (!run.network.saveValues.contains(run.argument(0))) return assignToProperty(run);
        target = {run.network.saveValues.valueOf(run.argument(0)), version};
    }
    const double value = run.value(1);
    if (target.version == version)
        *target.place = value;
    else
        run.network.saveValues.valueWithInsertion(run.argument(0)) = value;
}

constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();
constexpr const char* syntaxError = "Syntax error in statement:\n";
constexpr const char* wrongNumber = "Incorrect number of arguments in statement:\n";

}  // namespace

/// A row of the table of keywords.
struct cStatementKeyword {
    std::string_view keyword;
    std::size_t fewest;
    std::size_t most;
    const char* onWrongCount;
    void (*execute)(const cExecution& run);
};

namespace {

constexpr std::array keywords{
    cStatementKeyword{"SEED", 1, 1, syntaxError, seed},
    cStatementKeyword{"STREAMS", 1, 1, syntaxError, streams},
    cStatementKeyword{"MULTISIM", 1, 1, syntaxError, multiSim},
    cStatementKeyword{"SAVEVALUE", 2, 2, syntaxError, saveValue},
    cStatementKeyword{"VARIABLE", 2, 2, syntaxError, variable},
    cStatementKeyword{"ADDTORESULTS", 2, 2, syntaxError, addToResults},
    cStatementKeyword{"SETATTRIBUTE", 3, anyNumber, syntaxError, setAttribute},
    cStatementKeyword{"INIT", 2, anyNumber, syntaxError, init},
    cStatementKeyword{"SIMULATECONDITION", 1, anyNumber, wrongNumber, simulateCondition},
    cStatementKeyword{"SIMULATE", 0, 0, wrongNumber, simulate},
    cStatementKeyword{"PRINT", 2, anyNumber, wrongNumber, print},
    cStatementKeyword{"POST", 0, anyNumber, wrongNumber, post},
    cStatementKeyword{"ASSIGN", 2, 2, wrongNumber, assign},
};

}  // namespace

void cStatement::execute(cNetwork& network) const {
    if (!isBound) {
        const auto* found = std::ranges::find(keywords, keyword, &cStatementKeyword::keyword);
        row = found == keywords.end() ? nullptr : found;
        isBound = true;
    }
    if (row == nullptr) return;

    const cExecution run{network, *this};
    if (args.size() < row->fewest || args.size() > row->most) run.fail(row->onWrongCount);
    const cNetwork::cNesting nested(network, *this);
    row->execute(run);
}
