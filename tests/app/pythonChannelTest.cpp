#include "editor/animation.h"
#include "kernel/runStatistics.h"
#include "support/drawnModel.h"
#include "support/messageBox.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QStringList>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <QTextEdit>
#include <random>
#include <unistd.h>

namespace {

/// What is written to standard output while it lives, instead of being shown. The test's own log goes there too, so
/// nothing is logged meanwhile.
class cCaughtOutput {
public:
    cCaughtOutput() : shown(dup(STDOUT_FILENO)) {
        QLoggingCategory::setFilterRules("*=false");
        file.open();
        std::fflush(stdout);
        dup2(file.handle(), STDOUT_FILENO);
    }
    ~cCaughtOutput() {
        dup2(shown, STDOUT_FILENO);
        close(shown);
        QLoggingCategory::setFilterRules({});
    }
    cCaughtOutput(const cCaughtOutput&) = delete;
    cCaughtOutput& operator=(const cCaughtOutput&) = delete;

    QStringList lines() {
        file.seek(0);
        return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }

private:
    QTemporaryFile file;
    const int shown;
};

}  // namespace

/// A controller's messages to a window with a drawn model: five units of Soil, each loaded for 10.
class cPythonChannelTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    cKind* find(const char* name) {
        return model->window.findChild<cKind*>(QLatin1String(name));
    }
    /// The replies to these messages.
    QStringList tell(const QStringList& messages) {
        cCaughtOutput output;
        for (const QString& message : messages) model->window.handlePythonMessage(message);
        return output.lines();
    }
    /// The replies to a run in which the model asks for a value, while `action` is done each time that it waits. How
    /// often the code of a run is evaluated is the run's affair: equal replies count as one.
    QStringList askAnd(const std::function<void()>& action) {
        find<QTextEdit>("globalCodeEdit")->setPlainText("SAVEVALUE v GET(\"rate\");");
        QTimer waiting;
        connect(&waiting, &QTimer::timeout, this, action);
        waiting.start(0);
        QStringList replies = tell({"RUNMODEL;"});
        replies.removeDuplicates();
        return replies;
    }
    QMessageBox* openBox() {
        const auto boxes = model->window.findChildren<QMessageBox*>();
        for (QMessageBox* box : boxes)
            if (box->isVisible()) return box;
        return nullptr;
    }
    bool isEditing() { return find<QAction>("runAction")->isEnabled() && model->window.simState == 0; }

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<cDrawnModel> model;

