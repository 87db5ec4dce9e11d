#pragma once

#include "flow/holdings.h"

#include <cstdint>

class cNodeAct;

/// One running instance of an activity. Shared by the activity and the calendar, whichever lets go last. The activity
/// uses the object again for later instances.
class cActInstance : public cCounted {
public:
    /// An instance that doesn't run yet.
    explicit cActInstance(cNodeAct& owner);

    /// Becomes the running instance of that number, which holds `held`.
    void begin(std::int32_t id, double start, const cHoldings& held);
    /// Fixes how long the instance lasts, and counts it in the owner's statistics. May be negative.
    void setDuration(double duration);

    double getStartTime() const { return startTime; }
    double getEndTime() const { return endTime; }
    double getDuration() const { return instanceDuration; }
    std::int32_t getInstanceId() const { return instanceId; }
    cNodeAct* getOwnerActivity() const { return ownerActivity; }
    /// The version of the model's names when the instance began.
    std::uint64_t getNamesVersion() const { return namesVersion; }
    const cHoldings& getResources() const { return instanceResources; }

    bool isRunning() const { return running; }

private:
    friend class cNodeAct;

    cNodeAct* ownerActivity;
    std::int32_t instanceId = 0;
    std::uint64_t namesVersion = 0;
    double startTime = 0.0;
    double endTime = 0.0;
    double instanceDuration = 0.0;
    cHoldings instanceResources;
    bool running = false;  // until the activity forgets it
};

using cActInstancePtr = cShared<cActInstance>;
