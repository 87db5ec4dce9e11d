#include "editor/dialogRes.h"

#include "support/testNetwork.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <memory>

/// A new model: the dialog with the one type Default.
class cDialogResTest : public QObject {
    Q_OBJECT

private:
    QLineEdit* line(const char* name) { return dialog->findChild<QLineEdit*>(name); }
    QRadioButton* radio(const char* name) { return dialog->findChild<QRadioButton*>(name); }
    QListWidget* list() { return dialog->findChild<QListWidget*>("typeList"); }
    QStringList listed() {
        QStringList names;
        for (int i = 0; i < list()->count(); ++i) names.append(list()->item(i)->text());
        return names;
    }
    void add(const QString& typed) {
        line("addEdit")->setText(typed);
        QTest::mouseClick(dialog->findChild<QPushButton*>("addButton"), Qt::LeftButton);
    }
    void select(const QString& name) { list()->setCurrentItem(list()->findItems(name, Qt::MatchExactly).front()); }
    void pressOk() {
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }
    cResType* type(const char* name) { return network->findResourceType(name); }
    void useSpy() {
        announced.clear();
        connect(dialog.get(), &cDialogRes::newResAdded, this,
                [this](const std::string& now, const std::string& before) {
                    announced.append(QString::fromStdString(before + " -> " + now));
                });
    }

    std::unique_ptr<cTestNetwork> network;
    std::unique_ptr<cDialogRes> dialog;
    QStringList announced;

private Q_SLOTS:
    void init() {
        network = std::make_unique<cTestNetwork>();
        dialog = std::make_unique<cDialogRes>(*network);
        dialog->addResType("Default", "GENTYPE");
        dialog->refresh();
        dialog->show();
        useSpy();
    }
    void cleanup() {
        network.reset();  // its elements can hold resources of types that the dialog keeps
        dialog.reset();
    }

    void hasItsTabAndTexts() {
        QCOMPARE(dialog->findChild<QTabWidget*>()->tabText(0), "Resource Types");
        QCOMPARE(dialog->findChild<QPushButton*>("addButton")->text(), "Add Resource");
        QCOMPARE(dialog->findChild<QGroupBox*>()->title(), "Kind of Resource Type");
        QCOMPARE(radio("genericButton")->text(), "Generic");
        QCOMPARE(radio("compoundButton")->text(), "Compound Characterized");
        QStringList labels;
        for (const QLabel* label : dialog->findChildren<QLabel*>()) labels.append(label->text());
        QVERIFY(labels.contains("Name: "));
        QVERIFY(labels.contains("Save Props: "));
        QCOMPARE(dialog->findChild<QDialogButtonBox*>()->standardButtons(),
                 QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    }

    void aNewTypeIsGenericAndSelected() {
        add("Soil");

        QCOMPARE(listed(), (QStringList{"Default", "Soil"}));
        QVERIFY(dynamic_cast<cResTypeGen*>(type("Soil")) != nullptr);
        QCOMPARE(dialog->getRecords().at("Soil")->kind, "GENTYPE");
        QCOMPARE(dialog->currentRecord()->name, std::string("Soil"));
        QVERIFY(radio("genericButton")->isChecked());
        QCOMPARE(line("addEdit")->text(), "");
        QCOMPARE(announced, QStringList{"Soil -> Soil"});
    }

    void semicolonsInANewNameAreLeftOut() {
        add("Wet;Sand;");

        QCOMPARE(listed(), (QStringList{"Default", "WetSand"}));
    }

    void blanksInANewNameAreLeftOut() {
        add(" So il\t1 ");

        QCOMPARE(listed(), (QStringList{"Default", "Soil1"}));
        QVERIFY(type("Soil1") != nullptr);
    }

    void anEmptyNameAddsNothing() {
        for (const char* typed : {"", "   "}) {
            add(typed);
            QCOMPARE(listed(), QStringList{"Default"});
        }
        dialog->addResType("Soil", "");
        QCOMPARE(listed(), QStringList{"Default"});
        QCOMPARE(announced, QStringList{});
    }

    void aNameThatExistsChangesNothingNotEvenTheSelection() {
        add("Soil");
        add("Truck");
        select("Soil");
        const cResType* before = type("Truck");
        announced.clear();

        add("Truck");

        QCOMPARE(listed(), (QStringList{"Default", "Soil", "Truck"}));
        QCOMPARE(list()->currentItem()->text(), "Soil");
        QCOMPARE(dialog->currentRecord()->name, std::string("Soil"));
        QCOMPARE(type("Truck"), before);
        QCOMPARE(announced, QStringList{});
    }

    void recordsAreNumberedInTheOrderOfTheirMaking() {
        add("Soil");
        add("Ash");

        const auto& records = dialog->getRecords();
        QCOMPARE(records.at("Ash")->number, records.at("Soil")->number + 1);
    }

    void typesOfFilesHaveTheClassOfTheirKind() {
        dialog->addResType("Fleet", "COMPTYPE");
        dialog->addResType("Odd", "CHARTYPE");

        QVERIFY(dynamic_cast<cResTypeCompound*>(type("Fleet")) != nullptr);
        QCOMPARE(type("Odd")->getTypeKind(), std::string("CHARTYPE"));
        select("Odd");
        QVERIFY(!radio("genericButton")->isChecked());
        QVERIFY(!radio("compoundButton")->isChecked());
        pressOk();
        QCOMPARE(dialog->getRecords().at("Odd")->kind, "CHARTYPE");
    }

    void enterInTheFieldOfANewNameAddsItAndLeavesTheDialogOpen() {
        line("addEdit")->setFocus();
        QTest::keyClicks(line("addEdit"), "Soil");
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));

