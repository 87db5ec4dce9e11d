#pragma once

#include "kernel/activity.h"

#include <cstdint>
#include <string>

/// The activity that starts by itself: it waits until the queues in front of it can support it, draws what it needs,
/// and starts an instance.
class cNodeActCombi : public cNodeAct {
public:
    cNodeActCombi();
    /// Leaves the network's list of Combis.
    ~cNodeActCombi() override;

    std::string getKind() const override { return "COMBI"; }
    void checkStart() const override;

    /// Whether an attempt could succeed. With the semaphore "1", to the letter, only the queues can stop the Combi, and
    /// the answer is whether one of them may have changed since it last failed on them. With any other text it is yes.
    bool mayAttempt() const { return !hasDefaultSemaphore || queueChanged; }
    /// Tries to start one instance. A failed attempt changes no queue.
    /// @return whether an instance was started.
    /// @throws cException if a semaphore, a draw rule, code or the duration fails.
    bool attempt();
    /// Runs the BEFOREDRAWS code: after the queues were found to support the Combi, before anything is drawn.
    virtual void beforeDraws();

    /// A queue in front of the Combi may have changed.
    void markQueueChanged() {
        if (queueChanged) return;  // and marked already
        queueChanged = true;
        network().combisToTry.mark(orderPlace);
    }
    /// Priority now, cut to a whole number: the Combi's place in the order of attempts.
    std::int32_t currentPriority() const;
    /// Whether the priority is a number.
    bool hasFixedPriority() const { return priority.constant().has_value(); }

    /// Forgets the BEFOREDRAWS code too: it is there in the first replication only.
    void resetElement() override;

    void setPriorityText(const std::string& text);
    const std::string& getPriorityText() const { return priority.getText(); }
    void setSemaphoreText(const std::string& text);
    const std::string& getSemaphoreText() const { return semaphore.getText(); }
    void addBeforeDrawsStatement(const std::string& text);

    std::size_t orderPlace = 0;  ///< the place in the network's order of Combis, which gives it

private:
    bool queuesSupport();
    void drawFromQueues();

    cStatementList beforeDrawsStatements;
    cExpression priority;
    cExpression semaphore;
    bool hasDefaultSemaphore = true;
    bool queueChanged = false;  // something may have changed in the queues since an attempt last failed on them
};
