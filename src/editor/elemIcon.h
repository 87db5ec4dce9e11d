#pragma once

#include <QLabel>
#include <QString>

class QMimeData;

/// The kind of data that an icon carries to the canvas: one QString, written through a QDataStream.
inline constexpr const char* elementMimeKey = "netWorkElement";

/// An icon of the stencil: dragged onto the canvas, it becomes an element of its kind.
class cTQElemIcon : public QLabel {
    Q_OBJECT

public:
    /// @param elementKind names the kind, as in "Combi". @param image is shown and dragged.
    cTQElemIcon(const QString& elementKind, const QPixmap& image, QWidget* parent = nullptr);

    const QString& getKind() const { return kind; }
    /// What a drag of this icon carries. The caller owns it.
    QMimeData* makeMimeData() const;

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    const QString kind;
};

/// The kind of element that dragged data stands for; empty if the data is of another key.
QString draggedKind(const QMimeData& data);
