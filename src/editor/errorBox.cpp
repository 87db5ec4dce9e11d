#include "editor/errorBox.h"

#include <QMessageBox>

void showErrorBox(QWidget* parent, const QString& title, const QString& text) {
    auto* box = new QMessageBox(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box->setObjectName(QStringLiteral("errorBox"));
    box->setTextFormat(Qt::PlainText);  // texts of failures quote what the user typed
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->exec();
}
