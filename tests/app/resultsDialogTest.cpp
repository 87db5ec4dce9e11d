#include "app/resultsDialog.h"

#include "app/resultGrid.h"
#include "kernel/resultText.h"
#include "support/messageBox.h"
#include "support/testNetwork.h"

#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

/// Three loads of soil, dug one by one with the one shovel there is, for 2.5 each; the end is at 7.5.
class cResultsDialogTest : public QObject {
    Q_OBJECT

private:
    void run(const std::string& code = {}) {
        network->run(code);
        dialog = std::make_unique<cResultsDialog>(*network);
        network->clearNetwork();
    }
    cResultGrid* table(const char* name) { return dialog->findChild<cResultGrid*>(name); }
    static QStringList headings(const cResultGrid* grid) {
        QStringList texts;
        for (int column = 0; column < grid->columnCount(); ++column)
            texts.append(grid->horizontalHeaderItem(column)->text());
        return texts;
    }
    static QStringList rowOf(const cResultGrid* grid, int row) {
        QStringList texts;
        for (int column = 0; column < grid->columnCount(); ++column) texts.append(grid->item(row, column)->text());
        return texts;
    }
    QString label() { return dialog->findChild<QLabel*>("resultLabel")->text(); }
    QString path(const QString& name) { return folder->filePath(name); }
    static QByteArray contentOf(const QString& fileName) {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    QString linesPath() { return QString::fromStdString(network->runStatistics->getTemporaryPath().string()); }

    std::unique_ptr<cTestNetwork> network;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<cResultsDialog> dialog;

private Q_SLOTS:
    void init() {
        network = std::make_unique<cTestNetwork>();
        folder = std::make_unique<QTemporaryDir>();
        cResTypeGen& soil = network->addGenericType("Soil");
        cNodeQueue& pile = network->addQueue("Pile", soil);
        pile.setInitialContentText("3");
        cNodeQueue& shovel = network->addQueue("Shovel", soil);
        shovel.setInitialContentText("1");
        cNodeActCombi& dig = network->addCombi("Dig");
        dig.setDurationText("2.5");
        network->addLink("In", pile, dig);
        network->addLink("Take", shovel, dig);
        network->addLink("Back", dig, shovel);
    }
    void cleanup() {
        dialog.reset();
        network.reset();
    }

    void aSingleRunHasItsTitleAndLabel() {
        run("ADDTORESULTS Twice SimTime*2;\n");

        QCOMPARE(dialog->windowTitle(), "Single Simulation Results");
        QCOMPARE(label(), "Simulation has ended. \nSimTime = 7.5\nTwice : 15\n");
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->minimumSize(), QSize(1200, 600));
        const auto* save = dialog->findChild<QPushButton*>("saveResultsButton");
        QCOMPARE(save->text(), "Save Results as CSV");
        QCOMPARE(save->maximumWidth(), 200);
    }

    void manyRunsHaveTheirTitleAndLabel() {
        run("MULTISIM 3;\n");

        QCOMPARE(dialog->windowTitle(), "Multiple Simulation Results");
        QCOMPARE(label(),
                 "The following results are the averages of multiple simulation runs. \nAverage SimTime = 7.5\n");
    }

    void theQueueTableHasARowForEachQueueByName() {
        run();

        const cResultGrid* queues = table("queueTable");
        QCOMPARE(headings(queues),
                 (QStringList{"Queue\nName", "Resource\nType", "Current\nCount", "Total\nCount", "Average\nWait",
                              "Average\nContent", "Minimum\nContent", "Maximum\nContent"}));
        QCOMPARE(queues->rowCount(), 2);
        QCOMPARE(rowOf(queues, 0), (QStringList{"Pile", "Soil", "0.00", "3.00", "2.50", "1.00", "0.00", "3.00"}));
        QCOMPARE(rowOf(queues, 1).front(), "Shovel");
    }

    void theActivityTableHasARowForEachActivity() {
        run();

        const cResultGrid* activities = table("activityTable");
        QCOMPARE(headings(activities),
                 (QStringList{"Activity\nName", "Total\nInstances", "Current\nInstances", "Average\nDuration",
                              "Std.Dev.\nDuration", "Minimum\nDuration", "Maximum\nDuration", "Average\nInterval",
                              "Std. Dev.\nInterval", "Minimum\nInterval", "Maximumn\nInterval"}));
        QCOMPARE(activities->rowCount(), 1);
        QCOMPARE(rowOf(activities, 0).mid(0, 7), (QStringList{"Dig", "3", "0", "2.5", "0", "2.5", "2.5"}));
    }

    void currentInstancesAreAlwaysZero() {
        run("SIMULATECONDITION SimTime > 1;\n");

        QCOMPARE(table("activityTable")->item(0, 2)->text(), "0");
    }

    void aModelWithNeitherQueueNorActivityHasEmptyTables() {
        network = std::make_unique<cTestNetwork>();
        run();

        QCOMPARE(table("queueTable")->rowCount(), 0);
        QCOMPARE(table("activityTable")->rowCount(), 0);
        QCOMPARE(label(), "Simulation has ended. \nSimTime = 0\n");
    }

