#include "kernel/normal.h"

cNodeActNormal::cNodeActNormal() { takeDefaultName("Normal"); }

void cNodeActNormal::flowBegin() {
    if (++pendingFlows == 1) activeMark = true;
}

void cNodeActNormal::receive(cRes& resource) {
    if (resource.quantity() != 0.0) mergeHolding(resource);
}

void cNodeActNormal::flowEnd() {
    if (--pendingFlows != 0) return;
    startInstance(holdings, network().simTime, durationByExpression);
    refreshElement();
    holdings.clear();
}

void cNodeActNormal::resetElement() {
    cNodeAct::resetElement();
    pendingFlows = 0;
}
