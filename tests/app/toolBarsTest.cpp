#include "app/settings.h"
#include "app/tsApp.h"
#include "editor/elemIcon.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QGraphicsView>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolBox>

/// What stands in the toolbars, the stencil and the status bar of a window without settings.
class cToolBarsTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    cKind* find(const char* name) {
        return window->findChild<cKind*>(QLatin1String(name));
    }
    /// What a toolbar holds, left to right: the text of each, and what it is.
    QStringList contentOf(const char* bar) {
        QStringList content;
        for (QAction* action : find<QToolBar>(bar)->actions()) {
            QWidget* widget = find<QToolBar>(bar)->widgetForAction(action);
            if (const auto* label = qobject_cast<QLabel*>(widget))
                content.append("label " + label->text());
            else if (const auto* box = qobject_cast<QCheckBox*>(widget))
                content.append("box " + box->text());
            else if (qobject_cast<QLineEdit*>(widget) != nullptr)
                content.append("edit " + widget->objectName());
            else if (qobject_cast<QSlider*>(widget) != nullptr)
                content.append("slider " + widget->objectName());
            else
                content.append(action->text());
        }
        return content;
    }

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<tsApp> window;

private Q_SLOTS:
    void init() {
        Q_INIT_RESOURCE(images);
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
        window = std::make_unique<tsApp>();
    }
    void cleanup() { window.reset(); }

    void toolBarsHoldWhatIsTold_data() {
        QTest::addColumn<QStringList>("content");
        QTest::newRow("fileBar") << QStringList{"&New", "&Open", "&Save"};
        QTest::newRow("simulationBar") << QStringList{"R&un Simulation/ Operation", "S&top Simulation/ Operation",
                                                      "S&top Simulation/ Operation"};
        QTest::newRow("codeBar") << QStringList{"&Resources", "&Global Code"};
        QTest::newRow("haltBar") << QStringList{"label Pause at: ", "box ClockAdvance", "box NextEvent",
                                                "box Time=", "edit timeEdit"};
        QTest::newRow("infoBar") << QStringList{"label SimTime: ", "edit simTimeEdit"};
        QTest::newRow("optionsBar") << QStringList{"box Animate", "slider speedSlider"};
        QTest::newRow("sizeBar") << QStringList{"label Zoom", "slider zoomSlider", "label TextSize",
                                                "slider textSizeSlider"};
    }
    void toolBarsHoldWhatIsTold() {
        QFETCH(QStringList, content);

        QCOMPARE(contentOf(QTest::currentDataTag()), content);
    }

    void slidersHaveTheirRanges_data() {
        QTest::addColumn<int>("lowest");
        QTest::addColumn<int>("highest");
        QTest::newRow("speedSlider") << 0 << 99;
        QTest::newRow("zoomSlider") << 5 << 25;
        QTest::newRow("textSizeSlider") << 2 << 12;
    }
    void slidersHaveTheirRanges() {
        QFETCH(int, lowest);
        QFETCH(int, highest);
        const auto* slider = find<QSlider>(QTest::currentDataTag());

        QCOMPARE(slider->minimum(), lowest);
        QCOMPARE(slider->maximum(), highest);
        QCOMPARE(slider->orientation(), Qt::Horizontal);
        QVERIFY(!slider->accessibleName().isEmpty());
        QVERIFY(!slider->toolTip().isEmpty());
    }

    void fieldsHaveTheirWidths() {
        QCOMPARE(find<QLineEdit>("timeEdit")->maximumWidth(), 50);
        QCOMPARE(find<QLineEdit>("simTimeEdit")->maximumWidth(), 100);
        QVERIFY(!find<QLineEdit>("simTimeEdit")->isEnabled());
        QCOMPARE(find<QSlider>("speedSlider")->toolTip(), "Animation Speed");
    }

    void menusHoldWhatIsTold() {
        QStringList help;
        for (const QAction* action : find<QMenu>("helpMenu")->actions()) help.append(action->text());

        QCOMPARE(find<QMenu>("fileMenu")->title(), "&File");
        QCOMPARE(find<QMenu>("helpMenu")->title(), "&Help");
        QCOMPARE(help, QStringList({"Variable and Function List", "A&bout"}));
    }

    void stencilIsOneColumnInTheOrderOfTheKinds() {
        const auto* grid = find<QWidget>("stencilPage")->findChild<QGridLayout*>();
        QStringList kinds;
        for (int row = 0; row < 10; ++row)
            kinds.append(qobject_cast<cTQElemIcon*>(grid->itemAtPosition(row, 0)->widget())->getKind());

        QCOMPARE(kinds, QStringList({"Combi", "NormalAct", "Queue", "FusionQueue", "Link", "Fork", "Dynafork",
                                     "Assembler", "Disassembler", "Consolidator"}));
        QCOMPARE(find<QToolBox>("stencil")->count(), 1);
        QCOMPARE(grid->columnCount(), 1);
    }

    void iconsStayInPlaceWhenTheStencilIsScrolled() {
        const auto* area = find<QScrollArea>("stencilArea");
        const auto* icon = find<cTQElemIcon>("CombiIcon");
        const auto placeAtHeight = [&](int height) {
            window->resize(1000, height);
            QCoreApplication::sendPostedEvents();
            return icon->mapTo(window.get(), QPoint(0, 0)).x();
        };
        window->show();
        const int place = placeAtHeight(1200);
        QVERIFY(!area->verticalScrollBar()->isVisible());

        QCOMPARE(placeAtHeight(600), place);
        QVERIFY(area->verticalScrollBar()->isVisible());
        QVERIFY(icon->width() <= area->viewport()->width());
    }

    void stencilAndCanvasStandSideBySide() {
        auto* row = qobject_cast<QHBoxLayout*>(window->centralWidget()->layout()->itemAt(0)->layout());

        QCOMPARE(row->itemAt(0)->widget(), find<QToolBox>("stencil"));
        QCOMPARE(row->itemAt(1)->widget(), find<QGraphicsView>("canvas"));
        QCOMPARE(row->stretch(0), 1);
        QCOMPARE(row->stretch(1), 10);
    }

    void statusLabelIsAsTold() {
        const auto* label = find<QLabel>("statusLabel");

        QCOMPARE(label->styleSheet(), "QLabel { color: #0056b3; padding: 8px; }");
        QCOMPARE(label->font().pointSize(), 10);
        QCOMPARE(label->font().weight(), QFont::Bold);
        QCOMPARE(label->alignment(), Qt::AlignCenter);
        QVERIFY(!window->statusBar()->isSizeGripEnabled());
    }

    void whatNobodyMovedIsWrittenAsItWasRead() {
        window->close();

        const cAppSettings kept = cAppSettings::read(cAppSettings::filePath());
        QVERIFY(QFile::exists(cAppSettings::filePath()));
        QCOMPARE(kept.animationDelay, 0);
        QCOMPARE(kept.textSize, 0);
    }

    void everyControlCanBeFoundByName() {
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            const bool isControl = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                                   qobject_cast<const QSlider*>(widget) != nullptr ||
                                   qobject_cast<const QLineEdit*>(widget) != nullptr ||
                                   qobject_cast<const QDialog*>(widget) != nullptr;
            if (isControl) QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
        }
    }
};

QTEST_MAIN(cToolBarsTest)
#include "toolBarsTest.moc"
