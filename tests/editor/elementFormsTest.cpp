#include "editor/compoundTypeDialog.h"
#include "editor/dialogRes.h"
#include "editor/editorHost.h"
#include "editor/elementPanel.h"
#include "editor/tqAssembler.h"
#include "editor/tqCombi.h"
#include "editor/tqConsolidator.h"
#include "editor/tqDisAssembler.h"
#include "editor/tqDynafork.h"
#include "editor/tqFork.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqNormal.h"
#include "editor/tqQueue.h"
#include "support/messageBox.h"
#include "support/testNetwork.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>
#include <memory>

namespace {

constexpr const char* namingBox =
    "Naming Error: Element name must start with a letter; be less than 16 characters; can contain only letters "
    "numbers, and underscores.";

/// A host whose user adds the compound type "Fleet" when asked for types.
class cTestHost : public cEditorHost {
public:
    int captionPointSize() const override { return 8; }
    void editResourceTypes() override {
        cNetwork::current().resourceTypes["Fleet"] = std::make_unique<cResTypeCompound>("Fleet");
    }
};

/// The labels of the rows that are shown, and the class of each one's field.
QStringList rowsOf(QDialog& panel, bool isClassTold) {
    auto* form = panel.findChild<QFormLayout*>();
    QStringList rows;
    for (int i = 0; i < form->rowCount(); ++i) {
        if (!form->isRowVisible(i)) continue;
        const QString label = qobject_cast<QLabel*>(form->itemAt(i, QFormLayout::LabelRole)->widget())->text();
        const char* fieldClass = form->itemAt(i, QFormLayout::FieldRole)->widget()->metaObject()->className();
        rows.append(isClassTold ? label + "|" + fieldClass : label);
    }
    return rows;
}

}  // namespace

/// The panels of all kinds of element, in a model with the types Default and Soil (generic) and Truck (compound).
class cElementFormsTest : public QObject {
    Q_OBJECT

private:
    template <typename cKind>
    cKind& add(std::shared_ptr<cKind> element, const std::string& name) {
        element->setName(name);
        network->elements[name] = element;
        return *element;
    }
    cTQQueue& addQueue(const std::string& name, const char* typeName) {
        return add(std::make_shared<cTQQueue>(type(typeName)), name);
    }
    cTQCombi& addCombi(const std::string& name) { return add(std::make_shared<cTQCombi>(), name); }
    cTQNormal& addNormal(const std::string& name) { return add(std::make_shared<cTQNormal>(), name); }
    cTQLink& join(const std::string& name, cTQNode& from, cTQNode& to) {
        cTQLink& link = add(std::make_shared<cTQLink>(name), name);
        link.setPredNode(&from);
        link.setSuccNode(&to);
        return link;
    }
    cResType* type(const char* name) { return network->findResourceType(name); }
    static QDialog& panelOf(cTQNetworkElement& element) {
        QDialog& panel = *element.panel();
        element.writeTabs();
        return panel;
    }
    static QLineEdit* line(QDialog& panel, const char* name) { return panel.findChild<QLineEdit*>(name); }
    static QComboBox* box(QDialog& panel) { return panel.findChild<QComboBox*>(); }
    static QStringList itemsOf(const QComboBox* names) {
        QStringList items;
        for (int i = 0; i < names->count(); ++i) items.append(names->itemText(i));
        return items;
    }

    std::unique_ptr<cTestHost> host;
    std::unique_ptr<cDialogRes> dialogRes;
    std::unique_ptr<cTestNetwork> network;

private Q_SLOTS:
    void init() {
        host = std::make_unique<cTestHost>();
        network = std::make_unique<cTestNetwork>();
        network->addGenericType("Default");
        network->addGenericType("Soil");
        network->addCompoundType("Truck");
    }
    void cleanup() {
        network.reset();  // its elements can hold resources of types that the dialog keeps
        dialogRes.reset();
        host.reset();
    }

