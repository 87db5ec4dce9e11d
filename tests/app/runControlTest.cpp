#include "editor/animation.h"
#include "editor/tqFork.h"
#include "editor/tqNormal.h"
#include "kernel/runStatistics.h"
#include "support/drawnModel.h"
#include "support/messageBox.h"

#include <QAction>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <functional>

namespace {

/// A link that counts how often a run raised it.
class cCountedLink : public cTQLink {
public:
    using cTQLink::cTQLink;

    void setHighlight(int state) override {
        cTQLink::setHighlight(state);
        if (state == 0) return;
        ++shown;
        if (whenShown) whenShown();
    }

    int shown = 0;
    std::function<void()> whenShown;
};

/// What the status label said each time that results came up.
class cStatusAtResults : public QObject {
public:
    explicit cStatusAtResults(tsApp& watched) : window(watched) { qApp->installEventFilter(this); }

    QStringList status;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == "resultsDialog")
            status.append(window.findChild<QLabel*>("statusLabel")->text());
        return false;
    }

private:
    tsApp& window;
};

}  // namespace

/// Runs of a drawn model: five units of Soil, each loaded for 10.
class cRunControlTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    cKind* find(const char* name) {
        return model->window.findChild<cKind*>(QLatin1String(name));
    }
    void trigger(const char* action) { find<QAction>(action)->trigger(); }
    /// Which of Run, Pause and Stop can be used.
    QString runState() {
        QString state;
        if (find<QAction>("runAction")->isEnabled()) state += "run ";
        if (find<QAction>("pauseAction")->isEnabled()) state += "pause ";
        if (find<QAction>("stopAction")->isEnabled()) state += "stop ";
        return state.trimmed();
    }
    /// Does `action` each time that the run is found held, until it isn't.
    QStringList runAndAtEachHold(const std::function<void()>& action) {
        QTimer watcher;
        connect(&watcher, &QTimer::timeout, this, [&] {
            if (model->window.paused) action();
        });
        watcher.start(0);
        return boxesDuring([&] { model->window.onRun(); });
    }
    cCountedLink& joinCounted(const char* name, cTQNode& from, cTQNode& to) {
        auto link = std::make_shared<cCountedLink>(name);
        model->window.elements[name] = link;
        from.scene()->addItem(link.get());
        link->dropHandle(true, from.cpByIndex(0));
        link->dropHandle(false, to.cpByIndex(4));
        return *link;
    }
    int openResults() { return static_cast<int>(model->window.findChildren<QDialog*>("resultsDialog").size()); }

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<cDrawnModel> model;

