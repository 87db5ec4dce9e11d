#include "editor/tqQueue.h"

#include "editor/tqFusionQueue.h"
#include "editor/typedNode.h"
#include "kernel/propertyWords.h"

cTQQueue::cTQQueue(cResType* type) : cTQNode(queueShape()) { setResType(type); }

void cTQQueue::onEntry() {
    showStep([this] { cNodeQueue::onEntry(); });
}

void cTQQueue::onDrawFrom() {
    showStep([this] { cNodeQueue::onDrawFrom(); });
}

void cTQQueue::renamed(const std::string& oldName) {
    cTQNode::renamed(oldName);
    tellFusionQueues(getName(), oldName);
}

std::vector<cFormRow> cTQQueue::formRows() {
    cFormRow content;
    content.label = tr("Initial Content:");
    content.fieldName = QStringLiteral("initialContentEdit");
    content.modelKey = propertyWord::initialContent;
    content.get = [this] { return QString::fromStdString(getInitialContentText()); };
    content.set = [this](const QString& text) { setInitialContentText(text.toStdString()); };
    content.isMarked = true;

    cFormRow count;
    count.label = tr("CurCount : ");
    count.fieldName = QStringLiteral("curCountLabel");
    count.kind = eFieldKind::value;
    count.get = [this] { return QString::number(getCurCount()); };
    return {nameRow(tr("Name:")), content, typeChoiceRow(tr("Resource Type:"), *this, *this), count};
}
