#pragma once

#include "kernel/activity.h"
#include "kernel/receiver.h"

#include <cstdint>

/// The activity that a flow starts: one instance for each firing that reaches it, along however many links and through
/// however many Forks.
class cNodeActNormal : public cNodeAct, public cNodeReceiver {
public:
    cNodeActNormal();

    std::string getKind() const override { return "NORMAL"; }

    void flowBegin() override;
    /// Takes `resource` in, but no amount of 0.
    void receive(cRes& resource) override;
    /// Starts an instance with all that came, when the last open flow closes. Also if nothing came.
    void flowEnd() override;
    void flowSettle() override { activeMark = false; }
    void resetElement() override;

private:
    std::int32_t pendingFlows = 0;  // open flows towards this node
};
