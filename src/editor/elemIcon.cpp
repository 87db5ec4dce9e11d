#include "editor/elemIcon.h"

#include <QDataStream>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QPoint hotSpot{50, 40};
constexpr QColor film{127, 127, 127, 127};

QPixmap dimmed(const QPixmap& image) {
    QPixmap copy = image;
    QPainter painter(&copy);
    painter.fillRect(copy.rect(), film);
    return copy;
}

}  // namespace

cTQElemIcon::cTQElemIcon(const QString& elementKind, const QPixmap& image, QWidget* parent)
    : QLabel(parent), kind(elementKind) {
    setPixmap(image);
    setObjectName(kind + QStringLiteral("Icon"));
    setAccessibleName(kind);
    setToolTip(kind);
}

QMimeData* cTQElemIcon::makeMimeData() const {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << kind;
    auto* carried = new QMimeData;
    carried->setData(QLatin1String(elementMimeKey), bytes);
    return carried;
}

void cTQElemIcon::mousePressEvent(QMouseEvent*) {
    const QPixmap image = pixmap(Qt::ReturnByValue);
    auto* drag = new QDrag(this);  // which Qt deletes when the drag is over
    drag->setMimeData(makeMimeData());
    drag->setPixmap(image);
    drag->setHotSpot(hotSpot);
    setPixmap(dimmed(image));
    const Qt::DropAction result = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
    if (result == Qt::MoveAction) {
        close();
        return;
    }
    show();
    setPixmap(image);
}

QString draggedKind(const QMimeData& data) {
    if (!data.hasFormat(QLatin1String(elementMimeKey))) return {};

    const QByteArray bytes = data.data(QLatin1String(elementMimeKey));
    QDataStream stream(bytes);
    QString kind;
    stream >> kind;
    return kind;
}
