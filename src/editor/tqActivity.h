#pragma once

#include "editor/tqNode.h"
#include "kernel/activity.h"
#include "kernel/propertyWords.h"

/// An activity on the canvas, over the engine's class of it: each of its events is a visible step.
template <typename cKernel>
class cTQActivity : public cTQNode, public virtual cKernel {
public:
    void onStart() override {
        showStep([this] { cKernel::onStart(); });
    }
    void beforeEnd() override {
        showStep([this] { cKernel::beforeEnd(); });
    }
    void onEnd() override {
        showStep([this] { cKernel::onEnd(); });
    }
    void refreshElement() override { runChanged(); }

protected:
    using cTQNode::cTQNode;

    int runningInstances() const override { return cKernel::getCurInst(); }

    cFormRow durationRow() {
        cFormRow row;
        row.label = tr("Duration:");
        row.fieldName = QStringLiteral("durationEdit");
        row.modelKey = propertyWord::duration;
        row.get = [this] { return QString::fromStdString(cKernel::getDurationText()); };
        row.set = [this](const QString& text) { cKernel::setDurationText(text.toStdString()); };
        row.isMarked = true;
        return row;
    }
};
