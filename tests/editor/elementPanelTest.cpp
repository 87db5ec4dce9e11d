#include "editor/elementPanel.h"

#include "support/messageBox.h"
#include "support/testNetwork.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <memory>

namespace {

const std::string badText = "1+*";

/// What an element has that a panel of the tests shows. The engine's setters refuse `badText`, and keep it.
struct cShownElement {
    QStringList log;  // the fields that reached the element, in order
    QString name = "Load";
    QString first = "1";
    QString second = "2";
    QString failure = "Stack is empty";

    void take(const QString& field, QString& place, const QString& text) {
        log.append(field);
        place = text;
        if (text.toStdString() == badText) throw cException{failureCode::expression, failure.toStdString(), {}, {}};
    }
};

cFormRow rowOf(const QString& label, const QString& fieldName, cShownElement& element, QString cShownElement::*place) {
    cFormRow row;
    row.label = label;
    row.fieldName = fieldName;
    row.get = [&element, place] { return element.*place; };
    row.set = [&element, place, fieldName](const QString& text) { element.take(fieldName, element.*place, text); };
    return row;
}

}  // namespace

/// A panel with a name, a marked field and one that isn't, a field that nobody reads, a choice and a value.
class cElementPanelTest : public QObject {
    Q_OBJECT

private:
    QLineEdit* line(const char* name) { return panel->findChild<QLineEdit*>(name); }
    QPushButton* button(QDialogButtonBox::StandardButton which) {
        return panel->findChild<QDialogButtonBox*>()->button(which);
    }
    QStringList pressOk() {
        return boxesDuring([this] { QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton); });
    }
    void show() {
        panel->writeTabs();
        panel->show();
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
        QCoreApplication::processEvents();
    }

    std::unique_ptr<cTestNetwork> network;
    cShownElement element;
    QStringList names;
    QString chosen;
    bool isSecondShown = true;
    std::unique_ptr<cElementPanel> panel;

