#pragma once

#include <QApplication>
#include <QGraphicsView>
#include <QMouseEvent>

/// A left button that acts on a view at places of its scene.
class cMouse {
public:
    explicit cMouse(QGraphicsView& on) : view(on) {}

    void press(QPointF place) { send(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton); }
    void moveTo(QPointF place) { send(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF place) { send(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton); }
    void click(QPointF place) {
        press(place);
        release(place);
    }
    void drag(QPointF from, QPointF to) {
        press(from);
        moveTo((from + to) / 2.0);
        moveTo(to);
        release(to);
    }

private:
    void send(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons buttons) {
        const QPoint at = view.mapFromScene(place);
        QMouseEvent event(type, at, view.viewport()->mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }

    QGraphicsView& view;
};
