#include "kernel/consolidator.h"

#include "language/symbols.h"

cNodeConsolidator::cNodeConsolidator() : firingCondition(*network().symbols, "1") {
    setName("Consolidator" + std::to_string(getElementCounter()));
}

void cNodeConsolidator::receive(cRes& resource) {
    addHolding(resource);
    if (!gathering) beginGathering();
    if (!isTrue(firingCondition.evaluate())) return;

    startInstance(holdings, firstArrival, network().simTime - firstArrival);
    refreshElement();
    holdings.clear();
}

/// The first batch begins: its instance is counted now, and once more when it starts.
void cNodeConsolidator::beginGathering() {
    firstArrival = network().simTime;
    countInstance();
    onStart();
    gathering = true;
}

void cNodeConsolidator::setFiringConditionText(const std::string& text) {
    firingCondition.compile(text, cExpression::eTrial::run, {});
}
