#include "kernel/combi.h"

#include "flow/link.h"
#include "kernel/trace.h"
#include "language/rounding.h"
#include "language/symbols.h"

namespace {

constexpr const char* alwaysOpen = "1";

}  // namespace

cNodeActCombi::cNodeActCombi() : priority(*network().symbols, "0"), semaphore(*network().symbols, alwaysOpen) {
    takeDefaultName("Combi");
}

cNodeActCombi::~cNodeActCombi() {
    network().symbols->namesChanged();
    std::erase_if(network().combis, [this](const auto& entry) { return entry.second == this; });
}

bool cNodeActCombi::attempt() {
    if (!isTrue(semaphore.evaluate())) {
        network().trace.attempt(network().simTime, getName(), attemptResult::semaphore);
        return false;
    }
    if (!queuesSupport()) {
        queueChanged = false;
        if (!mayAttempt()) network().combisToTry.unmark(orderPlace);
        network().trace.attempt(network().simTime, getName(), attemptResult::queueSupport);
        return false;
    }
    activeMark = true;  // until the end of an instance lowers it
    network().trace.attempt(network().simTime, getName(), attemptResult::success);
    beforeDraws();
    drawFromQueues();
    startInstance(holdings, network().simTime, durationByExpression);
    holdings.clear();  // nothing that ran meanwhile can see that they were still there
    refreshElement();
    return true;
}

bool cNodeActCombi::queuesSupport() {
    for (cLink* link : inLinkWalk())
        if (!isTrue(link->evaluateEnough())) return false;
    return true;
}

void cNodeActCombi::drawFromQueues() {
    for (cLink* link : inLinkWalk()) link->draw(*this);
}

void cNodeActCombi::beforeDraws() { runStatementList(beforeDrawsStatements, network()); }

std::int32_t cNodeActCombi::currentPriority() const { return truncateToInt32(priority.evaluate()); }

void cNodeActCombi::checkStart() const {
    if (getInLinks().empty())
        refuseStart("Combi \"" + getName() + "\" does not have any inlinks and will be started infinitely.");
}

void cNodeActCombi::resetElement() {
    beforeDrawsStatements.clear();
    cNodeAct::resetElement();
}

void cNodeActCombi::setPriorityText(const std::string& text) {
    network().symbols->namesChanged();  // the order of the Combis is one of them
    priority.compile(text, cExpression::eTrial::run, {});
}

void cNodeActCombi::setSemaphoreText(const std::string& text) {
    hasDefaultSemaphore = text == alwaysOpen;
    network().combisToTry.mark(orderPlace);
    semaphore.compile(text, cExpression::eTrial::run, {});
}

void cNodeActCombi::addBeforeDrawsStatement(const std::string& text) {
    beforeDrawsStatements.push_back(std::make_unique<cStatement>(text));
}
