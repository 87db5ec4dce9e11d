// How the window is built, and the scale of what it shows.

#include "app/globalCodeDialog.h"
#include "app/pythonReceiver.h"
#include "app/sizeBar.h"
#include "app/stencil.h"
#include "app/tsApp.h"
#include "channel/channel.h"
#include "editor/animation.h"
#include "editor/dialogRes.h"
#include "editor/tqNode.h"
#include "editor/tqScene.h"
#include "editor/tqView.h"

#include <QFont>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

constexpr double plainDotsPerInch = 96.0;
constexpr double zoomUnit = 15.0;
constexpr double zoomFactor = 1.25;

double factorOfScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? 1.0 : screen->logicalDotsPerInch() / plainDotsPerInch;
}

}  // namespace

tsApp::tsApp() : settingsPath(cAppSettings::filePath()), screenFactor(factorOfScreen()) {
    settings = cAppSettings::read(settingsPath);
    animation::isOn = settings.isAnimated;
    animation::delay = settings.animationDelay;
    buildWindow();
    globalCodeDialog = new cGlobalCodeDialog(*this, this);
    dialogRes = new cDialogRes(*this, this);
    connect(dialogRes, &cDialogRes::newResAdded, this, &tsApp::newResAdded);
    connect(this, &tsApp::newResAdded, this, &tsApp::tellNewType);
    newFile();
}

/// Elements go first: they look at the network, the scene and each other for the last time.
tsApp::~tsApp() {
    stopPythonReceiver();
    scene->disconnect(this);
    clearModel();
}

void tsApp::buildWindow() {
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(tr("TIMBERSIM"));
    buildActions();
    buildMenus();
    buildToolBars();
    buildCanvas();
    buildStatusBar();
    runDisplay = std::make_unique<cRunDisplay>(*this, *statusLabel, *pauseAction, [this] {
        forgetTraces();
        refreshEditable();
    });
    connectCanvas();
    applyZoom(sizeBar->zoom());
}

void tsApp::buildCanvas() {
    scene = new cTQScene(this);
    view = new cTQView;
    view->setObjectName(QStringLiteral("canvas"));
    view->setAccessibleName(tr("Canvas"));
    view->setScene(scene);

    auto* centre = new QWidget;
    centre->setObjectName(QStringLiteral("centre"));
    mainLayout = new QVBoxLayout(centre);
    auto* canvasRow = new QHBoxLayout;
    canvasRow->addWidget(new cStencil, 1);
    canvasRow->addWidget(view, 10);
    mainLayout->addLayout(canvasRow, 1);
    setCentralWidget(centre);
}

void tsApp::buildStatusBar() {
    statusLabel = new QLabel(tr("Status: Edit mode."));
    statusLabel->setObjectName(QStringLiteral("statusLabel"));
    QFont font = statusLabel->font();
    font.setPointSize(10);
    font.setWeight(QFont::Bold);
    statusLabel->setFont(font);
    statusLabel->setAlignment(Qt::AlignCenter);
    statusLabel->setStyleSheet(QStringLiteral("QLabel { color: #0056b3; padding: 8px; }"));
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addPermanentWidget(statusLabel);
}

/// Two signals more were once connected here, between names that nothing declares: a selection by itself has no effect.
void tsApp::connectCanvas() {
    connect(scene, &cTQScene::itemDoubleClicked, this, &tsApp::elemSelected);
    connect(scene, &cTQScene::elementChanged, this, &tsApp::refreshPanelOf);
    connect(scene, &cTQScene::deleteRequested, this, &tsApp::deleteSelected);
    connect(this, &tsApp::sigDeleteElement, this, &tsApp::removeElement);
    connect(view, &cTQView::elemDropped, this, &tsApp::createElementFromDrop);
    connect(sizeBar, &cSizeBar::zoomChanged, this, &tsApp::applyZoom);
    connect(sizeBar, &cSizeBar::textSizeChanged, this, &tsApp::applyTextSize);
}

void tsApp::applyZoom(int zoom) {
    settings.zoom = zoom;
    const double scale = zoom / zoomUnit * screenFactor * zoomFactor;
    view->setTransform(QTransform::fromScale(scale, scale));
}

void tsApp::applyTextSize(int textSize) {
    settings.textSize = textSize;
    for (QGraphicsItem* item : scene->items())
        if (auto* node = dynamic_cast<cTQNode*>(item))
            node->captionChanged();
        else
            item->update();
    view->viewport()->update();
}
