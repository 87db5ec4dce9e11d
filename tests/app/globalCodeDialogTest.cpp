#include "app/globalCodeDialog.h"

#include "support/messageBox.h"
#include "support/testNetwork.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <memory>

class cGlobalCodeDialogTest : public QObject {
    Q_OBJECT

private:
    void pressOk() {
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }

    std::unique_ptr<cTestNetwork> network;
    std::unique_ptr<cGlobalCodeDialog> dialog;

private Q_SLOTS:
    void init() {
        network = std::make_unique<cTestNetwork>();
        dialog = std::make_unique<cGlobalCodeDialog>(*network);
    }
    void cleanup() {
        dialog.reset();
        network.reset();
    }

    void hasALabelAnEditorAndOk() {
        QCOMPARE(dialog->findChild<QLabel*>()->text(), "Enter here any code for the model here.");
        QCOMPARE(dialog->findChild<QDialogButtonBox*>()->standardButtons(), QDialogButtonBox::Ok);
        QVERIFY(!dialog->findChild<QTextEdit*>()->acceptRichText());
    }

    void isShownModally() {
        dialog->showGlobalCode();

        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->isModal());
    }

    void closingKeepsTheTextAndDeclaresItsNames_data() {
        QTest::addColumn<bool>("withOk");
        QTest::newRow("Ok") << true;
        QTest::newRow("Escape") << false;
    }
    void closingKeepsTheTextAndDeclaresItsNames() {
        QFETCH(bool, withOk);
        const QString code = "SAVEVALUE Load 4;\n\nVARIABLE Twice Load*2;\nMULTISIM 7;\n";
        dialog->showGlobalCode();
        dialog->setText(code);

        if (withOk)
            pressOk();
        else
            QTest::keyClick(dialog.get(), Qt::Key_Escape);

        QVERIFY(dialog->isHidden());
        QCOMPARE(dialog->text(), code);
        QCOMPARE(network->evaluate("Twice+0"), 8.0);
        QCOMPARE(network->replications, 1);
        QVERIFY(network->statements.empty());
    }

    void showingForgetsTheNamesOfTheLastCompile() {
        dialog->setText("SAVEVALUE Load 4;\nVARIABLE Twice Load*2;\n");
        dialog->showGlobalCode();
        pressOk();
        dialog->showGlobalCode();

        QVERIFY(network->symbols->getDeclaredNames().empty());
        QVERIFY(network->variables.empty());
        QVERIFY(network->saveValues.empty());
    }

    void aDeclarationThatFailsIsToldAndTheDialogCloses() {
        dialog->showGlobalCode();
        dialog->setText("SAVEVALUE Load 1+*;\n");

        const QStringList boxes = boxesDuring([this] { pressOk(); });

        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.front().startsWith("Error: "));
        QVERIFY(dialog->isHidden());
        QVERIFY(network->statements.empty());
        QCOMPARE(dialog->text(), "SAVEVALUE Load 1+*;\n");
    }

    void duringARunTheCodeCanBeReadAlone() {
        network->execute("SAVEVALUE Load 4;\n");
        dialog->setText("SAVEVALUE Load 9;\n");
        network->simState = 1;

        dialog->showGlobalCode();
        QVERIFY(dialog->findChild<QTextEdit*>()->isReadOnly());
        pressOk();
        QCOMPARE(network->evaluate("Load+0"), 4.0);

        network->simState = 0;
        dialog->showGlobalCode();
        QVERIFY(!dialog->findChild<QTextEdit*>()->isReadOnly());
    }
};

QTEST_MAIN(cGlobalCodeDialogTest)
#include "globalCodeDialogTest.moc"
