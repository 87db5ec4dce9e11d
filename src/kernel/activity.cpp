#include "kernel/activity.h"

#include "flow/link.h"
#include "kernel/receiver.h"
#include "kernel/trace.h"
#include "language/symbols.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// By < and >, so that a NaN changes neither.
void lower(double& minimum, double value) {
    if (value < minimum) minimum = value;
}

void raise(double& maximum, double value) {
    if (value > maximum) maximum = value;
}

}  // namespace

cActInstance::cActInstance(cNodeAct& owner, std::int32_t id, double start, cHoldings held)
    : ownerName(owner.getName()),
      startTime(start),
      instanceId(id),
      ownerActivity(&owner),
      namesVersion(owner.network().symbols->namesVersion),
      instanceResources(std::move(held)) {}

void cActInstance::setDuration(double duration) {
    instanceDuration = duration;
    endTime = startTime + duration;
    ownerActivity->countDuration(duration, endTime);
}

cNodeAct::cNodeAct() : durationExpr(*network().symbols, "0") {}

void cNodeAct::startInstance(cHoldings held, double start, double duration) {
    const auto instance = std::allocate_shared<cActInstance>(cPoolAllocator<cActInstance>(), *this,
                                                             statistics.nextInstance, start, std::move(held));
    runningInstances.push_back({instance->getInstanceId(), instance});

    lower(statistics.firstStart, start);
    if (!(statistics.lastStart < 0.0)) countInterval(start - statistics.lastStart);
    statistics.lastStart = start;

    instance->setDuration(duration == durationByExpression ? durationExpr.evaluate() : duration);
    network().scheduleInstance(instance);
    cSymbols& symbols = *network().symbols;
    {
        const cSymbols::cCurrent current(symbols.currentInstance, instance.get());
        onStart();
    }
    countInstance();
}

void cNodeAct::countInstance() {
    statistics.curInst += 1;
    statistics.nextInstance += 1;
}

/// The count of intervals is never raised. So the mean is infinite from the second start on and not a number from the
/// third; minimum and maximum are right. Results have always been read like this.
void cNodeAct::countInterval(double interval) {
    lower(statistics.minInter, interval);
    raise(statistics.maxInter, interval);
    const double delta = interval - statistics.aveInter;
    statistics.aveInter += delta / interCount;
    interSpread += (interval - statistics.aveInter) * delta;
    hasInterval = true;
}

/// Updated by Welford's recurrence (1962). The deviation of a single duration is 0/0: it has none, and reads so.
void cNodeAct::countDuration(double duration, double end) {
    lower(statistics.minDur, duration);
    raise(statistics.maxDur, duration);
    lower(statistics.firstEnd, end);
    raise(statistics.lastEnd, end);
    durCount += 1;
    const double delta = duration - statistics.aveDur;
    statistics.aveDur += delta / durCount;
    durSpread += (duration - statistics.aveDur) * delta;
}

cNodeAct::cStatistics cNodeAct::getStatistics() const {
    cStatistics now = statistics;
    if (durCount > 0) now.sdDur = std::sqrt(durSpread / (durCount - 1));
    if (hasInterval) now.sdInter = std::sqrt(interSpread / (interCount - 1));
    return now;
}

void cNodeAct::endInstance(std::int32_t instanceId) {
    const cRunning* running = findRunning(instanceId);
    if (running == nullptr) return;
    const std::shared_ptr<cActInstance> instance = running->instance;
    cSymbols& symbols = *network().symbols;

    statistics.curInst -= 1;
    activeMark = true;
    {
        const cSymbols::cCurrent current(symbols.currentInstance, instance.get());
        beforeEnd();
    }
    holdings = instance->getResources();
    sendFlows();
    {
        const cSymbols::cCurrent current(symbols.currentInstance, instance.get());
        onEnd();
    }
    tellSuccessors(*this, &cNodeReceiver::flowSettle);
    activeMark = false;
    holdings.clear();
    refreshElement();
    forgetRunning(instanceId);
}

