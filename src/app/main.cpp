#include "app/tsApp.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <iostream>

namespace {

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

/// Only the first argument counts.
void openFirstArgument(tsApp& window) {
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) return;
    if (arguments.at(1) == QLatin1String("--from-python")) {
        std::cerr << "timbersim: this version has no channel to a controlling program\n";
        return;
    }
    window.loadModel(arguments.at(1));
}

}  // namespace

int main(int argc, char* argv[]) {
    Q_INIT_RESOURCE(images);
    QApplication application(argc, argv);
    tsApp window;
    window.setWindowIcon(QIcon(QStringLiteral(":/tsApp/images/App.ico")));
    window.setGeometry(100, 100, 800, 500);
    window.showMaximized();
    QStyle* style = QStyleFactory::create(QStringLiteral("Fusion"));
    style->setParent(&window);
    window.setStyle(style);
    window.setPalette(windowPalette());
    openFirstArgument(window);
    return QApplication::exec();
}