    void eachKindHasItsTabAndItsRows() {
        struct cCase {
            cTQNetworkElement* element;
            QString title;
            QStringList rows;
        };
        const std::vector<cCase> cases{
            {&addCombi("C"),
             "Combi Properties",
             {"Name:|QLineEdit", "Duration:|QLineEdit", "Priority:|QLineEdit", "Semaphore: |QLineEdit"}},
            {&addNormal("N"), "Normal Properties", {"Name:|QLineEdit", "Duration:|QLineEdit"}},
            {&add(std::make_shared<cTQConsolidator>(), "S"),
             "Consolidator Properties",
             {"Name: |QLineEdit", "Consolidate When: |QTextEdit"}},
            {&addQueue("Q", "Default"),
             "Queue Properties",
             {"Name:|QLineEdit", "Initial Content:|QLineEdit", "Resource Type:|QComboBox", "CurCount : |QLabel"}},
            {&add(std::make_shared<cTQFusionQueue>("", "Q"), "FQ"), "Fusion Queue", {"FusionQueue for: |QComboBox"}},
            {&add(std::make_shared<cTQFork>(type("Default")), "F"),
             "Fork Properties",
             {"Name:|QLineEdit", "Stream:|QLineEdit", "Resource Type:|QComboBox"}},
            {&add(std::make_shared<cTQDynafork>(type("Default")), "D"),
             "Dynafork Properties",
             {"Name:|QLineEdit", "Stream:|QLineEdit", "Resource Type:|QComboBox"}},
            {&add(std::make_shared<cTQAssembler>(), "A"),
             "Assembler Properties",
             {"   Name: |QLineEdit", "ResType: |QWidget"}},
            {&add(std::make_shared<cTQDisAssembler>(), "DA"),
             "Disassmbler Properties",
             {"   Name: |QLineEdit", "ResType: |QWidget", "Stream: |QLineEdit"}},
            {&add(std::make_shared<cTQLink>("L"), "L"),
             "Link Properties",
             {"Name:|QLineEdit", "Incomplete/ Bad Link.|QLabel", "Resource Type:|QComboBox"}},
        };

        for (const cCase& row : cases) {
            QDialog& panel = panelOf(*row.element);
            QCOMPARE(panel.findChild<QTabWidget*>()->count(), 1);
            QCOMPARE(panel.findChild<QTabWidget*>()->tabText(0), row.title);
            QCOMPARE(rowsOf(panel, true), row.rows);
        }
    }

    void aCombisTextsReachTheEngine() {
        cTQCombi& combi = addCombi("C");
        QDialog& panel = panelOf(combi);
        line(panel, "nameEdit")->setText("Load");
        line(panel, "durationEdit")->setText("2+3");
        line(panel, "priorityEdit")->setText("7");
        line(panel, "semaphoreEdit")->setText("SimTime<9");

        const QStringList boxes = boxesDuring([&combi] { combi.editExceptions(); });

        QCOMPARE(boxes, QStringList{});
        QCOMPARE(combi.getName(), std::string("Load"));
        QCOMPARE(network->findElement<cTQCombi>("Load"), &combi);
        QCOMPARE(combi.getDurationText(), std::string("2+3"));
        QCOMPARE(combi.getPriorityText(), std::string("7"));
        QCOMPARE(combi.getSemaphoreText(), std::string("SimTime<9"));
    }

    void aBadDurationStaysMarkedAndKeepsLaterFieldsFromTheEngine() {
        cTQCombi& combi = addCombi("C");
        QDialog& panel = panelOf(combi);
        panel.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QCoreApplication::processEvents();
        line(panel, "durationEdit")->setText("2)");
        line(panel, "priorityEdit")->setText("7");

        for (int attempt = 0; attempt < 2; ++attempt) {
            const QStringList boxes = boxesDuring([&combi] { combi.editExceptions(); });

            QCOMPARE(boxes, QStringList{"Error: Error in expression in recently closed dialog.\n"});
            QVERIFY(panel.isVisible());
            QCOMPARE(line(panel, "durationEdit")->selectedText(), "2)");
            QVERIFY(combi.getPriorityText() != "7");
        }
    }