private Q_SLOTS:
    void init() {
        network = std::make_unique<cTestNetwork>();
        element = {};
        names = QStringList{"Default", "Soil", "Truck"};
        chosen = "Soil";
        isSecondShown = true;

        cFormRow first = rowOf("Duration:", "firstEdit", element, &cShownElement::first);
        first.isMarked = true;
        cFormRow second = rowOf("Semaphore: ", "secondEdit", element, &cShownElement::second);
        second.isShown = [this] { return isSecondShown; };
        cFormRow unread;
        unread.label = "Stream:";
        unread.fieldName = "unreadEdit";
        cFormRow choice;
        choice.label = "Resource Type:";
        choice.fieldName = "choiceBox";
        choice.kind = eFieldKind::choice;
        choice.choices = [this] { return names; };
        choice.get = [this] { return chosen; };
        choice.set = [this](const QString& text) { chosen = text; };
        cFormRow value;
        value.label = "CurCount : ";
        value.fieldName = "valueLabel";
        value.kind = eFieldKind::value;
        value.get = [] { return QString("12"); };
        panel = std::make_unique<cElementPanel>(cElementForm{
            "testPanel",
            "Test Properties",
            {rowOf("Name:", "nameEdit", element, &cShownElement::name), first, second, unread, choice, value}});
    }
    void cleanup() {
        panel.reset();
        network.reset();
    }

    void hasOneTabAboveOkAndCancel() {
        const auto* tabs = panel->findChild<QTabWidget*>();
        const auto* buttons = panel->findChild<QDialogButtonBox*>();

        QCOMPARE(panel->parentWidget(), nullptr);
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), "Test Properties");
        QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QCOMPARE(panel->layout()->sizeConstraint(), QLayout::SetNoConstraint);
        QCOMPARE(panel->layout()->itemAt(0)->widget(), tabs);
        QCOMPARE(panel->layout()->itemAt(1)->widget(), buttons);
        QCOMPARE(panel->atFirstTab(), panel.get());
        QCOMPARE(tabs->currentIndex(), 0);
    }

    void rowsHaveTheirLabelsAndAreNamedForScreenReaders() {
        const auto* form = panel->findChild<QFormLayout*>();
        const QStringList labels{"Name:", "Duration:", "Semaphore: ", "Stream:", "Resource Type:", "CurCount : "};

        QCOMPARE(form->rowCount(), labels.size());
        for (int i = 0; i < form->rowCount(); ++i)
            QCOMPARE(qobject_cast<QLabel*>(form->itemAt(i, QFormLayout::LabelRole)->widget())->text(), labels[i]);
        QCOMPARE(line("secondEdit")->accessibleName(), "Semaphore");
        QCOMPARE(panel->findChild<QLabel*>("valueLabel")->accessibleName(), "CurCount");
    }

    void writeTabsShowsWhatTheEngineHolds() {
        panel->writeTabs();

        QCOMPARE(line("nameEdit")->text(), "Load");
        QCOMPARE(line("firstEdit")->text(), "1");
        QCOMPARE(line("secondEdit")->text(), "2");
        QCOMPARE(panel->findChild<QComboBox*>("choiceBox")->currentText(), "Soil");
        QCOMPARE(panel->findChild<QLabel*>("valueLabel")->text(), "12");
    }

    void fieldsCanBeEditedExactlyWhileNoRunIsOn() {
        for (const int state : {0, 1, 0}) {
            network->simState = state;
            panel->writeTabs();

            const bool isOpen = state == 0;
            QCOMPARE(line("nameEdit")->isEnabled(), isOpen);
            QCOMPARE(line("firstEdit")->isEnabled(), isOpen);
            QCOMPARE(line("unreadEdit")->isEnabled(), isOpen);
            QCOMPARE(panel->findChild<QComboBox*>("choiceBox")->isEnabled(), isOpen);
            QCOMPARE(button(QDialogButtonBox::Ok)->isEnabled(), isOpen);
            QVERIFY(button(QDialogButtonBox::Cancel)->isEnabled());
        }
    }

    void okReadsTheNameFirstThenEachFieldAndCloses() {
        show();
        line("nameEdit")->setText("Dig");
        line("firstEdit")->setText("5");
        line("secondEdit")->setText("6");

        const QStringList boxes = pressOk();

        QCOMPARE(boxes, QStringList{});
        QCOMPARE(element.log, (QStringList{"nameEdit", "firstEdit", "secondEdit"}));
        QCOMPARE(element.name, "Dig");
        QCOMPARE(element.first, "5");
        QCOMPARE(element.second, "6");
        QVERIFY(panel->isHidden());
        QVERIFY(!line("firstEdit")->hasSelectedText());
    }

    void aRefusedTextStaysMarkedAndThePanelOpen() {
        show();
        line("firstEdit")->setText(QString::fromStdString(badText));
        line("secondEdit")->setText("6");

        const QStringList boxes = pressOk();
        panel->activateWindow();  // which a window manager does when a box has gone
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
        QCoreApplication::processEvents();

        QCOMPARE(boxes, QStringList{"Error: Stack is empty"});
        QCOMPARE(element.log, (QStringList{"nameEdit", "firstEdit"}));
        QVERIFY(panel->isVisible());
        QCOMPARE(line("firstEdit")->selectedText(), QString::fromStdString(badText));
        QCOMPARE(line("firstEdit")->palette().color(QPalette::Highlight), QColor(Qt::blue));
        QCOMPARE(line("secondEdit")->text(), "6");
    }

    void okWithAnUnchangedBadTextShowsTheBoxAgain() {
        show();
        line("firstEdit")->setText(QString::fromStdString(badText));

        QCOMPARE(pressOk(), QStringList{"Error: Stack is empty"});
        QCOMPARE(pressOk(), QStringList{"Error: Stack is empty"});
        line("firstEdit")->setText("3");
        QCOMPARE(pressOk(), QStringList{});
        QCOMPARE(element.first, "3");
    }

    void aFailureWithoutATextHasOneOfItsOwn() {
        show();
        element.failure.clear();
        line("firstEdit")->setText(QString::fromStdString(badText));

        QCOMPARE(pressOk(), QStringList{"Error: Error in expression in recently closed dialog.\n"});
    }

    void aFieldThatIsNotMarkedFailsWithoutSelection() {
        show();
        line("secondEdit")->setText(QString::fromStdString(badText));

        QCOMPARE(pressOk(), QStringList{"Error: Stack is empty"});

        QVERIFY(!line("secondEdit")->hasSelectedText());
        QVERIFY(panel->isVisible());
    }

    void cancelKeepsTheTextsUntilTheNextWrite() {
        show();
        line("firstEdit")->setText("77");
        QTest::mouseClick(button(QDialogButtonBox::Cancel), Qt::LeftButton);

        QVERIFY(panel->isHidden());
        QCOMPARE(element.log, QStringList{});
        QCOMPARE(line("firstEdit")->text(), "77");
        panel->writeTabs();
        QCOMPARE(line("firstEdit")->text(), "1");
    }

    void aFieldThatIsNotReadKeepsWhatWasTyped() {
        show();
        line("unreadEdit")->setText("4");

        pressOk();
        panel->writeTabs();

        QCOMPARE(line("unreadEdit")->text(), "4");
    }

    void aHiddenRowIsNotRead() {
        isSecondShown = false;
        show();

        QVERIFY(!line("secondEdit")->isVisible());
        pressOk();
        QCOMPARE(element.log, (QStringList{"nameEdit", "firstEdit"}));

        isSecondShown = true;
        show();
        QVERIFY(line("secondEdit")->isVisible());
    }

    void nothingIsReadDuringARun() {
        show();
        line("firstEdit")->setText("9");
        network->simState = 1;

        const QStringList boxes = pressOk();

        QCOMPARE(boxes, QStringList{});
        QCOMPARE(element.log, QStringList{});
        QVERIFY(panel->isVisible());
        QVERIFY(!line("firstEdit")->isEnabled());
        QCOMPARE(line("firstEdit")->text(), "9");
    }

    void aChoiceFollowsARenaming() {
        panel->writeTabs();
        names = QStringList{"Default", "Earth", "Truck"};

        panel->refillChoices("Earth", "Soil");

        auto* box = panel->findChild<QComboBox*>("choiceBox");
        QCOMPARE(box->currentText(), "Earth");
        QCOMPARE(box->count(), 3);
    }

    void aChoiceStaysWhenNamesAreAdded() {
        panel->writeTabs();
        names = QStringList{"Aaa", "Default", "Soil", "Truck"};

        panel->refillChoices("Aaa", "Aaa");

        QCOMPARE(panel->findChild<QComboBox*>("choiceBox")->currentText(), "Soil");
    }

    void aChoiceThatIsGoneGivesWayToTheFirstName() {
        panel->writeTabs();
        names = QStringList{"Default", "Truck"};

        panel->refillChoices({}, {});

        QCOMPARE(panel->findChild<QComboBox*>("choiceBox")->currentText(), "Default");
    }

    void aPanelThatGoesWhileARowIsReadIsLeftAlone() {
        cFormRow row;
        row.label = "Name:";
        row.fieldName = "nameEdit";
        row.isMarked = false;
        int reads = 0;
        cElementPanel* doomed = nullptr;
        row.set = [&](const QString&) {
            ++reads;
            delete doomed;
        };
        doomed = new cElementPanel(cElementForm{"doomed", "Doomed", {row, row}});
        doomed->writeTabs();

        doomed->editExceptions();

        QCOMPARE(reads, 1);
    }
};

QTEST_MAIN(cElementPanelTest)
#include "elementPanelTest.moc"
