#include "editor/dialogRes.h"
#include "editor/elementPanel.h"
#include "editor/tqAssembler.h"
#include "editor/tqFork.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqNormal.h"
#include "editor/tqScene.h"
#include "kernel/runStatistics.h"
#include "support/drawnModel.h"
#include "support/messageBox.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

/// What a user does to a drawn model: five units of Soil, each loaded for 10, into Hauled. Whatever is deleted, renamed
/// or given another type may be in use.
class cModelEditingTest : public QObject {
    Q_OBJECT

private:
    tsApp& window() { return model->window; }
    template <typename cKind>
    cKind* find(const char* name) {
        return window().findChild<cKind*>(QLatin1String(name));
    }
    QGraphicsView& view() { return *find<QGraphicsView>("canvas"); }
    cDialogRes& types() { return *window().findChild<cDialogRes*>(); }
    /// A model without an element, that asks nothing before it goes.
    void beginAnew() {
        QTimer::singleShot(0, this, [] {
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::No)->click();
        });
        window().newFile();
    }
    void makeCompound(const char* typeName) {
        types().addResType(typeName, "GENTYPE");
        types().findChild<QRadioButton*>("compoundButton")->setChecked(true);
    }
    /// Runs the model to its end, or to the box that tells why it can't.
    QStringList run() {
        return boxesDuring([this] { window().onRun(); });
    }

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<cDrawnModel> model;

