#pragma once

#include "app/runDisplay.h"
#include "app/settings.h"
#include "channel/channelHost.h"
#include "editor/editorHost.h"
#include "editor/tqNetworkElement.h"
#include "kernel/element.h"
#include "kernel/network.h"

#include <QElapsedTimer>
#include <QList>
#include <QMainWindow>
#include <QPoint>
#include <QPointer>
#include <QStringList>
#include <memory>
#include <string>

class QAction;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolBar;
class QVBoxLayout;
class cAnimationBar;
class cCanvasModel;
class cChannel;
class cDialogRes;
class cGlobalCodeDialog;
class cHaltBar;
class cPythonReceiver;
class cSizeBar;
class cTQScene;
class cTQView;
class traceDialog;

/// The main window, which is the model at the same time: what is drawn on its canvas is what it simulates.
///
/// Everything happens on the thread of the window. A run goes on inside the slot of the Run action; the window lives
/// through `processHostEvents` and the waits of the animation, and slots that run there can reach the model. So what
/// would change its structure is refused while `simState` is 1.
///
/// The members stand in one file for each concern: tsAppWindow.cpp builds it, tsAppActions.cpp its menus and toolbars,
/// tsAppRun.cpp drives runs, tsAppEditing.cpp the canvas, tsAppFiles.cpp documents, tsAppModelFile.cpp how they are
/// read and written, tsAppChannel.cpp the channel to a controlling program.
class tsApp : public QMainWindow, public cNetwork, public cEditorHost, private cChannelHost {
    Q_OBJECT

public:
    /// Reads the settings, builds the window and begins an empty model.
    tsApp();
    ~tsApp() override;

    // ---- the model's hooks

    /// The return to edit mode, whichever way a run ended.
    void clearNetwork() override;
    void eventPoint() override;
    void runAfterTimeAdvance() override;
    double hostGet(const std::string& key) override;
    void hostMessage(const std::string& text) override;
    void processHostEvents() override;

    // ---- what the canvas asks

    int captionPointSize() const override { return settings.textSize; }
    void editResourceTypes() override;

    // ---- runs

    /// The steps of a run, without its dialogs. @throws cException at the first failure.
    void runReplications();

    // ---- documents

    /// Opens a model file. If it can't be read, the user is told, and begins with an empty model.
    void loadModel(const std::string& path);
    /// Adds what the file holds to the present model. What is not taken as it stands is told on standard error and in a
    /// box that can stay open. @return false if the file can't be read; the user has been told then.
    bool readModelFile(const QString& path);
    /// Puts the model in the place of the file. @return false if the file is what it was before; the user has been told
    /// then.
    bool writeModelFile(const QString& path);
    bool isModified() const { return modified; }
    const QString& getCurrentFile() const { return currentFile; }

public Q_SLOTS:
    void onRun();
    void onPause();
    void onStop();

    void newFile();
    void open();
    bool save();
    bool saveAs();

    void showResources();
    void showGlobalCode();

    /// Shows the properties of an element below the canvas.
    void elemSelected(cTQNetworkElement* element);
    /// An icon was dropped at a place in the viewport.
    void createElementFromDrop(const QString& kind, QPoint position);
    void deleteSelected();
    void removeElement(cNetworkElement* element);

    /// From here on a controlling program drives the window, by lines on standard input; standard output is for the
    /// replies alone. Boxes are no longer waited for, and told on standard error too.
    void startPythonReceiver();
    /// Serves a line of the controller. Does nothing for a null one.
    void handlePythonMessage(const QString& message);

Q_SIGNALS:
    /// A line came in. Emitted by the receiver's thread.
    void pythonMessageReceived(QString message);
    /// Nothing here emits or uses it.
    void messageReceived(QString message);
    /// Nothing comes in any more, and nobody reads what goes out. Emitted by the receiver's thread.
    void controllerGone();
    /// A resource type is new, is of another kind or has a new name.
    void newResAdded(std::string newName, std::string oldName);
    void sigDeleteElement(cNetworkElement* element);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // tsAppWindow.cpp
    void buildWindow();
    void buildCanvas();
    void buildStatusBar();
    void connectCanvas();
    void applyZoom(int zoom);
    void applyTextSize(int textSize);