private Q_SLOTS:
    void init() {
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
        model = std::make_unique<cDrawnModel>();
        model->window.runStatistics->setTemporaryPath((home->path() + "/lines.csv").toStdString());
    }
    void cleanup() { model.reset(); }

    void runShowsItsResultsAndReturnsToEditMode() {
        model->window.onRun();

        QCOMPARE(openResults(), 1);
        const auto* queues = find<QTableWidget>("queueTable");
        QCOMPARE(queues->rowCount(), 2);
        QCOMPARE(queues->item(0, 0)->text(), "Hauled");
        QCOMPARE(queues->item(0, 2)->text(), "5.00");
        const auto* activities = find<QTableWidget>("activityTable");
        QCOMPARE(activities->item(0, 0)->text(), "Load");
        QCOMPARE(activities->item(0, 1)->text(), "5");
        QCOMPARE(activities->item(0, 3)->text(), "10");
        QCOMPARE(runState(), "run");
        QCOMPARE(find<QLabel>("statusLabel")->text(), "Status: Edit mode.");
        QCOMPARE(model->window.simState, 0);
        QCOMPARE(model->load->getTotInst(), 0);
    }

    void resultsStayOpenAcrossRuns() {
        model->window.onRun();
        model->window.onRun();

        QCOMPARE(openResults(), 2);
    }

    void simTimeFieldMovesOnlyWithAnimation() {
        model->window.onRun();
        QCOMPARE(find<QLineEdit>("simTimeEdit")->text(), "0.00");

        animation::isOn = true;
        animation::delay = 0;
        model->window.onRun();
        animation::isOn = false;
        QCOMPARE(find<QLineEdit>("simTimeEdit")->text(), "10.00");
    }

    void clockAdvanceHoldsTheRunAtEachAdvance() {
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        QStringList times;
        QStringList states;
        const QStringList told = runAndAtEachHold([&] {
            times.append(find<QLineEdit>("simTimeEdit")->text());
            states.append(runState());
            trigger("runAction");
            QCOMPARE(runState(), "pause stop");
        });

        QCOMPARE(told, QStringList());
        QCOMPARE(times, QStringList({"0.00", "10.00"}));
        QCOMPARE(states, QStringList({"run stop", "run stop"}));
        QCOMPARE(openResults(), 1);
    }

    void timeHoldsTheRunFromThatTimeOn_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("times");
        QTest::newRow("later") << "5" << QStringList{"10.00"};
        QTest::newRow("exact") << "10" << QStringList{"10.00"};
        QTest::newRow("never") << "11" << QStringList{};
        QTest::newRow("no number reads as 0") << "soon" << QStringList{"0.00", "10.00"};
    }
    void timeHoldsTheRunFromThatTimeOn() {
        QFETCH(QString, text);
        QFETCH(QStringList, times);
        find<QCheckBox>("timeBox")->setChecked(true);
        find<QLineEdit>("timeEdit")->setText(text);
        QStringList held;
        runAndAtEachHold([&] {
            held.append(find<QLineEdit>("simTimeEdit")->text());
            trigger("runAction");
        });

        QCOMPARE(held, times);
    }

    void nextEventHoldsTheRunBeforeEachEvent() {
        find<QCheckBox>("nextEventBox")->setChecked(true);
        int holds = 0;
        runAndAtEachHold([&] {
            ++holds;
            trigger("runAction");
        });

        // One entry of the initial content; five draws and starts; five ends, each with two codes and an entry.
        QCOMPARE(holds, 1 + 5 * 2 + 5 * 3);
    }

    void stopEndsAHeldRun() {
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        const QStringList told = runAndAtEachHold([&] { trigger("stopAction"); });

        QCOMPARE(told, QStringList{"Information: Simulation stopped.\nSimulation was stopped by user.\n"});
        QCOMPARE(openResults(), 0);
        QCOMPARE(runState(), "run");
        QCOMPARE(model->window.simState, 0);
        find<QCheckBox>("clockAdvanceBox")->setChecked(false);
        model->window.onRun();
        QCOMPARE(openResults(), 1);
    }

    void stopEndsAnAnimatedRun() {
        animation::isOn = true;
        animation::delay = 1;
        QTimer::singleShot(3, this, [&] { trigger("stopAction"); });
        const QStringList told = boxesDuring([&] { model->window.onRun(); });
        animation::isOn = false;

        QCOMPARE(told, QStringList{"Information: Simulation stopped.\nSimulation was stopped by user.\n"});
        QCOMPARE(model->load->getHighlight(), 0);
        QCOMPARE(model->draws->getHighlight(), 0);
    }

    void pauseDuringTheAnimationHoldsAndGoesOn() {
        animation::isOn = true;
        animation::delay = 1;
        int holds = 0;
        QTimer::singleShot(3, this, [&] {
            QTimer::singleShot(0, this, [&] {
                ++holds;
                QCOMPARE(runState(), "run stop");
                trigger("runAction");
            });
            trigger("pauseAction");
        });
        model->window.onRun();
        animation::isOn = false;

        QCOMPARE(holds, 1);
        QCOMPARE(openResults(), 1);
    }

    void forkWorksAgainAfterARunWasBrokenOffInsideItsBurst() {
        auto& fork = model->drop<cTQFork>("Fork", {300, 200}, "Split");
        model->releases->dropHandle(false, fork.cpByIndex(4));
        model->join("Onward", fork, *model->hauled);
        find<QCheckBox>("nextEventBox")->setChecked(true);
        runAndAtEachHold([&] {  // stops at the first entry of the queue behind the Fork, in the middle of the burst
            trigger(model->hauled->getStatistics().totCount > 0.0 ? "stopAction" : "runAction");
        });
        QCOMPARE(openResults(), 0);

        find<QCheckBox>("nextEventBox")->setChecked(false);
        auto& work = model->drop<cTQNormal>("NormalAct", {400, 200}, "Spread");
        model->window.removeElement(model->window.findElement("Onward"));
        model->join("Onward2", fork, work);
        model->window.onRun();
        const auto* activities = find<QTableWidget>("activityTable");
        QCOMPARE(activities->item(1, 0)->text(), "Spread");
        QCOMPARE(activities->item(1, 1)->text(), "5");
    }

    void failureIsShownAndNoResults() {
        model->window.removeElement(model->draws);
        const QStringList told = boxesDuring([&] { model->window.onRun(); });

        QCOMPARE(told, QStringList{"Error: Simulation failed to start.\nCombi \"Load\" does not have any inlinks and "
                                   "will be started infinitely."});
        QCOMPARE(openResults(), 0);
        QCOMPARE(runState(), "run");
    }

    void valueThatNobodyCanGiveEndsTheRun() {
        find<QTextEdit>("globalCodeEdit")->setPlainText("SAVEVALUE v GET(\"rate\");");
        const QStringList told = boxesDuring([&] { model->window.onRun(); });

        QCOMPARE(told, QStringList{"Error: No answer to GET(\"rate\"): no controller is connected."});
        QCOMPARE(openResults(), 0);
        QCOMPARE(runState(), "run");
        QCOMPARE(find<QLabel>("statusLabel")->text(), "Status: Edit mode.");
        QCOMPARE(model->window.simState, 0);
    }

    void messageThatNobodyHearsDoesNothing() {
        find<QTextEdit>("globalCodeEdit")->setPlainText("POST \"n = %d\" 3;");
        const QStringList told = boxesDuring([&] { model->window.onRun(); });

        QCOMPARE(told, QStringList());
        QCOMPARE(openResults(), 1);
        QCOMPARE(find<QTableWidget>("activityTable")->item(0, 1)->text(), "5");
    }

    void modelCannotBeChangedDuringARun() {
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        int holds = 0;
        runAndAtEachHold([&] {
            ++holds;
            model->window.createElementFromDrop("Queue", {200, 200});
            model->window.removeElement(model->load);
            model->window.newFile();
            QVERIFY(!find<QAction>("newAction")->isEnabled());
            QVERIFY(!find<QAction>("resourcesAction")->isEnabled());
            QVERIFY(!find<QAction>("globalCodeAction")->isEnabled());
            model->window.elemSelected(model->load);
            QVERIFY(
                !model->window.findChild<QWidget*>("combiPanel")->findChild<QLineEdit*>("durationEdit")->isEnabled());
            QCOMPARE(model->window.elements.size(), std::size_t{5});
            trigger("runAction");
        });

        QCOMPARE(holds, 2);
        QVERIFY(model->window.findChild<QWidget*>("combiPanel")->findChild<QLineEdit*>("durationEdit")->isEnabled());
    }

    void closeEndsAHeldRunAtOnce() {
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        model->window.show();
        QElapsedTimer sinceClose;
        runAndAtEachHold([&] {
            if (sinceClose.isValid()) return;
            QTimer::singleShot(0, this, [] {
                qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::No)->click();
            });
            sinceClose.start();
            model->window.close();
        });

        QVERIFY(model->window.stopRequested);
        QVERIFY(!model->window.isVisible());
        QVERIFY(sinceClose.elapsed() < 1000);
        QCOMPARE(openResults(), 0);
    }

    void noReplicationRunsWhenNoneIsAskedFor_data() {
        QTest::addColumn<int>("replications");
        QTest::newRow("0") << 0;
        QTest::newRow("below 0") << -3;
    }
    void noReplicationRunsWhenNoneIsAskedFor() {
        QFETCH(int, replications);
        model->window.replications = replications;  // no statement gives such a number
        const cStatusAtResults seen(model->window);

        QCOMPARE(boxesDuring([&] { model->window.onRun(); }), QStringList());

        QCOMPARE(seen.status, QStringList{"Status: Simulating single run."});
        QCOMPARE(find<QTableWidget>("activityTable")->item(0, 1)->text(), "0");
        QVERIFY(model->window.statements.empty());
        QCOMPARE(find<QLabel>("statusLabel")->text(), "Status: Edit mode.");
    }

    void replicationsThatWereBrokenOffAreNotToldOfLater() {
        find<QTextEdit>("globalCodeEdit")->setPlainText("MULTISIM 1000000;");
        QTimer::singleShot(25, &model->window, &tsApp::onStop);  // when more have begun than the label was told of
        QCOMPARE(boxesDuring([&] { model->window.onRun(); }).size(), 1);

        find<QTextEdit>("globalCodeEdit")->clear();
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        QStringList states;
        runAndAtEachHold([&] {
            states.append(find<QLabel>("statusLabel")->text());
            trigger("runAction");
        });

        QVERIFY(!states.isEmpty());
        states.removeDuplicates();
        QCOMPARE(states, QStringList("Status: Simulating single run."));
    }

    void drawsReleasesAndForksAreShownOnceEach() {
        auto& fork = model->drop<cTQFork>("Fork", {300, 200}, "Split");
        model->window.removeElement(model->draws);
        model->window.removeElement(model->releases);
        cCountedLink& draws = joinCounted("D", *model->soil, *model->load);
        cCountedLink& releases = joinCounted("R", *model->load, fork);
        cCountedLink& onward = joinCounted("O", fork, *model->hauled);
        animation::isOn = true;
        animation::delay = 0;
        model->window.onRun();
        QCOMPARE(draws.shown, 5);
        QCOMPARE(releases.shown, 5);
        QCOMPARE(onward.shown, 5);

        animation::isOn = false;
        model->window.onRun();
        QCOMPARE(draws.shown, 5);
    }

    void flowIsShownAfterItsCode() {
        model->window.removeElement(model->draws);
        cCountedLink& draws = joinCounted("D", *model->soil, *model->load);
        find<QTextEdit>("globalCodeEdit")->setPlainText("SAVEVALUE Flows 0;\nONFLOW D ASSIGN Flows Flows+1;");
        QList<double> seen;
        draws.whenShown = [&] { seen.append(model->window.saveValues.at("Flows")); };
        animation::isOn = true;
        animation::delay = 0;
        model->window.onRun();
        animation::isOn = false;

        QCOMPARE(seen, (QList<double>{1.0, 2.0, 3.0, 4.0, 5.0}));
    }

    void replicationsAreCountedFromZero() {
        find<QTextEdit>("globalCodeEdit")->setPlainText("MULTISIM 2;");
        find<QCheckBox>("clockAdvanceBox")->setChecked(true);
        QStringList states;
        runAndAtEachHold([&] {
            states.append(find<QLabel>("statusLabel")->text());
            trigger("runAction");
        });

        QCOMPARE(states,
                 QStringList({"Status: Simulating multiple runs: 0 of 2", "Status: Simulating multiple runs: 0 of 2",
                              "Status: Simulating multiple runs: 1 of 2", "Status: Simulating multiple runs: 1 of 2"}));

        QCOMPARE(find<QDialog>("resultsDialog")->windowTitle(), "Multiple Simulation Results");
        QCOMPARE(model->window.replications, 1);
        QVERIFY(QFile::exists(home->path() + "/lines.csv"));
    }
};

QTEST_MAIN(cRunControlTest)
#include "runControlTest.moc"
