#include "app/startUp.h"
#include "app/tsApp.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    Q_INIT_RESOURCE(images);
    QApplication application(argc, argv);
    tsApp window;
    showWindow(window);
    openFirstArgument(window, QCoreApplication::arguments());
    return QApplication::exec();
}
