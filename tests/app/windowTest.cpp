#include "app/settings.h"
#include "editor/animation.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqScene.h"
#include "editor/tqView.h"
#include "support/drawnModel.h"
#include "support/messageBox.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSlider>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>

/// The window, with settings in a folder of the test's own. Nothing is drawn but where a test draws it.
class cWindowTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    static cKind* find(const tsApp& window, const char* name) {
        auto* found = window.findChild<cKind*>(QLatin1String(name));
        if (found == nullptr) qWarning("no %s", name);
        return found;
    }
    void writeSettings(const QMap<QString, QVariant>& values) {
        QSettings file(cAppSettings::filePath(), QSettings::IniFormat);
        for (auto value = values.begin(); value != values.end(); ++value) file.setValue(value.key(), value.value());
    }
    /// The next box is the question of what becomes of the changes; it is answered.
    void answerSaveQuestion(tsApp& window, QMessageBox::StandardButton answer) {
        QTimer::singleShot(0, &window, [this, answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QCOMPARE(box->windowTitle(), "TIMBERSIM");
            QCOMPARE(box->text(), "The document has been modified.\nDo you want to save your changes?");
            ++questions;
            box->button(answer)->click();
        });
    }

    int questions = 0;
    std::unique_ptr<QTemporaryDir> home;

