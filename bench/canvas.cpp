// What one step of a drag, one step of the zoom and one repaint cost on canvases of growing size: queues and Combis in
// rows, and twice as many links. Prints a line per size, in milliseconds; fails nothing.

#include "app/tsApp.h"
#include "editor/tqCombi.h"
#include "editor/tqLink.h"
#include "editor/tqNode.h"
#include "editor/tqQueue.h"
#include "support/mouse.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QSlider>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int steps = 50;
constexpr int columns = 40;
constexpr double distance = 110.0;

/// Milliseconds that one of `steps` calls takes, the repaint that follows included.
double timeOf(const std::function<void(int)>& step) {
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < steps; ++i) {
        step(i);
        QApplication::processEvents();
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6 / steps;
}

template <typename cKind>
cTQNode& place(tsApp& window, QGraphicsScene& scene, std::shared_ptr<cKind> node, int number) {
    window.elements[node->getName()] = node;
    scene.addItem(node.get());
    node->setPos(100.0 + number % columns * distance, 100.0 + number / columns * 80.0);
    return *node;
}

void join(tsApp& window, QGraphicsScene& scene, cTQNode& from, cTQNode& to) {
    auto link = std::make_shared<cTQLink>();
    window.elements[link->getName()] = link;
    scene.addItem(link.get());
    link->dropHandle(true, from.cpByIndex(0));
    link->dropHandle(false, to.cpByIndex(4));
}

std::vector<cTQNode*> fill(tsApp& window, QGraphicsScene& scene, int count) {
    std::vector<cTQNode*> nodes;
    for (int i = 0; i < count; i += 2) {
        nodes.push_back(&place(window, scene, std::make_shared<cTQQueue>(window.findResourceType("Default")), i));
        nodes.push_back(&place(window, scene, std::make_shared<cTQCombi>(), i + 1));
    }
    for (int i = 0; i < count; i += 2) {
        const auto at = [&](int number) -> cTQNode& { return *nodes[static_cast<std::size_t>(number % count)]; };
        join(window, scene, at(i), at(i + 1));
        join(window, scene, at(i), at(i + 3));
        join(window, scene, at(i + 1), at(i + 2));
        join(window, scene, at(i + 1), at(i));
    }
    return nodes;
}

void measure(int count) {
    tsApp window;
    window.resize(1400, 1000);
    window.show();
    auto* view = window.findChild<QGraphicsView*>("canvas");
    const std::vector<cTQNode*> nodes = fill(window, *view->scene(), count);
    auto* zoom = window.findChild<QSlider*>("zoomSlider");
    cMouse mouse(*view);
    QApplication::processEvents();

    const double repaint = timeOf([&](int) { view->viewport()->update(); });
    const double zoomStep = timeOf([&](int i) { zoom->setValue(5 + i % 20); });
    zoom->setValue(5);
    const QPointF held = nodes[static_cast<std::size_t>(count / 2)]->pos();
    view->centerOn(held);
    mouse.press(held);
    const double dragStep = timeOf([&](int i) { mouse.moveTo(held + QPointF(i * 2.0, i)); });
    mouse.release(held);
    std::printf("%5d nodes %5d links: drag step %7.2f  zoom step %7.2f  repaint %7.2f\n", count, 2 * count, dragStep,
                zoomStep, repaint);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    for (const int count : {50, 500, 2000}) measure(count);
}
