#pragma once

#include "flow/resourceType.h"
#include "kernel/calendar.h"
#include "kernel/markedPlaces.h"
#include "kernel/nameMap.h"
#include "kernel/trace.h"
#include "language/exception.h"
#include "language/expression.h"
#include "language/statement.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class cActInstance;
class cNetworkElement;
class cNodeAct;
class cNodeActCombi;
class cResChar;
class cRunStatistics;
class cSymbols;

/// A list of statements that code is compiled into and that runs as a whole.
using cStatementList = std::vector<std::unique_ptr<cStatement>>;

/// Runs a list from first to last. The size is read anew at each step, so a statement can't invalidate the walk.
inline void runStatementList(const cStatementList& list, cNetwork& network) {
    for (std::size_t i = 0; i < list.size(); ++i) list[i]->execute(network);
}

/// The model and its simulator in one: registry of elements, clock, calendar, main loop and compiled code.
///
/// There is one per process. The constructor stores it where everything in a model finds it; a subclass gives the hooks
/// that reach the host. The calendar holds one kind of event only, the end of an activity instance; all else happens at
/// one of those moments. So a simulation is a loop of two halves: start what can start, then jump to the next end.
///
/// The members that drive activities stand in eventLoop.cpp, those that build, reset and empty it in networkLife.cpp,
/// the trace in trace.cpp.
/// Simulated time is in the model's own unit.
class cNetwork {
public:
    /// Where start values of random streams come from: seconds of the calendar, or what stands in for them.
    using cClock = std::function<std::int64_t()>;
    static std::int64_t calendarSeconds();

    explicit cNetwork(cClock secondsSource = calendarSeconds);
    virtual ~cNetwork();
    cNetwork(const cNetwork&) = delete;
    cNetwork& operator=(const cNetwork&) = delete;

    /// The network of the process. One must exist.
    static cNetwork& current();

    // ---- hooks

    /// Empties what a run has made: replication state, code, names. Elements and types stay.
    virtual void clearNetwork();
    /// Jumps to the first end on the calendar and ends all instances of that time, in the order of the calendar.
    /// @return false if there was none and the simulation is over.
    virtual bool advanceClock();
    /// Called before each event of an element.
    virtual void eventPoint() {}
    /// Executes `statements` from first to last, and keeps them.
    virtual void runStatements();
    virtual void runBeforeTimeAdvance();
    /// Runs the after-time-advance code, then tests all IF conditions, then executes the statements of the true ones,
    /// in the order of the source.
    virtual void runAfterTimeAdvance();
    /// The host's answer to GET("key").
    virtual double hostGet(const std::string& key) = 0;
    /// Takes the text of a POST statement.
    virtual void hostMessage(const std::string& text) = 0;
    /// Lets the host process its events: once per time advance, and now and then in a loop that doesn't end. Here and
    /// in `hostGet` a host may give values and run statements; it may not take elements or types away.
    /// @throws cException (code 5) when the user stopped the run.
    virtual void processHostEvents() = 0;

    // ---- the run

    /// What the statement SIMULATE does: checks, time-advance code once with the clock at 0, then the main loop.
    /// @throws cException (code 1) inside a running simulation, (code 4) if the network isn't fit to run.
    void runSimulation();
    /// The main loop: until the end condition holds, nothing is left on the calendar, or `stopRequested`.
    void simulate();
    /// @throws cException (code 4) at the first element, by name, that makes a run impossible.
    void startUpChecks() const;
    /// Builds the order in which Combis are tried anew: higher priorities first, then lower element numbers. A Combi is
    /// inserted by number from the first entry of equal priority on, and that walk doesn't look at priorities again: it
    /// can run past them, and a high number then stands behind entries of lower priority.
    void orderCombis();
    /// Puts an instance on the calendar, behind all that end earlier or at the same time.
    void scheduleInstance(cShared<cActInstance> instance);
    /// Readies the network and every element for the next replication.
    void resetRun();
    /// Takes away all elements and types, outside a run.
    void removeElements();
    /// One turn of a loop that the model may keep from ending; see cBreath.
    void breathe() {
        if (++turnsWithoutEvents >= turnsPerBreath) breatheNow();
    }

