#include "app/startUp.h"
#include "app/tsApp.h"
#include "support/messageBox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QPalette>
#include <QScopeGuard>
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
        QTest::addColumn<QString>("opened");  // below the folder of the test
        QTest::newRow("none") << QStringList{} << "";
        QTest::newRow("a file") << QStringList{"a.tbsmx"} << "a.tbsmx";
        QTest::newRow("two files") << QStringList{"a.tbsmx", "b.tbsmx"} << "a.tbsmx";
        QTest::newRow("--from-python first") << QStringList{"--from-python", "a.tbsmx"} << "";
        QTest::newRow("--from-python second") << QStringList{"a.tbsmx", "--from-python"} << "a.tbsmx";
        QTest::newRow("no exact match") << QStringList{"--from-Python"} << "--from-Python";
    }
    void onlyTheFirstArgumentCounts() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, opened);
        for (const char* name : {"a.tbsmx", "b.tbsmx", "--from-Python"}) {
            QFile file(home.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("GENTYPE Default;\n");
        }
        const QString before = QDir::currentPath();
        const auto back = qScopeGuard([&] { QDir::setCurrent(before); });
        QVERIFY(QDir::setCurrent(home.path()));
        tsApp window;

        const QStringList told = boxesDuring([&] { openFirstArgument(window, QStringList{"timbersim"} + arguments); });

        QCOMPARE(told, QStringList());
        QCOMPARE(QFileInfo(window.getCurrentFile()).fileName(), opened);
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
