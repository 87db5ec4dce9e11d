#pragma once

#include <QGraphicsView>
#include <QPoint>
#include <QString>

class QDropEvent;

/// The view of the canvas: takes what is dropped on it.
class cTQView : public QGraphicsView {
    Q_OBJECT

public:
    explicit cTQView(QWidget* parent = nullptr);

Q_SIGNALS:
    /// An icon of the stencil was dropped, at a place in the viewport.
    void elemDropped(const QString& kind, QPoint position);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void accept(QDropEvent& event) const;
    bool isWelcome(const QDropEvent& event) const;
};
