// The actions of the window, its menus and its toolbars.

#include "app/aboutBox.h"
#include "app/animationBar.h"
#include "app/haltBar.h"
#include "app/sizeBar.h"
#include "app/tsApp.h"

#include <QAction>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace {

constexpr int widestSimTime = 100;

}  // namespace

struct tsApp::cActionRow {
    const char* name;
    QString text;
    const char* image = nullptr;  // below the images of the program
    QKeySequence shortcut = {};
    QString statusTip = {};
    QString toolTip = {};  // none: the text
};

QAction* tsApp::makeAction(const cActionRow& row) {
    auto* action = new QAction(row.text, this);
    action->setObjectName(QLatin1String(row.name));
    if (row.image != nullptr) action->setIcon(QIcon(QStringLiteral(":/tsApp/images/") + QLatin1String(row.image)));
    action->setShortcut(row.shortcut);
    action->setStatusTip(row.statusTip);
    if (!row.toolTip.isEmpty()) action->setToolTip(row.toolTip);
    return action;
}

void tsApp::buildActions() {
    newAction = makeAction({"newAction", tr("&New"), "new.png", QKeySequence::New, tr("Create a new file")});
    openAction = makeAction({"openAction", tr("&Open"), "open.png", QKeySequence::Open, tr("Open a new file")});
    saveAction =
        makeAction({"saveAction", tr("&Save"), "save.png", QKeySequence::Save, tr("Save changes to this file")});
    saveAsAction =
        makeAction({"saveAsAction", tr("&Save As"), nullptr, QKeySequence::SaveAs, tr("Save changes to this file")});
    exitAction =
        makeAction({"exitAction", tr("E&xit"), nullptr, QKeySequence(tr("Ctrl+Q")), tr("Exit the application")});
    functionListAction = makeAction({"functionListAction", tr("Variable and Function List")});
    aboutAction = makeAction({"aboutAction", tr("A&bout"), nullptr, QKeySequence(tr("Ctrl+B"))});
    // Pause and Stop have one text; their tool tips tell them apart.
    runAction = makeAction({"runAction",
                            tr("R&un Simulation/ Operation"),
                            "play.png",
                            {},
                            tr("Run Simulation of Network"),
                            tr("Run simulation")});
    pauseAction = makeAction({"pauseAction",
                              tr("S&top Simulation/ Operation"),
                              "pause.png",
                              {},
                              tr("Stop Simulation of Network"),
                              tr("Pause simulation")});
    stopAction = makeAction({"stopAction",
                             tr("S&top Simulation/ Operation"),
                             "stop.png",
                             {},
                             tr("Stop Simulation of Network"),
                             tr("Stop simulation")});
    resourcesAction = makeAction({"resourcesAction", tr("&Resources"), "res.png", {}, tr("Add and Edit Resources")});
    globalCodeAction =
        makeAction({"globalCodeAction", tr("&Global Code"), "code.png", {}, tr("Add and Edit Global Code")});
    connectActions();
}

void tsApp::connectActions() {
    connect(newAction, &QAction::triggered, this, &tsApp::newFile);
    connect(openAction, &QAction::triggered, this, &tsApp::open);
    connect(saveAction, &QAction::triggered, this, &tsApp::save);
    connect(saveAsAction, &QAction::triggered, this, &tsApp::saveAs);
    connect(exitAction, &QAction::triggered, this, &QWidget::close);
    connect(functionListAction, &QAction::triggered, this, [this] { showFunctionList(this); });
    connect(aboutAction, &QAction::triggered, this, [this] { showAbout(this); });
    connect(runAction, &QAction::triggered, this, &tsApp::onRun);
    connect(pauseAction, &QAction::triggered, this, &tsApp::onPause);
    connect(stopAction, &QAction::triggered, this, &tsApp::onStop);
    connect(resourcesAction, &QAction::triggered, this, &tsApp::showResources);
    connect(globalCodeAction, &QAction::triggered, this, &tsApp::showGlobalCode);
}

void tsApp::buildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->setObjectName(QStringLiteral("fileMenu"));
    file->addActions({newAction, openAction, saveAction, saveAsAction});
    file->addSeparator();
    file->addAction(exitAction);
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->setObjectName(QStringLiteral("helpMenu"));
    help->addActions({functionListAction, aboutAction});
}

QToolBar* tsApp::addActionBar(const QString& title, const QString& name, const QList<QAction*>& actions) {
    QToolBar* bar = addToolBar(title);
    bar->setObjectName(name);
    bar->addActions(actions);
    for (QAction* action : actions) {
        QWidget* button = bar->widgetForAction(action);
        button->setObjectName(action->objectName() + QStringLiteral("Button"));
        button->setAccessibleName(action->toolTip());
    }
    return bar;
}

void tsApp::buildToolBars() {
    addActionBar(tr("&File"), QStringLiteral("fileBar"), {newAction, openAction, saveAction});
    addActionBar(tr("&Simulation"), QStringLiteral("simulationBar"), {runAction, pauseAction, stopAction});
    addActionBar(tr("&Code"), QStringLiteral("codeBar"), {resourcesAction, globalCodeAction});

    haltBar = new cHaltBar;
    addToolBar(haltBar);
    QToolBar* info = addToolBar(tr("Info"));
    info->setObjectName(QStringLiteral("infoBar"));
    auto* label = new QLabel(tr("SimTime: "));
    label->setObjectName(QStringLiteral("simTimeLabel"));
    info->addWidget(label);
    simTimeEdit = new QLineEdit;
    simTimeEdit->setObjectName(QStringLiteral("simTimeEdit"));
    simTimeEdit->setAccessibleName(tr("SimTime"));
    simTimeEdit->setEnabled(false);
    simTimeEdit->setMaximumWidth(widestSimTime);
    info->addWidget(simTimeEdit);
    animationBar = new cAnimationBar;
    addToolBar(animationBar);
    sizeBar = new cSizeBar(settings.zoom, settings.textSize);
    addToolBar(sizeBar);
}
