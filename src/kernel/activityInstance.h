#pragma once

#include "flow/resource.h"

#include <cstdint>
#include <string>

class cNodeAct;

/// One running instance of an activity. Shared by the activity and the calendar, whichever lets go last.
class cActInstance {
public:
    cActInstance(cNodeAct& owner, std::int32_t id, double start, cHoldings held);

    /// Fixes how long the instance lasts, and counts it in the owner's statistics. May be negative.
    void setDuration(double duration);

    double getStartTime() const { return startTime; }
    double getEndTime() const { return endTime; }
    double getDuration() const { return instanceDuration; }
    std::int32_t getInstanceId() const { return instanceId; }
    const std::string& getOwnerName() const { return ownerName; }
    cNodeAct* getOwnerActivity() const { return ownerActivity; }
    /// The version of the model's names when the instance was made.
    std::uint64_t getNamesVersion() const { return namesVersion; }
    const cHoldings& getResources() const { return instanceResources; }

private:
    std::string ownerName;  // the activity's name at the start
    double startTime = 0.0;
    double endTime = 0.0;
    double instanceDuration = 0.0;
    std::int32_t instanceId = 0;
    cNodeAct* ownerActivity = nullptr;
    std::uint64_t namesVersion = 0;
    cHoldings instanceResources;
};
