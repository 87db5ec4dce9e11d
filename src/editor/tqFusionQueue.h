#pragma once

#include "editor/tqNode.h"

#include <string>
#include <vector>

class cNodeQueue;
class cTQLink;

/// A second place on the canvas for a queue, so that links needn't cross all of it. The engine knows nothing of it: the
/// engine's ends of its links are at the queue.
class cTQFusionQueue : public cTQNode {
    Q_OBJECT

public:
    /// An empty name asks for a default one.
    cTQFusionQueue(const std::string& name, std::string fusedName);
    ~cTQFusionQueue() override;

    std::string getKind() const override { return "FUSIONQUEUE"; }
    void resetElement() override {}

    const std::string& getQueueName() const { return queueName; }
    /// The queue that it stands for, or null while there is none of that name.
    cNodeQueue* fusedQueue() const;
    /// Stands for another queue from now on, and so do all links here.
    void fuseWith(const std::string& newQueueName);
    /// The queues of the model are others: `oldName` is now called `newName`, or, with both empty, some came or went.
    void queuesChanged(const std::string& newName, const std::string& oldName);

    /// An end of a link comes to sit here, or goes. The link says so.
    void addEnd(cTQLink& link, bool isStart) { ends.push_back({&link, isStart}); }
    void removeEnd(const cTQLink& link, bool isStart);

    /// The name of its queue.
    QString caption() const override;

protected:
    Qt::PenStyle outlineStyle() const override { return Qt::DotLine; }
    QString panelName() const override { return QStringLiteral("fusionQueuePanel"); }
    QString tabTitle() const override { return tr("Fusion Queue"); }
    std::vector<cFormRow> formRows() override;

private:
    struct cSittingEnd {
        cTQLink* link;
        bool isStart;
    };

    std::string queueName;
    std::vector<cSittingEnd> ends;
};

/// Tells all fusion queues of the model of a queue that was renamed, or, with both names empty, that came or went.
void tellFusionQueues(const std::string& newName, const std::string& oldName);
