#pragma once

#include "flow/assembler.h"
#include "flow/disassembler.h"
#include "flow/dynafork.h"
#include "flow/fork.h"
#include "flow/link.h"
#include "kernel/activityInstance.h"
#include "kernel/combi.h"
#include "kernel/consolidator.h"
#include "kernel/normal.h"
#include "kernel/queue.h"
#include "kernel/replications.h"
#include "kernel/runStatistics.h"
#include "language/compilation.h"
#include "language/symbols.h"
#include "language/words.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

/// A network with a host that records what it is told, and calls that draw a model in a line each. Streams begin with
/// the seed given, element numbers with 0. The file of replication lines is the process's own.
class cTestNetwork : public cNetwork {
public:
    explicit cTestNetwork(std::int64_t seed = 1) : cTestNetwork(cClock([seed] { return seed; })) {}
    /// Streams begin with what the clock says now.
    explicit cTestNetwork(cClock secondsSource) : cNetwork(std::move(secondsSource)) {
        cNetworkElement::setElementCounter(0);
        const std::string name = "timbersim-test-" + std::to_string(getpid()) + ".txt";
        runStatistics->setTemporaryPath(std::filesystem::temp_directory_path() / name);
    }
    ~cTestNetwork() override { std::filesystem::remove(runStatistics->getTemporaryPath()); }

    cResTypeGen& addGenericType(const std::string& name) { return addType(std::make_unique<cResTypeGen>(name)); }
    cResTypeCompound& addCompoundType(const std::string& name) {
        return addType(std::make_unique<cResTypeCompound>(name));
    }
    cNodeQueue& addQueue(const std::string& name, cResType& type) { return addHolder<cNodeQueue>(name, type); }
    cNodeActCombi& addCombi(const std::string& name) {
        cNodeActCombi& combi = add(std::make_shared<cNodeActCombi>(), name);
        combis[name] = &combi;
        return combi;
    }
    cNodeActNormal& addNormal(const std::string& name) { return add(std::make_shared<cNodeActNormal>(), name); }
    cNodeConsolidator& addConsolidator(const std::string& name) {
        return add(std::make_shared<cNodeConsolidator>(), name);
    }
    cNodeAuxFork& addFork(const std::string& name, cResType& type) { return addHolder<cNodeAuxFork>(name, type); }
    cNodeAuxDynafork& addDynafork(const std::string& name, cResType& type) {
        return addHolder<cNodeAuxDynafork>(name, type);
    }
    cNodeAuxAssembler& addAssembler(const std::string& name, cResType& type) {
        return addHolder<cNodeAuxAssembler>(name, type);
    }
    cNodeAuxDisAssembler& addDisassembler(const std::string& name, cResType& type) {
        return addHolder<cNodeAuxDisAssembler>(name, type);
    }
    cLink& addLink(const std::string& name, cNode& from, cNode& to) {
        cLink& link = add(std::make_shared<cLink>(name), name);
        link.setPredNode(&from);
        link.setSuccNode(&to);
        return link;
    }
    /// A link of that type, where the pair of nodes leaves it to the link.
    cLink& addLink(const std::string& name, cNode& from, cNode& to, cResType& type) {
        cLink& link = addLink(name, from, to);
        link.setResType(&type);
        return link;
    }

    /// Compiles and executes statements, as Global Code outside a run.
    void execute(const std::string& code) {
        compileCode(*this, splitLines(code), eCompiled::everything);
        runStatements();
        statements.clear();
    }
    /// A whole run with `code` as Global Code.
    void run(const std::string& code = {}) {
        cRunObserver nobody;
        cRunCode runCode{{}, code, {}};
        runReplications(*this, runCode, nobody);
    }
    /// The trace behind its header.
    std::vector<std::string> tracedLines() const {
        std::vector<std::string> lines = traceLines();
        lines.erase(lines.begin());
        return lines;
    }
    double evaluate(const std::string& text) { return cExpression(*symbols, text).evaluate(); }

    double hostGet(const std::string& key) override {
        askedKeys.push_back(key);
        return answers[key];
    }
    void hostMessage(const std::string& text) override { messages.push_back(text); }
    void processHostEvents() override {
        if (++hostEvents == stopAtHostEvent) throw cException{failureCode::userStop, "stopped", {}, {}};
    }
    void eventPoint() override { ++eventPoints; }

    std::map<std::string, double> answers;  ///< to GET, by key
    std::vector<std::string> askedKeys;
    std::vector<std::string> messages;
    int hostEvents = 0;
    int stopAtHostEvent = 0;  ///< raises the user's stop at this call of processHostEvents; 0 never
    int eventPoints = 0;

private:
    template <typename cKind>
    cKind& addType(std::unique_ptr<cKind> type) {
        cKind& added = *type;
        resourceTypes[added.getTypeName()] = std::move(type);
        return added;
    }
    template <typename cKind>
    cKind& add(std::shared_ptr<cKind> element, const std::string& name) {
        element->setName(name);
        cKind& added = *element;
        elements[name] = std::move(element);
        return added;
    }
    template <typename cKind>
    cKind& addHolder(const std::string& name, cResType& type) {
        cKind& holder = add(std::make_shared<cKind>(), name);
        holder.setResType(&type);
        return holder;
    }
};
