#include "app/globalCodeDialog.h"
#include "editor/dialogRes.h"
#include "editor/elementPanel.h"
#include "editor/linkHandle.h"
#include "editor/nodePoint.h"
#include "editor/tqConsolidator.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqScene.h"
#include "editor/tqView.h"
#include "support/drawnModel.h"
#include "support/messageBox.h"
#include "support/smallModel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>

/// The model of the window as a file, there and back.
class cModelFileTest : public QObject {
    Q_OBJECT

private:
    QString path(const char* name) const { return home->filePath(QLatin1String(name)); }
    static void put(const QString& path, const QByteArray& text) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }
    static QByteArray get(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(can't be read)");
    }
    /// Loads a model of that text. No box may block.
    void load(tsApp& window, const QByteArray& text) {
        put(path("loaded.tbsmx"), text);
        QCOMPARE(boxesDuring([&] { window.loadModel(path("loaded.tbsmx").toStdString()); }), QStringList());
    }
    QByteArray saved(tsApp& window) {
        [&] { QVERIFY(window.writeModelFile(path("saved.tbsmx"))); }();
        return get(path("saved.tbsmx"));
    }
    QStringList lines(tsApp& window, const char* keyword) {
        QStringList found;
        for (const QString& line : QString::fromUtf8(saved(window)).split('\n'))
            if (line.startsWith(QLatin1String(keyword))) found.append(line);
        return found;
    }
    static QStringList remarks(const tsApp& window) {
        QStringList told;
        for (const auto* box : window.findChildren<QMessageBox*>(QStringLiteral("remarkBox")))
            if (box->isVisible()) told.append(box->informativeText().split('\n'));
        return told;
    }
    template <typename cField>
    static cField& field(cTQNetworkElement& element, const char* name) {
        return *element.panel()->findChild<cField*>(QLatin1String(name));
    }
    template <typename cKind>
    static cKind& find(const tsApp& window, const char* name) {
        auto* found = dynamic_cast<cKind*>(window.findElement<cNetworkElement>(name));
        if (found == nullptr) qFatal("no %s", name);
        return *found;
    }

    std::unique_ptr<QTemporaryDir> home;

private Q_SLOTS:
    void init() {
        home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home->path().toLocal8Bit());
        cNetworkElement::setElementCounter(0);
    }

    // ---- writing

    /// A queue, a Combi and a draw link, most of whose fields were emptied and not confirmed. Draw Until is empty in
    /// the engine as well: where its field alone is empty, what the engine has is written.
    void smallModelIsWrittenByteForByte() {
        tsApp window;
        cNetworkElement::setElementCounter(0);
        load(window,
             "GENTYPE Default;\nCOMBI C1;\nQUEUE Q1 Default;\nDRAWLINK L1 Q1 C1;\nTBINITIALCONTENT Q1 3;\n"
             "/<CODE>\nVARIABLE Cycles 0;\n/<CODE>\nPOSNODE C1 320 140;\nPOSNODE Q1 120 140;\nPOSLINK L1 3 11 0 0;\n");
        auto& combi = find<cTQCombi>(window, "C1");
        field<QLineEdit>(combi, "durationEdit").setText("5");
        for (const char* name : {"priorityEdit", "semaphoreEdit"}) field<QLineEdit>(combi, name).clear();
        auto& link = find<cTQLink>(window, "L1");
        link.setRuleText(eLinkRule::drawUntil, "");
        for (const char* name :
             {"drawConditionEdit", "drawUntilEdit", "drawOrderEdit", "drawWhereEdit", "releaseAmountEdit",
              "releaseUntilEdit", "releaseOrderEdit", "releaseWhereEdit", "strengthEdit"})
            field<QLineEdit>(link, name).clear();

        QCOMPARE(QString::fromUtf8(saved(window)), QString::fromStdString(smallModel));
    }

    void savingTwiceWithoutAChangeGivesTheSameBytes() {
        cDrawnModel model;
        const QByteArray first = saved(model.window);

        QVERIFY(first.contains("DRAWLINK Draws Soil Load;\n"));
        QCOMPARE(saved(model.window), first);
    }

    void whatIsTypedIsSavedBeforeTheEngineHasIt() {
        cDrawnModel model;
        field<QLineEdit>(*model.load, "durationEdit").setText(" 3 + ( ");
        field<QLineEdit>(*model.soil, "initialContentEdit").setText("8");
        field<QLineEdit>(*model.draws, "drawAmountEdit").setText("2");

        QCOMPARE(lines(model.window, "DURATION"), QStringList("DURATION Load 3 + (;"));
        QVERIFY(lines(model.window, "TBINITIAL").contains("TBINITIALCONTENT Soil 8;"));
        QVERIFY(lines(model.window, "DRAWAMT").contains("DRAWAMT Draws 1;"));  // but for this one
        QCOMPARE(QString::fromStdString(model.load->getDurationText()), QStringLiteral("10"));
    }

    void severalLinesOfConsolidateWhenAreWrittenAndTheFirstIsRead() {
        cDrawnModel model;
        auto& batch = model.drop<cTQConsolidator>("Consolidator", {500, 100}, "Zone");
        field<QTextEdit>(batch, "consolidateWhenEdit").setPlainText("1+\nPRIORITY Load 7;\n2");
        QVERIFY(saved(model.window).contains("CONSOLIDATEWHEN Zone 1+\nPRIORITY Load 7;\n2;\n"));
        QVERIFY(remarks(model.window)
                    .contains("CONSOLIDATEWHEN of Zone has several lines; only the first will be "
                              "read."));

        load(model.window, saved(model.window));
        auto& reread = find<cTQConsolidator>(model.window, "Zone");
        QCOMPARE(QString::fromStdString(reread.getFiringConditionText()), QStringLiteral("1+"));
        // The line behind it went through the ordinary tests.
        QCOMPARE(QString::fromStdString(find<cTQCombi>(model.window, "Load").getPriorityText()), QStringLiteral("7"));
    }

    void incompleteLinksAreToldOnceAndLeftOut() {
        cDrawnModel model;
        model.drop<cTQLink>("Link", {300, 300}, "Loose");
        model.drop<cTQLink>("Link", {300, 300}, "Looser");
        model.draws->dropHandle(true, nullptr);

        const QStringList told = boxesDuring([&] { QVERIFY(model.window.writeModelFile(path("saved.tbsmx"))); });

        QCOMPARE(told, QStringList("Information.: Incomplete links will not be written to file."));
        const QByteArray text = get(path("saved.tbsmx"));
        QVERIFY(!text.contains("Loose") && !text.contains(" Draws "));
        QVERIFY(text.contains("RELEASELINK Releases Load Hauled;\n") && text.contains("POSLINK Releases "));
    }

    void nodesWithoutATypeComeBack() {
        cDrawnModel model;
        model.drop<cTQNode>("Assembler", {500, 100}, "Build");
        model.drop<cTQNode>("Disassembler", {600, 100}, "Split");

        load(model.window, saved(model.window));

        QCOMPARE(lines(model.window, "ASSEMBLER"), QStringList("ASSEMBLER Build;"));
        QCOMPARE(lines(model.window, "DISASSEMBLER"), QStringList("DISASSEMBLER Split;"));
    }

    void aTypeReadFromACharTypeStatementIsNotWrittenBack() {
        tsApp window;
        load(window, "CHARTYPE Truck;\nGENTYPE Soil;\nQUEUE Pit Soil;\n");

        QVERIFY(saved(window).startsWith("GENTYPE Soil;\nQUEUE Pit Soil;\n"));
        QVERIFY(remarks(window).first().contains("Truck"));
    }

    void savePropertiesAreNeverWritten() {
        tsApp window;
        load(window, "COMPTYPE Frame;\nSAVEPROPS Frame Weight Length;\nCOMBI C1;\n");

        QVERIFY(!saved(window).contains("SAVEPROPS"));
    }

    void aNameThatEndsReadingIsTold() {
        cDrawnModel model;
        model.drop<cTQQueue>("Queue", {500, 100}, "MYQUEUE");

        saved(model.window);

        QCOMPARE(remarks(model.window).size(), 2);
        QVERIFY(
            remarks(model.window).first().startsWith("Reading the file will go wrong at \"TBINITIALCONTENT MYQUEUE"));
    }

    // ---- reading

    void elementsComeBackWhereTheyWere() {
        cDrawnModel model;
        model.load->setPos(1234.5678, 987654.321);

        load(model.window, saved(model.window));

        const auto& combi = find<cTQCombi>(model.window, "Load");
        QCOMPARE(combi.pos(), QPointF(1234.57, 987654.0));
        QVERIFY(model.window.findChild<cTQScene*>()->items().contains(&combi));
        QCOMPARE(QString::fromStdString(find<cTQQueue>(model.window, "Soil").getInitialContentText()), "5");
        QVERIFY(model.window.combis.contains("Load"));
    }

    void linksComeBackOnTheirPoints() {
        cDrawnModel model;
        load(model.window, saved(model.window));

        auto& draws = find<cTQLink>(model.window, "Draws");
        QCOMPARE(draws.getLinkKind(), kindDraw);
        QCOMPARE(draws.startCP()->attachment(), find<cTQQueue>(model.window, "Soil").cpByIndex(0));
        QCOMPARE(draws.endCP()->attachment(), find<cTQCombi>(model.window, "Load").cpByIndex(4));
        QCOMPARE(draws.startCP()->scenePos(), draws.startCP()->attachment()->scenePosition());
        QCOMPARE(draws.endCP()->side, draws.endCP()->attachment()->side);
    }

    void readingAFileDoesNotMarkTheDocument() {
        tsApp window;
        load(window, "COMBI C;\nPOSNODE C 100 100;\n");

        QVERIFY(!window.isModified());
        QVERIFY(!window.isWindowModified());
    }

    void aNodeMovedByItsPositionTakesItsLinksAlong() {
        tsApp window;
        load(window, "GENTYPE D;\nQUEUE Q D;\nCOMBI C;\nDRAWLINK L Q C;\nPOSLINK L 0 4 0 0;\nPOSNODE Q 500 300;\n");

        const auto& link = find<cTQLink>(window, "L");
        QCOMPARE(link.startCP()->scenePos(), find<cTQQueue>(window, "Q").cpByIndex(0)->scenePosition());
    }

    void aFileWithoutPositionsHasEverythingAtOnePlaceAndItsLinksJoined() {
        tsApp window;
        load(window, "GENTYPE D;\nQUEUE Q D;\nCOMBI C;\nDRAWLINK L Q C;\nPOSLINK L 77 -1 0 0;\n");

        QCOMPARE(find<cTQQueue>(window, "Q").pos(), QPointF(200.0, 200.0));
        QCOMPARE(find<cTQLink>(window, "L").pos(), QPointF(200.0, 200.0));
        for (const tLinkCP* handle : {find<cTQLink>(window, "L").startCP(), find<cTQLink>(window, "L").endCP()})
            QVERIFY(handle->attachment() != nullptr);
    }

    void aPositionThatIsNoPlaceIsPassedOver() {
        tsApp window;
        load(window, "COMBI C;\nPOSNODE C 1e999 nan;\n");

        QCOMPARE(find<cTQCombi>(window, "C").pos(), QPointF(200.0, 200.0));
    }

    /// The link comes back on the fusion queue; its points are those of the queue behind it.
    void aLinkOnAFusionQueueComesBackOnIt() {
        cDrawnModel model;
        auto& fusion = model.drop<cTQFusionQueue>("FusionQueue", {500, 300}, "Again");
        fusion.fuseWith("Hauled");
        model.releases->dropHandle(false, fusion.cpByIndex(2));
        QVERIFY(lines(model.window, "POSLINK").contains("POSLINK Releases 0 2 0 Again;"));
        const QByteArray first = saved(model.window);
        QVERIFY(first.contains("FUSIONQUEUE Again Hauled;\n\nDRAWLINK"));
        QVERIFY(first.contains("RELEASELINK Releases Load Again;\n"));

        load(model.window, first);

        auto& releases = find<cTQLink>(model.window, "Releases");
        auto& hauled = find<cTQQueue>(model.window, "Hauled");
        QCOMPARE(releases.fusionAt(false), &find<cTQFusionQueue>(model.window, "Again"));
        QCOMPARE(releases.getSuccNode(), static_cast<cNode*>(&hauled));
        QCOMPARE(releases.endCP()->attachment(), hauled.cpByIndex(2));
        QCOMPARE(saved(model.window), first);
        model.window.removeElement(&releases.fusionAt(false)->engineElement());
        QCOMPARE(releases.getSuccNode(), nullptr);
        QCOMPARE(releases.endCP()->attachment(), nullptr);
    }

    void fusionNamesOfPositionsAreNotConsulted() {
        tsApp window;
        load(window, "GENTYPE D;\nQUEUE Q D;\nCOMBI C;\nFUSIONQUEUE F Q;\nDRAWLINK L Q C;\nPOSLINK L 1 4 F 0;\n");

        QCOMPARE(find<cTQLink>(window, "L").fusionAt(true), nullptr);
    }

    void fieldsShowWhatWasReadBeforeAnythingIsSelected() {
        tsApp window;
        load(window, "COMBI Load;\nDURATION Load 2 + 3 ;\n");
        auto& combi = find<cTQCombi>(window, "Load");
        QCOMPARE(combi.isSelected(), false);
        QCOMPARE(combi.hasPanel(), false);

        combi.setDurationText("7");  // not the user's doing: no field shows it until it is asked to
        QCOMPARE(combi.typedText("DURATION"), QStringLiteral("2+3"));  // blanks are lost
        QCOMPARE(combi.hasPanel(), false);
        QCOMPARE(field<QLineEdit>(combi, "durationEdit").text(), QStringLiteral("7"));
    }

    void aRunChangesNothingThatIsSaved_data() {
        QTest::addColumn<bool>("isSelectedBefore");
        QTest::newRow("nothing was selected") << false;
        QTest::newRow("all was selected") << true;
    }
    void aRunChangesNothingThatIsSaved() {
        QFETCH(bool, isSelectedBefore);
        tsApp window;
        load(window,
             "GENTYPE D;\nCOMBI C;\nQUEUE Q D;\nDRAWLINK L Q C;\nDURATION C 5;\nTBINITIALCONTENT Q 3;\n"
             "/<CODE>\nSETATTRIBUTE Q InitialContent 99;\nSETATTRIBUTE C Duration 7;\nSIMULATE;\n/<CODE>\n");
        if (isSelectedBefore)
            for (const char* name : {"C", "Q", "L"}) window.elemSelected(&find<cTQNetworkElement>(window, name));
        const QByteArray before = saved(window);
        QVERIFY(before.contains("DURATION C 5;\n") && before.contains("TBINITIALCONTENT Q 3;\n"));

        boxesDuring([&] { window.runReplications(); });

        QCOMPARE(QString::fromStdString(find<cTQCombi>(window, "C").getDurationText()), QStringLiteral("7"));
        QCOMPARE(QString::fromStdString(find<cTQQueue>(window, "Q").getInitialContentText()), QStringLiteral("99"));
        QCOMPARE(saved(window), before);
    }

    void semicolonsInsideAValueAreLost() {
        tsApp window;
        load(window, "COMBI C;\nDURATION C 1;2 ;3;\n");

        QCOMPARE(QString::fromStdString(find<cTQCombi>(window, "C").getDurationText()), QStringLiteral("123"));
    }

    void anUpperCaseNameThatEndsInAKeywordEndsTheReading() {
        tsApp window;
        load(window, "GENTYPE D;\nQUEUE MYQUEUE D;\nTBINITIALCONTENT MYQUEUE 4;\nCOMBI Late;\n");

        QCOMPARE(window.findElement<cNetworkElement>("Late"), nullptr);
        QCOMPARE(QString::fromStdString(find<cTQQueue>(window, "MYQUEUE").getInitialContentText()),
                 QStringLiteral("0"));
        QVERIFY(remarks(window).first().startsWith("Line 3: reading stopped here"));
    }

    void positionOfSuchANameEndsTheReadingToo() {
        tsApp window;
        load(window, "GENTYPE D;\nQUEUE MYQUEUE D;\nPOSNODE MYQUEUE 1 2;\nCOMBI Late;\n");

        QCOMPARE(window.findElement<cNetworkElement>("Late"), nullptr);
        QCOMPARE(find<cTQQueue>(window, "MYQUEUE").pos(), QPointF(200.0, 200.0));
    }

    void anElementCalledLikeSavePropsIsMadeAndItsLineReadTwice() {
        tsApp window;
        load(window, "COMBI SAVEPROPS1;\nDURATION SAVEPROPS1 5;\n");

        // The duration's line counts as one of save properties, and so sets nothing.
        QCOMPARE(QString::fromStdString(find<cTQCombi>(window, "SAVEPROPS1").getDurationText()),
                 QString::fromStdString(cTQCombi().getDurationText()));
    }

    void aFileCutShortBehindThePositionsKeepsTheCounter() {
        cDrawnModel model;
        QByteArray text = saved(model.window);
        text.truncate(text.indexOf("RANKCOUNT"));

        load(model.window, text);

        QCOMPARE(cNetworkElement::getElementCounter(), 5);
    }

    void theCounterIsRaisedAndNeverLowered() {
        tsApp window;
        load(window, "COMBI A;\nCOMBI B;\nRANKCOUNT 1;\n");
        QCOMPARE(cNetworkElement::getElementCounter(), 2);
        load(window, "COMBI A;\nRANKCOUNT 40;\n");
        QCOMPARE(cNetworkElement::getElementCounter(), 40);
    }

    void runSettingsInAFileDoNotEndTheReading() {
        tsApp window;
        load(window,
             "TBSEED 5;\nTBNREPS 3;\nTBSTREAMS 1;\nTBTIMELIMIT 2;\nTBACTLIMIT 2;\nTBQLIMIT 1;\nTBENOUGHCOND A 1;\n"
             "TBENOUGHVALUE A 1;\nCOMBI Late;\n");

        QCOMPARE(window.replications, 1);
        QVERIFY(window.findElement<cNetworkElement>("Late") != nullptr);
    }

    void loadingTakesThePlaceOfTheModelThatWasThere() {
        cDrawnModel model;
        load(model.window, "COMBI Alone;\n");

        QCOMPARE(model.window.elements.size(), std::size_t{1});
        QVERIFY(model.window.findResourceType("Default") == nullptr);
        QCOMPARE(lines(model.window, "GENTYPE"), QStringList());
    }

    void anEmptyModelComesBackWithoutARemark() {
        tsApp window;
        load(window, saved(window));

        QCOMPARE(remarks(window), QStringList());
        QVERIFY(window.elements.empty());
    }

    void theGlobalCodeComesBackAndIsCompiledAtOnce() {
        tsApp window;
        load(window, "COMBI C;\nDURATION C Pace*2;\n/<CODE>\nVARIABLE Pace 4;\n\nPRIORITY\n/<CODE>\n");

        QCOMPARE(window.findChild<cGlobalCodeDialog*>()->text(), QStringLiteral("VARIABLE Pace 4;\n\nPRIORITY\n"));
        QVERIFY(window.variables.contains("Pace"));
        QCOMPARE(remarks(window), QStringList());
    }

    void noBreakSpacesStayAndEveryLineEndIsALineFeed() {
        tsApp window;
        load(window, "/<CODE>\nPOST \"10\u00A0m\u00B3\";\n/<CODE>\n");
        QVERIFY(saved(window).contains("\nPOST \"10\u00A0m\u00B3\";\n"));

        auto* editor = window.findChild<QTextEdit*>(QStringLiteral("globalCodeEdit"));
        editor->setPlainText("POST 1;");
        editor->moveCursor(QTextCursor::End);
        QTest::keyClick(editor, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(editor, "POST 2;");
        QTest::keyClick(editor, Qt::Key_Return);
        QTest::keyClicks(editor, "POST\u00A03;");
        QVERIFY(saved(window).contains("/<CODE>\nPOST 1;\nPOST 2;\nPOST\u00A03;\n/<CODE>\n"));
    }

    void textThatIsNotUtf8IsReadAllTheSameAndTold() {
        tsApp window;
        load(window,
             "GENTYPE Br\xFC"
             "cke;\nQUEUE Pit Br\xFC"
             "cke;\nCOMBI Dig;\n/<CODE>\nPOST \"\xFC\";\n/<CODE>\n");

        QVERIFY(find<cTQQueue>(window, "Pit").getResType() != nullptr);
        QCOMPARE(remarks(window),
                 (QStringList{"Line 1: is not UTF-8", "Line 2: is not UTF-8", "Line 5: is not UTF-8"}));
        QCOMPARE(lines(window, "GENTYPE"), QStringList(QStringLiteral("GENTYPE Br\uFFFDcke;")));
    }

    void linesOfOtherSystemsAreRead() {
        tsApp window;
        load(window, "\xEF\xBB\xBFGENTYPE D;\r\nQUEUE Pit D;\r\nTBINITIALCONTENT Pit 3;\r\n");

        QCOMPARE(QString::fromStdString(find<cTQQueue>(window, "Pit").getInitialContentText()), QStringLiteral("3"));
    }

    void aNameTakenTwiceCanStillBeDeletedAndSaved() {
        tsApp window;
        load(window, "COMBI A;\nCOMBI A;\nFUSIONQUEUE A Q;\n");
        QCOMPARE(window.elements.size(), std::size_t{1});

        QVERIFY(saved(window).contains("FUSIONQUEUE Element3 Q;\n"));
        window.removeElement(window.elements.begin()->second.get());
        QVERIFY(window.elements.empty());
        QVERIFY(window.combis.empty());
    }

    void aLinkThatCannotTakeItsNameGetsOneAndComesBack() {
        tsApp window;
        load(window,
             "GENTYPE D;\nQUEUE Q D;\nQUEUE R D;\nCOMBI C;\nCOMBI E;\nDRAWLINK FarTooLongForAName Q C;\n"
             "DRAWLINK L Q C;\nDRAWLINK L R E;\nDRAWAMT FarTooLongForAName 7;\n");
        const QStringList links{"DRAWLINK Element5 Q C;", "DRAWLINK Element7 R E;"};
        QCOMPARE(lines(window, "DRAWLINK"), links);
        QVERIFY(lines(window, "DRAWAMT").contains("DRAWAMT Element5 7;"));

        load(window, saved(window));
        QCOMPARE(lines(window, "DRAWLINK"), links);
        QVERIFY(lines(window, "DRAWAMT").contains("DRAWAMT Element5 7;"));
    }

    void markupInAFileIsShownAsItStands() {
        tsApp window;
        load(window, "DURATION <b>C</b> 5;\n");

        const auto* box = window.findChild<QMessageBox*>(QStringLiteral("remarkBox"));
        int plainTexts = 0;
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            if (!label->text().isEmpty()) QCOMPARE(label->textFormat(), Qt::PlainText);
            plainTexts += label->text().contains("<b>C</b>") ? 1 : 0;
        }
        QCOMPARE(plainTexts, 1);
    }

    // ---- the commands

    void titleStatusAndMarkFollowAFile() {
        cDrawnModel model;
        QVERIFY(model.window.isModified());
        QVERIFY(model.window.writeModelFile(path("pit.tbsmx")));
        QVERIFY(model.window.isModified());  // the command says when a document counts as saved

        model.window.loadModel(path("pit.tbsmx").toStdString());
        QCOMPARE(model.window.windowTitle(), QStringLiteral("pit.tbsmx[*] - TIMBERSIM"));
        QCOMPARE(model.window.getCurrentFile(), path("pit.tbsmx"));
        QCOMPARE(model.window.statusBar()->currentMessage(), QStringLiteral("File loaded"));

        model.window.elemSelected(&find<cTQCombi>(model.window, "Load"));
        QVERIFY(model.window.isWindowModified());
        QVERIFY(model.window.save());
        QVERIFY(!model.window.isWindowModified());
        QCOMPARE(model.window.statusBar()->currentMessage(), QStringLiteral("File saved"));
    }

    void saveAsGivesANameItsExtension() {
        cDrawnModel model;
        QTimer::singleShot(0, this, [this] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Save"));
            QCOMPARE(dialog->nameFilters(), QStringList("TIMBERSIM Files(*.tbsmx)"));
            dialog->setDirectory(home->path());
            dialog->selectFile(path("quarry"));
            QMetaObject::invokeMethod(dialog, "accept");
        });

        QVERIFY(model.window.saveAs());

        QVERIFY(QFile::exists(path("quarry.tbsmx")));
        QCOMPARE(model.window.windowTitle(), QStringLiteral("quarry.tbsmx[*] - TIMBERSIM"));
        QVERIFY(!model.window.isModified());
    }

    void saveAsCalledOffSavesNothing() {
        cDrawnModel model;
        QTimer::singleShot(0, this, [] { qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->reject(); });

        QVERIFY(!model.window.saveAs());
        QVERIFY(model.window.isModified());
    }

    void aSaveThatFailsLeavesTheOldFileAndTheMark() {
        cDrawnModel model;
        QVERIFY(QDir().mkdir(path("folder.tbsmx")));
        QVERIFY(QDir().mkdir(path("taken.tbsmx.new")));
        put(path("taken.tbsmx"), "old");
        for (const char* name : {"folder.tbsmx", "taken.tbsmx", "none/where.tbsmx"}) {
            const QStringList told = boxesDuring([&] { QVERIFY(!model.window.writeModelFile(path(name))); });
            QCOMPARE(told.size(), 1);
            QVERIFY(told[0].startsWith("Unable to open file: ") && told[0].size() > 25);
        }
        QCOMPARE(get(path("taken.tbsmx")), QByteArray("old"));
        QVERIFY(model.window.isModified());
    }

    void aSaveThatFailsTellsOfNothingElse() {
        cDrawnModel model;
        model.drop<cTQLink>("Link", {300, 300}, "Loose");

        const QStringList told = boxesDuring([&] { QVERIFY(!model.window.writeModelFile(path("none/where.tbsmx"))); });

        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].startsWith("Unable to open file: "));
    }

    void aFailedLoadDoesNotKeepTheNameOfTheFileBefore() {
        cDrawnModel model;
        QVERIFY(model.window.writeModelFile(path("pit.tbsmx")));
        model.window.loadModel(path("pit.tbsmx").toStdString());
        boxesDuring([&] { model.window.loadModel(home->path().toStdString()); });

        QVERIFY(model.window.getCurrentFile().isEmpty());  // or Save would put the empty model in its place
        QVERIFY(model.window.findResourceType("Default") != nullptr);
        QCOMPARE(model.window.statusBar()->currentMessage(), QStringLiteral("Loading canceled"));
    }
};

QTEST_MAIN(cModelFileTest)
#include "modelFileTest.moc"