    void tablesCannotBeChanged() {
        run();

        QCOMPARE(table("queueTable")->editTriggers(), QAbstractItemView::NoEditTriggers);
        QCOMPARE(table("activityTable")->editTriggers(), QAbstractItemView::NoEditTriggers);
    }

    void selectedCellsAreCopiedWithTabsAndLines() {
        run();
        cResultGrid* queues = table("queueTable");
        queues->setRangeSelected({0, 0, 1, 1}, true);

        QTest::keyClick(queues, Qt::Key_C, Qt::ControlModifier);

        QCOMPARE(QGuiApplication::clipboard()->text(), "Pile\tSoil\nShovel\tSoil");
    }

    void cellsBetweenSelectedOnesAreCopiedEmpty() {
        run();
        cResultGrid* queues = table("queueTable");
        queues->setRangeSelected({0, 0, 0, 0}, true);
        queues->setRangeSelected({1, 1, 1, 1}, true);

        QCOMPARE(queues->selectedText(), "Pile\t\n\tSoil");
    }

    void withoutASelectionTheClipboardIsLeftAlone() {
        run();
        QGuiApplication::clipboard()->setText("mine");

        QTest::keyClick(table("queueTable"), Qt::Key_C, Qt::ControlModifier);

        QCOMPARE(QGuiApplication::clipboard()->text(), "mine");
    }

    void aSingleRunIsSavedAsItsTables() {
        network->run({});
        const QByteArray expected = QByteArray::fromStdString(resultCsv(*network));
        cResultsDialog results(*network);
        network->clearNetwork();

        QVERIFY(results.saveResults(path("one.csv")));
        QVERIFY(results.saveResults(path("two.csv")));

        QCOMPARE(contentOf(path("one.csv")), expected);
        QCOMPARE(contentOf(path("two.csv")), expected);
        QVERIFY(expected.startsWith("Simulation has ended. \nSimTime = 7.5\n\n*QueueName*,"));
    }

    void aDialogKeepsItsRunAcrossLaterOnes() {
        run();
        const std::unique_ptr<cResultsDialog> first = std::move(dialog);
        network->findElement<cNodeActCombi>("Dig")->setDurationText("4");
        run();

        QVERIFY(first->saveResults(path("first.csv")));

        QVERIFY(contentOf(path("first.csv")).contains("SimTime = 7.5\n"));
        QCOMPARE(first->findChild<QLabel*>("resultLabel")->text(), "Simulation has ended. \nSimTime = 7.5\n");
        QCOMPARE(label(), "Simulation has ended. \nSimTime = 12\n");
    }

    void manyRunsAreSavedByMovingTheFileOfLines() {
        run("MULTISIM 2;\n");
        const QByteArray lines = contentOf(linesPath());

        QVERIFY(dialog->saveResults(path("many.csv")));

        QCOMPARE(contentOf(path("many.csv")), lines);
        QVERIFY(lines.startsWith("Num,SimTime,"));
        QVERIFY(!QFile::exists(linesPath()));
        QCOMPARE(table("queueTable")->rowCount(), 2);
    }

    void aSecondSaveOfManyRunsFindsNoFileAndWritesNothing() {
        run("MULTISIM 2;\n");
        QVERIFY(dialog->saveResults(path("many.csv")));

        const QStringList boxes = boxesDuring([&] { QVERIFY(!dialog->saveResults(path("again.csv"))); });

        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.front().contains("saved before"));
        QVERIFY(!QFile::exists(path("again.csv")));
    }

    void theLinesOfALaterRunAreNotSavedForAnEarlierOne() {
        run("MULTISIM 2;\n");
        const std::unique_ptr<cResultsDialog> first = std::move(dialog);
        run("MULTISIM 3;\n");

        const QStringList boxes = boxesDuring([&] { QVERIFY(!first->saveResults(path("first.csv"))); });

        QCOMPARE(boxes.size(), 1);
        QVERIFY(!QFile::exists(path("first.csv")));
        QVERIFY(dialog->saveResults(path("second.csv")));
    }

    void savingManyRunsReplacesAFileThatIsThere() {
        run("MULTISIM 2;\n");
        QFile old(path("many.csv"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("old");
        old.close();

        QVERIFY(dialog->saveResults(path("many.csv")));

        QVERIFY(contentOf(path("many.csv")).startsWith("Num,SimTime,"));
    }

    void aFailureIsToldAndLeavesNothingBehind_data() {
        QTest::addColumn<QString>("code");
        QTest::newRow("single") << "";
        QTest::newRow("many") << "MULTISIM 2;\n";
    }
    void aFailureIsToldAndLeavesNothingBehind() {
        QFETCH(QString, code);
        run(code.toStdString());

        const QStringList boxes = boxesDuring([&] { QVERIFY(!dialog->saveResults(path("missing/results.csv"))); });

        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.front().startsWith("Error: Cannot save "));
        QVERIFY(!QFile::exists(path("missing")));
        QVERIFY(code.isEmpty() || QFile::exists(linesPath()));
    }
};

QTEST_MAIN(cResultsDialogTest)
#include "resultsDialogTest.moc"
