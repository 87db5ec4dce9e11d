#include "app/stencil.h"

#include "editor/elemIcon.h"
#include "editor/elementFactory.h"

#include <QGridLayout>
#include <QPixmap>
#include <QScrollArea>

namespace {

constexpr int narrowest = 120;

}  // namespace

cStencil::cStencil(QWidget* parent) : QToolBox(parent) {
    setObjectName(QStringLiteral("stencil"));
    setMinimumWidth(narrowest);
    auto* icons = new QWidget;
    icons->setObjectName(QStringLiteral("stencilPage"));
    auto* grid = new QGridLayout(icons);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    int row = 0;
    for (const QString& kind : elementKinds()) {
        const QPixmap image(QStringLiteral(":/tsApp/images/%1Icon.png").arg(kind));
        grid->addWidget(new cTQElemIcon(kind, image), row++, 0, Qt::AlignHCenter);
    }
    grid->setRowStretch(row, 1);
    auto* area = new QScrollArea;  // ten icons are higher than a small screen
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(icons);
    addItem(area, tr("Stencil"));
    setItemEnabled(0, false);
}
