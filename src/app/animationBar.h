#pragma once

#include <QToolBar>

class QCheckBox;
class QSlider;

/// The toolbar that switches the animation of runs and sets its speed. It shows and sets the two values of the process.
class cAnimationBar : public QToolBar {
    Q_OBJECT

public:
    explicit cAnimationBar(QWidget* parent = nullptr);

    /// Ticks the box "Animate", or takes its tick away.
    void setAnimated(bool isWanted);

private:
    void apply();

    QCheckBox* animate;
    QSlider* speed;
};
