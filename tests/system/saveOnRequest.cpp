#include "app/tsApp.h"
#include "support/messageBox.h"

#include <QApplication>
#include <QFileInfo>
#include <iostream>
#include <string>

/// saveOnRequest TARGET: opens the model TARGET, if there is one. Then, for each line of standard input, opens the
/// model of that name and saves it as TARGET. Says "ready" once, "opened" before each save, and behind it "saved" or
/// what the user is told.
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    if (argc != 2) return 2;
    const QString target = QString::fromLocal8Bit(argv[1]);
    tsApp window;
    if (QFileInfo::exists(target)) window.loadModel(target.toStdString());
    std::cout << "ready" << std::endl;
    for (std::string model; std::getline(std::cin, model);) {
        window.loadModel(model);
        std::cout << "opened" << std::endl;
        bool isSaved = false;
        const QStringList told = boxesDuring([&] { isSaved = window.writeModelFile(target); });
        std::cout << (isSaved ? "saved" : told.join(QLatin1Char('|')).toStdString()) << std::endl;
    }
}
