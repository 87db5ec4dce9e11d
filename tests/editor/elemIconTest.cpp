#include "editor/elemIcon.h"

#include <QDataStream>
#include <QDrag>
#include <QImage>
#include <QMimeData>
#include <QTest>

/// An icon of the stencil in blue, and the drag that a press on it begins.
class cElemIconTest : public QObject {
    Q_OBJECT

private:
    static QImage faceOf(const QLabel& icon) { return icon.pixmap(Qt::ReturnByValue).toImage(); }

    QPixmap image{100, 80};

private Q_SLOTS:
    void init() { image.fill(Qt::blue); }

    void carriesItsKindAsADataStream() {
        const cTQElemIcon icon("Dynafork", image);
        const std::unique_ptr<QMimeData> carried(icon.makeMimeData());

        QCOMPARE(carried->formats(), QStringList{"netWorkElement"});
        QByteArray expected;
        QDataStream stream(&expected, QIODevice::WriteOnly);
        stream << QString("Dynafork");
        QCOMPARE(carried->data("netWorkElement"), expected);
        QCOMPARE(draggedKind(*carried), "Dynafork");
    }

    void dataOfAnotherKeyHasNoKind() {
        QMimeData other;
        other.setText("Queue");

        QCOMPARE(draggedKind(other), "");
    }

    void pressDragsTheImageByItsHotSpot() {
        cTQElemIcon icon("Queue", image);
        icon.show();

        QTest::mousePress(&icon, Qt::LeftButton);

        const auto* drag = icon.findChild<QDrag*>();
        QVERIFY(drag != nullptr);
        QCOMPARE(drag->hotSpot(), QPoint(50, 40));
        QCOMPARE(drag->pixmap().toImage(), image.toImage());
        QCOMPARE(draggedKind(*drag->mimeData()), "Queue");
    }

    void dragThatEndsOutsideLeavesTheNormalFace() {
        cTQElemIcon icon("Queue", image);
        icon.show();
        const QImage before = faceOf(icon);

        QTest::mousePress(&icon, Qt::LeftButton);

        QCOMPARE(faceOf(icon), before);
        QVERIFY(icon.isVisible());
    }

    void hasANameAndAToolTip() {
        const cTQElemIcon icon("Queue", image);

        QCOMPARE(icon.objectName(), "QueueIcon");
        QCOMPARE(icon.accessibleName(), "Queue");
        QCOMPARE(icon.toolTip(), "Queue");
    }
};

QTEST_MAIN(cElemIconTest)
#include "elemIconTest.moc"
