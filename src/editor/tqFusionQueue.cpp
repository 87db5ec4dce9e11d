#include "editor/tqFusionQueue.h"

#include "editor/elementPanel.h"
#include "editor/tqLink.h"
#include "editor/tqQueue.h"

#include <QStringList>

namespace {

QStringList queueNames() {
    QStringList names;
    cNetwork::current().forEachElement([&](cNetworkElement& element) {
        if (dynamic_cast<cTQQueue*>(&element) != nullptr) names.append(QString::fromStdString(element.getName()));
    });
    return names;
}

}  // namespace

cTQFusionQueue::cTQFusionQueue(const std::string& name, std::string fusedName)
    : cTQNode(queueShape()), queueName(std::move(fusedName)) {
    setName(name.empty() ? "FusionQueue" + std::to_string(getElementCounter()) : name);
}

/// The links that sit here lose their ends at the queue.
cTQFusionQueue::~cTQFusionQueue() {
    while (!ends.empty()) ends.back().link->forgetFusion(*this);
}

void cTQFusionQueue::removeEnd(const cTQLink& link, bool isStart) {
    std::erase_if(ends, [&](const cSittingEnd& end) { return end.link == &link && end.isStart == isStart; });
}

cNodeQueue* cTQFusionQueue::fusedQueue() const { return network().findElement<cNodeQueue>(queueName); }

void cTQFusionQueue::fuseWith(const std::string& newQueueName) {
    queueName = newQueueName;
    captionChanged();
    const std::vector<cSittingEnd> sitting = ends;  // connecting enters them anew
    for (const cSittingEnd& end : sitting) end.link->connectEnd(end.isStart, this);
}

void cTQFusionQueue::queuesChanged(const std::string& newName, const std::string& oldName) {
    if (!oldName.empty() && queueName == oldName) queueName = newName;
    if (elementPanel != nullptr) elementPanel->refillChoices(newName, oldName);
    captionChanged();
}

QString cTQFusionQueue::caption() const { return QString::fromStdString(queueName); }

std::vector<cFormRow> cTQFusionQueue::formRows() {
    cFormRow queue;
    queue.label = tr("FusionQueue for: ");
    queue.fieldName = QStringLiteral("queueBox");
    queue.kind = eFieldKind::choice;
    queue.get = [this] {  // a queue that is gone gives way to the first
        const QString present = QString::fromStdString(queueName);
        const QStringList names = queueNames();
        return names.contains(present) || names.isEmpty() ? present : names.front();
    };
    queue.set = [this](const QString& name) { fuseWith(name.toStdString()); };
    queue.choices = queueNames;
    return {queue};
}

void tellFusionQueues(const std::string& newName, const std::string& oldName) {
    cNetwork::current().forEachElement([&](cNetworkElement& element) {
        if (auto* fusion = dynamic_cast<cTQFusionQueue*>(&element)) fusion->queuesChanged(newName, oldName);
    });
}
