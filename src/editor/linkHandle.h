#pragma once

#include "editor/side.h"

#include <QColor>
#include <QGraphicsItem>
#include <QPointF>
#include <QString>

class cTQLink;
class tNodeCP;

/// One end of a link, for the mouse to take. Loose, it shows as a small square; in use, only while its link is
/// selected.
///
/// Ownership: a child item of its link.
class tLinkCP : public QGraphicsItem {
public:
    static constexpr const char* startName = "start";
    static constexpr const char* endName = "end";

    tLinkCP(cTQLink& link, const QString& endNamed, eSide firstSide);
    ~tLinkCP() override;

    cTQLink& link() const { return owner; }
    const QString& getName() const { return name; }
    bool isStart() const { return name == QLatin1String(startName); }

    /// The point that the handle sits on, or null.
    tNodeCP* attachment() const { return point; }
    /// Takes place on a point: its side and its position, now and whenever the node moves.
    void attach(tNodeCP& newPoint);
    /// Lets go of the point. The handle stays where it is, and shows red.
    void detach();
    /// Moves the handle to the point that it sits on, if there is one.
    void followPoint();
    /// Moves the handle onto a point without taking place there.
    void moveOnto(const tNodeCP& target);

    const QColor& getColour() const { return colour; }
    void setColour(const QColor& newColour);

    eSide side;  ///< which way the link leaves here

    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    cTQLink& owner;
    const QString name;
    tNodeCP* point = nullptr;
    QColor colour = Qt::red;
};
