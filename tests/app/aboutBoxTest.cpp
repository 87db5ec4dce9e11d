#include "app/aboutBox.h"

#include "support/messageBox.h"

#include <QTest>

class cAboutBoxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsVersionNoticeAndLicence() {
        const QStringList lines = aboutText().split('\n');

        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], "Version 1.0.0");
        QCOMPARE(lines[1], "Discrete-event simulation of construction operations.");
        QVERIFY(lines[2].contains("MIT License"));
    }

    void isShownUnderItsTitle() {
        QCOMPARE(boxesDuring([] { showAbout(nullptr); }), QStringList{"About TIMBERSIM: " + aboutText()});
    }

    void functionListIsShownUnderItsTitle() {
        QCOMPARE(boxesDuring([] { showFunctionList(nullptr); }),
                 QStringList{"Variables and Functions in TIMBERSIM: " + functionListText()});
        QVERIFY(functionListText().startsWith("<b>Variables and Functions available in TIMBERSIM</b>"));
    }

    void functionListHoldsEveryName_data() {
        QTest::addColumn<QString>("item");
        QTest::newRow("SimTime") << "SimTime";
        for (const char* name : {"AveDur", "AveInter", "CurInst", "InContext", "FirstStart", "LastStart", "MaxDur",
                                 "MaxInter", "MinDur", "MinInter", "SDDur", "SDInter", "TotInst"})
            QTest::newRow(name) << QString("<i>ActivityName</i>.") + name;
        for (const char* name :
             {"LastAmtReceived", "AveCount", "AveWait", "CurCount", "MaxCount", "MinCount", "SDCount", "TotCount"})
            QTest::newRow(name) << QString("<i>QueueName</i>.") + name;
        for (const char* name :
             {"Exponential[mean]", "Gamma[a,b]", "Normal[mean,sd]", "NormalInv[mean,stdev,cumulative]",
              "StdNormalInv[Cumulative]", "Triangular[low,mode,high]", "Uniform[low,high]"})
            QTest::newRow(name) << name;
    }
    void functionListHoldsEveryName() {
        QFETCH(QString, item);

        QVERIFY(functionListText().contains("<li>" + item + "</li>"));
    }
};

QTEST_MAIN(cAboutBoxTest)
#include "aboutBoxTest.moc"
