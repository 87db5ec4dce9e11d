#include "app/startUp.h"

#include "app/tsApp.h"

#include <QIcon>
#include <QPalette>
#include <QRect>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

namespace {

constexpr QRect startGeometry(100, 100, 800, 500);

QPalette windowPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(240, 240, 240));
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Button, QColor(200, 200, 200));
    palette.setColor(QPalette::ButtonText, Qt::black);
    return palette;
}

}  // namespace

void showWindow(tsApp& window) {
    window.setWindowIcon(QIcon(QStringLiteral(":/tsApp/images/App.ico")));
    window.setGeometry(startGeometry);
    window.showMaximized();
    QStyle* style = QStyleFactory::create(QStringLiteral("Fusion"));
    style->setParent(&window);
    window.setStyle(style);
    window.setPalette(windowPalette());
}

void openFirstArgument(tsApp& window, const QStringList& arguments) {
    if (arguments.size() < 2) return;
    if (arguments.at(1) == QLatin1String("--from-python")) {
        QTimer::singleShot(0, &window, &tsApp::startPythonReceiver);
        return;
    }
    window.loadModel(arguments.at(1).toStdString());
}
