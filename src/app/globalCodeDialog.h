#pragma once

#include <QDialog>
#include <QString>

class cNetwork;
class QTextEdit;

/// The editor of the model's Global Code. However it is closed, the text stays, and the names that it declares exist
/// from then on. While a run is on the text can be read alone, and the names of the run are left as they are.
class cGlobalCodeDialog : public QDialog {
    Q_OBJECT

public:
    explicit cGlobalCodeDialog(cNetwork& model, QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& code);

    /// Shows the dialog in front of everything else. The names of the last compile are forgotten.
    void showGlobalCode();
    void done(int result) override;

private:
    void declareNames();

    cNetwork& network;
    QTextEdit* codeEdit;
};