/// Each walk is complete before the next begins: every successor knows that a burst is coming before anything comes.
void cNodeAct::sendFlows() {
    tellSuccessors(*this, &cNodeReceiver::flowBegin);
    for (cLink* link : outLinkWalk()) link->release();
    tellSuccessors(*this, &cNodeReceiver::flowEnd);
}

void cNodeAct::runEventCode(const cStatementList& code) {
    network().eventPoint();
    runStatementList(code, network());
}

void cNodeAct::onStart() { runEventCode(onStartStatements); }

void cNodeAct::beforeEnd() {
    traceEnd(network(), "BEFOREEND", getName(), network().symbols->currentInstance->getInstanceId());
    runEventCode(beforeEndStatements);
}

void cNodeAct::onEnd() {
    traceEnd(network(), "ONEND", getName(), network().symbols->currentInstance->getInstanceId());
    runEventCode(onEndStatements);
}

double cNodeAct::currentDuration() const {
    const cActInstance* current = network().symbols->currentInstance;
    return current == nullptr ? 0.0 : current->getDuration();
}

double cNodeAct::getAttribute(const std::string& keyword) {
    struct cRow {
        std::string_view keyword;
        double (*value)(const cNodeAct&);
    };
    static constexpr std::array rows{
        cRow{"InContext", [](const cNodeAct& activity) { return activity.activeMark ? 1.0 : 0.0; }},
        cRow{"CurInst", [](const cNodeAct& activity) -> double { return activity.statistics.curInst; }},
        cRow{"TotInst", [](const cNodeAct& activity) -> double { return activity.statistics.nextInstance; }},
        cRow{"AveDur", [](const cNodeAct& activity) { return activity.statistics.aveDur; }},
        cRow{"Duration", [](const cNodeAct& activity) { return activity.currentDuration(); }},
    };
    for (const cRow& row : rows)
        if (row.keyword == keyword) return row.value(*this);
    return 0.0;
}

void cNodeAct::resetElement() {
    onStartStatements.clear();
    beforeEndStatements.clear();
    onEndStatements.clear();
    runningInstances.clear();
    emptyPlaces = 0;
    holdings.clear();
    statistics = {};
    durSpread = 0.0;
    durCount = 0;
    interSpread = 0.0;
    interCount = 0;
    hasInterval = false;
}

void cNodeAct::setDurationText(const std::string& text) { durationExpr.compile(text, cExpression::eTrial::run, {}); }

void cNodeAct::addOnStartStatement(const std::string& text) {
    onStartStatements.push_back(std::make_unique<cStatement>(text));
}

void cNodeAct::addBeforeEndStatement(const std::string& text) {
    beforeEndStatements.push_back(std::make_unique<cStatement>(text));
}

void cNodeAct::addOnEndStatement(const std::string& text) {
    onEndStatements.push_back(std::make_unique<cStatement>(text));
}

cActInstance* cNodeAct::findInstance(std::int32_t instanceId) const {
    const cRunning* running = findRunning(instanceId);
    return running == nullptr ? nullptr : running->instance.get();
}

const cNodeAct::cRunning* cNodeAct::findRunning(std::int32_t instanceId) const {
    const auto place = std::ranges::lower_bound(runningInstances, instanceId, {}, &cRunning::instanceId);
    const bool isThere =
        place != runningInstances.end() && place->instanceId == instanceId && place->instance != nullptr;
    return isThere ? &*place : nullptr;
}

void cNodeAct::forgetRunning(std::int32_t instanceId) {
    const auto place = std::ranges::lower_bound(runningInstances, instanceId, {}, &cRunning::instanceId);
    if (place == runningInstances.end() || place->instanceId != instanceId || place->instance == nullptr) return;

    place->instance.reset();
    if (2 * ++emptyPlaces <= runningInstances.size()) return;
    std::erase_if(runningInstances, [](const cRunning& running) { return running.instance == nullptr; });
    emptyPlaces = 0;
}
