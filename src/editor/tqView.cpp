#include "editor/tqView.h"

#include "editor/elemIcon.h"
#include "kernel/network.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

cTQView::cTQView(QWidget* parent) : QGraphicsView(parent) {
    setAcceptDrops(true);
    setBackgroundBrush(Qt::NoBrush);
    setStyleSheet(QStringLiteral("QGraphicsView { background: transparent }"));  // of the view, not of its scroll bars
    setRenderHint(QPainter::Antialiasing);
}

/// Nothing can be added to a model that runs.
bool cTQView::isWelcome(const QDropEvent& event) const {
    return event.mimeData()->hasFormat(QLatin1String(elementMimeKey)) && cNetwork::current().simState == 0;
}

void cTQView::accept(QDropEvent& event) const {
    if (event.source() != this) {
        event.acceptProposedAction();
        return;
    }
    event.setDropAction(Qt::MoveAction);
    event.accept();
}

void cTQView::dragEnterEvent(QDragEnterEvent* event) {
    if (isWelcome(*event))
        accept(*event);
    else
        event->ignore();
}

void cTQView::dragMoveEvent(QDragMoveEvent* event) {
    if (isWelcome(*event))
        accept(*event);
    else
        event->ignore();
}

void cTQView::dropEvent(QDropEvent* event) {
    if (!isWelcome(*event)) {
        event->ignore();
        return;
    }
    Q_EMIT elemDropped(draggedKind(*event->mimeData()), event->position().toPoint());
    accept(*event);
}
