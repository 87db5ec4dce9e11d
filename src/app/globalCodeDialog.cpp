#include "app/globalCodeDialog.h"

#include "editor/messageBox.h"
#include "editor/typedLines.h"
#include "kernel/network.h"
#include "language/compilation.h"
#include "language/symbols.h"
#include "language/words.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

constexpr QSize startSize(640, 480);

}  // namespace

cGlobalCodeDialog::cGlobalCodeDialog(cNetwork& model, QWidget* parent)
    : QDialog(parent), network(model), codeEdit(new QTextEdit) {
    setObjectName(QStringLiteral("globalCodeDialog"));
    setWindowTitle(tr("Global Code"));
    auto* label = new QLabel(tr("Enter here any code for the model here."));
    label->setBuddy(codeEdit);
    codeEdit->setObjectName(QStringLiteral("globalCodeEdit"));
    codeEdit->setAccessibleName(tr("Global Code"));
    codeEdit->setAcceptRichText(false);
    codeEdit->setLineWrapMode(QTextEdit::NoWrap);
    codeEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    buttons->setObjectName(QStringLiteral("globalCodeButtons"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("okButton"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(codeEdit, 1);
    layout->addWidget(buttons);
    resize(startSize);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
}

QString cGlobalCodeDialog::text() const { return typedLines(*codeEdit); }

void cGlobalCodeDialog::setText(const QString& code) { codeEdit->setPlainText(code); }

void cGlobalCodeDialog::showGlobalCode() {
    const bool isRunOff = network.simState == 0;
    codeEdit->setReadOnly(!isRunOff);
    if (isRunOff) {
        network.symbols->forgetNames();
        network.variables.clear();
        network.saveValues.clear();
    }
    setModal(true);
    show();
}

void cGlobalCodeDialog::done(int result) {
    QDialog::done(result);
    if (network.simState == 0) declareNames();
}

/// The declarations run at once, as they do when a model has been read: elements can be checked against the names.
void cGlobalCodeDialog::declareNames() {
    try {
        compileCode(network, splitLines(text().toStdString()), eCompiled::declarations);
        network.runStatements();
    } catch (const cException& failure) {
        messageBox::show(parentWidget(), QMessageBox::Critical, tr("Error"), QString::fromStdString(failure.message),
                         failure.code);
    }
    network.statements.clear();
}
