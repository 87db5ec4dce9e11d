#include "editor/editorHost.h"
#include "editor/elemIcon.h"
#include "editor/elementFactory.h"
#include "editor/linkHandle.h"
#include "editor/nodePoint.h"
#include "editor/tqCombi.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqNormal.h"
#include "editor/tqQueue.h"
#include "editor/tqScene.h"
#include "editor/tqView.h"
#include "support/mouse.h"
#include "support/testNetwork.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <memory>

namespace {

class cTestHost : public cEditorHost {
public:
    int captionPointSize() const override { return 8; }
    void editResourceTypes() override {}
};

}  // namespace

/// A canvas with the queue Soil at (200, 200), the Combi Load at (400, 200), the queue Hauled at (600, 200), the Normal
/// Check at (400, 400), the fusion queue Again of Soil at (200, 400) and the link Way, which joins nothing, with its
/// handles at (800, 280) and (800, 320).
class cCanvasTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    cKind& add(std::shared_ptr<cKind> element, const std::string& name, QPointF place) {
        element->setName(name);
        network->elements[name] = element;
        scene->addItem(element.get());
        element->setPos(place);
        return *element;
    }
    void remove(cTQNetworkElement& element) { network->elements.erase(element.engineElement().getName()); }
    QPointF placeOf(const tLinkCP* handle) const { return handle->mapToScene(QPointF(0.0, 0.0)); }
    void dragStart(QPointF to) { mouse->drag(placeOf(link->startCP()), to); }
    void dragEnd(QPointF to) { mouse->drag(placeOf(link->endCP()), to); }
    void joinSoilToLoad() {
        dragStart({220, 200});
        dragEnd({370, 200});
    }

    /// @return whether the view would take it.
    bool drop(const QMimeData& carried) {
        const QPoint place(30, 40);
        QDragEnterEvent enter(place, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event(place, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &event);
        return event.isAccepted();
    }

    /// How many pixels of a part of the scene have a colour, at full size and without smoothing.
    int pixelsOf(const QColor& colour, const QRectF& part) {
        QImage image(part.size().toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene->render(&painter, image.rect(), part);
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour;
        return count;
    }

    std::unique_ptr<cTestHost> host;
    std::unique_ptr<cTestNetwork> network;
    std::unique_ptr<cTQScene> scene;
    std::unique_ptr<cTQView> view;
    std::unique_ptr<cMouse> mouse;
    cTQQueue* soil = nullptr;
    cTQQueue* hauled = nullptr;
    cTQCombi* load = nullptr;
    cTQNormal* check = nullptr;
    cTQFusionQueue* again = nullptr;
    cTQLink* link = nullptr;

private Q_SLOTS:
    void init() {
        host = std::make_unique<cTestHost>();
        network = std::make_unique<cTestNetwork>();
        cResType& type = network->addGenericType("Default");
        scene = std::make_unique<cTQScene>();
        view = std::make_unique<cTQView>();
        view->setScene(scene.get());
        view->resize(1200, 800);
        view->show();
        view->centerOn(600, 400);
        mouse = std::make_unique<cMouse>(*view);
        soil = &add(std::make_shared<cTQQueue>(&type), "Soil", {200, 200});
        hauled = &add(std::make_shared<cTQQueue>(&type), "Hauled", {600, 200});
        load = &add(std::make_shared<cTQCombi>(), "Load", {400, 200});
        check = &add(std::make_shared<cTQNormal>(), "Check", {400, 400});
        again = &add(std::make_shared<cTQFusionQueue>("Again", "Soil"), "Again", {200, 400});
        link = &add(std::make_shared<cTQLink>("Way"), "Way", {800, 300});
    }
    void cleanup() {
        mouse.reset();
        std::vector<std::shared_ptr<cNetworkElement>> leaving;
        for (const auto& [name, element] : network->elements) leaving.push_back(element);
        network->elements.clear();
        leaving.clear();
        view.reset();
        scene.reset();
        network.reset();
        host.reset();
    }

    void newLinkIsLooseAndIncomplete() {
        QCOMPARE(link->getLinkKind(), kindIncomplete);
        QCOMPARE(link->startCP()->pos(), QPointF(0, -20));
        QCOMPARE(link->endCP()->pos(), QPointF(0, 20));
        QCOMPARE(link->startCP()->side, sideRight);
        QCOMPARE(link->endCP()->side, sideLeft);
        QCOMPARE(link->startCP()->getColour(), QColor(Qt::red));
        QCOMPARE(link->getResType(), network->findResourceType("Default"));
    }

    void draggedHandlesConnectTheEngine() {
        joinSoilToLoad();

        QCOMPARE(link->getPredNode(), static_cast<cNode*>(soil));
        QCOMPARE(link->getSuccNode(), static_cast<cNode*>(load));
        QCOMPARE(link->getLinkKind(), kindDraw);
        QCOMPARE(placeOf(link->startCP()), QPointF(220, 200));
        QCOMPARE(placeOf(link->endCP()), QPointF(370, 200));
        QCOMPARE(link->startCP()->attachment(), soil->cpByIndex(0));
        QCOMPARE(link->endCP()->side, sideLeft);
    }

    void handleDroppedInsideANodeTakesTheNearestPoint() {
        dragEnd({405, 190});  // in the middle of the Combi, nearest to its upper edge

        QCOMPARE(link->endCP()->attachment()->position(), QPointF(0, -20));
        QCOMPARE(link->endCP()->side, sideTop);
    }

    void routeComesInAtTheSideOfThePoint() {
        dragStart({220, 200});
        dragEnd({400, 180});  // right onto the point, where the handle jumps before it is released

        QVERIFY(link->shape().contains(link->mapFromScene(400, 165)));
        QVERIFY(!link->shape().contains(link->mapFromScene(385, 180)));
        dragEnd({370, 200});
        QVERIFY(link->shape().contains(link->mapFromScene(360, 200)));
    }

    void handleOverANodeThatTakesItIsGreenAndShowsThePoint() {
        mouse->press(placeOf(link->endCP()));
        mouse->moveTo({500, 300});
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
        mouse->moveTo({400, 190});

        QCOMPARE(link->endCP()->getColour(), QColor(Qt::green));
        QCOMPARE(load->nearestCP()->position(), QPointF(0, -20));
        QCOMPARE(load->nearestCP()->opacity(), 1.0);
        mouse->moveTo({500, 300});
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
        QCOMPARE(load->getHoverCP(), nullptr);
        mouse->release({500, 300});
    }

    void handleOverANodeShowsItsNearestPoint_data() {
        QTest::addColumn<QPointF>("middle");
        QTest::addColumn<QPointF>("nearest");
        QTest::newRow("Combi") << QPointF(400, 200) << QPointF(400, 180);
        QTest::newRow("Normal") << QPointF(400, 400) << QPointF(400, 380);
        QTest::newRow("Queue") << QPointF(600, 200) << QPointF(600, 180);
        QTest::newRow("fusion queue") << QPointF(200, 400) << QPointF(200, 380);
    }
    void handleOverANodeShowsItsNearestPoint() {
        QFETCH(QPointF, middle);
        QFETCH(QPointF, nearest);
        mouse->press(placeOf(link->endCP()));
        mouse->moveTo({500, 300});
        mouse->moveTo(middle + QPointF(1, -7));

        QList<QPointF> shown;
        for (const QGraphicsItem* item : scene->items())
            if (const auto* point = dynamic_cast<const tNodeCP*>(item); point != nullptr && point->opacity() == 1.0)
                shown.append(point->scenePosition());
        QCOMPARE(shown.size(), 1);
        QVERIFY((shown[0] - nearest).manhattanLength() < 1e-9);
        mouse->release({500, 300});
    }

    void handleOverAForbiddenNodeStaysRed() {
        dragEnd({370, 200});  // onto the Combi, before which only queues stand
        mouse->press(placeOf(link->startCP()));
        mouse->moveTo({500, 300});
        mouse->moveTo({400, 400});

        QCOMPARE(link->startCP()->getColour(), QColor(Qt::red));
        mouse->moveTo({200, 215});
        QCOMPARE(link->startCP()->getColour(), QColor(Qt::green));
        mouse->release({200, 215});
        QCOMPARE(link->getPredNode(), static_cast<cNode*>(soil));
    }

    void forbiddenDropKeepsTheEnginesEnd() {
        joinSoilToLoad();
        dragEnd({400, 400});

        QCOMPARE(link->getSuccNode(), static_cast<cNode*>(load));
        QCOMPARE(link->endCP()->attachment(), nullptr);
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
    }

    void handleDroppedOnNothingDetachesTheEnd() {
        joinSoilToLoad();
        dragEnd({500, 500});

        QCOMPARE(link->getSuccNode(), nullptr);
        QCOMPARE(link->getLinkKind(), kindIncomplete);
        QCOMPARE(link->endCP()->attachment(), nullptr);
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
    }

    void handleThatSlidesAlongItsNodeKeepsTheRules() {
        joinSoilToLoad();
        link->setRuleText(eLinkRule::drawAmt, "7");
        link->setRuleText(eLinkRule::enough, "2");
        dragEnd({400, 180});

        QCOMPARE(link->endCP()->side, sideTop);
        QCOMPARE(link->getRuleText(eLinkRule::enough), std::string("2"));
    }

    void linkBodyDoesNotTearItsEndsOff() {
        joinSoilToLoad();
        mouse->drag({300, 200}, {300, 260});

        QCOMPARE(placeOf(link->startCP()), QPointF(220, 200));
        QCOMPARE(placeOf(link->endCP()), QPointF(370, 200));
    }

    void releasedNodeRestsOnTheGridWithItsHandles() {
        joinSoilToLoad();
        mouse->drag({390, 205}, {413, 252});

        QCOMPARE(load->pos(), QPointF(420, 250));
        QCOMPARE(placeOf(link->endCP()), QPointF(390, 250));
        QCOMPARE(placeOf(link->startCP()), QPointF(220, 200));
    }

    void nodeReleasedBesideTheGridRestsOnIt() {
        soil->comeToRest({23, 47});

        QCOMPARE(soil->pos(), QPointF(20, 50));
    }

    void nodeDroppedNearTheEdgeRestsInsideTheField_data() {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<QPointF>("rest");
        QTest::newRow("far corner") << QPointF(4999, 4999) << QPointF(4970, 4980);
        QTest::newRow("beyond") << QPointF(9000, -50) << QPointF(4970, 20);
        QTest::newRow("origin") << QPointF(0, 0) << QPointF(30, 20);
    }
    void nodeDroppedNearTheEdgeRestsInsideTheField() {
        QFETCH(QPointF, place);
        QFETCH(QPointF, rest);
        load->comeToRest(place);

        QCOMPARE(load->pos(), rest);
        QVERIFY(scene->sceneRect().contains(load->mapRectToScene(load->shape().boundingRect())));
    }

    void nodesMovedTogetherRestOnTheGrid() {
        soil->setSelected(true);
        load->setSelected(true);
        mouse->press({400, 200});
        soil->setSelected(true);  // as with the key for several
        mouse->moveTo({450, 230});
        mouse->moveTo({413, 204});
        mouse->release({413, 204});

        QCOMPARE(load->pos(), QPointF(410, 200));
        QCOMPARE(soil->pos(), QPointF(210, 200));
    }

    void draggedNodeStaysInSight() {
        view->resize(600, 400);
        view->centerOn(400, 300);
        const int before = view->horizontalScrollBar()->value();
        mouse->press({400, 200});
        mouse->moveTo({500, 200});
        QCOMPARE(view->horizontalScrollBar()->value(), before);
        mouse->moveTo({690, 200});

        QVERIFY(view->horizontalScrollBar()->value() > before);
        QCOMPARE(load->pos(), QPointF(690, 200));  // it doesn't run away with the view
        const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
        QVERIFY(seen.contains(load->mapRectToScene(load->shape().boundingRect())));
        mouse->release({690, 200});
    }

    void linkLeavesTheNamesOfItsNodesLegible() {
        const auto captionImage = [this](const cTQNode& node) {
            const QPolygon covered = view->mapFromScene(node.mapRectToScene(node.captionRect()));
            return view->grab(covered.boundingRect().adjusted(1, 1, -1, -1)).toImage();
        };
        load->setPos(600, 350);  // straight below Hauled
        const QImage above = captionImage(*hauled);
        const QImage below = captionImage(*load);
        dragStart({600, 220});
        dragEnd({600, 370});  // from below, around the box
        scene->clearSelection();

        QVERIFY(link->shape().contains(link->mapFromScene(hauled->mapToScene(hauled->captionRect().center()))));
        QVERIFY(link->shape().contains(link->mapFromScene(load->mapToScene(load->captionRect().center()))));
        QCOMPARE(captionImage(*hauled), above);
        QCOMPARE(captionImage(*load), below);
    }

    void handleOnAFusionQueueConnectsTheQueueBehindIt() {
        dragStart({220, 400});
        dragEnd({370, 200});

        QCOMPARE(link->getPredNode(), static_cast<cNode*>(soil));
        QCOMPARE(link->fusionAt(true), again);
        QCOMPARE(link->getLinkKind(), kindDraw);
        soil->setPos(100, 100);
        QCOMPARE(placeOf(link->startCP()), QPointF(220, 400));
        again->setPos(300, 500);
        QCOMPARE(placeOf(link->startCP()), QPointF(320, 500));
    }

    void fusionQueueThatTakesAnotherQueueTakesItsLinksAlong() {
        dragStart({220, 400});
        dragEnd({370, 200});
        again->fuseWith("Hauled");

        QCOMPARE(link->getPredNode(), static_cast<cNode*>(hauled));
        QVERIFY(soil->getOutLinks().empty());
    }

    void removedFusionQueueTakesItsEndsOffTheQueue() {
        dragStart({220, 400});
        remove(*again);

        QCOMPARE(link->getPredNode(), nullptr);
        QCOMPARE(link->fusionAt(true), nullptr);
        QCOMPARE(link->startCP()->attachment(), nullptr);
        QVERIFY(soil->getOutLinks().empty());
    }

    void removedQueueLeavesItsFusionQueueAndLinksSafe() {
        dragStart({220, 400});
        remove(*soil);
        tellFusionQueues({}, {});

        QCOMPARE(link->getPredNode(), nullptr);
        QCOMPARE(again->fusedQueue(), nullptr);
        again->fuseWith("Hauled");
        QCOMPARE(link->getPredNode(), static_cast<cNode*>(hauled));
    }

    void removedNodeLeavesItsHandlesLooseWhereTheyAre() {
        joinSoilToLoad();
        remove(*load);

        QCOMPARE(link->getSuccNode(), nullptr);
        QCOMPARE(link->endCP()->attachment(), nullptr);
        QCOMPARE(placeOf(link->endCP()), QPointF(370, 200));
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
    }

    void removedLinkLeavesItsNodes() {
        joinSoilToLoad();
        remove(*link);

        QVERIFY(soil->getOutLinks().empty());
        QVERIFY(load->getInLinks().empty());
        for (const tNodeCP* point : soil->getPoints()) QVERIFY(point->getHandles().empty());
    }

    void nodeThatGoesUnderADraggedHandleIsForgotten() {
        mouse->press(placeOf(link->endCP()));
        mouse->moveTo({400, 190});
        QVERIFY(load->getHoverCP() != nullptr);
        remove(*load);

        mouse->moveTo({500, 300});
        mouse->release({500, 300});

        QCOMPARE(link->getSuccNode(), nullptr);
        QCOMPARE(link->endCP()->getColour(), QColor(Qt::red));
    }

    void linkThatGoesInTheHandIsForgotten() {
        mouse->press(placeOf(link->endCP()));
        mouse->moveTo({400, 190});
        remove(*link);

        mouse->moveTo({405, 190});
        mouse->release({405, 190});

        QCOMPARE(load->getHoverCP(), nullptr);
        QVERIFY(load->getInLinks().empty());
    }

    void nodeThatGoesInTheHandIsForgotten() {
        joinSoilToLoad();
        mouse->press({390, 205});
        mouse->moveTo({410, 225});
        remove(*load);
        mouse->moveTo({430, 245});
        mouse->release({430, 245});

        QCOMPARE(link->getSuccNode(), nullptr);
        QCOMPARE(scene->mouseGrabberItem(), nullptr);
    }

    void everyReleaseIsTold() {
        QSignalSpy told(scene.get(), &cTQScene::updateSignal);
        mouse->click({500, 500});
        mouse->click({400, 200});
        mouse->click({700, 600});

        QCOMPARE(told.size(), 3);
    }

    void keysWithoutAMeaningChangeNothing() {
        for (const auto key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
            QTest::keyClick(view->viewport(), key, Qt::ControlModifier);

        QCOMPARE(network->elements.size(), std::size_t{6});
        QVERIFY(scene->selectedItems().isEmpty());
    }

    void linksKeepTheirEndsDuringARun() {
        joinSoilToLoad();
        network->simState = 1;
        dragEnd({500, 500});

        QCOMPARE(link->getSuccNode(), static_cast<cNode*>(load));
        QCOMPARE(placeOf(link->endCP()), QPointF(370, 200));
    }

    void pressOnANodeAndALinkGivesTheNode() {
        joinSoilToLoad();
        QSignalSpy asked(scene.get(), &cTQScene::itemDoubleClicked);
        mouse->click({372, 200});
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked[0][0].value<cTQNetworkElement*>(), load);

        mouse->click({300, 200});
        QCOMPARE(asked.size(), 2);
        QCOMPARE(asked[1][0].value<cTQNetworkElement*>(), link);
        QVERIFY(link->isSelected());
    }

    void keyDeleteIsPassedOn() {
        QSignalSpy asked(scene.get(), &cTQScene::deleteRequested);
        QTest::keyClick(view->viewport(), Qt::Key_Delete);
        QCOMPARE(asked.size(), 1);
    }

    void viewTakesIconsAndNothingElse() {
        QSignalSpy dropped(view.get(), &cTQView::elemDropped);
        const std::unique_ptr<QMimeData> icon(cTQElemIcon("Queue", QPixmap()).makeMimeData());
        QVERIFY(drop(*icon));
        QCOMPARE(dropped.size(), 1);
        QCOMPARE(dropped[0][0].toString(), "Queue");
        QCOMPARE(dropped[0][1].toPoint(), QPoint(30, 40));

        QMimeData other;
        other.setText("Queue");
        QVERIFY(!drop(other));
        network->simState = 1;
        QVERIFY(!drop(*icon));
        QCOMPARE(dropped.size(), 1);
    }

    void selectionIsBlueForNodesAndGreenForLinks() {
        joinSoilToLoad();
        scene->clearSelection();
        const QRectF aroundSoil(175, 175, 40, 50);  // without the handle of the link
        const QRectF aroundLink(250, 190, 50, 20);
        const QColor fill(230, 230, 230);
        QVERIFY(pixelsOf(fill, aroundSoil) > 1000);
        const int black = pixelsOf(Qt::black, aroundSoil);
        QVERIFY(black > 80);
        QCOMPARE(pixelsOf(Qt::black, aroundLink), 50);

        soil->setSelected(true);
        link->setSelected(true);
        QCOMPARE(pixelsOf(Qt::blue, aroundSoil), black);
        QCOMPARE(pixelsOf(Qt::green, aroundLink), 50);

        network->simState = 1;  // when only the steps of the run stand out, and selected links
        QCOMPARE(pixelsOf(Qt::black, aroundSoil), black);
        QCOMPARE(pixelsOf(Qt::green, aroundLink), 50);
    }

    void stepsOfARunAreThreeWideAndBlack() {
        joinSoilToLoad();
        network->simState = 1;
        const QRectF upperLineOfCheck(380, 375, 20, 10);
        const QRectF middleOfLink(250, 190, 20, 20);
        check->setHighlight(1);
        link->setHighlight(1);
        QCOMPARE(pixelsOf(Qt::black, upperLineOfCheck), 3 * 20);
        QCOMPARE(pixelsOf(Qt::black, middleOfLink), 3 * 20);

        check->setHighlight(0);
        QCOMPARE(pixelsOf(Qt::black, upperLineOfCheck), 20);
    }

    void fusionQueueIsDotted() {
        const QRectF around(-22, -22, 44, 44);
        const int whole = pixelsOf(Qt::black, around.translated(soil->pos()));
        const int dotted = pixelsOf(Qt::black, around.translated(again->pos()));

        QVERIFY(dotted > 0);
        QVERIFY(dotted < 0.7 * whole);
    }

    void runningActivityIsOutlinedInGreen() {
        const auto greenPixels = [this] {
            const QImage image = view->grab().toImage();
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == QColor(0, 255, 0);
            return count;
        };
        QCOMPARE(greenPixels(), 0);
        network->simState = 1;
        check->startInstance({}, 0.0, 5.0);
        QVERIFY(greenPixels() > 100);
        network->clearNetwork();
        QCOMPARE(greenPixels(), 0);
    }

    void linesNeverFadeOnASmallCanvas_data() {
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("width");  // on the screen, of a line that is 1 wide
        QTest::newRow("smallest zoom") << 5.0 / 12.0 << 1.0;
        QTest::newRow("full size") << 1.0 << 1.0;
        QTest::newRow("twice as large") << 2.0 << 2.0;
    }
    void linesNeverFadeOnASmallCanvas() {
        QFETCH(double, scale);
        QFETCH(double, width);
        joinSoilToLoad();
        scene->clearSelection();
        const auto blackDown = [&](const QRectF& strip) {
            constexpr int light = 225;  // the fill and the background are lighter
            QImage image((strip.size() * scale).toSize(), QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            scene->render(&painter, image.rect(), strip);
            double black = 0.0;
            for (int y = 0; y < image.height(); ++y)
                black += std::max(0, light - image.pixelColor(image.width() / 2, y).red()) / double{light};
            return black;
        };
        const QRectF upperLineOfCheck(390, 368, 12, 24);
        const QRectF middleOfLink(291, 188, 12, 24);

        constexpr double shade = 0.2;  // what the smoothing of edges leaves open
        QVERIFY(qAbs(blackDown(upperLineOfCheck) - width) < shade);
        QVERIFY(qAbs(blackDown(middleOfLink) - width) < shade);
        link->setHighlight(1);
        QVERIFY(qAbs(blackDown(middleOfLink) - 3 * width) < shade);
    }

    void everyKindCanBeMade() {
        QCOMPARE(elementKinds(), QStringList({"Combi", "NormalAct", "Queue", "FusionQueue", "Link", "Fork", "Dynafork",
                                              "Assembler", "Disassembler", "Consolidator"}));
        for (const QString& kind : elementKinds()) {
            const auto element = makeElement(kind);
            QVERIFY2(element != nullptr, qPrintable(kind));
            QVERIFY(!element->getName().empty());
        }
        QVERIFY(makeElement("Lorry") == nullptr);
    }

    void elementsHaveNamesAlsoWhereTheDefaultIsTooLong() {
        cNetworkElement::setElementCounter(123456);
        QVERIFY(!makeElement("Consolidator")->getName().empty());
        QVERIFY(!makeElement("FusionQueue")->getName().empty());
    }
};

QTEST_MAIN(cCanvasTest)
#include "canvasTest.moc"
