#include "app/startUp.h"
#include "app/tsApp.h"
#include "channel/standardStreams.h"

#include <QApplication>
#include <csignal>

int main(int argc, char* argv[]) {
    occupyStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);  // a model isn't lost because nobody reads our remarks any more
    Q_INIT_RESOURCE(images);
    QApplication application(argc, argv);
    tsApp window;
    showWindow(window);
    openFirstArgument(window, QCoreApplication::arguments());
    return QApplication::exec();
}
