#include "app/haltBar.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int widestTime = 50;

}  // namespace

cHaltBar::cHaltBar(QWidget* parent) : QToolBar(tr("Halt"), parent) {
    setObjectName(QStringLiteral("haltBar"));
    addWidget(new QLabel(tr("Pause at: ")));
    clockAdvance = addBox(tr("ClockAdvance"), QStringLiteral("clockAdvanceBox"));
    nextEvent = addBox(tr("NextEvent"), QStringLiteral("nextEventBox"));
    atTime = addBox(tr("Time="), QStringLiteral("timeBox"));
    timeEdit = new QLineEdit;
    timeEdit->setObjectName(QStringLiteral("timeEdit"));
    timeEdit->setAccessibleName(tr("Time to pause at"));
    timeEdit->setMaximumWidth(widestTime);
    addWidget(timeEdit);
}

QCheckBox* cHaltBar::addBox(const QString& text, const QString& name) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    addWidget(box);
    return box;
}

bool cHaltBar::holdsAfterTimeAdvance(double simTime) const {
    if (clockAdvance->isChecked()) return true;
    return atTime->isChecked() && simTime >= timeEdit->text().toDouble();
}

bool cHaltBar::holdsAtEvents() const { return nextEvent->isChecked(); }

void cHaltBar::clearTime() { timeEdit->clear(); }
