#include "app/haltBar.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int widestTime = 50;

}  // namespace

cHaltBar::cHaltBar(QWidget* parent) : QToolBar(tr("Halt"), parent) {
    setObjectName(QStringLiteral("haltBar"));
    auto* label = new QLabel(tr("Pause at: "));
    label->setObjectName(QStringLiteral("haltLabel"));
    addWidget(label);
    addBox(tr("ClockAdvance"), QStringLiteral("clockAdvanceBox"), isClockTicked);
    addBox(tr("NextEvent"), QStringLiteral("nextEventBox"), isEventTicked);
    addBox(tr("Time="), QStringLiteral("timeBox"), isTimeTicked);
    timeEdit = new QLineEdit;
    timeEdit->setObjectName(QStringLiteral("timeEdit"));
    timeEdit->setAccessibleName(tr("Time to pause at"));
    timeEdit->setToolTip(tr("Time to pause at"));
    timeEdit->setMaximumWidth(widestTime);
    addWidget(timeEdit);
}

void cHaltBar::addBox(const QString& text, const QString& name, bool& isTicked) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    connect(box, &QCheckBox::toggled, this, [&isTicked](bool isChecked) { isTicked = isChecked; });
    addWidget(box);
}

bool cHaltBar::isTimeReached(double simTime) const { return simTime >= timeEdit->text().toDouble(); }

void cHaltBar::clearTime() { timeEdit->clear(); }
