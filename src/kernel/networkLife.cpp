// How a network comes to be, what it forgets between replications and runs, and how it ends.

#include "kernel/activityInstance.h"
#include "kernel/element.h"
#include "kernel/network.h"
#include "kernel/runStatistics.h"
#include "language/symbols.h"

#include <cassert>

namespace {

cNetwork* networkOfProcess = nullptr;

constexpr const char* noEndCondition = "0";

}  // namespace

cNetwork& cNetwork::current() {
    assert(networkOfProcess != nullptr);
    return *networkOfProcess;
}

cNetwork::cNetwork(cClock secondsSource)
    : clock(std::move(secondsSource)),
      symbols(std::make_unique<cSymbols>(*this, clock())),
      runStatistics(std::make_unique<cRunStatistics>(*this)),
      resourceTypes(symbols->namesVersion),
      elements(symbols->namesVersion),
      endCondition(*symbols, noEndCondition),
      variables(symbols->namesVersion),
      saveValues(symbols->namesVersion) {
    networkOfProcess = this;
}

cNetwork::~cNetwork() {
    removeElements();
    if (networkOfProcess == this) networkOfProcess = nullptr;
}

void cNetwork::removeElements() {
    calendar.clear();
    combis.clear();
    for (const auto& [name, type] : resourceTypes) type->moveHoldersTo(nullptr);  // at once, not holder by holder
    elements.clear();
    resourceTypes.clear();
}

void cNetwork::resetRun() {
    paused = false;
    calendar.clear();
    combiOrder.clear();
    combisToTry.restart(0);
    combiOrderVersion = 0;
    simTime = 0.0;
    trace.restart();
    for (const auto& [name, type] : resourceTypes)
        if (auto* characterized = dynamic_cast<cResTypeChar*>(type.get())) characterized->instanceCount = 0;
    forEachElement([](cNetworkElement& element) { element.resetElement(); });
}

void cNetwork::clearNetwork() {
    resetRun();
    replications = 1;
    symbols->forgetNames();
    variables.clear();
    saveValues.clear();
    resultExpressions.clear();
    statements.clear();
    endCondition.compile(noEndCondition, cExpression::eTrial::skip, {});
    afterTimeAdvance.clear();
    beforeTimeAdvance.clear();
    conditionalStatements.clear();
    simState = 0;
}