private Q_SLOTS:
    void init() {
        questions = 0;
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
    }

    void settingsAreBelowTheConfigurationFolder() {
        QCOMPARE(cAppSettings::filePath(), home->path() + "/timbersim/demosettings.ini");
    }

    void startsInEditModeWithoutASettingsFile() {
        tsApp window;

        QCOMPARE(window.windowTitle(), "Untitled[*] - TIMBERSIM");
        QVERIFY(!window.isModified());
        QCOMPARE(find<QLabel>(window, "statusLabel")->text(), "Status: Edit mode.");
        QCOMPARE(find<QAction>(window, "runAction")->isEnabled(), true);
        QCOMPARE(find<QAction>(window, "pauseAction")->isEnabled(), false);
        QCOMPARE(find<QAction>(window, "stopAction")->isEnabled(), false);
        QCOMPARE(animation::isOn, false);
        QCOMPARE(animation::delay, 0);
        QCOMPARE(find<QSlider>(window, "speedSlider")->value(), 99);
        QCOMPARE(find<QSlider>(window, "zoomSlider")->value(), 5);
        QCOMPARE(find<QSlider>(window, "textSizeSlider")->value(), 2);
        QCOMPARE(window.captionPointSize(), 0);
        QVERIFY(window.findResourceType("Default") != nullptr);
    }

    void settingsComeBack() {
        writeSettings({{"ANIMATIONTOGGLE", true}, {"ANIMATIONSPEED", 340}, {"ZOOMSLIDE", 12}, {"FONTSLIDE", 9}});
        tsApp window;

        QCOMPARE(find<QCheckBox>(window, "animateBox")->isChecked(), true);
        QCOMPARE(find<QSlider>(window, "speedSlider")->value(), 66);
        QCOMPARE(find<QSlider>(window, "zoomSlider")->value(), 12);
        QCOMPARE(find<QSlider>(window, "textSizeSlider")->value(), 9);
        QCOMPARE(window.captionPointSize(), 9);
        const double screen = QGuiApplication::primaryScreen()->logicalDotsPerInch() / 96.0;
        QCOMPARE(find<QGraphicsView>(window, "canvas")->transform().m11(), 12 / 15.0 * screen * 1.25);
        find<QSlider>(window, "speedSlider")->setValue(10);
        find<QSlider>(window, "zoomSlider")->setValue(20);
        find<QSlider>(window, "textSizeSlider")->setValue(4);
        find<QCheckBox>(window, "animateBox")->setChecked(false);
        window.close();

        const cAppSettings kept = cAppSettings::read(cAppSettings::filePath());
        QCOMPARE(kept.isAnimated, false);
        QCOMPARE(kept.animationDelay, 900);
        QCOMPARE(kept.zoom, 20);
        QCOMPARE(kept.textSize, 4);
    }

    void delayBelowZeroInTheFileCountsAsZero() {
        writeSettings({{"ANIMATIONSPEED", -5}});
        const tsApp window;

        QCOMPARE(animation::delay, 0);
        animation::waitStep();  // ends
    }

    void speedSliderSetsTheDelay_data() {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("delay");
        QTest::newRow("slowest") << 0 << 1000;
        QTest::newRow("middle") << 50 << 500;
        QTest::newRow("fastest") << 99 << 10;
    }
    void speedSliderSetsTheDelay() {
        QFETCH(int, value);
        QFETCH(int, delay);
        tsApp window;
        find<QSlider>(window, "speedSlider")->setValue(value == 0 ? 1 : 0);
        find<QSlider>(window, "speedSlider")->setValue(value);

        QCOMPARE(animation::delay, delay);
    }

    void zoomScalesTheView() {
        tsApp window;
        find<QSlider>(window, "zoomSlider")->setValue(15);
        const double screen = QGuiApplication::primaryScreen()->logicalDotsPerInch() / 96.0;

        QCOMPARE(find<QGraphicsView>(window, "canvas")->transform().m11(), 1.25 * screen);
        QCOMPARE(find<QGraphicsView>(window, "canvas")->sceneRect(), QRectF(0, 0, 5000, 5000));
    }

    void textSizeIsThatOfTheNames() {
        cDrawnModel model;
        auto* slider = find<QSlider>(model.window, "textSizeSlider");
        slider->setValue(4);
        const double small = model.load->captionRect().height();

        slider->setValue(12);

        QVERIFY(model.load->captionRect().height() > 2 * small);
        QVERIFY(model.load->boundingRect().contains(model.load->captionRect()));
    }

    void actionsAreAsTold_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("image");
        QTest::addColumn<QKeySequence>("shortcut");
        QTest::addColumn<QString>("statusTip");
        const QString stop = "S&top Simulation/ Operation";
        const auto row = [](const char* name, const QString& text, const QString& image, const QKeySequence& shortcut,
                            const QString& tip) { QTest::newRow(name) << text << image << shortcut << tip; };
        row("newAction", "&New", "new.png", QKeySequence::New, "Create a new file");
        row("openAction", "&Open", "open.png", QKeySequence::Open, "Open a new file");
        row("saveAction", "&Save", "save.png", QKeySequence::Save, "Save changes to this file");
        row("saveAsAction", "&Save As", "", QKeySequence::SaveAs, "Save changes to this file");
        row("exitAction", "E&xit", "", QKeySequence("Ctrl+Q"), "Exit the application");
        row("functionListAction", "Variable and Function List", "", {}, "");
        row("aboutAction", "A&bout", "", QKeySequence("Ctrl+B"), "");
        row("runAction", "R&un Simulation/ Operation", "play.png", {}, "Run Simulation of Network");
        row("pauseAction", stop, "pause.png", {}, "Stop Simulation of Network");
        row("stopAction", stop, "stop.png", {}, "Stop Simulation of Network");
        row("resourcesAction", "&Resources", "res.png", {}, "Add and Edit Resources");
        row("globalCodeAction", "&Global Code", "code.png", {}, "Add and Edit Global Code");
    }
    void actionsAreAsTold() {
        Q_INIT_RESOURCE(images);
        QFETCH(QString, text);
        QFETCH(QString, image);
        QFETCH(QKeySequence, shortcut);
        QFETCH(QString, statusTip);
        tsApp window;
        const auto* action = find<QAction>(window, QTest::currentDataTag());

        QCOMPARE(action->text(), text);
        QCOMPARE(action->shortcut(), shortcut);
        QCOMPARE(action->statusTip(), statusTip);
        QCOMPARE(action->icon().isNull(), image.isEmpty());
        QCOMPARE(action->icon().pixmap(16).toImage(), QIcon(":/tsApp/images/" + image).pixmap(16).toImage());
    }

    void actionsOpenTheirWindows_data() {
        QTest::addColumn<QString>("title");
        QTest::newRow("newAction") << "TIMBERSIM";  // the question of what becomes of the changes
        QTest::newRow("openAction") << "TIMBERSIM";
        QTest::newRow("saveAction") << "Save";
        QTest::newRow("saveAsAction") << "Save";
        QTest::newRow("exitAction") << "TIMBERSIM";
        QTest::newRow("functionListAction") << "Variables and Functions in TIMBERSIM";
        QTest::newRow("aboutAction") << "About TIMBERSIM";
        QTest::newRow("resourcesAction") << "Resource Types";
        QTest::newRow("globalCodeAction") << "Global Code";
    }
    void actionsOpenTheirWindows() {
        QFETCH(QString, title);
        tsApp window;
        window.show();
        window.createElementFromDrop("Queue", {200, 100});
        QStringList opened;
        QTimer watcher;
        connect(&watcher, &QTimer::timeout, this, [&] {
            QWidget* widget = QApplication::activeModalWidget();
            if (widget == nullptr) return;
            opened.append(widget->windowTitle());
            widget->close();
        });
        watcher.start(0);

        find<QAction>(window, QTest::currentDataTag())->trigger();

        QTRY_COMPARE(opened, QStringList{title});
        QVERIFY(window.isVisible());
        QCOMPARE(window.elements.size(), std::size_t{1});
    }

    void exitClosesTheWindow() {
        tsApp window;
        window.show();
        find<QAction>(window, "exitAction")->trigger();

        QVERIFY(!window.isVisible());
    }

    void openingTheTypesMarksTheDocument() {
        tsApp window;
        QVERIFY(!window.isModified());
        find<QAction>(window, "resourcesAction")->trigger();

        QVERIFY(window.isModified());
        QVERIFY(find<QDialog>(window, "resourceTypeDialog")->isModal());
    }

    void menusAndToolbarsStandInTheirOrder() {
        tsApp window;
        QStringList bars;
        for (const QToolBar* bar : window.findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
            bars.append(bar->windowTitle());
        QCOMPARE(bars, QStringList({"&File", "&Simulation", "&Code", "Halt", "Info", "Options", "Size"}));
        QStringList entries;
        for (const QAction* action : find<QMenu>(window, "fileMenu")->actions()) entries.append(action->text());
        QCOMPARE(entries, QStringList({"&New", "&Open", "&Save", "&Save As", "", "E&xit"}));
        QCOMPARE(find<QMenu>(window, "helpMenu")->actions().size(), 2);
    }

    void iconOnlyControlsHaveNamesAndToolTips() {
        tsApp window;
        for (const char* name :
             {"newActionButton", "openActionButton", "saveActionButton", "runActionButton", "pauseActionButton",
              "stopActionButton", "resourcesActionButton", "globalCodeActionButton"}) {
            const auto* button = find<QToolButton>(window, name);
            QVERIFY2(!button->accessibleName().isEmpty(), name);
            QVERIFY2(!button->toolTip().isEmpty(), name);
        }
    }

    void stencilHoldsTenIcons() {
        Q_INIT_RESOURCE(images);
        tsApp window;
        auto* stencil = find<QToolBox>(window, "stencil");
        QCOMPARE(stencil->itemText(0), "Stencil");
        QVERIFY(!stencil->isItemEnabled(0));
        QCOMPARE(stencil->minimumWidth(), 120);
        for (const char* kind : {"Combi", "NormalAct", "Queue", "FusionQueue", "Link", "Fork", "Dynafork", "Assembler",
                                 "Disassembler", "Consolidator"})
            QVERIFY2(!stencil->findChild<QLabel*>(QString(kind) + "Icon")->pixmap(Qt::ReturnByValue).isNull(), kind);
    }

    void droppedElementIsInTheModelAndSelected() {
        tsApp window;
        window.createElementFromDrop("Combi", {200, 150});

        auto* combi = window.findElement<cTQCombi>("Combi1");
        QVERIFY(combi != nullptr);
        QVERIFY(combi->isSelected());
        QVERIFY(window.combis.contains("Combi1"));
        QVERIFY(window.isModified());
        QVERIFY(window.isWindowModified());
        QVERIFY(find<QWidget>(window, "combiPanel")->isVisibleTo(&window));
    }

    void fusionQueueNeedsAQueue() {
        tsApp window;
        QCOMPARE(boxesDuring([&] {
                     window.createElementFromDrop("FusionQueue", {200, 100});
                 }),
                 QStringList{"Error: Cannot create FusionQueue without atleast one Queue in model."});
        QVERIFY(window.elements.empty());
        QVERIFY(!window.isModified());

        window.createElementFromDrop("Queue", {200, 100});
        window.createElementFromDrop("FusionQueue", {300, 100});
        QCOMPARE(window.elements.size(), std::size_t{2});
    }

    void deletedElementTakesItsPanelAlong() {
        cDrawnModel model;
        model.window.elemSelected(model.load);
        find<QGraphicsView>(model.window, "canvas")->scene()->clearSelection();
        model.load->setSelected(true);
        model.window.deleteSelected();

        QVERIFY(model.window.findElement("Load") == nullptr);
        QVERIFY(model.window.combis.empty());
        QVERIFY(model.window.findChild<QWidget*>("combiPanel") == nullptr);
        QCOMPARE(model.draws->getSuccNode(), nullptr);
        QCOMPARE(boxesDuring([&] { model.window.onRun(); }),
                 QStringList{"Error: Simulation failed to start.\nOne or more links not connected properly."});
        QCOMPARE(model.window.simState, 0);
    }

    void deletedRenamedCombiLeavesTheModel() {
        cDrawnModel model;
        model.load->setName("Digger");
        model.window.removeElement(model.load);

        QVERIFY(model.window.combis.empty());
        QVERIFY(model.window.findElement("Digger") == nullptr);
    }

    void newAsksBeforeTheModelGoes() {
        cDrawnModel model;
        answerSaveQuestion(model.window, QMessageBox::Cancel);
        model.window.newFile();
        QCOMPARE(model.window.elements.size(), std::size_t{5});

        answerSaveQuestion(model.window, QMessageBox::No);
        model.window.newFile();
        QVERIFY(model.window.elements.empty());
        QVERIFY(!model.window.isModified());
        QCOMPARE(questions, 2);
        model.window.createElementFromDrop("Queue", {200, 100});
        QVERIFY(model.window.findElement("Queue1") != nullptr);
    }

    void closeAsksAndCanBeCalledOff() {
        cDrawnModel model;
        model.window.show();
        answerSaveQuestion(model.window, QMessageBox::Cancel);
        QVERIFY(!model.window.close());
        QVERIFY(!model.window.stopRequested);

        answerSaveQuestion(model.window, QMessageBox::No);
        QVERIFY(model.window.close());
        QVERIFY(model.window.stopRequested);
        QCOMPARE(questions, 2);
    }

    void fileThatCannotBeReadLeavesAnEmptyModel() {
        cDrawnModel model;
        const QStringList told = boxesDuring([&] { model.window.loadModel("/nowhere/none.tbsmx"); });

        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].startsWith("Unable to open file: "));
        QVERIFY(model.window.elements.empty());
        QCOMPARE(model.window.statusBar()->currentMessage(), "Loading canceled");
        QCOMPARE(model.window.windowTitle(), "Untitled[*] - TIMBERSIM");
    }
};

QTEST_MAIN(cWindowTest)
#include "windowTest.moc"
