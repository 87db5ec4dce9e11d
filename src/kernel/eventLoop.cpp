// The members of the network that drive Combis and activities: the checks before a run, the main loop, the clock.

#include "kernel/combi.h"
#include "kernel/network.h"
#include "language/symbols.h"

#include <algorithm>

namespace {

constexpr std::int32_t runIsOn = 1;

/// Raises a flag for the length of a scope.
class cRaised {
public:
    explicit cRaised(bool& raisedFlag) : flag(raisedFlag) { flag = true; }
    ~cRaised() { flag = false; }
    cRaised(const cRaised&) = delete;
    cRaised& operator=(const cRaised&) = delete;

private:
    bool& flag;
};

}  // namespace

void cNetwork::startUpChecks() const {
    forEachElement([](const cNetworkElement& element) { element.checkStart(); });
}

void cNetwork::runSimulation() {
    if (simulating)
        throw cException{
            failureCode::statement, "SIMULATE can't run inside a simulation in statement:\nSIMULATE", {}, {}};

    const cRaised running(simulating);
    startUpChecks();
    runBeforeTimeAdvance();
    simTime = 0.0;
    runAfterTimeAdvance();
    simulate();
}

/// The first test is weaker than the second on purpose: with a stop asked for and a true condition, the loop goes
/// through one more activation phase before the second test ends it.
void cNetwork::simulate() {
    for (const auto& [name, combi] : combis) combi->markQueueChanged();
    for (;;) {
        if (isTrue(endCondition.evaluate()) && !stopRequested) return;
        processHostEvents();
        turnsWithoutEvents = 0;
        orderCombis();
        startCombis();
        if (isTrue(endCondition.evaluate()) || stopRequested) return;
        if (!advanceClock()) return;
    }
}

/// Priorities that are numbers give the same order as long as there are the same Combis with the same priorities.
void cNetwork::orderCombis() {
    if (combiOrderVersion == symbols->namesVersion) return;

    bool isLasting = true;
    combiOrder.clear();
    for (const auto& [name, combi] : combis) {
        isLasting = isLasting && combi->hasFixedPriority();
        const std::int32_t priority = combi->currentPriority();
        std::int32_t stoppedAt = 0;
        auto place = combiOrder.begin();
        for (; place != combiOrder.end(); ++place) {
            stoppedAt = (*place)->currentPriority();
            if (priority >= stoppedAt) break;
            breathe();
        }
        if (place != combiOrder.end() && priority == stoppedAt) {
            const auto hasLowerId = [id = combi->getElementId()](const cNodeActCombi* other) {
                return id > other->getElementId();
            };
            place = std::find_if_not(place, combiOrder.end(), hasLowerId);
        }
        combiOrder.insert(place, combi);
    }
    combiOrderVersion = isLasting ? symbols->namesVersion : 0;

    combisToTry.restart(combiOrder.size());
    for (std::size_t i = 0; i < combiOrder.size(); ++i) {
        combiOrder[i]->orderPlace = i;
        if (combiOrder[i]->mayAttempt()) combisToTry.mark(i);
    }
}

/// The activation phase. A Combi starts as many instances in a row as it can, and all are tried again as long as a pass
/// started anything, since a start can change what other Combis see. An instance of duration zero breaks both repeats:
/// it is to end, and release what it holds, before anything else is tried.
void cNetwork::startCombis() {
    bool sawInstantStart = false;
    bool anyStart = true;
    while (anyStart && !sawInstantStart) {
        anyStart = false;
        for (std::size_t i = combisToTry.next(0); i < combiOrder.size(); i = combisToTry.next(i + 1)) {
            const eStarts starts = startAsOftenAsPossible(*combiOrder[i]);
            anyStart = anyStart || starts != eStarts::none;
            sawInstantStart = sawInstantStart || starts == eStarts::lastWasInstant;
        }
    }
}

cNetwork::eStarts cNetwork::startAsOftenAsPossible(cNodeActCombi& combi) {
    eStarts starts = eStarts::none;
    if (!combi.mayAttempt()) return starts;

    while (combi.attempt()) {
        starts = eStarts::some;
        const cActInstance* started = combi.latestInstance();
        if (started != nullptr && started->getDuration() == 0.0 && simState == runIsOn) return eStarts::lastWasInstant;
        breathe();
    }
    return starts;
}

bool cNetwork::advanceClock() {
    if (simState != runIsOn || calendar.empty()) return false;

    runBeforeTimeAdvance();
    simTime = calendar.front().getEndTime();
    runAfterTimeAdvance();
    endInstancesAt(simTime);
    return true;
}

/// All ends of one time come before Combis are tried again, those too that are put on the calendar meanwhile.
void cNetwork::endInstancesAt(double time) {
    while (!calendar.empty() && calendar.front().getEndTime() == time) {
        const cShared<cActInstance> instance = calendar.takeFront();
        if (stopRequested) return;

        if (cNodeAct* activity = activityOf(*instance)) activity->endInstance(instance);
        breathe();
    }
}

/// While no name has changed since the instance was made, its activity is where it was. Otherwise it is looked for
/// among all elements, as it may be gone.
cNodeAct* cNetwork::activityOf(const cActInstance& instance) const {
    if (instance.getNamesVersion() == symbols->namesVersion) return instance.getOwnerActivity();

    cNodeAct* owner = nullptr;
    forEachElement([&](cNetworkElement& element) {
        auto* activity = dynamic_cast<cNodeAct*>(&element);
        if (activity != nullptr && activity == instance.getOwnerActivity()) owner = activity;
    });
    return owner;
}

/// An end time isn't checked: an instance of negative duration goes to the front, and the clock then runs backwards.
void cNetwork::scheduleInstance(cShared<cActInstance> instance) {
    if (simState != runIsOn) return;
    calendar.insert(std::move(instance));
}
