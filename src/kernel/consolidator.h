#pragma once

#include "kernel/activity.h"
#include "kernel/receiver.h"

#include <string>

/// The activity that collects what flows in until a condition holds, and then starts one instance with all of it, which
/// covers the time of gathering and ends at the present moment.
///
/// `gathering` is never lowered, and results have always been read so: the first arrival is noted once in the life of
/// the object, not once a batch or a replication. Later batches start in the past, with durations that grow, and the
/// first one counts twice in the counts of instances.
class cNodeConsolidator : public cNodeAct, public cNodeReceiver {
public:
    /// Takes the name "Consolidator" and a number, or stays without a name if that one is taken or too long.
    cNodeConsolidator();

    std::string getKind() const override { return "CONSOLIDATOR"; }

    bool heedsBursts() const override { return false; }
    void flowBegin() override {}
    /// Takes `resource` in, and tests the firing condition: for each resource, not for each firing.
    /// @throws cException if the condition or the ONSTART code fails; the resources stay.
    void receive(cRes& resource) override;
    void flowEnd() override {}
    void flowSettle() override {}

    /// @throws cException as compiling does; the text stays.
    void setFiringConditionText(const std::string& text);
    const std::string& getFiringConditionText() const { return firingCondition.getText(); }

private:
    void beginGathering();

    cExpression firingCondition;
    bool gathering = false;
    double firstArrival = 0.0;
};
