#pragma once

#include <QDialog>
#include <QString>

/// Shows a text that the PRINT statements of a run collected under one name.
class traceDialog : public QDialog {
    Q_OBJECT

public:
    traceDialog(const QString& traceName, const QString& traceText, QWidget* parent = nullptr);

public Q_SLOTS:
    /// Asks for a file and saves the text there.
    void saveTrace();

private:
    QString text;
};
