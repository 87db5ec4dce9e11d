// The model on the canvas as a file.

#include "app/canvasModel.h"
#include "app/globalCodeDialog.h"
#include "app/tsApp.h"
#include "app/wholeFile.h"
#include "editor/dialogRes.h"
#include "editor/messageBox.h"
#include "model/modelReader.h"
#include "model/modelWriter.h"

#include <QByteArray>
#include <QLabel>
#include <QScopedValueRollback>
#include <iostream>
#include <new>
#include <sstream>

namespace {

constexpr int mostRemarks = 5;  // that stand in a box for all to see

}  // namespace

cCanvasModel tsApp::canvasModel() { return {*this, *scene, *dialogRes, *globalCodeDialog}; }

bool tsApp::writeModelFile(const QString& path) {
    cCanvasModel canvas = canvasModel();
    const cModelWriting writing = writeModel(canvas);
    if (!isDone(replaceFile(path, QByteArray::fromStdString(writing.text)))) return false;

    if (writing.hasIncompleteLink)
        messageBox::show(this, QMessageBox::Information, tr("Information."),
                         tr("Incomplete links will not be written to file."));
    QStringList remarks;
    for (const std::string& warning : writing.warnings) remarks.append(QString::fromStdString(warning));
    showRemarks(tr("Not all of the model will come back when %1 is opened.").arg(path), remarks);
    return true;
}

bool tsApp::readModelFile(const QString& path) {
    try {
        QByteArray bytes;
        if (!isDone(readWholeFile(path, bytes))) return false;
        takeModel(path, bytes);
        return true;
    } catch (const std::bad_alloc&) {
        return isDone(tr("There is not enough memory for this file."));
    }
}

void tsApp::takeModel(const QString& path, const QByteArray& bytes) {
    const QScopedValueRollback waiting(loading, true);
    std::istringstream text(bytes.toStdString());
    cCanvasModel canvas = canvasModel();
    const cModelReading reading = readModel(text, canvas);

    QStringList remarks;
    for (const cModelWarning& warning : reading.warnings)
        remarks.append(tr("Line %1: %2").arg(warning.line).arg(QString::fromStdString(warning.message)));
    showRemarks(tr("Not all of %1 was taken as it stands.").arg(path), remarks);
}

/// The user is told why a file can't be read or written, if it can't.
bool tsApp::isDone(const QString& failure) {
    if (failure.isEmpty()) return true;
    messageBox::show(this, QMessageBox::Information, tr("Unable to open file"), failure);
    return false;
}

/// Tells of what went half well: on standard error, and in a box that is in nobody's way. The last such box goes.
void tsApp::showRemarks(const QString& text, const QStringList& remarks) {
    delete findChild<QMessageBox*>(QStringLiteral("remarkBox"));
    if (remarks.isEmpty()) return;
    for (const QString& remark : remarks) std::cerr << "timbersim: " << remark.toStdString() << '\n';
    auto* box = new QMessageBox(QMessageBox::Information, tr("Information."), text, QMessageBox::Ok, this);
    box->setObjectName(QStringLiteral("remarkBox"));
    box->setInformativeText(remarks.mid(0, mostRemarks).join(QLatin1Char('\n')));
    // Names out of a file are no markup. The box itself passes this on to the first of its texts only.
    for (QLabel* label : box->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
    if (remarks.size() > mostRemarks) box->setDetailedText(remarks.join(QLatin1Char('\n')));
    box->setAttribute(Qt::WA_DeleteOnClose);
    messageBox::showAside(*box);
}
