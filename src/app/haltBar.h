#pragma once

#include <QToolBar>

class QCheckBox;
class QLineEdit;

/// The toolbar that says where a run is to be held.
class cHaltBar : public QToolBar {
    Q_OBJECT

public:
    explicit cHaltBar(QWidget* parent = nullptr);

    /// Whether a run is to be held after a step of the clock to `simTime`. A time that is no number reads as 0, and
    /// the run is held again at each later step.
    bool holdsAfterTimeAdvance(double simTime) const;
    /// Whether a run is to be held before each event of an element.
    bool holdsAtEvents() const;

    void clearTime();

private:
    QCheckBox* addBox(const QString& text, const QString& name);

    QCheckBox* clockAdvance;
    QCheckBox* nextEvent;
    QCheckBox* atTime;
    QLineEdit* timeEdit;
};