        QTest::keyClick(line("addEdit"), Qt::Key_Return);

        QCOMPARE(listed(), (QStringList{"Default", "Soil"}));
        QVERIFY(dialog->isVisible());
    }

    void defaultCanNeitherBeRenamedNorMadeCompound() {
        select("Default");

        QVERIFY(!line("typeNameEdit")->isEnabled());
        QVERIFY(!radio("genericButton")->isEnabled());
        QVERIFY(!radio("compoundButton")->isEnabled());
        line("typeNameEdit")->setText("Other");
        radio("compoundButton")->setChecked(true);
        pressOk();
        QCOMPARE(listed(), QStringList{"Default"});
        QCOMPARE(type("Default")->getTypeKind(), std::string("GENTYPE"));
        QCOMPARE(dialog->getRecords().at("Default")->kind, "GENTYPE");
    }

    void otherTypesCanBeEdited() {
        add("Soil");

        QVERIFY(line("typeNameEdit")->isEnabled());
        QVERIFY(radio("compoundButton")->isEnabled());
        QCOMPARE(line("typeNameEdit")->text(), "Soil");
    }

    void savePropsAreShownForCompoundTypesAlone() {
        add("Soil");
        QVERIFY(!line("savePropsEdit")->isVisible());

        radio("compoundButton")->click();
        QVERIFY(line("savePropsEdit")->isVisible());
        QVERIFY(dialog->findChild<QLabel*>("savePropsLabel")->isVisible());

        radio("genericButton")->click();
        QVERIFY(!line("savePropsEdit")->isVisible());
    }

    void savePropsHaveNoLastingEffect() {
        dialog->addResType("Fleet", "COMPTYPE");
        line("savePropsEdit")->setText("Weight Age");
        dialog->setSaveProps("Fleet", "Weight Age ");
        pressOk();

        QCOMPARE(dialog->getRecords().at("Fleet")->saveProps, std::string());
        QVERIFY(dynamic_cast<cResTypeCompound*>(type("Fleet"))->getSaveProps().empty());
        dialog->refresh();
        QCOMPARE(line("savePropsEdit")->text(), "");
    }

    void aChangeOfKindReplacesTheTypeAndMovesItsHolders() {
        add("Soil");
        cResType* soil = type("Soil");
        cNodeQueue& queue = network->addQueue("Pile", *soil);
        cNodeActCombi& combi = network->addCombi("Load");
        cLink& link = network->addLink("L", queue, combi);
        announced.clear();

        radio("compoundButton")->click();

        QVERIFY(type("Soil") != soil);
        QVERIFY(dynamic_cast<cResTypeCompound*>(type("Soil")) != nullptr);
        QCOMPARE(queue.getResType(), type("Soil"));
        QCOMPARE(link.getResType(), type("Soil"));
        QVERIFY(soil->getHolders().empty());
        QCOMPARE(dialog->getRecords().at("Soil")->kind, "COMPTYPE");
        QCOMPARE(announced, QStringList{"Soil -> Soil"});
    }

    void aTypeThatBecomesWhatItWasIsTheSameObjectAgain() {
        dialog->addResType("Fleet", "COMPTYPE");
        const cResType* fleet = type("Fleet");

        radio("genericButton")->click();
        radio("compoundButton")->click();

        QCOMPARE(type("Fleet"), fleet);
    }

    /// The Assembler keeps the compound that it made, of a type that was replaced and renamed since.
    void resourcesOfAFormerTypeOutliveTheChange() {
        dialog->addResType("Fleet", "COMPTYPE");
        cNodeAuxAssembler& assembler = network->addAssembler("A", *type("Fleet"));
        cNodeQueue& queue = network->addQueue("Parked", *type("Fleet"));
        network->addLink("L", assembler, queue);
        assembler.flowBegin();
        assembler.flowEnd();
        const cResPtr compound = queue.getContents().front();

        radio("genericButton")->click();
        line("typeNameEdit")->setText("Trucks");
        pressOk();

        QCOMPARE(compound->getResType()->getTypeName(), std::string("Trucks"));
        QCOMPARE(compound->getResType()->getTypeKind(), std::string("COMPTYPE"));
        QCOMPARE(assembler.getResType(), type("Trucks"));
    }

    void aRenamedTypeKeepsItsObjectAndItsHolders() {
        add("Soil");
        add("Truck");
        select("Soil");
        cResType* soil = type("Soil");
        cNodeQueue& queue = network->addQueue("Pile", *soil);
        announced.clear();

        line("typeNameEdit")->setText("Earth");
        pressOk();

        QCOMPARE(listed(), (QStringList{"Default", "Earth", "Truck"}));
        QCOMPARE(type("Soil"), nullptr);
        QCOMPARE(type("Earth"), soil);
        QCOMPARE(soil->getTypeName(), std::string("Earth"));
        QCOMPARE(queue.getResType(), soil);
        QVERIFY(!dialog->getRecords().contains("Soil"));
        QCOMPARE(dialog->getRecords().at("Earth")->name, std::string("Earth"));
        QCOMPARE(announced, QStringList{"Soil -> Earth"});
        QVERIFY(dialog->isHidden());
    }

    void aChangeOfKindTakesTheNewNameToo() {
        add("Soil");
        line("typeNameEdit")->setText("Fleet");

        radio("compoundButton")->click();

        QCOMPARE(listed(), (QStringList{"Default", "Fleet"}));
        QCOMPARE(type("Fleet")->getTypeKind(), std::string("COMPTYPE"));
    }

    void aNameThatCannotBeTakenIsPutBack_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("empty") << "";
        QTest::newRow("blanks") << "  ";
        QTest::newRow("semicolons") << ";;";
        QTest::newRow("of another type") << "Default";
    }
    void aNameThatCannotBeTakenIsPutBack() {
        QFETCH(QString, typed);
        add("Soil");

        line("typeNameEdit")->setText(typed);
        pressOk();

        QCOMPARE(listed(), (QStringList{"Default", "Soil"}));
        QCOMPARE(line("typeNameEdit")->text(), "Soil");
    }

    void cancelAppliesNothing() {
        add("Soil");
        line("typeNameEdit")->setText("Earth");

        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel), Qt::LeftButton);

        QCOMPARE(listed(), (QStringList{"Default", "Soil"}));
        QVERIFY(dialog->isHidden());
    }

    void resettingLeavesNoTypeAtAll() {
        add("Soil");

        dialog->resetTypes();

        QCOMPARE(listed(), QStringList{});
        QVERIFY(dialog->getRecords().empty());
        QVERIFY(network->resourceTypes.empty());
        QCOMPARE(dialog->currentRecord(), nullptr);
        dialog->refresh();
        QVERIFY(!line("typeNameEdit")->isEnabled());
        QVERIFY(!line("savePropsEdit")->isEnabled());
        dialog->addResType("Default", "GENTYPE");
        QCOMPARE(listed(), QStringList{"Default"});
    }

    void refreshShowsTheSelectedTypeOrElseTheFirst() {
        add("Ash");
        list()->setCurrentItem(nullptr);
        line("addEdit")->setText("left over");

        dialog->refresh();

        QCOMPARE(line("addEdit")->text(), "");
        QCOMPARE(dialog->currentRecord()->name, std::string("Ash"));
        QCOMPARE(line("typeNameEdit")->text(), "Ash");
        select("Default");
        dialog->refresh();
        QCOMPARE(dialog->currentRecord()->name, std::string("Default"));
    }

    void nothingCanBeChangedDuringARun() {
        add("Soil");
        network->simState = 1;
        dialog->refresh();

        QVERIFY(!line("addEdit")->isEnabled());
        QVERIFY(!line("typeNameEdit")->isEnabled());
        QVERIFY(!radio("compoundButton")->isEnabled());
        radio("compoundButton")->setChecked(true);
        line("typeNameEdit")->setText("Earth");
        pressOk();
        QCOMPARE(type("Soil")->getTypeKind(), std::string("GENTYPE"));
        QCOMPARE(listed(), (QStringList{"Default", "Soil"}));
    }

    void tellsWhenItIsShownAndClosed() {
        dialog->hide();
        const QSignalSpy shown(dialog.get(), &cDialogRes::aboutToShow);
        const QSignalSpy closed(dialog.get(), &cDialogRes::closed);

        dialog->show();
        QCOMPARE(shown.count(), 1);
        pressOk();
        QCOMPARE(closed.count(), 1);
    }
};

QTEST_MAIN(cDialogResTest)
#include "dialogResTest.moc"
