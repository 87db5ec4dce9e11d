#include "app/stencil.h"

#include "editor/elemIcon.h"
#include "editor/elementFactory.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPixmap>
#include <QScrollArea>
#include <QStyle>

namespace {

constexpr int narrowest = 120;
constexpr int iconWidth = 100;

/// Ten icons are higher than a small screen. The column has one width, with a scroll bar beside it or without: icons
/// stay where they are when the bar comes.
QScrollArea* scrolled(QWidget* icons) {
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("stencilArea"));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedWidth(narrowest);
    area->setWidget(icons);
    return area;
}

QWidget* inMiddle(QWidget* column) {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(column, 0, Qt::AlignHCenter);
    return page;
}

}  // namespace

cStencil::cStencil(QWidget* parent) : QToolBox(parent) {
    setObjectName(QStringLiteral("stencil"));
    setMinimumWidth(narrowest);
    auto* icons = new QWidget;
    icons->setObjectName(QStringLiteral("stencilPage"));
    auto* grid = new QGridLayout(icons);
    const int barWidth = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    grid->setContentsMargins(qMax(0, narrowest - barWidth - iconWidth), 0, 0, 0);
    grid->setSpacing(0);
    int row = 0;
    for (const QString& kind : elementKinds()) {
        const QPixmap image(QStringLiteral(":/tsApp/images/%1Icon.png").arg(kind));
        grid->addWidget(new cTQElemIcon(kind, image), row++, 0, Qt::AlignLeft);
    }
    grid->setRowStretch(row, 1);
    addItem(inMiddle(scrolled(icons)), tr("Stencil"));
    setItemEnabled(0, false);
}
