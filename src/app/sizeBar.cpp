#include "app/sizeBar.h"

#include <QLabel>
#include <QSlider>

namespace {

constexpr int sliderWidth = 80;
constexpr int labelMargin = 6;

}  // namespace

cSizeBar::cSizeBar(int zoom, int textSize, QWidget* parent) : QToolBar(tr("Size"), parent) {
    setObjectName(QStringLiteral("sizeBar"));
    zoomSlider = addSlider(tr("Zoom"), QStringLiteral("zoomSlider"), 5, 25, zoom);
    textSlider = addSlider(tr("TextSize"), QStringLiteral("textSizeSlider"), 2, 12, textSize);
    connect(zoomSlider, &QSlider::valueChanged, this, &cSizeBar::zoomChanged);
    connect(textSlider, &QSlider::valueChanged, this, &cSizeBar::textSizeChanged);
}

int cSizeBar::zoom() const { return zoomSlider->value(); }

QSlider* cSizeBar::addSlider(const QString& label, const QString& name, int lowest, int highest, int value) {
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(name);
    slider->setAccessibleName(label);
    slider->setToolTip(label);
    slider->setRange(lowest, highest);
    slider->setValue(value);
    slider->setFixedWidth(sliderWidth);
    auto* text = new QLabel(label);
    text->setObjectName(name + QStringLiteral("Label"));
    text->setContentsMargins(labelMargin, 0, labelMargin, 0);
    addWidget(text);
    addWidget(slider);
    return slider;
}
