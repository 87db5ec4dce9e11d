#include "editor/animation.h"

#include "kernel/network.h"

#include <QEventLoop>
#include <QTimer>

void animation::waitStep() {
    QEventLoop loop;
    QTimer::singleShot(delay, &loop, &QEventLoop::quit);
    loop.exec();
    // A Stop that came during the wait couldn't leave the loop as an exception; it is raised here.
    cNetwork::current().processHostEvents();
}
