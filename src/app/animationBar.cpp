#include "app/animationBar.h"

#include "editor/animation.h"

#include <QCheckBox>
#include <QSlider>

namespace {

constexpr int longestDelay = 1000;
constexpr int delayStep = 10;  // milliseconds from one value of the slider to the next
constexpr int fastest = 99;
constexpr int sliderWidth = 90;

}  // namespace

cAnimationBar::cAnimationBar(QWidget* parent)
    : QToolBar(tr("Options"), parent), animate(new QCheckBox(tr("Animate"))), speed(new QSlider(Qt::Horizontal)) {
    setObjectName(QStringLiteral("optionsBar"));
    animate->setObjectName(QStringLiteral("animateBox"));
    animate->setChecked(animation::isOn);
    speed->setObjectName(QStringLiteral("speedSlider"));
    speed->setAccessibleName(tr("Animation Speed"));
    speed->setToolTip(tr("Animation Speed"));
    speed->setRange(0, fastest);
    speed->setValue((longestDelay - animation::delay) / delayStep);
    speed->setFixedWidth(sliderWidth);
    addWidget(animate);
    addWidget(speed);
    // Only what the user moves changes the delay: one of 0 stays, though the slider has no place for it.
    connect(animate, &QCheckBox::toggled, this, &cAnimationBar::apply);
    connect(speed, &QSlider::valueChanged, this, &cAnimationBar::apply);
}

void cAnimationBar::setAnimated(bool isWanted) { animate->setChecked(isWanted); }

void cAnimationBar::apply() {
    animation::isOn = animate->isChecked();
    animation::delay = longestDelay - speed->value() * delayStep;
}
