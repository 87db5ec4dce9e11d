#pragma once

#include "editor/tqActivity.h"
#include "kernel/normal.h"

/// A Normal on the canvas: a box.
class cTQNormal : public cTQActivity<cNodeActNormal> {
    Q_OBJECT

public:
    cTQNormal() : cTQActivity(normalShape()) {}

protected:
    QString panelName() const override { return QStringLiteral("normalPanel"); }
    QString tabTitle() const override { return tr("Normal Properties"); }
    std::vector<cFormRow> formRows() override { return {nameRow(tr("Name:")), durationRow()}; }
};