    void names_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("isAccepted");
        QTest::newRow("15 characters") << "Abcdefghijklmn5" << true;
        QTest::newRow("16 characters") << "Abcdefghijklmno6" << false;
        QTest::newRow("underscore") << "a_1" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("digit first") << "1a" << false;
        QTest::newRow("blank") << "a b" << false;
        QTest::newRow("letter beyond ASCII") << "\u00e4" << false;
        QTest::newRow("of another element") << "Other" << false;
        QTest::newRow("its own") << "N" << true;
    }
    void names() {
        QFETCH(QString, typed);
        QFETCH(bool, isAccepted);
        addNormal("Other");
        cTQNormal& normal = addNormal("N");
        QDialog& panel = panelOf(normal);
        line(panel, "nameEdit")->setText(typed);
        line(panel, "durationEdit")->setText("4");

        const QStringList boxes = boxesDuring([&normal] { normal.editExceptions(); });

        QCOMPARE(boxes, isAccepted ? QStringList{} : QStringList{namingBox});
        QCOMPARE(QString::fromStdString(normal.getName()), isAccepted ? typed : QString("N"));
        QCOMPARE(normal.getDurationText(), std::string("4"));
    }

    void aConsolidatorTakesItsConditionInSeveralLines() {
        cTQConsolidator& consolidator = add(std::make_shared<cTQConsolidator>(), "S");
        QDialog& panel = panelOf(consolidator);
        panel.findChild<QTextEdit*>("consolidateWhenEdit")->setPlainText("SimTime>3");

        consolidator.readTabs();

        QCOMPARE(consolidator.getFiringConditionText(), std::string("SimTime>3"));
    }

    void aQueueShowsItsContentAndItsType() {
        cTQQueue& queue = addQueue("Q", "Soil");
        queue.setInitialContentText("5");
        cResGen amount(type("Soil"), 2.5);
        queue.receive(amount);

        QDialog& panel = panelOf(queue);

        QCOMPARE(line(panel, "initialContentEdit")->text(), "5");
        QCOMPARE(panel.findChild<QLabel*>("curCountLabel")->text(), "2.5");
        QCOMPARE(itemsOf(box(panel)), (QStringList{"Default", "Soil", "Truck"}));
        QCOMPARE(box(panel)->currentText(), "Soil");
    }

    void aChangeOfTypeMovesTheHolder() {
        cTQQueue& queue = addQueue("Q", "Soil");
        cTQFork& fork = add(std::make_shared<cTQFork>(type("Soil")), "F");
        cTQDynafork& dynafork = add(std::make_shared<cTQDynafork>(type("Soil")), "D");
        for (cTQNode* node :
             {static_cast<cTQNode*>(&queue), static_cast<cTQNode*>(&fork), static_cast<cTQNode*>(&dynafork)}) {
            QDialog& panel = panelOf(*node);
            box(panel)->setCurrentText("Truck");
            node->readTabs();
        }

        QVERIFY(type("Soil")->getHolders().empty());
        QCOMPARE(type("Truck")->getHolders(), (std::vector<cHomogHolder*>{&queue, &fork, &dynafork}));
        QCOMPARE(queue.getResType(), type("Truck"));
    }

    void typeListsFollowARenaming() {
        cTQQueue& queue = addQueue("Q", "Soil");
        cTQFork& fork = add(std::make_shared<cTQFork>(type("Default")), "F");
        QDialog& queuePanel = panelOf(queue);
        QDialog& forkPanel = panelOf(fork);
        network->resourceTypes.rename("Soil", "Earth");

        queue.populateResCB("Earth", "Soil");
        fork.populateResCB("Earth", "Soil");

        QCOMPARE(itemsOf(box(queuePanel)), (QStringList{"Default", "Earth", "Truck"}));
        QCOMPARE(box(queuePanel)->currentText(), "Earth");
        QCOMPARE(box(forkPanel)->currentText(), "Default");
    }

    void streamsAreShownAndNotRead() {
        cTQFork& fork = add(std::make_shared<cTQFork>(type("Default")), "F");
        QDialog& panel = panelOf(fork);
        line(panel, "streamEdit")->setText("1+*");

        QCOMPARE(boxesDuring([&fork] { fork.editExceptions(); }), QStringList{});

        fork.writeTabs();
        QCOMPARE(line(panel, "streamEdit")->text(), "1+*");
    }

    void fieldsAreClosedDuringARun() {
        cTQCombi& combi = addCombi("C");
        network->simState = 1;
        QDialog& panel = panelOf(combi);

        QVERIFY(!line(panel, "durationEdit")->isEnabled());
        network->simState = 0;
        combi.writeTabs();
        QVERIFY(line(panel, "durationEdit")->isEnabled());
    }

    void aFusionQueueListsTheQueuesAndFollowsARenaming() {
        cTQQueue& pile = addQueue("Pile", "Soil");
        addQueue("Other", "Soil");
        cTQFusionQueue& fusion = add(std::make_shared<cTQFusionQueue>("", "Pile"), "FQ");
        QDialog& panel = panelOf(fusion);
        QCOMPARE(itemsOf(box(panel)), (QStringList{"Other", "Pile"}));
        QCOMPARE(box(panel)->currentText(), "Pile");

        QDialog& queuePanel = panelOf(pile);
        line(queuePanel, "nameEdit")->setText("Heap");
        pile.readTabs();

        QCOMPARE(fusion.getQueueName(), std::string("Heap"));
        QCOMPARE(itemsOf(box(panel)), (QStringList{"Heap", "Other"}));
        QCOMPARE(box(panel)->currentText(), "Heap");
    }

    void aFusionQueueMovesItsLinksToTheChosenQueue() {
        cTQQueue& pile = addQueue("Pile", "Soil");
        cTQQueue& other = addQueue("Other", "Soil");
        cTQFusionQueue& fusion = add(std::make_shared<cTQFusionQueue>("", "Pile"), "FQ");
        cTQLink& link = join("L", fusion, addCombi("C"));
        QCOMPARE(link.getPredNode(), static_cast<cNode*>(&pile));
        QDialog& panel = panelOf(fusion);

        box(panel)->setCurrentText("Other");
        fusion.readTabs();

        QCOMPARE(fusion.getQueueName(), std::string("Other"));
        QCOMPARE(link.getPredNode(), static_cast<cNode*>(&other));
        QVERIFY(pile.getOutLinks().empty());
    }

    void aLinkShowsTheRowsOfItsKindAndType() {
        cTQCombi& combi = addCombi("C");
        cTQQueue& soil = addQueue("Soil1", "Soil");
        cTQQueue& trucks = addQueue("Trucks", "Truck");
        cTQFork& fork = add(std::make_shared<cTQFork>(type("Soil")), "F");
        cTQLink& mismatch = add(std::make_shared<cTQLink>("L6"), "L6");
        mismatch.setPredNode(&fork);
        mismatch.setSuccNode(&trucks);
        struct cCase {
            cTQLink* link;
            QStringList rows;
        };
        const std::vector<cCase> cases{
            {&join("L1", soil, combi), {"Name:", "Draw Condition:", "DrawAmount:", "Resource Type:"}},
            {&join("L2", trucks, combi),
             {"Name:", "Draw Condition:", "Draw Until:", "Draw Order:", "Draw Where:", "Resource Type:"}},
            {&join("L3", combi, soil), {"Name:", "ReleaseAmount:", "Resource Type:"}},
            {&join("L4", combi, trucks),
             {"Name:", "Release Until: ", "Release Order: ", "Release Where: ", "Resource Type:"}},
            {&join("L5", fork, soil), {"Name:", "Strength:", "Resource Type:"}},
            {&mismatch, {"Name:", "Resource Type:"}},
            {&add(std::make_shared<cTQLink>("L7"), "L7"), {"Name:", "Incomplete/ Bad Link.", "Resource Type:"}},
        };

        for (const cCase& row : cases) QCOMPARE(rowsOf(panelOf(*row.link), false), row.rows);
    }

    void aBadLinkSaysWhatIsWrong() {
        QDialog& panel = panelOf(add(std::make_shared<cTQLink>("L"), "L"));

        QCOMPARE(panel.findChild<QLabel*>("badLinkLabel")->text(),
                 "This link is not connected properly. Ensure that only queues precede combis and that only combis "
                 "succeed queues.");
    }

    void theTextOfABadLinkIsWholeAtAnyWidth_data() {
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("isOneLine");
        QTest::newRow("narrow") << 500 << false;
        QTest::newRow("wide") << 2000 << true;
    }
    void theTextOfABadLinkIsWholeAtAnyWidth() {
        QFETCH(int, width);
        QFETCH(bool, isOneLine);
        QDialog& panel = panelOf(add(std::make_shared<cTQLink>("L"), "L"));
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(new QWidget, 1);  // where the canvas is
        layout->addWidget(&panel);
        const auto giveBack = qScopeGuard([&] { panel.setParent(nullptr); });
        window.resize(width, 600);
        window.show();
        panel.show();
        QCoreApplication::sendPostedEvents();

        const auto* label = panel.findChild<QLabel*>("badLinkLabel");
        QCOMPARE(label->height(), label->heightForWidth(label->width()));
        QCOMPARE(label->contentsRect().height() < 2 * label->fontMetrics().lineSpacing(), isOneLine);
    }

    void aLinkReadsTheRulesThatAreShown() {
        cTQLink& link = join("L", addQueue("Q", "Soil"), addCombi("C"));
        QDialog& panel = panelOf(link);
        line(panel, "nameEdit")->setText("Draw1");
        line(panel, "drawConditionEdit")->setText("PredNode.CurCount>2");
        line(panel, "drawAmountEdit")->setText("3");
        line(panel, "drawUntilEdit")->setText("8");

        link.readTabs();

        QCOMPARE(link.getName(), std::string("Draw1"));
        QCOMPARE(link.getRuleText(eLinkRule::enough), std::string("PredNode.CurCount>2"));
        QCOMPARE(link.getRuleText(eLinkRule::drawAmt), std::string("3"));
        QCOMPARE(link.getRuleText(eLinkRule::drawUntil), std::string("nDraws"));
    }

    void releaseAmountAndStrengthBeginWithOne() {
        QDialog& panel = panelOf(add(std::make_shared<cTQLink>("L"), "L"));

        QCOMPARE(line(panel, "releaseAmountEdit")->text(), "1");
        QCOMPARE(line(panel, "strengthEdit")->text(), "1");
    }

    void aBadStrengthStaysMarked() {
        cTQFork& fork = add(std::make_shared<cTQFork>(type("Soil")), "F");
        cTQLink& link = join("L", fork, addQueue("Q", "Soil"));
        QDialog& panel = panelOf(link);
        panel.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QCoreApplication::processEvents();
        QCOMPARE(line(panel, "strengthEdit")->text(), "1");
        line(panel, "strengthEdit")->setText("2)");

        const QStringList boxes = boxesDuring([&link] { link.editExceptions(); });

        QCOMPARE(boxes.size(), 1);
        QCOMPARE(line(panel, "strengthEdit")->selectedText(), "2)");
        QCOMPARE(line(panel, "strengthEdit")->palette().color(QPalette::Highlight), QColor(Qt::blue));
        QVERIFY(panel.isVisible());
    }

    void onlyALinkBetweenTwoActivitiesHasATypeOfItsOwn() {
        cTQCombi& combi = addCombi("C");
        cTQLink& drawn = join("L1", addQueue("Q", "Soil"), combi);
        cTQLink& released = join("L2", combi, addNormal("N"));
        QVERIFY(!box(panelOf(drawn))->isEnabled());
        QDialog& panel = panelOf(released);
        QVERIFY(box(panel)->isEnabled());

        box(panel)->setCurrentText("Truck");
        released.readTabs();

        QCOMPARE(released.getResType(), type("Truck"));
        QCOMPARE(rowsOf(panelOf(released), false),
                 (QStringList{"Name:", "Release Until: ", "Release Order: ", "Release Where: ", "Resource Type:"}));
    }

    void renamingATypeInUseReachesEveryPanel() {
        dialogRes = std::make_unique<cDialogRes>(*network);
        dialogRes->addResType("Fleet", "COMPTYPE");
        cTQAssembler& assembler = add(std::make_shared<cTQAssembler>(), "A");
        cTQDisAssembler& disassembler = add(std::make_shared<cTQDisAssembler>(), "DA");
        assembler.setResType(type("Fleet"));
        disassembler.setResType(type("Fleet"));
        const std::vector<cTQNetworkElement*> users{
            &addQueue("Q", "Fleet"), &add(std::make_shared<cTQFork>(type("Fleet")), "F"),
            &add(std::make_shared<cTQDynafork>(type("Fleet")), "D"), &assembler, &disassembler};
        for (cTQNetworkElement* user : users) {
            panelOf(*user);
            connect(dialogRes.get(), &cDialogRes::newResAdded, user, &cTQNetworkElement::populateResCB);
        }

        dialogRes->refresh();
        dialogRes->findChild<QLineEdit*>("typeNameEdit")->setText("Lorries");
        dialogRes->findChild<QDialogButtonBox*>()->accepted();

        for (cTQNetworkElement* user : users) {
            QDialog& panel = *user->panel();
            const QComboBox* list = box(panel);
            QCOMPARE(list != nullptr ? list->currentText() : line(panel, "compoundTypeEdit")->text(), "Lorries");
        }
    }

    void theChosenTypeIsToldTogetherWithTheNode() {
        cTQAssembler& assembler = add(std::make_shared<cTQAssembler>(), "A");
        cTQDisAssembler& disassembler = add(std::make_shared<cTQDisAssembler>(), "DA");
        QStringList told;
        const auto choose = [&told](cTQNode& node, const std::function<void()>& press) {
            connect(&node, &cTQNode::resDlgClosed, &node, [&told](cHomogHolder* holder, const QString& typeName) {
                told.append(QString::fromStdString(dynamic_cast<cNetworkElement&>(*holder).getName()) + typeName);
            });
            QTimer::singleShot(0, &node, [&told] {
                QWidget* chooser = QApplication::activeModalWidget();
                told.append(chooser->windowTitle());
                chooser->findChild<QComboBox*>()->setCurrentText("Truck");
                chooser->findChild<QPushButton*>("acceptTypeButton")->click();
            });
            press();
        };

        choose(assembler, [&] { panelOf(assembler).findChild<QPushButton*>("compoundTypeEditButton")->click(); });
        choose(disassembler, [&] { panelOf(disassembler).findChild<QPushButton*>("compoundTypeEditButton")->click(); });

        QCOMPARE(told,
                 (QStringList{"Specify Resource of Assembler", "ATruck", "Specify Resource of Queue", "DATruck"}));
    }

    void compoundTypesAreOfferedBehindAnEmptyEntry() {
        const QString title = "Specify Resource of Assembler";
        cCompoundTypeDialog dialog(title);

        QVERIFY(dialog.minimumWidth() > dialog.fontMetrics().horizontalAdvance(title));
        QCOMPARE(itemsOf(box(dialog)), (QStringList{"", "Truck"}));
        QCOMPARE(box(dialog)->currentIndex(), 0);
        QStringList texts;
        for (const QPushButton* button : dialog.findChildren<QPushButton*>()) texts.append(button->text());
        texts.sort();
        QCOMPARE(texts, (QStringList{"Accept", "Add New Resource"}));
        QVERIFY(dialog.isModal());
    }

    void acceptIsClosedWhileTheEmptyEntryIsChosen() {
        cCompoundTypeDialog dialog("Specify Resource of Assembler");
        const auto* accept = dialog.findChild<QPushButton*>("acceptTypeButton");

        QVERIFY(!accept->isEnabled());
        box(dialog)->setCurrentIndex(1);
        QVERIFY(accept->isEnabled());
        box(dialog)->setCurrentIndex(0);
        QVERIFY(!accept->isEnabled());
    }

    void theChoiceOfACompoundTypeFollowsARenaming() {
        cCompoundTypeDialog dialog("Specify Resource of Assembler");
        dialog.chooseType("Truck");
        network->resourceTypes.rename("Truck", "Lorry");

        dialog.populateResCB("Lorry", "Truck");

        QCOMPARE(dialog.chosenType(), "Lorry");
        network->resourceTypes.rename("Lorry", "Van");
        dialog.populateResCB("Other", "Other");
        QCOMPARE(dialog.chosenType(), "");
        QVERIFY(!dialog.findChild<QPushButton*>("acceptTypeButton")->isEnabled());
    }
};

QTEST_MAIN(cElementFormsTest)
#include "elementFormsTest.moc"