    /// Appends a line to the trace, cut to 255 characters; does nothing while the trace is full.
    void addTraceLine(std::string line);
    /// The trace of this replication, headed by the header line. Cost: every line is formed anew.
    std::vector<std::string> traceLines() const { return trace.lines(); }

    /// Calls `visit` with each element by name order. Entries without an element, which some look-ups leave in the map,
    /// are passed over.
    template <typename cVisit>
    void forEachElement(cVisit visit) const {
        for (const auto& entry : elements)
            if (entry.second != nullptr) visit(*entry.second);
    }
    /// The element under `name` if there is one and it is a `cKind`, else null.
    template <typename cKind = cNetworkElement>
    cKind* findElement(const std::string& name) const {
        const auto entry = elements.find(name);
        return entry == elements.end() ? nullptr : dynamic_cast<cKind*>(entry->second.get());
    }
    /// The type called `name`, or null.
    cResType* findResourceType(const std::string& name) const;

    const cCalendar& getCalendar() const { return calendar; }
    const std::vector<cNodeActCombi*>& getCombiOrder() const { return combiOrder; }

    // ---- the model

    std::int32_t replications = 1;  ///< how many replications a run makes
    bool stopRequested = false;     ///< the host is closing; set once and never cleared
    bool paused = false;            ///< the host holds the run
    std::int32_t simState = 0;      ///< 1 while a run is on, else 0
    double simTime = 0.0;           ///< the clock
    cTrace trace;                   ///< of this replication
    const cClock clock;             ///< start values of random streams
    const std::unique_ptr<cSymbols> symbols;
    const std::unique_ptr<cRunStatistics> runStatistics;

    cNameMap<std::unique_ptr<cResType>> resourceTypes;
    cNameMap<std::shared_ptr<cNetworkElement>> elements;
    /// The Combis among `elements`, each under the name that it was entered with, also after a renaming.
    std::map<std::string, cNodeActCombi*> combis;

    cMarkedPlaces combisToTry;  ///< the places in the order of Combis of those that may attempt to start

    cStatementList statements;
    cStatementList afterTimeAdvance;
    cStatementList beforeTimeAdvance;
    struct cConditional {
        std::unique_ptr<cExpression> condition;
        std::unique_ptr<cStatement> statement;
    };
    std::vector<cConditional> conditionalStatements;  ///< the IF statements, in the order of the source
    cExpression endCondition;                         ///< ends a simulation when it is true

    std::map<std::string, std::string> resultExpressions;    ///< the entries of ADDTORESULTS
    cNameMap<std::shared_ptr<const cExpression>> variables;  ///< formulas, evaluated at each reference
    cNameMap<double> saveValues;

    /// Counts what runs inside its own kind, for the length of a scope: statements in statements, flows in flows.
    class cNesting {
    public:
        /// @throws cException (code 1) when statements run inside one another without end.
        cNesting(cNetwork& network, const cStatement& statement) : depth(network.statementDepth) {
            if (depth >= deepestStatements) failIn(statement);
            ++depth;
        }
        /// @throws cException (code 2) when a flow that passes through `link` goes in a circle.
        cNesting(cNetwork& network, const cNetworkElement& link) : depth(network.flowDepth) {
            if (depth >= deepestFlows) failIn(link);
            ++depth;
        }
        ~cNesting() { --depth; }
        cNesting(const cNesting&) = delete;
        cNesting& operator=(const cNesting&) = delete;

    private:
        static constexpr int deepestStatements = 200;
        static constexpr int deepestFlows = 1000;  // links in a row without an activity or a queue between them

        [[noreturn]] static void failIn(const cStatement& statement);
        [[noreturn]] static void failIn(const cNetworkElement& link);

        int& depth;
    };

private:
    static constexpr int turnsPerBreath = 4096;

    void breatheNow();
    void startCombis();
    enum class eStarts { none, some, lastWasInstant };
    eStarts startAsOftenAsPossible(cNodeActCombi& combi);
    void endInstancesAt(double time);
    cNodeAct* activityOf(const cActInstance& instance) const;

    cCalendar calendar;
    std::vector<cNodeActCombi*> combiOrder;
    std::uint64_t combiOrderVersion = 0;  // of the names, for which the order holds; 0 for none
    int turnsWithoutEvents = 0;           // of loops that breathe, since the host last processed its events
    int statementDepth = 0;
    int flowDepth = 0;
    bool simulating = false;
};
