#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDialog>
#include <QString>
#include <filesystem>

class cNetwork;
class QScrollArea;

/// The results of one run, as they were when it ended. Doesn't block the window, and stays open across later runs.
class cResultsDialog : public QDialog {
    Q_OBJECT

public:
    explicit cResultsDialog(const cNetwork& network, QWidget* parent = nullptr);

    /// Saves the results to `path`: the tables of a single run, or the replication lines of many, whose file is moved
    /// there. So these can be saved once, and until a later run begins. A failure is told in a box.
    /// @return whether the file was written.
    bool saveResults(const QString& path);

public Q_SLOTS:
    /// Asks for a file and saves the results there.
    void saveResultsCsv();

private:
    QScrollArea* makeLabel(const QString& text);
    bool moveLines(const QString& path);
    QString whyNoLines() const;

    bool isSingle;
    QByteArray csvText;               // of a single run
    std::filesystem::path linesPath;  // of the replication lines; the next run begins it anew
    bool areLinesComplete;
    qint64 linesSize = 0;
    QDateTime linesTime;
};
