#include "kernel/activity.h"

#include "flow/link.h"
#include "kernel/receiver.h"
#include "kernel/trace.h"
#include "language/symbols.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

// By < and >, so that a NaN changes neither.
void lower(double& minimum, double value) {
    if (value < minimum) minimum = value;
}

void raise(double& maximum, double value) {
    if (value > maximum) maximum = value;
}

}  // namespace

cActInstance::cActInstance(cNodeAct& owner) : ownerActivity(&owner) {}

void cActInstance::begin(std::int32_t id, double start, const cHoldings& held) {
    instanceId = id;
    namesVersion = ownerActivity->network().symbols->namesVersion;
    startTime = start;
    endTime = start;
    instanceDuration = 0.0;
    instanceResources = held;
    running = true;
}

void cActInstance::setDuration(double duration) {
    instanceDuration = duration;
    endTime = startTime + duration;
    ownerActivity->countDuration(duration, endTime);
}

cNodeAct::cNodeAct() : durationExpr(*network().symbols, "0") {}

cNodeAct::~cNodeAct() { dropInstances(); }

cActInstance& cNodeAct::beginInstance(const cHoldings& held, double start) {
    latest = endedInstance();
    if (latest == nullptr) {
        instances.push_back(makeCounted<cActInstance>(*this));
        latest = instances.back().get();
    }
    latest->begin(statistics.nextInstance, start, held);
    return *latest;
}

/// An instance that has ended and that nobody holds any more but the activity, or null.
cActInstance* cNodeAct::endedInstance() {
    while (!endedInstances.empty()) {
        cActInstance* ended = endedInstances.back();
        endedInstances.pop_back();
        if (ended->holderCount() == 1) return ended;
    }
    return nullptr;
}

/// Others may hold an instance longer, but it runs no more.
void cNodeAct::dropInstances() {
    for (const cActInstancePtr& instance : instances) instance->running = false;
    instances.clear();
    endedInstances.clear();
    latest = nullptr;
}

void cNodeAct::startInstance(const cHoldings& held, double start, double duration) {
    cActInstance& instance = beginInstance(held, start);

    lower(statistics.firstStart, start);
    if (!(statistics.lastStart < 0.0)) countInterval(start - statistics.lastStart);
    statistics.lastStart = start;

    instance.setDuration(duration == durationByExpression ? durationExpr.evaluate() : duration);
    network().scheduleInstance(cActInstancePtr(&instance));
    {
        const cSymbols::cCurrent current(network().symbols->currentInstance, &instance);
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

void cNodeAct::endInstance(const cActInstancePtr& instance) {
    if (instance == nullptr || !instance->isRunning()) return;
    cActInstance*& currentInstance = network().symbols->currentInstance;

    statistics.curInst -= 1;
    activeMark = true;
    {
        const cSymbols::cCurrent current(currentInstance, instance.get());
        beforeEnd();
    }
    holdings = instance->getResources();
    sendFlows();
    {
        const cSymbols::cCurrent current(currentInstance, instance.get());
        onEnd();
    }
    tellSuccessors<&cNodeReceiver::flowSettle>(*this);
    activeMark = false;
    holdings.clear();
    refreshElement();
    forgetInstance(*instance);
}

void cNodeAct::forgetInstance(cActInstance& instance) {
    if (!instance.running) return;  // the activity was reset meanwhile
    instance.instanceResources.clear();
    instance.running = false;
    if (latest == &instance) latest = nullptr;
    endedInstances.push_back(&instance);
}

/// Each walk is complete before the next begins: every successor knows that a burst is coming before anything comes.
void cNodeAct::sendFlows() {
    const std::vector<cLink*>& told = burstLinks();
    for (cLink* link : told) link->forSuccessor<&cNodeReceiver::flowBegin>();
    for (cLink* link : outLinkWalk()) link->release();
    for (cLink* link : told) link->forSuccessor<&cNodeReceiver::flowEnd>();
}

/// A link without a successor is among them, so that its walk fails as it should.
const std::vector<cLink*>& cNodeAct::burstLinks() {
    const std::uint64_t version = network().symbols->namesVersion;
    if (linksToTellVersion == version) return linksToTell;

    const auto needsTelling = [](const cLink* link) {
        const cNodeReceiver* receiver = link->ends().receiver;
        return receiver == nullptr || receiver->heedsBursts();
    };
    linksToTell.clear();
    std::ranges::copy_if(outLinkWalk(), std::back_inserter(linksToTell), needsTelling);
    linksToTellVersion = version;
    return linksToTell;
}

void cNodeAct::runEventCode(const cStatementList& code) {
    network().eventPoint();
    runStatementList(code, network());
}

void cNodeAct::onStart() { runEventCode(onStartStatements); }

void cNodeAct::beforeEnd() {
    network().trace.end(network().simTime, "BEFOREEND", getName(), network().symbols->currentInstance->getInstanceId());
    runEventCode(beforeEndStatements);
}

void cNodeAct::onEnd() {
    network().trace.end(network().simTime, "ONEND", getName(), network().symbols->currentInstance->getInstanceId());
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
    dropInstances();
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

cActInstancePtr cNodeAct::findInstance(std::int32_t instanceId) const {
    const auto isSought = [&](const cActInstancePtr& instance) {
        return instance->isRunning() && instance->getInstanceId() == instanceId;
    };
    const auto found = std::ranges::find_if(instances, isSought);
    return found == instances.end() ? nullptr : *found;
}
