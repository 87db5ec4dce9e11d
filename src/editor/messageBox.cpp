#include "editor/messageBox.h"

#include <QPointer>

void messageBox::show(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                      std::int32_t code) {
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->setObjectName(QStringLiteral("messageBox"));
    box->setTextFormat(Qt::PlainText);  // texts of failures quote what the user typed
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (!listener) {
        box->exec();
        return;
    }
    showAside(*box);
    listener(code, text);
}

/// Of boxes that perhaps nobody closes one is kept: a program may bring up thousands.
void messageBox::showAside(QMessageBox& box) {
    static QPointer<QMessageBox> last;
    if (listener && last != nullptr) last->close();
    last = &box;
    box.setModal(false);
    box.show();
}
