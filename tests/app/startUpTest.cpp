#include "app/startUp.h"
#include "app/tsApp.h"
#include "support/messageBox.h"

#include <QFile>
#include <QIcon>
#include <QImageReader>
#include <QPalette>
#include <QStatusBar>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>

/// What happens between the making of the window and the first event.
class cStartUpTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir home;

private Q_SLOTS:
    void init() {
        Q_INIT_RESOURCE(images);
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    }

    void windowIsMaximisedWithItsIconStyleAndColours() {
        tsApp window;

        showWindow(window);

        QVERIFY(window.isMaximized());
        QCOMPARE(window.normalGeometry().size(), QSize(800, 500));
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(window.style()->objectName().toLower(), "fusion");
    }

    void colours_data() {
        QTest::addColumn<QPalette::ColorRole>("role");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("Window") << QPalette::Window << QColor(240, 240, 240);
        QTest::newRow("WindowText") << QPalette::WindowText << QColor(0, 0, 0);
        QTest::newRow("Base") << QPalette::Base << QColor(255, 255, 255);
        QTest::newRow("Text") << QPalette::Text << QColor(0, 0, 0);
        QTest::newRow("Button") << QPalette::Button << QColor(200, 200, 200);
        QTest::newRow("ButtonText") << QPalette::ButtonText << QColor(0, 0, 0);
    }
    void colours() {
        QFETCH(QPalette::ColorRole, role);
        QFETCH(QColor, colour);
        tsApp window;

        showWindow(window);

        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(window.palette().color(group, role), colour);
    }

    void fileThatCannotBeReadLeavesTheWindowOpenWithAnEmptyModel() {
        tsApp window;
        showWindow(window);

        const QStringList told = boxesDuring([&] { openFirstArgument(window, {"timbersim", "/nowhere/none.tbsmx"}); });

        QCOMPARE(told.size(), 1);
        QVERIFY(window.isVisible());
        QVERIFY(window.elements.empty());
        QCOMPARE(window.statusBar()->currentMessage(), "Loading canceled");
    }

    void onlyTheFirstArgumentCounts_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("loads");
        QTest::newRow("none") << QStringList{"timbersim"} << 0;
        QTest::newRow("a file") << QStringList{"timbersim", "/nowhere/a"} << 1;
        QTest::newRow("two files") << QStringList{"timbersim", "/nowhere/a", "/nowhere/b"} << 1;
        QTest::newRow("--from-python first") << QStringList{"timbersim", "--from-python", "/nowhere/a"} << 0;
        QTest::newRow("--from-python second") << QStringList{"timbersim", "/nowhere/a", "--from-python"} << 1;
        QTest::newRow("no exact match") << QStringList{"timbersim", "--from-Python"} << 1;
    }
    void onlyTheFirstArgumentCounts() {
        QFETCH(QStringList, arguments);
        QFETCH(int, loads);
        tsApp window;

        const QStringList told = boxesDuring([&] { openFirstArgument(window, arguments); });

        QCOMPARE(told.size(), loads);
        if (loads == 1) QVERIFY2(told.front().contains(arguments.at(1)), qPrintable(told.front()));
    }

    void imagesAreInTheProgram_data() {
        QTest::addColumn<bool>("isThere");
        for (const char* name : {"code.png",
                                 "new.png",
                                 "stop.png",
                                 "pause.png",
                                 "save.png",
                                 "open.png",
                                 "play.png",
                                 "res.png",
                                 "home.png",
                                 "App.ico",
                                 "File.ico",
                                 "CombiIcon.png",
                                 "NormalActIcon.png",
                                 "QueueIcon.png",
                                 "FusionQueueIcon.png",
                                 "LinkIcon.png",
                                 "ForkIcon.png",
                                 "DynaforkIcon.png",
                                 "AssemblerIcon.png",
                                 "DisassemblerIcon.png",
                                 "ConsolidatorIcon.png"})
            QTest::newRow(name) << true;
        QTest::newRow("saveas.png") << false;  // so the action has no icon
    }
    void imagesAreInTheProgram() {
        QFETCH(bool, isThere);
        const QString path = QString(":/tsApp/images/") + QTest::currentDataTag();

        QCOMPARE(QFile::exists(path), isThere);
        QCOMPARE(!QImageReader(path).read().isNull(), isThere);
    }
};

QTEST_MAIN(cStartUpTest)
#include "startUpTest.moc"
