#pragma once

#include "kernel/element.h"
#include "kernel/network.h"
#include "kernel/replications.h"
#include "kernel/runStatistics.h"
#include "model/engineBuilder.h"
#include "model/modelReader.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <string>

/// A network in which any input is soon over: its host raises the user's stop after a number of turns, never after a
/// time, so that an input does the same on every machine and at every repeat. What a process shares (the counter of the
/// elements, the C library's numbers) begins anew with each network.
///
/// A cException is a right answer to any text, and ends what was attempted. Whatever else is thrown is a fault, and
/// ends the program. Replication lines go nowhere.
class cFuzzedNetwork : public cNetwork, private cRunObserver {
public:
    cFuzzedNetwork() : cNetwork([] { return std::int64_t{1}; }) {
        std::srand(1);
        cNetworkElement::setElementCounter(0);
        runStatistics->setTemporaryPath({});
    }

    template <typename cWork>
    static void attempt(cWork work) {
        try {
            work();
        } catch (const cException&) {
        }
    }

    /// Reads a model into the builder's network. @return what was found; nothing if the reading was stopped.
    static cModelReading read(const std::string& model, cModelBuilder& builder) {
        std::istringstream text(model);
        cModelReading reading;
        attempt([&] { reading = readModel(text, builder); });
        return reading;
    }
    /// Reads a model into the network. @return its Global Code; empty if the reading was stopped.
    std::string read(const std::string& model) {
        cEngineBuilder builder(*this);
        return read(model, builder).globalCode;
    }
    /// A whole run. The host has all its patience again.
    void run(const std::string& globalCode) {
        steps = turns = hostEvents = replicationsEnded = 0;
        attempt([&] {
            cRunCode code{{}, globalCode, {}};
            runReplications(*this, code, *this);
        });
    }

    std::function<void()> onEventPoint;  ///< called before each event of an element, if it is set

    void eventPoint() override {
        countUp(steps, mostSteps);
        if (onEventPoint) onEventPoint();
    }
    double hostGet(const std::string&) override {
        countUp(steps, mostSteps);
        return 2.0;
    }
    void hostMessage(const std::string&) override { countUp(steps, mostSteps); }
    bool advanceClock() override {
        countUp(turns, mostTurns);
        return cNetwork::advanceClock();
    }
    /// Comes once in each turn of the main loop. What comes beyond that is from loops that may never end.
    void processHostEvents() override { countUp(hostEvents, turns + mostBreaths); }

private:
    static constexpr int mostSteps = 400;
    static constexpr int mostTurns = 100;
    static constexpr int mostBreaths = 3;
    static constexpr int mostReplications = 3;

    static void countUp(int& count, int most) {
        if (++count > most) throw cException{failureCode::userStop, {}, {}, {}};
    }
    void replicationEnds() override { countUp(replicationsEnded, mostReplications); }

    int steps = 0;
    int turns = 0;
    int hostEvents = 0;
    int replicationsEnded = 0;
};
