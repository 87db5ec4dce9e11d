#pragma once

#include <QToolBar>

class QLineEdit;

/// The toolbar that says where a run is to be held.
class cHaltBar : public QToolBar {
    Q_OBJECT

public:
    explicit cHaltBar(QWidget* parent = nullptr);

    /// Whether a run is to be held after a step of the clock to `simTime`. A time that is no number reads as 0, and
    /// the run is held again at each later step.
    bool holdsAfterTimeAdvance(double simTime) const {
        return isClockTicked || (isTimeTicked && isTimeReached(simTime));
    }
    /// Whether a run is to be held before each event of an element.
    bool holdsAtEvents() const { return isEventTicked; }

    void clearTime();

private:
    void addBox(const QString& text, const QString& name, bool& isTicked);
    bool isTimeReached(double simTime) const;

    // Whether the boxes are ticked. A run asks several times at each event.
    bool isClockTicked = false;
    bool isEventTicked = false;
    bool isTimeTicked = false;
    QLineEdit* timeEdit;
};