private Q_SLOTS:
    void init() {
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
        model = std::make_unique<cDrawnModel>();
        model->window.runStatistics->setTemporaryPath((home->path() + "/lines.csv").toStdString());
        model->window.show();
        model->window.startPythonReceiver();
    }
    void cleanup() { model.reset(); }

    void messagesOfTheReceiverAreServedByTheEventLoop() {
        auto* box = find<QCheckBox>("animateBox");
        Q_EMIT model->window.pythonMessageReceived("SETANIMATE true;");
        QVERIFY(!box->isChecked());
        QCoreApplication::processEvents();
        QVERIFY(box->isChecked());
        box->setChecked(false);
    }

    void nullMessageDoesNothing() {
        QCOMPARE(tell({QString()}), QStringList());
        QCOMPARE(tell({"RUNMODEL;"}), QStringList{"FINISHED_RUN"});  // and was no statement
    }

    void setAnimateTicksTheBox_data() {
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("isTicked");
        QTest::newRow("true") << "SETANIMATE true;" << true;
        QTest::newRow("upper case") << "SETANIMATE TRUE;" << false;
        QTest::newRow("false") << "setanimate false;" << false;
    }
    void setAnimateTicksTheBox() {
        QFETCH(QString, message);
        QFETCH(bool, isTicked);
        auto* box = find<QCheckBox>("animateBox");
        box->setChecked(!isTicked);
        tell({message});
        QCOMPARE(box->isChecked(), isTicked);
        box->setChecked(false);
    }

    void setAnimateToThePresentStateNotifiesNobody() {
        auto* box = find<QCheckBox>("animateBox");
        const QSignalSpy toggled(box, &QCheckBox::toggled);
        tell({"SETANIMATE false;", "SETANIMATE"});
        QCOMPARE(toggled.count(), 0);
        QVERIFY(!box->isChecked());
    }

    void runOpensNoDialogAndKeepsItsStatistics() {
        const QStringList told = boxesDuring([&] {
            QCOMPARE(tell({"PRINT log \"text\";", "RUNMODEL;"}), QStringList{"FINISHED_RUN"});
        });

        QCOMPARE(told, QStringList());
        QVERIFY(find<QDialog>("resultsDialog") == nullptr);
        QVERIFY(find<QDialog>("traceDialog") == nullptr);
        QCOMPARE(find<QLabel>("statusLabel")->text(), "Status: Simulating single run.");
        const QStringList replies = tell({"GETRESULTS;", "GETTRACE log"});
        QVERIFY(replies.front().contains("\"Load.TotInst\":5.0"));
        QCOMPARE(replies.back(), "TRACE text|");

        tell({"RESETMODEL;"});
        QCOMPARE(find<QLabel>("statusLabel")->text(), "Status: Edit mode.");
        QVERIFY(isEditing());
    }

    void userCanRunWhatTheControllerHasRun() {
        tell({"RUNMODEL;"});
        QVERIFY(!find<QAction>("newAction")->isEnabled());
        find<QAction>("runAction")->trigger();
        QVERIFY(find<QDialog>("resultsDialog") != nullptr);
        QVERIFY(isEditing());
    }

    void failureOfARunIsShownAndNotWaitedFor() {
        model->window.removeElement(model->draws);
        QCOMPARE(tell({"RUNMODEL;"}), QStringList{"FINISHED_RUN"});

        QVERIFY(openBox() != nullptr);
        QVERIFY(!openBox()->isModal());
        QCOMPARE(openBox()->text(),
                 "Simulation failed to start.\nCombi \"Load\" does not have any inlinks and will be started "
                 "infinitely.");
        QVERIFY(isEditing());
    }

    void fileThatCannotBeReadIsToldInABoxThatIsNotWaitedFor() {
        QCOMPARE(tell({"LOAD /nowhere/none.tbsmx;"}), QStringList());

        QVERIFY(openBox() != nullptr);
        QVERIFY(!openBox()->isModal());
        QCOMPARE(openBox()->windowTitle(), "Unable to open file");
        QVERIFY(model->window.elements.empty());
    }

    void ofManyBoxesOneIsKept() {
        for (int i = 0; i < 20; ++i) tell({"LOAD /nowhere/none.tbsmx;"});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(model->window.findChildren<QMessageBox*>().size(), 1);
    }

    void stopEndsAWaitForAnAnswer() {
        const QStringList replies = askAnd([&] {
            QVERIFY(find<QAction>("stopAction")->isEnabled());
            find<QAction>("stopAction")->trigger();
        });

        QCOMPARE(replies, (QStringList{"GET rate", "FINISHED_RUN"}));
        QVERIFY(openBox() != nullptr);
        QCOMPARE(openBox()->text(), "Simulation stopped.\nSimulation was stopped by user.\n");
        QVERIFY(isEditing());
    }

    void answerEndsTheWait() {
        const QStringList replies = askAnd([&] {
            Q_EMIT model->window.pythonMessageReceived("GETRESULTS;");
            Q_EMIT model->window.pythonMessageReceived("RESPONSE_TO_GET 2.5");
        });

        QCOMPARE(replies, (QStringList{"GET rate", "RESULTS {}", "FINISHED_RUN"}));
        QCOMPARE(model->window.saveValues.at("v"), 2.5);
    }

    void runOfTheUserIsNotDisturbed() {
        find<QTextEdit>("globalCodeEdit")->setPlainText("SAVEVALUE v GET(\"rate\");");
        QTimer waiting;
        connect(&waiting, &QTimer::timeout, this,
                [&] { Q_EMIT model->window.pythonMessageReceived("RESPONSE_TO_GET 1"); });
        waiting.start(0);
        QTimer::singleShot(0, this, [&] {
            Q_EMIT model->window.pythonMessageReceived("LOAD /nowhere/none.tbsmx");
            Q_EMIT model->window.pythonMessageReceived("RUNMODEL;");
        });
        cCaughtOutput output;
        find<QAction>("runAction")->trigger();
        QVERIFY(find<QDialog>("resultsDialog") != nullptr);
        QVERIFY(!output.lines().contains("FINISHED_RUN"));
        QCOMPARE(model->window.elements.size(), 5U);

        QTRY_COMPARE(output.lines().constLast(), "FINISHED_RUN");
        QVERIFY(model->window.elements.empty());
    }

    void nobodyIsAskedOutsideARun() { QVERIFY_EXCEPTION_THROWN(model->window.hostGet("rate"), cException); }

    void tenThousandRandomLinesDoNoHarm() {
        animation::delay = 0;
        std::mt19937 random(1);
        const QStringList words{"RESPONSE_TO_GET",
                                "RESETMODEL;",
                                "LOAD",
                                "SETANIMATE",
                                "RUNMODEL;",
                                "GETRESULTS;",
                                "GETTRACE",
                                "CLOSE",
                                "true;",
                                "none",
                                ";",
                                "",
                                "SEED",
                                "1",
                                "PRINT log",
                                "MULTISIM",
                                "POST",
                                "\\",
                                "INIT Soil 1;",
                                "SIMULATE;",
                                "\u00df",
                                "2"};
        int wanted = 0;
        QStringList lines;
        for (int i = 0; i < 10000; ++i) {
            QString line = words.at(static_cast<int>(random() % static_cast<unsigned>(words.size())));
            if (random() % 2 == 0) line += ' ' + words.at(static_cast<int>(random() % unsigned(words.size())));
            if (line == "RUNMODEL;" || line == "GETRESULTS;") ++wanted;
            lines.append(line);
        }
        QStringList replies = tell(lines);

        replies.removeIf(
            [](const QString& reply) { return reply.startsWith("MESSAGE ") || reply.startsWith("TRACE "); });
        QCOMPARE(replies.size(), wanted);
        for (const QString& reply : replies) QVERIFY(reply == "FINISHED_RUN" || reply.startsWith("RESULTS {"));
    }

    // ---- the end: the event loops of this process are left for ever

    void controllerThatIsGoneLeavesAWindowWithChanges() {
        Q_EMIT model->window.controllerGone();
        QCoreApplication::processEvents();
        QVERIFY(model->window.isModified());
        QVERIFY(model->window.isVisible());
    }

    void closedWindowEndsAWaitForAnAnswer() {
        const QStringList replies = askAnd([&] {
            model->window.stopRequested = true;  // as its closing does, behind the question what becomes of the model
        });

        QCOMPARE(replies.front(), "GET rate");
        QVERIFY(openBox() == nullptr);
    }

    void closeAsksNothing() {
        QVERIFY(model->window.isModified());
        QStringList replies;
        const QStringList told = boxesDuring([&] { replies = tell({"CLOSE;", "GETRESULTS;"}); });

        QCOMPARE(told, QStringList());
        QCOMPARE(replies, QStringList{"CLOSED_TIMBERSIM"});
        QVERIFY(!model->window.isVisible());
        QVERIFY(model->window.stopRequested);
    }
};

QTEST_MAIN(cPythonChannelTest)
#include "pythonChannelTest.moc"
