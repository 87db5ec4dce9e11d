#include "app/resultsDialog.h"

#include "app/resultGrid.h"
#include "app/savedText.h"
#include "kernel/network.h"
#include "kernel/resultText.h"
#include "kernel/runStatistics.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollArea>
#include <QVBoxLayout>
#include <system_error>

namespace {

constexpr QSize smallestSize(1200, 600);
constexpr int widestButton = 200;
constexpr int highestLabel = 140;  // more lines than that are scrolled
constexpr qint64 pieceSize = 65536;

/// Copies in pieces: the lines of many replications may be more than the memory holds.
bool copyLines(const QString& source, QSaveFile& target) {
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) return false;
    while (!file.atEnd()) {
        const QByteArray piece = file.read(pieceSize);
        if (piece.isEmpty() || target.write(piece) != piece.size()) return false;
    }
    return true;
}

}  // namespace

cResultsDialog::cResultsDialog(const cNetwork& network, QWidget* parent)
    : QDialog(parent),
      isSingle(network.replications == 1),
      linesPath(network.runStatistics->getTemporaryPath()),
      areLinesComplete(network.runStatistics->isFileComplete()) {
    const QFileInfo lines(QFile(linesPath).fileName());
    linesSize = lines.size();
    linesTime = lines.lastModified();
    if (isSingle) csvText = QByteArray::fromStdString(resultCsv(network));

    setObjectName(QStringLiteral("resultsDialog"));
    setWindowTitle(QString::fromStdString(resultTitle(network)));
    setMinimumSize(smallestSize);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* save = new QPushButton(tr("Save Results as CSV"));
    save->setObjectName(QStringLiteral("saveResultsButton"));
    save->setMaximumWidth(widestButton);
    save->setAutoDefault(false);
    auto* queues = new cResultGrid(queueTable(network), 2);
    queues->setObjectName(QStringLiteral("queueTable"));
    queues->setAccessibleName(tr("Results of queues"));
    auto* activities = new cResultGrid(activityTable(network), 1);
    activities->setObjectName(QStringLiteral("activityTable"));
    activities->setAccessibleName(tr("Results of activities"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(save);
    layout->addWidget(makeLabel(QString::fromStdString(resultLabel(network))));
    layout->addWidget(queues, 1);
    layout->addWidget(activities, 1);
    connect(save, &QPushButton::clicked, this, &cResultsDialog::saveResultsCsv);
}

QScrollArea* cResultsDialog::makeLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QStringLiteral("resultLabel"));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("resultLabelArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(label);
    area->setFixedHeight(qMin(label->sizeHint().height(), highestLabel));
    return area;
}

void cResultsDialog::saveResultsCsv() {
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Results File"), QStringLiteral("."), QStringLiteral("*.csv"));
    if (!path.isEmpty()) saveResults(path);
}

bool cResultsDialog::saveResults(const QString& path) {
    return isSingle ? saveText(this, path, csvText) : moveLines(path);
}

/// Why the file of replication lines isn't that of this run, or isn't whole; empty if nothing is wrong with it.
QString cResultsDialog::whyNoLines() const {
    const QFileInfo lines(QFile(linesPath).fileName());
    if (!lines.exists()) return tr("The lines of the replications have been saved before, or removed.");
    if (lines.size() != linesSize || lines.lastModified() != linesTime)
        return tr("A later run has taken the place of the lines of this one.");
    return areLinesComplete ? QString() : tr("Not all lines of the replications could be kept.");
}

bool cResultsDialog::moveLines(const QString& path) {
    if (const QString reason = whyNoLines(); !reason.isEmpty()) {
        showSaveFailure(this, path, reason);
        return false;
    }
    std::error_code failure;
    std::filesystem::rename(linesPath, QFile(path).filesystemFileName(), failure);
    if (!failure) return true;

    QSaveFile file(path);  // on another file system, perhaps
    if (!file.open(QIODevice::WriteOnly) || !copyLines(QFile(linesPath).fileName(), file) || !file.commit()) {
        showSaveFailure(this, path, file.errorString());
        return false;
    }
    std::filesystem::remove(linesPath, failure);
    return true;
}
