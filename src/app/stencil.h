#pragma once

#include <QToolBox>

/// The column of icons, one for each kind of element, that are dragged onto the canvas.
class cStencil : public QToolBox {
    Q_OBJECT

public:
    explicit cStencil(QWidget* parent = nullptr);
};
