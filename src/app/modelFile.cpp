#include "app/modelFile.h"

#include "app/tsApp.h"

#include <QMessageBox>

namespace {

/// Model files are neither read nor written by this version: nothing on the disk is touched, and the user is told.
bool refuse(tsApp& window, const QString& path) {
    QMessageBox::information(&window, tsApp::tr("Unable to open file"),
                             tsApp::tr("%1:\nThis version can't read or write model files.").arg(path),
                             QMessageBox::Ok);
    return false;
}

}  // namespace

bool writeModelFile(tsApp& window, const QString& path) { return refuse(window, path); }

bool readModelFile(tsApp& window, const QString& path) { return refuse(window, path); }