    // tsAppActions.cpp
    struct cActionRow;
    QAction* makeAction(const cActionRow& row);
    void buildActions();
    void connectActions();
    void buildMenus();
    void buildToolBars();
    QToolBar* addActionBar(const QString& title, const QString& name, const QList<QAction*>& actions);

    // tsAppChannel.cpp
    void stopPythonReceiver();
    void endWithoutController();
    void serveHeldSoon();
    bool isRunning() const override { return runIsOn; }
    void load(const std::string& path) override;
    void run() override;
    void animate(bool isWanted) override;
    void keepStatement(const std::string& line) override;
    void quit() override;
    void send(const std::string& line) override;
    void awaitMessages() override;
    void log(const std::string& line) override;

    // tsAppRun.cpp
    bool runToTheEnd();
    [[noreturn]] static void throwStop();
    void showRunState(bool canRun, bool canPause, bool canStop);
    void showSimTime();
    void holdRun();
    bool isEndAsked() const { return stopAsked || stopRequested; }
    void throwIfEndAsked() const;
    void processEventsInTime();
    void paintNowAndThen();
    /// What the user is told of a run that was broken off, and what is undone of it.
    void breakOff(const cException& failure);
    void showFailure(const cException& failure);
    void showResults();
    void showTraces();
    void forgetTraces();

    // tsAppEditing.cpp
    bool canEditModel();
    void placeElement(cTQNetworkElement& element, QPoint position);
    void hidePanel();
    void refreshEditable();
    void refreshPanelOf(cTQNetworkElement* element);
    void tellNewType(const std::string& newName, const std::string& oldName);

    // tsAppFiles.cpp
    bool maybeSave();
    bool writeTo(const QString& path);
    void beginEmptyModel();
    void clearModel();
    void setCurrentFile(const QString& path);
    void setModified(bool isNowModified);

    // tsAppModelFile.cpp
    cCanvasModel canvasModel();
    void takeModel(const QString& path, const QByteArray& bytes);
    bool isDone(const QString& failure);
    void showRemarks(const QString& text, const QStringList& remarks);

    cAppSettings settings;
    const QString settingsPath;
    double screenFactor = 1.0;
    QString currentFile;
    bool modified = false;
    bool loading = false;  // a file is being read: the user must wait
    bool runIsOn = false;
    bool isClosedByController = false;  // who is asked nothing
    bool stopAsked = false;             // by the user; raised as an exception at the next return from event processing
    QStringList waitingStatements;
    QElapsedTimer sinceEvents;  // since the window last processed its events during a run
    qint64 goneAtLook = 0;      // of that time, when the clock was last looked at; milliseconds
    int callsPerLook = 1;
    int callsSinceLook = 0;
    QElapsedTimer sincePaint;  // since the canvas was last painted during a run without animation

    // All of these are the window's children.
    QAction *newAction, *openAction, *saveAction, *saveAsAction, *exitAction, *functionListAction, *aboutAction;
    QAction *runAction, *pauseAction, *stopAction, *resourcesAction, *globalCodeAction;
    cAnimationBar* animationBar;
    cHaltBar* haltBar;
    cSizeBar* sizeBar;
    QLineEdit* simTimeEdit;
    QLabel* statusLabel;
    cTQScene* scene;
    cTQView* view;
    QVBoxLayout* mainLayout;
    cGlobalCodeDialog* globalCodeDialog;
    cDialogRes* dialogRes;

    std::unique_ptr<cRunDisplay> runDisplay;
    std::unique_ptr<cChannel> channel;  // null without a controller; so is the receiver
    std::unique_ptr<cPythonReceiver> receiver;
    QPointer<QWidget> currentPanel;  // an element owns it
    QList<QPointer<traceDialog>> traceDialogs;
};
