#include "app/traceDialog.h"

#include "app/savedText.h"
#include "support/messageBox.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString longText = QString("a line of the text\n").repeated(500);

}  // namespace

class cTraceDialogTest : public QObject {
    Q_OBJECT

private:
    /// Calls `saveTrace` and answers its question with `path`, or with nothing.
    /// @return the title and the name filter of the question.
    static QStringList saveTo(traceDialog& dialog, const QString& path) {
        QStringList asked;
        QTimer::singleShot(0, &dialog, [&asked, path] {
            auto* question = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (question == nullptr) return;
            asked = QStringList{question->windowTitle(), question->nameFilters().join('|')};
            question->selectFile(path);
            QDialog* answered = question;
            path.isEmpty() ? answered->reject() : answered->accept();
        });
        dialog.saveTrace();
        return asked;
    }

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void showsTheTextUnderItsName() {
        const traceDialog dialog("Trucks", "<b>1</b> < 2\n");

        QCOMPARE(dialog.windowTitle(), "Trucks");
        QCOMPARE(dialog.size(), QSize(640, 480));
        QCOMPARE(dialog.findChild<QLabel*>("traceLabel")->text(), "<b>1</b> < 2\n");
        QCOMPARE(dialog.findChild<QLabel*>("traceLabel")->textFormat(), Qt::PlainText);
        QCOMPARE(dialog.findChild<QPushButton*>("saveTraceButton")->text(), "Save To File");
    }

    void aLongTextCanBeScrolled() {
        traceDialog dialog("Trucks", longText);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));

        QCOMPARE(dialog.size(), QSize(640, 480));
        QVERIFY(dialog.findChild<QScrollArea*>()->verticalScrollBar()->maximum() > 0);
    }

    void theButtonDoesNothing() {
        traceDialog dialog("Trucks", "text");
        dialog.show();
        bool isAsked = false;
        QTimer::singleShot(0, &dialog, [&isAsked] {
            QWidget* question = QApplication::activeModalWidget();
            isAsked = question != nullptr;
            if (isAsked) question->close();
        });

        QTest::mouseClick(dialog.findChild<QPushButton*>("saveTraceButton"), Qt::LeftButton);
        QCoreApplication::processEvents();

        QVERIFY(!isAsked);
        QVERIFY(dialog.isVisible());
    }

    void saveTraceIsTheOneSlot() {
        const QMetaObject& meta = traceDialog::staticMetaObject;

        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("saveTrace()"));
    }

    void saveTraceWritesTheTextToTheFileAskedFor() {
        const QTemporaryDir folder;
        traceDialog dialog("Trucks", "Gewicht \u00fc\n" + longText);
        const QString path = folder.filePath("out.txt");

        const QStringList asked = saveTo(dialog, path);

        QCOMPARE(asked, (QStringList{"Save Outfile", "*.*"}));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QString("Gewicht \u00fc\n" + longText).toUtf8());
    }

    void saveTraceWithoutAFileWritesNothing() {
        traceDialog dialog("Trucks", "text");

        const QStringList boxes = boxesDuring([&dialog] { saveTo(dialog, {}); });

        QCOMPARE(boxes, QStringList{});
    }

    void aFileThatCannotBeWrittenIsToldAndTheOldOneStays() {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("taken"));

        const QStringList boxes =
            boxesDuring([&folder] { QVERIFY(!saveText(nullptr, folder.filePath("taken"), "text")); });

        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.front().startsWith("Error: Cannot save " + folder.filePath("taken")));
        QCOMPARE(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"taken"});
    }
};

QTEST_MAIN(cTraceDialogTest)
#include "traceDialogTest.moc"