private Q_SLOTS:
    void init() {
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
        model = std::make_unique<cDrawnModel>();
        window().runStatistics->setTemporaryPath((home->path() + "/lines.csv").toStdString());
    }
    void cleanup() { model.reset(); }

    // ---- selecting, panels

    void deleteIsForTheElementRightBehindADropAndBehindOk() {
        window().show();
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
        const std::size_t before = window().elements.size();

        window().createElementFromDrop("Queue", QPoint(60, 60));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QCOMPARE(window().elements.size(), before);

        window().createElementFromDrop("Queue", QPoint(60, 60));
        auto* panel = window().findChild<cElementPanel*>();
        QVERIFY(panel != nullptr);
        auto* name = panel->findChild<QLineEdit*>("nameEdit");
        name->setFocus();
        panel->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QCOMPARE(window().elements.size(), before);
    }

    void selectingAloneMarksTheDocumentSoThatClosingAsks() {
        beginAnew();
        const auto queue = std::make_shared<cTQQueue>(window().findResourceType("Default"));
        window().elements[queue->getName()] = queue;
        view().scene()->addItem(queue.get());
        QVERIFY(!window().isModified());

        window().elemSelected(queue.get());

        QVERIFY(window().isModified());
        const QStringList told = boxesDuring([this] { window().close(); });
        QCOMPARE(told, QStringList{"TIMBERSIM: The document has been modified.\nDo you want to save your changes?"});
    }

    void panelOfAnotherElementTakesThePlaceOfTheOneOnShow() {
        window().elemSelected(model->load);
        window().elemSelected(model->soil);

        QVERIFY(!find<QWidget>("combiPanel")->isVisibleTo(&window()));
        QVERIFY(find<QWidget>("queuePanel")->isVisibleTo(&window()));
    }

    void clickWithAnUnsteadyHandLeavesANodeInItsPlaceAboveThePanel() {
        window().resize(1000, 800);
        window().show();
        QWidget& viewport = *view().viewport();
        const auto closePanel = [this] {
            for (auto* button : window().findChildren<QPushButton*>("cancelButton"))
                if (button->isVisible()) button->click();
            QCoreApplication::sendPostedEvents();
        };
        closePanel();
        const QPoint low(400, viewport.height() - 30);
        auto& queue = model->drop<cTQQueue>("Queue", low, "Low");
        closePanel();
        const QPointF place = queue.pos();
        const auto send = [&viewport](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons buttons) {
            QMouseEvent event(type, at, viewport.mapToGlobal(at), button, buttons, Qt::NoModifier);
            QApplication::sendEvent(&viewport, &event);
            QCoreApplication::sendPostedEvents();
        };
        const QPoint hand = view().mapFromScene(place);

        send(QEvent::MouseButtonPress, hand, Qt::LeftButton, Qt::LeftButton);
        QVERIFY(hand.y() > viewport.height());  // the panel has taken the lower part of the canvas
        for (const int shake : {1, 0, 1, 2})
            send(QEvent::MouseMove, hand + QPoint(shake, 0), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, hand + QPoint(2, 0), Qt::LeftButton, Qt::NoButton);

        QCOMPARE(queue.pos(), place);
        QVERIFY(viewport.rect().contains(view().mapFromScene(place)));
    }

    void cancelHidesThePanelAndTheNextSelectionShowsTheEnginesTexts() {
        window().elemSelected(model->load);
        auto* panel = find<QDialog>("combiPanel");
        panel->findChild<QLineEdit*>("durationEdit")->setText("77");

        panel->findChild<QPushButton*>("cancelButton")->click();

        QVERIFY(!panel->isVisibleTo(&window()));
        QCOMPARE(model->load->getDurationText(), std::string("10"));
        QCOMPARE(panel->findChild<QLineEdit*>("durationEdit")->text(), "77");
        window().elemSelected(model->load);
        QVERIFY(panel->isVisibleTo(&window()));
        QCOMPARE(panel->findChild<QLineEdit*>("durationEdit")->text(), "10");
    }

    void okReadsThePanelAndHidesIt() {
        window().elemSelected(model->load);
        auto* panel = find<QDialog>("combiPanel");
        panel->findChild<QLineEdit*>("durationEdit")->setText("77");

        panel->findChild<QPushButton*>("okButton")->click();

        QVERIFY(!panel->isVisibleTo(&window()));
        QCOMPARE(model->load->getDurationText(), std::string("77"));
    }

    // ---- drops

    void dropOutsideItsRangeHoldsALinkBackAndNotANode_data() {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<QPoint>("heldBack");
        QTest::newRow("low") << QPoint(33, 44) << QPoint(100, 100);
        QTest::newRow("left") << QPoint(33, 200) << QPoint(100, 200);
        QTest::newRow("high") << QPoint(4950, 5100) << QPoint(4900, 4900);
        QTest::newRow("inside") << QPoint(150, 250) << QPoint(150, 250);
    }
    void dropOutsideItsRangeHoldsALinkBackAndNotANode() {
        QFETCH(QPoint, place);
        QFETCH(QPoint, heldBack);

        const auto& link = model->drop<cTQLink>("Link", place, "Way");
        const auto& queue = model->drop<cTQQueue>("Queue", place, "Far");

        QCOMPARE(link.pos(), view().mapToScene(heldBack));
        QCOMPARE(queue.pos(), restPosition(view().mapToScene(place), {40.0, 40.0}));
    }

    void droppedElementIsToldByTheScene() {
        QSignalSpy inserted(view().scene(), SIGNAL(itemInserted(cTQNetworkElement*)));
        window().createElementFromDrop("Queue", {200, 200});

        QCOMPARE(inserted.size(), 1);
    }

    void droppedElementIsTheOneSelected() {
        model->soil->setSelected(true);
        model->load->setSelected(true);
        window().createElementFromDrop("NormalAct", {200, 300});

        const QList<QGraphicsItem*> selected = view().scene()->selectedItems();
        QCOMPARE(selected.size(), 1);
        QVERIFY(dynamic_cast<cTQNormal*>(selected.front()) != nullptr);
    }

    void queueDroppedLaterIsOfferedToFusionQueues() {
        auto& again = model->drop<cTQFusionQueue>("FusionQueue", {200, 300}, "Again");
        const auto* queues = again.panel()->findChild<QComboBox*>("queueBox");
        QCOMPARE(queues->count(), 2);
        window().createElementFromDrop("Queue", {300, 300});

        QCOMPARE(queues->count(), 3);
        QCOMPARE(queues->currentText(), QString::fromStdString(again.getQueueName()));
    }

    void withoutADefaultTypeADroppedElementHasNone() {
        beginAnew();
        types().resetTypes();

        auto& queue = model->drop<cTQQueue>("Queue", {200, 100}, "Soil");
        auto& fork = model->drop<cTQFork>("Fork", {300, 100}, "Split");
        auto& link = model->drop<cTQLink>("Link", {400, 100}, "Way");

        QCOMPARE(queue.getResType(), nullptr);
        QCOMPARE(fork.getResType(), nullptr);
        QCOMPARE(link.getResType(), nullptr);
        QVERIFY(window().findResourceType("Default") == nullptr);
        types().addResType("Default", "GENTYPE");
        QVERIFY(window().findResourceType("Default") != nullptr);
        window().elemSelected(&queue);
        auto* panel = find<QDialog>("queuePanel");
        panel->findChild<QComboBox*>()->setCurrentText("Default");
        panel->findChild<QPushButton*>("okButton")->click();
        QCOMPARE(queue.getResType(), window().findResourceType("Default"));
    }

    // ---- deleting what is in use

    void anyElementCanGoAndTheModelRunsOrTellsWhyNot_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"Soil", "Load", "Hauled", "Draws", "Releases", "Again"}) QTest::newRow(name) << name;
    }
    void anyElementCanGoAndTheModelRunsOrTellsWhyNot() {
        QFETCH(QString, name);
        auto& again = model->drop<cTQFusionQueue>("FusionQueue", {200, 300}, "Again");
        again.fuseWith("Soil");
        auto& second = model->drop<cTQCombi>("Combi", {300, 300}, "Second");
        model->join("FromAgain", again, second);
        model->join("Back", second, *model->hauled);
        window().elemSelected(dynamic_cast<cTQNetworkElement*>(window().findElement(name.toStdString())));

        window().removeElement(window().findElement(name.toStdString()));
        const QStringList told = run();

        QVERIFY(window().findElement(name.toStdString()) == nullptr);
        QVERIFY(told.size() <= 1);
        if (told.isEmpty()) QVERIFY(find<QDialog>("resultsDialog") != nullptr);
        QCOMPARE(window().simState, 0);
        window().forEachElement(
            [this](cNetworkElement& element) { window().elemSelected(dynamic_cast<cTQNetworkElement*>(&element)); });
        beginAnew();
        QVERIFY(window().elements.empty());
    }

    void deletedFusedQueueLeavesTheFusionQueueWithoutOne() {
        auto& again = model->drop<cTQFusionQueue>("FusionQueue", {200, 300}, "Again");
        again.fuseWith("Soil");
        auto& second = model->drop<cTQCombi>("Combi", {300, 300}, "Second");
        auto& way = model->join("FromAgain", again, second);

        window().removeElement(model->soil);

        QCOMPARE(way.getPredNode(), nullptr);
        QCOMPARE(again.fusedQueue(), nullptr);
        window().elemSelected(&again);
        QCOMPARE(find<QDialog>("fusionQueuePanel")->findChild<QComboBox*>()->currentText(), "Hauled");
        find<QDialog>("fusionQueuePanel")->findChild<QPushButton*>("okButton")->click();
        QCOMPARE(way.getPredNode(), static_cast<cNode*>(model->hauled));
    }

    void deletedQueueThatHeldTheLastOfATypeLeavesTheType() {
        types().addResType("Gravel", "GENTYPE");
        auto& heap = model->drop<cTQQueue>("Queue", {200, 300}, "Heap");
        moveToType(heap, window().findResourceType("Gravel"));
        QCOMPARE(window().findResourceType("Gravel")->getHolders().size(), std::size_t{1});

        window().removeElement(&heap);

        QVERIFY(window().findResourceType("Gravel")->getHolders().empty());
        types().refresh();
        types().findChild<QRadioButton*>("compoundButton")->setChecked(true);
        QCOMPARE(window().findResourceType("Gravel")->getTypeKind(), std::string(typeKindWord::compound));
    }

    void elementThatGoesWhileABoxOfItsPanelIsOpen_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::newRow("bad name") << "nameEdit"
                                  << "1";
        QTest::newRow("bad expression") << "durationEdit"
                                        << "2)";
    }
    void elementThatGoesWhileABoxOfItsPanelIsOpen() {
        QFETCH(QString, field);
        QFETCH(QString, text);
        window().elemSelected(model->load);
        auto* panel = find<QDialog>("combiPanel");
        panel->findChild<QLineEdit*>(field)->setText(text);
        bool wasOpen = false;
        QTimer::singleShot(0, &window(), [&] {
            wasOpen = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr;
            window().removeElement(model->load);
        });

        panel->findChild<QPushButton*>("okButton")->click();

        QVERIFY(wasOpen);
        QVERIFY(window().findElement("Load") == nullptr);
        QVERIFY(find<QDialog>("combiPanel") == nullptr);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void elementThatGoesWhileItsTypeIsChosen() {
        auto& assembler = model->drop<cTQAssembler>("Assembler", {200, 300}, "Join");
        bool wasOpen = false;
        QTimer::singleShot(0, &window(), [&] {
            wasOpen = qobject_cast<cCompoundTypeDialog*>(QApplication::activeModalWidget()) != nullptr;
            window().removeElement(&assembler);
        });

        find<QPushButton>("compoundTypeEditButton")->click();

        QVERIFY(wasOpen);
        QVERIFY(window().findElement("Join") == nullptr);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void keyDeleteTakesOneSelectedElement() {
        view().scene()->clearSelection();
        model->load->setSelected(true);
        QSignalSpy deleted(&window(), &tsApp::sigDeleteElement);

        QTest::keyClick(view().viewport(), Qt::Key_Delete);
        QTest::keyClick(view().viewport(), Qt::Key_Delete);

        QCOMPARE(deleted.size(), 1);
        QCOMPARE(window().elements.size(), std::size_t{4});
    }

    // ---- renaming

    void renamedElementsWorkOnInTheRun() {
        auto& again = model->drop<cTQFusionQueue>("FusionQueue", {200, 300}, "Again");
        again.fuseWith("Hauled");
        model->releases->dropHandle(false, again.cpByIndex(8));
        for (cTQNetworkElement* element :
             {static_cast<cTQNetworkElement*>(model->hauled), static_cast<cTQNetworkElement*>(model->load),
              static_cast<cTQNetworkElement*>(model->releases)}) {
            window().elemSelected(element);
            auto* edit = element->panel()->findChild<QLineEdit*>("nameEdit");
            edit->setText("A" + edit->text());
            element->panel()->findChild<QPushButton*>("okButton")->click();
        }

        QCOMPARE(again.getQueueName(), std::string("AHauled"));
        QCOMPARE(again.caption(), "AHauled");
        QCOMPARE(run(), QStringList());
        QCOMPARE(find<QTableWidget>("queueTable")->item(0, 0)->text(), "AHauled");
        QCOMPARE(find<QTableWidget>("queueTable")->item(0, 2)->text(), "5.00");
    }

    // ---- types

    void linksTakeTheNewTypeOfTheirNode() {
        types().addResType("Gravel", "GENTYPE");
        for (cTQQueue* queue : {model->soil, model->hauled}) {
            window().elemSelected(queue);
            queue->panel()->findChild<QComboBox*>()->setCurrentText("Gravel");
            queue->panel()->findChild<QPushButton*>("okButton")->click();
        }

        cResType* gravel = window().findResourceType("Gravel");
        QCOMPARE(model->draws->getResType(), gravel);
        QCOMPARE(model->releases->getResType(), gravel);
        QCOMPARE(model->draws->getLinkKind(), kindDraw);
        QCOMPARE(gravel->getHolders().size(), std::size_t{4});
        QVERIFY(window().findResourceType("Default")->getHolders().empty());
        QCOMPARE(run(), QStringList());
        QCOMPARE(find<QTableWidget>("queueTable")->item(0, 1)->text(), "Gravel");
        QCOMPARE(find<QTableWidget>("queueTable")->item(0, 2)->text(), "5.00");
    }

    void typeInUseCanBecomeCompoundAndGenericAgain() {
        types().addResType("Gravel", "GENTYPE");
        for (cTQQueue* queue : {model->soil, model->hauled}) takeType(*queue, *queue, "Gravel");
        auto* compound = types().findChild<QRadioButton*>("compoundButton");
        auto* generic = types().findChild<QRadioButton*>("genericButton");

        compound->setChecked(true);
        QCOMPARE(model->draws->getResType(), window().findResourceType("Gravel"));
        QVERIFY(!model->draws->getResType()->isGeneric());
        run();
        generic->setChecked(true);

        QVERIFY(model->draws->getResType()->isGeneric());
        QCOMPARE(run(), QStringList());
    }

    void renamedTypeIsTheOneThatResultsName() {
        types().addResType("Gravel", "GENTYPE");
        takeType(*model->hauled, *model->hauled, "Gravel");
        takeType(*model->soil, *model->soil, "Gravel");
        window().elemSelected(model->hauled);

        types().findChild<QLineEdit*>("typeNameEdit")->setText("Rubble");
        types().findChild<QPushButton*>("okButton")->click();

        QCOMPARE(model->hauled->panel()->findChild<QComboBox*>()->currentText(), "Rubble");
        QCOMPARE(run(), QStringList());
        QCOMPARE(find<QTableWidget>("queueTable")->item(0, 1)->text(), "Rubble");
    }

    void typeOfAFileWithAnUnknownKindCanBecomeGeneric() {
        types().addResType("Odd", "CHARTYPE");
        QCOMPARE(window().findResourceType("Odd")->isGeneric(), false);

        types().findChild<QRadioButton*>("genericButton")->setChecked(true);

        QCOMPARE(window().findResourceType("Odd")->isGeneric(), true);
    }

    void compoundTypeChosenInTheDialogIsTheElementsType() {
        makeCompound("Truck");
        auto& assembler = model->drop<cTQAssembler>("Assembler", {200, 300}, "Join");
        QTimer::singleShot(0, &window(), [] {
            QWidget* chooser = QApplication::activeModalWidget();
            chooser->findChild<QComboBox*>()->setCurrentText("Truck");
            chooser->findChild<QPushButton*>("acceptTypeButton")->click();
        });

        find<QPushButton>("compoundTypeEditButton")->click();

        QCOMPARE(assembler.getResType(), window().findResourceType("Truck"));
        QCOMPARE(find<QLineEdit>("compoundTypeEdit")->text(), "Truck");
    }

    void rejectedChoiceLeavesTheType() {
        makeCompound("Truck");
        auto& assembler = model->drop<cTQAssembler>("Assembler", {200, 300}, "Join");
        cResType* before = assembler.getResType();
        QTimer::singleShot(0, &window(), [] {
            auto* chooser = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            chooser->findChild<QComboBox*>()->setCurrentText("Truck");
            chooser->reject();
        });

        find<QPushButton>("compoundTypeEditButton")->click();

        QCOMPARE(assembler.getResType(), before);
        QCOMPARE(find<QLineEdit>("compoundTypeEdit")->text(), typeNameOf(assembler));
    }
};

QTEST_MAIN(cModelEditingTest)
#include "modelEditingTest.moc"
